#include "frame/win32/dialog_runner.h"

#include "ui/module_state.h"

HRESULT CKxDialogRunner::ShowAddToPlaylistDialog(KxComResPlginPluginObj&, HWND, IKxContentFolder*, LPCWSTR, KxPidl*,
                                                 LPWSTR*) {
    CKxManageState state;
    // The add-to-playlist dialog is not built yet.
    return E_NOTIMPL;
}
