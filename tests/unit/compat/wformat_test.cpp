#include "compat/wformat.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::wstring Translated(const wchar_t* f) {
    wchar_t out[128];
    kxcompat::TranslateWideFormat(f, out, 128);
    return out;
}

TEST(WideFormat, WindowsSpellingsOfStringsAndSizes) {
    EXPECT_EQ(L"(%ls):%d=%ls\r\n", Translated(L"(%s):%d=%s\r\n"));
    EXPECT_EQ(L"%ls %ls %s %s", Translated(L"%ws %ls %hs %S"));
    EXPECT_EQ(L"%lc %c", Translated(L"%c %hc"));
    EXPECT_EQ(L"%-10ls|%.3ls", Translated(L"%-10s|%.3s"));
    EXPECT_EQ(L"%llu %d %zx %%s", Translated(L"%I64u %I32d %Ix %%s"));
    EXPECT_EQ(L"%lld %5.2f", Translated(L"%lld %5.2f"));
}

TEST(WideFormat, FormatsWideAndNarrowArguments) {
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

TEST(WideFormat, LongOutputBeyondTheFirstAttempt) {
    std::wstring big(5000, L'x');
    wchar_t b[600];
    EXPECT_EQ(-1, _snwprintf_s(b, 600, 599, L"%s", big.c_str()));
    EXPECT_EQ(599u, std::wcslen(b));
}

}  // namespace
