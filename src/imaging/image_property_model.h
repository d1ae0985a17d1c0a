// The image properties dialog without its window: reads one picture's properties and preview
// source through the host's tree, builds the list's rows, and walks the host's view. The Win32
// dialog CDlgImageProperty holds it and plays its controls.
#pragma once

#include "imaging/image_property_rows.h"
#include "imaging/property_item_model.h"

// What the model needs of the image dialog's own controls.
class IImagePropertyControls {
public:
    // LVM_SETITEMCOUNT of the owner-data list.
    virtual void SetRowCount(int count) = 0;
    // Makes the picture from a file or from the host's bitmap (which stays the model's), turns it
    // by the RotateFlipType and shows it, the picture for an unreadable image when it cannot be
    // shown. False when there was nothing to make a picture from; otherwise the picture's size as
    // seen, after the turn (0 x 0 for a picture that cannot be decoded).
    virtual bool LoadPreviewFromFile(LPCWSTR path, int rotateFlip, LONG* width, LONG* height) = 0;
    virtual bool LoadPreviewFromBitmap(HBITMAP bitmap, int rotateFlip, LONG* width, LONG* height) = 0;

protected:
    ~IImagePropertyControls() = default;
};

class CImagePropertyModel final : public CPropertyItemModel {
public:
    // The site, folder and item stay the caller's; the dialog, controls and texts outlive the model.
    CImagePropertyModel(IKxContentSite* site, IKxContentFolder* folder, KxPcPidl item, IPropertyDialogControls& dialog,
                        IImagePropertyControls& controls, IKxPropertyTextSource& texts);
    ~CImagePropertyModel();

    // Empties the fields, then reads the item's 21 values and its preview source: a path, or a
    // bitmap of 150 x 150 when the host gives kind 2. Returns the result of GetProperties, or
    // 0x80004003 (also kept in m_hrResult when an item object is missing).
    HRESULT ReadImageProperties(KxPcPidl item);
    // Shows the preview, rebuilds the rows, sets the list's count and the buttons.
    void ShowImageProperties();
    // One step in the view; a failed read empties the list and keeps the preview.
    void MoveToItem(bool previous) override;
    // LVN_GETDISPINFO: the text of a row and column, null to leave the request untouched.
    LPCWSTR RowText(int row, int column) const { return KxPropertyRowText(m_rows, row, column); }
    // WM_DESTROY (and the destructor): frees the item on show, the preview source and the rows,
    // releases the view.
    void Release() override;

    LPWSTR m_previewPath = nullptr;   // CoTaskMemAlloc, owned
    HBITMAP m_hPreviewSource = nullptr;  // owned
    LONG m_orientation = -1;
    KxImagePropertyTexts m_texts;
    KxPropertyRows m_rows;

private:
    void FreePreviewSource();
    IImagePropertyControls& m_controls;
    IKxPropertyTextSource& m_textSource;
};
