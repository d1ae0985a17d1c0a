// The class object, the plug-in object's life (creation, Init, aggregation, release), the
// preconditions of the interface's operations and the registration walk, over a fake platform.
#include "compat/winsys.h"
#include "frame/class_table.h"
#include "frame/module_instance.h"
#include "frame/plugin_object.h"
#include "frame/trace_log.h"
#include "frame/vn_factory.h"

#include "tests/unit/frame/fake_platform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using kxtest::FakePluginPlatform;
using Obj = KxComResPlginPluginObj;
using Site = IKxContentSite*;
using Folder = IKxContentFolder*;

const HRESULT kNoLibrary = static_cast<HRESULT>(0x80070002u);
const HRESULT kRan = static_cast<HRESULT>(0x800704C7u);  // what the dialog runner answers
const GUID kOther = {0x12345678, 0x1234, 0x1234, {1, 2, 3, 4, 5, 6, 7, 8}};
void* const kUntouched = reinterpret_cast<void*>(0x1);

struct MockRunner : IKxDialogRunner {
    MOCK_METHOD(HRESULT, ShowNameDialog, (Obj&, HWND, INT, INT, LPCWSTR, LPWSTR*), (override));
    MOCK_METHOD(HRESULT, ShowEditTagDialog, (Obj&, HWND, Site, Folder, UINT, const KxPcPidl*), (override));
    MOCK_METHOD(HRESULT, ShowAddToPlaylistDialog, (Obj&, HWND, Folder, LPCWSTR, KxPidl*, LPWSTR*), (override));
    MOCK_METHOD(HRESULT, ShowAddToSlideshowDialog, (Obj&, HWND, Folder, LPCWSTR, KxPidl*, LPWSTR*), (override));
    MOCK_METHOD(HRESULT, ShowMessageBox, (Obj&, HWND, LPCWSTR, LPCWSTR, UINT), (override));
    MOCK_METHOD(HRESULT, CreateBalloonTip, (Obj&, REFIID, HWND, LPCWSTR, LPCWSTR, UINT, void**), (override));
    MOCK_METHOD(HRESULT, ShowImagePropertyDialog, (Obj&, HWND, Site, Folder, KxPcPidl), (override));
    MOCK_METHOD(HRESULT, ShowVideoPropertyDialog, (Obj&, HWND, Site, Folder, KxPcPidl), (override));
    MOCK_METHOD(HRESULT, ShowAddMusicsDialog, (Obj&, DWORD, Site, Folder, LPCWSTR, IKxTrackList*, INT*, KxPidl**),
                (override));
};

// An aggregating object: counts what its inner object's interfaces forward to it.
struct FakeOuter : IUnknown {
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** ppv) override {
        ++queries;
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++refs); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--refs); }
    int queries = 0, refs = 1;
};

// An object that never ran Init: it has no resource library.
struct UninitialisedObject : Obj {
    UninitialisedObject() : Obj(nullptr) {}
};

HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** out) {
    return VnGetClassObject(g_VnClassTable, g_cVnClassTableRows, clsid, iid, out);
}

class PluginFrame : public ::testing::Test {
protected:
    void SetUp() override {
        liveBlocks_ = kxcompat::LiveTaskMemBlocks();
        g_hModuleInstance = FakePluginPlatform::Plugin();
        KxSetPluginPlatform(&platform);
        KxSetDialogRunner(&runner);
        testing::DefaultValue<HRESULT>::Set(kRan);
    }
    void TearDown() override {
        testing::DefaultValue<HRESULT>::Clear();
        kxcompat::ResetTaskMemFailures();
        KxSetPluginPlatform(nullptr);
        KxSetDialogRunner(nullptr);
        g_hModuleInstance = nullptr;
        EXPECT_EQ(0, g_cLiveObjects);
        EXPECT_EQ(liveBlocks_, kxcompat::LiveTaskMemBlocks());
    }
    HRESULT Create(void** out, IUnknown* outer = nullptr, REFIID iid = IID_IKxCommonResource) {
        IClassFactory* factory = nullptr;
        EXPECT_EQ(S_OK, GetClassObject(CLSID_KxComResPlginPluginObj, IID_IClassFactory, (void**)&factory));
        HRESULT hr = factory->CreateInstance(outer, iid, out);
        factory->Release();
        return hr;
    }

