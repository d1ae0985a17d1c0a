// The portable short size text against the system's StrFormatByteSizeW, size by size in the same
// run: every unit's boundaries with their neighbours, the documented examples, counts beyond 2^63,
// and a deterministic spread of sizes across all units. The two must never drift apart.
#include "imaging/byte_size_text.h"

#include <shlwapi.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<LONGLONG> SizesToCompare() {
    std::vector<LONGLONG> sizes = {0, 1, 532, 1023, 1340, 23506, 2400016, 2400000000LL, 0x7FFFFFFFFFFFFFFFLL, -1,
                                   static_cast<LONGLONG>(0x8000000000000400ULL)};
    // Each unit (KB to EB) at 1, 10, 100 and 1000 of it, with the counts on either side and the
    // half-way count.
    for (int power = 1; power <= 6; ++power) {
        const LONGLONG unit = 1LL << (10 * power);
        for (LONGLONG step : {1LL, 10LL, 100LL, 1000LL}) {
            if (unit > 0x3FFFFFFFFFFFFFFFLL / step) continue;  // beyond the signed range
            const LONGLONG at = step * unit;
            for (LONGLONG delta : {-1LL, 0LL, 1LL}) sizes.push_back(at + delta);
            sizes.push_back(at + at / 2);
        }
    }
    // Eight pseudo-random counts between each 2^k and 2^(k+1), so every range meets counts whose
    // cut digits are not zero.
    unsigned long long x = 0x9E3779B97F4A7C15ULL;
    for (int bits = 10; bits < 63; ++bits) {
        for (int i = 0; i < 8; ++i) {
            x ^= x << 13, x ^= x >> 7, x ^= x << 17;
            sizes.push_back(static_cast<LONGLONG>((1ULL << bits) + (x & ((1ULL << bits) - 1))));
        }
    }
    return sizes;
}

TEST(ByteSizeSystem, PortableTextEqualsTheSystemsForEverySize) {
    int compared = 0;
    for (LONGLONG bytes : SizesToCompare()) {
        WCHAR system[260] = {};
        ASSERT_EQ(system, StrFormatByteSizeW(bytes, system, 260)) << bytes;
        EXPECT_EQ(std::wstring(system), KxByteSizeText(bytes)) << "size " << bytes;
        ++compared;
    }
    EXPECT_GT(compared, 500);
}

}  // namespace
