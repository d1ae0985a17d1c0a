// The add-music dialog through KxComResPlgin.dll, driven like a user against the sample library:
// walking the bar, searching, choosing by each gesture, reordering, removing, and the identifiers
// the host gets, compared with the library's records; nothing is left behind.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "host/library/in_memory_library.h"
#include "host/library/sample_library.h"
#include "resources/dialogs/add_musics_ids.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/plugin_dialog_test.h"

namespace kxtest {
namespace {

using kxhost::ItemId;
using kxhost::Op;

const int kTracks = KX_IDC_ADDMUSICS_TRACKS, kChosen = KX_IDC_ADDMUSICS_CHOSEN, kOk = KX_IDC_ADDMUSICS_OK,
          kCancel = KX_IDC_ADDMUSICS_CANCEL, kAdd = KX_IDC_ADDMUSICS_ADD, kSearch = KX_IDC_ADDMUSICS_SEARCH;
INT const kUntouchedCount = 0x5A5A;
KxPidl* const kUntouchedArray = reinterpret_cast<KxPidl*>(static_cast<INT_PTR>(0xA5A5));

HWND List(HWND dlg, int id) { return GetDlgItem(dlg, id); }
int Count(HWND dlg, int id) { return int(SendMessageW(List(dlg, id), LVM_GETITEMCOUNT, 0, 0)); }

// What the list shows in a cell; asking draws the row, as painting it would.
std::wstring Cell(HWND dlg, int id, int row, int column) {
    wchar_t text[300] = {};
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = 300;
    SendMessageW(List(dlg, id), LVM_GETITEMTEXTW, WPARAM(row), LPARAM(&item));
    return text;
}

void Select(HWND dlg, int id, std::vector<int> rows) {
    LVITEMW none = {};
    none.stateMask = LVIS_SELECTED;
    SendMessageW(List(dlg, id), LVM_SETITEMSTATE, WPARAM(-1), LPARAM(&none));
    for (int row : rows) {
        LVITEMW item = {};
        item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageW(List(dlg, id), LVM_SETITEMSTATE, WPARAM(row), LPARAM(&item));
    }
}

POINT RowCentre(HWND dlg, int id, int row) {
    RECT r = {};
    r.left = LVIR_BOUNDS;
    SendMessageW(List(dlg, id), LVM_GETITEMRECT, WPARAM(row), LPARAM(&r));
    return POINT{r.left + 20, (r.top + r.bottom) / 2};
}

LPARAM At(POINT p) { return MAKELPARAM(p.x, p.y); }

void DoubleClick(HWND dlg, int id, int row) {
    const LPARAM at = At(RowCentre(dlg, id, row));
    HWND list = List(dlg, id);
    PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageW(list, WM_LBUTTONUP, 0, at);
    PostMessageW(list, WM_LBUTTONDBLCLK, MK_LBUTTON, at);
    PostMessageW(list, WM_LBUTTONUP, 0, at);
}

// A mouse drag of the row under `from` of list `id`, released over `to` (client coordinates of
// list `toId`): the press and a move past the drag threshold start it, the rest runs through the
// modal loop as the list holds the capture.
void Drag(HWND dlg, int id, int row, int toId, POINT to) {
    HWND list = List(dlg, id);
    const POINT start = RowCentre(dlg, id, row);
    PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, At(start));
    PostMessageW(list, WM_MOUSEMOVE, MK_LBUTTON, At(POINT{start.x + 30, start.y + 30}));
    MapWindowPoints(List(dlg, toId), list, &to, 1);
    PostMessageW(list, WM_MOUSEMOVE, MK_LBUTTON, At(to));
    PostMessageW(list, WM_LBUTTONUP, 0, At(to));
}

class AddMusicsThroughPlugin : public PluginDialogTest {
protected:
    void SetUp() override {
        sample = kxhost::BuildSampleLibrary(kxhost::DefaultSampleOptions());
        lib = sample.library;
        OpenHost();
        // what the process keeps once: the lists' first drawing, a drag image, a menu, a search
        Run([&](DialogDriver& d) { Gestures(d, &warmUpChosen, nullptr); });
        Run([&](DialogDriver& d) { Walk(d, nullptr); });
        before = CountResources();
    }

