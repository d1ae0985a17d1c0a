// The image and video properties dialogs through KxComResPlgin.dll, on the sample library: the
// rows read back from the lists and compared with the formatting table, Previous and Next through
// the view with the buttons and the focus at each step, the preview turned by its pixels, the
// skin's pictures for missing previews, an item without properties, a host without a site or a
// view, photographs in each orientation, and that nothing is left behind.
#include <windows.h>
#include <commctrl.h>
#include <shlwapi.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

#include "host/library/sample_library.h"
#include "imaging/image_property_rows.h"
#include "imaging/video_property_rows.h"
#include "resources/dialogs/image_property_ids.h"
#include "resources/dialogs/video_property_ids.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/plugin_dialog_test.h"
#include "tests/win/common/skin_recorder.h"
#include "tests/win/common/test_files.h"

namespace kxtest {
namespace {

using kxhost::ItemId;
using kxhost::Op;

const int kImageList = KX_IDC_IMAGEPROP_LIST, kImagePrevious = KX_IDC_IMAGEPROP_PREVIOUS,
          kImageNext = KX_IDC_IMAGEPROP_NEXT, kImageClose = KX_IDC_IMAGEPROP_CLOSE,
          kImagePreview = KX_IDC_IMAGEPROP_PREVIEW;
const int kVideoList = KX_IDC_VIDEOPROP_LIST, kVideoPrevious = KX_IDC_VIDEOPROP_PREVIOUS,
          kVideoNext = KX_IDC_VIDEOPROP_NEXT, kVideoClose = KX_IDC_VIDEOPROP_CLOSE,
          kVideoPreview = KX_IDC_VIDEOPROP_PREVIEW;

// A photograph fetched by the imaging_images fixture.
std::wstring TestImage(const char* name) { return FixtureFile(KX_TEST_IMAGES, name); }

std::string Narrow(const std::wstring& s) { return std::string(s.begin(), s.end()); }

// The strings of ComRcRes.dll and the system's size text: what the dialogs show.
class ResourceTexts : public IKxPropertyTextSource {
public:
    ResourceTexts()
        : module_(LoadLibraryExW((ExeDir() + L"ComRcRes.dll").c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE)) {}
    ~ResourceTexts() {
        if (module_) FreeLibrary(module_);
    }
    std::wstring LoadText(UINT id) override {
        const wchar_t* text = nullptr;
        const int n = LoadStringW(module_, id, reinterpret_cast<LPWSTR>(&text), 0);
        return n > 0 ? std::wstring(text, static_cast<size_t>(n)) : std::wstring();
    }
    std::wstring FormatByteSize(ULONGLONG bytes) override {
        WCHAR text[260] = {};
        StrFormatByteSizeW(static_cast<LONGLONG>(bytes), text, 260);
        return text;
    }

private:
    HMODULE module_;
};

// Every row of a list as "label|value", through LVM_GETITEMTEXT (an owner-data list asks its
// dialog with LVN_GETDISPINFO).
std::vector<std::string> ListRows(HWND dlg, int id) {
    std::vector<std::string> rows;
    const int count = static_cast<int>(SendDlgItemMessageW(dlg, id, LVM_GETITEMCOUNT, 0, 0));
    for (int row = 0; row < count; ++row) {
        std::string line;
        for (int column = 0; column < 2; ++column) {
            WCHAR text[512] = {};
            LVITEMW item = {};
            item.iSubItem = column;
            item.pszText = text;
            item.cchTextMax = 512;
            SendDlgItemMessageW(dlg, id, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                                reinterpret_cast<LPARAM>(&item));
            line += (column ? "|" : "") + Narrow(text);
        }
        rows.push_back(line);
    }
    return rows;
}

// The pixels of the bitmap that the preview control shows, 0xRRGGBB, top row first.
std::vector<DWORD> PreviewPixels(HWND dlg, int id, SIZE* size) {
    const HBITMAP bitmap = reinterpret_cast<HBITMAP>(SendDlgItemMessageW(dlg, id, STM_GETIMAGE, IMAGE_BITMAP, 0));
    BITMAP info = {};
    if (!bitmap || !GetObjectW(bitmap, sizeof info, &info)) return {};
    *size = {info.bmWidth, info.bmHeight};
    std::vector<DWORD> pixels(static_cast<size_t>(info.bmWidth) * info.bmHeight);
    BITMAPINFO format = {};
    format.bmiHeader.biSize = sizeof(format.bmiHeader);
    format.bmiHeader.biWidth = info.bmWidth;
    format.bmiHeader.biHeight = -info.bmHeight;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    const HDC screen = GetDC(nullptr);
    GetDIBits(screen, bitmap, 0, static_cast<UINT>(info.bmHeight), pixels.data(), &format, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    for (DWORD& pixel : pixels) pixel &= 0xFFFFFF;
    return pixels;
}
DWORD PreviewPixel(HWND dlg, int id, int x, int y, SIZE* size) {
    const std::vector<DWORD> pixels = PreviewPixels(dlg, id, size);
    return pixels.empty() ? 0xDEAD : pixels[static_cast<size_t>(y) * size->cx + x];
}

// The largest difference of one colour channel.
int ColourDistance(DWORD a, DWORD b) {
    int worst = 0;
    for (int shift = 0; shift < 24; shift += 8)
        worst = std::max(worst, std::abs(static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF)));
    return worst;
}

class PropertyDialogsThroughPlugin : public PluginDialogTest {
protected:
    void SetUp() override {
        lib = sample.library;
        OpenHost();
        lib->SetView({sample.pictures[0]}, 0);
        // a first dialog of each kind pays for what the process keeps once
        RunImage(sample.pictures[0], [](DialogDriver& d) { d.Click(kImageClose); });
        RunVideo(sample.videos[0], [](DialogDriver& d) { d.Click(kVideoClose); });
        before = CountResources();
    }

