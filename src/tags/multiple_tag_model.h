// The multiple-item tag dialog without its window: the first readable item's values shown in the
// fields, each field enabled when some item can take it, a change box beside each field that any
// change of the field ticks, OK's checks, and the record of the ticked fields that is written to
// all items at once. The Win32 dialog CDlgMulEditTag owns one and answers IMultipleTagControls.
#pragma once

#include "resources/dialogs/edit_multiple_tags_ids.h"
#include "tags/edit_tag_dialog_model.h"

enum : UINT { KX_IDS_MTAG_NOTE = 177 };

// The change boxes beside the fields, beyond what both dialogs need of their controls.
class IMultipleTagControls : public IEditTagControls {
public:
    virtual bool IsChecked(int id) = 0;
    // Unreported, as BM_SETCHECK is.
    virtual void SetChecked(int id, bool checked) = 0;
    // The text of the entry selected in a combo box's list; false when none is selected.
    virtual bool GetSelectedText(int id, std::wstring* text) = 0;

protected:
    ~IMultipleTagControls() = default;
};

class CMultipleTagModel : public CEditTagDialogModel {
public:
    CMultipleTagModel(IMultipleTagControls& controls, IKxContentSite* site, IKxContentFolder* folder, UINT itemCount,
                      const KxPcPidl* items);

    // The portable part of OnInitDialog: reads the items and what each allows, fills the year and
    // known-value lists, shows the tags and unticks the boxes of the text fields. A failure is
    // m_hrResult's 0x80004003; the dialog then closes itself.
    HRESULT InitDialog();
    // WM_SHOWWINDOW: the first showing puts the tags into the controls once more, now that the
    // album field holds its text (the art controls follow it).
    void OnShowWindow(bool shown);

    void SetTagsToControls(const _tagTrackTagValues* record) override;
    void GetChangedTags(_tagTrackTagValues* record) override;
    void OnArtChanged() override;
    // Added to the combo boxes as they stand (not emptied first).
    void FillKnownValueLists(const KxStringList& artists, const KxStringList& albums, const KxStringList& artists2,
                             const KxStringList& genres);

    // CBN_EDITUPDATE of a text field, CBN_EDITCHANGE of the year: the checks, then the tick.
    void OnFieldChanged(int id);
    // CBN_SELCHANGE of a combo box.
    void OnSelectionChanged(int id);
    // WM_HSCROLL from the slider: only a released thumb ticks the rating.
    void OnRatingScroll(int code);
    // Browse (button or menu) and Paste that took a picture.
    void OnArtTaken();
    // Remove's button and menu command: true when there was art to remove.
    bool OnRemoveArt();

    enum class OkOutcome { Stay, Close };
    // OK's checks in their order, then the write to all items into m_hrResult.
    OkOutcome OnOK();

    IMultipleTagControls& m_multiControls;
    BOOL m_bFirstShow;
    std::wstring m_loadedYear;  // the year text as it stood when the tags were shown

private:
    void Tick(int box) { m_multiControls.SetChecked(box, true); }
    void CheckTypedText(int id);
    void ApplyAlbumRule();
};
