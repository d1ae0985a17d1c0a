// The single-item tag dialog through KxComResPlgin.dll, on a small in-memory library: what OK
// writes (the library's write log) and answers, the ways of leaving without a change, the 256th
// typed character and a long paste, the digits warning holding OK, Previous and Next saving and
// stepping, and a failed step's message box. Every test ends with nothing left behind.
#include <windows.h>
#include <commctrl.h>
#include <gdiplus.h>
#include <shlwapi.h>
#include <shlobj.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "host/library/in_memory_library.h"
#include "host/library/jpeg_encoder.h"
#include "resources/dialogs/edit_single_tags_ids.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/nested_dialogs.h"
#include "tests/win/common/plugin_loader.h"
#include "tests/win/common/skin_recorder.h"
#include "tests/win/tags/picture_text.h"
#include "tests/unit/tags/write_log_text.h"

namespace kxtest {
namespace {

using kxhost::ItemKind;

void SetText(HWND dlg, int id, LPCWSTR text) { SetDlgItemTextW(dlg, id, text); }

// Three tracks in the view, every tag writable. Track 1 has a negative year and track number.
class EditTagThroughPlugin : public ::testing::Test {
protected:
    void SetUp() override {
        WatchTaskMemory();
        for (LPCWSTR name : {L"Zed", L"Beta"}) lib->AddContainer(ItemKind::Artist, name);
        typedef kxhost::PropertyValue V;
        const LPCWSTR titles[] = {L"One", L"Two", L"Three"};
        const LPCWSTR years[] = {L"1999", L"-5", L"1985"};
        const LONG numbers[] = {3, -2, 42};
        for (int i = 0; i < 3; ++i) {
            tracks.push_back(lib->AddItem(ItemKind::Track, titles[i]));
            for (auto& p : {std::make_pair(&KxPropTitle, V::String(titles[i])),
                            std::make_pair(&KxPropArtist, V::String(L"Zed")),
                            std::make_pair(&KxPropAlbum, V::String(L"Abbey")),
                            std::make_pair(&KxPropYear, V::String(years[i])),
                            std::make_pair(&KxPropTrackNumber, V::Int(numbers[i])),
                            std::make_pair(&KxPropRating, V::Int(4)), std::make_pair(&KxPropTagInt12, V::Int(7)),
                            std::make_pair(&KxPropAlbumArt, V::Blob({0xFF, 0xD8, 1}))})
                lib->SetValue(tracks.back(), *p.first, p.second, kxhost::kReadWrite);
        }
        lib->SetView(tracks, 0);
        ASSERT_EQ(S_OK, lib->GetRootFolder(&root));
        ASSERT_EQ(S_OK, lib->CreateSite(&site));
        ASSERT_EQ(S_OK, plugin.Create(&resource));
        {
            // what the process keeps once: the dialog's classes, the first skinned balloon, and
            // the system's wait cursor of a step and hand cursor of the store link
            SkinRecorder skin;
            DialogDriver warmup;
            warmup.Do([](HWND dlg) { SetText(dlg, KX_IDC_TAG_YEAR, L"x"); })
                .Click(IDOK)
                .Do([](HWND dlg) { SetText(dlg, KX_IDC_TAG_YEAR, L""); })
                .Click(KX_IDC_TAG_NEXT)
                .Press(VK_ESCAPE);
            LoadCursorW(nullptr, IDC_HAND);
            Run(0, warmup);
        }
        lib->ClearWrites();
        before = CountResources();
    }
    void TearDown() override {
        ResourceCounts a = CountResources(), &b = before;
        EXPECT_EQ(std::tie(b.windows, b.gdiObjects, b.userObjects, b.taskMemBlocks),
                  std::tie(a.windows, a.gdiObjects, a.userObjects, a.taskMemBlocks))
            << "windows, GDI objects, USER objects and CoTaskMem blocks left behind";
        if (resource) resource->Release();
        if (site) site->Release();
        if (root) root->Release();
        EXPECT_EQ(0, lib->OutstandingReferences()) << lib->DescribeLiveObjects();
    }

