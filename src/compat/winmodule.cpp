#include "compat/winmodule.h"

#include <cstring>
#include <cwctype>
#include <memory>

namespace {

struct FakeModule {
    std::wstring name;
    std::vector<kxcompat::FakeExport> exports;
    kxcompat::FakeModuleCounters counters{0, 0, 0};
};

std::vector<std::unique_ptr<FakeModule>>& Modules() {
    static std::vector<std::unique_ptr<FakeModule>> modules;
    return modules;
}

bool SameName(const std::wstring& a, const std::wstring& b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::towlower(a[i]) != std::towlower(b[i])) return false;
    return true;
}

FakeModule* Find(const std::wstring& name) {
    for (auto& m : Modules())
        if (SameName(m->name, name)) return m.get();
    return nullptr;
}

FakeModule* FromHandle(HMODULE module) {
    for (auto& m : Modules())
        if (reinterpret_cast<HMODULE>(m.get()) == module) return m.get();
    return nullptr;
}

}  // namespace

HMODULE LoadLibraryW(LPCWSTR fileName) {
    if (!fileName) return nullptr;
    FakeModule* m = Find(fileName);
    if (!m) return nullptr;
    ++m->counters.loads;
    ++m->counters.references;
    return reinterpret_cast<HMODULE>(m);
}

FARPROC GetProcAddress(HMODULE module, const char* procName) {
    FakeModule* m = FromHandle(module);
    if (!m || m->counters.references <= 0 || !procName) return nullptr;
    for (const auto& e : m->exports)
        if (std::strcmp(e.name, procName) == 0) return reinterpret_cast<FARPROC>(e.address);
    return nullptr;
}

BOOL FreeLibrary(HMODULE module) {
    FakeModule* m = FromHandle(module);
    if (!m || m->counters.references <= 0) return FALSE;
    ++m->counters.frees;
    --m->counters.references;
    return TRUE;
}

namespace kxcompat {

void InstallFakeModule(const std::wstring& fileName, const std::vector<FakeExport>& exports) {
    FakeModule* m = Find(fileName);
    if (!m) {
        Modules().push_back(std::make_unique<FakeModule>());
        m = Modules().back().get();
    }
    m->name = fileName;
    m->exports = exports;
    m->counters = {0, 0, 0};
}

void RemoveFakeModules() { Modules().clear(); }

FakeModuleCounters FakeModuleCountersOf(const std::wstring& fileName) {
    FakeModule* m = Find(fileName);
    return m ? m->counters : FakeModuleCounters{0, 0, 0};
}

}  // namespace kxcompat
