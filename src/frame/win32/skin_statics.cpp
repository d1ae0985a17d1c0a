#include "frame/win32/skin_statics.h"

#include <shlwapi.h>

#include "frame/skin_files.h"
#include "frame/win32/skin_messages.h"
#include "ui/module_state.h"

void NotifyStaticText(HWND hWnd) { SendMessageW(hWnd, WM_HKSTATIC_FUNCTION, 1, 0); }

void SetStaticPicture(HWND hWnd, const char* pszPicture) {
    SendMessageW(hWnd, WM_HKSTATIC_FUNCTION, 2, reinterpret_cast<LPARAM>(pszPicture));
}

void KxGetSkinPackagePath(WCHAR* path) {
    GetModuleFileNameW(KxGetStaticModuleState()->hInstance, path, MAX_PATH);
    PathRemoveFileSpecW(path);
    PathAppendW(path, KX_SKIN_PACKAGE_NAME);
}
