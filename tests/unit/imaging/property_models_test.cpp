// Both properties dialogs' models against the in-memory library: the buttons and focus after each
// read and step, compared whole with tables; the preview source, its turn and its bitmaps; a view
// or cursor that is missing; failed fetches and reads; the keys that step.
#include "imaging/image_property_model.h"
#include "imaging/video_property_model.h"
#include "tests/unit/host/library_test_support.h"
#include "tests/unit/imaging/property_text_source_fake.h"

#include <cstdint>
#include <set>

namespace kxtest {
namespace {

using kxhost::ItemId;
using kxhost::Op;
using Events = std::vector<std::string>;

// Bitmaps of the host's previews: numbered handles, each to be deleted once.
std::set<uintptr_t> g_liveBitmaps;
uintptr_t g_nextBitmap = 0x1000;
HRESULT MakeBitmap(LONG, LONG, const DWORD*, HBITMAP* bitmap) {
    g_liveBitmaps.insert(g_nextBitmap);
    *bitmap = reinterpret_cast<HBITMAP>(g_nextBitmap++);
    return S_OK;
}

// Records what the models do to the dialogs' controls: the walk's buttons in `walk` (P/N for
// Previous/Next, + enabled, - disabled, f focused), everything else in `shown`.
class RecordingControls : public IPropertyDialogControls, public IImagePropertyControls, public IVideoPropertyControls {
public:
    Events walk, shown;
    void EnablePrevious(bool on) override { walk.push_back(on ? "P+" : "P-"); }
    void EnableNext(bool on) override { walk.push_back(on ? "N+" : "N-"); }
    void FocusPrevious() override { walk.push_back("fP"); }
    void FocusNext() override { walk.push_back("fN"); }
    void SetRowCount(int count) override { shown.push_back("rows " + std::to_string(count)); }
    bool LoadPreviewFromFile(LPCWSTR path, int rotateFlip, LONG* width, LONG* height) override {
        shown.push_back("file " + std::string(path, path + wcslen(path)) + " turn " + std::to_string(rotateFlip));
        *width = 300, *height = 400;
        return true;
    }
    bool LoadPreviewFromBitmap(HBITMAP bitmap, int rotateFlip, LONG* width, LONG* height) override {
        EXPECT_TRUE(g_liveBitmaps.count(reinterpret_cast<uintptr_t>(bitmap)));
        shown.push_back("bitmap turn " + std::to_string(rotateFlip));
        *width = 150, *height = 100;
        return true;
    }
    void SetRowValue(int row, LPCWSTR text) override {
        shown.push_back(std::to_string(row) + " " + std::string(text, text + wcslen(text)));
    }
    void ShowVideoPreview(HBITMAP bitmap) override {
        EXPECT_TRUE(g_liveBitmaps.count(reinterpret_cast<uintptr_t>(bitmap)));
        shown.push_back("video preview");
    }
    void ShowVideoFallback() override { shown.push_back("fallback"); }
    void DeleteBitmap(HBITMAP bitmap) override {
        EXPECT_EQ(1u, g_liveBitmaps.erase(reinterpret_cast<uintptr_t>(bitmap))) << "deleted twice or never made";
    }
    HWND OwnerWindow() override { return nullptr; }
    Events TakeWalk() { return Events(std::move(walk)); }
};

struct PropertyModels : LibraryTest {
    FakePropertyTexts texts;
    RecordingControls controls;
    Ref<IKxContentSite> site;

