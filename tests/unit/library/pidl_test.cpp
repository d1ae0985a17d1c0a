#include "library/pidl.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// A list from record payload sizes and fill bytes, plus bytes after the terminator that must never matter.
std::vector<BYTE> MakeList(const std::vector<std::pair<USHORT, BYTE>>& records, std::vector<BYTE> trailing = {}) {
    std::vector<BYTE> bytes;
    for (auto [payload, fill] : records) {
        bytes.insert(bytes.end(), {static_cast<BYTE>((payload + 2) & 0xFF), static_cast<BYTE>((payload + 2) >> 8)});
        bytes.insert(bytes.end(), payload, fill);
    }
    bytes.insert(bytes.end(), {0, 0});
    bytes.insert(bytes.end(), trailing.begin(), trailing.end());
    return bytes;
}

KxPcPidl AsPidl(const std::vector<BYTE>& bytes) { return reinterpret_cast<KxPcPidl>(bytes.data()); }

TEST(Pidl, SizeCountAndCopyStopAtTheTerminatorAndReadOddAddresses) {
    const long before = kxcompat::LiveTaskMemBlocks();
    std::vector<BYTE> shifted = MakeList({{1, 1}, {300, 2}, {0, 3}}, {0x55, 0x55});
    shifted.insert(shifted.begin(), 0xEE);
    KxPcPidl three = reinterpret_cast<KxPcPidl>(shifted.data() + 1);
    EXPECT_EQ(3u + 302u + 2u + 2u, KxPidlSize(three));
    EXPECT_EQ(3u, KxPidlRecordCount(three));
    EXPECT_EQ(2u, KxPidlSize(AsPidl(MakeList({}))));
    EXPECT_EQ(0u, KxPidlRecordCount(AsPidl(MakeList({}))) + KxPidlSize(nullptr) + KxPidlRecordCount(nullptr));
    KxPidl copy = KxPidlCopy(three);
    ASSERT_EQ(KxPidlSize(three), KxPidlSize(copy));
    EXPECT_EQ(0, std::memcmp(copy, three, KxPidlSize(copy)));
    EXPECT_EQ(before + 1, kxcompat::LiveTaskMemBlocks());
    KxPidlFree(copy);
    KxPidlFree(nullptr);
    EXPECT_EQ(nullptr, KxPidlCopy(nullptr));
    kxcompat::FailTaskMemAllocations(1);
    EXPECT_EQ(nullptr, KxPidlCopy(three));
    kxcompat::ResetTaskMemFailures();
    EXPECT_EQ(before, kxcompat::LiveTaskMemBlocks());
}

TEST(Pidl, EqualityComparesRecordsUpToTheTerminator) {
    const auto a = MakeList({{4, 1}, {4, 2}});
    const struct { std::vector<BYTE> other; bool equal; } cases[] = {
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
    EXPECT_FALSE(KxPidlEqual(nullptr, AsPidl(a)) || KxPidlEqual(AsPidl(a), nullptr));
}

}  // namespace
