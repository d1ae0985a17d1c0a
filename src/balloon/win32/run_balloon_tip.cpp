#include "plugin/win32/dialog_runner.h"

#include "ui/module_state.h"

HRESULT CKxDialogRunner::CreateBalloonTip(KxComResPlginPluginObj&, REFIID, HWND, LPCWSTR, LPCWSTR, UINT, void**) {
    CKxManageState state;
    // The balloon tips are not built yet.
    return E_NOTIMPL;
}
