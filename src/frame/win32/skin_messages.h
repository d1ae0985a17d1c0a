// The skinning library's registered window messages. The plug-in registers all nine when it is
// loaded; until then every value is 0.
#pragma once

#include <windows.h>

// Request to a skinned static control: wParam 1, lParam 0 after its font was set and before its
// text is set; wParam 2, lParam an 8-bit picture name: show that picture of the skin package.
extern UINT WM_HKSTATIC_FUNCTION;
extern UINT WM_HKBUTTON_FUNCTION;
extern UINT WM_HKSLIDER_FUNCTION;
extern UINT WM_HKLISTCTRL_FUNCTION;
extern UINT WM_HKHEADERCTRL_FUNCTION;
extern UINT WM_HKPROGRESSCTRL_FUNCTION;
extern UINT WM_HKCOMBOBOX_FUNCTION;
extern UINT WM_HKEXTRATOOLBAR_FUNCTION;
extern UINT WM_HKWND_FUNC;

// Registers the nine messages under their own names (RegisterWindowMessageW).
void KxRegisterSkinMessages();
