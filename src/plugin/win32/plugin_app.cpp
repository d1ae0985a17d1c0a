#include "plugin/win32/plugin_app.h"

#include "frame/module_instance.h"
#include "frame/plugin_platform.h"
#include "plugin/win32/dialog_runner.h"
#include "frame/win32/win32_platform.h"
#include "frame/win32/skin_messages.h"
#include "ui/module_state.h"

namespace {
CKxComResPlginApp theApp;
}  // namespace

BOOL CKxComResPlginApp::InitInstance(HINSTANCE instance) {
    g_hModuleInstance = instance;
    KxSetModuleInstance(instance);
    KxSetPluginPlatform(&KxWin32PluginPlatform());
    KxSetDialogRunner(&KxWin32DialogRunner());
    return TRUE;
}

int CKxComResPlginApp::ExitInstance() { return 0; }

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        DisableThreadLibraryCalls(instance);
        KxRegisterSkinMessages();
        return theApp.InitInstance(instance);
    case DLL_PROCESS_DETACH:
        theApp.ExitInstance();
        break;
    default:
        break;
    }
    return TRUE;
}
