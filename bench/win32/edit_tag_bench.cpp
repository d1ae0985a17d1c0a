// Timing run under Wine: ShowEditTagDialog through KxComResPlgin.dll on the large sample library
// (10,000 artists, 5,000 albums, 500 genres), opened on a track, stepped once with Next and closed,
// against the bare walk of the known names (Albums, Artists twice, Genres) through the same root
// folder, measured in the same run. Opening and the step each read the names once, so the dialog's
// floor is two walks. Painting is not included: the step and the close are posted when the dialog
// is activated and run before the first paint. Usage: bench_edit_tag.exe [ROUNDS]
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "bench/win32/bench_clock.h"
#include "host/library/sample_library.h"
#include "resources/dialogs/edit_single_tags_ids.h"
#include "tests/win/common/plugin_loader.h"

namespace {

using kxbench::Median;
using kxbench::Now;

HHOOK g_hook = nullptr;
double g_activated = 0;  // when the dialog was activated: opened and about to show

// The dialog, once active, steps to the next item and closes: both posted, so they run in order
// through the dialog's own loop.
LRESULT CALLBACK StepAndClose(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_ACTIVATE) {
        g_activated = Now();
        auto dlg = reinterpret_cast<HWND>(wParam);
        WCHAR cls[16] = {};
        GetClassNameW(dlg, cls, 16);
        if (lstrcmpW(cls, L"#32770") == 0 && GetDlgItem(dlg, KX_IDC_TAG_NEXT)) {
            PostMessageW(dlg, WM_COMMAND, MAKEWPARAM(KX_IDC_TAG_NEXT, BN_CLICKED),
                         reinterpret_cast<LPARAM>(GetDlgItem(dlg, KX_IDC_TAG_NEXT)));
            PostMessageW(dlg, WM_COMMAND, IDCANCEL, 0);
        }
    }
    return CallNextHookEx(g_hook, code, wParam, lParam);
}

// The four walks of one read with nothing kept: resolve, bind, enumerate, name, free.
size_t WalkKnownNames(IKxContentFolder* root) {
    size_t total = 0;
    for (LPCWSTR folderName : {KxFolderAlbums, KxFolderArtists, KxFolderArtists, KxFolderGenres}) {
        KxPidl id = nullptr;
        void* f = nullptr;
        void* en = nullptr;
        if (FAILED(root->ParseName(folderName, KX_PARSE_WELLKNOWN, &id)) ||
            FAILED(root->BindToFolder(id, IID_IKxContentFolder, &f))) {
            CoTaskMemFree(id);
            return 0;
        }
        auto* folder = static_cast<IKxContentFolder*>(f);
        if (SUCCEEDED(folder->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, &en))) {
            auto* items = static_cast<IKxItemEnum*>(en);
            HRESULT hr;
            do {
                KxPidl child = nullptr;
                ULONG fetched = 0;
                hr = items->Next(1, &child, &fetched);
                if (fetched) {
                    LPWSTR name = nullptr;
                    folder->GetItemName(child, KX_NAME_NORMAL, &name);
                    total += name ? 1 : 0;
                    CoTaskMemFree(name);
                }
                CoTaskMemFree(child);
            } while (hr == S_OK);
            items->Release();
        }
        folder->Release();
        CoTaskMemFree(id);
    }
    return total;
}

// Median time of the dialog opened on the view's first track, stepped and closed, after one
// round that warms up (classes, skin, fonts); the walk of the known names beside it in `walk`.
// `open` gets the part until the dialog was activated.
double TimeDialog(IKxCommonResource* resource, kxhost::SampleLibrary& sample, int rounds, double* walk, double* open,
                  size_t* names, HRESULT* hr) {
    auto lib = sample.library;
    std::vector<kxhost::ItemId> view(sample.tracks.begin(), sample.tracks.begin() + std::min<size_t>(100, sample.tracks.size()));
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;
    if (FAILED(lib->GetRootFolder(&root)) || FAILED(lib->CreateSite(&site))) return -1;
    KxPidl pidl = lib->NewPidl(view[0]);
    std::vector<double> dialog, walked, opened;
    for (int round = 0; round <= rounds; ++round) {
        lib->SetView(view, 0);
        double start = Now();
        *hr = resource->ShowEditTagDialog(nullptr, site, root, 1, const_cast<const KxPcPidl*>(&pidl));
        const double shown = Now() - start;
        const double toActive = g_activated - start;
        start = Now();
        *names = WalkKnownNames(root);
        if (round == 0) continue;
        walked.push_back(Now() - start);
        dialog.push_back(shown);
        opened.push_back(toActive);
    }
    CoTaskMemFree(pidl);
    site->Release();
    root->Release();
    *walk = Median(walked);
    *open = Median(opened);
    return lib->Writes().empty() ? Median(dialog) : -1;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    const int rounds = argc > 1 ? std::max(1, _wtoi(argv[1])) : 5;
    OleInitialize(nullptr);
    kxtest::PluginLibrary plugin;
    IKxCommonResource* resource = nullptr;
    if (FAILED(plugin.Create(&resource))) {
        std::fprintf(stderr, "bench_edit_tag: the plug-in did not start\n");
        return 1;
    }
    g_hook = SetWindowsHookExW(WH_CBT, StepAndClose, nullptr, GetCurrentThreadId());
    kxhost::SampleLibrary small = kxhost::BuildSampleLibrary(kxhost::DefaultSampleOptions());
    kxhost::SampleLibrary large = kxhost::BuildSampleLibrary(kxhost::LargeSampleOptions());
    double smallWalk = 0, walk = 0, smallOpen = 0, open = 0;
    size_t smallNames = 0, names = 0;
    HRESULT smallHr = S_OK, hr = S_OK;
    const double fixed = TimeDialog(resource, small, rounds, &smallWalk, &smallOpen, &smallNames, &smallHr);
    const double d = TimeDialog(resource, large, rounds, &walk, &open, &names, &hr);
    UnhookWindowsHookEx(g_hook);
    resource->Release();
    const HRESULT cancelled = static_cast<HRESULT>(0x800704C7);
    if (fixed < 0 || d < 0 || smallHr != cancelled || hr != cancelled || names == 0) {
        std::fprintf(stderr, "bench_edit_tag: the dialog answered 0x%08lX and 0x%08lX, or wrote, or no names\n",
                     static_cast<unsigned long>(smallHr), static_cast<unsigned long>(hr));
        return 1;
    }
    std::printf("large library: %zu tracks, %zu artists, %zu albums, %zu genres; %zu names per walk\n",
                large.tracks.size(), large.artists.size(), large.albums.size(), large.genres.size(), names);
    std::printf("dialog opened, one Next, closed: %.1f ms (median of %d), of which opening %.1f ms\n", d * 1000,
                rounds, open * 1000);
    std::printf("bare walk of the known names: %.1f ms (median of %d)\n", walk * 1000, rounds);
    std::printf("ratio: %.2fx the walk (goal: at most 3x; two walks are the floor)\n", d / walk);
    std::printf("the same on the small sample library (%zu names): %.1f ms, of which opening %.1f ms\n", smallNames,
                fixed * 1000, smallOpen * 1000);
    std::printf("the large library's own cost: %.1f ms, %.2fx the walk\n", (d - fixed) * 1000, (d - fixed) / walk);
    OleUninitialize();
    return 0;
}
