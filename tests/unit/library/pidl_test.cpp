#include "library/pidl.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// Builds a list from record payload sizes and a fill byte per record, plus bytes after the
// terminator that must never matter.
std::vector<BYTE> MakeList(const std::vector<std::pair<USHORT, BYTE>>& records, std::vector<BYTE> trailing = {}) {
    std::vector<BYTE> bytes;
    for (auto [payload, fill] : records) {
        USHORT cb = static_cast<USHORT>(payload + 2);
        bytes.push_back(static_cast<BYTE>(cb & 0xFF));
        bytes.push_back(static_cast<BYTE>(cb >> 8));
        bytes.insert(bytes.end(), payload, fill);
    }
    bytes.push_back(0);
    bytes.push_back(0);
    bytes.insert(bytes.end(), trailing.begin(), trailing.end());
    return bytes;
}

KxPcPidl AsPidl(const std::vector<BYTE>& bytes) { return reinterpret_cast<KxPcPidl>(bytes.data()); }

struct Pidl : ::testing::Test {
    long before = kxcompat::LiveTaskMemBlocks();
    void TearDown() override {
        kxcompat::ResetTaskMemFailures();
        EXPECT_EQ(before, kxcompat::LiveTaskMemBlocks());
    }
};

TEST_F(Pidl, SizeCountsRecordsAndTerminator) {
    EXPECT_EQ(0u, KxPidlSize(nullptr));
    auto empty = MakeList({});
    EXPECT_EQ(2u, KxPidlSize(AsPidl(empty)));
    auto one = MakeList({{8, 0xAA}});
    EXPECT_EQ(12u, KxPidlSize(AsPidl(one)));
    auto three = MakeList({{1, 1}, {300, 2}, {0, 3}}, {0x55, 0x55});
    EXPECT_EQ(3u + 302u + 2u + 2u, KxPidlSize(AsPidl(three)));
    EXPECT_EQ(3u, KxPidlRecordCount(AsPidl(three)));
    EXPECT_EQ(0u, KxPidlRecordCount(AsPidl(empty)));
    EXPECT_EQ(0u, KxPidlRecordCount(nullptr));
}

TEST_F(Pidl, RecordsAtOddAddressesAreRead) {
    std::vector<BYTE> shifted(1, 0xEE);
    auto list = MakeList({{3, 7}, {4, 8}});
    shifted.insert(shifted.end(), list.begin(), list.end());
    KxPcPidl odd = reinterpret_cast<KxPcPidl>(shifted.data() + 1);
    EXPECT_EQ(list.size(), KxPidlSize(odd));
    KxPidl copy = KxPidlCopy(odd);
    EXPECT_TRUE(KxPidlEqual(copy, AsPidl(list)));
    KxPidlFree(copy);
}

TEST_F(Pidl, CopyIsExactAndOwnedByTheCaller) {
    EXPECT_EQ(nullptr, KxPidlCopy(nullptr));
    auto list = MakeList({{5, 0x11}, {2, 0x22}}, {0x99});
    KxPidl copy = KxPidlCopy(AsPidl(list));
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(before + 1, kxcompat::LiveTaskMemBlocks());
    EXPECT_NE(static_cast<const void*>(copy), static_cast<const void*>(list.data()));
    ASSERT_EQ(KxPidlSize(AsPidl(list)), KxPidlSize(copy));
    EXPECT_EQ(0, std::memcmp(copy, list.data(), KxPidlSize(copy)));
    EXPECT_TRUE(KxPidlEqual(copy, AsPidl(list)));
    KxPidlFree(copy);
    KxPidlFree(nullptr);
}

TEST_F(Pidl, FailedAllocationCopiesToNull) {
    auto list = MakeList({{4, 1}});
    kxcompat::FailTaskMemAllocations(1);
    EXPECT_EQ(nullptr, KxPidlCopy(AsPidl(list)));
    KxPidl second = KxPidlCopy(AsPidl(list));  // only one allocation was told to fail
    EXPECT_NE(nullptr, second);
    KxPidlFree(second);
}

TEST_F(Pidl, EqualityRules) {
    auto a = MakeList({{4, 1}, {4, 2}});
    // nulls
    EXPECT_TRUE(KxPidlEqual(nullptr, nullptr));
    EXPECT_FALSE(KxPidlEqual(nullptr, AsPidl(a)));
    EXPECT_FALSE(KxPidlEqual(AsPidl(a), nullptr));
    // the same bytes at another place
    auto same = MakeList({{4, 1}, {4, 2}});
    EXPECT_TRUE(KxPidlEqual(AsPidl(a), AsPidl(same)));
    // differing only behind the terminator
    auto trailing = MakeList({{4, 1}, {4, 2}}, {0xDE, 0xAD, 0xBE, 0xEF});
    EXPECT_TRUE(KxPidlEqual(AsPidl(a), AsPidl(trailing)));
    // a prefix is not equal, either way round
    auto prefix = MakeList({{4, 1}});
    EXPECT_FALSE(KxPidlEqual(AsPidl(a), AsPidl(prefix)));
    EXPECT_FALSE(KxPidlEqual(AsPidl(prefix), AsPidl(a)));
    // same size, one payload byte differs
    auto other = MakeList({{4, 1}, {4, 3}});
    EXPECT_FALSE(KxPidlEqual(AsPidl(a), AsPidl(other)));
    // same total size, records cut differently
    auto recut = MakeList({{2, 1}, {6, 2}});
    ASSERT_EQ(KxPidlSize(AsPidl(a)), KxPidlSize(AsPidl(recut)));
    EXPECT_FALSE(KxPidlEqual(AsPidl(a), AsPidl(recut)));
    // two empty lists
    auto e1 = MakeList({}, {1}), e2 = MakeList({}, {2});
    EXPECT_TRUE(KxPidlEqual(AsPidl(e1), AsPidl(e2)));
}

}  // namespace
