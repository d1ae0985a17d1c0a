// The class object, the plug-in object's life (creation, Init, aggregation, release) and the
// preconditions of the interface's operations, over a fake platform.
#include "frame/class_table.h"
#include "frame/module_instance.h"
#include "frame/plugin_object.h"
#include "frame/trace_log.h"
#include "frame/vn_factory.h"

#include "compat/winsys.h"
#include "tests/unit/frame/fake_platform.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using kxtest::FakePluginPlatform;

std::vector<std::wstring> g_trace;
void Capture(LPCWSTR line, void*) { g_trace.emplace_back(line); }

// The message part of the captured trace lines.
std::vector<std::wstring> TraceMessages() {
    std::vector<std::wstring> messages;
    for (const std::wstring& line : g_trace) {
        size_t eq = line.find(L'=');
        messages.push_back(line.substr(eq + 1, line.size() - eq - 3));
    }
    return messages;
}

// Records each dialog it is asked to run, as "name [arguments]", and answers `result`.
class RecordingRunner : public IKxDialogRunner {
public:
    using Obj = KxComResPlginPluginObj;
    HRESULT Run(std::wstring call) {
        calls.push_back(std::move(call));
        return result;
    }
    HRESULT ShowNameDialog(Obj&, HWND, INT kind, INT mode, LPCWSTR, LPWSTR*) override {
        return Run(L"name " + std::to_wstring(kind) + L" " + std::to_wstring(mode));
    }
    HRESULT ShowEditTagDialog(Obj&, HWND, IKxContentSite*, IKxContentFolder*, UINT n, const KxPcPidl*) override {
        return Run(L"tags " + std::to_wstring(n));
    }
    HRESULT ShowAddToPlaylistDialog(Obj&, HWND, IKxContentFolder*, LPCWSTR, KxPidl*, LPWSTR*) override {
        return Run(L"playlist");
    }
    HRESULT ShowAddToSlideshowDialog(Obj&, HWND, IKxContentFolder*, LPCWSTR, KxPidl*, LPWSTR*) override {
        return Run(L"slideshow");
    }
    HRESULT ShowMessageBox(Obj& plugin, HWND, LPCWSTR text, LPCWSTR, UINT flags) override {
        return Run(L"message " + std::wstring(text) + L" " + std::to_wstring(flags) + L" " + plugin.DefaultCaption());
    }
    HRESULT CreateBalloonTip(Obj&, REFIID, HWND, LPCWSTR, LPCWSTR, UINT, void**) override { return Run(L"balloon"); }
    HRESULT ShowImagePropertyDialog(Obj&, HWND, IKxContentSite*, IKxContentFolder*, KxPcPidl) override {
        return Run(L"image");
    }
    HRESULT ShowVideoPropertyDialog(Obj&, HWND, IKxContentSite*, IKxContentFolder*, KxPcPidl) override {
        return Run(L"video");
    }
    HRESULT ShowAddMusicsDialog(Obj&, DWORD reserved, IKxContentSite*, IKxContentFolder*, LPCWSTR, IKxTrackList*,
                                INT*, KxPidl**) override {
        return Run(L"musics " + std::to_wstring(reserved));
    }
    std::vector<std::wstring> calls;
    HRESULT result = S_OK;
};

// An aggregating object: counts what its inner object's interfaces forward to it.
class FakeOuter : public IUnknown {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** ppv) override {
        ++queries;
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++refs); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--refs); }
    int queries = 0;
    int refs = 1;
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
        g_trace.clear();
        g_bTraceDebugString = TRUE;
        kxcompat::SetDebugOutputSink(Capture, nullptr);
    }
    void TearDown() override {
        kxcompat::ResetTaskMemFailures();
        g_bTraceDebugString = FALSE;
        kxcompat::SetDebugOutputSink(nullptr, nullptr);
        KxSetPluginPlatform(nullptr);
        KxSetDialogRunner(nullptr);
        g_hModuleInstance = nullptr;
        EXPECT_EQ(0, g_cLiveObjects);
        EXPECT_EQ(liveBlocks_, kxcompat::LiveTaskMemBlocks());
    }

    IClassFactory* Factory() {
        void* out = nullptr;
        EXPECT_EQ(S_OK, GetClassObject(CLSID_KxComResPlginPluginObj, IID_IClassFactory, &out));
        return static_cast<IClassFactory*>(out);
    }
    HRESULT Create(IKxCommonResource** out, IUnknown* outer = nullptr, REFIID iid = IID_IKxCommonResource) {
        IClassFactory* factory = Factory();
        HRESULT hr = factory->CreateInstance(outer, iid, reinterpret_cast<void**>(out));
        factory->Release();
        return hr;
    }

    FakePluginPlatform platform;
    RecordingRunner runner;

