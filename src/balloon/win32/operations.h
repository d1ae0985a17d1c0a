// The balloon-tip operation of IKxCommonResource, entered by the plug-in's dialog runner after the
// operation's preconditions held (run_balloon_tip.cpp).
#pragma once

#include "frame/plugin_object.h"

HRESULT RunBalloonTip(KxComResPlginPluginObj& plugin, REFIID riid, HWND hwndTarget, LPCWSTR pszText,
                      LPCWSTR pszTitle, UINT flags, void** ppTip);
