// ShowAddMusicsDialog of IKxCommonResource.
#include "library/win32/operations.h"

#include "ui/module_state.h"

HRESULT RunAddMusicsDialog(KxComResPlginPluginObj&, DWORD, IKxContentSite*, IKxContentFolder*, LPCWSTR,
                           IKxTrackList*, INT*, KxPidl**) {
    CKxManageState state;
    // The add-music dialog is not built yet.
    return E_NOTIMPL;
}
