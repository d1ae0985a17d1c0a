// The registry work of registration: writing the entries that registration.h works out,
// removing a class's keys, and asking whether a category still has a class that implements it.
// Every key lies under HKEY_CLASSES_ROOT.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "vnintrfu/registration.h"

// Registry errors as the library's results: none or a missing key 0, a refusal 14, else 1.
tagVnINTRFCRESULT VnResultOfRegistryError(LONG error);

// Creates each entry's key and sets its value, stopping at the first failure.
tagVnINTRFCRESULT VnWriteEntries(const std::vector<VnRegistryEntry>& entries);

// Deletes `key` with all its subkeys; a key that is not there is no failure.
tagVnINTRFCRESULT VnDeleteTree(const std::wstring& key);

// The default value of `key`, or empty when it has none.
std::wstring VnReadDefault(const std::wstring& key);

// Whether any class under CLSID has the category among its implemented categories.
bool VnCategoryImplemented(const GUID& catid);
