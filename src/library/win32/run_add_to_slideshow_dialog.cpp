// ShowAddToSlideshowDialog of IKxCommonResource: the add-to dialog in mode 0.
#include "library/win32/dlg_add_to_playlist.h"
#include "library/win32/operations.h"

HRESULT RunAddToSlideshowDialog(KxComResPlginPluginObj&, HWND hwndParent, IKxContentFolder* pFolder,
                                LPCWSTR pszSuggestedName, KxPidl* ppItem, LPWSTR* ppszNewName) {
    return RunAddToDialog(CAddToPlaylistModel::ModeSlideshow, hwndParent, pFolder, pszSuggestedName, ppItem,
                          ppszNewName);
}
