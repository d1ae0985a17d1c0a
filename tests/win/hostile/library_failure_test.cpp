// A host tree that fails: each dialog that works on the host's library runs once as it should, and
// then once for every operation of the tree that it called, with that one operation failing on
// every call (the in-memory library's failure injection). Expected is one of the dialog's
// documented codes, never a crash or a hang, and no reference left on the host's objects; at the
// end nothing of the process is left behind either.
#include <gtest/gtest.h>

#include <windows.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "host/library/sample_library.h"
#include "kx/IKxCommonResource.h"
#include "resources/dialogs/add_musics_ids.h"
#include "resources/dialogs/add_to_playlist_ids.h"
#include "resources/dialogs/image_property_ids.h"
#include "resources/dialogs/video_property_ids.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/plugin_loader.h"
#include "tests/win/hostile/hostile_support.h"

namespace kxtest {
namespace {

using kxhost::Op;

const HRESULT kCancelled = HRESULT_FROM_WIN32(ERROR_CANCELLED);

using Host = HostileHost;

struct DialogRow {
    std::string name;
    int button;  // clicked when the dialog shows; then it is closed
    std::function<HRESULT(Host&)> run;
    std::set<HRESULT> documented;
};

std::vector<DialogRow> Dialogs() {
    return {
        {"add to playlist", KX_IDC_ADDTO_OK, [](Host& h) {
             KxPidl item = nullptr;
             LPWSTR name = nullptr;
             HRESULT hr = h.res->ShowAddToPlaylistDialog(nullptr, h.root, L"Road", &item, &name);
             CoTaskMemFree(item);
             CoTaskMemFree(name);
             return hr;
         }, {S_OK, kCancelled, E_POINTER}},
        {"add to slideshow", KX_IDC_ADDTO_OK, [](Host& h) {
             KxPidl item = nullptr;
             LPWSTR name = nullptr;
             HRESULT hr = h.res->ShowAddToSlideshowDialog(nullptr, h.root, nullptr, &item, &name);
             CoTaskMemFree(item);
             CoTaskMemFree(name);
             return hr;
         }, {S_OK, kCancelled, E_POINTER}},
        {"add music", KX_IDC_ADDMUSICS_OK, [](Host& h) {
             INT count = 0;
             KxPidl* items = nullptr;
             HRESULT hr = h.res->ShowAddMusicsDialog(0, h.site, h.root, L"Music", h.given, &count, &items);
             for (INT i = 0; i < count; ++i) CoTaskMemFree(items[i]);
             CoTaskMemFree(items);
             return hr;
         }, {S_OK, kCancelled, E_OUTOFMEMORY}},
        {"image properties", KX_IDC_IMAGEPROP_NEXT,
         [](Host& h) { return h.res->ShowImagePropertyDialog(nullptr, h.site, h.root, h.picture); }, {S_OK, E_POINTER}},
        {"video properties", KX_IDC_VIDEOPROP_NEXT,
         [](Host& h) { return h.res->ShowVideoPropertyDialog(nullptr, h.site, h.root, h.video); }, {S_OK, E_POINTER}},
        {"tags of one item", IDOK, [](Host& h) {
             const KxPcPidl items[] = {h.track};
             return h.res->ShowEditTagDialog(nullptr, h.site, h.root, 1, items);
         }, {S_OK, E_NOTIMPL, kCancelled, E_FAIL, E_POINTER}},
        {"tags of several items", IDOK, [](Host& h) {
             const KxPcPidl items[] = {h.track, h.track2};
             return h.res->ShowEditTagDialog(nullptr, h.site, h.root, 2, items);
         }, {S_OK, kCancelled, E_FAIL, E_POINTER}},
    };
}

class HostileLibrary : public ::testing::Test {
protected:
    void SetUp() override {
        WatchTaskMemory();
        ASSERT_TRUE(h.Open(plugin));
    }
    void TearDown() override { h.Close(); }
    kxhost::InMemoryLibrary& Lib() { return h.Lib(); }

    // The view each dialog walks: a few items of the kind it shows.
    void SetView(const DialogRow& row) {
        if (row.name == "image properties")
            Lib().SetView({h.sample.pictures[0], h.sample.pictures[1], h.sample.pictures[2]}, 0);
        else if (row.name == "video properties")
            Lib().SetView({h.sample.videos[0], h.sample.videos[1]}, 0);
        else
            Lib().SetView({h.sample.tracks[0], h.sample.tracks[1], h.sample.tracks[2]}, 0);
    }

    HRESULT Run(const DialogRow& row) {
        SetView(row);
        DismissDialogs dismiss(row.button);
        return row.run(h);
    }

    // One dialog: the operations its undisturbed run calls, then a run with each of them failing.
    // What went wrong, one line each.
    std::string FailEachOperation(const DialogRow& row) {
        std::string wrong;
        const long held = Lib().OutstandingReferences();  // the fixture's own
        long calls[kxhost::kOpCount];
        for (int op = 0; op < kxhost::kOpCount; ++op) calls[op] = Lib().Calls(static_cast<Op>(op));
        HRESULT hr = Run(row);
        if (!row.documented.count(hr)) wrong += row.name + ", nothing failing: " + Hex(hr) + "\n";
        std::vector<Op> used;
        for (int op = 0; op < kxhost::kOpCount; ++op)
            if (Lib().Calls(static_cast<Op>(op)) > calls[op]) used.push_back(static_cast<Op>(op));
        if (used.empty()) wrong += row.name + ": calls nothing of the host\n";
        // a failing operation that hands out an interface does so (for the caller to release), and
        // then, in a second round, does not
        for (bool handOut : {true, false}) {
            Lib().SetFailuresHandOut(handOut);
            for (Op op : used) {
                Lib().FailOperation(op, E_FAIL, 1, -1);
                hr = Run(row);
                Lib().ResetFailures();
                const std::string what = row.name + ", " + kxhost::OpName(op) + " failing" +
                                         (handOut ? "" : " without hand-out") + ": ";
                if (!row.documented.count(hr)) wrong += what + Hex(hr) + "\n";
                if (Lib().OutstandingReferences() != held) wrong += what + Lib().DescribeLiveObjects() + "\n";
            }
        }
        Lib().SetFailuresHandOut(true);
        return wrong;
    }

    PluginLibrary plugin;
    Host h;
};

TEST_F(HostileLibrary, EachDialogWithEachOperationOfTheTreeFailing) {
    // A first undisturbed run of each dialog pays for what the process keeps once.
    for (const DialogRow& row : Dialogs()) Run(row);
    const ResourceCounts before = CountResources();
    std::string wrong;
    for (const DialogRow& row : Dialogs()) wrong += FailEachOperation(row);
    EXPECT_EQ("", wrong);
    EXPECT_EQ("", Leftovers(before));
}

}  // namespace
}  // namespace kxtest
