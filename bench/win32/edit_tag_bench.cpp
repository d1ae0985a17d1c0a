// Timing run under Wine: ShowEditTagDialog through KxComResPlgin.dll on the large sample library
// (10,000 artists, 5,000 albums, 500 genres), opened on a track, stepped once with Next and closed,
// against the bare walk of the known names (Albums, Artists twice, Genres) through the same root
// folder, measured in the same run. Opening reads the names once and a step that wrote no name
// keeps them, so the reading's floor is one walk. Painting is not included: the step and the
// close are posted when the dialog is activated and run before the first paint. The dialog's
// template alone, its windows created and destroyed by the dialog manager with none of the
// dialog's code, is timed in the same run: the floor under any dialog on it.
// Usage: bench_edit_tag.exe [ROUNDS]
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

INT_PTR CALLBACK BareDialogProc(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

// The single-item dialog's template created (not shown) and destroyed, with the plug-in's common
// controls as its dialogs have them; 0 when it cannot be.
double TemplateAlone(HMODULE plugin, HMODULE resources) {
    HRSRC found = FindResourceW(resources, MAKEINTRESOURCEW(KX_IDD_EDITSINGLETAGS), MAKEINTRESOURCEW(5));
    HGLOBAL loaded = found ? LoadResource(resources, found) : nullptr;
    auto* dialogTemplate = loaded ? static_cast<LPCDLGTEMPLATEW>(LockResource(loaded)) : nullptr;
    if (!dialogTemplate) return 0;
    ACTCTXW context = {};
    context.cbSize = sizeof context;
    context.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    const std::wstring path = kxtest::ExeDir() + L"KxComResPlgin.dll";
    context.lpSource = path.c_str();
    context.hModule = plugin;
    context.lpResourceName = MAKEINTRESOURCEW(2);
    HANDLE controls = CreateActCtxW(&context);
    ULONG_PTR cookie = 0;
    if (controls != INVALID_HANDLE_VALUE && !ActivateActCtx(controls, &cookie)) cookie = 0;
    const double start = Now();
    HWND dlg = CreateDialogIndirectParamW(GetModuleHandleW(nullptr), dialogTemplate, nullptr, BareDialogProc, 0);
    if (dlg) DestroyWindow(dlg);
    const double took = Now() - start;
    if (cookie) DeactivateActCtx(0, cookie);
    if (controls != INVALID_HANDLE_VALUE) ReleaseActCtx(controls);
    return dlg ? took : 0;
}

// One library's dialog, opened on the view's first track again and again, with the walk of the
// known names after each opening.
struct Subject {
    kxhost::SampleLibrary sample;
    std::vector<kxhost::ItemId> view;
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;
    KxPidl pidl = nullptr;
    std::vector<double> dialog, opening, walk;
    size_t names = 0;
    explicit Subject(const kxhost::SampleOptions& options) : sample(kxhost::BuildSampleLibrary(options)) {
        view.assign(sample.tracks.begin(), sample.tracks.begin() + std::min<size_t>(100, sample.tracks.size()));
        sample.library->GetRootFolder(&root);
        sample.library->CreateSite(&site);
        pidl = sample.library->NewPidl(view[0]);
    }
    ~Subject() {
        CoTaskMemFree(pidl);
        if (site) site->Release();
        if (root) root->Release();
    }
    // False when the dialog did not answer as cancelled, wrote, or the walk found nothing.
    bool Open(IKxCommonResource* resource, bool keep) {
        sample.library->SetView(view, 0);
        double start = Now();
        const HRESULT hr = resource->ShowEditTagDialog(nullptr, site, root, 1, const_cast<const KxPcPidl*>(&pidl));
        const double shown = Now() - start, toActive = g_activated - start;
        start = Now();
        names = WalkKnownNames(root);
        const double walked = Now() - start;
        if (keep) {
            dialog.push_back(shown);
            opening.push_back(toActive);
            walk.push_back(walked);
        }
        return hr == static_cast<HRESULT>(0x800704C7) && sample.library->Writes().empty() && names > 0;
    }
};

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
    HMODULE resources = LoadLibraryExW((kxtest::ExeDir() + L"ComRcRes.dll").c_str(), nullptr,
                                       LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    std::vector<double> bare;
    bool ok = resources != nullptr;
    {
        Subject small(kxhost::DefaultSampleOptions()), large(kxhost::LargeSampleOptions());
        // the two take turns, so that the machine's load falls on both alike; round 0 warms up
        for (int round = 0; round <= rounds && ok; ++round) {
            ok = small.Open(resource, round > 0) && large.Open(resource, round > 0);
            const double t = TemplateAlone(plugin.module(), resources);
            ok = ok && t > 0;
            if (round > 0) bare.push_back(t);
        }
        if (ok) {
            const double d = Median(large.dialog), w = Median(large.walk), f = Median(small.dialog);
            const auto& s = large.sample;
            std::printf("large library: %zu tracks, %zu artists, %zu albums, %zu genres; %zu names per walk\n",
                        s.tracks.size(), s.artists.size(), s.albums.size(), s.genres.size(), large.names);
            std::printf("dialog opened, one Next, closed: %.1f ms (median of %d), of which opening %.1f ms\n",
                        d * 1000, rounds, Median(large.opening) * 1000);
            std::printf("bare walk of the known names: %.1f ms (median of %d)\n", w * 1000, rounds);
            std::printf("ratio: %.2fx the walk (goal: at most 3x; one walk is the reading's floor)\n", d / w);
            std::printf("the same on the small sample library (%zu names): %.1f ms, of which opening %.1f ms\n",
                        small.names, f * 1000, Median(small.opening) * 1000);
            std::printf("the large library's own cost: %.1f ms, %.2fx the walk\n", (d - f) * 1000, (d - f) / w);
            const double t = Median(bare);
            std::printf("the template alone, created and destroyed: %.1f ms, %.2fx the walk\n", t * 1000, t / w);
        }
    }
    UnhookWindowsHookEx(g_hook);
    resource->Release();
    if (resources) FreeLibrary(resources);
    OleUninitialize();
    if (!ok)
        std::fprintf(stderr, "bench_edit_tag: a dialog did not answer as cancelled, wrote, or walked nothing, or the "
                             "template did not open\n");
    return ok ? 0 : 1;
}