    FakePluginPlatform platform;
    testing::NiceMock<MockRunner> runner;

private:
    long liveBlocks_ = 0;
};

// DllGetClassObject tests the interface, then the class, then the out pointer; CreateInstance
// refuses an aggregate that asks for more than IUnknown. Nothing stays alive after a refusal.
TEST_F(PluginFrame, RefusedClassObjectsAndInstancesLeaveNothingAlive) {
    FakeOuter outer;
    const CLSID& ours = CLSID_KxComResPlginPluginObj;
    auto get = [](const GUID& clsid, const GUID& iid, bool nullOut) {
        return [&clsid, &iid, nullOut](void** out) { return GetClassObject(clsid, iid, nullOut ? nullptr : out); };
    };
    auto create = [this](IUnknown* outer, const GUID& iid, bool nullOut) {
        return [this, outer, &iid, nullOut](void** out) { return Create(nullOut ? nullptr : out, outer, iid); };
    };
    const struct {
        std::function<HRESULT(void**)> call;
        int failAllocation;  // the nth allocation from now fails; the factory is the first block
        HRESULT status;
        void* out;
    } rows[] = {
        {get(ours, IID_IKxCommonResource, false), 0, E_NOINTERFACE, kUntouched},
        {get(kOther, IID_IKxCommonResource, false), 0, E_NOINTERFACE, kUntouched},
        {get(kOther, IID_IClassFactory, false), 0, CLASS_E_CLASSNOTAVAILABLE, kUntouched},
        {get(ours, IID_IClassFactory, true), 0, E_POINTER, kUntouched},
        {get(ours, IID_IClassFactory, false), 1, E_OUTOFMEMORY, nullptr},
        {create(&outer, IID_IKxCommonResource, false), 0, CLASS_E_NOAGGREGATION, kUntouched},
        {create(nullptr, IID_IKxCommonResource, true), 0, E_POINTER, kUntouched},
        {create(nullptr, IID_IKxCommonResource, false), 2, E_OUTOFMEMORY, kUntouched},
        {create(nullptr, kOther, false), 0, E_NOINTERFACE, nullptr},
    };
    for (const auto& row : rows) {
        void* out = kUntouched;
        g_szTraceMessage[0] = L'\0';
        if (row.failAllocation) kxcompat::FailTaskMemAllocations(row.failAllocation);
        EXPECT_EQ(row.status, row.call(&out));
        EXPECT_EQ(row.out, out) << std::hex << row.status;
        EXPECT_EQ(0, g_cLiveObjects);
        // the object that could not be made says so in the trace
        if (row.failAllocation == 2) {
            EXPECT_EQ(std::wstring(L"E:KxComResPlginPluginObj::CreateInstance>> Failed to create "
                                   L"KxComResPlginPluginObj object"),
                      g_szTraceMessage);
        }
    }
    EXPECT_EQ(1, platform.oleStarts) << "only the object whose interface was refused came up";
    EXPECT_EQ(1, platform.frees);

    // Either interface gives the factory; it answers both with itself, and nothing else.
    IClassFactory* factory = nullptr;
    ASSERT_EQ(S_OK, GetClassObject(ours, IID_IUnknown, (void**)&factory));
    void* again = nullptr;
    EXPECT_EQ(S_OK, factory->QueryInterface(IID_IClassFactory, &again));
    EXPECT_EQ(factory, again);
    EXPECT_EQ(E_NOINTERFACE, factory->QueryInterface(IID_IKxCommonResource, &again));
    EXPECT_EQ(nullptr, again);
    EXPECT_EQ(1u, factory->Release());
    EXPECT_EQ(0u, factory->Release());
}

std::vector<std::wstring> g_debugLines;

