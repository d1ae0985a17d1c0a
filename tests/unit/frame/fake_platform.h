// Fakes of the platform for the plug-in frame: a string table behind LoadStringW and a module
// loader that knows which files exist, counting what is loaded and freed.
#pragma once

#include "frame/plugin_platform.h"

#include <map>
#include <string>
#include <vector>

namespace kxtest {

// LoadStringW over a map of module handle and identifier to text, with the platform's rule:
// at most cchBuffer - 1 characters and a terminator, the number copied as the result.
class FakeStringSource : public IKxStringSource {
public:
    int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int cchBuffer) override;
    void Add(HINSTANCE module, UINT id, const std::wstring& text) { strings[{module, id}] = text; }

    std::map<std::pair<HINSTANCE, UINT>, std::wstring> strings;
    std::vector<int> capacities;  // cchBuffer of each call
};

class FakePluginPlatform : public IKxPluginPlatform {
public:
    FakePluginPlatform();

    int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int cchBuffer) override {
        return text.LoadStringW(module, id, buffer, cchBuffer);
    }
    HRESULT OleInitialize() override;
    void OleUninitialize() override { ++oleUninitializeCalls; }
    DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD cchPath) override;
    BOOL PathRemoveFileSpecW(LPWSTR path) override;
    BOOL PathAppendW(LPWSTR path, LPCWSTR more) override;
    HMODULE LoadLibraryW(LPCWSTR path) override;
    BOOL FreeLibrary(HMODULE module) override;
    void SetModuleResourceHandle(HMODULE resources) override { resourceHandles.push_back(resources); }

    // Handles the fake hands out.
    static HMODULE Plugin() { return reinterpret_cast<HMODULE>(0x1000); }
    static HMODULE Resources() { return reinterpret_cast<HMODULE>(0x2000); }

    FakeStringSource text;
    std::wstring pluginPath = L"C:\\Program Files\\Media\\Plugins\\KxComResPlgin.dll";
    std::vector<std::wstring> existingFiles;  // files LoadLibraryW finds
    HRESULT oleResult = S_OK;
    int oleInitializeCalls = 0;
    int oleUninitializeCalls = 0;
    int loads = 0;
    int frees = 0;
    std::vector<std::wstring> loadedPaths;
    std::vector<HMODULE> resourceHandles;
};

}  // namespace kxtest