    // Runs the dialog under a script; the status, and the items handed back (freed here).
    HRESULT Run(const std::function<void(DialogDriver&)>& script, IKxTrackList* given = nullptr,
                std::vector<ItemId>* got = nullptr, LPCWSTR rootName = L"Music") {
        DialogDriver driver;
        script(driver);
        INT count = kUntouchedCount;
        KxPidl* items = kUntouchedArray;
        const HRESULT hr = resource->ShowAddMusicsDialog(0, site, root, rootName, given, &count, &items);
        EXPECT_FALSE(driver.timedOut()) << "the script did not close the dialog";
        EXPECT_EQ(driver.stepCount(), driver.stepsDone());
        if (hr != S_OK) {
            EXPECT_TRUE(count == kUntouchedCount && items == kUntouchedArray) << "a cancel touches nothing";
            return hr;
        }
        if (count == 0) {
            EXPECT_EQ(nullptr, items);
        }
        for (INT i = 0; i < count; ++i) {
            if (got) got->push_back(lib->ItemOf(items[i]));
            CoTaskMemFree(items[i]);
        }
        CoTaskMemFree(items);
        return hr;
    }
    // The item behind a row of the tracks list, as the library has it (the row is drawn first).
    DialogDriver::Step Note(int row, std::vector<ItemId>* into) {
        return [=](HWND dlg) {
            const std::wstring title = Cell(dlg, kTracks, row, 1);
            ItemId found = 0;
            for (ItemId t : sample.tracks)
                if (lib->Value(t, KxPropTitle) && lib->Value(t, KxPropTitle)->text == title) found = t;
            into->push_back(found);
        };
    }

    // Chooses tracks 0 to 3 of the Albums folder by double click, Space, the add button and a drag,
    // track 0 again by the button; then drags the first chosen row behind the last and removes the
    // second by Delete, and presses OK. `expected` gets the tracks in the order they were chosen.
    void Gestures(DialogDriver& d, std::vector<ItemId>* expected, std::wstring* shownTitle) {
        d.Inspect(Note(0, expected)).Do([](HWND dlg) { DoubleClick(dlg, kTracks, 0); });
        d.Inspect(Note(1, expected)).Do([](HWND dlg) { Select(dlg, kTracks, {1}); }).Focus(kTracks).Press(VK_SPACE);
        d.Inspect(Note(2, expected)).Do([](HWND dlg) { Select(dlg, kTracks, {2}); }).Click(kAdd);
        d.Inspect(Note(3, expected)).Do([](HWND dlg) {
            Select(dlg, kTracks, {3});
            RECT client;
            GetClientRect(List(dlg, kChosen), &client);
            Drag(dlg, kTracks, 3, kChosen, POINT{20, client.bottom / 2});
        });
        d.Inspect(Note(0, expected));  // the same track a second time
        d.Do([](HWND dlg) { Select(dlg, kTracks, {0}); }).Click(kAdd);
        d.Inspect([shownTitle](HWND dlg) {
            EXPECT_EQ(5, Count(dlg, kChosen));
            if (shownTitle) *shownTitle = Cell(dlg, kChosen, 3, 1);
        });
        d.Do([](HWND dlg) {
            Select(dlg, kChosen, {0});
            RECT client;
            GetClientRect(List(dlg, kChosen), &client);
            Drag(dlg, kChosen, 0, kChosen, POINT{20, client.bottom - 4});
        });
        d.Do([](HWND dlg) { Select(dlg, kChosen, {1}); }).Focus(kChosen).Press(VK_DELETE).Click(kOk);
    }

    struct Seen {
        std::string crumbs;  // buttons of the bar: at start, after the pick, after the search
        int albumRows = -1, searchRows = -1, clearedRows = -1;
    };
    static int Crumbs(HWND dlg) { return int(SendMessageW(GetDlgItem(dlg, KX_IDC_ADDMUSICS_BAR), TB_BUTTONCOUNT, 0, 0)); }
    // Opens the Albums crumb's drop-down and picks the third album, types a search that finds
    // nothing, clears the box (All tracks again), and presses OK.
    void Walk(DialogDriver& d, Seen* seen) {
        Seen& s = seen ? *seen : warmUpSeen;  // the steps run after this returns
        d.Do([&s](HWND dlg) {
            HWND bar = GetDlgItem(dlg, KX_IDC_ADDMUSICS_BAR);
            s.crumbs = std::to_string(Crumbs(dlg));
            NMTOOLBARW nm = {};
            nm.hdr.hwndFrom = bar;
            nm.hdr.idFrom = KX_IDC_ADDMUSICS_BAR;
            nm.hdr.code = TBN_DROPDOWN;
            nm.iItem = 5002;
            // the menu runs its own loop: the entry's command waits in the queue, and the menu
            // closes on the cancel that follows it
            PostMessageW(dlg, WM_COMMAND, 8000 + 2, 0);
            PostMessageW(dlg, WM_CANCELMODE, 0, 0);
            SendMessageW(bar, WM_NOTIFY, KX_IDC_ADDMUSICS_BAR, LPARAM(&nm));
        });
        d.Inspect([&s](HWND dlg) {
            s.crumbs += " " + std::to_string(Crumbs(dlg));
            s.albumRows = Count(dlg, kTracks);
        });
        d.Type(kSearch, L"zz").Inspect([&s](HWND dlg) { s.searchRows = Count(dlg, kTracks); });
        d.Do([](HWND dlg) { SetDlgItemTextW(dlg, kSearch, L""); }).Inspect([&s](HWND dlg) {
            s.clearedRows = Count(dlg, kTracks);
            s.crumbs += " " + std::to_string(Crumbs(dlg));
        });
        d.Click(kOk);
    }

