// The CoTaskMem audit on Windows: the malloc spy sees the process's task memory, also what system
// DLLs allocate for the caller, and can make allocations fail.
#include <windows.h>
#include <objbase.h>

#include <gtest/gtest.h>

#include "host/library/taskmem_audit.h"

namespace {

struct TaskMemSpy : ::testing::Test {
    void SetUp() override { ASSERT_TRUE(kxhost::StartTaskMemAudit()); }
    void TearDown() override { kxhost::StopTaskMemAudit(); }
};

TEST_F(TaskMemSpy, CountsBlocksOfTheCallerAndOfSystemDlls) {
    const long start = kxhost::LiveTaskMemBlocks();
    void* mine = CoTaskMemAlloc(10);
    ASSERT_NE(nullptr, mine);
    LPOLESTR text = nullptr;
    ASSERT_EQ(S_OK, StringFromCLSID(IID_IUnknown, &text));  // ole32 allocates the string
    EXPECT_EQ(start + 2, kxhost::LiveTaskMemBlocks());
    CoTaskMemFree(text);
    EXPECT_EQ(start + 1, kxhost::LiveTaskMemBlocks());
    mine = CoTaskMemRealloc(mine, 4000);
    ASSERT_NE(nullptr, mine);
    EXPECT_EQ(start + 1, kxhost::LiveTaskMemBlocks()) << "a moved block is still one block";
    EXPECT_EQ(nullptr, CoTaskMemRealloc(mine, 0)) << "a realloc to nothing frees";
    EXPECT_EQ(start, kxhost::LiveTaskMemBlocks());
    void* fresh = CoTaskMemRealloc(nullptr, 12);  // a realloc of nothing allocates
    EXPECT_EQ(start + 1, kxhost::LiveTaskMemBlocks());
    CoTaskMemFree(fresh);
    EXPECT_EQ(start, kxhost::LiveTaskMemBlocks());
}

TEST_F(TaskMemSpy, BlocksFromBeforeTheStartAreNotCounted) {
    void* old = CoTaskMemAlloc(8);
    ASSERT_TRUE(kxhost::StartTaskMemAudit());  // a restart forgets what was out
    EXPECT_EQ(0, kxhost::LiveTaskMemBlocks());
    CoTaskMemFree(old);
    EXPECT_EQ(0, kxhost::LiveTaskMemBlocks());
}

TEST_F(TaskMemSpy, AllocationsFailOnDemand) {
    kxhost::FailTaskMemAllocations(2);
    void* first = CoTaskMemAlloc(16);
    void* second = CoTaskMemAlloc(16);
    void* third = CoTaskMemAlloc(16);
    EXPECT_NE(nullptr, first);
    EXPECT_EQ(nullptr, second);
    EXPECT_NE(nullptr, third);
    kxhost::FailTaskMemAllocations(1);
    void* moved = CoTaskMemRealloc(first, 1 << 16);
    EXPECT_EQ(nullptr, moved);  // the old block stays valid
    EXPECT_EQ(2, kxhost::LiveTaskMemBlocks());
    kxhost::FailTaskMemAllocations(1, -1);
    LPOLESTR text = nullptr;
    EXPECT_EQ(E_OUTOFMEMORY, StringFromCLSID(IID_IUnknown, &text));
    kxhost::ResetTaskMemFailures();
    CoTaskMemFree(first);
    CoTaskMemFree(third);
    EXPECT_EQ(0, kxhost::LiveTaskMemBlocks());
}

}  // namespace
