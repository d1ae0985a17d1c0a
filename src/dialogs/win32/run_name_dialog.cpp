// ShowNameDialog of IKxCommonResource: runs the name dialog and hands the name over in a CoTaskMem
// block.
#include "dialogs/win32/operations.h"

#include "base/owners.h"
#include "dialogs/win32/dlg_new_edit_name.h"
#include "ui/module_state.h"

HRESULT RunNameDialog(KxComResPlginPluginObj&, HWND hwndParent, INT nameKind, INT mode, LPCWSTR pszInitialName, LPWSTR* ppszName) {
    // The name has nowhere to go: refused like any other required argument that is missing,
    // before a dialog is shown.
    if (!ppszName) return E_INVALIDARG;
    CKxManageState state;
    CDlgNewEditName dlg(nameKind, mode, pszInitialName, CWnd::FromHandle(hwndParent));
    const INT_PTR result = dlg.DoModal();
    if (result == IDCANCEL) return HRESULT_FROM_WIN32(ERROR_CANCELLED);  // *ppszName untouched
    if (result != IDOK) return E_FAIL;
    *ppszName = nullptr;
    const std::wstring& name = dlg.m_model.m_strName;
    LPWSTR copy = KxTaskMemCopy(name.c_str(), name.size());
    if (!copy) return E_OUTOFMEMORY;
    *ppszName = copy;
    return S_OK;
}