    // Runs the dialog on track `index` with the script; the code as 8 hex digits.
    std::string Run(int index, DialogDriver& driver) {
        lib->SetView(tracks, index);
        KxPidl pidl = lib->NewPidl(tracks[static_cast<size_t>(index)]);
        const HRESULT hr = resource->ShowEditTagDialog(nullptr, site, root, 1, const_cast<const KxPcPidl*>(&pidl));
        CoTaskMemFree(pidl);
        EXPECT_FALSE(driver.timedOut()) << "the script did not close the dialog";
        EXPECT_EQ(driver.stepCount(), driver.stepsDone());
        char code[12];
        std::snprintf(code, sizeof code, "%08X", static_cast<unsigned>(hr));
        return code;
    }
    std::string Writes() { return TakeWritesText(*lib, tracks); }
    // The step buttons ("P+ N-"), the focus on one of them, and the title.
    DialogDriver::Step Snap() {
        return [this](HWND dlg) {
            const int focus = FocusedId(dlg);
            shown += shown.empty() ? "" : " / ";
            shown += std::string(ItemEnabled(dlg, KX_IDC_TAG_PREV) ? "P+ " : "P- ") +
                     (ItemEnabled(dlg, KX_IDC_TAG_NEXT) ? "N+" : "N-");
            shown += focus == KX_IDC_TAG_PREV ? " fP" : focus == KX_IDC_TAG_NEXT ? " fN" : "";
            const std::wstring title = ItemText(dlg, KX_IDC_TAG_TITLE);
            shown += " " + std::string(title.begin(), title.end());
        };
    }

