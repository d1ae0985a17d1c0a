// The compatibility layer's task memory: every live block counted, and allocations made to fail on
// demand, as the leak and out-of-memory checks of the other tests rely on.
#include "compat/wincompat.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

struct TaskMem : ::testing::Test {
    void SetUp() override { before = kxcompat::LiveTaskMemBlocks(); }
    void TearDown() override {
        kxcompat::ResetTaskMemFailures();
        EXPECT_EQ(before, kxcompat::LiveTaskMemBlocks());
    }
    long before = 0;
};

TEST_F(TaskMem, BlocksAreCountedUntilFreedAndReallocKeepsOne) {
    void* empty = CoTaskMemAlloc(0);  // a zero-byte block is still a block
    auto* p = static_cast<char*>(CoTaskMemRealloc(nullptr, 4));
    ASSERT_NE(nullptr, empty);
    ASSERT_NE(nullptr, p);
    std::memcpy(p, "abc", 4);
    p = static_cast<char*>(CoTaskMemRealloc(p, 4096));
    ASSERT_NE(nullptr, p);
    EXPECT_STREQ("abc", p);
    EXPECT_EQ(before + 2, kxcompat::LiveTaskMemBlocks());
    CoTaskMemFree(empty);
    CoTaskMemFree(nullptr);
    EXPECT_EQ(nullptr, CoTaskMemRealloc(p, 0)) << "a realloc to nothing frees";
}

TEST_F(TaskMem, FailsTheNthCallOrEveryCallFromIt) {
    kxcompat::FailTaskMemAllocations(2);
    void* first = CoTaskMemAlloc(8);
    EXPECT_EQ(nullptr, CoTaskMemAlloc(8));
    void* third = CoTaskMemAlloc(8);
    EXPECT_NE(nullptr, first);
    EXPECT_NE(nullptr, third);

    // A failed realloc leaves the old block as it was.
    std::memcpy(first, "xyz", 4);
    kxcompat::FailTaskMemAllocations(1, -1);
    EXPECT_EQ(nullptr, CoTaskMemRealloc(first, 1 << 20));
    EXPECT_EQ(nullptr, CoTaskMemAlloc(1));
    kxcompat::ResetTaskMemFailures();
    EXPECT_STREQ("xyz", static_cast<char*>(first));
    CoTaskMemFree(first);
    CoTaskMemFree(third);
}

}  // namespace
