#include "frame/win32/win32_platform.h"

#include <ole2.h>
#include <shlwapi.h>

#include "ui/module_state.h"

namespace {

class CKxWin32PluginPlatform final : public IKxPluginPlatform {
public:
    int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int cchBuffer) override {
        return ::LoadStringW(module, id, buffer, cchBuffer);
    }
    HRESULT OleInitialize() override { return ::OleInitialize(nullptr); }
    void OleUninitialize() override { ::OleUninitialize(); }
    DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD cchPath) override {
        return ::GetModuleFileNameW(module, path, cchPath);
    }
    BOOL PathRemoveFileSpecW(LPWSTR path) override { return ::PathRemoveFileSpecW(path); }
    BOOL PathAppendW(LPWSTR path, LPCWSTR more) override { return ::PathAppendW(path, more); }
    HMODULE LoadLibraryW(LPCWSTR path) override { return ::LoadLibraryW(path); }
    // The system call behind CKxPlatformModule, the owner of the resource library.
    BOOL FreeLibrary(HMODULE module) override { return ::FreeLibrary(module); }
    bool IsBadWritePtr(void* p, size_t bytes) override { return ::IsBadWritePtr(p, bytes) != FALSE; }
    bool IsBadReadPtr(const void* p, size_t bytes) override { return ::IsBadReadPtr(p, bytes) != FALSE; }
    bool IsWindow(HWND window) override { return ::IsWindow(window) != FALSE; }
    void SetModuleResourceHandle(HMODULE resources) override {
        CKxManageState state;
        KxSetModuleResourceHandle(resources);
    }
};

}  // namespace

IKxPluginPlatform& KxWin32PluginPlatform() {
    static CKxWin32PluginPlatform platform;
    return platform;
}