    std::shared_ptr<kxhost::InMemoryLibrary> lib = kxhost::InMemoryLibrary::Create();
    std::vector<kxhost::ItemId> tracks;
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;
    PluginLibrary plugin;
    IKxCommonResource* resource = nullptr;
    ResourceCounts before{};
    std::string shown;
};

TEST_F(EditTagThroughPlugin, OkWritesExactlyTheChangedTagsAndAnswersZero) {
    DialogDriver driver;
    driver
        .Do([](HWND dlg) {
            SetText(dlg, KX_IDC_TAG_TITLE, L"Uno");
            // the artist picked from the known names, the year typed
            const LRESULT beta = SendDlgItemMessageW(dlg, KX_IDC_TAG_ARTIST, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                                     reinterpret_cast<LPARAM>(L"Beta"));
            SendDlgItemMessageW(dlg, KX_IDC_TAG_ARTIST, CB_SETCURSEL, static_cast<WPARAM>(beta), 0);
            SendDlgItemMessageW(dlg, KX_IDC_TAG_RATING, TBM_SETPOS, TRUE, 2);
        })
        .Focus(KX_IDC_TAG_YEAR)
        .Do([](HWND dlg) { SendDlgItemMessageW(dlg, KX_IDC_TAG_YEAR, CB_SETEDITSEL, 0, MAKELPARAM(0, -1)); })
        .Press('2').Press('0').Press('0').Press('1')
        .Inspect([this](HWND dlg) { shown = "year " + std::to_string(ItemText(dlg, KX_IDC_TAG_YEAR).size()); })
        .Press(VK_RETURN);
    EXPECT_EQ("00000000", Run(0, driver));
    EXPECT_EQ("year 4", shown);
    EXPECT_EQ("0:1 0:3 0:5 0:13", Writes());  // title, artist, year, rating
}

TEST_F(EditTagThroughPlugin, LeavingWithoutAChange) {
    struct Case { const char* how; std::function<void(DialogDriver&)> leave; const char* code; } cases[] = {
        {"OK", [](DialogDriver& d) { d.Click(IDOK); }, "80004001"},
        {"Close", [](DialogDriver& d) { d.Click(KX_IDC_TAG_CLOSE); }, "800704C7"},
        {"Escape", [](DialogDriver& d) { d.Press(VK_ESCAPE); }, "800704C7"},
        {"close box", [](DialogDriver& d) { d.Close(); }, "800704C7"},
    };
    for (const auto& c : cases) {
        DialogDriver driver;
        c.leave(driver);
        EXPECT_EQ(c.code, Run(0, driver)) << c.how;
        EXPECT_EQ("", Writes()) << c.how;
    }
}

TEST_F(EditTagThroughPlugin, TheDigitsWarningHoldsOkAndEditsAreLostOnCancel) {
    int focus = 0;
    bool open = false;
    DialogDriver driver;
    driver.Do([](HWND dlg) { SetText(dlg, KX_IDC_TAG_YEAR, L"19a9"); })
        .Do([](HWND dlg) { SetText(dlg, KX_IDC_TAG_TITLE, L"Changed"); })
        .Click(IDOK)
        .Inspect([&](HWND dlg) {
            HWND f = GetFocus();
            if (f && GetParent(f) != dlg) f = GetParent(f);  // the edit part of the combo box
            focus = GetDlgCtrlID(f);
            open = IsWindowVisible(dlg) != FALSE;
        })
        .Press(VK_ESCAPE);
    EXPECT_EQ("800704C7", Run(0, driver));
    EXPECT_TRUE(open);
    EXPECT_EQ(KX_IDC_TAG_YEAR, focus) << "the year field has the focus, its text selected";
    EXPECT_EQ("", Writes());
}

TEST_F(EditTagThroughPlugin, TheTypedCharacterPastTheLimitIsTakenBackAPasteStaysAndHoldsOk) {
    const std::wstring full(255, L'a');
    std::wstring afterTyped, afterPaste, afterOk;
    DialogDriver driver;
    driver.Do([&](HWND dlg) { SetText(dlg, KX_IDC_TAG_TITLE, full.c_str()); })
        .Focus(KX_IDC_TAG_TITLE)
        .Do([](HWND dlg) { SendDlgItemMessageW(dlg, KX_IDC_TAG_TITLE, EM_SETSEL, 255, 255); })
        .Press('C')
        .Inspect([&](HWND dlg) { afterTyped = ItemText(dlg, KX_IDC_TAG_TITLE); })
        .Do([](HWND) {
            EXPECT_TRUE(SetClipboardText(L"xyz"));
            HoldControl(true);
        })
        .Press('V')
        .Do([&](HWND dlg) {
            HoldControl(false);
            afterPaste = ItemText(dlg, KX_IDC_TAG_TITLE);
        })
        .Click(IDOK)
        .Inspect([&](HWND dlg) { afterOk = ItemText(dlg, KX_IDC_TAG_TITLE); })
        .Press(VK_ESCAPE);
    EXPECT_EQ("800704C7", Run(0, driver));
    EXPECT_TRUE(SetClipboardText(L""));
    EXPECT_EQ(full, afterTyped) << "the 256th typed character is taken back";
    EXPECT_EQ(258u, afterPaste.size()) << "the paste stays";
    EXPECT_EQ(258u, afterOk.size()) << "OK refused it";
    EXPECT_EQ("", Writes());
}

TEST_F(EditTagThroughPlugin, NextAndPreviousSaveThenStep) {
    std::wstring year, track;
    DialogDriver driver;
    driver.Inspect(Snap())
        .Do([](HWND dlg) { SetText(dlg, KX_IDC_TAG_TITLE, L"Uno"); })
        .Click(KX_IDC_TAG_NEXT)
        .Inspect(Snap())
        .Inspect([&](HWND dlg) {
            year = ItemText(dlg, KX_IDC_TAG_YEAR);
            track = ItemText(dlg, KX_IDC_TAG_TRACK);
        })
        .Click(KX_IDC_TAG_NEXT)
        .Inspect(Snap())
        .Press(VK_LEFT)  // on the focused Previous: a step back
        .Inspect(Snap())
        .Click(IDOK);
    EXPECT_EQ("80004001", Run(0, driver)) << "nothing changed on the last item shown";
    EXPECT_EQ("P- N+ fN One / P+ N+ fN Two / P+ N- fP Three / P+ N+ fP Two", shown);
    EXPECT_EQ(L"", year) << "a negative year shows an empty field";
    EXPECT_EQ(L"", track);
    EXPECT_EQ("0:1", Writes()) << "the typed title saved on the step, nothing of track 0 on the others";
}

// The message box runs its own loop and takes the activation, so the driver's script waits: a
// timer of the test's own answers the box.
HWND g_stepDialog = nullptr;
std::wstring g_boxCaption;
void CALLBACK AnswerMessageBox(HWND, UINT, UINT_PTR id, DWORD) {
    HWND box = FindOtherDialog(g_stepDialog);
    if (!box) return;
    WCHAR caption[64] = {};
    GetWindowTextW(box, caption, 64);
    g_boxCaption = caption;
    KillTimer(nullptr, id);
    PostMessageW(box, WM_COMMAND, IDOK, 0);
}

TEST_F(EditTagThroughPlugin, AFailedStepShowsTheMessageAndStays) {
    g_boxCaption.clear();
    DialogDriver driver;
    driver
        .Do([this](HWND dlg) {
            lib->FailOperation(kxhost::Op::CursorGetItemAt, E_FAIL);
            g_stepDialog = dlg;
            SetTimer(nullptr, 0, 200, AnswerMessageBox);
        })
        .Click(KX_IDC_TAG_NEXT)
        .Inspect(Snap())
        .Press(VK_ESCAPE);
    EXPECT_EQ("800704C7", Run(0, driver));
    EXPECT_EQ(L"Edit Tags", g_boxCaption) << "the message box came up with its caption";
    EXPECT_EQ("P+ N- fP One", shown) << "the failed side is closed, the item stays";
    EXPECT_EQ("", Writes()) << "the unchanged item wrote nothing";
}

std::wstring g_chosenFile;

// A JPEG that fits the thumbnail is stored as its file's exact bytes. (A larger picture is scaled
// and re-encoded with its metadata copied; Wine's imaging cannot say that a file has no metadata,
// so that path is covered by the imaging tests on their stand-in.)
TEST_F(EditTagThroughPlugin, ArtFromAFileThroughTheFileDialogIsStoredAndShown) {
    {
        // the file dialog's first showing keeps the shell's icons and lists for the process
        DialogDriver warmup;
        warmup.Do([](HWND dlg) { AnswerFileDialog(dlg, L""); })
            .Click(KX_IDC_TAG_BROWSE)
            .Press(VK_ESCAPE);
        Run(0, warmup);
        before = CountResources();
    }
    WCHAR temp[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temp);
    g_chosenFile = std::wstring(temp) + L"kx_edit_tag_cover.jpg";
    std::vector<DWORD> pixels;
    for (int y = 0; y < 80; ++y)
        for (int x = 0; x < 120; ++x) pixels.push_back(0xFF000000u | static_cast<DWORD>(x * 2) << 16 | static_cast<DWORD>(y * 3));
    const std::vector<BYTE> jpeg = kxhost::EncodeJpeg(120, 80, pixels);
    FILE* f = _wfopen(g_chosenFile.c_str(), L"wb");
    ASSERT_TRUE(f);
    fwrite(jpeg.data(), jpeg.size(), 1, f);
    fclose(f);

    bool removeEnabled = false;
    bool pictureShown = false;
    DialogDriver driver;
    driver
        .Do([](HWND dlg) {
            SendDlgItemMessageW(dlg, KX_IDC_TAG_REMOVE, BM_CLICK, 0, 0);  // the old art goes first
            AnswerFileDialog(dlg, g_chosenFile);
        })
        .Click(KX_IDC_TAG_BROWSE)
        .Inspect([&](HWND dlg) {
            removeEnabled = ItemEnabled(dlg, KX_IDC_TAG_REMOVE);
            pictureShown = SendDlgItemMessageW(dlg, KX_IDC_TAG_ART, STM_GETIMAGE, IMAGE_BITMAP, 0) != 0;
        })
        .Click(IDOK);
    EXPECT_EQ("00000000", Run(0, driver));
    DeleteFileW(g_chosenFile.c_str());
    EXPECT_TRUE(FileDialogAnswered());
    EXPECT_TRUE(removeEnabled) << "new art can be removed again";
    EXPECT_TRUE(pictureShown);
    EXPECT_EQ("0:art", Writes()) << "the new art replaces the old, no removal";
    const auto art = lib->Value(tracks[0], KxPropAlbumArt);
    ASSERT_TRUE(art);
    EXPECT_TRUE(art->bytes == jpeg) << "the file's exact bytes";
    EXPECT_EQ("JPEG 120x80", DescribePicture(art->bytes));
}

// Puts a file list (CF_HDROP) of the test's own on the clipboard.
void PutFilesOnClipboard(const std::vector<std::wstring>& files) {
    std::wstring list;
    for (const std::wstring& f : files) list += f + L'\0';
    list += L'\0';
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + list.size() * sizeof(WCHAR));
    auto* drop = static_cast<DROPFILES*>(GlobalLock(block));
    drop->pFiles = sizeof(DROPFILES);
    drop->fWide = TRUE;
    memcpy(drop + 1, list.data(), list.size() * sizeof(WCHAR));
    GlobalUnlock(block);
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    SetClipboardData(CF_HDROP, block);
    CloseClipboard();
}
void CALLBACK CloseMenu(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    EndMenu();
}

// The art menu opened from the keyboard reads the clipboard; Paste then takes the one file it
// found there, and nothing from a list of two.
TEST_F(EditTagThroughPlugin, PasteTakesOneFileFromTheClipboard) {
    {
        // the first popup menu keeps the system's menu font and pictures for the process
        DialogDriver warmup;
        warmup
            .Do([](HWND dlg) {
                SetTimer(nullptr, 0, 300, CloseMenu);
                SendMessageW(dlg, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(GetDlgItem(dlg, KX_IDC_TAG_ART)), -1);
            })
            .Press(VK_ESCAPE);
        Run(0, warmup);
        before = CountResources();
    }
    WCHAR temp[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temp);
    const std::wstring file = std::wstring(temp) + L"kx_edit_tag_pasted.jpg";
    std::vector<DWORD> pixels(48 * 32, 0xFF2060A0);
    const std::vector<BYTE> jpeg = kxhost::EncodeJpeg(48, 32, pixels);
    FILE* f = _wfopen(file.c_str(), L"wb");
    ASSERT_TRUE(f);
    fwrite(jpeg.data(), jpeg.size(), 1, f);
    fclose(f);
    struct Case { const char* name; std::function<void()> put; const char* code; const char* art; } cases[] = {
        {"one file", [&] { PutFilesOnClipboard({file}); }, "00000000", "JPEG 48x32"},
        {"two files", [&] { PutFilesOnClipboard({file, file}); }, "80004001", "JPEG 120x80"},
    };
    for (const auto& c : cases) {
        lib->SetValue(tracks[0], KxPropAlbumArt, kxhost::PropertyValue::Blob(kxhost::EncodeJpeg(120, 80, std::vector<DWORD>(120 * 80, 0xFF000000))));
        c.put();
        DialogDriver driver;
        driver
            .Do([](HWND dlg) {
                SetTimer(nullptr, 0, 300, CloseMenu);
                SendMessageW(dlg, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(GetDlgItem(dlg, KX_IDC_TAG_ART)), -1);
            })
            .Do([](HWND dlg) { PostMessageW(dlg, WM_COMMAND, KX_IDM_ART_PASTE, 0); })
            .Click(IDOK);
        EXPECT_EQ(c.code, Run(0, driver)) << c.name;
        Writes();
        const auto art = lib->Value(tracks[0], KxPropAlbumArt);
        EXPECT_EQ(c.art, art ? DescribePicture(art->bytes) : "none") << c.name;
    }
    EXPECT_TRUE(SetClipboardText(L""));
    DeleteFileW(file.c_str());
}

}  // namespace
}  // namespace kxtest
