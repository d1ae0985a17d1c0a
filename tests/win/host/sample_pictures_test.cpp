// The sample library's pictures decode with the platform's imaging: the JPEG encoder's output is
// close to its source pixels, BMP files are exact.
#include <windows.h>
#include <objbase.h>
#include <gdiplus.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "host/library/jpeg_encoder.h"
#include "host/library/picture_file.h"

namespace {

using namespace Gdiplus;
using namespace Gdiplus::DllExports;

struct Imaging : ::testing::Test {
    ULONG_PTR token = 0;
    void SetUp() override {
        GdiplusStartupInput input;
        ASSERT_EQ(Ok, GdiplusStartup(&token, &input, nullptr));
    }
    void TearDown() override { GdiplusShutdown(token); }

    // Decodes bytes and hands back the pixels as 0xAARRGGBB; false when GDI+ refuses them.
    static bool Decode(const std::vector<BYTE>& bytes, UINT* w, UINT* h, std::vector<DWORD>* pixels) {
        HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
        std::memcpy(GlobalLock(memory), bytes.data(), bytes.size());
        GlobalUnlock(memory);
        IStream* stream = nullptr;
        if (FAILED(CreateStreamOnHGlobal(memory, TRUE, &stream))) return false;
        GpBitmap* bitmap = nullptr;
        GpStatus status = GdipCreateBitmapFromStream(stream, &bitmap);
        stream->Release();
        if (status != Ok) return false;
        GdipGetImageWidth(bitmap, w);
        GdipGetImageHeight(bitmap, h);
        pixels->assign(static_cast<size_t>(*w) * *h, 0);
        for (UINT y = 0; y < *h; ++y)
            for (UINT x = 0; x < *w; ++x) {
                ARGB c = 0;
                GdipBitmapGetPixel(bitmap, static_cast<INT>(x), static_cast<INT>(y), &c);
                (*pixels)[static_cast<size_t>(y) * *w + x] = c;
            }
        GdipDisposeImage(reinterpret_cast<GpImage*>(bitmap));
        return true;
    }
    static int Distance(DWORD a, DWORD b) {
        int d = 0;
        for (int shift = 0; shift < 24; shift += 8)
            d = std::max(d, std::abs(static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF)));
        return d;
    }
};

TEST_F(Imaging, JpegDecodesCloseToItsPixels) {
    for (auto [w, h] : {std::pair<LONG, LONG>{61, 37}, {8, 8}, {1, 1}, {160, 90}}) {
        const std::vector<DWORD> source = kxhost::SamplePixels(w, h, 5);
        UINT dw = 0, dh = 0;
        std::vector<DWORD> decoded;
        ASSERT_TRUE(Decode(kxhost::EncodeJpeg(w, h, source, 90), &dw, &dh, &decoded)) << w << "x" << h;
        ASSERT_EQ(static_cast<UINT>(w), dw);
        ASSERT_EQ(static_cast<UINT>(h), dh);
        long total = 0;
        for (size_t i = 0; i < source.size(); ++i) total += Distance(source[i], decoded[i]);
        EXPECT_LT(total / static_cast<long>(source.size()), 12) << "mean error of " << w << "x" << h;
    }
}

TEST_F(Imaging, BmpDecodesExactly) {
    const std::vector<DWORD> source = kxhost::SamplePixels(13, 7, 9);
    UINT w = 0, h = 0;
    std::vector<DWORD> decoded;
    ASSERT_TRUE(Decode(kxhost::EncodeBmp(13, 7, source), &w, &h, &decoded));
    ASSERT_EQ(13u, w);
    ASSERT_EQ(7u, h);
    for (size_t i = 0; i < source.size(); ++i) EXPECT_EQ(source[i] & 0xFFFFFF, decoded[i] & 0xFFFFFF) << i;
}

}  // namespace
