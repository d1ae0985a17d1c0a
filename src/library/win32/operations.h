// The library dialogs' operations of IKxCommonResource, entered by the plug-in's dialog runner
// after the operation's preconditions held. One file each (run_*.cpp); each holds the switch to the
// module's framework state for its whole length.
#pragma once

#include "frame/plugin_object.h"

HRESULT RunAddToPlaylistDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentFolder* pFolder,
                               LPCWSTR pszSuggestedName, KxPidl* ppItem, LPWSTR* ppszNewName);
HRESULT RunAddToSlideshowDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentFolder* pFolder,
                                LPCWSTR pszSuggestedName, KxPidl* ppItem, LPWSTR* ppszNewName);
HRESULT RunAddMusicsDialog(KxComResPlginPluginObj& plugin, DWORD reserved, IKxContentSite* pSite,
                           IKxContentFolder* pRootFolder, LPCWSTR pszRootName, IKxTrackList* pTrackList,
                           INT* pCount, KxPidl** ppItems);
