// ShowEditTagDialog of IKxCommonResource.
#include "tags/win32/operations.h"

#include "tags/win32/dlg_mul_edit_tag.h"
#include "tags/win32/dlg_sing_edit_tag.h"
#include "ui/module_state.h"

namespace {

// Runs the dialog; a cancelled dialog answers the cancelled code whatever the dialog stored. Each
// kind of dialog lives in a frame of its own (GCC otherwise mixes up the two objects' bounds when
// both are inlined into one function).
template <class Dialog>
__attribute__((noinline)) HRESULT RunTagDialog(IKxContentSite* pSite, IKxContentFolder* pFolder, UINT itemCount,
                                               const KxPcPidl* pItems, HWND hwndParent) {
    Dialog dlg(pSite, pFolder, itemCount, pItems, CWnd::FromHandle(hwndParent));
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
    if (itemCount == 1) return RunTagDialog<CDlgSingEditTag>(pSite, pFolder, itemCount, pItems, hwndParent);
    return RunTagDialog<CDlgMulEditTag>(pSite, pFolder, itemCount, pItems, hwndParent);
}
