#include "library/pidl.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// A list from record payload sizes and fill bytes, plus bytes after the terminator that must never matter.
std::vector<BYTE> MakeList(const std::vector<std::pair<USHORT, BYTE>>& records, std::vector<BYTE> trailing = {}) {
    std::vector<BYTE> bytes;
    for (auto [payload, fill] : records) {
        const USHORT cb = static_cast<USHORT>(payload + 2);
        bytes.insert(bytes.end(), {static_cast<BYTE>(cb & 0xFF), static_cast<BYTE>(cb >> 8)});
        bytes.insert(bytes.end(), payload, fill);
    }
    bytes.insert(bytes.end(), {0, 0});
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

TEST_F(Pidl, SizeAndCountStopAtTheTerminator) {
    auto empty = MakeList({});
    auto three = MakeList({{1, 1}, {300, 2}, {0, 3}}, {0x55, 0x55});
    EXPECT_EQ(0u, KxPidlSize(nullptr));
    EXPECT_EQ(2u, KxPidlSize(AsPidl(empty)));
    EXPECT_EQ(3u + 302u + 2u + 2u, KxPidlSize(AsPidl(three)));
    EXPECT_EQ(3u, KxPidlRecordCount(AsPidl(three)));
    EXPECT_EQ(0u, KxPidlRecordCount(AsPidl(empty)));
    EXPECT_EQ(0u, KxPidlRecordCount(nullptr));
}

TEST_F(Pidl, CopyIsExactOwnedAndReadsOddAddresses) {
    EXPECT_EQ(nullptr, KxPidlCopy(nullptr));
    auto list = MakeList({{5, 0x11}, {2, 0x22}}, {0x99});
    std::vector<BYTE> shifted(1, 0xEE);
    shifted.insert(shifted.end(), list.begin(), list.end());
    KxPidl copy = KxPidlCopy(reinterpret_cast<KxPcPidl>(shifted.data() + 1));
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(before + 1, kxcompat::LiveTaskMemBlocks());
    ASSERT_EQ(list.size() - 1, KxPidlSize(copy));
    EXPECT_EQ(0, std::memcmp(copy, list.data(), KxPidlSize(copy)));
    KxPidlFree(copy);
    KxPidlFree(nullptr);
    kxcompat::FailTaskMemAllocations(1);
    EXPECT_EQ(nullptr, KxPidlCopy(AsPidl(list)));
}

TEST_F(Pidl, EqualityComparesRecordsUpToTheTerminator) {
    const auto a = MakeList({{4, 1}, {4, 2}});
    const struct {
        std::vector<BYTE> other;
        bool equal;
    } cases[] = {
        {MakeList({{4, 1}, {4, 2}}), true},
        {MakeList({{4, 1}, {4, 2}}, {0xDE, 0xAD}), true},  // differs only behind the terminator
        {MakeList({{4, 1}}), false},                       // a prefix
        {MakeList({{4, 1}, {4, 3}}), false},               // one payload byte
        {MakeList({{2, 1}, {6, 2}}), false},               // same size, cut differently
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.equal, KxPidlEqual(AsPidl(a), AsPidl(c.other))) << c.other.size();
        EXPECT_EQ(c.equal, KxPidlEqual(AsPidl(c.other), AsPidl(a))) << c.other.size();
    }
    EXPECT_TRUE(KxPidlEqual(nullptr, nullptr));
    EXPECT_FALSE(KxPidlEqual(nullptr, AsPidl(a)));
    EXPECT_FALSE(KxPidlEqual(AsPidl(a), nullptr));
    EXPECT_TRUE(KxPidlEqual(AsPidl(MakeList({}, {1})), AsPidl(MakeList({}, {2}))));
}

}  // namespace
