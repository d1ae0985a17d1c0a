#include "frame/win32/registration_client.h"

#include <windows.h>

namespace {

// Loaded for one registration call and freed after it.
class CVnIntrfuLibrary {
public:
    CVnIntrfuLibrary() : m_hModule(LoadLibraryW(L"VnIntrfu.dll")) {}
    ~CVnIntrfuLibrary() {
        if (m_hModule) FreeLibrary(m_hModule);
    }
    CVnIntrfuLibrary(const CVnIntrfuLibrary&) = delete;
    CVnIntrfuLibrary& operator=(const CVnIntrfuLibrary&) = delete;

    template <typename Fn>
    Fn Export(const char* name) const {
        if (!m_hModule) return nullptr;
        return reinterpret_cast<Fn>(reinterpret_cast<void*>(GetProcAddress(m_hModule, name)));
    }

private:
    HMODULE m_hModule;
};

}  // namespace

HRESULT KxRegisterWithVnIntrfu(HINSTANCE instance) {
    CVnIntrfuLibrary library;
    return VnRegisterClassTable(g_VnClassTable, g_cVnClassTableRows, instance,
                                library.Export<PFN_VnRegisterServerEx>("VnRegisterServerEx"));
}

HRESULT KxUnregisterWithVnIntrfu() {
    CVnIntrfuLibrary library;
    return VnUnregisterClassTable(g_VnClassTable, g_cVnClassTableRows,
                                  library.Export<PFN_VnUnregisterServer>("VnUnregisterServer"));
}
