// ShowImagePropertyDialog of IKxCommonResource.
#include "imaging/win32/operations.h"

#include "ui/module_state.h"

HRESULT RunImagePropertyDialog(KxComResPlginPluginObj&, HWND, IKxContentSite*, IKxContentFolder*, KxPcPidl) {
    CKxManageState state;
    // The image properties dialog is not built yet.
    return E_NOTIMPL;
}
