// The video properties dialog without its window: reads one video's five values and its preview
// bitmap through the host's tree into the list's six rows, and walks the host's view. The Win32
// dialog CDlgVideoProperty holds it and plays its controls.
#pragma once

#include "imaging/property_item_model.h"
#include "imaging/video_property_rows.h"

// What the model needs of the video dialog's own controls.
class IVideoPropertyControls {
public:
    // The second column of a row of the list.
    virtual void SetRowValue(int row, LPCWSTR text) = 0;
    // Shows the host's bitmap (which stays the model's) fitted into the preview.
    virtual void ShowVideoPreview(HBITMAP bitmap) = 0;
    // The picture for a video without a preview.
    virtual void ShowVideoFallback() = 0;

protected:
    ~IVideoPropertyControls() = default;
};

class CVideoPropertyModel final : public CPropertyItemModel {
public:
    // The site, folder and item stay the caller's; the dialog, controls and texts outlive the model.
    CVideoPropertyModel(IKxContentSite* site, IKxContentFolder* folder, KxPcPidl item, IPropertyDialogControls& dialog,
                        IVideoPropertyControls& controls, IKxPropertyTextSource& texts);

    // Reads the item into the rows (a failed GetProperties leaves them), shows its preview or the
    // fallback picture and sets the buttons. Returns the result of GetProperties, or 0x80004003
    // (also kept in m_hrResult when an item object is missing).
    HRESULT ReadVideoProperties(KxPcPidl item);
    // One step in the view, without a test of the ends: the buttons are disabled there. The
    // result of the read is not looked at.
    void MoveToItem(bool previous) override;

    KxVideoPropertyTexts m_texts;  // what the second column shows

private:
    IVideoPropertyControls& m_controls;
    IKxPropertyTextSource& m_textSource;
};
