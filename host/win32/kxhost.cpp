// kxhost.exe: a small stand-in for the media-library application. It loads the plug-in from its
// own folder, creates the object through DllGetClassObject like the real host, and reports what
// the plug-in answers.
//
//   kxhost.exe [--headless] [--out <folder>]
#include <windows.h>

#include <cstdio>
#include <string>

#include "kx/IKxCommonResource.h"
#include "host/win32/demo_library.h"

namespace {

std::wstring ExeDir() {
    wchar_t path[MAX_PATH] = {};
    DWORD n = GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring s(path, n);
    return s.substr(0, s.find_last_of(L"\\/") + 1);
}

void Say(const wchar_t* format, ...) {
    wchar_t line[1024];
    va_list args;
    va_start(args, format);
    _vsnwprintf(line, 1023, format, args);
    va_end(args);
    line[1023] = L'\0';
    // the console may not be a wide one under Wine: write UTF-8
    char utf8[4096];
    int n = WideCharToMultiByte(CP_UTF8, 0, line, -1, utf8, sizeof(utf8), nullptr, nullptr);
    if (n > 0) {
        std::fputs(utf8, stdout);
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }
}

typedef HRESULT(STDAPICALLTYPE* GetClassObjectFn)(REFCLSID, REFIID, void**);
typedef HRESULT(STDAPICALLTYPE* CanUnloadNowFn)();

}  // namespace

int wmain(int argc, wchar_t** argv) {
    bool headless = false;
    std::wstring outDir = ExeDir() + L"demo";
    for (int i = 1; i < argc; ++i) {
        if (lstrcmpiW(argv[i], L"--headless") == 0) headless = true;
        else if (lstrcmpiW(argv[i], L"--out") == 0 && i + 1 < argc) outDir = argv[++i];
    }
    Say(L"kxhost: %s run, pictures to %s", headless ? L"headless" : L"interactive", outDir.c_str());

    kxhost::SampleLibrary library = kxdemo::MakeDemoLibrary(outDir);
    for (const std::wstring& line : kxdemo::DescribeLibrary(*library.library)) Say(L"library: %s", line.c_str());

    std::wstring pluginPath = ExeDir() + L"KxComResPlgin.dll";
    HMODULE plugin = LoadLibraryW(pluginPath.c_str());
    if (!plugin) {
        Say(L"kxhost: cannot load %s (error %lu)", pluginPath.c_str(), GetLastError());
        return 1;
    }
    auto getClassObject = reinterpret_cast<GetClassObjectFn>(
        reinterpret_cast<void*>(GetProcAddress(plugin, "DllGetClassObject")));
    auto canUnloadNow =
        reinterpret_cast<CanUnloadNowFn>(reinterpret_cast<void*>(GetProcAddress(plugin, "DllCanUnloadNow")));
    Say(L"kxhost: loaded %s", pluginPath.c_str());

    IClassFactory* factory = nullptr;
    HRESULT hr = getClassObject(CLSID_KxComResPlginPluginObj, IID_IClassFactory, reinterpret_cast<void**>(&factory));
    Say(L"DllGetClassObject -> 0x%08lx", static_cast<unsigned long>(hr));
    IKxCommonResource* res = nullptr;
    if (SUCCEEDED(hr)) {
        hr = factory->CreateInstance(nullptr, IID_IKxCommonResource, reinterpret_cast<void**>(&res));
        factory->Release();
        Say(L"CreateInstance(IKxCommonResource) -> 0x%08lx", static_cast<unsigned long>(hr));
    }
    if (res) {
        LPWSTR caption = nullptr;
        hr = res->GetResourceString(188, &caption);
        Say(L"GetResourceString(188) -> 0x%08lx \"%s\"", static_cast<unsigned long>(hr), caption ? caption : L"");
        CoTaskMemFree(caption);
        res->Release();
    }
    Say(L"DllCanUnloadNow -> 0x%08lx", static_cast<unsigned long>(canUnloadNow()));
    FreeLibrary(plugin);
    return 0;
}
