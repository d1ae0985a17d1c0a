// What the message box decides without a window: its buttons and picture from the caller's
// MB_... flags, what a press of the first button means (a click or the Return key, by focus), and
// how the dialog and its two texts grow once their texts have been measured.
#pragma once

#include <cstddef>
#include <string>

#include "kx/KxPlatform.h"

// Strings of ComRcRes.dll on the buttons.
enum : UINT { KX_IDS_MSGBOX_OK = 134, KX_IDS_MSGBOX_YES = 180, KX_IDS_MSGBOX_NO = 181 };

// The message box's results besides 6 (IDYES) and 7 (IDNO): 0 for the one button, and
// cancelled.
#define KX_MSGBOX_RESULT_OK ((HRESULT)0)
#define KX_MSGBOX_RESULT_CANCELLED ((HRESULT)0x800704C7L)

struct MessageBoxButtons {
    bool yesNo;          // two buttons
    UINT firstString;    // 180 (two buttons) or 134
    UINT secondString;   // 181, or 0 when the second button is hidden
    bool secondDefault;  // the second button is the default and takes the focus
};
MessageBoxButtons MessageBoxButtonsFor(UINT flags);

// The picture of the flags, the first test that holds deciding; null for none.
const char* MessageBoxPictureFor(UINT flags);

// Which of the dialog's windows had the focus when the first button's command came.
enum class MessageBoxFocus { First, Second, Close, Other };

struct MessageBoxOutcome {
    HRESULT hrResult;
    bool endWithOk;  // OnOK; otherwise OnCancel
};
// Command 1034 comes from a click or from the Return key; `returnKey` says which.
MessageBoxOutcome MessageBoxFirstButtonOutcome(bool returnKey, UINT flags, MessageBoxFocus focus);

// The most characters of the host's text, and of its caption, that the box shows; the rest is cut.
// Wrapping a text to measure it costs more than linear time in its length (a million characters
// keep the platform busy for over a minute), and a box grown to tens of thousands of characters is
// already taller than any screen.
constexpr size_t kMessageBoxMaxChars = 65535;
// Cuts `text` to kMessageBoxMaxChars, never between the two halves of a surrogate pair.
void MessageBoxCutText(std::wstring& text);

// Growth of the dialog on its first showing, from window rectangles in screen coordinates and the
// heights that the wrapped texts need.
struct MessageBoxMeasures {
    RECT dialog;
    RECT caption;       // control 1070
    int captionNeeded;  // height the bold caption needs in the caption's width
    RECT text;          // control 1046
    int textNeeded;     // height the message needs in the text's width
};
struct MessageBoxGrowth {
    int captionExtra;  // 0 or more
    int textExtra;     // 0 or more
    bool moveDialog;   // new rectangle in `dialog`
    RECT dialog;
    bool moveCaption;  // new rectangle in `caption`, screen coordinates
    RECT caption;
    bool moveText;     // new rectangle in `text`, screen coordinates
    RECT text;
};
MessageBoxGrowth MessageBoxGrow(const MessageBoxMeasures& m);