TEST_F(PluginFrame, ObjectComesUpWithItsResourceLibraryAndOleEndsOnlyWhenItStarted) {
    // The object's life in the trace, message by message (lines are "<head>=<message>\r\n").
    g_debugLines.clear();
    g_bTraceDebugString = TRUE;
    kxcompat::SetDebugOutputSink([](LPCWSTR line, void*) { g_debugLines.emplace_back(line); }, nullptr);
    IKxCommonResource* resource = nullptr;
    ASSERT_EQ(S_OK, Create((void**)&resource));
    resource->AddRef();
    resource->Release();
    g_bTraceDebugString = FALSE;
    kxcompat::SetDebugOutputSink(nullptr, nullptr);
    std::vector<std::wstring> messages;
    for (const std::wstring& line : g_debugLines) messages.push_back(line.substr(line.find(L'=') + 1));
    EXPECT_EQ((std::vector<std::wstring>{L"S:KxComResPlginPluginObj::CreateInstance>>\r\n",
                                         L"S:KxComResPlginPluginObj::Init>>\r\n",
                                         L"S:KxComResPlginPluginObj::NondelegatingQueryInterface>>\r\n"}),
              messages);

    auto* object = static_cast<Obj*>(resource);
    EXPECT_EQ(std::vector<std::wstring>{L"C:\\Plugins\\ComRcRes.dll"}, platform.loaded);
    EXPECT_EQ(std::vector<HMODULE>{FakePluginPlatform::Resources()}, platform.resourceHandles);
    EXPECT_EQ(std::wstring(L"C:\\Plugins\\ComRcRes.bff"), object->SkinFile());
    EXPECT_EQ(std::wstring(L"Media Library"), object->DefaultCaption());
    // Not aggregated, the object is its own outer unknown.
    void* unknown = nullptr;
    EXPECT_EQ(S_OK, resource->QueryInterface(IID_IUnknown, &unknown));
    EXPECT_EQ(object->NondelegatingUnknown(), unknown);
    EXPECT_EQ(1u, resource->Release());
    EXPECT_EQ(0u, resource->Release());
    EXPECT_EQ(L"S:KxComResPlginPluginObj::FinalRelease>>", std::wstring(g_szTraceMessage));
    EXPECT_EQ(1, platform.frees);
    EXPECT_EQ(1, platform.oleEnds);

    // Without the resource library the object does not come up; the OLE start of Init still ends.
    void* out = kUntouched;
    platform.resourcePath.clear();
    EXPECT_EQ(E_FAIL, Create(&out));
    EXPECT_EQ(kUntouched, out);
    EXPECT_EQ(2, platform.oleEnds);
    // A failed OLE start does not stop the object, and is not ended later; a start that found the
    // thread in OLE already (S_FALSE) counts, and is ended.
    platform.resourcePath = L"C:\\Plugins\\ComRcRes.dll";
    platform.oleResult = E_OUTOFMEMORY;
    ASSERT_EQ(S_OK, Create(&out));
    static_cast<IKxCommonResource*>(out)->Release();
    EXPECT_EQ(2, platform.oleEnds);
    platform.oleResult = S_FALSE;
    ASSERT_EQ(S_OK, Create(&out));
    static_cast<IKxCommonResource*>(out)->Release();
    EXPECT_EQ(3, platform.oleEnds);
}

TEST_F(PluginFrame, AggregatedObjectForwardsItsInterfacesUnknownToTheOuter) {
    FakeOuter outer;
    void* out = nullptr;
    ASSERT_EQ(S_OK, Create(&out, &outer, IID_IUnknown));
    auto* inner = static_cast<INondelegatingUnknown*>(out);
    void* resource = nullptr;
    ASSERT_EQ(S_OK, inner->NondelegatingQueryInterface(IID_IKxCommonResource, &resource));
    EXPECT_EQ(2, outer.refs) << "the interface's AddRef reaches the outer object";
    static_cast<IKxCommonResource*>(resource)->QueryInterface(IID_IUnknown, &out);
    EXPECT_EQ(1, outer.queries);
    static_cast<IKxCommonResource*>(resource)->Release();
    EXPECT_EQ(1, outer.refs);
    EXPECT_EQ(0u, inner->NondelegatingRelease());
}