private:
    long liveBlocks_ = 0;
};

const GUID kOtherGuid = {0x12345678, 0x1234, 0x1234, {1, 2, 3, 4, 5, 6, 7, 8}};

TEST_F(PluginFrame, GetClassObjectTestsTheInterfaceFirstThenTheClass) {
    const CLSID& ours = CLSID_KxComResPlginPluginObj;
    void* out = reinterpret_cast<void*>(0x1);
    EXPECT_EQ(E_NOINTERFACE, GetClassObject(ours, IID_IKxCommonResource, &out));
    EXPECT_EQ(E_NOINTERFACE, GetClassObject(kOtherGuid, IID_IKxCommonResource, &out));
    EXPECT_EQ(CLASS_E_CLASSNOTAVAILABLE, GetClassObject(kOtherGuid, IID_IClassFactory, &out));
    EXPECT_EQ(reinterpret_cast<void*>(0x1), out);
    EXPECT_EQ(E_POINTER, GetClassObject(ours, IID_IClassFactory, nullptr));

    // Either interface gives the factory; it answers both and nothing else.
    ASSERT_EQ(S_OK, GetClassObject(ours, IID_IUnknown, &out));
    IClassFactory* factory = static_cast<IClassFactory*>(out);
    void* again = nullptr;
    EXPECT_EQ(S_OK, factory->QueryInterface(IID_IClassFactory, &again));
    EXPECT_EQ(out, again);
    EXPECT_EQ(E_NOINTERFACE, factory->QueryInterface(IID_IKxCommonResource, &again));
    EXPECT_EQ(nullptr, again);
    EXPECT_EQ(1u, factory->Release());
    EXPECT_EQ(0u, factory->Release());

    kxcompat::FailTaskMemAllocations(1);
    out = reinterpret_cast<void*>(0x1);
    EXPECT_EQ(E_OUTOFMEMORY, GetClassObject(ours, IID_IClassFactory, &out));
    EXPECT_EQ(nullptr, out);
}

TEST_F(PluginFrame, ObjectComesUpWithItsResourceLibrary) {
    IKxCommonResource* resource = nullptr;
    ASSERT_EQ(S_OK, Create(&resource));
    EXPECT_EQ((std::vector<std::wstring>{L"S:KxComResPlginPluginObj::CreateInstance>>",
                                         L"S:KxComResPlginPluginObj::Init>>",
                                         L"S:KxComResPlginPluginObj::NondelegatingQueryInterface>>"}),
              TraceMessages());
    auto* object = static_cast<KxComResPlginPluginObj*>(resource);
    EXPECT_EQ(FakePluginPlatform::Resources(), object->ResourceLibrary());
    EXPECT_EQ(std::wstring(L"C:\\Program Files\\Media\\Plugins\\ComRcRes.bff"), object->SkinFile());
    EXPECT_EQ(std::wstring(L"Media Library"), object->DefaultCaption());
    EXPECT_EQ((std::vector<std::wstring>{L"C:\\Program Files\\Media\\Plugins\\ComRcRes.dll"}), platform.loadedPaths);
    EXPECT_EQ((std::vector<HMODULE>{FakePluginPlatform::Resources()}), platform.resourceHandles);
    EXPECT_EQ(1, platform.oleInitializeCalls);
    EXPECT_EQ(1, g_cLiveObjects);

    // The interface's IUnknown is the object's own: it counts, and answers IUnknown.
    EXPECT_EQ(2u, resource->AddRef());
    void* unknown = nullptr;
    EXPECT_EQ(S_OK, resource->QueryInterface(IID_IUnknown, &unknown));
    EXPECT_EQ(static_cast<INondelegatingUnknown*>(object), unknown);
    EXPECT_EQ(2u, resource->Release());
    EXPECT_EQ(1u, resource->Release());

    g_trace.clear();
    EXPECT_EQ(0u, resource->Release());
    EXPECT_EQ((std::vector<std::wstring>{L"S:KxComResPlginPluginObj::FinalRelease>>"}), TraceMessages());
    EXPECT_EQ(1, platform.frees);
    EXPECT_EQ(1, platform.oleUninitializeCalls);
}

