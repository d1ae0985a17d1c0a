// ShowMessageBox of IKxCommonResource.
#include "dialogs/win32/dlg_massage_box.h"
#include "dialogs/win32/operations.h"
#include "ui/module_state.h"

// Behind the interface's precondition (the resource library is loaded). The switch to the
// module's state lasts until the dialog object is gone, its skin hook detached.
HRESULT RunMessageBox(KxComResPlginPluginObj& plugin, HWND hwndParent, LPCWSTR pszText, LPCWSTR pszCaption,
                      UINT flags) {
    CKxManageState state;
    if (!pszCaption) pszCaption = plugin.DefaultCaption();
    CDlgMassageBox dlg(pszText, pszCaption, flags, CWnd::FromHandle(hwndParent));
    dlg.DoModal();  // the modal result says nothing more than m_hrResult
    return dlg.m_hrResult;
}