// Each operation: the resource library first (the balloon tip tests its own preconditions), then
// its required arguments, then the dialog, which is not implemented without a runner. (Every
// refused argument through the DLL is in the Wine tests' table; these rows pin the order.)
TEST_F(PluginFrame, EachOperationTestsItsPreconditionsInOrder) {
    IKxCommonResource* live = nullptr;
    ASSERT_EQ(S_OK, Create((void**)&live));
    IKxCommonResource* bare = new (std::nothrow) UninitialisedObject;
    ASSERT_NE(nullptr, bare);
    auto* site = reinterpret_cast<Site>(0x10);
    auto* folder = reinterpret_cast<Folder>(0x20);
    KxPcPidl item = reinterpret_cast<KxPcPidl>(0x30);
    KxPcPidl items[] = {item};
    INT needed = 0;
    KxPidl outItem = nullptr;
    LPWSTR outName = nullptr;
    using R = IKxCommonResource*;
#define OP(call) [&](R r) { return r->call; }
    const struct Row {
        std::function<HRESULT(R)> call;
        HRESULT status;
        bool needsLibrary = true;
    } rows[] = {
        {OP(GetResourceString(188, nullptr)), E_POINTER},
        {OP(LoadResourceString(188, nullptr, 0, &needed)), S_OK},
        {OP(ShowNameDialog(nullptr, 3, 2, nullptr, nullptr)), kRan},
        {OP(ShowEditTagDialog(nullptr, nullptr, folder, 1, items)), E_INVALIDARG},
        {OP(ShowEditTagDialog(nullptr, site, nullptr, 1, items)), E_INVALIDARG},
        {OP(ShowEditTagDialog(nullptr, site, folder, 1, items)), kRan},
        {OP(ShowAddToPlaylistDialog(nullptr, folder, nullptr, nullptr, &outName)), E_INVALIDARG},
        {OP(ShowAddToPlaylistDialog(nullptr, folder, nullptr, &outItem, nullptr)), E_INVALIDARG},
        {OP(ShowAddToPlaylistDialog(nullptr, folder, nullptr, &outItem, &outName)), kRan},
        {OP(ShowAddToSlideshowDialog(nullptr, nullptr, L"x", nullptr, nullptr)), E_INVALIDARG},
        {OP(ShowAddToSlideshowDialog(nullptr, folder, nullptr, &outItem, &outName)), kRan},
        {OP(ShowMessageBox(nullptr, nullptr, nullptr, 0)), kRan},
        {OP(ShowImagePropertyDialog(nullptr, site, folder, nullptr)), E_INVALIDARG},
        {OP(ShowImagePropertyDialog(nullptr, nullptr, folder, item)), kRan},
        {OP(ShowVideoPropertyDialog(nullptr, site, folder, nullptr)), E_INVALIDARG},
        {OP(ShowVideoPropertyDialog(nullptr, nullptr, folder, item)), kRan},
        {OP(ShowAddMusicsDialog(0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr)), kRan},
        {OP(CreateBalloonTip(IID_IKxBalloonTip, nullptr, nullptr, nullptr, 0, nullptr)), kRan, false},
    };
#undef OP
    for (size_t i = 0; i < sizeof(rows) / sizeof(rows[0]); ++i) {
        const Row& row = rows[i];
        EXPECT_EQ(row.status, row.call(live)) << "row " << i;
        EXPECT_EQ(row.needsLibrary ? kNoLibrary : kRan, row.call(bare)) << "row " << i;
        KxSetDialogRunner(nullptr);
        EXPECT_EQ(row.status == kRan ? E_NOTIMPL : row.status, row.call(live)) << "row " << i;
        KxSetDialogRunner(&runner);
    }
    EXPECT_EQ(14, needed);
    bare->Release();
    live->Release();
}

