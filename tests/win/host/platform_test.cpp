// The in-memory library against the platform: the malloc spy that counts CoTaskMem blocks, the
// sample pictures as GDI+ decodes them, and preview bitmaps as GDI sees them.
#include <windows.h>
#include <gdiplus.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "tests/unit/host/library_test_support.h"

namespace kxtest {
namespace {

using namespace Gdiplus;
using namespace Gdiplus::DllExports;

// The spy sees the caller's blocks and those system DLLs allocate for it, and can make them fail.
TEST(TaskMemSpy, CountsBlocksOfTheCallerAndOfSystemDllsAndFailsOnDemand) {
    void* old = CoTaskMemAlloc(8);
    ASSERT_TRUE(kxhost::StartTaskMemAudit());
    CoTaskMemFree(old);  // from before the start: not counted
    void* mine = CoTaskMemAlloc(10);
    LPOLESTR text = nullptr;
    ASSERT_EQ(S_OK, StringFromCLSID(IID_IUnknown, &text));  // ole32 allocates the string
    EXPECT_EQ(2, kxhost::LiveTaskMemBlocks());
    CoTaskMemFree(text);
    mine = CoTaskMemRealloc(mine, 4000);
    ASSERT_NE(nullptr, mine);
    EXPECT_EQ(1, kxhost::LiveTaskMemBlocks()) << "a moved block is still one block";
    EXPECT_EQ(nullptr, CoTaskMemRealloc(mine, 0)) << "a realloc to nothing frees";
    EXPECT_EQ(0, kxhost::LiveTaskMemBlocks());
    mine = CoTaskMemRealloc(nullptr, 12);  // a realloc of nothing allocates
    EXPECT_EQ(1, kxhost::LiveTaskMemBlocks());
    // the second allocation fails; a failed realloc keeps the old block; ole32 sees the failures too
    kxhost::FailTaskMemAllocations(2);
    void* first = CoTaskMemAlloc(16);
    EXPECT_EQ(nullptr, CoTaskMemAlloc(16));
    EXPECT_NE(nullptr, first);
    kxhost::FailTaskMemAllocations(1);
    EXPECT_EQ(nullptr, CoTaskMemRealloc(mine, 1 << 16));
    EXPECT_EQ(2, kxhost::LiveTaskMemBlocks());
    kxhost::FailTaskMemAllocations(1, -1);
    EXPECT_EQ(E_OUTOFMEMORY, StringFromCLSID(IID_IUnknown, &text));
    kxhost::ResetTaskMemFailures();
    CoTaskMemFree(first);
    CoTaskMemFree(mine);
    EXPECT_EQ(0, kxhost::LiveTaskMemBlocks());
    kxhost::StopTaskMemAudit();
}

// The picture files decode to the pixels the same seed gives without files: JPEG closely, BMP exactly.
// A preview bitmap is a top-down DIB section, shrunk into the asked box, that the caller deletes.
TEST(SamplePictures, FilesDecodeToTheirPixelsAndPreviewsAreDibSections) {
    ULONG_PTR token = 0;
    GdiplusStartupInput input;
    ASSERT_EQ(Ok, GdiplusStartup(&token, &input, nullptr));
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "kx_sample_pictures";
    std::filesystem::create_directories(folder);
    kxhost::SampleOptions options = kxhost::DefaultSampleOptions();
    auto plain = kxhost::BuildSampleLibrary(options);
    options.pictureFolder = folder.wstring();
    auto withFiles = kxhost::BuildSampleLibrary(options);
    for (size_t index : {0, 2}) {  // a JPEG and a BMP
        const kxhost::PreviewPicture* source = plain.library->PreviewOf(plain.pictures[index]);
        const kxhost::PreviewPicture* file = withFiles.library->PreviewOf(withFiles.pictures[index]);
        ASSERT_TRUE(source && file && !file->path.empty());
        GpBitmap* decoded = nullptr;
        ASSERT_EQ(Ok, GdipCreateBitmapFromFile(file->path.c_str(), &decoded)) << file->path;
        UINT w = 0, h = 0;
        GdipGetImageWidth(decoded, &w);
        GdipGetImageHeight(decoded, &h);
        ASSERT_EQ(source->width, static_cast<LONG>(w));
        ASSERT_EQ(source->height, static_cast<LONG>(h));
        long total = 0, worst = 0;
        for (UINT i = 0; i < w * h; ++i) {
            ARGB c = 0;
            GdipBitmapGetPixel(decoded, static_cast<INT>(i % w), static_cast<INT>(i / w), &c);
            for (int shift = 0; shift < 24; shift += 8) {
                const long d = std::abs(static_cast<long>((c >> shift) & 0xFF) -
                                        static_cast<long>((source->pixels[i] >> shift) & 0xFF));
                total += d, worst = std::max(worst, d);
            }
        }
        GdipDisposeImage(reinterpret_cast<GpImage*>(decoded));
        EXPECT_TRUE(index != 2 || worst == 0) << "a BMP is exact: " << worst;
        EXPECT_LT(total / static_cast<long>(w * h), 12) << "mean error of " << file->path;
    }
    GdiplusShutdown(token);
    std::filesystem::remove_all(folder);
    Ref<IKxContentFolder> root;
    Ref<IKxItemPreview> preview;
    TaskMem<KxItemIdList> item(plain.library->NewPidl(plain.videos[0]));
    TaskMem<WCHAR> name;
    KxPcPidl items[] = {item.p};
    ASSERT_EQ(S_OK, plain.library->GetRootFolder(root.Out()));
    ASSERT_EQ(S_OK, root->GetItemObject(nullptr, nullptr, 1, items, IID_IKxItemPreview, preview.OutVoid()));
    DWORD kind = 0;
    ASSERT_EQ(S_OK, preview->GetPreviewSource(&kind, name.Out()));
    EXPECT_EQ(static_cast<DWORD>(KX_PREVIEW_BITMAP), kind);
    const DWORD gdiObjects = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    SIZE box = {150, 150};
    HBITMAP bitmap = nullptr;
    BITMAP dib = {};
    ASSERT_EQ(S_OK, preview->GetPreviewBitmap(&box, &bitmap));
    ASSERT_EQ(static_cast<int>(sizeof(dib)), GetObjectW(bitmap, sizeof(dib), &dib));
    EXPECT_EQ(150, dib.bmWidth);  // 160 x 90 with one ratio
    EXPECT_EQ(84, dib.bmHeight);
    EXPECT_EQ(32, dib.bmBitsPixel);
    ASSERT_NE(nullptr, dib.bmBits);
    EXPECT_EQ(0xF0F0F0u, static_cast<const DWORD*>(dib.bmBits)[10 * 150 + 10] & 0xFFFFFF) << "top left first";
    EXPECT_TRUE(DeleteObject(bitmap));
    EXPECT_EQ(gdiObjects, GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
}

}  // namespace
}  // namespace kxtest
