// A fake of the platform for the plug-in frame: a string table behind LoadStringW that records
// the capacity of every call, and a module loader that finds only ComRcRes.dll beside the plug-in.
#pragma once

#include "frame/plugin_platform.h"

#include <algorithm>
#include <cwchar>
#include <map>
#include <string>
#include <vector>

namespace kxtest {

class FakePluginPlatform : public IKxPluginPlatform {
public:
    static HMODULE Plugin() { return reinterpret_cast<HMODULE>(0x1000); }
    static HMODULE Resources() { return reinterpret_cast<HMODULE>(0x2000); }

    // The platform's rule: at most cchBuffer - 1 characters and a terminator.
    int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int cchBuffer) override {
        capacities.push_back(cchBuffer);
        auto found = strings.find(id);
        if (module != Resources() || found == strings.end()) return 0;
        int n = std::min(static_cast<int>(found->second.size()), cchBuffer - 1);
        std::copy_n(found->second.c_str(), n, buffer);
        buffer[n] = L'\0';
        return n;
    }
    HRESULT OleInitialize() override {
        ++oleStarts;
        return oleResult;
    }
    void OleUninitialize() override { ++oleEnds; }
    DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD) override {
        std::wcscpy(path, module == Plugin() ? L"C:\\Plugins\\KxComResPlgin.dll" : L"");
        return static_cast<DWORD>(std::wcslen(path));
    }
    BOOL PathRemoveFileSpecW(LPWSTR path) override {
        wchar_t* slash = std::wcsrchr(path, L'\\');
        if (slash) *slash = L'\0';
        return slash != nullptr;
    }
    BOOL PathAppendW(LPWSTR path, LPCWSTR more) override {
        std::wcscat(std::wcscat(path, L"\\"), more);
        return TRUE;
    }
    HMODULE LoadLibraryW(LPCWSTR path) override {
        loaded.push_back(path);
        if (path != resourcePath) return nullptr;
        ++loads;
        return Resources();
    }
    BOOL FreeLibrary(HMODULE module) override { return module == Resources() && ++frees <= loads; }
    void SetModuleResourceHandle(HMODULE resources) override { resourceHandles.push_back(resources); }

    std::map<UINT, std::wstring> strings = {{188, L"Media Library"}};
    std::vector<int> capacities;
    std::wstring resourcePath = L"C:\\Plugins\\ComRcRes.dll";  // the one library LoadLibraryW finds
    HRESULT oleResult = S_OK;
    int oleStarts = 0, oleEnds = 0, loads = 0, frees = 0;
    std::vector<std::wstring> loaded;
    std::vector<HMODULE> resourceHandles;
};

}  // namespace kxtest
