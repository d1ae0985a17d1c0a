// The plug-in through its exports, as a host uses it: the unload decision, the strings of
// ComRcRes.dll and the task memory a host gets back, and the string look-ups against a resource
// library beside the plug-in with strings of the growth's edge lengths.
#include <windows.h>
#include <objbase.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

#include "host/library/taskmem_audit.h"
#include "tests/win/common/plugin_loader.h"

namespace {

using kxtest::ExeDir;
using kxtest::PluginLibrary;

TEST(PluginHost, TheObjectAndALockHoldTheLibraryButTheFactoryDoesNot) {
    PluginLibrary plugin;
    IKxCommonResource* resource = nullptr;
    ASSERT_EQ(S_OK, plugin.Create(&resource));
    EXPECT_EQ(S_FALSE, plugin.CanUnloadNow());
    EXPECT_EQ(0u, resource->Release());
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());

    IClassFactory* factory = nullptr;
    ASSERT_EQ(S_OK, plugin.GetClassObject(CLSID_KxComResPlginPluginObj, IID_IClassFactory, (void**)&factory));
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());
    factory->LockServer(TRUE);
    EXPECT_EQ(S_FALSE, plugin.CanUnloadNow());
    factory->LockServer(FALSE);
    factory->LockServer(FALSE);  // an unmatched unlock holds nothing
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());
    factory->LockServer(TRUE);
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());
    factory->Release();
}

// A thread that makes two objects (inside the host's own OLE start, when asked), lets them go
// and then tries to join the multithreaded apartment.
struct OleRun {
    const PluginLibrary* plugin;
    bool hostInOle;
    HRESULT joined;
};
DWORD WINAPI RunTwoObjectsOnANewThread(void* p) {
    OleRun& r = *static_cast<OleRun*>(p);
    if (r.hostInOle && FAILED(OleInitialize(nullptr))) return 1;
    IKxCommonResource* first = nullptr;
    IKxCommonResource* second = nullptr;
    if (r.plugin->Create(&first) == S_OK && r.plugin->Create(&second) == S_OK) second->Release();
    if (first) first->Release();
    if (r.hostInOle) OleUninitialize();
    r.joined = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    if (SUCCEEDED(r.joined)) CoUninitialize();
    return 0;
}

// Each object starts OLE on its thread and ends it when it goes, also when the thread was in OLE
// already (the host's own start, or a second object): afterwards the thread has left OLE and can
// join the multithreaded apartment.
TEST(PluginHost, EveryObjectEndsItsOleStartEvenWhenTheThreadWasInOleAlready) {
    PluginLibrary plugin;
    for (bool hostInOle : {false, true}) {
        OleRun run = {&plugin, hostInOle, E_FAIL};
        HANDLE thread = CreateThread(nullptr, 0, RunTwoObjectsOnANewThread, &run, 0, nullptr);
        ASSERT_NE(nullptr, thread);
        WaitForSingleObject(thread, INFINITE);
        CloseHandle(thread);
        EXPECT_EQ(S_OK, run.joined) << "host in OLE: " << hostInOle;
    }
}

