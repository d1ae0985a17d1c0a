// The message box's decisions: buttons, picture, the meaning of the first button's command, and
// the growth of the dialog around measured texts.
#include "dialogs/message_box_logic.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using F = MessageBoxFocus;
const UINT kOne = 0, kYn = MB_YESNO, kYn2 = MB_YESNO | MB_DEFBUTTON2;

TEST(MessageBoxFlags, ButtonsFollowYesNoAndTheSecondDefaultOnlyWithIt) {
    struct Row { UINT flags; bool yesNo; UINT first, second; bool secondDefault; } rows[] = {
        {kOne, false, 134, 0, false},
        {kYn, true, 180, 181, false},
        {kYn2, true, 180, 181, true},
        {MB_DEFBUTTON2, false, 134, 0, false},    // one button has no second default
        {MB_YESNOCANCEL, false, 134, 0, false},   // only the bit 4 is read
        {MB_RETRYCANCEL, true, 180, 181, false},  // 5 has the bit 4
    };
    for (const Row& r : rows) {
        MessageBoxButtons b = MessageBoxButtonsFor(r.flags);
        EXPECT_EQ(r.yesNo, b.yesNo) << r.flags;
        EXPECT_EQ(r.first, b.firstString) << r.flags;
        EXPECT_EQ(r.second, b.secondString) << r.flags;
        EXPECT_EQ(r.secondDefault, b.secondDefault) << r.flags;
    }
}

TEST(MessageBoxFlags, PictureIsTheFirstTestThatHolds) {
    struct Row { UINT flags; const char* picture; } rows[] = {
        {0, "(none)"}, {kYn2, "(none)"},
        {MB_ICONEXCLAMATION, "Exclamation.png"}, {MB_ICONHAND, "Criticalerror.png"},
        {MB_ICONASTERISK, "balloon Info.png"}, {MB_ICONQUESTION, "Question Mark.png"},
        {0x50, "Criticalerror.png"}, {0x60, "balloon Info.png"}, {0x70, "Exclamation.png"},
        {MB_ICONEXCLAMATION | kYn2, "Exclamation.png"},
    };
    for (const Row& r : rows) {
        const char* p = MessageBoxPictureFor(r.flags);
        EXPECT_EQ(r.picture, std::string(p ? p : "(none)")) << r.flags;
    }
}

TEST(MessageBoxFirstButton, EveryRowOfTheDecisionTable) {
    const HRESULT cancelled = KX_MSGBOX_RESULT_CANCELLED;
    struct Row { bool returnKey; UINT flags; F focus; HRESULT result; bool ok; } rows[] = {
        // a click
        {false, kYn, F::First, IDYES, true},
        {false, kYn, F::Close, IDYES, true},
        {false, kYn2, F::Other, IDYES, true},
        {false, kOne, F::First, 0, true},
        {false, kOne, F::Close, cancelled, true},
        {false, kOne, F::Other, cancelled, true},
        // the Return key, two buttons, the first the default
        {true, kYn, F::Second, IDNO, false},
        {true, kYn, F::Close, cancelled, false},
        {true, kYn, F::First, IDYES, true},
        {true, kYn, F::Other, IDYES, true},
        // the Return key, two buttons, the second the default
        {true, kYn2, F::First, IDYES, true},
        {true, kYn2, F::Second, IDNO, false},
        {true, kYn2, F::Close, cancelled, false},
        {true, kYn2, F::Other, cancelled, false},
        // the Return key, one button
        {true, kOne, F::First, 0, true},
        {true, kOne, F::Close, cancelled, true},
        {true, kOne, F::Other, cancelled, true},
        {true, MB_DEFBUTTON2 | MB_ICONHAND, F::Other, cancelled, true},
    };
    for (const Row& r : rows) {
        MessageBoxOutcome o = MessageBoxFirstButtonOutcome(r.returnKey, r.flags, r.focus);
        EXPECT_EQ(r.result, o.hrResult) << r.returnKey << " " << r.flags << " " << static_cast<int>(r.focus);
        EXPECT_EQ(r.ok, o.endWithOk) << r.returnKey << " " << r.flags << " " << static_cast<int>(r.focus);
    }
}

