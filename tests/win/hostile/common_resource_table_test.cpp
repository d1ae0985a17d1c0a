// Every operation of IKxCommonResource, through KxComResPlgin.dll, called the way a careless or
// hostile host might: null and unwritable out pointers, null and destroyed windows, strings from
// empty to a million characters, damaged item identifier lists, item counts that run past the
// array. One row per call; a dialog that shows is dismissed at once (or OK is clicked where the
// row says). Expected is the documented code, never a crash, a hang or a leak.
#include <gtest/gtest.h>

#include <windows.h>

#include <cstdio>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "host/library/sample_library.h"
#include "kx/IKxCommonResource.h"
#include "resources/dialogs/add_musics_ids.h"
#include "resources/dialogs/add_to_playlist_ids.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/plugin_loader.h"
#include "tests/win/hostile/hostile_support.h"

namespace kxtest {
namespace {

const HRESULT kCancelled = HRESULT_FROM_WIN32(ERROR_CANCELLED);
const HRESULT kNoString = HRESULT_FROM_WIN32(ERROR_INVALID_HANDLE);
const HRESULT kCut = HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER);
const size_t kLengths[] = {0, 255, 256, 1000000};

using Host = HostileHost;

struct Row {
    std::string name;
    std::function<HRESULT(Host&)> call;
    std::set<HRESULT> expected;
    int button = 0;  // clicked in a dialog that shows; 0: the dialog is closed
};

std::vector<Row> Rows() {
    std::vector<Row> rows;
    auto add = [&](std::string name, std::function<HRESULT(Host&)> call, std::set<HRESULT> expected, int button = 0) {
        rows.push_back({std::move(name), std::move(call), std::move(expected), button});
    };

    // ---- strings
    add("GetResourceString null out", [](Host& h) { return h.res->GetResourceString(188, nullptr); }, {E_POINTER});
    add("GetResourceString read-only out",
        [](Host& h) { return h.res->GetResourceString(188, h.ReadOnlyOut<LPWSTR>()); }, {E_POINTER});
    for (UINT id : {0u, 0xFFFFu, 0xFFFFFFFFu})
        add("GetResourceString id " + std::to_string(id), [id](Host& h) {
            LPWSTR text = reinterpret_cast<LPWSTR>(1);
            HRESULT hr = h.res->GetResourceString(id, &text);
            if (text) return E_UNEXPECTED;  // a failure hands out nothing
            return hr;
        }, {kNoString});
    add("LoadResourceString null size", [](Host& h) {
        WCHAR b[8];
        return h.res->LoadResourceString(188, b, 8, nullptr);
    }, {E_INVALIDARG});
    add("LoadResourceString read-only size",
        [](Host& h) { return h.res->LoadResourceString(188, nullptr, 0, h.ReadOnlyOut<INT>()); }, {E_INVALIDARG});
    add("LoadResourceString read-only buffer", [](Host& h) {
        INT needed = 0;
        return h.res->LoadResourceString(188, h.ReadOnlyOut<WCHAR>(), 64, &needed);
    }, {E_INVALIDARG});
    for (INT cch : {0, -1, INT_MIN})
        add("LoadResourceString buffer of " + std::to_string(cch), [cch](Host& h) {
            WCHAR b[8] = {L'x'};
            INT needed = 0;
            HRESULT hr = h.res->LoadResourceString(188, b, cch, &needed);
            return b[0] == L'x' ? hr : E_UNEXPECTED;  // nothing written into a buffer of no size
        }, {E_INVALIDARG});
    add("LoadResourceString buffer of 1", [](Host& h) {
        WCHAR b[1] = {L'x'};
        INT needed = 0;
        HRESULT hr = h.res->LoadResourceString(188, b, 1, &needed);
        return b[0] == 0 && needed > 1 ? hr : E_UNEXPECTED;
    }, {kCut});

    // ---- the name dialog
    add("ShowNameDialog null out", [](Host& h) { return h.res->ShowNameDialog(nullptr, 1, 1, L"a", nullptr); },
        {E_INVALIDARG});
    add("ShowNameDialog read-only out",
        [](Host& h) { return h.res->ShowNameDialog(nullptr, 1, 1, L"a", h.ReadOnlyOut<LPWSTR>()); }, {E_INVALIDARG});
    for (INT kind : {0, 15, -1})
        add("ShowNameDialog kind " + std::to_string(kind), [kind](Host& h) {
            LPWSTR name = nullptr;
            return h.res->ShowNameDialog(nullptr, kind, 1, nullptr, &name);
        }, {kCancelled});
    for (INT mode : {0, 3})
        add("ShowNameDialog mode " + std::to_string(mode), [mode](Host& h) {
            LPWSTR name = nullptr;
            return h.res->ShowNameDialog(nullptr, 1, mode, nullptr, &name);
        }, {kCancelled});
    for (size_t n : kLengths)
        add("ShowNameDialog initial name of " + std::to_string(n), [n](Host& h) {
            LPWSTR name = nullptr;
            HRESULT hr = h.res->ShowNameDialog(nullptr, 2, 2, LongText(n).c_str(), &name);
            CoTaskMemFree(name);
            return hr;
        }, {kCancelled});
    add("ShowNameDialog destroyed parent", [](Host& h) {
        LPWSTR name = nullptr;
        HRESULT hr = h.res->ShowNameDialog(DestroyedWindow(), 1, 1, nullptr, &name);
        CoTaskMemFree(name);
        return hr;
    }, {E_INVALIDARG});

    // ---- the message box
    for (size_t n : kLengths)
        add("ShowMessageBox text and caption of " + std::to_string(n), [n](Host& h) {
            return h.res->ShowMessageBox(nullptr, LongText(n).c_str(), LongText(n).c_str(), MB_YESNO);
        }, {kCancelled});
    add("ShowMessageBox every flag", [](Host& h) { return h.res->ShowMessageBox(nullptr, nullptr, nullptr, ~0u); },
        {kCancelled});
    add("ShowMessageBox destroyed parent",
        [](Host& h) { return h.res->ShowMessageBox(DestroyedWindow(), L"text", nullptr, 0); }, {E_INVALIDARG});

    // ---- add to playlist or slideshow
    for (bool slideshow : {false, true}) {
        const std::string op = slideshow ? "ShowAddToSlideshowDialog" : "ShowAddToPlaylistDialog";
        auto addTo = [slideshow](Host& h, HWND parent, IKxContentFolder* folder, LPCWSTR name, KxPidl* item,
                                 LPWSTR* newName) {
            return slideshow ? h.res->ShowAddToSlideshowDialog(parent, folder, name, item, newName)
                             : h.res->ShowAddToPlaylistDialog(parent, folder, name, item, newName);
        };
        add(op + " null folder", [addTo](Host& h) {
            KxPidl item = nullptr;
            LPWSTR name = nullptr;
            return addTo(h, nullptr, nullptr, nullptr, &item, &name);
        }, {E_INVALIDARG});
        add(op + " null item out", [addTo](Host& h) {
            LPWSTR name = nullptr;
            return addTo(h, nullptr, h.root, L"New", nullptr, &name);
        }, {E_INVALIDARG});
        add(op + " read-only name out", [addTo](Host& h) {
            KxPidl item = nullptr;
            return addTo(h, nullptr, h.root, L"New", &item, h.ReadOnlyOut<LPWSTR>());
        }, {E_INVALIDARG});
        add(op + " destroyed parent", [addTo](Host& h) {
            KxPidl item = nullptr;
            LPWSTR name = nullptr;
            return addTo(h, DestroyedWindow(), h.root, L"New", &item, &name);
        }, {E_INVALIDARG});
        for (size_t n : kLengths)
            add(op + " suggested name of " + std::to_string(n) + ", OK", [addTo, n](Host& h) {
                KxPidl item = nullptr;
                LPWSTR name = nullptr;
                HRESULT hr = addTo(h, nullptr, h.root, LongText(n).c_str(), &item, &name);
                CoTaskMemFree(item);
                CoTaskMemFree(name);
                return hr;
            }, {S_OK, kCancelled}, KX_IDC_ADDTO_OK);
    }

    // ---- balloon tips (their own operations have a table of their own; the order of the creation's
    // checks, null and read-only out, null target and other interfaces, is the balloon test's)
    add("CreateBalloonTip destroyed target", [](Host& h) {
        void* tip = nullptr;
        return h.res->CreateBalloonTip(IID_IKxBalloonTipControl, DestroyedWindow(), L"t", L"t", 0, &tip);
    }, {E_INVALIDARG});
    for (size_t n : kLengths)
        add("CreateBalloonTip texts of " + std::to_string(n), [n](Host& h) {
            IKxBalloonTip* tip = nullptr;
            HRESULT hr = h.res->CreateBalloonTip(IID_IKxBalloonTip, GetDesktopWindow(), LongText(n).c_str(),
                                                 LongText(n).c_str(), 0x30, reinterpret_cast<void**>(&tip));
            if (tip) tip->Release();
            return hr;
        }, {S_OK});

    // ---- tag editing
    add("ShowEditTagDialog no items", [](Host& h) { return h.res->ShowEditTagDialog(nullptr, h.site, h.root, 1, nullptr); },
        {E_INVALIDARG});
    add("ShowEditTagDialog count 0", [](Host& h) {
        KxPcPidl items[] = {h.track};
        return h.res->ShowEditTagDialog(nullptr, h.site, h.root, 0, items);
    }, {E_INVALIDARG});
    add("ShowEditTagDialog count past the array", [](Host& h) {
        const KxPcPidl one[] = {h.track};
        auto items = static_cast<const KxPcPidl*>(GuardedPages::Get().PlaceAtEnd(one, sizeof(one)));
        return h.res->ShowEditTagDialog(nullptr, h.site, h.root, 3, items);
    }, {E_INVALIDARG});
    add("ShowEditTagDialog null item in the array", [](Host& h) {
        const KxPcPidl items[] = {nullptr};
        return h.res->ShowEditTagDialog(nullptr, h.site, h.root, 1, items);
    }, {kCancelled});
    add("ShowEditTagDialog empty identifier", [](Host& h) {
        const KxPcPidl items[] = {EmptyPidl()};
        return h.res->ShowEditTagDialog(nullptr, h.site, h.root, 1, items);
    }, {kCancelled});
    add("ShowEditTagDialog overlong identifier", [](Host& h) {
        const KxPcPidl items[] = {OverlongPidl()};
        return h.res->ShowEditTagDialog(nullptr, h.site, h.root, 1, items);
    }, {kCancelled});
    add("ShowEditTagDialog several items, one null", [](Host& h) {
        const KxPcPidl items[] = {h.track, nullptr};
        return h.res->ShowEditTagDialog(nullptr, h.site, h.root, 2, items);
    }, {kCancelled});
    add("ShowEditTagDialog destroyed parent", [](Host& h) {
        const KxPcPidl items[] = {h.track};
        return h.res->ShowEditTagDialog(DestroyedWindow(), h.site, h.root, 1, items);
    }, {E_INVALIDARG});

    // ---- image and video properties
    for (bool video : {false, true}) {
        const std::string op = video ? "ShowVideoPropertyDialog" : "ShowImagePropertyDialog";
        auto props = [video](Host& h, HWND parent, IKxContentSite* site, IKxContentFolder* folder, KxPcPidl item) {
            return video ? h.res->ShowVideoPropertyDialog(parent, site, folder, item)
                         : h.res->ShowImagePropertyDialog(parent, site, folder, item);
        };
        add(op + " null item", [props](Host& h) { return props(h, nullptr, h.site, h.root, nullptr); }, {E_INVALIDARG});
        add(op + " null folder", [props, video](Host& h) {
            return props(h, nullptr, h.site, nullptr, video ? h.video : h.picture);
        }, {E_INVALIDARG});
        add(op + " empty identifier", [props](Host& h) { return props(h, nullptr, h.site, h.root, EmptyPidl()); },
            {E_POINTER});
        add(op + " overlong identifier", [props](Host& h) { return props(h, nullptr, h.site, h.root, OverlongPidl()); },
            {E_POINTER});
        add(op + " a track", [props](Host& h) { return props(h, nullptr, h.site, h.root, h.track); }, {E_POINTER});
        add(op + " destroyed parent", [props, video](Host& h) {
            return props(h, DestroyedWindow(), h.site, h.root, video ? h.video : h.picture);
        }, {E_INVALIDARG});
    }

    // ---- add music
    auto addMusics = [](Host& h, IKxContentSite* site, IKxContentFolder* root, LPCWSTR rootName, INT* count,
                        KxPidl** items) { return h.res->ShowAddMusicsDialog(0, site, root, rootName, nullptr, count, items); };
    add("ShowAddMusicsDialog null site", [addMusics](Host& h) {
        INT count = 0;
        KxPidl* items = nullptr;
        return addMusics(h, nullptr, h.root, nullptr, &count, &items);
    }, {kCancelled});
    add("ShowAddMusicsDialog null root", [addMusics](Host& h) {
        INT count = 0;
        KxPidl* items = nullptr;
        return addMusics(h, h.site, nullptr, nullptr, &count, &items);
    }, {kCancelled});
    add("ShowAddMusicsDialog null outs, OK", [addMusics](Host& h) {
        return addMusics(h, h.site, h.root, nullptr, nullptr, nullptr);
    }, {E_INVALIDARG}, KX_IDC_ADDMUSICS_OK);
    add("ShowAddMusicsDialog read-only outs, OK", [addMusics](Host& h) {
        return addMusics(h, h.site, h.root, nullptr, h.ReadOnlyOut<INT>(), h.ReadOnlyOut<KxPidl*>());
    }, {E_INVALIDARG}, KX_IDC_ADDMUSICS_OK);
    for (size_t n : kLengths)
        add("ShowAddMusicsDialog root name of " + std::to_string(n) + ", OK", [addMusics, n](Host& h) {
            INT count = -1;
            KxPidl* items = nullptr;
            HRESULT hr = addMusics(h, h.site, h.root, LongText(n).c_str(), &count, &items);
            for (INT i = 0; i < count; ++i) CoTaskMemFree(items[i]);
            CoTaskMemFree(items);
            return hr;
        }, {S_OK}, KX_IDC_ADDMUSICS_OK);
    return rows;
}

class HostileCommonResource : public ::testing::Test {
protected:
    void SetUp() override {
        WatchTaskMemory();
        ASSERT_TRUE(h.Open(plugin));
        h.Lib().SetView({h.sample.tracks[0], h.sample.tracks[1]}, 0);
    }
    void TearDown() override { h.Close(); }

