// HookWndU.DLL: the skinning library's one export, CallHookWnd, and its table of hooks. Hooks are
// numbered from 1 up and never reused while the library is loaded, so a closed or unknown handle is
// refused with 0 and touches nothing. All calls come on the thread of the windows they skin; the
// table has no lock.
#include <windows.h>

#include <map>
#include <memory>
#include <new>

#include "skin/win32/hook.h"
#include "skin/win32/hook_protocol.h"
#include "skin/win32/package_file.h"

namespace {

std::map<DWORD_PTR, std::unique_ptr<hookwnd::Hook>>* g_hooks;
DWORD_PTR g_lastHook;

hookwnd::Hook* Find(DWORD_PTR handle) {
    if (!g_hooks) return nullptr;
    auto it = g_hooks->find(handle);
    return it == g_hooks->end() ? nullptr : it->second.get();
}

DWORD_PTR Open() {
    // 0 is no handle: after 2^32 - 1 hooks (i686) the library opens no more
    if (static_cast<DWORD>(g_lastHook + 1) == 0) return 0;
    if (!g_hooks) g_hooks = new (std::nothrow) std::map<DWORD_PTR, std::unique_ptr<hookwnd::Hook>>();
    if (!g_hooks) return 0;
    if (!hookwnd::g_staticMessage) hookwnd::g_staticMessage = RegisterWindowMessageW(L"WM_HKSTATIC_FUNCTION");
    const DWORD_PTR handle = ++g_lastHook;
    (*g_hooks)[handle].reset(new hookwnd::Hook(handle));
    hookwnd::StartPictureDecoder();
    return handle;
}

DWORD_PTR Close(DWORD_PTR handle) {
    if (!Find(handle)) return 0;
    g_hooks->erase(handle);  // the hook releases its window
    hookwnd::StopPictureDecoder();
    return 1;
}

DWORD_PTR Dispatch(DWORD_PTR op, DWORD_PTR handle, DWORD_PTR third, DWORD_PTR fourth, DWORD_PTR fifth) {
    if (op == HK_OPEN) return handle == 0 ? Open() : 0;
    hookwnd::Hook* hook = Find(handle);
    if (!hook) return 0;
    switch (op) {
    case HK_CLOSE:
        return Close(handle);
    case HK_RELEASE:
        return hook->Release();
    case HK_ATTACH_POPUP:
        return hook->AttachPopup(reinterpret_cast<HWND>(fourth), reinterpret_cast<const HkPopupDescriptor*>(fifth));
    case HK_POPUP_PICTURE:
        return third == 1 ? hook->SetPopupPicture(reinterpret_cast<const char*>(fifth)) : 0;
    case HK_ATTACH_DIALOG:
        return hook->AttachDialog(reinterpret_cast<HWND>(third), reinterpret_cast<const char*>(fourth),
                                  reinterpret_cast<LPCWSTR>(fifth));
    default:
        return 0;
    }
}

}  // namespace

extern "C" DWORD_PTR WINAPI CallHookWnd(DWORD_PTR op, DWORD_PTR hook, DWORD_PTR third, DWORD_PTR fourth,
                                        DWORD_PTR fifth) {
    // nothing may leave the library through the caller's window procedure or dialog
    try {
        return Dispatch(op, hook, third, fourth, fifth);
    } catch (...) {
        return 0;
    }
}

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    if (reason == DLL_PROCESS_ATTACH) {
        DisableThreadLibraryCalls(instance);
    } else if (reason == DLL_PROCESS_DETACH && !reserved) {
        // Freed with hooks still open: the windows they skinned must not call into a library that
        // is gone. GDI+ is not shut down here (not allowed in the entry point); a caller that
        // closes its hooks has shut it down already.
        if (g_hooks) {
            for (auto& h : *g_hooks) h.second->Release();
            delete g_hooks;
            g_hooks = nullptr;
        }
    }
    return TRUE;
}
