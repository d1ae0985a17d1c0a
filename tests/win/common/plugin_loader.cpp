#include "tests/win/common/plugin_loader.h"

namespace kxtest {

std::wstring ExeDir() {
    wchar_t path[MAX_PATH] = {};
    DWORD n = GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring s(path, n);
    return s.substr(0, s.find_last_of(L"\\/") + 1);
}

PluginLibrary::PluginLibrary(const std::wstring& path) : module_(LoadLibraryW(path.c_str())) {}

PluginLibrary::~PluginLibrary() {
    if (module_) FreeLibrary(module_);
}

template <typename Fn>
Fn PluginLibrary::Export(const char* name) const {
    if (!module_) return nullptr;
    return reinterpret_cast<Fn>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
}

HRESULT PluginLibrary::GetClassObject(REFCLSID clsid, REFIID iid, void** out) const {
    auto fn = Export<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
    return fn ? fn(clsid, iid, out) : E_UNEXPECTED;
}

HRESULT PluginLibrary::CanUnloadNow() const {
    auto fn = Export<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow");
    return fn ? fn() : E_UNEXPECTED;
}

HRESULT PluginLibrary::RegisterServer() const {
    auto fn = Export<HRESULT(STDAPICALLTYPE*)()>("DllRegisterServer");
    return fn ? fn() : E_UNEXPECTED;
}

HRESULT PluginLibrary::UnregisterServer() const {
    auto fn = Export<HRESULT(STDAPICALLTYPE*)()>("DllUnregisterServer");
    return fn ? fn() : E_UNEXPECTED;
}

HRESULT PluginLibrary::Create(IKxCommonResource** out, IUnknown* outer, REFIID iid) const {
    IClassFactory* factory = nullptr;
    HRESULT hr = GetClassObject(CLSID_KxComResPlginPluginObj, IID_IClassFactory, reinterpret_cast<void**>(&factory));
    if (FAILED(hr)) return hr;
    hr = factory->CreateInstance(outer, iid, reinterpret_cast<void**>(out));
    factory->Release();
    return hr;
}

}  // namespace kxtest
