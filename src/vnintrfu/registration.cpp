#include "vnintrfu/registration.h"

#include <cwchar>

#include "vnintrfu/name_guid.h"

namespace {

// The namespace of this library's category identifiers.
const GUID kCategoryNamespace = {0x6F1C2A84, 0x3B0E, 0x4D57, {0x9A, 0x21, 0xC8, 0xE4, 0xB0, 0x7D, 0x5E, 0x13}};

bool IsEmpty(const wchar_t* s) { return !s || !*s; }

bool IsHex(wchar_t c) { return (c >= L'0' && c <= L'9') || (c >= L'A' && c <= L'F') || (c >= L'a' && c <= L'f'); }

unsigned HexValue(wchar_t c) {
    if (c <= L'9') return static_cast<unsigned>(c - L'0');
    return static_cast<unsigned>((c | 0x20) - L'a' + 10);
}

// Reads "{8-4-4-4-12}" into *guid.
bool ParseGuid(const std::wstring& s, GUID* guid) {
    static const char kShape[] = "{........-....-....-....-............}";
    if (s.size() != sizeof(kShape) - 1) return false;
    unsigned char bytes[16] = {};
    int nibble = 0;
    for (std::size_t i = 0; i < s.size(); ++i) {
        if (kShape[i] != '.') {
            if (s[i] != static_cast<wchar_t>(kShape[i])) return false;
            continue;
        }
        if (!IsHex(s[i])) return false;
        bytes[nibble / 2] = static_cast<unsigned char>(bytes[nibble / 2] << 4 | HexValue(s[i]));
        ++nibble;
    }
    guid->Data1 = static_cast<uint32_t>(bytes[0]) << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3];
    guid->Data2 = static_cast<uint16_t>(bytes[4] << 8 | bytes[5]);
    guid->Data3 = static_cast<uint16_t>(bytes[6] << 8 | bytes[7]);
    for (int i = 0; i < 8; ++i) guid->Data4[i] = bytes[8 + i];
    return true;
}

void Add(std::vector<VnRegistryEntry>* entries, const std::wstring& key, const wchar_t* name,
         const std::wstring& data) {
    entries->push_back({key, true, name, data});
}

}  // namespace

std::wstring VnGuidText(const GUID& g) {
    wchar_t text[40];
    std::swprintf(text, 40, L"{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", static_cast<unsigned>(g.Data1),
                  g.Data2, g.Data3, g.Data4[0], g.Data4[1], g.Data4[2], g.Data4[3], g.Data4[4], g.Data4[5],
                  g.Data4[6], g.Data4[7]);
    return text;
}

GUID VnCategoryId(const std::wstring& name) {
    GUID id;
    if (ParseGuid(name, &id)) return id;
    return KxNameBasedGuid(kCategoryNamespace, name);
}

const wchar_t* VnThreadingModel(int flag) {
    static const wchar_t* const kModels[] = {L"", L"Apartment", L"Free", L"Both", L"Neutral"};
    if (flag < 0 || flag > 4) return nullptr;
    return kModels[flag];
}

bool VnIsValidProgId(const std::wstring& progId) {
    if (progId.empty() || progId.size() > 39) return false;
    if (progId[0] >= L'0' && progId[0] <= L'9') return false;
    for (wchar_t c : progId) {
        const bool ok = (c >= L'0' && c <= L'9') || (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z') || c == L'.';
        if (!ok) return false;
    }
    return true;
}

std::wstring VnClassKey(const CLSID& clsid) { return L"CLSID\\" + VnGuidText(clsid); }

std::wstring VnCategoryKey(const GUID& catid) { return L"Component Categories\\" + VnGuidText(catid); }

std::wstring VnImplementedCategorySubkey(const GUID& catid) { return L"Implemented Categories\\" + VnGuidText(catid); }

tagVnINTRFCRESULT VnBuildRegistration(const VnClassRegistration& reg, std::vector<VnRegistryEntry>* entries) {
    if (!entries || !reg.clsid || IsEmpty(reg.description) || IsEmpty(reg.category)) return VnIntrfcInvalidArg;
    const wchar_t* model = VnThreadingModel(reg.threadingFlag);
    if (!model) return VnIntrfcInvalidArg;
    const std::wstring progId = reg.progId ? reg.progId : L"";
    const std::wstring independent = reg.versionIndependentProgId ? reg.versionIndependentProgId : L"";
    if ((!progId.empty() && !VnIsValidProgId(progId)) || (!independent.empty() && !VnIsValidProgId(independent)))
        return VnIntrfcInvalidArg;
    if (reg.modulePath.empty()) return VnIntrfcInvalidModule;

    const std::wstring clsidText = VnGuidText(*reg.clsid);
    const std::wstring classKey = VnClassKey(*reg.clsid);
    const GUID catid = VnCategoryId(reg.category);
    entries->clear();
    Add(entries, classKey, L"", reg.description);
    Add(entries, classKey + L"\\InprocServer32", L"", reg.modulePath);
    if (*model) Add(entries, classKey + L"\\InprocServer32", L"ThreadingModel", model);
    if (!progId.empty()) {
        Add(entries, classKey + L"\\ProgID", L"", progId);
        Add(entries, progId, L"", reg.description);
        Add(entries, progId + L"\\CLSID", L"", clsidText);
    }
    if (!independent.empty()) {
        Add(entries, classKey + L"\\VersionIndependentProgID", L"", independent);
        Add(entries, independent, L"", reg.description);
        Add(entries, independent + L"\\CLSID", L"", clsidText);
        if (!progId.empty()) Add(entries, independent + L"\\CurVer", L"", progId);
    }
    Add(entries, VnCategoryKey(catid), L"409", reg.category);
    entries->push_back({classKey + L"\\" + VnImplementedCategorySubkey(catid), false, L"", L""});
    return VnIntrfcOk;
}
