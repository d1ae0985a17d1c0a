#include "plugin/win32/dialog_runner.h"

#include "ui/module_state.h"

HRESULT CKxDialogRunner::ShowEditTagDialog(KxComResPlginPluginObj&, HWND, IKxContentSite*, IKxContentFolder*, UINT,
                                           const KxPcPidl*) {
    CKxManageState state;
    // The tag dialogs are not built yet.
    return E_NOTIMPL;
}