// A runner, and a platform's string table, that throw: out of memory, or anything else.
struct Thrower {
    bool outOfMemory = true;
    HRESULT Throw() const {
        if (outOfMemory) throw std::bad_alloc();
        throw 42;
    }
};
struct ThrowingRunner : IKxDialogRunner, Thrower {
    HRESULT ShowNameDialog(Obj&, HWND, INT, INT, LPCWSTR, LPWSTR*) override { return Throw(); }
    HRESULT ShowEditTagDialog(Obj&, HWND, Site, Folder, UINT, const KxPcPidl*) override { return Throw(); }
    HRESULT ShowAddToPlaylistDialog(Obj&, HWND, Folder, LPCWSTR, KxPidl*, LPWSTR*) override { return Throw(); }
    HRESULT ShowAddToSlideshowDialog(Obj&, HWND, Folder, LPCWSTR, KxPidl*, LPWSTR*) override { return Throw(); }
    HRESULT ShowMessageBox(Obj&, HWND, LPCWSTR, LPCWSTR, UINT) override { return Throw(); }
    HRESULT CreateBalloonTip(Obj&, REFIID, HWND, LPCWSTR, LPCWSTR, UINT, void**) override { return Throw(); }
    HRESULT ShowImagePropertyDialog(Obj&, HWND, Site, Folder, KxPcPidl) override { return Throw(); }
    HRESULT ShowVideoPropertyDialog(Obj&, HWND, Site, Folder, KxPcPidl) override { return Throw(); }
    HRESULT ShowAddMusicsDialog(Obj&, DWORD, Site, Folder, LPCWSTR, IKxTrackList*, INT*, KxPidl**) override {
        return Throw();
    }
};
struct ThrowingStrings : FakePluginPlatform, Thrower {
    bool on = false;
    int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int cchBuffer) override {
        return on ? Throw() : FakePluginPlatform::LoadStringW(module, id, buffer, cchBuffer);
    }
};

// No exception leaves an operation: out of memory answers 0x8007000E, anything else 0x8000FFFF,
// and the trace says which operation caught it.
TEST_F(PluginFrame, AnExceptionInAnyOperationBecomesAStatusAndATraceLine) {
    ThrowingStrings strings;
    ThrowingRunner thrower;
    KxSetPluginPlatform(&strings);
    KxSetDialogRunner(&thrower);
    IKxCommonResource* r = nullptr;
    strings.on = true;  // the start itself throws: the half-made object goes
    g_debugLines.clear();
    g_bTraceDebugString = TRUE;
    kxcompat::SetDebugOutputSink([](LPCWSTR line, void*) { g_debugLines.emplace_back(line); }, nullptr);
    EXPECT_EQ(E_OUTOFMEMORY, Create((void**)&r));
    g_bTraceDebugString = FALSE;
    kxcompat::SetDebugOutputSink(nullptr, nullptr);
    ASSERT_GE(g_debugLines.size(), 3u);  // creation, start, the exception, the release
    EXPECT_NE(std::wstring::npos,
              g_debugLines[2].find(L"=E:CVnFactory::CreateInstance>> Caught an exception: out of memory\r\n"));
    EXPECT_EQ(0, g_cLiveObjects);
    strings.on = false;
    ASSERT_EQ(S_OK, Create((void**)&r));
    strings.on = true;
    auto* folder = reinterpret_cast<Folder>(0x20);
    KxPcPidl item = reinterpret_cast<KxPcPidl>(0x30);
    LPWSTR text = nullptr;
    INT needed = 0;
    KxPidl outItem = nullptr;
    LPWSTR outName = nullptr;
    const std::vector<std::pair<const wchar_t*, std::function<HRESULT()>>> rows = {
        {L"GetResourceString", [&] { return r->GetResourceString(188, &text); }},
        {L"LoadResourceString", [&] { return r->LoadResourceString(188, nullptr, 0, &needed); }},
        {L"ShowNameDialog", [&] { return r->ShowNameDialog(nullptr, 3, 2, nullptr, nullptr); }},
        {L"ShowEditTagDialog",
         [&] { return r->ShowEditTagDialog(nullptr, reinterpret_cast<Site>(0x10), folder, 1, &item); }},
        {L"ShowAddToPlaylistDialog",
         [&] { return r->ShowAddToPlaylistDialog(nullptr, folder, nullptr, &outItem, &outName); }},
        {L"ShowAddToSlideshowDialog",
         [&] { return r->ShowAddToSlideshowDialog(nullptr, folder, nullptr, &outItem, &outName); }},
        {L"ShowMessageBox", [&] { return r->ShowMessageBox(nullptr, nullptr, nullptr, 0); }},
        {L"CreateBalloonTip",
         [&] { return r->CreateBalloonTip(IID_IKxBalloonTip, nullptr, nullptr, nullptr, 0, nullptr); }},
        {L"ShowImagePropertyDialog", [&] { return r->ShowImagePropertyDialog(nullptr, nullptr, folder, item); }},
        {L"ShowVideoPropertyDialog", [&] { return r->ShowVideoPropertyDialog(nullptr, nullptr, folder, item); }},
        {L"ShowAddMusicsDialog",
         [&] { return r->ShowAddMusicsDialog(0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr); }},
    };
    for (bool outOfMemory : {true, false}) {
        strings.outOfMemory = thrower.outOfMemory = outOfMemory;
        for (const auto& row : rows) {
            EXPECT_EQ(outOfMemory ? E_OUTOFMEMORY : E_UNEXPECTED, row.second()) << row.first;
            EXPECT_EQ(std::wstring(L"E:KxComResPlginPluginObj::") + row.first + L">> Caught an exception: " +
                          (outOfMemory ? L"out of memory" : L"unexpected error"),
                      g_szTraceMessage);
        }
    }
    EXPECT_EQ(0u, r->Release());
    KxSetPluginPlatform(&platform);
}

