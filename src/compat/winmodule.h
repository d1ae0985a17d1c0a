// Loading a library at run time, for builds off Windows, by the platform's names. There are no
// files behind it: a test installs fake modules (a name and a table of exports), and LoadLibraryW
// finds them by file name, counting references and every load and free the way the loader does.
#pragma once

#ifdef _WIN32
#error "winmodule.h is for non-Windows builds"
#endif

#include "compat/wincompat.h"

#include <string>
#include <vector>

typedef uintptr_t DWORD_PTR;
typedef INT_PTR (*FARPROC)();

HMODULE LoadLibraryW(LPCWSTR fileName);
FARPROC GetProcAddress(HMODULE module, const char* procName);
BOOL FreeLibrary(HMODULE module);

namespace kxcompat {

struct FakeExport {
    const char* name;
    void* address;
};

// Makes a module named `fileName` loadable (the name is compared without case, as the loader
// does). Installing a name again replaces its exports and its counters.
void InstallFakeModule(const std::wstring& fileName, const std::vector<FakeExport>& exports);
// Forgets every fake module.
void RemoveFakeModules();

struct FakeModuleCounters {
    int loads;       // LoadLibraryW calls that found it
    int frees;       // FreeLibrary calls on it
    int references;  // loads minus frees: 0 when it is not loaded
};
FakeModuleCounters FakeModuleCountersOf(const std::wstring& fileName);

}  // namespace kxcompat
