// KxNetContent.dll's entry points: the library entry, the class object of the content manager,
// the unload decision, and registration through VnIntrfu.dll.
#include <windows.h>

#include "base/boundary.h"
#include "base/owners.h"
#include "frame/class_table.h"
#include "netcontent/win32/content_mgr.h"

namespace {

HINSTANCE g_instance;

const CVnClassTableRow kClassTable[] = {
    {&CLSID_NetContentMgr, &CNetContentMgr::CreateInstance, L"Kx Net Content Manager", L"CATEGORY_KxNetContent",
     nullptr, nullptr},
};
constexpr std::size_t kClassTableRows = sizeof(kClassTable) / sizeof(kClassTable[0]);

// Loaded by name for one registration call, as the plug-in does.
CKxModule LoadVnIntrfu() { return CKxModule(LoadLibraryW(L"VnIntrfu.dll")); }

}  // namespace

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) {
        g_instance = instance;
        DisableThreadLibraryCalls(instance);
    }
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID riid, LPVOID* ppv) {
    return KxGuardStatus(L"KxNetContent::DllGetClassObject",
                         [&] { return VnGetClassObject(kClassTable, kClassTableRows, clsid, riid, ppv); });
}

STDAPI DllCanUnloadNow() { return VnCanUnloadNow(); }

STDAPI DllRegisterServer() {
    return KxGuardStatus(L"KxNetContent::DllRegisterServer", [] {
        const CKxModule library = LoadVnIntrfu();
        return VnRegisterClassTable(kClassTable, kClassTableRows, g_instance,
                                    library.Export<PFN_VnRegisterServerEx>("VnRegisterServerEx"));
    });
}

STDAPI DllUnregisterServer() {
    return KxGuardStatus(L"KxNetContent::DllUnregisterServer", [] {
        const CKxModule library = LoadVnIntrfu();
        return VnUnregisterClassTable(kClassTable, kClassTableRows,
                                      library.Export<PFN_VnUnregisterServer>("VnUnregisterServer"));
    });
}
