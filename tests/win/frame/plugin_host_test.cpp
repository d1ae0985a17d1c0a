// The plug-in through its exports, as a host uses it: class object, creation with and without an
// aggregate, the resource library beside the plug-in, the unload decision, registration without
// its library, and the string look-ups against a resource library with strings of every edge
// length.
#include <windows.h>
#include <objbase.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/win/common/plugin_loader.h"

namespace {

using kxtest::ExeDir;
using kxtest::PluginLibrary;

const GUID kOtherGuid = {0x12345678, 0x1234, 0x1234, {1, 2, 3, 4, 5, 6, 7, 8}};

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

struct Releaser {
    void operator()(IUnknown* p) const { p->Release(); }
};

TEST(PluginHost, ClassObjectCodesAndUntouchedOut) {
    PluginLibrary plugin;
    void* out = reinterpret_cast<void*>(0x1);
    EXPECT_EQ(E_NOINTERFACE, plugin.GetClassObject(CLSID_KxComResPlginPluginObj, IID_IKxCommonResource, &out));
    EXPECT_EQ(E_NOINTERFACE, plugin.GetClassObject(kOtherGuid, kOtherGuid, &out));
    EXPECT_EQ(CLASS_E_CLASSNOTAVAILABLE, plugin.GetClassObject(kOtherGuid, IID_IUnknown, &out));
    EXPECT_EQ(reinterpret_cast<void*>(0x1), out);

    for (const IID* iid : {&IID_IUnknown, &IID_IClassFactory}) {
        IClassFactory* factory = nullptr;
        ASSERT_EQ(S_OK, plugin.GetClassObject(CLSID_KxComResPlginPluginObj, *iid, reinterpret_cast<void**>(&factory)));
        ASSERT_NE(nullptr, factory);
        void* other = reinterpret_cast<void*>(0x1);
        EXPECT_EQ(E_NOINTERFACE, factory->QueryInterface(IID_IKxCommonResource, &other));
        EXPECT_EQ(nullptr, other);
        EXPECT_EQ(0u, factory->Release());
    }
}

TEST(PluginHost, ObjectAnswersItsInterfaceAndHoldsTheLibraryWhileAlive) {
    PluginLibrary plugin;
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());
    IKxCommonResource* resource = nullptr;
    ASSERT_EQ(S_OK, plugin.Create(&resource));
    EXPECT_EQ(S_FALSE, plugin.CanUnloadNow());
    IUnknown* unknown = nullptr;
    EXPECT_EQ(S_OK, resource->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&unknown)));
    IKxCommonResource* again = nullptr;
    EXPECT_EQ(S_OK, unknown->QueryInterface(IID_IKxCommonResource, reinterpret_cast<void**>(&again)));
    EXPECT_EQ(resource, again);
    again->Release();
    unknown->Release();
    void* none = reinterpret_cast<void*>(0x1);
    EXPECT_EQ(E_NOINTERFACE, resource->QueryInterface(IID_IClassFactory, &none));
    EXPECT_EQ(nullptr, none);
    EXPECT_EQ(0u, resource->Release());
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());

    // The factory does not hold the library; a lock does; an unmatched unlock holds nothing.
    IClassFactory* factory = nullptr;
    ASSERT_EQ(S_OK, plugin.GetClassObject(CLSID_KxComResPlginPluginObj, IID_IClassFactory,
                                          reinterpret_cast<void**>(&factory)));
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());
    EXPECT_EQ(S_OK, factory->LockServer(TRUE));
    EXPECT_EQ(S_FALSE, plugin.CanUnloadNow());
    EXPECT_EQ(S_OK, factory->LockServer(FALSE));
    EXPECT_EQ(S_OK, factory->LockServer(FALSE));
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());
    EXPECT_EQ(S_OK, factory->LockServer(TRUE));  // back to no lock
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());
    factory->Release();
}

// An aggregating object that hands IKxCommonResource on to its inner object.
class Outer : public IUnknown {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        ++queries;
        if (IsEqualIID(riid, IID_IUnknown)) {
            *ppv = this;
            AddRef();
            return S_OK;
        }
        return inner ? inner->QueryInterface(riid, ppv) : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++refs); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--refs); }
    IUnknown* inner = nullptr;  // the inner object's non-delegating unknown
    int queries = 0;
    int refs = 1;
};

