// The site's view with its cursor, and previews of pictures and videos.
#include "tests/unit/host/library_test_support.h"

#include "host/library/picture_file.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace kxtest {
namespace {

using kxhost::ItemId;

struct SiteView : LibraryTest {};

std::pair<LONG, LONG> Size(LONG w, LONG h) { return {w, h}; }

TEST_F(SiteView, CursorGivesCountCurrentItemAndItemsByIndex) {
    const std::vector<ItemId> view = {sample.tracks[3], sample.tracks[7], sample.tracks[9]};
    lib.SetView(view, 1);
    Ref<IKxContentSite> site;
    ASSERT_EQ(S_OK, lib.CreateSite(site.Out()));
    Ref<IKxContentView> contentView;
    ASSERT_EQ(S_OK, site->QueryService(IID_IKxContentView, 0, 0, contentView.OutVoid()));
    Ref<IKxItemCursor> cursor;
    ASSERT_EQ(S_OK, contentView->QueryInterface(IID_IKxItemCursor, cursor.OutVoid()));
    ULONG count = 0;
    ASSERT_EQ(S_OK, cursor->GetCount(&count));
    EXPECT_EQ(3u, count);
    KxCursorItem current = {};
    ULONG fetched = 0;
    ASSERT_EQ(S_OK, cursor->GetCurrentItems(1, &current, &fetched));
    EXPECT_EQ(1u, fetched);
    EXPECT_EQ(1, current.index);
    EXPECT_EQ(sample.tracks[7], lib.ItemOf(current.pidl));
    CoTaskMemFree(current.pidl);
    for (LONG i = 0; i < 3; ++i) {
        TaskMem<KxItemIdList> id;
        ASSERT_EQ(S_OK, cursor->GetItemAt(i, id.Out()));
        EXPECT_EQ(view[i], lib.ItemOf(id.p));
    }
    TaskMem<KxItemIdList> id;
    EXPECT_EQ(E_INVALIDARG, cursor->GetItemAt(3, id.Out()));
    EXPECT_EQ(E_INVALIDARG, cursor->GetItemAt(-1, id.Out()));
    EXPECT_EQ(nullptr, id.p);
    EXPECT_EQ(E_NOTIMPL, cursor->Reserved1());
    EXPECT_EQ(E_NOTIMPL, site->Reserved4());
    // only the view is served
    Ref<IKxItemCursor> wrong;
    EXPECT_EQ(E_NOINTERFACE, site->QueryService(IID_IKxItemCursor, 0, 0, wrong.OutVoid()));
    EXPECT_EQ(nullptr, wrong.p);
}

TEST_F(SiteView, AViewWithoutCurrentItemFetchesNothing) {
    lib.SetView({sample.tracks[0]}, -1);
    Ref<IKxContentSite> site;
    ASSERT_EQ(S_OK, lib.CreateSite(site.Out()));
    Ref<IKxItemCursor> cursor;
    {
        Ref<IKxContentView> view;
        ASSERT_EQ(S_OK, site->QueryService(IID_IKxContentView, 0, 0, view.OutVoid()));
        ASSERT_EQ(S_OK, view->QueryInterface(IID_IKxItemCursor, cursor.OutVoid()));
    }
    KxCursorItem current = {5, nullptr};
    ULONG fetched = 7;
    EXPECT_EQ(S_FALSE, cursor->GetCurrentItems(1, &current, &fetched));
    EXPECT_EQ(0u, fetched);
    EXPECT_EQ(nullptr, current.pidl);
}

struct Preview : LibraryTest {
    static kxhost::SampleOptions WithFiles() {
        kxhost::SampleOptions o = kxhost::DefaultSampleOptions();
        folder() = std::filesystem::temp_directory_path() / "kx_library_previews";
        std::filesystem::create_directories(folder());
        o.pictureFolder = folder().wstring();
        return o;
    }
    static std::filesystem::path& folder() {
        static std::filesystem::path f;
        return f;
    }
    Preview() : LibraryTest(WithFiles()) {}
    ~Preview() override { std::filesystem::remove_all(folder()); }

