// The picture work of the skinning library: shapes keep their point and margins when their window
// grows or shrinks, pictures fit into statics with their proportions, alpha gives the region.
#include <gtest/gtest.h>

#include "skin/pixels.h"

namespace {

using kxskin::Picture;

const uint32_t kBody = 0xFF3070C0, kPoint = 0xFFFF0000, kEdge = 0xFF00FF00, kClear = 0;

// A bubble-like shape: transparent around, a body, a one-pixel point on top 6 px from the left
// and a marked column 7 px from the right.
Picture Shape(int w, int h) {
    Picture p;
    p.width = w;
    p.height = h;
    p.pixels.assign(static_cast<size_t>(w) * h, kClear);
    for (int y = 2; y < h - 1; ++y)
        for (int x = 1; x < w - 1; ++x) p.pixels[static_cast<size_t>(y) * w + x] = kBody;
    p.pixels[6] = kPoint;
    for (int y = 2; y < h - 1; ++y) p.pixels[static_cast<size_t>(y) * w + (w - 7)] = kEdge;
    return p;
}

TEST(SkinPixels, SlicingKeepsThePointAndTheMarginsFromTheirOwnEdges) {
    const Picture shape = Shape(21, 15);
    const struct { int width, height; } sizes[] = {{21, 15}, {120, 90}, {14, 9}, {300, 16}};
    for (const auto& s : sizes) {
        SCOPED_TRACE(testing::Message() << s.width << " x " << s.height);
        const Picture out = kxskin::SliceToSize(shape, s.width, s.height);
        ASSERT_EQ(s.width, out.width);
        ASSERT_EQ(s.height, out.height);
        EXPECT_EQ(kPoint, out.At(6, 0));
        EXPECT_EQ(kClear, out.At(5, 0));
        EXPECT_EQ(kClear, out.At(7, 0));
        EXPECT_EQ(kEdge, out.At(s.width - 7, 3));
        EXPECT_EQ(kBody, out.At(s.width - 6, 3));
        EXPECT_EQ(kClear, out.At(0, 3));
        EXPECT_EQ(kClear, out.At(s.width - 1, s.height - 1));
        EXPECT_EQ(kBody, out.At(1, s.height - 2));
        EXPECT_EQ(kClear, out.At(1, 1));
        EXPECT_EQ(kBody, out.At(1, 2));
    }
    EXPECT_TRUE(kxskin::SliceToSize(shape, 0, 10).Empty());
    EXPECT_TRUE(kxskin::SliceToSize(Picture(), 10, 10).Empty());
}

TEST(SkinPixels, FittingShrinksWithTheProportionsAndCentresOnTransparency) {
    Picture wide;
    wide.width = 40;
    wide.height = 20;
    wide.pixels.assign(800, 0xFF808080);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x) wide.pixels[static_cast<size_t>(y) * 40 + x] = 0xFFFFFFFF;  // left half white
    const Picture out = kxskin::FitInto(wide, 10, 10);
    ASSERT_EQ(10, out.width);
    EXPECT_EQ(kClear, out.At(5, 1)) << "above the picture";
    EXPECT_EQ(0xFFFFFFFFu, out.At(0, 3));
    EXPECT_EQ(0xFF808080u, out.At(9, 6));
    EXPECT_EQ(kClear, out.At(5, 8)) << "below the picture";

    // a picture that fits keeps its size and stands in the middle
    const Picture small = kxskin::FitInto(Shape(4, 4), 8, 6);
    EXPECT_EQ(Shape(4, 4).At(1, 2), small.At(3, 3));
    EXPECT_EQ(kClear, small.At(0, 0));

    // half-covered cells average their premultiplied pixels
    Picture stripes;
    stripes.width = 2;
    stripes.height = 1;
    stripes.pixels = {0xFF000000u | 200, 0};
    EXPECT_EQ(0x80000064u, kxskin::FitInto(stripes, 1, 1).At(0, 0));
}

TEST(SkinPixels, BackgroundsAndOpaqueShapesAndRegions) {
    Picture p;
    p.width = 3;
    p.height = 1;
    p.pixels = {0x80404040u, 0x00000000u, 0x20101010u};  // half, clear, faint
    const Picture over = kxskin::OverColour(p, 0xFFFFFF);
    EXPECT_EQ(0xFFBFBFBFu, over.At(0, 0));
    EXPECT_EQ(0xFFFFFFFFu, over.At(1, 0));
    const Picture opaque = kxskin::OpaqueWithin(p, 128);
    EXPECT_EQ(0xFF808080u, opaque.At(0, 0));
    EXPECT_EQ(kClear, opaque.At(2, 0));

    const std::vector<kxskin::Span> spans = kxskin::RegionOf(Shape(21, 15), 128);
    // the point, then the body with its rows joined; the last row is clear
    ASSERT_EQ(2u, spans.size());
    EXPECT_EQ(6, spans[0].left);
    EXPECT_EQ(7, spans[0].right);
    EXPECT_EQ(0, spans[0].top);
    EXPECT_EQ(1, spans[0].bottom);
    EXPECT_EQ(1, spans[1].left);
    EXPECT_EQ(20, spans[1].right);
    EXPECT_EQ(2, spans[1].top);
    EXPECT_EQ(14, spans[1].bottom);
}

}  // namespace