    std::string Run(bool video, ItemId item, const std::function<void(DialogDriver&)>& script) {
        DialogDriver driver;
        script(driver);
        KxPidl pidl = lib->NewPidl(item);
        const HRESULT hr = video ? resource->ShowVideoPropertyDialog(nullptr, site, root, pidl)
                                 : resource->ShowImagePropertyDialog(nullptr, site, root, pidl);
        CoTaskMemFree(pidl);
        EXPECT_FALSE(driver.timedOut()) << "the script did not close the dialog";
        EXPECT_EQ(driver.stepCount(), driver.stepsDone());
        return HrText(hr);
    }
    std::string RunImage(ItemId item, const std::function<void(DialogDriver&)>& script) {
        return Run(false, item, script);
    }
    std::string RunVideo(ItemId item, const std::function<void(DialogDriver&)>& script) {
        return Run(true, item, script);
    }

    // The host's property object of an item, for what the formatting table says of it.
    void WithProperties(ItemId item, const std::function<void(IKxItemProperties*, KxPcPidl)>& use) {
        KxPidl pidl = lib->NewPidl(item);
        KxPcPidl items[] = {pidl};
        IKxItemProperties* properties = nullptr;
        EXPECT_EQ(S_OK, root->GetItemObject(nullptr, nullptr, 1, items, IID_IKxItemProperties,
                                            reinterpret_cast<void**>(&properties)));
        if (properties) use(properties, pidl), properties->Release();
        CoTaskMemFree(pidl);
    }

    // Notes the buttons ("P+"/"P-", "N+"/"N-"), which of them has the focus, and one row's value.
    DialogDriver::Step Snap(int previous, int next, int list, int row) {
        return [=](HWND dlg) {
            const int focus = FocusedId(dlg);
            shown += shown.empty() ? "" : " / ";
            shown += std::string(ItemEnabled(dlg, previous) ? "P+ " : "P- ") + (ItemEnabled(dlg, next) ? "N+" : "N-");
            shown += focus == previous ? " fP" : focus == next ? " fN" : "";
            const std::vector<std::string> rows = ListRows(dlg, list);
            shown += " " + (row < static_cast<int>(rows.size()) ? rows[row].substr(rows[row].find('|') + 1) : "?");
        };
    }

    kxhost::SampleLibrary sample = kxhost::BuildSampleLibrary(kxhost::DefaultSampleOptions());
    ResourceTexts texts;
    std::string shown;
};

TEST_F(PropertyDialogsThroughPlugin, PictureWithEveryKeyShowsTheTablesRowsAndItsPreviewTurned) {
    // a preview of 40 x 20, the left half red and the right half blue; orientation 6 turns it by
    // 90 degrees clockwise into 20 x 40 with red on top
    kxhost::PreviewPicture preview;
    preview.width = 40;
    preview.height = 20;
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 40; ++x) preview.pixels.push_back(x < 20 ? 0xFFFF0000 : 0xFF0000FF);
    const ItemId picture = sample.pictures[0];
    lib->SetPreview(picture, preview);
    lib->SetValue(picture, KxPropImage8, kxhost::PropertyValue::Int(6));
    lib->SetView({picture}, 0);

