// The portable short size text: the system's documented examples, the units' steps with their cut
// (never rounded) digits, counts beyond 2^63, and the buffer limits. The Wine test compares it
// with the system's own across every boundary.
#include "imaging/byte_size_text.h"

#include <gtest/gtest.h>

namespace kxtest {
namespace {

const LONGLONG KB = 1024, MB = KB * KB, GB = MB * KB, TB = GB * KB, PB = TB * KB;

TEST(ByteSizeText, MatchesTheSystemsTextAtEveryBoundary) {
    const struct { LONGLONG bytes; LPCWSTR text; } cases[] = {
        // the system's own documented examples
        {532, L"532 bytes"}, {1340, L"1.30 KB"}, {23506, L"22.9 KB"}, {2400016, L"2.28 MB"},
        {2400000000LL, L"2.23 GB"},
        // each unit's steps from two decimals to none, cut and never rounded; beyond GB the count is
        // shifted down by 2^20 first
        {1023, L"1023 bytes"}, {1024, L"1.00 KB"}, {1535, L"1.49 KB"}, {10 * KB - 1, L"9.99 KB"}, {10 * KB, L"10.0 KB"},
        {100 * KB - 1, L"99.9 KB"}, {1000 * KB - 1, L"999 KB"}, {1000 * KB, L"0.97 MB"}, {MB, L"1.00 MB"},
        {1000 * GB - 1, L"999 GB"}, {TB + TB / 2, L"1.50 TB"}, {1000 * PB, L"0.97 EB"},
        {0x7FFFFFFFFFFFFFFFLL, L"7.99 EB"},
        // counts above 2^63 arrive negative: their low 32 bits as bytes
        {-1, L"-1 bytes"}, {static_cast<LONGLONG>(0x8000000000000400ULL), L"1024 bytes"},
    };
    for (const auto& c : cases) EXPECT_EQ(c.text, KxByteSizeText(c.bytes)) << c.bytes;
}

TEST(ByteSizeText, WritesWithinTheBufferAndEndsIt) {
    WCHAR buffer[8];
    std::fill(buffer, buffer + 8, L'#');
    EXPECT_EQ(buffer, KxFormatByteSize(1340, buffer, 4));
    EXPECT_STREQ(L"1.3", buffer);
    EXPECT_EQ(L'#', buffer[4]);
    EXPECT_STREQ(L"1.30 KB", KxFormatByteSize(1340, buffer, 8));
    buffer[0] = L'#';
    EXPECT_EQ(buffer, KxFormatByteSize(1340, buffer, 0));
    EXPECT_EQ(L'#', buffer[0]);
    EXPECT_EQ(nullptr, KxFormatByteSize(1340, nullptr, 8));
}

}  // namespace
}  // namespace kxtest
