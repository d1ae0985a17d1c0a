// The message box's decisions: buttons, picture, the meaning of the first button's command, and
// the growth of the dialog around measured texts.
#include "dialogs/message_box_logic.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using F = MessageBoxFocus;

std::string Picture(UINT flags) {
    const char* p = MessageBoxPictureFor(flags);
    return p ? p : "(none)";
}

TEST(MessageBoxFlags, ButtonsFollowYesNoAndTheSecondDefaultOnlyWithIt) {
    MessageBoxButtons one = MessageBoxButtonsFor(0);
    EXPECT_FALSE(one.yesNo);
    EXPECT_EQ(134u, one.firstString);
    EXPECT_FALSE(one.secondDefault);

    MessageBoxButtons two = MessageBoxButtonsFor(MB_YESNO);
    EXPECT_TRUE(two.yesNo);
    EXPECT_EQ(180u, two.firstString);
    EXPECT_EQ(181u, two.secondString);
    EXPECT_FALSE(two.secondDefault);

    EXPECT_TRUE(MessageBoxButtonsFor(MB_YESNO | MB_DEFBUTTON2).secondDefault);
    EXPECT_FALSE(MessageBoxButtonsFor(MB_DEFBUTTON2).secondDefault) << "one button has no second default";
    EXPECT_FALSE(MessageBoxButtonsFor(MB_YESNOCANCEL).yesNo) << "only the bit 4 is read";
    EXPECT_TRUE(MessageBoxButtonsFor(MB_RETRYCANCEL).yesNo) << "5 has the bit 4";
}

TEST(MessageBoxFlags, PictureIsTheFirstTestThatHolds) {
    EXPECT_EQ("(none)", Picture(0));
    EXPECT_EQ("(none)", Picture(MB_YESNO | MB_DEFBUTTON2));
    EXPECT_EQ("Exclamation.png", Picture(MB_ICONEXCLAMATION));
    EXPECT_EQ("Criticalerror.png", Picture(MB_ICONHAND));
    EXPECT_EQ("balloon Info.png", Picture(MB_ICONASTERISK));
    EXPECT_EQ("Question Mark.png", Picture(MB_ICONQUESTION));
    EXPECT_EQ("Criticalerror.png", Picture(0x50));
    EXPECT_EQ("balloon Info.png", Picture(0x60));
    EXPECT_EQ("Exclamation.png", Picture(0x70));
    EXPECT_EQ("Exclamation.png", Picture(MB_ICONEXCLAMATION | MB_YESNO | MB_DEFBUTTON2));
}

struct Row {
    bool returnKey;
    UINT flags;
    F focus;
    HRESULT result;
    bool ok;
};

TEST(MessageBoxFirstButton, EveryRowOfTheDecisionTable) {
    const UINT one = 0, yn = MB_YESNO, yn2 = MB_YESNO | MB_DEFBUTTON2;
    const HRESULT cancelled = KX_MSGBOX_RESULT_CANCELLED;
    const Row rows[] = {
        // a click
        {false, yn, F::First, IDYES, true},
        {false, yn, F::Close, IDYES, true},
        {false, yn2, F::Other, IDYES, true},
        {false, one, F::First, 0, true},
        {false, one, F::Close, cancelled, true},
        {false, one, F::Other, cancelled, true},
        // the Return key, two buttons, the first the default
        {true, yn, F::Second, IDNO, false},
        {true, yn, F::Close, cancelled, false},
        {true, yn, F::First, IDYES, true},
        {true, yn, F::Other, IDYES, true},
        // the Return key, two buttons, the second the default
        {true, yn2, F::First, IDYES, true},
        {true, yn2, F::Second, IDNO, false},
        {true, yn2, F::Close, cancelled, false},
        {true, yn2, F::Other, cancelled, false},
        // the Return key, one button
        {true, one, F::First, 0, true},
        {true, one, F::Close, cancelled, true},
        {true, one, F::Other, cancelled, true},
        {true, MB_DEFBUTTON2 | MB_ICONHAND, F::Other, cancelled, true},
    };
    for (const Row& r : rows) {
        MessageBoxOutcome o = MessageBoxFirstButtonOutcome(r.returnKey, r.flags, r.focus);
        EXPECT_EQ(r.result, o.hrResult) << "return " << r.returnKey << " flags " << r.flags << " focus "
                                        << static_cast<int>(r.focus);
        EXPECT_EQ(r.ok, o.endWithOk) << "return " << r.returnKey << " flags " << r.flags << " focus "
                                     << static_cast<int>(r.focus);
    }
}

