#include "frame/win32/dialog_runner.h"

#include "ui/module_state.h"

HRESULT CKxDialogRunner::ShowAddToSlideshowDialog(KxComResPlginPluginObj&, HWND, IKxContentFolder*, LPCWSTR, KxPidl*,
                                                  LPWSTR*) {
    CKxManageState state;
    // The add-to-playlist dialog, for slideshows, is not built yet.
    return E_NOTIMPL;
}