TEST_F(PluginFrame, InitFailuresLeaveNothingUpAndOleEndsOnce) {
    platform.existingFiles.clear();
    IKxCommonResource* resource = reinterpret_cast<IKxCommonResource*>(0x1);
    EXPECT_EQ(E_FAIL, Create(&resource));
    EXPECT_EQ(reinterpret_cast<IKxCommonResource*>(0x1), resource) << "out is not touched after a failed Init";
    EXPECT_EQ(0, platform.frees);
    EXPECT_TRUE(platform.resourceHandles.empty());
    EXPECT_EQ(1, platform.oleUninitializeCalls) << "OLE started by Init ends in FinalRelease";
    EXPECT_EQ(L"S:KxComResPlginPluginObj::FinalRelease>>", TraceMessages().back());

    g_hModuleInstance = nullptr;
    EXPECT_EQ(E_FAIL, Create(&resource));
    EXPECT_EQ(1u, platform.loadedPaths.size()) << "no load without the plug-in's own path";
    EXPECT_EQ(2, platform.oleUninitializeCalls);

    // A failed OLE start is not a failure of the object, and is not ended later.
    g_hModuleInstance = FakePluginPlatform::Plugin();
    platform.existingFiles = {L"C:\\Program Files\\Media\\Plugins\\ComRcRes.dll"};
    platform.oleResult = E_OUTOFMEMORY;
    ASSERT_EQ(S_OK, Create(&resource));
    EXPECT_EQ(E_OUTOFMEMORY, static_cast<KxComResPlginPluginObj*>(resource)->OleInitializeResult());
    resource->Release();
    EXPECT_EQ(2, platform.oleUninitializeCalls);
    EXPECT_EQ(1, platform.frees);
}

TEST_F(PluginFrame, CreateInstanceFailures) {
    IClassFactory* factory = Factory();
    kxcompat::FailTaskMemAllocations(1);
    void* out = reinterpret_cast<void*>(0x1);
    EXPECT_EQ(E_OUTOFMEMORY, factory->CreateInstance(nullptr, IID_IKxCommonResource, &out));
    EXPECT_EQ(reinterpret_cast<void*>(0x1), out);
    EXPECT_EQ((std::vector<std::wstring>{
                  L"S:KxComResPlginPluginObj::CreateInstance>>",
                  L"E:KxComResPlginPluginObj::CreateInstance>> Failed to create KxComResPlginPluginObj object"}),
              TraceMessages());
    EXPECT_EQ(0, platform.oleInitializeCalls);
    kxcompat::ResetTaskMemFailures();

    // An unknown interface destroys the new object.
    EXPECT_EQ(E_NOINTERFACE, factory->CreateInstance(nullptr, kOtherGuid, &out));
    EXPECT_EQ(nullptr, out);
    EXPECT_EQ(0, g_cLiveObjects);
    EXPECT_EQ(1, platform.frees);
    factory->Release();
}

TEST_F(PluginFrame, AggregatedObjectForwardsItsInterfacesUnknownToTheOuter) {
    FakeOuter outer;
    IClassFactory* factory = Factory();
    void* out = reinterpret_cast<void*>(0x1);
    EXPECT_EQ(CLASS_E_NOAGGREGATION, factory->CreateInstance(&outer, IID_IKxCommonResource, &out));
    EXPECT_EQ(0, g_cLiveObjects);
    EXPECT_EQ(0, platform.oleInitializeCalls) << "nothing is created for a refused aggregate";

    ASSERT_EQ(S_OK, factory->CreateInstance(&outer, IID_IUnknown, &out));
    factory->Release();
    auto* inner = static_cast<INondelegatingUnknown*>(out);
    void* resourceOut = nullptr;
    ASSERT_EQ(S_OK, inner->NondelegatingQueryInterface(IID_IKxCommonResource, &resourceOut));
    EXPECT_EQ(2, outer.refs) << "the interface's AddRef reaches the outer object";
    auto* resource = static_cast<IKxCommonResource*>(resourceOut);
    void* other = nullptr;
    resource->QueryInterface(IID_IUnknown, &other);
    EXPECT_EQ(1, outer.queries);
    resource->AddRef();
    EXPECT_EQ(3, outer.refs);
    resource->Release();
    resource->Release();
    EXPECT_EQ(1, outer.refs);
    EXPECT_EQ(1, g_cLiveObjects);
    EXPECT_EQ(0u, inner->NondelegatingRelease());
    EXPECT_EQ(0, g_cLiveObjects);
}

