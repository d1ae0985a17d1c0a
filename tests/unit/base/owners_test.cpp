// The owners: each gives back exactly what it holds, once; an out parameter starts empty and an
// object handed out with a failure is still released.
#include "base/owners.h"

#include <gtest/gtest.h>

namespace {

struct Counted : IUnknown {
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** ppv) override {
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++refs); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--refs); }
    int refs = 1;
};

// A QueryInterface-style call that hands out `object` (with a reference) and answers `hr`.
HRESULT HandOut(Counted* object, HRESULT hr, void** ppv) {
    object->AddRef();
    *ppv = static_cast<IUnknown*>(object);
    return hr;
}

TEST(Owners, InterfacePointerReleasesWhatItHoldsOnceWhateverTheCallAnswered) {
    Counted a, b;
    {
        CKxComPtr<IUnknown> p;
        EXPECT_EQ(E_FAIL, HandOut(&a, E_FAIL, p.PutVoid()));  // a failure that still handed out
        EXPECT_EQ(2, a.refs);
        HandOut(&b, S_OK, p.PutVoid());  // Put gives back the former object first
        EXPECT_EQ(1, a.refs);
        CKxComPtr<IUnknown> moved(std::move(p));
        EXPECT_FALSE(p);
        p.Reset();  // nothing left to give back
        EXPECT_EQ(2, b.refs);
        IUnknown* kept = moved.Detach();
        EXPECT_EQ(static_cast<IUnknown*>(&b), kept);
        moved.Attach(kept);
    }
    EXPECT_EQ(1, a.refs);
    EXPECT_EQ(1, b.refs);
}

TEST(Owners, TaskMemoryAndModulesGoBackOnceAndExportsAreTyped) {
    const long live = kxcompat::LiveTaskMemBlocks();
    {
        CKxTaskMemString text(static_cast<LPWSTR>(CoTaskMemAlloc(8)));
        CKxTaskMem<BYTE*> bytes(static_cast<BYTE*>(CoTaskMemAlloc(4)));
        *bytes.Put() = static_cast<BYTE*>(CoTaskMemAlloc(4));  // the first block goes back here
        EXPECT_EQ(live + 2, kxcompat::LiveTaskMemBlocks());
        CoTaskMemFree(text.Detach());  // detached: the owner does not free it again
    }
    EXPECT_EQ(live, kxcompat::LiveTaskMemBlocks());

    static int calls = 0;
    struct Export {
        static int WINAPI Call(int x) { return ++calls + x; }
    };
    kxcompat::InstallFakeModule(L"Some.dll", {{"Call", reinterpret_cast<void*>(&Export::Call)}});
    {
        CKxModule module(LoadLibraryW(L"some.DLL"));
        auto call = module.Export<int(WINAPI*)(int)>("Call");
        ASSERT_NE(nullptr, call);
        EXPECT_EQ(11, call(10));
        EXPECT_EQ(nullptr, module.Export<int(WINAPI*)(int)>("Other"));
        EXPECT_EQ(nullptr, CKxModule().Export<int(WINAPI*)(int)>("Call"));
    }
    const kxcompat::FakeModuleCounters counters = kxcompat::FakeModuleCountersOf(L"Some.dll");
    EXPECT_EQ(1, counters.loads);
    EXPECT_EQ(1, counters.frees);
    kxcompat::RemoveFakeModules();
}

}  // namespace
