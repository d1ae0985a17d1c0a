#include "frame/win32/registration_client.h"

#include <windows.h>

#include "base/owners.h"

namespace {

// Loaded for one registration call and freed after it.
CKxModule LoadVnIntrfu() { return CKxModule(LoadLibraryW(L"VnIntrfu.dll")); }

}  // namespace

HRESULT KxRegisterWithVnIntrfu(HINSTANCE instance) {
    const CKxModule library = LoadVnIntrfu();
    return VnRegisterClassTable(g_VnClassTable, g_cVnClassTableRows, instance,
                                library.Export<PFN_VnRegisterServerEx>("VnRegisterServerEx"));
}

HRESULT KxUnregisterWithVnIntrfu() {
    const CKxModule library = LoadVnIntrfu();
    return VnUnregisterClassTable(g_VnClassTable, g_cVnClassTableRows,
                                  library.Export<PFN_VnUnregisterServer>("VnUnregisterServer"));
}
