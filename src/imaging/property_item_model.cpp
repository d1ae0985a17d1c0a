// Opening an item's objects for both properties dialogs' models.
#include "imaging/property_item_model.h"

HRESULT CPropertyItemModel::OpenItemObjects(KxPcPidl item, CKxComPtr<IKxItemProperties>& properties,
                                            CKxComPtr<IKxItemPreview>& preview) {
    if (!item || !m_pFolder) return E_POINTER;
    const HWND owner = m_dialog.OwnerWindow();
    if (FAILED(m_pFolder->GetItemObject(m_pSite, owner, 1, &item, IID_IKxItemProperties, properties.PutVoid())) ||
        !properties)
        return m_hrResult = E_POINTER;
    if (FAILED(m_pFolder->GetItemObject(m_pSite, owner, 1, &item, IID_IKxItemPreview, preview.PutVoid())) || !preview)
        return m_hrResult = E_POINTER;
    return S_OK;
}