RECT Rect(LONG l, LONG t, LONG r, LONG b) { return RECT{l, t, r, b}; }

// A dialog at (100,100) 300x160 with a caption line 20 high and a message of 40.
MessageBoxMeasures Template(int captionNeeded, int textNeeded) {
    MessageBoxMeasures m;
    m.dialog = Rect(100, 100, 400, 260);
    m.caption = Rect(150, 130, 380, 150);
    m.captionNeeded = captionNeeded;
    m.text = Rect(150, 156, 380, 196);
    m.textNeeded = textNeeded;
    return m;
}

::testing::AssertionResult SameRect(const RECT& want, const RECT& got) {
    if (want.left == got.left && want.top == got.top && want.right == got.right && want.bottom == got.bottom)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "want (" << want.left << "," << want.top << "," << want.right << ","
                                         << want.bottom << ") got (" << got.left << "," << got.top << ","
                                         << got.right << "," << got.bottom << ")";
}
#define ExpectRect(want, got) EXPECT_TRUE(SameRect(want, got))

TEST(MessageBoxGrowth, TextsThatFitLeaveEverythingInPlace) {
    for (auto needs : {std::pair<int, int>{20, 40}, {13, 13}, {0, 0}}) {
        MessageBoxGrowth g = MessageBoxGrow(Template(needs.first, needs.second));
        EXPECT_FALSE(g.moveDialog);
        EXPECT_FALSE(g.moveCaption);
        EXPECT_FALSE(g.moveText);
        EXPECT_EQ(0, g.captionExtra);
        EXPECT_EQ(0, g.textExtra);
    }
}

TEST(MessageBoxGrowth, ALongMessageGrowsTheDialogByItsExtraPlus4AndTheTextByPlus2) {
    MessageBoxGrowth g = MessageBoxGrow(Template(20, 40 + 39));  // three more lines of 13
    EXPECT_EQ(39, g.textExtra);
    ASSERT_TRUE(g.moveDialog);
    ExpectRect(Rect(100, 100, 400, 260 + 39 + 4), g.dialog);
    EXPECT_FALSE(g.moveCaption) << "the caption stays";
    ASSERT_TRUE(g.moveText);
    ExpectRect(Rect(150, 156, 380, 196 + 39 + 2), g.text) << "the message keeps its top";
}

TEST(MessageBoxGrowth, ALongCaptionPushesAGrowingMessageDown) {
    MessageBoxGrowth g = MessageBoxGrow(Template(20 + 13, 40 + 26));
    EXPECT_EQ(13, g.captionExtra);
    EXPECT_EQ(26, g.textExtra);
    ExpectRect(Rect(100, 100, 400, 260 + 13 + 26 + 4), g.dialog);
    ASSERT_TRUE(g.moveCaption);
    ExpectRect(Rect(150, 130, 380, 150 + 13 + 2), g.caption);
    ASSERT_TRUE(g.moveText);
    ExpectRect(Rect(150, 156 + 15, 380, 196 + 15 + 26 + 2), g.text);
}

TEST(MessageBoxGrowth, ALongCaptionPushesAMessageThatFitsDownWithoutGrowingIt) {
    MessageBoxGrowth g = MessageBoxGrow(Template(20 + 13, 13));
    EXPECT_EQ(0, g.textExtra);
    ExpectRect(Rect(100, 100, 400, 260 + 13 + 4), g.dialog);
    ASSERT_TRUE(g.moveCaption);
    ExpectRect(Rect(150, 130, 380, 165), g.caption);
    ASSERT_TRUE(g.moveText);
    ExpectRect(Rect(150, 156 + 15, 380, 196 + 15), g.text);
}

TEST(MessageBoxGrowth, ControlsWithoutWidthOrADialogWithoutHeightAreNotTouched) {
    MessageBoxMeasures m = Template(20 + 13, 40 + 26);
    m.caption.right = m.caption.left;  // no width: not measured
    MessageBoxGrowth g = MessageBoxGrow(m);
    EXPECT_EQ(0, g.captionExtra);
    EXPECT_FALSE(g.moveCaption);
    ExpectRect(Rect(150, 156, 380, 196 + 26 + 2), g.text);
    ExpectRect(Rect(100, 100, 400, 260 + 26 + 4), g.dialog);

    m = Template(20, 40 + 26);
    m.dialog.bottom = m.dialog.top;
    g = MessageBoxGrow(m);
    EXPECT_FALSE(g.moveDialog);
    EXPECT_TRUE(g.moveText);
}

}  // namespace
