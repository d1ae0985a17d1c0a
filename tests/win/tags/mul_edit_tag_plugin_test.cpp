// The multiple-item tag dialog through KxComResPlgin.dll, on the in-memory library: which box each
// real change ticks, what OK writes to every item (the library's write log and its count of
// calls), a photograph as the art of all items and its removal from all, leaving without a
// write, and 10,000 items at once. Every test ends with nothing left behind.
#include <windows.h>
#include <commctrl.h>
#include <gdiplus.h>
#include <shlwapi.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "host/library/in_memory_library.h"
#include "resources/dialogs/edit_multiple_tags_ids.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/nested_dialogs.h"
#include "tests/win/common/plugin_dialog_test.h"
#include "tests/win/common/skin_recorder.h"
#include "tests/win/common/test_files.h"
#include "tests/win/tags/picture_text.h"
#include "tests/unit/tags/write_log_text.h"

#ifndef KX_TEST_IMAGES
#error "KX_TEST_IMAGES names the folder of the fetched test images"
#endif

namespace kxtest {
namespace {

using kxhost::ItemKind;

const int kBoxes[] = {KX_IDC_MTAG_ARTIST_CHECK, KX_IDC_MTAG_ARTIST2_CHECK, KX_IDC_MTAG_ALBUM_CHECK,
                      KX_IDC_MTAG_GENRE_CHECK,  KX_IDC_MTAG_YEAR_CHECK,    KX_IDC_MTAG_RATING_CHECK,
                      KX_IDC_MTAG_ART_CHECK};

// The ticked boxes, as their ids.
std::string Ticked(HWND dlg) {
    std::string out;
    for (int box : kBoxes)
        if (IsDlgButtonChecked(dlg, box) == BST_CHECKED) out += (out.empty() ? "" : " ") + std::to_string(box);
    return out;
}

// Three tracks with every tag writable and art of their own.
class MulEditTagThroughPlugin : public PluginDialogTest {
protected:
    void SetUp() override {
        for (LPCWSTR name : {L"Zed", L"Beta"}) lib->AddContainer(ItemKind::Artist, name);
        typedef kxhost::PropertyValue V;
        for (int i = 0; i < 3; ++i) {
            tracks.push_back(lib->AddItem(ItemKind::Track, L"t"));
            for (auto& p : {std::make_pair(&KxPropArtist, V::String(L"Zed")),
                            std::make_pair(&KxPropArtist2, V::String(L"Zed")),
                            std::make_pair(&KxPropAlbum, V::String(L"Abbey")),
                            std::make_pair(&KxPropGenre, V::String(L"Rock")),
                            std::make_pair(&KxPropYear, V::String(L"1999")), std::make_pair(&KxPropRating, V::Int(4)),
                            std::make_pair(&KxPropAlbumArt, V::Blob({0xFF, 0xD8, static_cast<BYTE>(i)}))})
                lib->SetValue(tracks.back(), *p.first, p.second, kxhost::kReadWrite);
        }
        lib->SetView(tracks, 0);
        OpenHost();
        {
            // what the process keeps once: the dialog's classes, the first skinned balloon, the
            // hand cursor of the store link and the shell's icons and lists of the file dialog
            SkinRecorder skin;
            DialogDriver warmup;
            warmup.Do([](HWND dlg) { SetDlgItemTextW(dlg, KX_IDC_MTAG_YEAR, L"x"); })
                .Click(IDOK)
                .Do([](HWND dlg) { AnswerFileDialog(dlg, L""); })
                .Click(KX_IDC_MTAG_BROWSE)
                .Press(VK_ESCAPE);
            LoadCursorW(nullptr, IDC_HAND);
            Run(warmup);
        }
        lib->ClearWrites();
        before = CountResources();
    }

