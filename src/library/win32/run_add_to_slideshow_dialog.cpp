#include "plugin/win32/dialog_runner.h"
#include "library/win32/dlg_add_to_playlist.h"

HRESULT CKxDialogRunner::ShowAddToSlideshowDialog(KxComResPlginPluginObj&, HWND hwndParent,
                                                  IKxContentFolder* pFolder, LPCWSTR pszSuggestedName,
                                                  KxPidl* ppItem, LPWSTR* ppszNewName) {
    return RunAddToPlaylistDialog(CAddToPlaylistModel::ModeSlideshow, hwndParent, pFolder, pszSuggestedName,
                                  ppItem, ppszNewName);
}
