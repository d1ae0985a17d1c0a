// What registering a class writes under HKEY_CLASSES_ROOT and what unregistering removes, worked
// out from the arguments alone, so that the Win32 side only applies the list. Keys are paths
// relative to HKEY_CLASSES_ROOT; a value with an empty name is the key's default value.
#pragma once

#include "kx/KxPlatform.h"

#include <string>
#include <vector>

#include "vnintrfu/vn_result.h"

struct VnRegistryEntry {
    std::wstring key;
    bool hasValue;      // false: the key alone, with no value
    std::wstring name;  // empty: the default value
    std::wstring data;  // written as REG_SZ
};

// The arguments of VnRegisterServerEx after the module handle, with the module's path already
// found. The two optional strings (the table's sixth and fifth columns, in the order the plug-in
// passes them) are a ProgID and a version-independent ProgID; null or empty writes none.
struct VnClassRegistration {
    const CLSID* clsid;
    const wchar_t* description;
    const wchar_t* category;
    const wchar_t* progId;
    const wchar_t* versionIndependentProgId;
    int threadingFlag;  // see VnThreadingModel
    std::wstring modulePath;
};

// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}", upper case, as the registry names classes.
std::wstring VnGuidText(const GUID& guid);

// The category identifier of a category given by name: the name-based GUID of the name, so every
// module that names the same category registers the same identifier. A name that is itself a
// GUID in braces is taken as that identifier.
GUID VnCategoryId(const std::wstring& name);

// The ThreadingModel value for the registration flag: 0 writes none (the class lives on the main
// single-threaded apartment), 1 "Apartment", 2 "Free", 3 "Both", 4 "Neutral". Null for any other
// flag.
const wchar_t* VnThreadingModel(int flag);

// A ProgID as the platform defines one: 1 to 39 characters, letters, digits and periods, not
// beginning with a digit.
bool VnIsValidProgId(const std::wstring& progId);

// The entries that registration writes, in the order to write them (every key before its
// subkeys), or the result that refuses the arguments.
tagVnINTRFCRESULT VnBuildRegistration(const VnClassRegistration& reg, std::vector<VnRegistryEntry>* entries);

// The key trees of the class itself, removed whole on unregistering: CLSID\{...}.
std::wstring VnClassKey(const CLSID& clsid);
// The key of a category's registration, with its description under value "409" (the English
// locale's identifier in hexadecimal, as category descriptions are stored).
std::wstring VnCategoryKey(const GUID& catid);
// Below a class's key: the subkey that says the class implements a category.
std::wstring VnImplementedCategorySubkey(const GUID& catid);