// Registration: the arguments in the registration library's order, its results mapped, the walk
// stopped at the first failing row.
std::vector<std::wstring> g_registrations;
int g_answer;
std::wstring Text(LPCWSTR s) { return s ? L"|" + std::wstring(s) : L"|-"; }
tagVnINTRFCRESULT WINAPI FakeRegister(HINSTANCE instance, REFCLSID clsid, LPCWSTR description, LPCWSTR category,
                                      LPCWSTR sixth, LPCWSTR fifth, int flag) {
    g_registrations.push_back(std::to_wstring(reinterpret_cast<uintptr_t>(instance)) + L"|" +
                              std::to_wstring(clsid.Data1) + Text(description) + Text(category) + Text(sixth) +
                              Text(fifth) + L"|" + std::to_wstring(flag));
    return static_cast<tagVnINTRFCRESULT>(g_answer);
}
tagVnINTRFCRESULT WINAPI FakeUnregister(REFCLSID clsid, LPCWSTR category, LPCWSTR sixth, LPCWSTR fifth) {
    g_registrations.push_back(std::to_wstring(clsid.Data1) + Text(category) + Text(sixth) + Text(fifth));
    return static_cast<tagVnINTRFCRESULT>(g_answer);
}

TEST(Registration, WalksTheRowsInTheLibrarysOrderMapsItsResultsAndStopsAtTheFirstFailure) {
    const CLSID second = {2, 0, 0, {0}};
    const CVnClassTableRow rows[] = {g_VnClassTable[0], {&second, nullptr, L"Second", L"CAT_2", L"five", L"six"}};
    HINSTANCE instance = reinterpret_cast<HINSTANCE>(0x40);
    const std::wstring ours = std::to_wstring(CLSID_KxComResPlginPluginObj.Data1) + L"|";
    g_answer = 0;
    EXPECT_EQ(S_OK, VnRegisterClassTable(rows, 2, instance, FakeRegister));
    EXPECT_EQ(S_OK, VnUnregisterClassTable(rows, 2, FakeUnregister));
    EXPECT_EQ((std::vector<std::wstring>{L"64|" + ours + L"Commom Resource Plugin Object|"
                                                                L"CATEGORY_KxCommonResource|-|-|1",
                                         L"64|2|Second|CAT_2|six|five|1", ours + L"CATEGORY_KxCommonResource|-|-",
                                         L"2|CAT_2|six|five"}),
              g_registrations);

    const std::pair<int, HRESULT> results[] = {{6, E_INVALIDARG}, {12, E_INVALIDARG}, {14, E_ACCESSDENIED},
                                               {1, E_FAIL},       {13, E_FAIL},       {-1, E_FAIL}};
    for (const auto& result : results) {
        g_registrations.clear();
        g_answer = result.first;
        EXPECT_EQ(result.second, VnRegisterClassTable(rows, 2, instance, FakeRegister)) << result.first;
        EXPECT_EQ(result.second, VnUnregisterClassTable(rows, 2, FakeUnregister)) << result.first;
        EXPECT_EQ(2u, g_registrations.size()) << "each walk stops at its first row";
    }
    EXPECT_EQ(E_FAIL, VnRegisterClassTable(rows, 2, instance, nullptr));
    EXPECT_EQ(E_FAIL, VnUnregisterClassTable(rows, 2, nullptr));
}

}  // namespace
