// ShowEditTagDialog of IKxCommonResource.
#include "tags/win32/operations.h"

#include "ui/module_state.h"

HRESULT RunEditTagDialog(KxComResPlginPluginObj&, HWND, IKxContentSite*, IKxContentFolder*, UINT, const KxPcPidl*) {
    CKxManageState state;
    // The tag dialogs are not built yet.
    return E_NOTIMPL;
}
