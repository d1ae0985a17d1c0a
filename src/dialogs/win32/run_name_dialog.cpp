// ShowNameDialog of IKxCommonResource.
#include "dialogs/win32/operations.h"

#include "ui/module_state.h"

HRESULT RunNameDialog(KxComResPlginPluginObj&, HWND, INT, INT, LPCWSTR, LPWSTR*) {
    CKxManageState state;
    // The name dialog is not built yet.
    return E_NOTIMPL;
}
