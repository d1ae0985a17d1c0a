// ShowAddToPlaylistDialog of IKxCommonResource: the add-to dialog in mode 1.
#include "library/win32/dlg_add_to_playlist.h"
#include "library/win32/operations.h"

HRESULT RunAddToPlaylistDialog(KxComResPlginPluginObj&, HWND hwndParent, IKxContentFolder* pFolder,
                               LPCWSTR pszSuggestedName, KxPidl* ppItem, LPWSTR* ppszNewName) {
    return RunAddToDialog(CAddToPlaylistModel::ModePlaylist, hwndParent, pFolder, pszSuggestedName, ppItem,
                          ppszNewName);
}