    HRESULT Open(ItemId id, Ref<IKxItemPreview>& out) {
        Ref<IKxContentFolder> root;
        EXPECT_EQ(S_OK, lib.GetRootFolder(root.Out()));
        Ref<IKxContentSite> site;
        EXPECT_EQ(S_OK, lib.CreateSite(site.Out()));
        TaskMem<KxItemIdList> pidl;
        *pidl.Out() = Pidl(id);
        KxPcPidl item = pidl.p;
        HRESULT hr = root->GetItemObject(site.p, nullptr, 1, &item, IID_IKxItemPreview, out.OutVoid());
        EXPECT_EQ(site.p, lib.LastItemObjectCall().site) << "the call is recorded, refused or not";
        EXPECT_EQ(std::vector<ItemId>{id}, lib.LastItemObjectCall().items);
        return hr;
    }

    static std::vector<std::pair<LONG, LONG>>& made() {
        static std::vector<std::pair<LONG, LONG>> sizes;
        return sizes;
    }
    static HRESULT FakeMaker(LONG w, LONG h, const DWORD* pixels, HBITMAP* bitmap) {
        made().push_back({w, h});
        *bitmap = reinterpret_cast<HBITMAP>(const_cast<DWORD*>(pixels));  // any non-null handle
        return S_OK;
    }
};

TEST_F(Preview, PicturesComeAsRealFiles) {
    for (size_t i = 0; i < 3; ++i) {
        Ref<IKxItemPreview> preview;
        ASSERT_EQ(S_OK, Open(sample.pictures[i], preview));
        DWORD kind = 0;
        TaskMem<WCHAR> path;
        ASSERT_EQ(S_OK, preview->GetPreviewSource(&kind, path.Out()));
        EXPECT_NE(static_cast<DWORD>(KX_PREVIEW_BITMAP), kind);
        std::ifstream file(std::filesystem::path(path.p), std::ios::binary);
        ASSERT_TRUE(file) << "the picture file exists";
        unsigned char magic[2] = {};
        file.read(reinterpret_cast<char*>(magic), 2);
        const std::wstring name(path.p);
        if (i == 2) {  // every third one is a BMP
            EXPECT_EQ(L".bmp", name.substr(name.size() - 4));
            EXPECT_EQ('B', magic[0]);
            EXPECT_EQ('M', magic[1]);
        } else {
            EXPECT_EQ(L".jpg", name.substr(name.size() - 4));
            EXPECT_EQ(0xFF, magic[0]);
            EXPECT_EQ(0xD8, magic[1]);
        }
    }
    Ref<IKxItemPreview> preview;
    ASSERT_EQ(S_OK, Open(sample.pictures[0], preview));
    DWORD kind = 0;
    HBITMAP bitmap = reinterpret_cast<HBITMAP>(&kind);
    SIZE box = {150, 150};
    EXPECT_EQ(E_UNEXPECTED, preview->GetPreviewBitmap(&box, &bitmap)) << "a file picture is no bitmap";
    EXPECT_EQ(nullptr, bitmap);
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
    made().clear();
    EXPECT_EQ(S_OK, preview->GetPreviewBitmap(&box, &bitmap));
    EXPECT_NE(nullptr, bitmap);
    box = {400, 400};  // never grown
    EXPECT_EQ(S_OK, preview->GetPreviewBitmap(&box, &bitmap));
    box = {90, 45};
    EXPECT_EQ(S_OK, preview->GetPreviewBitmap(&box, &bitmap));
    kxhost::SetPreviewBitmapMaker(kxhost::DefaultPreviewBitmapMaker());
    ASSERT_EQ(3u, made().size());
    EXPECT_EQ(Size(150, 84), made()[0]);  // 160 x 90 in 150 x 150, truncated
    EXPECT_EQ(Size(160, 90), made()[1]);
    EXPECT_EQ(Size(80, 45), made()[2]);
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

TEST(PictureFile, BmpHasTheSizeItsHeaderTells) {
    auto pixels = kxhost::SamplePixels(5, 3, 1);
    auto bmp = kxhost::EncodeBmp(5, 3, pixels);
    const uint32_t stride = 16;  // 5 * 3 = 15, padded to 16
    ASSERT_EQ(54u + stride * 3, bmp.size());
    EXPECT_EQ(bmp.size(), static_cast<size_t>(bmp[2] | bmp[3] << 8 | bmp[4] << 16 | bmp[5] << 24));
    // bottom-up: the first stored row is the picture's last; the frame is dark
    EXPECT_EQ(static_cast<BYTE>(pixels[10] & 0xFF), bmp[54]);
    EXPECT_EQ(static_cast<BYTE>((pixels[0] >> 16) & 0xFF), bmp[54 + 2 * stride + 2]);
}

}  // namespace
}  // namespace kxtest