// An object that never ran Init: it has no resource library.
class UninitialisedObject : public KxComResPlginPluginObj {
public:
    UninitialisedObject() : KxComResPlginPluginObj(nullptr) {}
};

TEST_F(PluginFrame, OperationsWithoutTheResourceLibrary) {
    auto* object = new (std::nothrow) UninitialisedObject;
    ASSERT_NE(nullptr, object);
    IKxCommonResource* r = object;
    LPWSTR text = reinterpret_cast<LPWSTR>(0x1);
    // The library is tested before any argument.
    for (HRESULT hr : {r->GetResourceString(188, &text), r->LoadResourceString(188, nullptr, 0, nullptr),
                       r->ShowNameDialog(nullptr, 1, 1, nullptr, nullptr),
                       r->ShowEditTagDialog(nullptr, nullptr, nullptr, 0, nullptr),
                       r->ShowAddToPlaylistDialog(nullptr, nullptr, nullptr, nullptr, nullptr),
                       r->ShowAddToSlideshowDialog(nullptr, nullptr, nullptr, nullptr, nullptr),
                       r->ShowMessageBox(nullptr, L"text", nullptr, 0),
                       r->ShowImagePropertyDialog(nullptr, nullptr, nullptr, nullptr),
                       r->ShowVideoPropertyDialog(nullptr, nullptr, nullptr, nullptr),
                       r->ShowAddMusicsDialog(0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr)})
        EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), hr);
    EXPECT_EQ(nullptr, text);
    // The balloon tip tests its own preconditions.
    EXPECT_EQ(S_OK, r->CreateBalloonTip(IID_IKxBalloonTip, nullptr, nullptr, nullptr, 0, nullptr));
    EXPECT_EQ((std::vector<std::wstring>{L"balloon"}), runner.calls);
    r->Release();
}

TEST_F(PluginFrame, DialogOperationsTestTheirArgumentsThenRunTheDialog) {
    IKxCommonResource* resource = nullptr;
    ASSERT_EQ(S_OK, Create(&resource));
    auto* site = reinterpret_cast<IKxContentSite*>(0x10);
    auto* folder = reinterpret_cast<IKxContentFolder*>(0x20);
    KxPcPidl item = reinterpret_cast<KxPcPidl>(0x30);
    KxPcPidl items[] = {item};

    IKxCommonResource* r = resource;
    for (HRESULT hr : {r->ShowEditTagDialog(nullptr, nullptr, folder, 1, items),
                       r->ShowEditTagDialog(nullptr, site, nullptr, 1, items),
                       r->ShowEditTagDialog(nullptr, site, folder, 0, items),
                       r->ShowEditTagDialog(nullptr, site, folder, 1, nullptr),
                       r->ShowAddToPlaylistDialog(nullptr, nullptr, L"x", nullptr, nullptr),
                       r->ShowAddToSlideshowDialog(nullptr, nullptr, L"x", nullptr, nullptr),
                       r->ShowImagePropertyDialog(nullptr, site, nullptr, item),
                       r->ShowImagePropertyDialog(nullptr, site, folder, nullptr),
                       r->ShowVideoPropertyDialog(nullptr, site, nullptr, item),
                       r->ShowVideoPropertyDialog(nullptr, site, folder, nullptr)})
        EXPECT_EQ(E_INVALIDARG, hr);
    EXPECT_TRUE(runner.calls.empty());

    runner.result = HRESULT_FROM_WIN32(ERROR_CANCELLED);
    for (HRESULT hr : {r->ShowNameDialog(nullptr, 3, 2, nullptr, nullptr),
                       r->ShowEditTagDialog(nullptr, site, folder, 1, items),
                       r->ShowAddToPlaylistDialog(nullptr, folder, nullptr, nullptr, nullptr),
                       r->ShowAddToSlideshowDialog(nullptr, folder, nullptr, nullptr, nullptr),
                       r->ShowMessageBox(nullptr, L"Hello", nullptr, 4),
                       r->ShowImagePropertyDialog(nullptr, nullptr, folder, item),
                       r->ShowVideoPropertyDialog(nullptr, nullptr, folder, item),
                       r->ShowAddMusicsDialog(77, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr)})
        EXPECT_EQ(runner.result, hr);
    EXPECT_EQ((std::vector<std::wstring>{L"name 3 2", L"tags 1", L"playlist", L"slideshow",
                                         L"message Hello 4 Media Library", L"image", L"video", L"musics 77"}),
              runner.calls);

    // Without a dialog runner an operation is not implemented.
    KxSetDialogRunner(nullptr);
    EXPECT_EQ(E_NOTIMPL, resource->ShowMessageBox(nullptr, L"Hello", nullptr, 0));
    resource->Release();
}

