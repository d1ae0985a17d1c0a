// Strings of the current resource module (ComRcRes.dll inside a CKxManageState) for the dialogs'
// windows: texts of controls and titles.
#pragma once

#include <windows.h>

#include <string>

// The string `id`, read in place (LoadStringW with a zero length gives a pointer into the
// module's string table, so no length limit applies); empty when the module has no such string.
std::wstring KxLoadResourceString(UINT id);