    // Runs every row; the codes that differ from the expected ones, one line each.
    std::string RunTable() {
        std::string wrong;
        // KX_HOSTILE_TRACE=1 names each row before it runs, to find the one that brings a crash
        const bool trace = GetEnvironmentVariableA("KX_HOSTILE_TRACE", nullptr, 0) != 0;
        for (const Row& row : Rows()) {
            const DWORD start = GetTickCount();
            HRESULT hr;
            {
                DismissDialogs dismiss(row.button);
                hr = row.call(h);
            }
            if (trace) std::printf("row: %s (%lu ms)\n", row.name.c_str(), GetTickCount() - start), std::fflush(stdout);
            if (!row.expected.count(hr)) wrong += row.name + ": " + Hex(hr) + "\n";
        }
        return wrong;
    }

    PluginLibrary plugin;
    Host h;
};

TEST_F(HostileCommonResource, EveryRowAnswersItsCodeAndLeavesNothing) {
    // The first pass pays for what the process keeps once (window classes, fonts, the system's
    // caches); the second must end where it began.
    EXPECT_EQ("", RunTable());
    const ResourceCounts before = CountResources();
    EXPECT_EQ("", RunTable());
    EXPECT_EQ("", Leftovers(before));
}

}  // namespace
}  // namespace kxtest
