// The wide printf family with the Windows reading of the format (%s and %ws wide, %hs narrow)
// and its bounds.
#include "compat/wformat.h"

#include <gtest/gtest.h>

#include <cwchar>

namespace {

TEST(WideFormat, WindowsReadingOfStrings) {
    wchar_t b[64];
    ASSERT_EQ(18, _snwprintf(b, 64, L"%s-%ws-%hs-%-3d[%x]", L"wide", L"w", "nar", 7, 255u));
    EXPECT_STREQ(L"wide-w-nar-7  [ff]", b);
}

TEST(WideFormat, CountLimitsAndTerminators) {
    wchar_t b[8];
    std::wmemset(b, L'#', 8);
    // exactly `count` characters: written, no terminator, count returned
    EXPECT_EQ(4, _snwprintf(b, 4, L"%s", L"abcd"));
    EXPECT_EQ(L'#', b[4]);
    // longer: -1, the first `count` characters written
    EXPECT_EQ(-1, _snwprintf(b, 4, L"%s", L"abcdef"));
    EXPECT_EQ(0, std::wmemcmp(b, L"abcd", 4));
    // the secure form always terminates, and says -1 when it cut
    EXPECT_EQ(-1, _snwprintf_s(b, 8, 7, L"%s", L"0123456789"));
    EXPECT_STREQ(L"0123456", b);
    EXPECT_EQ(7, _snwprintf_s(b, 8, 7, L"%s", L"0123456"));
    EXPECT_STREQ(L"0123456", b);
}

}  // namespace
