// VnCreateInstance and VnFreeUnusedLibraries: creating a registered in-process class without the
// platform's COM runtime, and letting its library go once it says it can be unloaded.
#include <windows.h>

#include <utility>
#include <vector>

#include "base/owners.h"
#include "vnintrfu/registration.h"
#include "vnintrfu/win32/registry.h"

namespace {

typedef HRESULT(STDAPICALLTYPE* PFN_DllGetClassObject)(REFCLSID, REFIID, void**);
typedef HRESULT(STDAPICALLTYPE* PFN_DllCanUnloadNow)();

// The libraries this module loaded for creations, one reference each. Calls into the libraries
// (loading, creating, asking and freeing) run outside the lock: a library's own start or end may
// come back here.
SRWLOCK g_lock = SRWLOCK_INIT;
std::vector<HMODULE> g_libraries;

// Keeps the reference of a library that served a creation, one per library.
void KeepLibrary(CKxModule library) {
    AcquireSRWLockExclusive(&g_lock);
    bool known = false;
    for (HMODULE m : g_libraries) known = known || m == library.Get();
    if (!known) g_libraries.push_back(library.Detach());
    ReleaseSRWLockExclusive(&g_lock);
    // A library kept already: `library` gives its extra reference back here.
}

bool IsFullPath(const std::wstring& path) {
    return path.size() > 2 && (path[1] == L':' || (path[0] == L'\\' && path[1] == L'\\'));
}

}  // namespace

// The context may be 0 or any that includes CLSCTX_INPROC_SERVER; only in-process creation exists
// here. The library is loaded from the registered path (its own folder first for what it loads
// itself) and stays loaded, also after the object has gone, until VnFreeUnusedLibraries finds it
// unloadable. A creation that fails gives its library back at once. *out is null on failure.
extern "C" tagVnINTRFCRESULT WINAPI VnCreateInstance(const CLSID* clsid, IUnknown* outer, DWORD context,
                                                     const IID* iid, void** out) {
    if (!out) return VnIntrfcInvalidArg;
    *out = nullptr;
    if (!clsid || !iid || (context != 0 && !(context & CLSCTX_INPROC_SERVER))) return VnIntrfcInvalidArg;

    const std::wstring path = VnReadDefault(VnClassKey(*clsid) + L"\\InprocServer32");
    if (path.empty()) return VnIntrfcClassNotRegistered;
    CKxModule library(LoadLibraryExW(path.c_str(), nullptr, IsFullPath(path) ? LOAD_WITH_ALTERED_SEARCH_PATH : 0));
    const PFN_DllGetClassObject getClassObject = library.Export<PFN_DllGetClassObject>("DllGetClassObject");
    if (!getClassObject) return VnIntrfcServerNotLoaded;

    // Our own reference holds the library while its code runs here.
    CKxComPtr<IClassFactory> factory;
    if (FAILED(getClassObject(*clsid, IID_IClassFactory, factory.PutVoid())) || !factory)
        return VnIntrfcCreateFailed;
    const HRESULT hr = factory->CreateInstance(outer, *iid, out);
    factory.Reset();
    if (FAILED(hr) || !*out) {
        *out = nullptr;
        return VnIntrfcCreateFailed;
    }
    KeepLibrary(std::move(library));
    return VnIntrfcOk;
}

// A library without DllCanUnloadNow cannot say it is unused: it stays loaded. Libraries still held
// when this module is unloaded stay loaded too, since objects of theirs may still live.
extern "C" void WINAPI VnFreeUnusedLibraries() {
    AcquireSRWLockExclusive(&g_lock);
    // Taken out while they are asked; a creation meanwhile keeps its own reference as a new entry,
    // and every entry stands for one reference, so the count stays right.
    std::vector<HMODULE> candidates;
    candidates.swap(g_libraries);
    ReleaseSRWLockExclusive(&g_lock);

    std::vector<HMODULE> kept;
    for (HMODULE m : candidates) {
        const PFN_DllCanUnloadNow canUnload =
            reinterpret_cast<PFN_DllCanUnloadNow>(reinterpret_cast<void*>(GetProcAddress(m, "DllCanUnloadNow")));
        if (canUnload && canUnload() == S_OK)
            FreeLibrary(m);
        else
            kept.push_back(m);
    }
    AcquireSRWLockExclusive(&g_lock);
    g_libraries.insert(g_libraries.end(), kept.begin(), kept.end());
    ReleaseSRWLockExclusive(&g_lock);
}
