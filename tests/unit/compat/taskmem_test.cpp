#include "compat/wincompat.h"

#include <gtest/gtest.h>

namespace {

struct TaskMem : ::testing::Test {
    void TearDown() override { kxcompat::ResetTaskMemFailures(); }
};

TEST_F(TaskMem, BlocksAreCountedUntilFreed) {
    const long before = kxcompat::LiveTaskMemBlocks();
    void* a = CoTaskMemAlloc(16);
    void* b = CoTaskMemAlloc(0);  // a zero-byte block is still a block
    ASSERT_NE(nullptr, a);
    ASSERT_NE(nullptr, b);
    EXPECT_EQ(before + 2, kxcompat::LiveTaskMemBlocks());
    CoTaskMemFree(a);
    CoTaskMemFree(b);
    CoTaskMemFree(nullptr);
    EXPECT_EQ(before, kxcompat::LiveTaskMemBlocks());
}

TEST_F(TaskMem, ReallocKeepsOneBlockAndFreesOnZero) {
    const long before = kxcompat::LiveTaskMemBlocks();
    auto* p = static_cast<char*>(CoTaskMemRealloc(nullptr, 4));
    ASSERT_NE(nullptr, p);
    std::memcpy(p, "abc", 4);
    p = static_cast<char*>(CoTaskMemRealloc(p, 4096));
    ASSERT_NE(nullptr, p);
    EXPECT_STREQ("abc", p);
    EXPECT_EQ(before + 1, kxcompat::LiveTaskMemBlocks());
    EXPECT_EQ(nullptr, CoTaskMemRealloc(p, 0));
    EXPECT_EQ(before, kxcompat::LiveTaskMemBlocks());
}

TEST_F(TaskMem, FailsTheNthCallOnly) {
    kxcompat::FailTaskMemAllocations(2);
    void* first = CoTaskMemAlloc(8);
    void* second = CoTaskMemAlloc(8);
    void* third = CoTaskMemAlloc(8);
    EXPECT_NE(nullptr, first);
    EXPECT_EQ(nullptr, second);
    EXPECT_NE(nullptr, third);
    CoTaskMemFree(first);
    CoTaskMemFree(third);
}

TEST_F(TaskMem, FailedReallocLeavesTheOldBlock) {
    const long before = kxcompat::LiveTaskMemBlocks();
    auto* p = static_cast<char*>(CoTaskMemAlloc(4));
    std::memcpy(p, "xyz", 4);
    kxcompat::FailTaskMemAllocations(1, -1);
    EXPECT_EQ(nullptr, CoTaskMemRealloc(p, 1 << 20));
    EXPECT_EQ(nullptr, CoTaskMemAlloc(1));
    kxcompat::ResetTaskMemFailures();
    EXPECT_STREQ("xyz", p);
    CoTaskMemFree(p);
    EXPECT_EQ(before, kxcompat::LiveTaskMemBlocks());
}

TEST(PropVariant, ClearFreesOwnedValuesAndEmpties) {
    const long before = kxcompat::LiveTaskMemBlocks();
    PROPVARIANT pv;
    PropVariantInit(&pv);
    pv.vt = VT_LPWSTR;
    pv.pwszVal = static_cast<LPWSTR>(CoTaskMemAlloc(4 * sizeof(WCHAR)));
    EXPECT_EQ(S_OK, PropVariantClear(&pv));
    EXPECT_EQ(VT_EMPTY, pv.vt);
    EXPECT_EQ(before, kxcompat::LiveTaskMemBlocks());
    pv.vt = VT_UI8;
    pv.uhVal.QuadPart = 7;
    EXPECT_EQ(S_OK, PropVariantClear(&pv));
    EXPECT_EQ(0u, pv.uhVal.QuadPart);
}

TEST(Platform, StatusCodesAndInterlocked) {
    EXPECT_EQ(static_cast<HRESULT>(0x800704C7u), HRESULT_FROM_WIN32(ERROR_CANCELLED));
    EXPECT_EQ(static_cast<HRESULT>(0x80070002u), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(STRSAFE_E_INSUFFICIENT_BUFFER, HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_TRUE(FAILED(E_FAIL));
    EXPECT_TRUE(SUCCEEDED(S_FALSE));
    LONG n = 0;
    EXPECT_EQ(1, InterlockedIncrement(&n));
    EXPECT_EQ(0, InterlockedDecrement(&n));
    EXPECT_EQ(-1, InterlockedDecrement(&n));
}

}  // namespace
