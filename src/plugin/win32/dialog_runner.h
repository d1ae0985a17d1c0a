// The dialogs of IKxCommonResource on Win32. Each operation sits in a file of its own
// (run_*.cpp), holds the switch to the module's framework state for its whole length, builds its
// dialog on its stack and turns the outcome into a status. An operation whose dialog does not
// exist yet answers 0x80004001.
#pragma once

#include "frame/plugin_object.h"
#include "frame/plugin_platform.h"

class CKxDialogRunner final : public IKxDialogRunner {
public:
    HRESULT ShowNameDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, INT nameKind, INT mode,
                           LPCWSTR pszInitialName, LPWSTR* ppszName) override;
    HRESULT ShowEditTagDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentSite* pSite,
                              IKxContentFolder* pFolder, UINT itemCount, const KxPcPidl* pItems) override;
    HRESULT ShowAddToPlaylistDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentFolder* pFolder,
                                    LPCWSTR pszSuggestedName, KxPidl* ppItem, LPWSTR* ppszNewName) override;
    HRESULT ShowAddToSlideshowDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentFolder* pFolder,
                                     LPCWSTR pszSuggestedName, KxPidl* ppItem, LPWSTR* ppszNewName) override;
    HRESULT ShowMessageBox(KxComResPlginPluginObj& plugin, HWND hwndParent, LPCWSTR pszText, LPCWSTR pszCaption,
                           UINT flags) override;
    HRESULT CreateBalloonTip(KxComResPlginPluginObj& plugin, REFIID riid, HWND hwndTarget, LPCWSTR pszText,
                             LPCWSTR pszTitle, UINT flags, void** ppTip) override;
    HRESULT ShowImagePropertyDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentSite* pSite,
                                    IKxContentFolder* pFolder, KxPcPidl item) override;
    HRESULT ShowVideoPropertyDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentSite* pSite,
                                    IKxContentFolder* pFolder, KxPcPidl item) override;
    HRESULT ShowAddMusicsDialog(KxComResPlginPluginObj& plugin, DWORD reserved, IKxContentSite* pSite,
                                IKxContentFolder* pRootFolder, LPCWSTR pszRootName, IKxTrackList* pTrackList,
                                INT* pCount, KxPidl** ppItems) override;
};

// The process-wide runner that the library's load installs.
IKxDialogRunner& KxWin32DialogRunner();
