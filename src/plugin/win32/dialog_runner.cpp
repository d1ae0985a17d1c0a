#include "plugin/win32/dialog_runner.h"

#include "balloon/win32/operations.h"
#include "dialogs/win32/operations.h"
#include "imaging/win32/operations.h"
#include "library/win32/operations.h"
#include "tags/win32/operations.h"

namespace {

class CKxDialogRunner final : public IKxDialogRunner {
public:
    HRESULT ShowNameDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, INT nameKind, INT mode,
                           LPCWSTR pszInitialName, LPWSTR* ppszName) override {
        return RunNameDialog(plugin, hwndParent, nameKind, mode, pszInitialName, ppszName);
    }
    HRESULT ShowEditTagDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentSite* pSite,
                              IKxContentFolder* pFolder, UINT itemCount, const KxPcPidl* pItems) override {
        return RunEditTagDialog(plugin, hwndParent, pSite, pFolder, itemCount, pItems);
    }
    HRESULT ShowAddToPlaylistDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentFolder* pFolder,
                                    LPCWSTR pszSuggestedName, KxPidl* ppItem, LPWSTR* ppszNewName) override {
        return RunAddToPlaylistDialog(plugin, hwndParent, pFolder, pszSuggestedName, ppItem, ppszNewName);
    }
    HRESULT ShowAddToSlideshowDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentFolder* pFolder,
                                     LPCWSTR pszSuggestedName, KxPidl* ppItem, LPWSTR* ppszNewName) override {
        return RunAddToSlideshowDialog(plugin, hwndParent, pFolder, pszSuggestedName, ppItem, ppszNewName);
    }
    HRESULT ShowMessageBox(KxComResPlginPluginObj& plugin, HWND hwndParent, LPCWSTR pszText, LPCWSTR pszCaption,
                           UINT flags) override {
        return RunMessageBox(plugin, hwndParent, pszText, pszCaption, flags);
    }
    HRESULT CreateBalloonTip(KxComResPlginPluginObj& plugin, REFIID riid, HWND hwndTarget, LPCWSTR pszText,
                             LPCWSTR pszTitle, UINT flags, void** ppTip) override {
        return RunBalloonTip(plugin, riid, hwndTarget, pszText, pszTitle, flags, ppTip);
    }
    HRESULT ShowImagePropertyDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentSite* pSite,
                                    IKxContentFolder* pFolder, KxPcPidl item) override {
        return RunImagePropertyDialog(plugin, hwndParent, pSite, pFolder, item);
    }
    HRESULT ShowVideoPropertyDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentSite* pSite,
                                    IKxContentFolder* pFolder, KxPcPidl item) override {
        return RunVideoPropertyDialog(plugin, hwndParent, pSite, pFolder, item);
    }
    HRESULT ShowAddMusicsDialog(KxComResPlginPluginObj& plugin, DWORD reserved, IKxContentSite* pSite,
                                IKxContentFolder* pRootFolder, LPCWSTR pszRootName, IKxTrackList* pTrackList,
                                INT* pCount, KxPidl** ppItems) override {
        return RunAddMusicsDialog(plugin, reserved, pSite, pRootFolder, pszRootName, pTrackList, pCount, ppItems);
    }
};

}  // namespace

IKxDialogRunner& KxWin32DialogRunner() {
    static CKxDialogRunner runner;
    return runner;
}
