// Turning one property value of the host into the text that a properties dialog shows: enumerated
// values to resource strings, rationals to fractions or trimmed decimals, numbers with their unit
// strings. Each format is one entry of KxValueFormat; the dialogs' row tables name the format of
// each key.
#pragma once

#include "kx/KxContentTree.h"

#include <string>

// What formatting needs of the platform: the resource strings of ComRcRes.dll and the system's
// short size text. The Win32 dialogs read the resource library and call StrFormatByteSizeW.
class IKxPropertyTextSource {
public:
    // String `id` of the resource library; empty when there is none.
    virtual std::wstring LoadText(UINT id) = 0;
    // What StrFormatByteSizeW gives for the count (taken as the signed 64-bit value it is handed).
    virtual std::wstring FormatByteSize(ULONGLONG bytes) = 0;

protected:
    ~IKxPropertyTextSource() = default;
};

// String identifiers of the values and units, in ComRcRes.dll.
enum : UINT {
    KX_IDS_FLASH_FIRST = 136,         // 136, 137: no flash, flash fired
    KX_IDS_ORIENTATION_FIRST = 138,   // 138 to 145: orientation 1 to 8
    KX_IDS_EXPOSURE_PROGRAM_FIRST = 146,  // 146 to 154: exposure program 0 to 8
    KX_IDS_COLOR_SPACE_SRGB = 155,
    KX_IDS_COLOR_SPACE_UNCALIBRATED = 156,
    KX_IDS_UNIT_FOCAL_LENGTH = 157,
    KX_IDS_UNIT_DISTANCE = 158,
    KX_IDS_UNIT_FOCAL_LENGTH_35MM = 159,
    KX_IDS_UNIT_RESOLUTION = 160,
    KX_IDS_UNIT_PIXELS = 161,
    KX_IDS_UNIT_EXPOSURE_TIME = 162,
};

enum class KxValueFormat {
    Text,            // the string itself
    ByteSize,        // the system's short size text
    Fraction,        // "n/d" + string 162; d may be 0
    Aperture,        // "f/" + a trimmed number
    FocalLength,     // two decimals + string 157, never trimmed
    Distance,        // a trimmed decimal with a limit + string 158
    Flash,           // 0, 1: strings 136, 137
    Orientation,     // 1 to 8: strings 138 to 145
    Resolution,      // number + string 160
    ExposureProgram, // 0 to 8: strings 146 to 154
    FocalLength35,   // number + string 159
    Zoom,            // a trimmed two-decimal number, no unit
    ColorSpace,      // 1: string 155, 65535: string 156
    Pixels,          // number + string 161
    Duration,        // seconds as m:ss or h:mm:ss
};

// Removes the last character when the text is longer than one character and ends in the digit 0:
// one character at most, so "2.50" becomes "2.5", "2.00" becomes "2.0" and "2.25" stays.
void KxTrimOneZero(std::wstring& text);

// The text of a value in a format; empty for an absent value (VT_EMPTY) and for a value that the
// format leaves empty. A value whose type is not the one the format reads counts as absent: the
// host's table fixes each key's type, and reading the bits of another type would show garbage.
std::wstring KxFormatPropertyValue(KxValueFormat format, const PROPVARIANT& value, IKxPropertyTextSource& texts);

// The single formats, for values already taken out of their PROPVARIANT.
std::wstring KxFormatFractionText(ULONGLONG rational, IKxPropertyTextSource& texts);
std::wstring KxFormatApertureText(float value);
std::wstring KxFormatDistanceText(ULONGLONG rational, IKxPropertyTextSource& texts);
std::wstring KxFormatDurationText(ULONG seconds);
// "%d%s" of a count of pixels and string 161.
std::wstring KxFormatPixelsText(LONG pixels, IKxPropertyTextSource& texts);
