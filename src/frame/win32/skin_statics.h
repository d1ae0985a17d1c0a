// Requests to skinned static controls (WM_HKSTATIC_FUNCTION), and the path of the skin package
// that a window passes when it attaches. A control that the skinning library does not know
// ignores the requests.
#pragma once

#include <windows.h>

// Form 1: sent to a text static after its font has been set and before its text is set.
void NotifyStaticText(HWND hWnd);
// Form 2: show the package's picture `pszPicture` in the static.
void SetStaticPicture(HWND hWnd, const char* pszPicture);

// "ComRcRes.bff" beside the module: GetModuleFileNameW of the module's instance (260 characters
// at most), PathRemoveFileSpecW, PathAppendW. `path` must hold MAX_PATH characters and be zeroed.
void KxGetSkinPackagePath(WCHAR* path);
