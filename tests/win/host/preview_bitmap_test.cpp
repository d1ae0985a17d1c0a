// The preview of a video on Windows: a real DIB section that the caller deletes.
#include <windows.h>

#include <gtest/gtest.h>

#include "host/library/sample_library.h"

namespace {

TEST(PreviewBitmap, VideoFrameIsADibSectionThatFitsTheBox) {
    auto sample = kxhost::BuildSampleLibrary(kxhost::DefaultSampleOptions());
    IKxContentFolder* root = nullptr;
    ASSERT_EQ(S_OK, sample.library->GetRootFolder(&root));
    KxPidl item = sample.library->NewPidl(sample.videos[0]);
    KxPcPidl items[] = {item};
    IKxItemPreview* preview = nullptr;
    ASSERT_EQ(S_OK, root->GetItemObject(nullptr, nullptr, 1, items, IID_IKxItemPreview,
                                        reinterpret_cast<void**>(&preview)));
    const DWORD gdiBefore = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    SIZE box = {150, 150};
    HBITMAP bitmap = nullptr;
    ASSERT_EQ(S_OK, preview->GetPreviewBitmap(&box, &bitmap));
    ASSERT_NE(nullptr, bitmap);
    BITMAP info = {};
    ASSERT_EQ(static_cast<int>(sizeof(info)), GetObjectW(bitmap, sizeof(info), &info));
    EXPECT_EQ(150, info.bmWidth);  // 160 x 90 shrunk with one ratio
    EXPECT_EQ(84, info.bmHeight);
    EXPECT_EQ(32, info.bmBitsPixel);
    // the top-left corner of the frame is the dark border of the sample picture
    const DWORD* bits = static_cast<const DWORD*>(info.bmBits);
    ASSERT_NE(nullptr, bits);
    EXPECT_EQ(0x00202020u, bits[0] & 0x00FFFFFFu);
    EXPECT_TRUE(DeleteObject(bitmap));
    EXPECT_EQ(gdiBefore, GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
    preview->Release();
    root->Release();
    CoTaskMemFree(item);
    EXPECT_EQ(0, sample.library->OutstandingReferences());
}

}  // namespace
