// The value formats of the properties dialogs.
#include "imaging/property_format.h"

#include <cmath>
#include <cwchar>

namespace {

// The subject distance's limit: the single-precision number 0.005001 read as a double
// (0.005001000128686428), below which a distance shows as 0 without a unit.
const double kDistanceLimit = static_cast<double>(0.005001f);
// How close an aperture must come to a whole number to show as one.
const double kApertureWholeLimit = 0.000001;

std::wstring Number(LONG value) { return std::to_wstring(static_cast<int>(value)); }

// A whole number held in a floating value, printed like "%d" where it fits 32 bits. Truncating a
// float into a 32-bit int is undefined beyond that range, so the whole value is printed instead.
std::wstring WholeNumber(double whole) {
    WCHAR buffer[64];
    std::swprintf(buffer, 64, L"%.0f", whole + 0.0);  // + 0.0: -0 prints as 0
    return buffer;
}

std::wstring TwoDecimals(double value) {
    WCHAR buffer[64];
    std::swprintf(buffer, 64, L"%.2f", value);
    return buffer;
}

double Quotient(ULONGLONG rational) {
    return static_cast<double>(KxRationalNumerator(rational)) / static_cast<double>(KxRationalDenominator(rational));
}

bool Is32Bit(const PROPVARIANT& v) { return v.vt == VT_I4 || v.vt == VT_UI4; }
bool Is64Bit(const PROPVARIANT& v) { return v.vt == VT_UI8 || v.vt == VT_I8; }

// String first + index when index lies in [0, count), else empty.
std::wstring Enumerated(LONG value, LONG lowest, LONG count, UINT firstId, IKxPropertyTextSource& texts) {
    if (value < lowest || value - lowest >= count) return std::wstring();
    return texts.LoadText(firstId + static_cast<UINT>(value - lowest));
}

}  // namespace

void KxTrimOneZero(std::wstring& text) {
    if (text.size() > 1 && text.back() == L'0') text.pop_back();
}

std::wstring KxFormatFractionText(ULONGLONG rational, IKxPropertyTextSource& texts) {
    // Nothing is divided, so a denominator of 0 shows as it is.
    return Number(static_cast<LONG>(KxRationalNumerator(rational))) + L"/" +
           Number(static_cast<LONG>(KxRationalDenominator(rational))) + texts.LoadText(KX_IDS_UNIT_EXPOSURE_TIME);
}

std::wstring KxFormatApertureText(float value) {
    const float whole = std::trunc(value);
    if (value - whole <= kApertureWholeLimit) return L"f/" + WholeNumber(whole);
    std::wstring number = TwoDecimals(value);
    KxTrimOneZero(number);
    return L"f/" + number;
}

std::wstring KxFormatDistanceText(ULONGLONG rational, IKxPropertyTextSource& texts) {
    if (KxRationalDenominator(rational) == 0) return std::wstring();
    const float v = static_cast<float>(Quotient(rational));
    if (v < kDistanceLimit) return L"0";
    const float whole = std::trunc(v);
    std::wstring number;
    if (v - whole < kDistanceLimit) {
        number = WholeNumber(whole);
    } else {
        number = TwoDecimals(v);
        KxTrimOneZero(number);
    }
    return number + texts.LoadText(KX_IDS_UNIT_DISTANCE);
}

std::wstring KxFormatDurationText(ULONG seconds) {
    const ULONG minutes = seconds / 60, hours = minutes / 60;
    WCHAR buffer[32];
    if (hours >= 1) {
        std::swprintf(buffer, 32, L"%d:%02d:%02d", static_cast<int>(hours), static_cast<int>(minutes % 60),
                      static_cast<int>(seconds % 60));
    } else {
        std::swprintf(buffer, 32, L"%d:%02d", static_cast<int>(minutes), static_cast<int>(seconds % 60));
    }
    return buffer;
}

std::wstring KxFormatPixelsText(LONG pixels, IKxPropertyTextSource& texts) {
    return Number(pixels) + texts.LoadText(KX_IDS_UNIT_PIXELS);
}

std::wstring KxFormatPropertyValue(KxValueFormat format, const PROPVARIANT& value, IKxPropertyTextSource& texts) {
    switch (format) {
        case KxValueFormat::Text:
            if (value.vt != VT_LPWSTR || !value.pwszVal) return std::wstring();
            return value.pwszVal;
        case KxValueFormat::ByteSize:
            return Is64Bit(value) ? texts.FormatByteSize(value.uhVal.QuadPart) : std::wstring();
        case KxValueFormat::Aperture:
            return value.vt == VT_R4 ? KxFormatApertureText(value.fltVal) : std::wstring();
        default:
            break;
    }

    if (Is64Bit(value)) {  // the rationals
        const ULONGLONG rational = value.uhVal.QuadPart;
        const bool noDenominator = KxRationalDenominator(rational) == 0;
        switch (format) {
            case KxValueFormat::Fraction:
                return KxFormatFractionText(rational, texts);
            case KxValueFormat::FocalLength:
                if (noDenominator) return std::wstring();
                return TwoDecimals(Quotient(rational)) + texts.LoadText(KX_IDS_UNIT_FOCAL_LENGTH);
            case KxValueFormat::Distance:
                return KxFormatDistanceText(rational, texts);
            case KxValueFormat::Zoom: {
                if (noDenominator) return std::wstring();
                std::wstring number = TwoDecimals(Quotient(rational));
                KxTrimOneZero(number);
                return number;
            }
            default:
                return std::wstring();
        }
    }

    if (!Is32Bit(value)) return std::wstring();
    const LONG n = value.lVal;
    switch (format) {
        case KxValueFormat::Flash:
            return Enumerated(n, 0, 2, KX_IDS_FLASH_FIRST, texts);
        case KxValueFormat::Orientation:
            return Enumerated(n, 1, 8, KX_IDS_ORIENTATION_FIRST, texts);
        case KxValueFormat::ExposureProgram:
            return Enumerated(n, 0, 9, KX_IDS_EXPOSURE_PROGRAM_FIRST, texts);
        case KxValueFormat::ColorSpace:
            if (n == 1) return texts.LoadText(KX_IDS_COLOR_SPACE_SRGB);
            if (n == 65535) return texts.LoadText(KX_IDS_COLOR_SPACE_UNCALIBRATED);
            return std::wstring();
        case KxValueFormat::Resolution:
            return Number(n) + texts.LoadText(KX_IDS_UNIT_RESOLUTION);
        case KxValueFormat::FocalLength35:
            return Number(n) + texts.LoadText(KX_IDS_UNIT_FOCAL_LENGTH_35MM);
        case KxValueFormat::Pixels:
            return KxFormatPixelsText(n, texts);
        case KxValueFormat::Duration:
            return KxFormatDurationText(value.ulVal);
        default:
            return std::wstring();
    }
}
