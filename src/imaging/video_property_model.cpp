// Reading and walking of the video properties dialog.
#include "imaging/video_property_model.h"

#include "base/owners.h"

namespace {
const SIZE kPreviewRequest = {150, 150};
// The rows in the order in which a read fills them; row 2 stays empty.
const int kFilledRows[] = {3, 4, 0, 1, 5};
}  // namespace

CVideoPropertyModel::CVideoPropertyModel(IKxContentSite* site, IKxContentFolder* folder, KxPcPidl item,
                                         IPropertyDialogControls& dialog, IVideoPropertyControls& controls,
                                         IKxPropertyTextSource& texts)
    : CPropertyItemModel(site, folder, item, dialog), m_controls(controls), m_textSource(texts) {}

HRESULT CVideoPropertyModel::ReadVideoProperties(KxPcPidl item) {
    CKxComPtr<IKxItemProperties> properties;
    CKxComPtr<IKxItemPreview> preview;
    const HRESULT opened = OpenItemObjects(item, properties, preview);
    if (FAILED(opened)) return opened;

    const HRESULT hr = KxReadVideoPropertyTexts(properties.Get(), item, m_textSource, m_texts);
    if (hr == S_OK || hr == S_FALSE) {
        for (int row : kFilledRows) m_controls.SetRowValue(row, m_texts.row[row].c_str());
    }

    HBITMAP bitmap = nullptr;
    if (preview->GetPreviewBitmap(&kPreviewRequest, &bitmap) != S_OK && bitmap) {
        m_dialog.DeleteBitmap(bitmap);
        bitmap = nullptr;
    }
    if (bitmap) {
        m_controls.ShowVideoPreview(bitmap);
        m_dialog.DeleteBitmap(bitmap);
    } else {
        m_controls.ShowVideoFallback();
    }
    m_walk.SetButtons(m_dialog);
    return hr;
}

void CVideoPropertyModel::MoveToItem(bool previous) {
    if (m_walk.Step(previous, false, m_dialog)) ReadVideoProperties(m_walk.m_currentItem);
}
