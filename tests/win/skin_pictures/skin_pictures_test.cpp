// The rendered pictures of the skin package against the geometry the skinning library relies on:
// every picture there with its size, and each bubble shape's point, text area, corners and
// stretchable bands where src/skin/bubble_shapes.h puts them.
#include <windows.h>
#include <gdiplus.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <string>

#include "src/skin/bubble_shapes.h"

namespace kxtest {
namespace {

using namespace Gdiplus;
using namespace Gdiplus::DllExports;

std::wstring Widen(const char* s) { return std::wstring(s, s + strlen(s)); }

// The build renders the pictures into a folder beside the test program.
std::wstring PictureFolder() {
    wchar_t path[MAX_PATH] = {};
    std::wstring s(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    return s.substr(0, s.find_last_of(L"\\/") + 1) + L"skin-pictures\\";
}

class Picture {
public:
    explicit Picture(const char* name) {
        if (GdipCreateBitmapFromFile((PictureFolder() + Widen(name)).c_str(), &bitmap_) != Ok) bitmap_ = nullptr;
        if (bitmap_) {
            GdipGetImageWidth(bitmap_, &width_);
            GdipGetImageHeight(bitmap_, &height_);
        }
    }
    ~Picture() { if (bitmap_) GdipDisposeImage(bitmap_); }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    bool ok() const { return bitmap_ != nullptr; }
    int width() const { return static_cast<int>(width_); }
    int height() const { return static_cast<int>(height_); }
    ARGB At(int x, int y) const {
        ARGB c = 0;
        GdipBitmapGetPixel(bitmap_, x, y, &c);
        return c;
    }
    int Alpha(int x, int y) const { return static_cast<int>(At(x, y) >> 24); }
    // The darkest of the three channels.
    int Lightness(int x, int y) const {
        const ARGB c = At(x, y);
        return static_cast<int>(std::min({(c >> 16) & 0xFF, (c >> 8) & 0xFF, c & 0xFF}));
    }

private:
    GpBitmap* bitmap_ = nullptr;
    UINT width_ = 0, height_ = 0;
};

constexpr int kOpaque = 224;       // alpha of a pixel inside the shape
constexpr int kClear = 8;          // alpha of a pixel outside it
constexpr int kLight = 190;        // darkest channel under the text

// One bubble shape against the layout: the point, the clear corners, the text area, the bands.
void CheckBubble(const kxskin::BubbleShape& s) {
    SCOPED_TRACE(s.name);
    Picture p(s.name);
    ASSERT_TRUE(p.ok());
    ASSERT_EQ(s.width, p.width());
    ASSERT_EQ(s.height, p.height());
    const int w = s.width, h = s.height;
    const bool pointAtLeft = s.tipX < w / 2, pointOnTop = s.tipY == 0;
    ASSERT_EQ(pointAtLeft ? 6 : w - 7, s.tipX);
    ASSERT_EQ(pointOnTop ? 0 : h - 1, s.tipY);
    ASSERT_EQ(pointOnTop ? 24 : 8, s.titleTop);

    // The tip is one opaque pixel on the picture's edge row; the rest of that row is clear
    // but for the point's own next pixels on its inner side.
    EXPECT_GE(p.Alpha(s.tipX, s.tipY), kOpaque);
    for (int x = 0; x < w; ++x) {
        const int inward = pointAtLeft ? x - s.tipX : s.tipX - x;
        if (inward < 0 || inward > 2) {
            EXPECT_LE(p.Alpha(x, s.tipY), kClear) << "x " << x;
        }
    }

    // The body's rounded corners leave the picture's corner pixels clear.
    const int bodyTop = pointOnTop ? kxskin::kBubblePointHeight : 0;
    const int bodyBottom = pointOnTop ? h : h - kxskin::kBubblePointHeight;
    for (int y : {bodyTop, bodyBottom - 1})
        for (int x : {0, w - 1}) EXPECT_LE(p.Alpha(x, y), kClear) << x << ", " << y;

    // The text area, from the title's top to just above the body's bottom edge, is opaque and
    // light enough for black text.
    for (int y = s.titleTop; y < bodyBottom - 2; ++y)
        for (int x = kxskin::kBubbleTextLeft; x < w - kxskin::kBubbleTextRightGap; ++x) {
            ASSERT_EQ(255, p.Alpha(x, y)) << x << ", " << y;
            ASSERT_GE(p.Lightness(x, y), kLight) << x << ", " << y;
        }

    // Nine slices: the point lies in a kept corner band, and every row of the middle band has
    // the same shape, as has every column of the middle column band, so stretching them keeps
    // the outline; inside the border the middle bands are plain light fill (the sign is kept).
    EXPECT_TRUE(pointAtLeft ? s.tipX < s.sliceLeft : s.tipX >= w - s.sliceRight);
    EXPECT_TRUE(pointOnTop ? kxskin::kBubblePointHeight <= s.sliceTop
                           : h - kxskin::kBubblePointHeight >= h - s.sliceBottom);
    ASSERT_LE(s.sliceTop + s.sliceBottom, 64 + 26) << "kept rows fit the smallest bubble";
    ASSERT_LE(s.sliceLeft + s.sliceRight, 86 + 12) << "kept columns fit a bubble with a text 12 wide";
    ASSERT_TRUE(s.sliceLeft <= w / 2 && w / 2 < w - s.sliceRight) << "centre column in the middle band";
    ASSERT_TRUE(s.sliceTop <= h / 2 && h / 2 < h - s.sliceBottom) << "centre row in the middle band";
    for (int y = s.sliceTop + 1; y < h - s.sliceBottom; ++y)
        for (int x = 0; x < w; ++x) {
            ASSERT_EQ(p.Alpha(x, s.sliceTop), p.Alpha(x, y)) << "row " << y << ", column " << x;
            if (x > 0 && x < w - 1) {
                ASSERT_GE(p.Lightness(x, y), kLight) << "row " << y << ", column " << x;
            }
        }
    for (int x = s.sliceLeft + 1; x < w - s.sliceRight; ++x)
        for (int y = 0; y < h; ++y) {
            ASSERT_EQ(p.Alpha(s.sliceLeft, y), p.Alpha(x, y)) << "column " << x << ", row " << y;
            if (y > bodyTop && y < bodyBottom - 1) {
                ASSERT_GE(p.Lightness(x, y), kLight) << "column " << x << ", row " << y;
            }
        }
}

TEST(SkinPictures, EveryPictureDecodesAtItsSizeAndEveryBubbleFitsTheLayout) {
    ULONG_PTR token = 0;
    GdiplusStartupInput input;
    ASSERT_EQ(Ok, GdiplusStartup(&token, &input, nullptr));

    std::set<std::wstring> expected;
    for (const kxskin::SkinPicture& p : kxskin::kSkinPictures) {
        expected.insert(Widen(p.name));
        Picture picture(p.name);
        EXPECT_TRUE(picture.ok()) << p.name;
        EXPECT_EQ(p.width, picture.width()) << p.name;
        EXPECT_EQ(p.height, picture.height()) << p.name;
    }

    for (const kxskin::BubbleShape& s : kxskin::kBubbleShapes) {
        expected.insert(Widen(s.name));
        CheckBubble(s);
    }

    // No picture is rendered that the tables do not name (a misspelt source would show here).
    std::set<std::wstring> rendered;
    WIN32_FIND_DATAW found;
    HANDLE find = FindFirstFileW((PictureFolder() + L"*.png").c_str(), &found);
    if (find != INVALID_HANDLE_VALUE) {
        do rendered.insert(found.cFileName);
        while (FindNextFileW(find, &found));
        FindClose(find);
    }
    EXPECT_EQ(expected, rendered);

    GdiplusShutdown(token);
}

}  // namespace
}  // namespace kxtest
