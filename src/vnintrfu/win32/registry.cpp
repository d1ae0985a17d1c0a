#include "vnintrfu/win32/registry.h"

#include "base/owners.h"

namespace {

void KxCloseKey(HKEY key) { ::RegCloseKey(key); }
using CKxRegKey = CKxUnique<HKEY, &KxCloseKey>;

// Longest value read back: a path of the platform's longest form.
const DWORD kMaxValueChars = 32768;

}  // namespace

tagVnINTRFCRESULT VnResultOfRegistryError(LONG error) {
    switch (error) {
    case ERROR_SUCCESS:
    case ERROR_FILE_NOT_FOUND:
        return VnIntrfcOk;
    case ERROR_ACCESS_DENIED:
        return VnIntrfcAccessDenied;
    default:
        return VnIntrfcFailed;
    }
}

tagVnINTRFCRESULT VnWriteEntries(const std::vector<VnRegistryEntry>& entries) {
    for (const VnRegistryEntry& e : entries) {
        CKxRegKey key;
        LONG error = RegCreateKeyExW(HKEY_CLASSES_ROOT, e.key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                     KEY_SET_VALUE, nullptr, key.Put(), nullptr);
        if (error == ERROR_SUCCESS && e.hasValue)
            error = RegSetValueExW(key.Get(), e.name.empty() ? nullptr : e.name.c_str(), 0, REG_SZ,
                                   reinterpret_cast<const BYTE*>(e.data.c_str()),
                                   static_cast<DWORD>((e.data.size() + 1) * sizeof(wchar_t)));
        // A missing key cannot be the answer to creating one: any error here is a failure.
        if (error != ERROR_SUCCESS) return error == ERROR_ACCESS_DENIED ? VnIntrfcAccessDenied : VnIntrfcFailed;
    }
    return VnIntrfcOk;
}

tagVnINTRFCRESULT VnDeleteTree(const std::wstring& key) {
    return VnResultOfRegistryError(RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str()));
}

std::wstring VnReadDefault(const std::wstring& key) {
    std::wstring value(kMaxValueChars, L'\0');
    DWORD bytes = kMaxValueChars * sizeof(wchar_t);
    // RegGetValueW expands REG_EXPAND_SZ (then of type REG_SZ) and always ends the text.
    if (RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr,
                     &value[0], &bytes) != ERROR_SUCCESS)
        return std::wstring();
    value.resize(wcslen(value.c_str()));
    return value;
}

bool VnCategoryImplemented(const GUID& catid) {
    CKxRegKey classes;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, L"CLSID", 0, KEY_ENUMERATE_SUB_KEYS, classes.Put()) != ERROR_SUCCESS)
        return false;
    const std::wstring subkey = L"\\" + VnImplementedCategorySubkey(catid);
    wchar_t name[256];
    for (DWORD i = 0;; ++i) {
        DWORD length = 256;
        const LONG error = RegEnumKeyExW(classes.Get(), i, name, &length, nullptr, nullptr, nullptr, nullptr);
        if (error == ERROR_NO_MORE_ITEMS) return false;
        if (error != ERROR_SUCCESS) continue;  // a name longer than any class identifier
        CKxRegKey implemented;
        if (RegOpenKeyExW(classes.Get(), (name + subkey).c_str(), 0, KEY_READ, implemented.Put()) == ERROR_SUCCESS)
            return true;
    }
}
