// VnIntrfu.dll under Wine: Wine's own regsvr32 registers and unregisters the plug-in, the registry
// is read back (exactly the standard keys, and unregistering takes back exactly them), a
// registered class is created through VnCreateInstance and its library let go by
// VnFreeUnusedLibraries, and the documented results of refused calls.
#include <windows.h>

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "base/owners.h"
#include "tests/win/common/plugin_loader.h"
#include "vnintrfu/vn_result.h"

namespace {

using kxtest::ExeDir;
using kxtest::RunRegsvr32;

typedef tagVnINTRFCRESULT(WINAPI* RegisterFn)(HINSTANCE, const CLSID*, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, int);
typedef tagVnINTRFCRESULT(WINAPI* UnregisterFn)(const CLSID*, LPCWSTR, LPCWSTR, LPCWSTR);
typedef tagVnINTRFCRESULT(WINAPI* CreateFn)(const CLSID*, IUnknown*, DWORD, const IID*, void**);
typedef void(WINAPI* FreeUnusedFn)();

const wchar_t kPluginClassKey[] = L"CLSID\\{EB8BC225-FFEA-4DD4-A8DE-A6A71E93E059}";
const wchar_t kCategory[] = L"{6AE94C5C-54F7-533D-AF81-97647D6E83C0}";  // of "CATEGORY_KxCommonResource"
// A class of the tests' own, registered directly; left out of the snapshots.
const CLSID kScratchClass = {0x3C0F5E21, 0x7A44, 0x4E1B, {0x91, 0x0D, 0x2B, 0x6E, 0x58, 0xC3, 0x0A, 0x77}};
const wchar_t kScratchClassName[] = L"{3C0F5E21-7A44-4E1B-910D-2B6E58C30A77}";
const wchar_t kScratchCategory[] = L"{5B1D0C6E-2F3A-4C88-8E47-0D9A61F2B3C5}";

struct VnIntrfu {
    CKxModule module{LoadLibraryW((ExeDir() + L"VnIntrfu.dll").c_str())};
    RegisterFn Register = module.Export<RegisterFn>("VnRegisterServerEx");
    UnregisterFn Unregister = module.Export<UnregisterFn>("VnUnregisterServer");
    CreateFn Create = module.Export<CreateFn>("VnCreateInstance");
    FreeUnusedFn FreeUnused = module.Export<FreeUnusedFn>("VnFreeUnusedLibraries");
};


void CloseKey(HKEY key) { RegCloseKey(key); }
using Key = CKxUnique<HKEY, &CloseKey>;

// A key under HKEY_CLASSES_ROOT as "name=data" of its values and "name\" of its subkeys; "-" when
// the key is not there.
std::set<std::wstring> Contents(const std::wstring& path) {
    Key key;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, key.Put()) != ERROR_SUCCESS) return {L"-"};
    std::set<std::wstring> out;
    wchar_t name[16384];
    for (DWORD i = 0;; ++i) {
        DWORD length = 16384;
        if (RegEnumKeyExW(key.Get(), i, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
        out.insert(std::wstring(name) + L"\\");
    }
    for (DWORD i = 0;; ++i) {
        wchar_t data[1024] = {};
        DWORD length = 16384, bytes = sizeof(data) - sizeof(wchar_t), type = 0;
        if (RegEnumValueW(key.Get(), i, name, &length, nullptr, &type, reinterpret_cast<BYTE*>(data), &bytes) !=
            ERROR_SUCCESS)
            break;
        out.insert(std::wstring(name) + (type == REG_SZ ? L"=" : L"=?") + data);
    }
    return out;
}

// The names of the registered classes and categories, but the tests' scratch class.
std::set<std::wstring> Snapshot() {
    std::set<std::wstring> all;
    for (const std::wstring& k : Contents(L"CLSID"))
        if (k.find(kScratchClassName) == std::wstring::npos) all.insert(L"CLSID\\" + k);
    for (const std::wstring& k : Contents(L"Component Categories"))
        if (k.find(kScratchCategory) == std::wstring::npos) all.insert(L"Component Categories\\" + k);
    return all;
}

std::wstring Upper(std::wstring s) {
    CharUpperW(&s[0]);
    return s;
}

TEST(VnIntrfu, Regsvr32WritesTheStandardKeysVnCreateInstanceUsesThemAndUnregisteringTakesThemBack) {
    const std::wstring plugin = ExeDir() + L"KxComResPlgin.dll";
    // regsvr32 lives in the system folder: run from the plug-in's folder, the plug-in finds
    // VnIntrfu.dll there. Unregistering what is not registered succeeds (and clears a failed run).
    ASSERT_EQ(0u, RunRegsvr32(L"/u \"" + plugin + L"\"", ExeDir()));
    ASSERT_EQ(std::set<std::wstring>{L"-"}, Contents(kPluginClassKey));
    const std::set<std::wstring> before = Snapshot();

    ASSERT_EQ(0u, RunRegsvr32(L"\"" + plugin + L"\"", ExeDir()));
    const std::wstring cls = kPluginClassKey;
    EXPECT_EQ((std::set<std::wstring>{L"=Commom Resource Plugin Object", L"Implemented Categories\\",
                                      L"InprocServer32\\"}),
              Contents(cls));
    std::set<std::wstring> server = Contents(cls + L"\\InprocServer32");
    ASSERT_EQ(2u, server.size());
    EXPECT_EQ(1u, server.count(L"ThreadingModel=Apartment"));
    EXPECT_EQ(Upper(L"=" + plugin), Upper(*server.begin()));
    EXPECT_EQ(std::set<std::wstring>{std::wstring(kCategory) + L"\\"}, Contents(cls + L"\\Implemented Categories"));
    EXPECT_TRUE(Contents(cls + L"\\Implemented Categories\\" + kCategory).empty());
    std::set<std::wstring> added = Snapshot();
    for (const std::wstring& k : before) added.erase(k);
    const std::wstring categoryKey = L"Component Categories\\" + std::wstring(kCategory);
    EXPECT_EQ(std::set<std::wstring>{L"409=CATEGORY_KxCommonResource"}, Contents(categoryKey));
    EXPECT_EQ((std::set<std::wstring>{cls + L"\\", categoryKey + L"\\"}), added);

    {
        // The class through the registry: its library stays while an object lives, and goes with
        // the next VnFreeUnusedLibraries after the last one.
        VnIntrfu vn;
        ASSERT_TRUE(vn.Create && vn.FreeUnused);
        ASSERT_EQ(nullptr, GetModuleHandleW(plugin.c_str()));
        IKxCommonResource* resource = nullptr;
        ASSERT_EQ(VnIntrfcOk, vn.Create(&CLSID_KxComResPlginPluginObj, nullptr, 0, &IID_IKxCommonResource,
                                        reinterpret_cast<void**>(&resource)));
        ASSERT_NE(nullptr, resource);
        LPWSTR caption = nullptr;
        EXPECT_EQ(S_OK, resource->GetResourceString(188, &caption));
        CoTaskMemFree(caption);
        vn.FreeUnused();
        EXPECT_NE(nullptr, GetModuleHandleW(plugin.c_str()));
        EXPECT_EQ(0u, resource->Release());
        vn.FreeUnused();
        EXPECT_EQ(nullptr, GetModuleHandleW(plugin.c_str()));

        // The object refuses the interface: nothing is handed out, and the library is let go at once.
        void* out = &resource;
        EXPECT_EQ(VnIntrfcCreateFailed,
                  vn.Create(&CLSID_KxComResPlginPluginObj, nullptr, 0, &IID_IClassFactory, &out));
        EXPECT_EQ(nullptr, out);
        EXPECT_EQ(nullptr, GetModuleHandleW(plugin.c_str()));
    }

    ASSERT_EQ(0u, RunRegsvr32(L"/u \"" + plugin + L"\"", ExeDir()));
    EXPECT_EQ(before, Snapshot());
    EXPECT_EQ(std::set<std::wstring>{L"-"}, Contents(kPluginClassKey));
}

// Without VnIntrfu.dll where the plug-in looks, its DllRegisterServer answers 0x80004005, which
// Wine's regsvr32 reports as a failed call of the export: 5 (3 would be a library that did not
// load, 4 a missing export).
TEST(VnIntrfu, WithoutTheLibraryRegistrationFails) {
    const std::wstring dir = ExeDir() + L"vnintrfu_missing\\";
    CreateDirectoryW(dir.c_str(), nullptr);
    ASSERT_TRUE(CopyFileW((ExeDir() + L"KxComResPlgin.dll").c_str(), (dir + L"KxComResPlgin.dll").c_str(), FALSE));
    ASSERT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesW((dir + L"VnIntrfu.dll").c_str()));
    const DWORD registered = RunRegsvr32(L"KxComResPlgin.dll", dir);
    const DWORD unregistered = RunRegsvr32(L"/u KxComResPlgin.dll", dir);
    EXPECT_TRUE(DeleteFileW((dir + L"KxComResPlgin.dll").c_str()));
    EXPECT_TRUE(RemoveDirectoryW(dir.c_str()));
    EXPECT_EQ(5u, registered);
    EXPECT_EQ(5u, unregistered);
}

