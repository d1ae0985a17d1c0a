// The four entry points of the in-process server.
#include "kx/IKxCommonResource.h"

STDAPI DllGetClassObject(REFCLSID, REFIID, LPVOID* ppv) {
    if (ppv) *ppv = nullptr;
    return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() { return S_OK; }

STDAPI DllRegisterServer() { return E_FAIL; }

STDAPI DllUnregisterServer() { return E_FAIL; }
