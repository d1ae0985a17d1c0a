// The wide printf family with the Windows reading of %s (wide) and its bounds.
#include "compat/wformat.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <string>

namespace {

TEST(WideFormat, WindowsSpellingsOfStringsAndSizes) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"(%s):%d=%s\r\n", L"(%ls):%d=%ls\r\n"},
        {L"%ws %ls %hs %S", L"%ls %ls %s %s"},
        {L"%c %hc %-10s|%.3s", L"%lc %c %-10ls|%.3ls"},
        {L"%I64u %I32d %Ix %%s %lld", L"%llu %d %zx %%s %lld"},
    };
    for (const auto& c : cases) {
        wchar_t out[64];
        kxcompat::TranslateWideFormat(c.first, out, 64);
        EXPECT_EQ(std::wstring(c.second), out) << c.first;
    }
    wchar_t b[64];
    ASSERT_EQ(14, _snwprintf(b, 64, L"%s-%hs-%d[%x]", L"wide", "nar", 7, 255u));
    EXPECT_STREQ(L"wide-nar-7[ff]", b);
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
