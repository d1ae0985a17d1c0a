// The tag dialogs' operation of IKxCommonResource, entered by the plug-in's dialog runner after the
// operation's preconditions held (run_edit_tag_dialog.cpp).
#pragma once

#include "frame/plugin_object.h"

HRESULT RunEditTagDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentSite* pSite,
                         IKxContentFolder* pFolder, UINT itemCount, const KxPcPidl* pItems);
