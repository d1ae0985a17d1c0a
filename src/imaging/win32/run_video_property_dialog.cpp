#include "plugin/win32/dialog_runner.h"

#include "ui/module_state.h"

HRESULT CKxDialogRunner::ShowVideoPropertyDialog(KxComResPlginPluginObj&, HWND, IKxContentSite*, IKxContentFolder*,
                                                 KxPcPidl) {
    CKxManageState state;
    // The video properties dialog is not built yet.
    return E_NOTIMPL;
}
