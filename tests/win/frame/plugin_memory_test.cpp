// Task memory of the plug-in as a host sees it through a malloc spy: everything handed out is the
// host's to free and nothing else stays behind; allocations that fail give their statuses.
#include <windows.h>
#include <objbase.h>

#include <gtest/gtest.h>

#include "host/library/taskmem_audit.h"
#include "tests/win/common/plugin_loader.h"

namespace {

class PluginMemory : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(nullptr, plugin_.module());
        ASSERT_TRUE(kxhost::StartTaskMemAudit());
    }
    void TearDown() override {
        kxhost::ResetTaskMemFailures();
        kxhost::StopTaskMemAudit();
    }
    kxtest::PluginLibrary plugin_;
};

TEST_F(PluginMemory, ObjectsAndStringsLeaveNoBlockBehind) {
    for (int i = 0; i < 50; ++i) {
        IKxCommonResource* resource = nullptr;
        ASSERT_EQ(S_OK, plugin_.Create(&resource));
        LPWSTR text = nullptr;
        ASSERT_EQ(S_OK, resource->GetResourceString(188, &text));
        EXPECT_EQ(2, kxhost::LiveTaskMemBlocks()) << "the object and the string";
        CoTaskMemFree(text);
        INT needed = 0;
        WCHAR buffer[8];
        resource->LoadResourceString(188, buffer, 8, &needed);
        LPWSTR missing = nullptr;
        resource->GetResourceString(4242, &missing);
        ASSERT_EQ(0u, resource->Release());
        ASSERT_EQ(0, kxhost::LiveTaskMemBlocks()) << "round " << i;
    }
    EXPECT_EQ(S_OK, plugin_.CanUnloadNow());
}

// The factory, the object and the string block come from the host's task memory: when it fails,
// so do they.
TEST_F(PluginMemory, FailedAllocationsGiveOutOfMemory) {
    IKxCommonResource* resource = reinterpret_cast<IKxCommonResource*>(0x1);
    for (int nth : {1, 2}) {
        kxhost::FailTaskMemAllocations(nth);
        EXPECT_EQ(E_OUTOFMEMORY, plugin_.Create(&resource)) << nth;
        EXPECT_EQ(reinterpret_cast<IKxCommonResource*>(0x1), resource) << nth;
        kxhost::ResetTaskMemFailures();
        EXPECT_EQ(0, kxhost::LiveTaskMemBlocks()) << nth;
    }

    ASSERT_EQ(S_OK, plugin_.Create(&resource));
    kxhost::FailTaskMemAllocations(1);
    LPWSTR text = reinterpret_cast<LPWSTR>(0x1);
    EXPECT_EQ(E_OUTOFMEMORY, resource->GetResourceString(188, &text));
    EXPECT_EQ(nullptr, text);
    kxhost::ResetTaskMemFailures();
    resource->Release();
    EXPECT_EQ(0, kxhost::LiveTaskMemBlocks());
}

}  // namespace
