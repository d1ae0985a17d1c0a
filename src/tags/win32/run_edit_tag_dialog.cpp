// ShowEditTagDialog of IKxCommonResource.
#include "tags/win32/operations.h"

#include "tags/win32/dlg_sing_edit_tag.h"
#include "ui/module_state.h"

HRESULT RunEditTagDialog(KxComResPlginPluginObj&, HWND hwndParent, IKxContentSite* pSite, IKxContentFolder* pFolder,
                         UINT itemCount, const KxPcPidl* pItems) {
    CKxManageState state;
    // Several items have a dialog of their own, not built yet.
    if (itemCount != 1) return E_NOTIMPL;
    CDlgSingEditTag dlg(pSite, pFolder, itemCount, pItems, CWnd::FromHandle(hwndParent));
    const INT_PTR result = dlg.DoModal();
    if (result == IDCANCEL) return HRESULT_FROM_WIN32(ERROR_CANCELLED);  // whatever the dialog stored
    if (result != IDOK) return E_FAIL;
    return dlg.m_model.m_hrResult;
}
