// The preview's size in its box and its room, and the control centred on it, with the signed
// truncating halves of the differences.
#include "imaging/fit_box.h"
#include "imaging/preview_placement.h"

#include <gtest/gtest.h>

namespace kxtest {
namespace {

TEST(PreviewPlacement, ShrinksIntoTheBoxWithOneRatioAndNeverGrows) {
    const struct {
        UINT w, h, outW, outH;
    } cases[] = {{1000, 400, 340, 136}, {400, 1000, 80, 200}, {340, 200, 340, 200},
                 {100, 50, 100, 50},    {341, 200, 340, 199}, {0, 0, 0, 0}};
    for (const auto& c : cases) {
        UINT w = static_cast<UINT>(c.w), h = static_cast<UINT>(c.h);
        ScaleToFitBox(&w, &h, KX_PREVIEW_BOX_WIDTH, KX_PREVIEW_BOX_HEIGHT);
        EXPECT_EQ(c.outW, w) << c.w << "x" << c.h;
        EXPECT_EQ(c.outH, h) << c.w << "x" << c.h;
    }
}

TEST(PreviewPlacement, CentresTheControlAndShrinksToTheRoom) {
    const struct {
        const char* what;
        LONG w, h;
        RECT control;
        LONG roomW, roomH;
        bool move;
        LONG outW, outH;
        RECT placed;
    } cases[] = {
        {"landscape", 340, 136, {10, 20, 350, 220}, 340, 200, true, 340, 136, {10, 52, 350, 188}},
        {"portrait", 80, 200, {10, 20, 350, 220}, 340, 200, true, 80, 200, {140, 20, 220, 220}},
        {"same size", 340, 200, {10, 20, 350, 220}, 340, 200, false, 340, 200, {10, 20, 350, 220}},
        {"smaller room", 340, 136, {10, 20, 350, 220}, 100, 100, true, 100, 40, {130, 100, 230, 140}},
        {"wider than the control", 201, 100, {0, 0, 100, 100}, 340, 200, true, 201, 100, {-50, 0, 151, 100}},
        {"control without width", 50, 50, {5, 5, 5, 5}, 340, 200, false, 50, 50, {5, 5, 5, 5}},
        {"negative room", 50, 50, {0, 0, 100, 100}, -1, 200, false, 50, 50, {0, 0, 100, 100}},
    };
    for (const auto& c : cases) {
        LONG w = c.w, h = c.h;
        RECT r = c.control;
        EXPECT_EQ(c.move, KxPlacePreviewControl(&w, &h, &r, c.roomW, c.roomH)) << c.what;
        EXPECT_EQ(c.outW, w) << c.what;
        EXPECT_EQ(c.outH, h) << c.what;
        EXPECT_TRUE(r.left == c.placed.left && r.top == c.placed.top && r.right == c.placed.right &&
                    r.bottom == c.placed.bottom)
            << c.what << ": " << r.left << "," << r.top << "," << r.right << "," << r.bottom;
    }
}

}  // namespace
}  // namespace kxtest