// Every string the dialogs, the balloon tips and the properties lists load is in ComRcRes.dll, and
// everything handed out is the host's to free: a malloc spy sees no block left behind.
TEST(PluginHost, ResourceLibraryHoldsEveryStringTheComponentLoadsAndNoBlockStaysBehind) {
    const UINT ids[] = {
        2,   3,   8,   26,  35,  42,  46,  47,  49,  50,  52,  59,  63,  64,  65,  69,  77,  78,  103, 104,
        106, 107, 108, 109, 110, 111, 112, 113, 114, 115, 116, 117, 118, 119, 121, 122, 123, 124, 125, 126,
        128, 129, 130, 131, 132, 133, 134, 135, 136, 137, 138, 139, 140, 141, 142, 143, 144, 145, 146, 147,
        148, 149, 150, 151, 152, 153, 154, 155, 156, 157, 158, 159, 160, 161, 162, 163, 164, 165, 166, 167,
        168, 169, 170, 171, 172, 173, 174, 175, 176, 177, 178, 179, 180, 181, 182, 188, 189, 190, 191, 192,
        193, 194, 195, 196, 197, 198, 199, 200, 201, 202, 203, 204, 205, 206, 207, 208, 217, 218, 243, 247,
    };
    PluginLibrary plugin;
    ASSERT_TRUE(kxhost::StartTaskMemAudit());
    IKxCommonResource* resource = nullptr;
    ASSERT_EQ(S_OK, plugin.Create(&resource));
    std::map<UINT, std::wstring> strings;
    for (UINT id : ids) {
        LPWSTR text = nullptr;
        ASSERT_EQ(S_OK, resource->GetResourceString(id, &text)) << "string " << id;
        EXPECT_EQ(2, kxhost::LiveTaskMemBlocks()) << "the object and the string";
        const std::wstring& s = strings[id] = text;
        CoTaskMemFree(text);
        // Only the length warning carries a conversion, one number.
        EXPECT_EQ(id == 247 ? 1 : 0, std::count(s.begin(), s.end(), L'%')) << "string " << id;
    }
    EXPECT_EQ(0u, resource->Release());
    EXPECT_EQ(0, kxhost::LiveTaskMemBlocks());
    kxhost::StopTaskMemAudit();
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());
    EXPECT_NE(std::wstring::npos, strings[247].find(L"%d"));
    EXPECT_EQ(L"Media Library", strings[188]);
    // The file dialog's filter: pairs of description and pattern, ended by "||".
    EXPECT_EQ(strings[106].size() - 2, strings[106].rfind(L"||"));
}

// The resource library is the one beside the plug-in: a stand-in there gives strings at the edges
// of the growth. GetResourceString hands over whole blocks of 512 characters, LoadResourceString
// sizes and cuts, as the platform's LoadStringW answers.
TEST(PluginHost, EdgeLengthStrings) {
    const std::wstring dir = ExeDir() + L"plugin_edge_strings\\";
    CreateDirectoryW(dir.c_str(), nullptr);
    CopyFileW((ExeDir() + L"KxComResPlgin.dll").c_str(), (dir + L"KxComResPlgin.dll").c_str(), FALSE);
    CopyFileW((ExeDir() + L"kx_test_strings.dll").c_str(), (dir + L"ComRcRes.dll").c_str(), FALSE);
    PluginLibrary plugin(dir + L"KxComResPlgin.dll");
    IKxCommonResource* resource = nullptr;
    ASSERT_EQ(S_OK, plugin.Create(&resource));
    IMalloc* malloc = nullptr;
    ASSERT_EQ(S_OK, CoGetMalloc(1, &malloc));
    const std::pair<int, SIZE_T> cases[] = {{510, 1024}, {511, 2048}, {1023, 3072}};  // length, block bytes
    for (const auto& c : cases) {
        const int n = c.first;
        std::wstring expected;
        for (int i = 0; i < n; ++i) expected += static_cast<wchar_t>(L'0' + i % 10);
        LPWSTR text = nullptr;
        ASSERT_EQ(S_OK, resource->GetResourceString(static_cast<UINT>(n), &text)) << n;
        EXPECT_EQ(expected, std::wstring(text)) << n;
        EXPECT_EQ(c.second, malloc->GetSize(text)) << n;
        CoTaskMemFree(text);

        std::wstring buffer(static_cast<size_t>(n) + 8, L'#');
        INT needed = 0;
        EXPECT_EQ(static_cast<HRESULT>(0x8007007Au),
                  resource->LoadResourceString(static_cast<UINT>(n), &buffer[0], n, &needed));
        buffer.resize(static_cast<size_t>(n) + 1);
        EXPECT_EQ(expected.substr(0, static_cast<size_t>(n) - 1) + L'\0' + L'#', buffer);
        EXPECT_EQ(n + 1, needed);
    }
    malloc->Release();
    EXPECT_EQ(0u, resource->Release());
}

}  // namespace
