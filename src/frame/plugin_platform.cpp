#include "frame/plugin_platform.h"

namespace {
IKxPluginPlatform* g_pPlatform;
IKxDialogRunner* g_pDialogRunner;
}  // namespace

IKxPluginPlatform* KxGetPluginPlatform() { return g_pPlatform; }
void KxSetPluginPlatform(IKxPluginPlatform* platform) { g_pPlatform = platform; }
IKxDialogRunner* KxGetDialogRunner() { return g_pDialogRunner; }
void KxSetDialogRunner(IKxDialogRunner* runner) { g_pDialogRunner = runner; }

void KxFreeLibraryThroughPlatform(HMODULE module) {
    if (g_pPlatform) g_pPlatform->FreeLibrary(module);
}
