// Loads the plug-in the way a host does: by path, then its class object, then the object.
#pragma once

#include <windows.h>

#include <string>

#include "kx/IKxCommonResource.h"

namespace kxtest {

// Folder of the running test executable, with a trailing backslash; the build puts the DLLs there.
std::wstring ExeDir();

class PluginLibrary {
public:
    explicit PluginLibrary(const std::wstring& path = ExeDir() + L"KxComResPlgin.dll");
    ~PluginLibrary();
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;

    HMODULE module() const { return module_; }
    HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** out) const;
    HRESULT CanUnloadNow() const;
    HRESULT RegisterServer() const;
    HRESULT UnregisterServer() const;
    // DllGetClassObject, IClassFactory::CreateInstance, factory released.
    HRESULT Create(IKxCommonResource** out, IUnknown* outer = nullptr, REFIID iid = IID_IKxCommonResource) const;

private:
    template <typename Fn>
    Fn Export(const char* name) const;
    HMODULE module_ = nullptr;
};

}  // namespace kxtest
