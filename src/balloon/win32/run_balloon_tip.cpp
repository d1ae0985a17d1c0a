// CreateBalloonTip of IKxCommonResource.
#include "balloon/win32/operations.h"

#include "ui/module_state.h"

HRESULT RunBalloonTip(KxComResPlginPluginObj&, REFIID, HWND, LPCWSTR, LPCWSTR, UINT, void**) {
    CKxManageState state;
    // The balloon tips are not built yet.
    return E_NOTIMPL;
}