// Registration: the arguments in the library's order, the mapping of its results, the stop at the
// first failing row.
struct RegistrationLog {
    std::vector<std::wstring> calls;
    std::vector<int> answers;
    size_t next = 0;
    int Answer() { return next < answers.size() ? answers[next++] : 0; }
};
RegistrationLog g_registration;

std::wstring Join(std::initializer_list<std::wstring> parts) {
    std::wstring joined;
    for (const std::wstring& part : parts) joined += (joined.empty() ? L"" : L"|") + part;
    return joined;
}
std::wstring Text(LPCWSTR s) { return s ? s : L"(null)"; }

tagVnINTRFCRESULT WINAPI FakeRegister(HINSTANCE instance, REFCLSID clsid, LPCWSTR description, LPCWSTR category,
                                      LPCWSTR sixth, LPCWSTR fifth, int flag) {
    g_registration.calls.push_back(Join({std::to_wstring(reinterpret_cast<uintptr_t>(instance)),
                                         std::to_wstring(clsid.Data1), Text(description), Text(category), Text(sixth),
                                         Text(fifth), std::to_wstring(flag)}));
    return static_cast<tagVnINTRFCRESULT>(g_registration.Answer());
}

tagVnINTRFCRESULT WINAPI FakeUnregister(REFCLSID clsid, LPCWSTR category, LPCWSTR sixth, LPCWSTR fifth) {
    g_registration.calls.push_back(Join({std::to_wstring(clsid.Data1), Text(category), Text(sixth), Text(fifth)}));
    return static_cast<tagVnINTRFCRESULT>(g_registration.Answer());
}

TEST(Registration, ResultsMapToStatuses) {
    const std::pair<int, HRESULT> table[] = {{0, S_OK},          {6, E_INVALIDARG}, {12, E_INVALIDARG},
                                             {14, E_ACCESSDENIED}, {1, E_FAIL},       {13, E_FAIL},
                                             {-1, E_FAIL}};
    for (const auto& row : table)
        EXPECT_EQ(row.second, VnIntrfcResultToStatus(static_cast<tagVnINTRFCRESULT>(row.first))) << row.first;
}

TEST(Registration, WalksTheRowsAndStopsAtTheFirstFailure) {
    const CLSID second = {2, 0, 0, {0}};
    const CVnClassTableRow rows[] = {
        g_VnClassTable[0],
        {&second, nullptr, L"Second", L"CATEGORY_Second", L"five", L"six"},
    };
    HINSTANCE instance = reinterpret_cast<HINSTANCE>(0x40);

    g_registration = {};
    EXPECT_EQ(S_OK, VnRegisterClassTable(rows, 2, instance, FakeRegister));
    const std::wstring first = std::to_wstring(CLSID_KxComResPlginPluginObj.Data1);
    EXPECT_EQ((std::vector<std::wstring>{
                  L"64|" + first + L"|Commom Resource Plugin Object|CATEGORY_KxCommonResource|(null)|(null)|1",
                  L"64|2|Second|CATEGORY_Second|six|five|1"}),
              g_registration.calls);

    g_registration = {};
    g_registration.answers = {14};
    EXPECT_EQ(E_ACCESSDENIED, VnRegisterClassTable(rows, 2, instance, FakeRegister));
    EXPECT_EQ(1u, g_registration.calls.size());

    g_registration = {};
    g_registration.answers = {0, 6};
    EXPECT_EQ(E_INVALIDARG, VnUnregisterClassTable(rows, 2, FakeUnregister));
    EXPECT_EQ((std::vector<std::wstring>{first + L"|CATEGORY_KxCommonResource|(null)|(null)",
                                         L"2|CATEGORY_Second|six|five"}),
              g_registration.calls);

    EXPECT_EQ(E_FAIL, VnRegisterClassTable(rows, 2, instance, nullptr));
    EXPECT_EQ(E_FAIL, VnUnregisterClassTable(rows, 2, nullptr));
}

}  // namespace