TEST(PluginHost, CreationWithAnOuterObject) {
    PluginLibrary plugin;
    IClassFactory* factory = nullptr;
    ASSERT_EQ(S_OK, plugin.GetClassObject(CLSID_KxComResPlginPluginObj, IID_IClassFactory,
                                          reinterpret_cast<void**>(&factory)));
    Outer outer;
    void* out = reinterpret_cast<void*>(0x1);
    EXPECT_EQ(CLASS_E_NOAGGREGATION, factory->CreateInstance(&outer, IID_IKxCommonResource, &out));
    EXPECT_EQ(S_OK, plugin.CanUnloadNow()) << "no object may live after a refused aggregate";

    ASSERT_EQ(S_OK, factory->CreateInstance(&outer, IID_IUnknown, reinterpret_cast<void**>(&outer.inner)));
    factory->Release();
    IKxCommonResource* resource = nullptr;
    ASSERT_EQ(S_OK, outer.inner->QueryInterface(IID_IKxCommonResource, reinterpret_cast<void**>(&resource)));
    EXPECT_EQ(2, outer.refs) << "the interface's reference is the outer object's";

    // The interface's IUnknown is the outer object's.
    IUnknown* viaInterface = nullptr;
    ASSERT_EQ(S_OK, resource->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&viaInterface)));
    EXPECT_EQ(&outer, viaInterface);
    EXPECT_EQ(1, outer.queries);
    viaInterface->Release();
    resource->AddRef();
    EXPECT_EQ(3, outer.refs);
    resource->Release();

    LPWSTR caption = nullptr;
    EXPECT_EQ(S_OK, resource->GetResourceString(188, &caption));
    CoTaskMemFree(caption);
    resource->Release();
    EXPECT_EQ(1, outer.refs);
    EXPECT_EQ(S_FALSE, plugin.CanUnloadNow());
    EXPECT_EQ(0u, outer.inner->Release());
    EXPECT_EQ(S_OK, plugin.CanUnloadNow());
}

TEST(PluginHost, EachObjectLoadsAndFreesTheResourceLibraryOnce) {
    std::wstring dir = PrepareFolder(L"plugin_two_objects", L"ComRcRes.dll");
    std::wstring resources = dir + L"ComRcRes.dll";
    {
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
        EXPECT_EQ(S_FALSE, plugin.CanUnloadNow());
        second->Release();
        EXPECT_FALSE(IsLoaded(resources)) << "each object freed its load";
        EXPECT_EQ(S_OK, plugin.CanUnloadNow());
    }
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

// The string look-ups against the stand-in resource library.
class EdgeStrings : public ::testing::Test {
protected:
    void SetUp() override {
        dir_ = PrepareFolder(L"plugin_edge_strings", L"kx_test_strings.dll");
        plugin_.reset(new PluginLibrary(dir_ + L"KxComResPlgin.dll"));
        ASSERT_EQ(S_OK, plugin_->Create(&resource_));
        ASSERT_EQ(S_OK, CoGetMalloc(1, &malloc_));
    }
    void TearDown() override {
        if (malloc_) malloc_->Release();
        if (resource_) resource_->Release();
        if (plugin_) {
            EXPECT_EQ(S_OK, plugin_->CanUnloadNow());
        }
        plugin_.reset();
    }
    std::wstring dir_;
    std::unique_ptr<PluginLibrary> plugin_;
    IKxCommonResource* resource_ = nullptr;
    IMalloc* malloc_ = nullptr;
};

TEST_F(EdgeStrings, GetResourceStringHandsOverWholeBlocks) {
    LPWSTR text = nullptr;
    ASSERT_EQ(S_OK, resource_->GetResourceString(188, &text));
    EXPECT_EQ(std::wstring(L"Test Caption"), text);
    EXPECT_EQ(1024u, malloc_->GetSize(text));
    CoTaskMemFree(text);

    const std::pair<int, SIZE_T> cases[] = {{510, 1024}, {511, 2048}, {1023, 3072}};
    for (const auto& c : cases) {
        text = nullptr;
        ASSERT_EQ(S_OK, resource_->GetResourceString(static_cast<UINT>(c.first), &text)) << c.first;
        EXPECT_EQ(EdgeString(c.first), std::wstring(text)) << c.first;
        EXPECT_EQ(c.second, malloc_->GetSize(text)) << c.first;
        CoTaskMemFree(text);
    }

    text = reinterpret_cast<LPWSTR>(0x1);
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_INVALID_HANDLE), resource_->GetResourceString(4242, &text));
    EXPECT_EQ(nullptr, text);
}

TEST_F(EdgeStrings, LoadResourceStringSizesAndCuts) {
    for (int n : {510, 511, 1023}) {
        const std::wstring expected = EdgeString(n);
        INT needed = 0;
        EXPECT_EQ(S_OK, resource_->LoadResourceString(static_cast<UINT>(n), nullptr, 0, &needed));
        EXPECT_EQ(n + 1, needed);

        std::wstring buffer(static_cast<size_t>(n) + 8, L'#');
        needed = 0;
        EXPECT_EQ(S_OK, resource_->LoadResourceString(static_cast<UINT>(n), &buffer[0], n + 1, &needed));
        EXPECT_EQ(expected, std::wstring(buffer.c_str()));

        buffer.assign(static_cast<size_t>(n) + 8, L'#');
        needed = 0;
        EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER),
                  resource_->LoadResourceString(static_cast<UINT>(n), &buffer[0], n, &needed));
        EXPECT_EQ(expected.substr(0, static_cast<size_t>(n) - 1), std::wstring(buffer.c_str()));
        EXPECT_EQ(L'#', buffer[static_cast<size_t>(n)]);
        EXPECT_EQ(n + 1, needed);
    }
    INT needed = -7;
    WCHAR small[4];
    EXPECT_EQ(E_INVALIDARG, resource_->LoadResourceString(188, small, 4, nullptr));
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_INVALID_HANDLE), resource_->LoadResourceString(4242, small, 4, &needed));
    EXPECT_EQ(-7, needed);
}

}  // namespace
