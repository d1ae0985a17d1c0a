// The site's view with its cursor, and previews of pictures and videos.
#include "tests/unit/host/library_test_support.h"

#include <filesystem>
#include <fstream>

namespace kxtest {
namespace {

using kxhost::ItemId;

struct SiteView : LibraryTest {
    void Open(const std::vector<ItemId>& view, int current, Ref<IKxItemCursor>& cursor) {
        lib.SetView(view, current);
        Ref<IKxContentSite> site;
        Ref<IKxContentView> contentView;
        EXPECT_EQ(S_OK, lib.CreateSite(site.Out()));
        EXPECT_EQ(S_OK, site->QueryService(IID_IKxContentView, 0, 0, contentView.OutVoid()));
        EXPECT_EQ(S_OK, contentView->QueryInterface(IID_IKxItemCursor, cursor.OutVoid()));
        EXPECT_EQ(E_NOINTERFACE, site->QueryService(IID_IKxItemCursor, 0, 0, contentView.OutVoid()))
            << "only the view is served";
        EXPECT_EQ(nullptr, contentView.p);
    }
};

TEST_F(SiteView, CursorGivesCountCurrentItemsAndItemsByIndex) {
    const std::vector<ItemId> view = {sample.tracks[3], sample.tracks[7], sample.tracks[9]};
    Ref<IKxItemCursor> cursor;
    Open(view, 1, cursor);
    ULONG count = 0, fetched = 0;
    ASSERT_EQ(S_OK, cursor->GetCount(&count));
    EXPECT_EQ(3u, count);
    KxCursorItem current = {};
    ASSERT_EQ(S_OK, cursor->GetCurrentItems(1, &current, &fetched));
    EXPECT_EQ(1u, fetched);
    EXPECT_EQ(1, current.index);
    EXPECT_EQ(sample.tracks[7], lib.ItemOf(current.pidl));
    CoTaskMemFree(current.pidl);
    TaskMem<KxItemIdList> id;
    for (LONG i = 0; i < 3; ++i) {
        ASSERT_EQ(S_OK, cursor->GetItemAt(i, id.Out()));
        EXPECT_EQ(view[i], lib.ItemOf(id.p));
    }
    EXPECT_EQ(E_INVALIDARG, cursor->GetItemAt(3, id.Out()));
    EXPECT_EQ(E_INVALIDARG, cursor->GetItemAt(-1, id.Out()));
    EXPECT_EQ(nullptr, id.p);
    EXPECT_EQ(E_NOTIMPL, cursor->Reserved1());
    // a view without a current item fetches nothing
    Open({sample.tracks[0]}, -1, cursor);
    current = {5, nullptr};
    fetched = 7;
    EXPECT_EQ(S_FALSE, cursor->GetCurrentItems(1, &current, &fetched));
    EXPECT_EQ(0u, fetched);
    EXPECT_EQ(nullptr, current.pidl);
}

inline std::filesystem::path previewFolder = std::filesystem::temp_directory_path() / "kx_library_previews";
inline std::vector<std::pair<LONG, LONG>> made;  // the sizes the bitmap maker was asked for

HRESULT FakeMaker(LONG w, LONG h, const DWORD* pixels, HBITMAP* bitmap) {
    made.push_back({w, h});
    *bitmap = reinterpret_cast<HBITMAP>(const_cast<DWORD*>(pixels));  // any non-null handle
    return S_OK;
}

kxhost::SampleOptions WithFiles() {
    kxhost::SampleOptions o = kxhost::DefaultSampleOptions();
    std::filesystem::create_directories(previewFolder);
    o.pictureFolder = previewFolder.wstring();
    return o;
}

struct Preview : LibraryTest {
    Preview() : LibraryTest(WithFiles()) {}
    ~Preview() override { std::filesystem::remove_all(previewFolder); }

