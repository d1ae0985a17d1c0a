// The four entry points of the in-process server.
#include <windows.h>

#include "base/boundary.h"
#include "frame/class_table.h"
#include "frame/module_instance.h"
#include "frame/win32/registration_client.h"

STDAPI DllGetClassObject(REFCLSID clsid, REFIID riid, LPVOID* ppv) {
    return KxGuardStatus(L"KxComResPlgin::DllGetClassObject",
                         [&] { return VnGetClassObject(g_VnClassTable, g_cVnClassTableRows, clsid, riid, ppv); });
}

STDAPI DllCanUnloadNow() { return VnCanUnloadNow(); }

STDAPI DllRegisterServer() {
    return KxGuardStatus(L"KxComResPlgin::DllRegisterServer", [] { return KxRegisterWithVnIntrfu(g_hModuleInstance); });
}

STDAPI DllUnregisterServer() {
    return KxGuardStatus(L"KxComResPlgin::DllUnregisterServer", [] { return KxUnregisterWithVnIntrfu(); });
}