TEST(VnIntrfu, RefusedCallsAnswerTheDocumentedResults) {
    VnIntrfu vn;
    ASSERT_TRUE(vn.Register && vn.Unregister && vn.Create);
    // The arguments themselves are checked in the portable part's tests; here what needs the
    // platform: the module behind the handle.
    const HINSTANCE self = vn.module.Get();
    EXPECT_EQ(VnIntrfcInvalidArg, vn.Register(nullptr, &kScratchClass, L"d", kScratchCategory, nullptr, nullptr, 1));
    EXPECT_EQ(VnIntrfcInvalidModule, vn.Register(reinterpret_cast<HINSTANCE>(static_cast<ULONG_PTR>(0x10000)),
                                                 &kScratchClass, L"d", kScratchCategory, nullptr, nullptr, 1));
    EXPECT_EQ(std::set<std::wstring>{L"-"}, Contents(std::wstring(L"CLSID\\") + kScratchClassName));
    EXPECT_EQ(VnIntrfcInvalidArg, vn.Unregister(nullptr, kScratchCategory, nullptr, nullptr));

    // Creation: refused arguments, a class that is not registered, and one whose library has no
    // class object (registered to VnIntrfu.dll itself).
    void* out = &vn;
    EXPECT_EQ(VnIntrfcInvalidArg, vn.Create(&kScratchClass, nullptr, 0, &IID_IUnknown, nullptr));
    EXPECT_EQ(VnIntrfcInvalidArg, vn.Create(&kScratchClass, nullptr, CLSCTX_LOCAL_SERVER, &IID_IUnknown, &out));
    EXPECT_EQ(nullptr, out);
    EXPECT_EQ(VnIntrfcClassNotRegistered,
              vn.Create(&kScratchClass, nullptr, CLSCTX_INPROC_SERVER, &IID_IUnknown, &out));
    ASSERT_EQ(VnIntrfcOk, vn.Register(self, &kScratchClass, L"Scratch", kScratchCategory, L"Kx.Scratch.1",
                                      L"Kx.Scratch", 2));
    EXPECT_EQ(std::set<std::wstring>{L"=" + std::wstring(kScratchClassName)}, Contents(L"Kx.Scratch.1\\CLSID"));
    EXPECT_EQ(VnIntrfcServerNotLoaded, vn.Create(&kScratchClass, nullptr, 0, &IID_IUnknown, &out));
    EXPECT_EQ(VnIntrfcOk, vn.Unregister(&kScratchClass, kScratchCategory, L"Kx.Scratch.1", L"Kx.Scratch"));
    for (const wchar_t* key : {L"Kx.Scratch.1", L"Kx.Scratch", L"CLSID\\{3C0F5E21-7A44-4E1B-910D-2B6E58C30A77}",
                               L"Component Categories\\{5B1D0C6E-2F3A-4C88-8E47-0D9A61F2B3C5}"})
        EXPECT_EQ(std::set<std::wstring>{L"-"}, Contents(key)) << key;
}

}  // namespace
