// Eight host threads at once through the plug-in's exports and reference counts: class objects,
// objects created and released, server locks, and one plug-in object and two balloon tips that
// every thread references and lets go. A bounded number of rounds, started together; at the end
// every count is back where it started and the library may unload.
#include <gtest/gtest.h>

#include <windows.h>

#include <atomic>
#include <vector>

#include "kx/IKxBalloonTip.h"
#include "kx/IKxCommonResource.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/plugin_loader.h"

namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 1000;

struct Shared {
    const kxtest::PluginLibrary* plugin;
    IKxCommonResource* object;
    IKxBalloonTip* tip;
    IKxBalloonTipControl* control;
    HANDLE start;
    std::atomic<int> failures{0};
};

void Expect(Shared& s, bool ok) {
    if (!ok) ++s.failures;
}

DWORD WINAPI Worker(void* param) {
    Shared& s = *static_cast<Shared*>(param);
    WaitForSingleObject(s.start, INFINITE);
    for (int round = 0; round < kRounds; ++round) {
        IClassFactory* factory = nullptr;
        Expect(s, s.plugin->GetClassObject(CLSID_KxComResPlginPluginObj, IID_IClassFactory,
                                           reinterpret_cast<void**>(&factory)) == S_OK && factory);
        if (!factory) continue;
        factory->AddRef();
        factory->LockServer(TRUE);
        Expect(s, s.plugin->CanUnloadNow() == S_FALSE);

        // An object of this thread's own, created and released here (its OLE bracket is this
        // thread's), taken and given back once more on the way.
        IKxCommonResource* own = nullptr;
        Expect(s, factory->CreateInstance(nullptr, IID_IKxCommonResource, reinterpret_cast<void**>(&own)) == S_OK);
        if (own) {
            Expect(s, own->AddRef() == 2);
            Expect(s, own->Release() == 1);
            Expect(s, own->Release() == 0);
        }

        // The shared objects: never below the one reference the main thread holds.
        Expect(s, s.object->AddRef() >= 2);
        Expect(s, s.tip->AddRef() >= 2);
        Expect(s, s.control->AddRef() >= 2);
        Expect(s, s.plugin->CanUnloadNow() == S_FALSE);
        Expect(s, s.control->Release() >= 1);
        Expect(s, s.tip->Release() >= 1);
        Expect(s, s.object->Release() >= 1);

        factory->LockServer(FALSE);
        factory->Release();
        Expect(s, factory->Release() == 0);
    }
    return 0;
}

TEST(PluginThreads, EightThreadsAtOnceLeaveEveryCountAtZero) {
    kxtest::WatchTaskMemory();
    const kxtest::ResourceCounts before = kxtest::CountResources();
    {
        kxtest::PluginLibrary plugin;
        ASSERT_TRUE(plugin.module());
        HWND target = CreateWindowExW(0, L"STATIC", L"target", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, nullptr,
                                      nullptr);
        ASSERT_TRUE(target);

        Shared s;
        s.plugin = &plugin;
        s.object = nullptr;
        s.tip = nullptr;
        s.control = nullptr;
        ASSERT_EQ(S_OK, plugin.Create(&s.object));
        ASSERT_EQ(S_OK, s.object->CreateBalloonTip(IID_IKxBalloonTip, target, L"text", L"title", 0x40,
                                                   reinterpret_cast<void**>(&s.tip)));
        ASSERT_EQ(S_OK, s.object->CreateBalloonTip(IID_IKxBalloonTipControl, target, L"text", nullptr, 0x10,
                                                   reinterpret_cast<void**>(&s.control)));
        s.start = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        ASSERT_TRUE(s.start);

        std::vector<HANDLE> threads;
        for (int i = 0; i < kThreads; ++i) {
            HANDLE t = CreateThread(nullptr, 0, &Worker, &s, 0, nullptr);
            ASSERT_TRUE(t);
            threads.push_back(t);
        }
        SetEvent(s.start);
        EXPECT_EQ(WAIT_OBJECT_0,
                  WaitForMultipleObjects(static_cast<DWORD>(threads.size()), threads.data(), TRUE, 100000));
        for (HANDLE t : threads) CloseHandle(t);
        CloseHandle(s.start);
        EXPECT_EQ(0, s.failures.load());

        // Every thread gave back exactly what it took: the main thread's references are the last.
        EXPECT_EQ(S_FALSE, plugin.CanUnloadNow());
        EXPECT_EQ(0u, s.tip->Release());
        EXPECT_EQ(0u, s.control->Release());
        EXPECT_EQ(0u, s.object->Release());
        EXPECT_EQ(S_OK, plugin.CanUnloadNow());
        DestroyWindow(target);
    }
    EXPECT_EQ("", kxtest::Leftovers(before));
}

}  // namespace
