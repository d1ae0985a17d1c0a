// The operations of IKxCommonResource that run the simple dialogs, entered by the plug-in's dialog
// runner after the operation's preconditions held. Each holds the switch to the module's framework
// state for its whole length and lives in a file of its own (run_*.cpp).
#pragma once

#include "frame/plugin_object.h"

HRESULT RunMessageBox(KxComResPlginPluginObj& plugin, HWND hwndParent, LPCWSTR pszText, LPCWSTR pszCaption,
                      UINT flags);
HRESULT RunNameDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, INT nameKind, INT mode,
                      LPCWSTR pszInitialName, LPWSTR* ppszName);
