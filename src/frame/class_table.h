// The module's table of creatable classes and the walks over it that the exports make: getting a
// class object, the unload decision, registration through VnIntrfu.dll.
#pragma once

#include "kx/KxPlatform.h"
#include "vnintrfu/vn_result.h"

#include <cstddef>

class CVnUnknown;

// Net count of IClassFactory::LockServer calls.
extern LONG volatile g_cServerLocks;

typedef HRESULT (*PFN_VnCreateObject)(IUnknown* outer, CVnUnknown** out);

// One creatable class: six machine words.
struct CVnClassTableRow {
    const CLSID* pClsid;
    PFN_VnCreateObject pfnCreate;
    LPCWSTR pszDescription;
    LPCWSTR pszCategory;
    LPCWSTR pszFifth;   // meaning left to the registration library; null in our row
    LPCWSTR pszSixth;   // likewise
};

// The module's table: one row, KxComResPlginPluginObj.
extern const CVnClassTableRow g_VnClassTable[];
extern const std::size_t g_cVnClassTableRows;


// The registration library's two operations, bound at run time by name.
typedef tagVnINTRFCRESULT(WINAPI* PFN_VnRegisterServerEx)(HINSTANCE instance, REFCLSID clsid, LPCWSTR description,
                                                          LPCWSTR category, LPCWSTR sixth, LPCWSTR fifth, int flag);
typedef tagVnINTRFCRESULT(WINAPI* PFN_VnUnregisterServer)(REFCLSID clsid, LPCWSTR category, LPCWSTR sixth,
                                                          LPCWSTR fifth);

// DllGetClassObject over `rows`: IUnknown or IClassFactory only (0x80004002, out untouched), a
// known class (0x80040111, out untouched), then a new CVnFactory in *out (null and 0x8007000e
// when it cannot be allocated). A null `out` past those tests gives 0x80004003.
HRESULT VnGetClassObject(const CVnClassTableRow* rows, std::size_t count, REFCLSID clsid, REFIID riid, void** out);

// DllCanUnloadNow: S_FALSE while an object lives or a lock is held, else S_OK.
HRESULT VnCanUnloadNow();

// Maps a result of the registration library to a status.
HRESULT VnIntrfcResultToStatus(tagVnINTRFCRESULT result);

// Walk `rows` with the registration library, stopping at the first row that fails. A null
// function (the library or its export is missing) gives 0x80004005 without a walk.
HRESULT VnRegisterClassTable(const CVnClassTableRow* rows, std::size_t count, HINSTANCE instance,
                             PFN_VnRegisterServerEx registerServer);
HRESULT VnUnregisterClassTable(const CVnClassTableRow* rows, std::size_t count,
                               PFN_VnUnregisterServer unregisterServer);
