// Reading and walking of the video properties dialog.
#include "imaging/video_property_model.h"

#include "base/owners.h"

namespace {
const SIZE kPreviewRequest = {150, 150};
// The rows in the order in which a read fills them; row 2 stays empty.
const int kFilledRows[] = {3, 4, 0, 1, 5};
}  // namespace

CVideoPropertyModel::CVideoPropertyModel(IKxContentSite* site, IKxContentFolder* folder, KxPcPidl item,
                                         IVideoPropertyControls& controls, IKxPropertyTextSource& texts)
    : m_pSite(site), m_pFolder(folder), m_item(item), m_controls(controls), m_textSource(texts) {}

HRESULT CVideoPropertyModel::ReadVideoProperties(KxPcPidl item) {
    if (!item || !m_pFolder || !m_pSite) return E_POINTER;
    const HWND owner = m_controls.OwnerWindow();
    // An object handed out with a failure is released by its owner all the same.
    CKxComPtr<IKxItemProperties> properties;
    if (FAILED(m_pFolder->GetItemObject(m_pSite, owner, 1, &item, IID_IKxItemProperties, properties.PutVoid())) ||
        !properties)
        return m_hrResult = E_POINTER;
    CKxComPtr<IKxItemPreview> preview;
    if (FAILED(m_pFolder->GetItemObject(m_pSite, owner, 1, &item, IID_IKxItemPreview, preview.PutVoid())) || !preview)
        return m_hrResult = E_POINTER;

    const HRESULT hr = KxReadVideoPropertyTexts(properties.Get(), item, m_textSource, m_texts);
    if (hr == S_OK || hr == S_FALSE) {
        for (int row : kFilledRows) m_controls.SetRowValue(row, m_texts.row[row].c_str());
    }

    HBITMAP bitmap = nullptr;
    if (preview->GetPreviewBitmap(&kPreviewRequest, &bitmap) != S_OK && bitmap) {
        m_controls.DeleteBitmap(bitmap);
        bitmap = nullptr;
    }
    if (bitmap) {
        m_controls.ShowVideoPreview(bitmap);
        m_controls.DeleteBitmap(bitmap);
    } else {
        m_controls.ShowVideoFallback();
    }
    m_walk.SetButtons(m_controls);
    return hr;
}

void CVideoPropertyModel::MoveToItem(bool previous) {
    if (m_walk.Step(previous, false, m_controls)) ReadVideoProperties(m_walk.m_currentItem);
}
