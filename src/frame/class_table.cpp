#include "frame/class_table.h"

#include "frame/vn_factory.h"
#include "frame/vn_unknown.h"

LONG volatile g_cServerLocks;

HRESULT VnGetClassObject(const CVnClassTableRow* rows, std::size_t count, REFCLSID clsid, REFIID riid, void** out) {
    if (!IsEqualIID(riid, IID_IUnknown) && !IsEqualIID(riid, IID_IClassFactory)) return E_NOINTERFACE;
    const CVnClassTableRow* match = nullptr;
    for (std::size_t i = 0; i < count; ++i)
        if (!match && IsEqualCLSID(*rows[i].pClsid, clsid)) match = &rows[i];
    if (!match) return CLASS_E_CLASSNOTAVAILABLE;
    if (!out) return E_POINTER;

    CVnFactory* factory = new (std::nothrow) CVnFactory(match);
    *out = static_cast<IClassFactory*>(factory);
    return factory ? S_OK : E_OUTOFMEMORY;
}

HRESULT VnCanUnloadNow() {
    // A lock count driven below zero by unmatched LockServer(FALSE) calls holds nothing.
    if (g_cLiveObjects != 0 || g_cServerLocks > 0) return S_FALSE;
    return S_OK;
}

HRESULT VnIntrfcResultToStatus(tagVnINTRFCRESULT result) {
    switch (static_cast<int>(result)) {
    case 0:
        return S_OK;
    case 6:
    case 12:
        return E_INVALIDARG;
    case 14:
        return E_ACCESSDENIED;
    default:
        return E_FAIL;
    }
}

HRESULT VnRegisterClassTable(const CVnClassTableRow* rows, std::size_t count, HINSTANCE instance,
                             PFN_VnRegisterServerEx registerServer) {
    if (!registerServer) return E_FAIL;
    HRESULT hr = S_OK;
    for (std::size_t i = 0; i < count; ++i) {
        const CVnClassTableRow& row = rows[i];
        hr = VnIntrfcResultToStatus(registerServer(instance, *row.pClsid, row.pszDescription, row.pszCategory,
                                                   row.pszSixth, row.pszFifth, 1));
        if (FAILED(hr)) break;
    }
    return hr;
}

HRESULT VnUnregisterClassTable(const CVnClassTableRow* rows, std::size_t count,
                               PFN_VnUnregisterServer unregisterServer) {
    if (!unregisterServer) return E_FAIL;
    HRESULT hr = S_OK;
    for (std::size_t i = 0; i < count; ++i) {
        const CVnClassTableRow& row = rows[i];
        hr = VnIntrfcResultToStatus(unregisterServer(*row.pClsid, row.pszCategory, row.pszSixth, row.pszFifth));
        if (FAILED(hr)) break;
    }
    return hr;
}
