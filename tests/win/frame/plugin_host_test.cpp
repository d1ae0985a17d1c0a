// The plug-in through its exports, as a host uses it: the unload decision, the resource library
// beside the plug-in, registration without its library, and the string look-ups against a real
// resource library with strings of every edge length.
#include <windows.h>
#include <objbase.h>

#include <gtest/gtest.h>

#include <string>

#include "tests/win/common/plugin_loader.h"

namespace {

using kxtest::ExeDir;
using kxtest::PluginLibrary;

// The text of test string 510, 511 or 1023 of the stand-in resource library.
std::wstring EdgeString(int length) {
    std::wstring text;
    for (int i = 0; i < length; ++i) {
        if (length == 510) text += static_cast<wchar_t>(L'a' + i % 26);
        else if (length == 511) text += static_cast<wchar_t>(L'A' + i % 26);
        else text += static_cast<wchar_t>(L'0' + i % 10);
    }
    return text;
}

// A folder of its own beside the test with a copy of the plug-in and, optionally, a resource
// library under the name ComRcRes.dll.
std::wstring PrepareFolder(const wchar_t* name, const wchar_t* resourceLibrary) {
    std::wstring dir = ExeDir() + name + L"\\";
    CreateDirectoryW(dir.c_str(), nullptr);
    CopyFileW((ExeDir() + L"KxComResPlgin.dll").c_str(), (dir + L"KxComResPlgin.dll").c_str(), FALSE);
    DeleteFileW((dir + L"ComRcRes.dll").c_str());
    if (resourceLibrary) CopyFileW((ExeDir() + resourceLibrary).c_str(), (dir + L"ComRcRes.dll").c_str(), FALSE);
    return dir;
}

bool IsLoaded(const std::wstring& path) { return GetModuleHandleW(path.c_str()) != nullptr; }

TEST(PluginHost, TheObjectAndALockHoldTheLibraryButTheFactoryDoesNot) {
    PluginLibrary plugin;
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());
    IKxCommonResource* resource = nullptr;
    ASSERT_EQ(S_OK, plugin.Create(&resource));
    EXPECT_EQ(S_FALSE, plugin.CanUnloadNow());
    EXPECT_EQ(0u, resource->Release());
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());

    // An unmatched unlock holds nothing.
    IClassFactory* factory = nullptr;
    ASSERT_EQ(S_OK, plugin.GetClassObject(CLSID_KxComResPlginPluginObj, IID_IClassFactory,
                                          reinterpret_cast<void**>(&factory)));
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());
    EXPECT_EQ(S_OK, factory->LockServer(TRUE));
    EXPECT_EQ(S_FALSE, plugin.CanUnloadNow());
    EXPECT_EQ(S_OK, factory->LockServer(FALSE));
    EXPECT_EQ(S_OK, factory->LockServer(FALSE));
    EXPECT_EQ(S_OK, factory->LockServer(TRUE));  // back to no lock
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());
    factory->Release();
}

TEST(PluginHost, EachObjectLoadsAndFreesTheResourceLibraryOnce) {
    std::wstring dir = PrepareFolder(L"plugin_two_objects", L"ComRcRes.dll");
    std::wstring resources = dir + L"ComRcRes.dll";
    PluginLibrary plugin(dir + L"KxComResPlgin.dll");
    ASSERT_NE(nullptr, plugin.module());
    EXPECT_FALSE(IsLoaded(resources));
    IKxCommonResource* first = nullptr;
    IKxCommonResource* second = nullptr;
    ASSERT_EQ(S_OK, plugin.Create(&first));
    EXPECT_TRUE(IsLoaded(resources)) << "the resource library is the one beside the plug-in";
    ASSERT_EQ(S_OK, plugin.Create(&second));
    first->Release();
    EXPECT_TRUE(IsLoaded(resources)) << "the second object holds its own load";
    second->Release();
    EXPECT_FALSE(IsLoaded(resources)) << "each object freed its load";
}

TEST(PluginHost, WithoutComRcResTheObjectDoesNotComeUp) {
    std::wstring dir = PrepareFolder(L"plugin_no_resources", nullptr);
    PluginLibrary plugin(dir + L"KxComResPlgin.dll");
    ASSERT_NE(nullptr, plugin.module());
    IKxCommonResource* resource = reinterpret_cast<IKxCommonResource*>(0x1);
    EXPECT_EQ(E_FAIL, plugin.Create(&resource));
    EXPECT_EQ(reinterpret_cast<IKxCommonResource*>(0x1), resource);
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());
}

TEST(PluginHost, RegistrationWithoutTheRegistrationLibraryFails) {
    ASSERT_EQ(nullptr, LoadLibraryW(L"VnIntrfu.dll")) << "this test needs a machine without VnIntrfu.dll";
    PluginLibrary plugin;
    EXPECT_EQ(E_FAIL, plugin.RegisterServer());
    EXPECT_EQ(E_FAIL, plugin.UnregisterServer());
}

// The string look-ups against the stand-in resource library: GetResourceString hands over whole
// blocks of 512 characters, LoadResourceString sizes and cuts as the real LoadStringW answers.
TEST(PluginHost, EdgeLengthStrings) {
    PluginLibrary plugin(PrepareFolder(L"plugin_edge_strings", L"kx_test_strings.dll") + L"KxComResPlgin.dll");
    IKxCommonResource* resource = nullptr;
    ASSERT_EQ(S_OK, plugin.Create(&resource));
    IMalloc* malloc = nullptr;
    ASSERT_EQ(S_OK, CoGetMalloc(1, &malloc));
    const std::pair<int, SIZE_T> cases[] = {{510, 1024}, {511, 2048}, {1023, 3072}};
    for (const auto& c : cases) {
        const int n = c.first;
        const std::wstring expected = EdgeString(n);
        LPWSTR text = nullptr;
        ASSERT_EQ(S_OK, resource->GetResourceString(static_cast<UINT>(n), &text)) << n;
        EXPECT_EQ(expected, std::wstring(text)) << n;
        EXPECT_EQ(c.second, malloc->GetSize(text)) << n;
        CoTaskMemFree(text);

        INT needed = 0;
        EXPECT_EQ(S_OK, resource->LoadResourceString(static_cast<UINT>(n), nullptr, 0, &needed));
        EXPECT_EQ(n + 1, needed);
        std::wstring buffer(static_cast<size_t>(n) + 8, L'#');
        EXPECT_EQ(S_OK, resource->LoadResourceString(static_cast<UINT>(n), &buffer[0], n + 1, &needed));
        EXPECT_EQ(expected, std::wstring(buffer.c_str()));
        buffer.assign(static_cast<size_t>(n) + 8, L'#');
        needed = 0;
        EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER),
                  resource->LoadResourceString(static_cast<UINT>(n), &buffer[0], n, &needed));
        EXPECT_EQ(expected.substr(0, static_cast<size_t>(n) - 1), std::wstring(buffer.c_str()));
        EXPECT_EQ(L'#', buffer[static_cast<size_t>(n)]);
        EXPECT_EQ(n + 1, needed);
    }
    malloc->Release();
    EXPECT_EQ(0u, resource->Release());
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());
}

}  // namespace