    // Runs the dialog on all the tracks with the script; the code as 8 hex digits.
    std::string Run(DialogDriver& driver) {
        std::vector<KxPidl> pidls;
        for (kxhost::ItemId t : tracks) pidls.push_back(lib->NewPidl(t));
        const HRESULT hr = resource->ShowEditTagDialog(nullptr, site, root, static_cast<UINT>(pidls.size()),
                                                       const_cast<const KxPcPidl*>(pidls.data()));
        for (KxPidl p : pidls) CoTaskMemFree(p);
        EXPECT_FALSE(driver.timedOut()) << "the script did not close the dialog";
        EXPECT_EQ(driver.stepCount(), driver.stepsDone());
        return HrText(hr);
    }
    // The writes since the last call; every value but the art came through SetProperties.
    std::string Writes() {
        for (const kxhost::WriteRecord& w : lib->Writes()) {
            if (!IsEqualGUID(w.key.fmtid, KxPropAlbumArt.fmtid)) {
                EXPECT_EQ(kxhost::WriteRecord::Properties, w.via);
            }
        }
        return TakeWritesText(*lib, tracks);
    }

    std::vector<kxhost::ItemId> tracks;
};

TEST_F(MulEditTagThroughPlugin, EachChangeTicksItsOwnBoxAndCancelWritesNothing) {
    std::vector<std::string> seen;
    const auto snap = [&](HWND dlg) { seen.push_back(Ticked(dlg)); };
    DialogDriver driver;
    driver.Inspect(snap)
        // a thumb that moves ticks nothing; only where it is let go counts
        .Do([](HWND dlg) {
            SendMessageW(dlg, WM_HSCROLL, MAKEWPARAM(TB_THUMBTRACK, 2),
                         reinterpret_cast<LPARAM>(GetDlgItem(dlg, KX_IDC_MTAG_RATING)));
        })
        .Inspect(snap)
        .Type(KX_IDC_MTAG_ARTIST, L"Q").Inspect(snap)
        .Type(KX_IDC_MTAG_ARTIST2, L"Q").Inspect(snap)
        .Type(KX_IDC_MTAG_ALBUM, L"Q").Inspect(snap)
        .Type(KX_IDC_MTAG_GENRE, L"Q").Inspect(snap)
        // another year chosen in the list with the arrow key, no text typed
        .Focus(KX_IDC_MTAG_YEAR).Press(VK_DOWN).Inspect(snap)
        .Focus(KX_IDC_MTAG_RATING).Press(VK_RIGHT).Inspect(snap)
        .Press(VK_ESCAPE);
    EXPECT_EQ("800704C7", Run(driver));
    const std::vector<std::string> expected = {
        "", "", "10006", "10006 10008", "10006 10008 10011", "10006 10008 10011 10013",
        "10006 10008 10011 10013 10026", "10006 10008 10011 10013 10026 10023"};
    EXPECT_EQ(expected, seen);
    EXPECT_EQ("", Writes());
    EXPECT_EQ(0, lib->Calls(kxhost::Op::SetProperties)) << "Cancel leaves the library untouched";
}

TEST_F(MulEditTagThroughPlugin, OkWritesTheTickedFieldsToEveryItemAndNothingElse) {
    struct Case { const char* how; std::function<void(DialogDriver&)> script; const char* code; const char* writes; long calls; }
    cases[] = {
        {"artist only", [](DialogDriver& d) { d.Type(KX_IDC_MTAG_ARTIST, L"Beta").Click(IDOK); }, "00000000",
         "0:3 1:3 2:3", 1},
        // an artist unlike the others' left unticked, a ticked rating of 0
        {"rating 0", [](DialogDriver& d) {
             d.Do([](HWND dlg) {
                  SendDlgItemMessageW(dlg, KX_IDC_MTAG_RATING, TBM_SETPOS, TRUE, 0);
                  SetDlgItemTextW(dlg, KX_IDC_MTAG_ARTIST2, L"Unticked");
                  CheckDlgButton(dlg, KX_IDC_MTAG_RATING_CHECK, BST_CHECKED);
              }).Click(IDOK);
         }, "00000000", "0:13 1:13 2:13", 1},
        {"OK, nothing ticked", [](DialogDriver& d) { d.Click(IDOK); }, "00000000", "", 1},
        {"Close", [](DialogDriver& d) { d.Type(KX_IDC_MTAG_ARTIST, L"Beta").Click(KX_IDC_MTAG_CLOSE); }, "800704C7", "", 0},
        {"close box", [](DialogDriver& d) { d.Type(KX_IDC_MTAG_ARTIST, L"Beta").Close(); }, "800704C7", "", 0},
    };
    for (const auto& c : cases) {
        const long calls = lib->Calls(kxhost::Op::SetProperties);
        DialogDriver driver;
        c.script(driver);
        EXPECT_EQ(c.code, Run(driver)) << c.how;
        EXPECT_EQ(c.writes, Writes()) << c.how;
        EXPECT_EQ(c.calls, lib->Calls(kxhost::Op::SetProperties) - calls) << c.how << ": one call for all items";
    }
    for (kxhost::ItemId t : tracks) EXPECT_EQ(L"Beta", lib->Value(t, KxPropArtist)->text);
    EXPECT_EQ(L"Zed", lib->Value(tracks[2], KxPropArtist2)->text);
}

// A photograph that fits the thumbnail goes to every item as its file's exact bytes. (A larger one
// is re-encoded with its metadata copied, which Wine's imaging cannot do: the imaging tests cover
// that path.) Remove then takes the art out of every item.
TEST_F(MulEditTagThroughPlugin, APhotographGoesToAllItemsAndRemoveTakesArtFromAll) {
    const std::wstring photo = FixtureFile(KX_TEST_IMAGES, "orientation_1.jpg");
    std::string ticked;
    bool removeEnabled = false;
    DialogDriver add;
    add.Do([&](HWND dlg) { AnswerFileDialog(dlg, photo); })
        .Click(KX_IDC_MTAG_BROWSE)
        .Inspect([&](HWND dlg) {
            ticked = Ticked(dlg);
            removeEnabled = ItemEnabled(dlg, KX_IDC_MTAG_REMOVE);
        })
        .Click(IDOK);
    EXPECT_EQ("00000000", Run(add));
    EXPECT_TRUE(FileDialogAnswered());
    EXPECT_EQ("10017", ticked);
    EXPECT_TRUE(removeEnabled);
    EXPECT_EQ("0:art 1:art 2:art", Writes());
    const auto first = lib->Value(tracks[0], KxPropAlbumArt);
    ASSERT_TRUE(first);
    EXPECT_EQ("JPEG 50x70", DescribePicture(first->bytes));
    EXPECT_TRUE(first->bytes == ReadFileBytes(photo)) << "the file's exact bytes";
    for (kxhost::ItemId t : tracks) EXPECT_TRUE(lib->Value(t, KxPropAlbumArt)->bytes == first->bytes);

    DialogDriver remove;
    remove.Click(KX_IDC_MTAG_REMOVE).Inspect([&](HWND dlg) { ticked = Ticked(dlg); }).Click(IDOK);
    EXPECT_EQ("00000000", Run(remove));
    EXPECT_EQ("10017", ticked);
    EXPECT_EQ("0:artR 1:artR 2:artR", Writes());
    for (kxhost::ItemId t : tracks) EXPECT_FALSE(lib->Value(t, KxPropAlbumArt));
}

// 10,000 items in one dialog: what each allows is asked once per tag and item, and the ticked
// artist reaches all of them in one call.
TEST_F(MulEditTagThroughPlugin, TenThousandItemsAtOnce) {
    const size_t count = 10000;
    while (tracks.size() < count) {
        tracks.push_back(lib->AddItem(ItemKind::Track, L"t"));
        lib->SetString(tracks.back(), KxPropArtist, L"Zed");
    }
    const long infoBefore = lib->Calls(kxhost::Op::GetPropertyInfo);
    DialogDriver driver(60000);
    driver.Type(KX_IDC_MTAG_ARTIST, L"Beta").Click(IDOK);
    EXPECT_EQ("00000000", Run(driver));
    // ten tags of each item, and the ten of the first item shown
    EXPECT_EQ(static_cast<long>(10 * count + 10), lib->Calls(kxhost::Op::GetPropertyInfo) - infoBefore);
    EXPECT_EQ(1, lib->Calls(kxhost::Op::SetProperties));
    EXPECT_EQ(count, lib->Writes().size());
    EXPECT_EQ(L"Beta", lib->Value(tracks.back(), KxPropArtist)->text);
    lib->ClearWrites();
}

}  // namespace
}  // namespace kxtest
