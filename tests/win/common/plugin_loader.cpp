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

HRESULT PluginLibrary::CallExport(const char* name) const {
    FARPROC fn = module_ ? GetProcAddress(module_, name) : nullptr;
    return fn ? reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(reinterpret_cast<void*>(fn))() : E_UNEXPECTED;
}

HRESULT PluginLibrary::GetClassObject(REFCLSID clsid, REFIID iid, void** out) const {
    FARPROC fn = module_ ? GetProcAddress(module_, "DllGetClassObject") : nullptr;
    using GetClassObjectFn = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    return fn ? reinterpret_cast<GetClassObjectFn>(reinterpret_cast<void*>(fn))(clsid, iid, out) : E_UNEXPECTED;
}

HRESULT PluginLibrary::Create(IKxCommonResource** out, IUnknown* outer, REFIID iid) const {
    IClassFactory* factory = nullptr;
    HRESULT hr = GetClassObject(CLSID_KxComResPlginPluginObj, IID_IClassFactory, reinterpret_cast<void**>(&factory));
    if (FAILED(hr)) return hr;
    hr = factory->CreateInstance(outer, iid, reinterpret_cast<void**>(out));
    factory->Release();
    return hr;
}

DWORD RunRegsvr32(const std::wstring& args, const std::wstring& folder) {
    std::wstring line = L"regsvr32.exe /s " + args;
    STARTUPINFOW si = {sizeof(si)};
    PROCESS_INFORMATION pi = {};
    if (!CreateProcessW(nullptr, &line[0], nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(), &si, &pi))
        return 0xFFFFFFFF;
    WaitForSingleObject(pi.hProcess, 60000);
    DWORD code = 0xFFFFFFFE;
    GetExitCodeProcess(pi.hProcess, &code);
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    return code;
}

}  // namespace kxtest
