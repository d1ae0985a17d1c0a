// The video properties dialog without its window: the five keys it asks the host for and the six
// fixed rows of its list, with the texts that a read puts into the second column.
#pragma once

#include "imaging/property_format.h"

#include <string>

enum : ULONG { KX_VIDEO_KEY_COUNT = 5 };
enum : int { KX_VIDEO_ROW_COUNT = 6 };

// The keys of the one GetProperties call, in its order.
extern const KxPropertyKey kKxVideoPropertyKeys[KX_VIDEO_KEY_COUNT];
// The label string of each row; row 2 has none (0) and stays empty in both columns.
extern const UINT kKxVideoRowLabels[KX_VIDEO_ROW_COUNT];

// The second column of the six rows.
struct KxVideoPropertyTexts {
    std::wstring row[KX_VIDEO_ROW_COUNT];
};

// Puts the five values into rows 3, 4, 0, 1 and 5. An absent value writes an empty text, so a
// step never leaves the former item's text behind.
void KxFormatVideoProperties(const PROPVARIANT* values, IKxPropertyTextSource& texts, KxVideoPropertyTexts& out);

// One GetProperties call for the five keys into a zeroed array. With S_OK or S_FALSE the rows
// take the values; with any other result they keep their texts. Every value is cleared again.
// Returns the call's result.
HRESULT KxReadVideoPropertyTexts(IKxItemProperties* properties, KxPcPidl item, IKxPropertyTextSource& texts,
                                 KxVideoPropertyTexts& out);
