// The single-item tag dialog without its window: the ten tags into the controls and back, what is
// enabled when, the checks while typing, OK's checks in their fixed order, stepping through the
// host's view with Previous and Next (saving first), the step keys, and the new or removed art of
// the shown item. The Win32 dialog CDlgSingEditTag owns one and answers IEditTagControls.
#pragma once

#include "resources/dialogs/edit_single_tags_ids.h"
#include "tags/edit_tag_dialog_model.h"

// Strings of ComRcRes.dll for the single-item dialog.
enum : UINT {
    KX_IDS_TAG_HELP_TITLE = 77,
    KX_IDS_TAG_HELP_TEXT = 78,
    KX_IDS_TAG_STEP_FAILED = 103,
    KX_IDS_TAG_STEP_FAILED_CAPTION = 104,
    KX_IDS_TAG_NOTE = 176,
};

class CSingleTagModel : public CEditTagDialogModel {
public:
    CSingleTagModel(IEditTagControls& controls, IKxContentSite* site, IKxContentFolder* folder, UINT itemCount,
                    const KxPcPidl* items);

    // The portable part of OnInitDialog: reads the item, sets the step buttons and fills the
    // number lists. A failure is m_hrResult's 0x80004003; the dialog then closes itself.
    HRESULT InitDialog();
    // WM_SHOWWINDOW: the first showing puts the tags into the controls.
    void OnShowWindow(bool shown);

    void SetTagsToControls(const _tagTrackTagValues* record) override;
    void GetTagsFromControls(_tagTrackTagValues* record) override;
    void ClearShownArt() override;
    // The four boxes of known names get their lists when the user first needs one: a box shows
    // the item's text until it gains the focus or drops down (CBN_SETFOCUS, CBN_DROPDOWN), and
    // then gets the whole list with the item's value selected, as if it had always held it.
    // Filling tens of thousands of names into boxes the user may never open was most of the
    // cost of opening the dialog. So the arrow keys of a closed box, which need the focus,
    // walk the full list too.
    void FillKnownValueLists();
    // CBN_SETFOCUS or CBN_DROPDOWN of a box: fills its list if it has none yet.
    void FillListOnDemand(int id);

    // The change notification of a field (EN_UPDATE, CBN_EDITUPDATE or CBN_EDITCHANGE).
    void OnFieldChanged(int id);

    enum class OkOutcome { Stay, Close };
    // OK's checks in their order, then the save into m_hrResult.
    OkOutcome OnOK();

    // Previous (forward false) or Next: the digits checks, the save and the move. The move's code;
    // S_FALSE when a check held the step.
    HRESULT Step(bool forward);
    // WM_KEYUP of Left or Right with no modifier down; true when it stepped (the message ends).
    bool OnStepKey(UINT vk, bool modifierDown);
    void SetStepButtons(BOOL isFirst, BOOL isLast);

    // ---- art ----------------------------------------------------------------------------------------
    // New art for the shown item enables Remove.
    void OnArtChanged() override;
    // Remove's button and menu command.
    void OnRemoveArt();

    BOOL m_bFirstShow;
    BOOL m_prevEnabled;
    BOOL m_nextEnabled;
    // The four boxes of known names, in the order of their lists (artist, album, second artist,
    // genre).
    struct NameBox {
        BOOL filled = FALSE;  // the box holds its list
        UINT reads = 0;       // m_knownValuesReads when the list was last matched to the box
        int inserted = -1;    // the shown item's value, added to the list for it; -1 none
        int selected = -1;    // the entry that shows the item's value; -1 none
    };
    NameBox m_nameBoxes[4];
};

// A signed whole number as GetDlgItemInt reads it: 0 for anything else, or one out of range.
LONG KxParseSignedInt(const std::wstring& text);