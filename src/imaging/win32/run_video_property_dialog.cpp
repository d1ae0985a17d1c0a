// ShowVideoPropertyDialog of IKxCommonResource.
#include "imaging/win32/operations.h"

#include "ui/module_state.h"

HRESULT RunVideoPropertyDialog(KxComResPlginPluginObj&, HWND, IKxContentSite*, IKxContentFolder*, KxPcPidl) {
    CKxManageState state;
    // The video properties dialog is not built yet.
    return E_NOTIMPL;
}
