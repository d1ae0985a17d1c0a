#include "frame/win32/dialog_runner.h"

#include "ui/module_state.h"

HRESULT CKxDialogRunner::ShowMessageBox(KxComResPlginPluginObj&, HWND, LPCWSTR, LPCWSTR, UINT) {
    CKxManageState state;
    // The message box is not built yet.
    return E_NOTIMPL;
}
