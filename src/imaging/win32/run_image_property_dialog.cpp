#include "plugin/win32/dialog_runner.h"

#include "ui/module_state.h"

HRESULT CKxDialogRunner::ShowImagePropertyDialog(KxComResPlginPluginObj&, HWND, IKxContentSite*, IKxContentFolder*,
                                                 KxPcPidl) {
    CKxManageState state;
    // The image properties dialog is not built yet.
    return E_NOTIMPL;
}
