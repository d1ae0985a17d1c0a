// The image properties dialog without its window: the 21 keys it asks the host for, the text field
// each value fills and in which format, the list's 24 rows (21 values and 3 spacers) and the
// texts that the owner-data list hands out, and the turn of the preview by the orientation.
#pragma once

#include "imaging/property_format.h"

#include <memory>
#include <string>
#include <vector>

enum : ULONG { KX_IMAGE_KEY_COUNT = 21 };

// The keys of the one GetProperties call, in its order. KxPropImage13 stands twice (indexes 1
// and 6); the values at indexes 6 and 11 are asked for but never shown.
extern const KxPropertyKey kKxImagePropertyKeys[KX_IMAGE_KEY_COUNT];

// The text fields of the dialog, one per row that shows a value. Width and height come from the
// preview, the others from the keys they are named after.
enum KxImageField {
    KxImageFieldWidth,
    KxImageFieldHeight,
    KxImageFieldImage12,
    KxImageFieldImage13,
    KxImageFieldLocation,
    KxImageFieldFileSize,
    KxImageFieldImage11,
    KxImageFieldImage1,
    KxImageFieldImage2,
    KxImageFieldImage3,
    KxImageFieldImage4,
    KxImageFieldImage5,
    KxImageFieldImage6,
    KxImageFieldImage7,
    KxImageFieldImage8,
    KxImageFieldImage9,
    KxImageFieldImage10,
    KxImageFieldImage15,
    KxImageFieldImage16,
    KxImageFieldImage17,
    KxImageFieldImage18,
    KxImageFieldCount,
    KxImageFieldNone = -1,
};

struct KxImagePropertyTexts {
    std::wstring field[KxImageFieldCount];
    void Clear() {
        for (std::wstring& text : field) text.clear();
    }
};

// What the value at each key index fills, and how.
struct KxImageKeyFormat {
    KxImageField field;  // KxImageFieldNone: not shown
    KxValueFormat format;
};
extern const KxImageKeyFormat kKxImageKeyFormats[KX_IMAGE_KEY_COUNT];

// One row of the list, top to bottom: a label string and the field it shows; a spacer has label
// 0 and no field.
struct KxImageRow {
    UINT label;
    KxImageField field;
};
enum : int { KX_IMAGE_ROW_COUNT = 24 };
extern const KxImageRow kKxImageRows[KX_IMAGE_ROW_COUNT];

// A row as the list shows it. A spacer is a null row.
struct __tagListPropertys {
    std::wstring label;
    std::wstring value;
};
typedef std::vector<std::unique_ptr<__tagListPropertys>> KxPropertyRows;

// Formats the 21 values into the fields that keys fill (width and height are left alone) and
// gives the orientation's raw value, -1 when it is absent.
LONG KxFormatImageProperties(const PROPVARIANT* values, IKxPropertyTextSource& texts, KxImagePropertyTexts& out);

// One GetProperties call for the 21 keys into a zeroed array. With S_OK or S_FALSE the values
// are formatted; with any other result the fields stay as they are. Every value is cleared again.
// *orientation is -1 unless the call succeeded with an orientation. Returns the call's result.
HRESULT KxReadImagePropertyTexts(IKxItemProperties* properties, KxPcPidl item, IKxPropertyTextSource& texts,
                                 KxImagePropertyTexts& out, LONG* orientation);

// Replaces the rows with the 24 of the table: the label's string and ": " followed by the field's
// text, or by "-" when it is empty. Spacers are null rows.
void KxBuildImageRows(const KxImagePropertyTexts& fields, IKxPropertyTextSource& texts, KxPropertyRows& rows);

// The text that the list asks for (LVN_GETDISPINFO): column 0 the label, column 1 the value.
// Null, leaving the request untouched, for a row outside the list, another column or a spacer.
LPCWSTR KxPropertyRowText(const KxPropertyRows& rows, int row, int column);

// The RotateFlipType that shows a picture of this orientation the right way: 2 and 6 give 1,
// 3 and 7 give 2, 4 and 8 give 3, 5 gives 4, anything else 0 (no turn).
int KxRotateFlipForOrientation(LONG orientation);
