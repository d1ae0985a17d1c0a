// The flat button's arithmetic and state: where the icon stands, which parts a drawing has, and
// the hover tracking's repaints. The frame's pixels are checked under Wine.
#include <gtest/gtest.h>

#include "controls/flat_button.h"

namespace {

TEST(FlatButton, IconStandsWhereTwiceItsSizeIsTakenOff) {
    struct Case { RECT item; int iconW, iconH; LONG x, y; } cases[] = {
        {{0, 0, 40, 40}, 16, 16, 4, 4},         // (40 - 32) / 2
        {{0, 0, 30, 30}, 16, 16, 0, 0},         // 30 is not more than 32: no shift
        {{0, 0, 32, 33}, 16, 16, 0, 0},         // equal to twice: none; one more: half of 1 truncates to 0
        {{10, 20, 51, 60}, 16, 8, 14, 32},      // odd room truncates; the offset adds to left and top
        {{0, 0, 40, 40}, 0, 0, 20, 20},         // no icon size: half of the whole
        {{0, 0, 40, 40}, 0x7FFFFFFF, 0x7FFFFFFF, 0, 0},  // a huge size does not wrap around
    };
    for (const Case& c : cases) {
        const POINT at = FlatButtonIconOrigin(c.item, c.iconW, c.iconH);
        EXPECT_EQ(c.x, at.x) << c.item.right << "x" << c.item.bottom << " icon " << c.iconW;
        EXPECT_EQ(c.y, at.y) << c.item.right << "x" << c.item.bottom << " icon " << c.iconH;
    }
}

TEST(FlatButton, PlanByIconHoverFocusAndPress) {
    struct Case { bool icon, hover; UINT state; bool face, frame, sunken, focusFrame; } cases[] = {
        {false, true, kFlatItemFocus | kFlatItemSelected, false, false, false, false},  // no icon: nothing
        {true, false, 0, true, false, false, false},
        {true, true, 0, true, true, false, false},
        {true, true, kFlatItemSelected, true, true, true, false},
        {true, false, kFlatItemSelected, true, false, false, false},  // pressed away from the mouse, no focus
        {true, false, kFlatItemFocus, true, true, false, true},
        {true, false, kFlatItemFocus | kFlatItemSelected, true, true, true, true},
        {true, true, kFlatItemDisabled, true, true, false, false},  // disabled changes nothing drawn
    };
    for (const Case& c : cases) {
        const FlatButtonPlan plan = PlanFlatButton(c.icon, c.hover, FlatButtonBitsOf(c.state));
        SCOPED_TRACE(testing::Message() << "icon " << c.icon << " hover " << c.hover << " state " << c.state);
        EXPECT_EQ(c.face, plan.face);
        EXPECT_EQ(c.frame, plan.frame);
        EXPECT_EQ(c.sunken, plan.sunken);
        EXPECT_EQ(c.focusFrame, plan.focusFrame);
        EXPECT_EQ(c.icon, plan.icon);
    }
    const FlatButtonBits bits = FlatButtonBitsOf(0xFFFF);
    EXPECT_TRUE(bits.m_bFocus && bits.m_bDisabled && bits.m_bPressed);
}

TEST(FlatButton, HoverRepaintsOnceOnEnteringAndOnceOnLeaving) {
    using H = CFlatButtonHover;
    struct Step {
        char event;  // 'm': move over the button, 'o': move over another window, 'l': WM_MOUSELEAVE
        H::Action action;
        bool hover;
    } steps[] = {
        {'o', H::None, false}, {'l', H::None, false}, {'m', H::Enter, true}, {'m', H::None, true},
        {'m', H::None, true},  {'o', H::Leave, false}, {'o', H::None, false}, {'m', H::Enter, true},
        {'l', H::Leave, false}, {'l', H::None, false},
    };
    H hover;
    int i = 0;
    for (const Step& s : steps) {
        const H::Action got = s.event == 'l' ? hover.OnMouseLeave() : hover.OnMouseMove(s.event == 'm');
        EXPECT_EQ(s.action, got) << "step " << i;
        EXPECT_EQ(s.hover, hover.IsHover()) << "step " << i;
        ++i;
    }
}

}  // namespace
