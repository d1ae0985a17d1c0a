// Every value format of the properties dialogs, row by row: the worked cases of each format, the
// edges of the enumerations, absent values and values of the wrong type.
#include "imaging/property_format.h"
#include "tests/unit/imaging/property_text_source_fake.h"

#include <gtest/gtest.h>

namespace kxtest {
namespace {

PROPVARIANT Of(VARTYPE vt) {
    PROPVARIANT p = {};
    p.vt = vt;
    return p;
}
PROPVARIANT Int(LONG v) { PROPVARIANT p = Of(VT_I4); return p.lVal = v, p; }
PROPVARIANT UInt(ULONG v) { PROPVARIANT p = Of(VT_UI4); return p.ulVal = v, p; }
PROPVARIANT Size(ULONGLONG v) { PROPVARIANT p = Of(VT_UI8); return p.uhVal.QuadPart = v, p; }
PROPVARIANT Ratio(DWORD numerator, DWORD denominator) { return Size(KxMakeRational(numerator, denominator)); }
PROPVARIANT Real(float v) { PROPVARIANT p = Of(VT_R4); return p.fltVal = v, p; }
PROPVARIANT Text(LPCWSTR s) { PROPVARIANT p = Of(VT_LPWSTR); return p.pwszVal = const_cast<LPWSTR>(s), p; }
const PROPVARIANT kAbsent = {};

TEST(PropertyFormat, TrimOneZeroTakesOneTrailingZeroAtMost) {
    const struct { LPCWSTR in, out; } cases[] = {{L"2.50", L"2.5"}, {L"2.00", L"2.0"}, {L"2.25", L"2.25"}, {L"0", L"0"},
                 {L"", L""},        {L"00", L"0"},    {L"10", L"1"}};
    for (const auto& c : cases) {
        std::wstring text = c.in;
        KxTrimOneZero(text);
        EXPECT_EQ(c.out, text) << c.in;
    }
}

TEST(PropertyFormat, EachFormatGivesItsText) {
    FakePropertyTexts texts;
    const struct { KxValueFormat format; PROPVARIANT value; LPCWSTR text; } cases[] = {
        // exposure time: a fraction, nothing divided
        {KxValueFormat::Fraction, Ratio(1, 250), L"1/250[162]"},
        {KxValueFormat::Fraction, Ratio(10, 0), L"10/0[162]"},
        {KxValueFormat::Fraction, Ratio(0xFFFFFFFF, 1), L"-1/1[162]"},
        // subject distance: trimmed, with a limit of 0.005001 read from single precision
        {KxValueFormat::Distance, Ratio(50, 10), L"5[158]"},
        {KxValueFormat::Distance, Ratio(47, 10), L"4.7[158]"},
        {KxValueFormat::Distance, Ratio(9, 4), L"2.25[158]"},
        {KxValueFormat::Distance, Ratio(2001, 1000), L"2[158]"},
        {KxValueFormat::Distance, Ratio(1, 200), L"0"},
        {KxValueFormat::Distance, Ratio(5001, 1000000), L"0.01[158]"},  // the float limit itself is not below it
        {KxValueFormat::Distance, Ratio(7, 0), L""},
        {KxValueFormat::Distance, Ratio(0xFFFFFFFF, 1), L"4294967296[158]"},  // beyond 32 bits: the whole number
        // focal length: two decimals, never trimmed
        {KxValueFormat::FocalLength, Ratio(1, 3), L"0.33[157]"},
        {KxValueFormat::FocalLength, Ratio(2, 1), L"2.00[157]"},
        // digital zoom: trimmed, no unit
        {KxValueFormat::Zoom, Ratio(2, 1), L"2.0"},
        {KxValueFormat::Zoom, Ratio(5, 2), L"2.5"},
        {KxValueFormat::Zoom, Ratio(1, 0), L""},
        // aperture
        {KxValueFormat::Aperture, Real(2.8f), L"f/2.8"},
        {KxValueFormat::Aperture, Real(4.0f), L"f/4"},
        {KxValueFormat::Aperture, Real(5.66f), L"f/5.66"},
        {KxValueFormat::Aperture, Real(0.0f), L"f/0"},
        {KxValueFormat::Aperture, Real(11.0000005f), L"f/11"},
        {KxValueFormat::Aperture, Real(-0.5f), L"f/0"},
        // enumerations and their edges
        {KxValueFormat::Flash, Int(0), L"[136]"},
        {KxValueFormat::Flash, Int(1), L"[137]"},
        {KxValueFormat::Flash, Int(2), L""},
        {KxValueFormat::Orientation, Int(1), L"[138]"},
        {KxValueFormat::Orientation, Int(6), L"[143]"},
        {KxValueFormat::Orientation, Int(0), L""},
        {KxValueFormat::Orientation, Int(9), L""},
        {KxValueFormat::ExposureProgram, Int(0), L"[146]"},
        {KxValueFormat::ExposureProgram, UInt(8), L"[154]"},
        {KxValueFormat::ExposureProgram, Int(9), L""},
        {KxValueFormat::ExposureProgram, UInt(0x80000000u), L""},
        {KxValueFormat::ColorSpace, Int(1), L"[155]"},
        {KxValueFormat::ColorSpace, Int(65535), L"[156]"},
        {KxValueFormat::ColorSpace, Int(2), L""},
        // numbers with units, printed signed
        {KxValueFormat::Resolution, Int(72), L"72[160]"},
        {KxValueFormat::Resolution, UInt(0xFFFFFFFF), L"-1[160]"},
        {KxValueFormat::FocalLength35, Int(28), L"28[159]"},
        {KxValueFormat::Pixels, Int(300), L"300[161]"},
        // strings and sizes
        {KxValueFormat::Text, Text(L"D:\\Pictures"), L"D:\\Pictures"},
        {KxValueFormat::Text, Text(nullptr), L""},
        {KxValueFormat::ByteSize, Size(1340), L"1.30 KB"},
        // absent values and values of another type than the key's
        {KxValueFormat::Text, kAbsent, L""},
        {KxValueFormat::Resolution, Text(L"72"), L""},
        {KxValueFormat::Distance, Int(5), L""},
        {KxValueFormat::Text, Int(4), L""},
    };
    for (size_t i = 0; i < sizeof(cases) / sizeof(cases[0]); ++i) {
        EXPECT_EQ(cases[i].text, KxFormatPropertyValue(cases[i].format, cases[i].value, texts))
            << "row " << i << ", format " << static_cast<int>(cases[i].format);
    }
}

TEST(PropertyFormat, DurationShowsHoursOnlyFromOneHourOn) {
    const struct {
        ULONG seconds;
        LPCWSTR text;
    } cases[] = {{0, L"0:00"},       {59, L"0:59"},       {60, L"1:00"},          {3599, L"59:59"},
                 {3600, L"1:00:00"}, {3725, L"1:02:05"}, {36000, L"10:00:00"},
                 {4294967295u, L"1193046:28:15"}};
    FakePropertyTexts texts;
    for (const auto& c : cases) {
        EXPECT_EQ(c.text, KxFormatDurationText(c.seconds)) << c.seconds;
        EXPECT_EQ(c.text, KxFormatPropertyValue(KxValueFormat::Duration, UInt(c.seconds), texts)) << c.seconds;
    }
}

}  // namespace
}  // namespace kxtest