    Seen warmUpSeen;
    std::vector<ItemId> warmUpChosen;
    kxhost::SampleLibrary sample;
};

TEST_F(AddMusicsThroughPlugin, EveryGestureHandsBackTheRowsInTheOrderShown) {
    std::vector<ItemId> expected, got;
    std::wstring shownTitle;
    ASSERT_EQ(S_OK, Run([&](DialogDriver& d) { Gestures(d, &expected, &shownTitle); }, nullptr, &got));
    ASSERT_EQ(5u, expected.size());
    EXPECT_EQ(expected[0], expected[4]);
    // 0 1 2 3 0 -> 1 2 3 0 0 -> 1 3 0 0
    EXPECT_EQ((std::vector<ItemId>{expected[1], expected[3], expected[0], expected[0]}), got);
    EXPECT_EQ(lib->Value(expected[3], KxPropTitle)->text, shownTitle);
}

TEST_F(AddMusicsThroughPlugin, WalksTheBarAndSearches) {
    std::vector<ItemId> got;
    Seen seen;
    EXPECT_EQ(S_OK, Run([&](DialogDriver& d) { Walk(d, &seen); }, nullptr, &got));
    EXPECT_TRUE(got.empty());
    EXPECT_EQ("3 4 3", seen.crumbs);
    EXPECT_EQ(int(lib->Members(sample.albums[2]).size()), seen.albumRows);
    EXPECT_EQ(0, seen.searchRows);
    EXPECT_EQ(int(lib->Members(lib->Folder(kxhost::WellKnown::AllTracks)).size()), seen.clearedRows);
}

// The bar from the keyboard: Tab reaches it with the last crumb lit, Down opens that crumb's menu,
// Left and Enter open the crumb before, as the mouse does.
TEST_F(AddMusicsThroughPlugin, TheBarWorksFromTheKeyboard) {
    std::string crumbs;
    int focused = 0;
    std::vector<ItemId> got;
    EXPECT_EQ(S_OK, Run([&](DialogDriver& d) {
        d.Focus(kCancel).Press(VK_TAB).Inspect([&](HWND dlg) {
            focused = FocusedId(dlg);
            crumbs = std::to_string(Crumbs(dlg));
        });
        d.Do([](HWND dlg) {
            // the menu's own loop takes the posted entry, then closes on the cancel
            PostMessageW(dlg, WM_COMMAND, 8000 + 2, 0);
            PostMessageW(dlg, WM_CANCELMODE, 0, 0);
            SendMessageW(GetDlgItem(dlg, KX_IDC_ADDMUSICS_BAR), WM_KEYDOWN, VK_DOWN, 0);
        });
        d.Inspect([&](HWND dlg) { crumbs += " " + std::to_string(Crumbs(dlg)); });
        d.Focus(kCancel).Press(VK_TAB).Press(VK_LEFT).Press(VK_RETURN).Inspect([&](HWND dlg) {
            crumbs += " " + std::to_string(Crumbs(dlg));
        });
        d.Click(kOk);
    }, nullptr, &got));
    EXPECT_EQ(KX_IDC_ADDMUSICS_BAR, focused);
    EXPECT_EQ("3 4 3", crumbs);
}

TEST_F(AddMusicsThroughPlugin, GivenTracksAndEdges) {
    IKxTrackList* given = nullptr;
    ASSERT_EQ(S_OK, lib->CreateTrackList(sample.playlists[0], &given));
    const std::vector<ItemId> members = lib->Members(sample.playlists[0]);
    std::vector<ItemId> got;
    // never drawn: the given tracks come back as they were, without their properties read
    EXPECT_EQ(S_OK, Run([](DialogDriver& d) { d.Click(kOk); }, given, &got));
    EXPECT_EQ(members, got);
    got.clear();
    EXPECT_EQ(S_OK, Run([](DialogDriver& d) { d.Click(kOk); }, nullptr, &got));
    EXPECT_TRUE(got.empty());
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_CANCELLED), Run([](DialogDriver& d) {
                  d.Do([](HWND dlg) { DoubleClick(dlg, kTracks, 0); }).Click(kCancel);
              }, given));
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_CANCELLED), Run([](DialogDriver& d) { d.Close(); }));
    lib->FailOperation(Op::GetOwnId, E_ACCESSDENIED);
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_CANCELLED), Run([](DialogDriver&) {}));
    lib->ResetFailures();
    given->Release();
}

}  // namespace
}  // namespace kxtest