    // what the table says for this picture, through the host's property object
    KxImagePropertyTexts fields;
    WithProperties(picture, [&](IKxItemProperties* properties, KxPcPidl pidl) {
        LONG orientation = 0;
        EXPECT_EQ(S_OK, KxReadImagePropertyTexts(properties, pidl, texts, fields, &orientation));
    });
    fields.field[KxImageFieldWidth] = KxFormatPixelsText(20, texts);
    fields.field[KxImageFieldHeight] = KxFormatPixelsText(40, texts);
    KxPropertyRows expected;
    KxBuildImageRows(fields, texts, expected);

    std::vector<std::string> rows;
    DWORD top = 0, bottom = 0;
    SIZE size = {}, control = {};
    EXPECT_EQ("00000000", RunImage(picture, [&](DialogDriver& d) {
                  d.Inspect([&](HWND dlg) {
                       rows = ListRows(dlg, kImageList);
                       top = PreviewPixel(dlg, kImagePreview, 10, 5, &size);
                       bottom = PreviewPixel(dlg, kImagePreview, 10, 35, &size);
                       const RECT r = ItemRect(dlg, kImagePreview);
                       control = {r.right - r.left, r.bottom - r.top};
                   }).Click(kImageClose);
              }));
    ASSERT_EQ(static_cast<size_t>(KX_IMAGE_ROW_COUNT), rows.size());
    for (int row = 0; row < KX_IMAGE_ROW_COUNT; ++row) {
        const std::string want =
            expected[row] ? Narrow(expected[row]->label) + "|" + Narrow(expected[row]->value) : "|";
        EXPECT_EQ(want, rows[row]) << "row " << row;
    }
    EXPECT_EQ("Width|: 20 pixels", rows[0]);
    EXPECT_EQ("Orientation|: Rotated 90 degrees", rows[17]);
    EXPECT_EQ(0xFF0000u, top);
    EXPECT_EQ(0x0000FFu, bottom);
    EXPECT_TRUE(size.cx == 20 && size.cy == 40 && control.cx == 20 && control.cy == 40)
        << size.cx << "x" << size.cy << ", control " << control.cx << "x" << control.cy;
}

TEST_F(PropertyDialogsThroughPlugin, PhotographsInEachOrientationShowAsTheTableTurnsThem) {
    // One photograph of 50 x 70, stored in each of the eight orientations; the orientation comes
    // from the host's property (Wine's GDI+ reads no metadata). The table's turns put 3, 6 and 8
    // the right way up. It turns the mirrored ones (2, 4, 5, 7) without a flip (4 as 2: one row
    // stands for both), or flips 5
    // without a turn, so those come out 70 x 50, each preview pixel taken from the upright
    // photograph's pixel below.
    const struct {
        int orientation;
        bool upright;
        POINT (*source)(LONG x, LONG y);  // for a pixel of a 70 x 50 preview
    } cases[] = {
        {1, true, nullptr}, {3, true, nullptr}, {6, true, nullptr}, {8, true, nullptr},
        {2, false, [](LONG x, LONG y) { return POINT{49 - y, 69 - x}; }},
        {5, false, [](LONG x, LONG y) { return POINT{y, 69 - x}; }},
        {7, false, [](LONG x, LONG y) { return POINT{y, x}; }},
    };
    const ItemId photo = sample.pictures[0];
    lib->SetView({photo}, 0);
    std::vector<DWORD> upright;
    for (const auto& c : cases) {
        kxhost::PreviewPicture file;
        file.path = TestImage(("orientation_" + std::to_string(c.orientation) + ".jpg").c_str());
        lib->SetPreview(photo, file);
        lib->SetValue(photo, KxPropImage8, kxhost::PropertyValue::Int(c.orientation));
        std::vector<DWORD> seen;
        SIZE size = {};
        EXPECT_EQ("00000000", RunImage(photo, [&](DialogDriver& d) {
                      d.Inspect([&](HWND dlg) { seen = PreviewPixels(dlg, kImagePreview, &size); }).Click(kImageClose);
                  }));
        if (c.orientation == 1) upright = seen;
        ASSERT_EQ(c.upright ? 50 : 70, size.cx) << "orientation " << c.orientation;
        ASSERT_EQ(c.upright ? 70 : 50, size.cy) << "orientation " << c.orientation;
        ASSERT_EQ(50u * 70u, upright.size());
        // probes on a grid away from the edges; the stored pictures differ a little by their compression
        for (LONG y = 8; y < size.cy - 4; y += 12) {
            for (LONG x = 8; x < size.cx - 4; x += 12) {
                const POINT from = c.upright ? POINT{x, y} : c.source(x, y);
                const DWORD want = upright[static_cast<size_t>(from.y) * 50 + from.x];
                const DWORD got = seen[static_cast<size_t>(y) * size.cx + x];
                EXPECT_LE(ColourDistance(want, got), 48)
                    << "orientation " << c.orientation << " at " << x << "," << y << std::hex << ": " << got
                    << " against " << want;
            }
        }
    }
}

TEST_F(PropertyDialogsThroughPlugin, PreviousAndNextWalkTheViewOfPictures) {
    lib->SetView({sample.pictures[0], sample.pictures[1], sample.pictures[2]}, 0);
    const auto snap = [&] { return Snap(kImagePrevious, kImageNext, kImageList, 3); };
    EXPECT_EQ("00000000", RunImage(sample.pictures[0], [&](DialogDriver& d) {
                  d.Inspect(snap()).Click(kImageNext).Inspect(snap()).Click(kImageNext).Inspect(snap());
                  d.Press(VK_LEFT).Inspect(snap()).Press(VK_LEFT).Inspect(snap()).Click(kImageClose);
              }));
    EXPECT_EQ("P- N+ fN : Sample picture 1 / P+ N+ fN : Sample picture 2 / P+ N- fP : Sample picture 3 / "
              "P+ N+ fP : Sample picture 2 / P- N+ fN : Sample picture 1",
              shown);
}

TEST_F(PropertyDialogsThroughPlugin, ItemWithoutPropertiesAndHostWithoutSite) {
    // no property object at all: every row shows "-", the spacers nothing, and the host hears why
    const ItemId bare = lib->AddItem(kxhost::ItemKind::Picture, L"Bare");
    std::vector<std::string> rows;
    EXPECT_EQ("80004003", RunImage(bare, [&](DialogDriver& d) {
                  d.Inspect([&](HWND dlg) { rows = ListRows(dlg, kImageList); }).Click(kImageClose);
              }));
    EXPECT_EQ(21, std::count_if(rows.begin(), rows.end(), [](const std::string& row) {
                  return row.size() > 3 && row.compare(row.size() - 3, 3, ": -") == 0;
              }));
    EXPECT_EQ(3, std::count(rows.begin(), rows.end(), std::string("|")));

    // the interface lets a null site through: both dialogs refuse it and close by themselves
    {
        DialogDriver driver;
        KxPidl pidl = lib->NewPidl(sample.pictures[0]);
        EXPECT_EQ(E_INVALIDARG, resource->ShowImagePropertyDialog(nullptr, nullptr, root, pidl));
        EXPECT_EQ(E_INVALIDARG, resource->ShowVideoPropertyDialog(nullptr, nullptr, root, pidl));
        CoTaskMemFree(pidl);
        EXPECT_FALSE(driver.timedOut());
    }
}

TEST_F(PropertyDialogsThroughPlugin, VideoShowsSixRowsItsPreviewAndWalks) {
    lib->SetView({sample.videos[0], sample.videos[1]}, 0);
    KxVideoPropertyTexts expected[2];
    for (int i = 0; i < 2; ++i) {
        WithProperties(sample.videos[i], [&](IKxItemProperties* properties, KxPcPidl pidl) {
            EXPECT_EQ(S_OK, KxReadVideoPropertyTexts(properties, pidl, texts, expected[i]));
        });
    }
    std::vector<std::string> rows[2];
    bool previewShown = false;
    EXPECT_EQ("00000000", RunVideo(sample.videos[0], [&](DialogDriver& d) {
                  d.Inspect([&](HWND dlg) {
                       rows[0] = ListRows(dlg, kVideoList);
                       // the dialog starts the imaging platform for itself: nothing else here holds it
                       previewShown = SendDlgItemMessageW(dlg, kVideoPreview, STM_GETIMAGE, IMAGE_BITMAP, 0) != 0;
                   }).Inspect(Snap(kVideoPrevious, kVideoNext, kVideoList, 0));
                  d.Click(kVideoNext).Inspect([&](HWND dlg) { rows[1] = ListRows(dlg, kVideoList); });
                  d.Inspect(Snap(kVideoPrevious, kVideoNext, kVideoList, 0)).Click(kVideoClose);
              }));
    EXPECT_TRUE(previewShown);
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(static_cast<size_t>(KX_VIDEO_ROW_COUNT), rows[i].size()) << "video " << i;
        for (int row = 0; row < KX_VIDEO_ROW_COUNT; ++row) {
            const std::string label = kKxVideoRowLabels[row] ? Narrow(texts.LoadText(kKxVideoRowLabels[row])) : "";
            EXPECT_EQ(label + "|" + Narrow(expected[i].row[row]), rows[i][row]) << "video " << i << " row " << row;
        }
    }
    EXPECT_EQ("P- N+ fN " + Narrow(expected[0].row[0]) + " / P+ N- fP " + Narrow(expected[1].row[0]), shown);

