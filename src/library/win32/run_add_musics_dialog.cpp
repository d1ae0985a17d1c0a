#include "plugin/win32/dialog_runner.h"

#include "ui/module_state.h"

HRESULT CKxDialogRunner::ShowAddMusicsDialog(KxComResPlginPluginObj&, DWORD, IKxContentSite*, IKxContentFolder*, LPCWSTR,
                                             IKxTrackList*, INT*, KxPidl**) {
    CKxManageState state;
    // The add-music dialog is not built yet.
    return E_NOTIMPL;
}
