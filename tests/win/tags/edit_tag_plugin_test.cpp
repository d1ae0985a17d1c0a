// The single-item tag dialog through KxComResPlgin.dll, on a small in-memory library: what OK
// writes (the library's write log) and answers, the ways of leaving without a change, the 256th
// typed character and a long paste, the digits warning holding OK, Previous and Next saving and
// stepping, a failed step's message box, and new art from the file dialog, from the clipboard
// through the picture's menu, and dropped on the picture. Every test ends with nothing left behind.
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
#include <vector>

#include "host/library/in_memory_library.h"
#include "host/library/jpeg_encoder.h"
#include "resources/dialogs/edit_single_tags_ids.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/nested_dialogs.h"
#include "tests/win/common/plugin_dialog_test.h"
#include "tests/win/common/skin_recorder.h"
#include "tests/win/common/test_files.h"
#include "tests/win/tags/picture_text.h"
#include "tests/unit/tags/write_log_text.h"

namespace kxtest {
namespace {

using kxhost::ItemKind;

void SetText(HWND dlg, int id, LPCWSTR text) { SetDlgItemTextW(dlg, id, text); }
// A photograph of the imaging tests' fixture (fetched into the build tree).
std::wstring TestImage(const char* name) { return FixtureFile(KX_TEST_IMAGES, name); }

// Three tracks in the view, every tag writable. Track 1 has a negative year and track number.
class EditTagThroughPlugin : public PluginDialogTest {
protected:
    void SetUp() override {
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
        OpenHost();
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

    // Runs the dialog on track `index` with the script; the code as 8 hex digits.
    std::string Run(int index, DialogDriver& driver) {
        lib->SetView(tracks, index);
        KxPidl pidl = lib->NewPidl(tracks[static_cast<size_t>(index)]);
        const HRESULT hr = resource->ShowEditTagDialog(nullptr, site, root, 1, const_cast<const KxPcPidl*>(&pidl));
        CoTaskMemFree(pidl);
        EXPECT_FALSE(driver.timedOut()) << "the script did not close the dialog";
        EXPECT_EQ(driver.stepCount(), driver.stepsDone());
        return HrText(hr);
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

    std::vector<kxhost::ItemId> tracks;
    std::string shown;
};

TEST_F(EditTagThroughPlugin, OkWritesExactlyTheChangedTagsAndAnswersZero) {
    // the artist box: entries, the selected one and the text
    std::string artistBox;
    auto box = [&artistBox](HWND dlg) {
        const LRESULT count = SendDlgItemMessageW(dlg, KX_IDC_TAG_ARTIST, CB_GETCOUNT, 0, 0);
        const LRESULT selected = SendDlgItemMessageW(dlg, KX_IDC_TAG_ARTIST, CB_GETCURSEL, 0, 0);
        const std::wstring text = ItemText(dlg, KX_IDC_TAG_ARTIST);
        artistBox += std::to_string(count) + " " + std::to_string(selected) + " " +
                     std::string(text.begin(), text.end()) + ";";
    };
    DialogDriver driver;
    driver
        .Do([](HWND dlg) { SetText(dlg, KX_IDC_TAG_TITLE, L"Uno"); })
        .Inspect(box)
        .Focus(KX_IDC_TAG_ARTIST)  // the box gets its list of known names with the focus
        .Inspect(box)
        .Do([](HWND dlg) {
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
    EXPECT_EQ("0 -1 Zed;2 1 Zed;", artistBox) << "the item's value selected once the list came";
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

// A photograph that fits the thumbnail is stored as its file's exact bytes. (A larger picture is scaled
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
    g_chosenFile = TestImage("orientation_1.jpg");
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
    EXPECT_TRUE(FileDialogAnswered());
    EXPECT_TRUE(removeEnabled) << "new art can be removed again";
    EXPECT_TRUE(pictureShown);
    EXPECT_EQ("0:art", Writes()) << "the new art replaces the old, no removal";
    const auto art = lib->Value(tracks[0], KxPropAlbumArt);
    ASSERT_TRUE(art);
    EXPECT_TRUE(art->bytes == ReadFileBytes(g_chosenFile)) << "the file's exact bytes";
    EXPECT_EQ("JPEG 50x70", DescribePicture(art->bytes));
}

// Puts a file list (CF_HDROP) of the test's own on the clipboard.
void PutFilesOnClipboard(const std::vector<std::wstring>& files) {
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    SetClipboardData(CF_HDROP, NewFileList(files));
    CloseClipboard();
}
void CALLBACK CloseMenu(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    EndMenu();
}
// Opens the art menu on the picture, by the context-menu key (the picture has the focus) or a
// right click; a timer closes it again, and the menu has read the clipboard.
DialogDriver::Step OpenArtMenu(bool byKey) {
    return [byKey](HWND dlg) {
        HWND picture = GetDlgItem(dlg, KX_IDC_TAG_ART);
        SetTimer(nullptr, 0, 300, CloseMenu);
        if (byKey) {
            HWND focus = GetFocus();
            SendMessageW(focus, WM_KEYDOWN, VK_APPS, 1);
            SendMessageW(focus, WM_KEYUP, VK_APPS, 0xC0000001);
        } else {
            SendMessageW(picture, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(10, 10));
            SendMessageW(picture, WM_RBUTTONUP, 0, MAKELPARAM(10, 10));
        }
    };
}

// The art menu opened from the keyboard reads the clipboard; Paste then takes the one file it
// found there, and nothing from a list of two.
TEST_F(EditTagThroughPlugin, PasteTakesOneFileFromTheClipboard) {
    {
        // the first popup menu keeps the system's menu font and pictures for the process
        DialogDriver warmup;
        warmup.Do(OpenArtMenu(false)).Press(VK_ESCAPE);
        Run(0, warmup);
        before = CountResources();
    }
    const std::wstring file = TestImage("orientation_1.jpg");
    struct Case { const char* name; std::function<void()> put; bool byKey; const char* code; const char* art; } cases[] = {
        {"one file, right click", [&] { PutFilesOnClipboard({file}); }, false, "00000000", "JPEG 50x70"},
        {"one file, context-menu key", [&] { PutFilesOnClipboard({file}); }, true, "00000000", "JPEG 50x70"},
        {"two files", [&] { PutFilesOnClipboard({file, file}); }, true, "80004001", "JPEG 120x80"},
    };
    for (const auto& c : cases) {
        lib->SetValue(tracks[0], KxPropAlbumArt, kxhost::PropertyValue::Blob(kxhost::EncodeJpeg(120, 80, std::vector<DWORD>(120 * 80, 0xFF000000))));
        c.put();
        DialogDriver driver;
        driver.Focus(KX_IDC_TAG_NUMBER)
            .Press(VK_TAB)  // the picture is the next tab stop
            .Do(OpenArtMenu(c.byKey))
            .Do([](HWND dlg) { PostMessageW(dlg, WM_COMMAND, KX_IDM_ART_PASTE, 0); })
            .Click(IDOK);
        EXPECT_EQ(c.code, Run(0, driver)) << c.name;
        Writes();
        const auto art = lib->Value(tracks[0], KxPropAlbumArt);
        EXPECT_EQ(c.art, art ? DescribePicture(art->bytes) : "none") << c.name;
    }
    EXPECT_TRUE(SetClipboardText(L""));
}

// A data object of the test's own that offers one format, a CF_HDROP file list in global memory,
// and hands out a copy of it on every GetData as a drag source does.
class FileListData : public IDataObject {
public:
    explicit FileListData(const std::vector<std::wstring>& files) : m_files(files) {}
    STDMETHODIMP QueryInterface(REFIID riid, void** ppv) override {
        *ppv = IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IDataObject) ? this : nullptr;
        if (!*ppv) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++m_refs; }
    STDMETHODIMP_(ULONG) Release() override { return --m_refs; }  // lives on the test's stack
    STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) override {
        if (QueryGetData(format) != S_OK) return DV_E_FORMATETC;
        medium->tymed = TYMED_HGLOBAL;
        medium->hGlobal = NewFileList(m_files);
        medium->pUnkForRelease = nullptr;
        return S_OK;
    }
    STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    STDMETHODIMP QueryGetData(FORMATETC* f) override {
        return f && f->cfFormat == CF_HDROP && (f->tymed & TYMED_HGLOBAL) ? S_OK : DV_E_FORMATETC;
    }
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) override {
        out->ptd = nullptr;
        return E_NOTIMPL;
    }
    STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    STDMETHODIMP DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return OLE_E_ADVISENOTSUPPORTED; }
    STDMETHODIMP DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA**) override { return OLE_E_ADVISENOTSUPPORTED; }
    ULONG m_refs = 1;

private:
    std::vector<std::wstring> m_files;
};

// What the platform's drag loop does over the dialog, played on the target the dialog registered
// (OLE keeps it as the window's "OleDropTargetInterface" property): enter, one move, then a drop
// when the move was answered with an effect and a leave when not. "enter over end" as
// C (copy), - (none), "drop" or "leave".
std::string DragOnto(HWND dlg, IDataObject* data, POINT cursor) {
    auto* target = static_cast<IDropTarget*>(GetPropW(dlg, L"OleDropTargetInterface"));
    if (!target) return "no target registered";
    SetCursorPos(cursor.x, cursor.y);
    const POINTL pt = {cursor.x, cursor.y};
    auto effect = [](DWORD e) { return std::string(e == DROPEFFECT_COPY ? "C" : e == DROPEFFECT_NONE ? "-" : "?"); };
    DWORD e = DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK;
    if (target->DragEnter(data, MK_LBUTTON, pt, &e) != S_OK) return "enter failed";
    std::string out = effect(e);
    e = DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK;
    if (target->DragOver(MK_LBUTTON, pt, &e) != S_OK) return out + " over failed";
    out += " " + effect(e);
    if (e == DROPEFFECT_NONE) {
        target->DragLeave();
        return out + " leave";
    }
    e = DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK;
    target->Drop(data, 0, pt, &e);
    return out + " drop" + effect(e);
}

// One photograph dropped on the picture becomes the art; the dialog's own refusals (where the drop
// lands, the file's kind and presence, the art's flags, an emptied album) each leave the art. The
// target's other refusals (two files, a folder) are driven through OLE by the drop target's test.
TEST_F(EditTagThroughPlugin, ADropOnThePictureTakesOnePictureFile) {
    const std::wstring photo = TestImage("orientation_1.jpg");
    const std::wstring temp = TempFolder();
    const std::wstring renamed = temp + L"kx_edit_tag_photo.txt";
    ASSERT_TRUE(CopyFileW(photo.c_str(), renamed.c_str(), FALSE));
    const std::wstring missing = temp + L"kx_edit_tag_gone.jpg";
    const std::vector<BYTE> old = kxhost::EncodeJpeg(16, 16, std::vector<DWORD>(16 * 16, 0xFF000000));
    enum Where { OverPicture, OverTitle };
    struct Case {
        const char* name;
        std::vector<std::wstring> files;
        Where where;
        DWORD artFlags;
        LPCWSTR album;  // typed into the field first; null leaves it
        const char* drag;
        const char* code;
    } cases[] = {
        {"one photograph", {photo}, OverPicture, kxhost::kReadWrite, nullptr, "C C dropC", "00000000"},
        {"a file that is gone", {missing}, OverPicture, kxhost::kReadWrite, nullptr, "- - leave", "80004001"},
        {"another extension", {renamed}, OverPicture, kxhost::kReadWrite, nullptr, "- - leave", "80004001"},
        {"over the title", {photo}, OverTitle, kxhost::kReadWrite, nullptr, "C - leave", "80004001"},
        {"art read-only", {photo}, OverPicture, kxhost::kReadable, nullptr, "- - leave", "80004001"},
        // (an emptied album would remove the art on OK: Escape leaves)
        {"album emptied", {photo}, OverPicture, kxhost::kReadWrite, L"", "C - leave", "800704C7"},
    };
    for (const Case& c : cases) {
        lib->SetValue(tracks[0], KxPropAlbumArt, kxhost::PropertyValue::Blob(old), c.artFlags);
        FileListData data(c.files);
        std::string drag;
        DialogDriver driver;
        if (c.album) driver.Do([&](HWND dlg) { SetText(dlg, KX_IDC_TAG_ALBUM, c.album); });
        driver
            .Do([&](HWND dlg) {
                const RECT r = ItemRect(dlg, c.where == OverPicture ? KX_IDC_TAG_ART : KX_IDC_TAG_TITLE);
                POINT at = {(r.left + r.right) / 2, (r.top + r.bottom) / 2};
                ClientToScreen(dlg, &at);
                drag = DragOnto(dlg, &data, at);
            });
        if (c.album) driver.Press(VK_ESCAPE);
        else driver.Click(IDOK);
        EXPECT_EQ(c.code, Run(0, driver)) << c.name;
        EXPECT_EQ(c.drag, drag) << c.name;
        EXPECT_EQ(1u, data.m_refs) << c.name << ": the target keeps no reference to the data";
        const auto art = lib->Value(tracks[0], KxPropAlbumArt);
        const bool taken = std::string(c.name) == "one photograph";
        EXPECT_TRUE(art && art->bytes == (taken ? ReadFileBytes(photo) : old)) << c.name;
        Writes();
    }
    DeleteFileW(renamed.c_str());
}

// The clipboard holds a decoded photograph as CF_BITMAP: the menu encodes it when it opens, and
// Paste makes it the art at the bitmap's own size.
TEST_F(EditTagThroughPlugin, PasteTakesABitmapFromTheClipboard) {
    using namespace Gdiplus;
    GdiplusStartupInput input;
    ULONG_PTR token = 0;
    ASSERT_EQ(Ok, GdiplusStartup(&token, &input, nullptr));
    GpBitmap* photo = nullptr;
    HBITMAP bitmap = nullptr;
    UINT width = 0, height = 0;
    ASSERT_EQ(Ok, DllExports::GdipCreateBitmapFromFile(TestImage("orientation_1.jpg").c_str(), &photo));
    DllExports::GdipGetImageWidth(photo, &width);
    DllExports::GdipGetImageHeight(photo, &height);
    ASSERT_EQ(Ok, DllExports::GdipCreateHBITMAPFromBitmap(photo, &bitmap, 0xFFFFFFFF));
    DllExports::GdipDisposeImage(photo);
    // The encoding copies the bitmap's metadata first. A bitmap made from a handle has none:
    // Windows answers zero items, where Wine's imaging answers PropertyNotFound and nothing is
    // encoded.
    GpBitmap* probe = nullptr;
    UINT propSize = 0, propCount = 0;
    Status answer = DllExports::GdipCreateBitmapFromHBITMAP(bitmap, nullptr, &probe);
    if (answer == Ok) answer = DllExports::GdipGetPropertySize(probe, &propSize, &propCount);
    if (probe) DllExports::GdipDisposeImage(probe);
    GdiplusShutdown(token);
    if (answer != Ok) {
        DeleteObject(bitmap);
        GTEST_SKIP() << "this Wine's GdipGetPropertySize answers status " << answer
                     << " for a bitmap without metadata, where Windows answers 0 items: a pasted bitmap "
                        "cannot be encoded here";
    }
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    SetClipboardData(CF_BITMAP, bitmap);  // the clipboard's now
    CloseClipboard();
    DialogDriver driver;
    driver.Do(OpenArtMenu(false))
        .Do([](HWND dlg) { PostMessageW(dlg, WM_COMMAND, KX_IDM_ART_PASTE, 0); })
        .Click(IDOK);
    EXPECT_EQ("00000000", Run(0, driver));
    EXPECT_TRUE(SetClipboardText(L""));
    EXPECT_EQ("0:art", Writes());
    const auto art = lib->Value(tracks[0], KxPropAlbumArt);
    EXPECT_EQ("JPEG " + std::to_string(width) + "x" + std::to_string(height),
              art ? DescribePicture(art->bytes) : "none");
}

}  // namespace
}  // namespace kxtest