    void SetUp() override {
        LibraryTest::SetUp();
        kxhost::SetPreviewBitmapMaker(&MakeBitmap);
        ASSERT_EQ(S_OK, lib.CreateSite(site.Out()));
    }
    void TearDown() override {
        site.Reset();
        kxhost::SetPreviewBitmapMaker(nullptr);
        EXPECT_TRUE(g_liveBitmaps.empty()) << g_liveBitmaps.size() << " bitmaps never deleted";
        g_liveBitmaps.clear();
        LibraryTest::TearDown();
    }
};

TEST_F(PropertyModels, ImageWalkThroughThreePicturesSetsButtonsAndFocusAtEachStep) {
    lib.SetView({sample.pictures[0], sample.pictures[1], sample.pictures[2]}, 0);
    CImagePropertyModel model(site.p, root.p, P(sample.pictures[0]), controls, controls, texts);
    model.m_walk.Connect(site.p);
    ASSERT_EQ(S_OK, model.ReadImageProperties(model.m_item));
    model.ShowImageProperties();
    EXPECT_EQ((Events{"P-", "fN", "N+"}), controls.TakeWalk());

    const struct { bool previous; Events walk; LONG index; } steps[] = {
        {false, {"N+", "fN", "P+", "N+"}, 1},
        {false, {"N-", "fP", "P+", "N-", "fP"}, 2},
        {false, {}, 2},  // beyond the last: nothing
        {true, {"P+", "fP", "P+", "N+"}, 1},
        {true, {"P-", "fN", "P-", "fN", "N+"}, 0},
        {true, {}, 0},  // before the first: nothing
    };
    for (size_t i = 0; i < sizeof(steps) / sizeof(steps[0]); ++i) {
        model.MoveToItem(steps[i].previous);
        EXPECT_EQ(steps[i].walk, controls.TakeWalk()) << "step " << i;
        EXPECT_EQ(steps[i].index, model.m_walk.m_currentIndex) << "step " << i;
        EXPECT_EQ(sample.pictures[steps[i].index], lib.ItemOf(model.m_walk.m_currentItem)) << "step " << i;
    }
    // the sample's pictures 0, 1, 2 carry orientations 1, 2, 3: no turn, then 90 and 180 degrees
    EXPECT_EQ((Events{"bitmap turn 0", "rows 24", "bitmap turn 1", "rows 24", "bitmap turn 2", "rows 24",
                      "bitmap turn 1", "rows 24", "bitmap turn 0", "rows 24"}),
              controls.shown);
    EXPECT_STREQ(L": 150[161]", model.RowText(0, 1));
    model.Release();
}

TEST_F(PropertyModels, ButtonsWhenTheViewIsSmallMissingOrWithoutCurrentItem) {
    const struct {
        const char* name;
        std::vector<ItemId> view;
        LONG current;
        Op failing;  // Op::Count_: none
        Events walk;
    } cases[] = {
        {"one item", {sample.pictures[0]}, 0, Op::Count_, {"P-", "N-"}},
        {"no current item", {sample.pictures[0], sample.pictures[1]}, -1, Op::Count_, {"P-", "N-"}},
        {"at the last", {sample.pictures[0], sample.pictures[1]}, 1, Op::Count_, {"P+", "N-", "fP"}},
        {"no view", {sample.pictures[0], sample.pictures[1]}, 0, Op::QueryService, {}},
        {"no cursor", {sample.pictures[0], sample.pictures[1]}, 0, Op::QueryItemCursor, {}},
        {"uncountable", {sample.pictures[0], sample.pictures[1]}, 0, Op::CursorGetCount, {"P-", "N-"}},
    };
    for (const auto& c : cases) {
        lib.SetView(c.view, c.current);
        if (c.failing != Op::Count_) lib.FailOperation(c.failing, E_FAIL);
        CImagePropertyModel model(site.p, root.p, P(sample.pictures[0]), controls, controls, texts);
        model.m_walk.Connect(site.p);
        model.ReadImageProperties(model.m_item);
        model.ShowImageProperties();
        EXPECT_EQ(c.walk, controls.TakeWalk()) << c.name;
        lib.ResetFailures();
    }
}

TEST_F(PropertyModels, FailedFetchKeepsTheItemAndFailedReadEmptiesTheList) {
    lib.SetView({sample.pictures[0], sample.pictures[1], sample.pictures[2]}, 0);
    CImagePropertyModel model(site.p, root.p, P(sample.pictures[0]), controls, controls, texts);
    model.m_walk.Connect(site.p);
    model.ReadImageProperties(model.m_item);
    model.ShowImageProperties();
    controls.TakeWalk();
    controls.shown.clear();

    lib.FailOperation(Op::CursorGetItemAt, E_FAIL);
    model.MoveToItem(false);
    EXPECT_EQ((Events{"N+", "fN", "N-"}), controls.TakeWalk());
    EXPECT_EQ(1, model.m_walk.m_currentIndex);  // the new index stays
    EXPECT_EQ(sample.pictures[0], lib.ItemOf(model.m_walk.m_currentItem));
    EXPECT_TRUE(controls.shown.empty());

    lib.FailOperation(Op::GetProperties, E_FAIL);
    model.MoveToItem(true);  // back to index 0, which now reads badly
    EXPECT_EQ((Events{"rows 0"}), controls.shown);
    EXPECT_EQ(nullptr, model.RowText(0, 0));
}

TEST_F(PropertyModels, PreviewFromAFileTakesItsSizeAfterTheTurn) {
    const ItemId picture = sample.pictures[4];
    lib.SetValue(picture, KxPropImage8, kxhost::PropertyValue::Int(6));
    kxhost::PreviewPicture file;
    file.path = L"C:\\Pictures\\turned.jpg";
    lib.SetPreview(picture, file);
    CImagePropertyModel model(site.p, root.p, P(picture), controls, controls, texts);
    ASSERT_EQ(S_OK, model.ReadImageProperties(model.m_item));
    model.ShowImageProperties();
    EXPECT_EQ((Events{"file C:\\Pictures\\turned.jpg turn 1", "rows 24"}), controls.shown);
    EXPECT_STREQ(L": 300[161]", model.RowText(0, 1));
    EXPECT_STREQ(L": 400[161]", model.RowText(1, 1));
}

TEST_F(PropertyModels, VideoReadFillsRowsInOrderAndWalksWithoutBoundsTest) {
    lib.SetValue(sample.videos[0], KxPropDuration, kxhost::PropertyValue::UInt(3725));
    lib.SetValue(sample.videos[0], KxPropFileSize, kxhost::PropertyValue::Size(2400000000ULL));
    lib.SetValue(sample.videos[0], KxPropVideo14, kxhost::PropertyValue::Int(1920));
    lib.SetValue(sample.videos[0], KxPropVideo15, kxhost::PropertyValue::Int(1080));
    lib.SetView({sample.videos[1], sample.videos[0]}, 1);
    CVideoPropertyModel model(site.p, root.p, P(sample.videos[0]), controls, controls, texts);
    model.m_walk.Connect(site.p);
    ASSERT_EQ(S_OK, model.ReadVideoProperties(model.m_item));
    EXPECT_EQ((Events{"3 D:\\Videos", "4 2.23 GB", "0 1920[161]", "1 1080[161]", "5 1:02:05", "video preview"}),
              controls.shown);
    EXPECT_EQ((Events{"P+", "N-", "fP"}), controls.TakeWalk());

    // Next at the last item is not refused here: the fetch fails and Next is disabled
    model.MoveToItem(false);
    EXPECT_EQ((Events{"N-", "fP", "N-"}), controls.TakeWalk());
    EXPECT_EQ(2, model.m_walk.m_currentIndex);
    EXPECT_EQ(sample.videos[0], lib.ItemOf(model.m_walk.m_currentItem));

    // an item without properties shows only the labels; one without a preview object fails
    const ItemId bare = lib.AddItem(kxhost::ItemKind::Video, L"Bare");
    EXPECT_EQ(E_POINTER, model.ReadVideoProperties(P(bare)));
    kxhost::PreviewPicture file;
    file.path = L"C:\\Videos\\bare.jpg";  // a file: no bitmap for a video
    lib.SetPreview(bare, file);
    controls.shown.clear();
    ASSERT_EQ(S_FALSE, model.ReadVideoProperties(P(bare)));
    EXPECT_EQ((Events{"3 ", "4 ", "0 ", "1 ", "5 ", "fallback"}), controls.shown);
    EXPECT_EQ(E_POINTER, model.ReadVideoProperties(nullptr));
}

TEST_F(PropertyModels, MissingPropertiesOrPreviewObjectIsKeptForTheHost) {
    for (int nth : {1, 2}) {  // the properties object, then the preview object
        CImagePropertyModel image(site.p, root.p, P(sample.pictures[0]), controls, controls, texts);
        lib.FailOperation(Op::GetItemObject, E_NOINTERFACE, nth);
        EXPECT_EQ(E_POINTER, image.ReadImageProperties(image.m_item)) << nth;
        EXPECT_EQ(E_POINTER, image.m_hrResult) << nth;
        CVideoPropertyModel video(site.p, root.p, P(sample.videos[0]), controls, controls, texts);
        lib.FailOperation(Op::GetItemObject, E_NOINTERFACE, nth);
        EXPECT_EQ(E_POINTER, video.ReadVideoProperties(video.m_item)) << nth;
        EXPECT_EQ(E_POINTER, video.m_hrResult) << nth;
        lib.ResetFailures();
    }
}

TEST(PropertyWalkKeys, LeftAndRightStepOnlyFromTheButtonsWithoutModifiers) {
    const UINT left = 0x25, right = 0x27, up = 0x26;
    const struct { KxWalkKeyState state; KxWalkKey key; } cases[] = {
        {{left, true, false, true, true, false}, KxWalkKey::Previous},
        {{right, false, true, true, true, false}, KxWalkKey::Next},
        {{left, false, true, true, true, false}, KxWalkKey::Previous},  // from Next too
        {{left, true, false, false, true, false}, KxWalkKey::None},     // Previous disabled
        {{right, true, false, true, false, false}, KxWalkKey::None},    // Next disabled
        {{left, true, false, true, true, true}, KxWalkKey::None},       // Shift held
        {{left, false, false, true, true, false}, KxWalkKey::None},     // focus elsewhere
        {{up, true, false, true, true, false}, KxWalkKey::None},
    };
    for (size_t i = 0; i < sizeof(cases) / sizeof(cases[0]); ++i)
        EXPECT_EQ(cases[i].key, KxWalkKeyOf(cases[i].state)) << "case " << i;
}

}  // namespace
}  // namespace kxtest