    HRESULT Open(ItemId id, Ref<IKxItemPreview>& out) {
        Ref<IKxContentSite> site;
        EXPECT_EQ(S_OK, lib.CreateSite(site.Out()));
        TaskMem<KxItemIdList> pidl(Pidl(id));
        KxPcPidl item = pidl.p;
        HRESULT hr = root->GetItemObject(site.p, nullptr, 1, &item, IID_IKxItemPreview, out.OutVoid());
        EXPECT_EQ(site.p, lib.LastItemObjectCall().site) << "the call is recorded, refused or not";
        EXPECT_EQ(std::vector<ItemId>{id}, lib.LastItemObjectCall().items);
        return hr;
    }
};

TEST_F(Preview, PicturesComeAsRealFiles) {
    // every third one is a BMP, the others JPEGs
    const struct {
        size_t index;
        LPCWSTR extension;
        unsigned char magic0, magic1;
    } cases[] = {{0, L".jpg", 0xFF, 0xD8}, {2, L".bmp", 'B', 'M'}};
    for (const auto& c : cases) {
        Ref<IKxItemPreview> preview;
        ASSERT_EQ(S_OK, Open(sample.pictures[c.index], preview));
        DWORD kind = 0;
        TaskMem<WCHAR> path;
        ASSERT_EQ(S_OK, preview->GetPreviewSource(&kind, path.Out()));
        EXPECT_NE(static_cast<DWORD>(KX_PREVIEW_BITMAP), kind);
        const std::wstring name(path.p);
        EXPECT_EQ(c.extension, name.substr(name.size() - 4));
        std::ifstream file(std::filesystem::path(name), std::ios::binary);
        unsigned char magic[2] = {};
        ASSERT_TRUE(file.read(reinterpret_cast<char*>(magic), 2)) << "the picture file exists";
        EXPECT_EQ(c.magic0, magic[0]);
        EXPECT_EQ(c.magic1, magic[1]);
        HBITMAP bitmap = reinterpret_cast<HBITMAP>(&kind);
        SIZE box = {150, 150};
        EXPECT_EQ(E_UNEXPECTED, preview->GetPreviewBitmap(&box, &bitmap)) << "a file picture is no bitmap";
        EXPECT_EQ(nullptr, bitmap);
    }
}

TEST_F(Preview, VideoComesAsABitmapThatFitsTheBox) {
    Ref<IKxItemPreview> preview;
    ASSERT_EQ(S_OK, Open(sample.videos[0], preview));
    DWORD kind = 0;
    TaskMem<WCHAR> name;
    ASSERT_EQ(S_OK, preview->GetPreviewSource(&kind, name.Out()));
    EXPECT_EQ(static_cast<DWORD>(KX_PREVIEW_BITMAP), kind);
    ASSERT_NE(nullptr, name.p) << "a string comes with kind 2 as well, to be freed";

    SIZE box = {150, 150};
    HBITMAP bitmap = nullptr;
    kxhost::SetPreviewBitmapMaker(nullptr);
    EXPECT_EQ(E_NOTIMPL, preview->GetPreviewBitmap(&box, &bitmap));
    kxhost::SetPreviewBitmapMaker(&FakeMaker);
    made.clear();
    for (SIZE b : {SIZE{150, 150}, SIZE{400, 400}, SIZE{90, 45}}) {
        bitmap = nullptr;
        EXPECT_EQ(S_OK, preview->GetPreviewBitmap(&b, &bitmap));
        EXPECT_NE(nullptr, bitmap);
    }
    kxhost::SetPreviewBitmapMaker(kxhost::DefaultPreviewBitmapMaker());
    // 160 x 90 fitted, truncated, never grown
    EXPECT_EQ((std::vector<std::pair<LONG, LONG>>{{150, 84}, {160, 90}, {80, 45}}), made);
    box = {0, 150};
    EXPECT_EQ(E_INVALIDARG, preview->GetPreviewBitmap(&box, &bitmap));
    EXPECT_EQ(E_POINTER, preview->GetPreviewBitmap(nullptr, &bitmap));
}

TEST_F(Preview, OnlyPicturesAndVideosHaveOne) {
    Ref<IKxItemPreview> preview;
    EXPECT_EQ(E_NOINTERFACE, Open(sample.tracks[0], preview));
    EXPECT_EQ(nullptr, preview.p);
    EXPECT_EQ(E_NOINTERFACE, Open(sample.albums[0], preview));
}

}  // namespace
}  // namespace kxtest
