#include "dialogs/message_box_logic.h"

namespace {

const UINT kYesNo = 0x4;
const UINT kDefaultSecond = 0x100;

// The extra height a text needs over its control; a control without width is not measured.
int ExtraHeight(const RECT& control, int needed) {
    if (control.right - control.left <= 0) return 0;
    int extra = needed - (control.bottom - control.top);
    return extra > 0 ? extra : 0;
}

}  // namespace

MessageBoxButtons MessageBoxButtonsFor(UINT flags) {
    MessageBoxButtons b;
    b.yesNo = (flags & kYesNo) != 0;
    b.firstString = b.yesNo ? UINT(KX_IDS_MSGBOX_YES) : UINT(KX_IDS_MSGBOX_OK);
    b.secondString = b.yesNo ? UINT(KX_IDS_MSGBOX_NO) : 0u;
    b.secondDefault = b.yesNo && (flags & kDefaultSecond) != 0;
    return b;
}

const char* MessageBoxPictureFor(UINT flags) {
    if ((flags & 0x30) == 0x30) return "Exclamation.png";
    if (flags & 0x10) return "Criticalerror.png";
    if (flags & 0x40) return "balloon Info.png";
    if (flags & 0x20) return "Question Mark.png";
    return nullptr;
}

MessageBoxOutcome MessageBoxFirstButtonOutcome(bool returnKey, UINT flags, MessageBoxFocus focus) {
    const bool yesNo = (flags & kYesNo) != 0;
    const bool secondDefault = (flags & kDefaultSecond) != 0;
    if (!returnKey) {
        if (yesNo) return {IDYES, true};
        return {focus == MessageBoxFocus::First ? KX_MSGBOX_RESULT_OK : KX_MSGBOX_RESULT_CANCELLED, true};
    }
    if (!yesNo)
        return {focus == MessageBoxFocus::First ? KX_MSGBOX_RESULT_OK : KX_MSGBOX_RESULT_CANCELLED, true};
    if (!secondDefault) {
        if (focus == MessageBoxFocus::Second) return {IDNO, false};
        if (focus == MessageBoxFocus::Close) return {KX_MSGBOX_RESULT_CANCELLED, false};
        return {IDYES, true};
    }
    if (focus == MessageBoxFocus::First) return {IDYES, true};
    if (focus == MessageBoxFocus::Second) return {IDNO, false};
    return {KX_MSGBOX_RESULT_CANCELLED, false};
}

MessageBoxGrowth MessageBoxGrow(const MessageBoxMeasures& m) {
    MessageBoxGrowth g;
    g.dialog = m.dialog;
    g.caption = m.caption;
    g.text = m.text;
    g.captionExtra = ExtraHeight(m.caption, m.captionNeeded);
    g.textExtra = ExtraHeight(m.text, m.textNeeded);
    g.moveDialog = g.moveCaption = g.moveText = false;
    const bool captionGrows = g.captionExtra > 0;
    if (!captionGrows && g.textExtra == 0) return g;
    // the dialog takes both extras and 4 pixels more; each text control 2 more than its own
    if (m.dialog.bottom - m.dialog.top > 0) {
        g.dialog.bottom += g.captionExtra + g.textExtra + 4;
        g.moveDialog = true;
    }
    if (captionGrows) {
        g.caption.bottom += g.captionExtra + 2;
        g.text.top += g.captionExtra + 2;
        g.text.bottom += g.captionExtra + 2;
        g.moveCaption = true;
    }
    if (g.textExtra != 0) g.text.bottom += g.textExtra + 2;
    // A caption that grew pushes the message down even when the message itself fits: left in
    // place, the message control would cover the caption's new lines.
    g.moveText = captionGrows || g.textExtra != 0;
    return g;
}

void MessageBoxCutText(std::wstring& text) {
    if (text.size() <= kMessageBoxMaxChars) return;
    size_t keep = kMessageBoxMaxChars;
    if (text[keep - 1] >= 0xD800 && text[keep - 1] <= 0xDBFF) --keep;  // a high surrogate without its pair
    text.resize(keep);
}