    // Left on Next gives Previous the focus before the step, which here, without a view, does
    // nothing more
    lib->FailOperation(Op::QueryService, E_NOINTERFACE, 1, -1);
    shown.clear();
    EXPECT_EQ("00000000", RunVideo(sample.videos[0], [&](DialogDriver& d) {
                  d.Focus(kVideoNext).Press(VK_LEFT).Inspect(Snap(kVideoPrevious, kVideoNext, kVideoList, 0));
                  d.Click(kVideoClose);
              }));
    lib->ResetFailures();
    EXPECT_EQ("P+ N+ fP " + Narrow(expected[0].row[0]), shown);
}

TEST_F(PropertyDialogsThroughPlugin, UnreadablePicturesAndMissingVideoPreviewsShowTheSkinsPictures) {
    // the second picture's file is missing: it reads as 0 x 0 and the skin shows its picture
    kxhost::PreviewPicture missing;
    missing.path = L"C:\\no such folder\\missing.jpg";
    const ItemId unreadable = sample.pictures[2];
    lib->SetPreview(unreadable, missing);
    lib->SetView({sample.pictures[0], unreadable}, 0);
    std::vector<std::string> rows;
    std::string pictures;
    {
        SkinRecorder skin;
        EXPECT_EQ("00000000", RunImage(sample.pictures[0], [&](DialogDriver& d) {
                      d.Click(kImageNext).Inspect([&](HWND dlg) { rows = ListRows(dlg, kImageList); });
                      d.Click(kImageClose);
                  }));
        for (const std::string& line : skin.LinesStartingWith("static id=1044")) pictures += line;
        const auto attach = skin.LinesStartingWith("call op=0x1000");
        EXPECT_TRUE(attach.size() == 1 && attach[0].find("IDD_DIALOG_IMAGEPROPERTY.ini") != std::string::npos);
    }
    ASSERT_GE(rows.size(), 2u);
    EXPECT_EQ("Width|: 0 pixels", rows[0]);
    EXPECT_EQ("Height|: 0 pixels", rows[1]);
    EXPECT_NE(std::string::npos, pictures.find("picture=Corrupted Photo Properties.png")) << pictures;

    // a video whose preview gives no bitmap, after one that had a preview: the fallback picture
    const ItemId still = lib->AddItem(kxhost::ItemKind::Video, L"Still");
    lib->SetPreview(still, missing);
    lib->SetView({sample.videos[0], still}, 0);
    pictures.clear();
    {
        SkinRecorder skin;
        EXPECT_EQ("00000000",
                  RunVideo(sample.videos[0], [&](DialogDriver& d) { d.Click(kVideoNext).Click(kVideoClose); }));
        for (const std::string& line : skin.LinesStartingWith("static id=1075")) pictures += line;
        const auto attach = skin.LinesStartingWith("call op=0x1000");
        EXPECT_TRUE(attach.size() == 1 && attach[0].find("IDD_DIALOG_ VIDEOPROPERTY.ini") != std::string::npos);
    }
    EXPECT_NE(std::string::npos, pictures.find("picture=Video Properties.png")) << pictures;
}

}  // namespace
}  // namespace kxtest
