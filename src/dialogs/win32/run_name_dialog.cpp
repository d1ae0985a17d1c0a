#include "plugin/win32/dialog_runner.h"

#include "ui/module_state.h"

HRESULT CKxDialogRunner::ShowNameDialog(KxComResPlginPluginObj&, HWND, INT, INT, LPCWSTR, LPWSTR*) {
    CKxManageState state;
    // The name dialog is not built yet.
    return E_NOTIMPL;
}
