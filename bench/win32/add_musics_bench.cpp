// Timing run under Wine: ShowAddMusicsDialog through KxComResPlgin.dll opened on a folder of
// 100,000 tracks against the same dialog on a folder of 100, in one run, each until its lists
// have drawn; then the rows fetched from the host against the rows on screen, once opened and
// once scrolled to the end. Usage: bench_add_musics.exe [ROUNDS]
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "bench/win32/bench_clock.h"
#include "host/library/sample_library.h"
#include "resources/dialogs/add_musics_ids.h"
#include "tests/win/common/plugin_loader.h"

namespace {

using kxbench::Median;
using kxbench::Now;
using kxhost::Op;

// What one opening saw.
struct Opening {
    double drawn = 0;          // seconds from the call until the dialog and its lists had drawn
    int rows = 0;              // rows of the left list
    int onScreen = 0;          // rows the list shows at once
    long fetchedOpen = 0;      // rows fetched from the host by the first drawing
    long fetchedAtEnd = 0;     // rows fetched by scrolling to the end and drawing there
};

HHOOK g_hook = nullptr;
kxhost::InMemoryLibrary* g_lib = nullptr;
double g_start = 0;
Opening* g_seen = nullptr;

// At the first paint the loop takes from its queue: the dialog draws everything now, is measured,
// scrolls its list to the end and draws again, and is cancelled.
LRESULT CALLBACK DrawMeasureAndClose(int code, WPARAM wParam, LPARAM lParam) {
    auto* msg = reinterpret_cast<MSG*>(lParam);
    if (code == HC_ACTION && wParam == PM_REMOVE && msg->message == WM_PAINT && g_seen) {
        HWND dlg = GetAncestor(msg->hwnd, GA_ROOT);
        HWND list = GetDlgItem(dlg, KX_IDC_ADDMUSICS_TRACKS);
        if (list) {
            Opening& seen = *g_seen;
            g_seen = nullptr;
            const long before = g_lib->Calls(Op::TrackGetCurrentId);
            RedrawWindow(dlg, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
            seen.drawn = Now() - g_start;
            seen.fetchedOpen = g_lib->Calls(Op::TrackGetCurrentId) - before;
            seen.rows = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
            seen.onScreen = static_cast<int>(SendMessageW(list, LVM_GETCOUNTPERPAGE, 0, 0));
            const long beforeEnd = g_lib->Calls(Op::TrackGetCurrentId);
            SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(seen.rows - 1), FALSE);
            RedrawWindow(list, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
            seen.fetchedAtEnd = g_lib->Calls(Op::TrackGetCurrentId) - beforeEnd;
            PostMessageW(dlg, WM_COMMAND, KX_IDC_ADDMUSICS_CANCEL, 0);
        }
    }
    return CallNextHookEx(g_hook, code, wParam, lParam);
}

// One library's dialog, opened again and again.
struct Subject {
    kxhost::SampleLibrary sample;
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;
    std::vector<double> drawn;
    Opening last;
    explicit Subject(const kxhost::SampleOptions& options) : sample(kxhost::BuildSampleLibrary(options)) {
        sample.library->GetRootFolder(&root);
        sample.library->CreateSite(&site);
    }
    ~Subject() {
        if (site) site->Release();
        if (root) root->Release();
    }
    bool Open(IKxCommonResource* resource, bool keep) {
        g_lib = sample.library.get();
        Opening seen;
        g_seen = &seen;
        INT count = 0;
        KxPidl* items = nullptr;
        g_start = Now();
        const HRESULT hr = resource->ShowAddMusicsDialog(0, site, root, L"Music", nullptr, &count, &items);
        g_seen = nullptr;
        if (hr != static_cast<HRESULT>(0x800704C7) || seen.drawn <= 0) return false;
        if (keep) drawn.push_back(seen.drawn);
        last = seen;
        return true;
    }
};

}  // namespace

int wmain(int argc, wchar_t** argv) {
    const int rounds = argc > 1 ? std::max(1, _wtoi(argv[1])) : 5;
    OleInitialize(nullptr);
    kxtest::PluginLibrary plugin;
    IKxCommonResource* resource = nullptr;
    if (FAILED(plugin.Create(&resource))) {
        std::fprintf(stderr, "bench_add_musics: the plug-in did not start\n");
        return 1;
    }
    g_hook = SetWindowsHookExW(WH_GETMESSAGE, DrawMeasureAndClose, nullptr, GetCurrentThreadId());
    kxhost::SampleOptions few;
    few.tracks = 100;
    few.artists = 10;
    few.albums = 10;
    few.genres = 5;
    few.edgeItems = false;
    Subject small(few), large(kxhost::LargeSampleOptions());
    bool ok = small.root && large.root && small.site && large.site;
    // the two take turns, so that the machine's load falls on both alike; round 0 warms up
    for (int round = 0; round <= rounds && ok; ++round)
        ok = small.Open(resource, round > 0) && large.Open(resource, round > 0);
    UnhookWindowsHookEx(g_hook);
    resource->Release();
    if (!ok) {
        std::fprintf(stderr, "bench_add_musics: a dialog did not draw, or did not answer as cancelled\n");
        return 1;
    }
    for (const Subject* s : {&small, &large}) {
        const Opening& o = s->last;
        std::printf("folder of %d tracks: opened and drawn in %.1f ms (median of %d); %d rows on screen, "
                    "%ld fetched; scrolled to the end, %ld more fetched\n",
                    o.rows, Median(s->drawn) * 1000, rounds, o.onScreen, o.fetchedOpen, o.fetchedAtEnd);
    }
    std::printf("ratio: %.2fx (goal: at most 1.2x)\n", Median(large.drawn) / Median(small.drawn));
    OleUninitialize();
    return 0;
}
