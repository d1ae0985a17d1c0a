// What both tag dialogs check and decide without a window: the keystroke rule that tells a typed
// character from a paste or an editing key, the digits check, the length check with its one last
// text for the whole dialog, the two warnings and their target, the year and track-number lists,
// and whether a picture may be dropped now. The single-item and multiple-item models derive.
#pragma once

#include "tags/edit_tag_controls.h"
#include "tags/edit_tag_model.h"

// Strings of ComRcRes.dll for the warnings.
enum : UINT {
    KX_IDS_TAG_WARNING_TITLE = 217,
    KX_IDS_TAG_WARNING_DIGITS = 218,
    KX_IDS_TAG_WARNING_LENGTH = 247,  // a format with one number, the limit
};

enum : int { KX_TAG_MAX_TEXT = 255 };  // the longest valid text, in characters

class CEditTagDialogModel : public CEditTagModel {
public:
    CEditTagDialogModel(IEditTagControls& controls, IKxContentSite* site, IKxContentFolder* folder, UINT itemCount,
                        const KxPcPidl* items);

    // Every WM_KEYDOWN: m_restoreOverflow says whether the key types a character.
    void OnKeyDown(UINT vk, bool controlHeld);
    // 1 valid (digits only, or empty), 0 invalid or no field: the field is focused with its text
    // selected and the digits warning shows at it.
    int CheckDigits(int id, bool editControl);
    // 1 valid (at most 255 characters), 0 warned, -1 no field or no memory for the warning. A
    // restore puts the last text seen back (so a typed character past the limit vanishes); else
    // the long text stays, warned of.
    int CheckLength(int id, BOOL restore);
    // Hides the digits warning if it points at this field.
    void HideDigitWarning(int id);
    // Whether a picture may be dropped on the picture control now.
    bool CanAcceptArtwork();
    // Fills the year combo with 1990 to 2007 and the track combo (0: none) with 1 to 30.
    void FillYearAndTrackLists(int yearId, int trackId);

    // ---- art ----------------------------------------------------------------------------------------
    // New art (copied): shown, kept for the write, then OnArtChanged.
    bool SetNewArt(const BYTE* bytes, ULONG size);
    // True, with the default picture and the art marked removed, if there was art.
    bool RemoveArt();
    // New art was taken: each dialog enables its Remove (and the multiple-item one ticks its box).
    virtual void OnArtChanged() {}

    HWND OwnerWindow() const override { return m_controls.DialogWindow(); }

    static bool AllDigits(const std::wstring& text);

    IEditTagControls& m_controls;
    int m_albumId;  // the album field, 0 when the dialog has none
    KxNumberList m_yearValues;
    KxNumberList m_trackValues;
    BOOL m_restoreOverflow;
    std::wstring m_lastText;  // one for all the fields of the dialog
    BOOL m_checkLength;
    int m_warningTarget[2];  // the field each warning points at, by KxFieldWarning; 0 none

private:
    bool Warn(KxFieldWarning which, int id);
};

// The leading number of a text as _wtoi reads it: 0 where none stands.
int KxLeadingInt(const std::wstring& text);