// A dialog at (100,100) 300x160 with a caption line (150,130)-(380,150) and a message
// (150,156)-(380,196); lines are 13 high. Left and right never change.
TEST(MessageBoxGrowth, DialogTakesBothExtrasPlus4EachTextItsOwnPlus2AndAGrownCaptionPushesTheText) {
    struct Row {
        const char* what;
        int captionNeeded, textNeeded, captionWidth, dialogHeight;  // needs, then the template's sizes
        int captionExtra, textExtra, moveDialog, moveCaption, moveText;
        LONG dialogBottom, captionBottom, textTop, textBottom;
    } rows[] = {
        // The dialog's bottom: 260 + both extras + 4; the caption's: 150 + its extra + 2; the message
        // moves down by the caption's extra + 2 and grows by its own extra + 2.
        {"texts that fit", 20, 40, 230, 160, 0, 0, 0, 0, 0, 260, 150, 156, 196},
        {"a long message", 20, 79, 230, 160, 0, 39, 1, 0, 1, 303, 150, 156, 237},
        {"a long caption and message", 33, 66, 230, 160, 13, 26, 1, 1, 1, 303, 165, 171, 239},
        {"a long caption, a message that fits", 33, 13, 230, 160, 13, 0, 1, 1, 1, 277, 165, 171, 211},
        {"a caption without width is not measured", 33, 66, 0, 160, 0, 26, 1, 0, 1, 290, 150, 156, 224},
        {"a dialog without height stays", 20, 66, 230, 0, 0, 26, 0, 0, 1, 100, 150, 156, 224},
    };
    for (const Row& r : rows) {
        MessageBoxMeasures m;
        m.dialog = RECT{100, 100, 400, 100 + r.dialogHeight};
        m.caption = RECT{150, 130, 150 + r.captionWidth, 150};
        m.text = RECT{150, 156, 380, 196};
        m.captionNeeded = r.captionNeeded;
        m.textNeeded = r.textNeeded;
        MessageBoxGrowth g = MessageBoxGrow(m);
        SCOPED_TRACE(r.what);
        EXPECT_EQ(r.captionExtra, g.captionExtra);
        EXPECT_EQ(r.textExtra, g.textExtra);
        EXPECT_EQ(r.moveDialog != 0, g.moveDialog);
        EXPECT_EQ(r.moveCaption != 0, g.moveCaption);
        EXPECT_EQ(r.moveText != 0, g.moveText);
        EXPECT_EQ(r.dialogBottom, g.dialog.bottom);
        EXPECT_EQ(r.captionBottom, g.caption.bottom);
        EXPECT_EQ(r.textTop, g.text.top);
        EXPECT_EQ(r.textBottom, g.text.bottom);
        EXPECT_EQ(100, g.dialog.top);
        EXPECT_EQ(130, g.caption.top) << "the caption keeps its top";
        EXPECT_TRUE(g.dialog.left == 100 && g.dialog.right == 400 && g.text.left == 150 && g.text.right == 380);
    }
}

}  // namespace

TEST(MessageBoxCutText, KeepsAtMostTheLimitAndNeverHalfASurrogatePair) {
    struct Case { std::wstring text; size_t kept; } cases[] = {
        {std::wstring(kMessageBoxMaxChars, L'a'), kMessageBoxMaxChars},
        {std::wstring(1000000, L'a'), kMessageBoxMaxChars},
        {std::wstring(kMessageBoxMaxChars - 1, L'a') + L"\xD83D\xDE00", kMessageBoxMaxChars - 1},
        {std::wstring(kMessageBoxMaxChars - 2, L'a') + L"\xD83D\xDE00" + L"b", kMessageBoxMaxChars},
    };
    for (Case& c : cases) {
        MessageBoxCutText(c.text);
        EXPECT_EQ(c.kept, c.text.size());
    }
}
