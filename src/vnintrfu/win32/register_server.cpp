// VnRegisterServerEx and VnUnregisterServer: the standard registration of an in-process class.
//
// Registering writes, under HKEY_CLASSES_ROOT (for the machine: it needs the rights to, else 14):
//   CLSID\{class}                              default: the description
//   CLSID\{class}\InprocServer32               default: the module's full path;
//                                              ThreadingModel: from the flag (1 "Apartment")
//   CLSID\{class}\Implemented Categories\{cat} (key only)
//   Component Categories\{cat}                 409: the category's name
// and, when given, a ProgID and a version-independent ProgID with their usual keys. The category
// identifier is the name-based GUID of the category's name (see registration.h).
#include <windows.h>

#include "vnintrfu/registration.h"
#include "vnintrfu/win32/registry.h"

namespace {

bool IsEmpty(LPCWSTR s) { return !s || !*s; }

// Removes what registering the class wrote: the ProgIDs while they still name this class (another
// class may have taken one over since), the class's own key, and the category's registration
// once no class implements it any more.
tagVnINTRFCRESULT RemoveClass(const CLSID& clsid, LPCWSTR category, LPCWSTR progId, LPCWSTR independent) {
    const std::wstring clsidText = VnGuidText(clsid);
    for (LPCWSTR name : {progId, independent}) {
        if (IsEmpty(name) || VnReadDefault(std::wstring(name) + L"\\CLSID") != clsidText) continue;
        const tagVnINTRFCRESULT r = VnDeleteTree(name);
        if (r != VnIntrfcOk) return r;
    }
    const tagVnINTRFCRESULT r = VnDeleteTree(VnClassKey(clsid));
    if (r != VnIntrfcOk) return r;
    const GUID catid = VnCategoryId(category);
    if (VnCategoryImplemented(catid)) return VnIntrfcOk;
    return VnDeleteTree(VnCategoryKey(catid));
}

bool ProgIdArgumentValid(LPCWSTR progId) { return IsEmpty(progId) || VnIsValidProgId(progId); }

}  // namespace

// The instance's module is what InprocServer32 names. The two optional strings are the ProgID and
// the version-independent ProgID. A registration that fails half-way is taken back whole, so the
// class is then not registered at all (also when an earlier registration of it was there).
extern "C" tagVnINTRFCRESULT WINAPI VnRegisterServerEx(HINSTANCE instance, const CLSID* clsid, LPCWSTR description,
                                                       LPCWSTR category, LPCWSTR progId, LPCWSTR independent,
                                                       int flag) {
    if (!instance) return VnIntrfcInvalidArg;
    VnClassRegistration reg = {clsid, description, category, progId, independent, flag, std::wstring()};
    std::wstring path(32768, L'\0');
    const DWORD length = GetModuleFileNameW(instance, &path[0], static_cast<DWORD>(path.size()));
    if (length > 0 && length < path.size()) reg.modulePath.assign(path.c_str(), length);

    std::vector<VnRegistryEntry> entries;
    const tagVnINTRFCRESULT built = VnBuildRegistration(reg, &entries);
    if (built != VnIntrfcOk) return built;
    // A registration replaces the class's earlier one whole, so nothing of it stays behind.
    tagVnINTRFCRESULT result = VnDeleteTree(VnClassKey(*clsid));
    if (result == VnIntrfcOk) result = VnWriteEntries(entries);
    if (result != VnIntrfcOk) RemoveClass(*clsid, category, progId, independent);
    return result;
}

extern "C" tagVnINTRFCRESULT WINAPI VnUnregisterServer(const CLSID* clsid, LPCWSTR category, LPCWSTR progId,
                                                       LPCWSTR independent) {
    if (!clsid || IsEmpty(category) || !ProgIdArgumentValid(progId) || !ProgIdArgumentValid(independent))
        return VnIntrfcInvalidArg;
    return RemoveClass(*clsid, category, progId, independent);
}
