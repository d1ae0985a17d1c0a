// Compiled, not run: a C++11 host with only <windows.h> and the public headers.
#include <windows.h>

#include "kx/IKxCommonResource.h"

typedef HRESULT(STDAPICALLTYPE* GetClassObjectFn)(REFCLSID, REFIID, void**);

HRESULT PlainHostCreate(HMODULE plugin, IKxCommonResource** out) {
    GetClassObjectFn get =
        reinterpret_cast<GetClassObjectFn>(reinterpret_cast<void*>(GetProcAddress(plugin, "DllGetClassObject")));
    if (!get) return E_FAIL;
    IClassFactory* factory = NULL;
    HRESULT hr = get(CLSID_KxComResPlginPluginObj, IID_IClassFactory, reinterpret_cast<void**>(&factory));
    if (FAILED(hr)) return hr;
    hr = factory->CreateInstance(NULL, IID_IKxCommonResource, reinterpret_cast<void**>(out));
    factory->Release();
    KxPidl item = NULL;
    LPWSTR name = NULL;
    if (SUCCEEDED(hr)) hr = (*out)->ShowAddToPlaylistDialog(NULL, NULL, L"", &item, &name);
    return hr;
}
