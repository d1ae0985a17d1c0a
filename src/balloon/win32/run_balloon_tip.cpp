// CreateBalloonTip of IKxCommonResource.
#include "balloon/win32/operations.h"

#include "balloon/win32/balloon_platform.h"
#include "ui/module_state.h"

// The tip tests its own preconditions, in its own order: the out pointer, the skin package beside
// the plug-in, the target, the interface.
HRESULT RunBalloonTip(KxComResPlginPluginObj& plugin, REFIID riid, HWND hwndTarget, LPCWSTR pszText,
                      LPCWSTR pszTitle, UINT flags, void** ppTip) {
    CKxManageState state;
    return KxCreateBalloonTip(KxWin32BalloonPlatform(), riid, hwndTarget, pszText, pszTitle, flags, plugin.SkinFile(),
                              plugin.DefaultCaption(), ppTip);
}
