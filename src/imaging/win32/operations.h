// The properties dialogs' operations of IKxCommonResource, entered by the plug-in's dialog runner
// after the operation's preconditions held. One file each (run_*.cpp).
#pragma once

#include "frame/plugin_object.h"

HRESULT RunImagePropertyDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentSite* pSite,
                               IKxContentFolder* pFolder, KxPcPidl item);
HRESULT RunVideoPropertyDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentSite* pSite,
                               IKxContentFolder* pFolder, KxPcPidl item);
