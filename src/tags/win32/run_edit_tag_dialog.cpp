// ShowEditTagDialog of IKxCommonResource.
#include "tags/win32/operations.h"

#include "tags/win32/dlg_mul_edit_tag.h"
#include "tags/win32/dlg_sing_edit_tag.h"
#include "ui/module_state.h"

namespace {

// Runs the dialog; a cancelled dialog answers the cancelled code whatever the dialog stored.
template <class Dialog>
HRESULT RunTagDialog(Dialog& dlg) {
    const INT_PTR result = dlg.DoModal();
    if (result == IDCANCEL) return HRESULT_FROM_WIN32(ERROR_CANCELLED);
    if (result != IDOK) return E_FAIL;
    return dlg.m_model.m_hrResult;
}

}  // namespace

HRESULT RunEditTagDialog(KxComResPlginPluginObj&, HWND hwndParent, IKxContentSite* pSite, IKxContentFolder* pFolder,
                         UINT itemCount, const KxPcPidl* pItems) {
    CKxManageState state;
    // One item steps through the host's view; several get the ticked fields all at once.
    if (itemCount == 1) {
        CDlgSingEditTag dlg(pSite, pFolder, itemCount, pItems, CWnd::FromHandle(hwndParent));
        return RunTagDialog(dlg);
    }
    CDlgMulEditTag dlg(pSite, pFolder, itemCount, pItems, CWnd::FromHandle(hwndParent));
    return RunTagDialog(dlg);
}
