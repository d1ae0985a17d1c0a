// Loads the plug-in the way a host does: by path, then its class object, then the object.
#pragma once

#include <windows.h>

#include <string>

#include "kx/IKxCommonResource.h"

namespace kxtest {

// Folder of the running test executable, with a trailing backslash; the build puts the DLLs there.
std::wstring ExeDir();

// regsvr32 /s with `args`, run in `folder` (where the DLLs find VnIntrfu.dll); its exit code,
// 0xFFFFFFFF when it could not start.
DWORD RunRegsvr32(const std::wstring& args, const std::wstring& folder = ExeDir());

class PluginLibrary {
public:
    explicit PluginLibrary(const std::wstring& path = ExeDir() + L"KxComResPlgin.dll");
    ~PluginLibrary();
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;

    HMODULE module() const { return module_; }
    HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** out) const;
    HRESULT CanUnloadNow() const { return CallExport("DllCanUnloadNow"); }
    HRESULT RegisterServer() const { return CallExport("DllRegisterServer"); }
    HRESULT UnregisterServer() const { return CallExport("DllUnregisterServer"); }
    // DllGetClassObject, IClassFactory::CreateInstance, factory released.
    HRESULT Create(IKxCommonResource** out, IUnknown* outer = nullptr, REFIID iid = IID_IKxCommonResource) const;

private:
    // Calls an export that takes no argument; E_UNEXPECTED when the library or the export is missing.
    HRESULT CallExport(const char* name) const;
    HMODULE module_ = nullptr;
};

}  // namespace kxtest
