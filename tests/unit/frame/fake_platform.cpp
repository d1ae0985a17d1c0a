#include "tests/unit/frame/fake_platform.h"

#include <algorithm>
#include <cwchar>

namespace kxtest {

int FakeStringSource::LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int cchBuffer) {
    capacities.push_back(cchBuffer);
    auto found = strings.find({module, id});
    if (cchBuffer <= 0 || !buffer) return 0;
    if (found == strings.end()) {
        buffer[0] = L'\0';
        return 0;
    }
    int n = std::min(static_cast<int>(found->second.size()), cchBuffer - 1);
    std::copy_n(found->second.c_str(), n, buffer);
    buffer[n] = L'\0';
    return n;
}

FakePluginPlatform::FakePluginPlatform() {
    existingFiles.push_back(L"C:\\Program Files\\Media\\Plugins\\ComRcRes.dll");
    text.Add(Resources(), 188, L"Media Library");
}

HRESULT FakePluginPlatform::OleInitialize() {
    ++oleInitializeCalls;
    return oleResult;
}

DWORD FakePluginPlatform::GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD cchPath) {
    if (module != Plugin() || cchPath == 0) return 0;
    DWORD n = static_cast<DWORD>(std::min<size_t>(pluginPath.size(), cchPath - 1));
    std::copy_n(pluginPath.c_str(), n, path);
    path[n] = L'\0';
    return n;
}

BOOL FakePluginPlatform::PathRemoveFileSpecW(LPWSTR path) {
    wchar_t* slash = std::wcsrchr(path, L'\\');
    if (!slash) return FALSE;
    *slash = L'\0';
    return TRUE;
}

BOOL FakePluginPlatform::PathAppendW(LPWSTR path, LPCWSTR more) {
    size_t length = std::wcslen(path);
    if (length + 1 + std::wcslen(more) >= 260) return FALSE;
    if (length && path[length - 1] != L'\\') path[length++] = L'\\';
    std::wcscpy(path + length, more);
    return TRUE;
}

HMODULE FakePluginPlatform::LoadLibraryW(LPCWSTR path) {
    loadedPaths.push_back(path);
    if (std::find(existingFiles.begin(), existingFiles.end(), std::wstring(path)) == existingFiles.end())
        return nullptr;
    ++loads;
    return Resources();
}

BOOL FakePluginPlatform::FreeLibrary(HMODULE module) {
    if (module != Resources() || frees >= loads) return FALSE;
    ++frees;
    return TRUE;
}

}  // namespace kxtest
