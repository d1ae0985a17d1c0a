// Reading and walking of the video properties dialog.
#include "imaging/video_property_model.h"

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
    void* object = nullptr;
    if (FAILED(m_pFolder->GetItemObject(m_pSite, owner, 1, &item, IID_IKxItemProperties, &object)) || !object)
        return m_hrResult = E_POINTER;
    IKxItemProperties* properties = static_cast<IKxItemProperties*>(object);
    object = nullptr;
    if (FAILED(m_pFolder->GetItemObject(m_pSite, owner, 1, &item, IID_IKxItemPreview, &object)) || !object) {
        properties->Release();
        return m_hrResult = E_POINTER;
    }
    IKxItemPreview* preview = static_cast<IKxItemPreview*>(object);

    const HRESULT hr = KxReadVideoPropertyTexts(properties, item, m_textSource, m_texts);
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
    preview->Release();
    properties->Release();
    return hr;
}

void CVideoPropertyModel::MoveToItem(bool previous) {
    if (m_walk.Step(previous, false, m_controls)) ReadVideoProperties(m_walk.m_currentItem);
}
