// The image properties dialog's keys, fields and rows.
#include "imaging/image_property_rows.h"

#include <new>

const KxPropertyKey kKxImagePropertyKeys[KX_IMAGE_KEY_COUNT] = {
    KxPropImage12, KxPropImage13, KxPropLocation, KxPropImage11, KxPropImage1,   KxPropImage2,   KxPropImage13,
    KxPropImage7,  KxPropImage8,  KxPropImage9,   KxPropImage10, KxPropImage14,  KxPropImage15,  KxPropImage16,
    KxPropImage18, KxPropFileSize, KxPropImage3,  KxPropImage5,  KxPropImage17,  KxPropImage6,   KxPropImage4,
};

const KxImageKeyFormat kKxImageKeyFormats[KX_IMAGE_KEY_COUNT] = {
    {KxImageFieldImage12, KxValueFormat::Text},             // 0
    {KxImageFieldImage13, KxValueFormat::Text},             // 1
    {KxImageFieldLocation, KxValueFormat::Text},            // 2
    {KxImageFieldImage11, KxValueFormat::Text},             // 3
    {KxImageFieldImage1, KxValueFormat::Text},              // 4
    {KxImageFieldImage2, KxValueFormat::Text},              // 5
    {KxImageFieldNone, KxValueFormat::Text},                // 6: KxPropImage13 again
    {KxImageFieldImage7, KxValueFormat::Flash},             // 7
    {KxImageFieldImage8, KxValueFormat::Orientation},       // 8
    {KxImageFieldImage9, KxValueFormat::Resolution},        // 9
    {KxImageFieldImage10, KxValueFormat::Resolution},       // 10
    {KxImageFieldNone, KxValueFormat::Text},                // 11: KxPropImage14
    {KxImageFieldImage15, KxValueFormat::ExposureProgram},  // 12
    {KxImageFieldImage16, KxValueFormat::FocalLength35},    // 13
    {KxImageFieldImage18, KxValueFormat::ColorSpace},       // 14
    {KxImageFieldFileSize, KxValueFormat::ByteSize},        // 15
    {KxImageFieldImage3, KxValueFormat::Fraction},          // 16
    {KxImageFieldImage5, KxValueFormat::FocalLength},       // 17
    {KxImageFieldImage17, KxValueFormat::Zoom},             // 18
    {KxImageFieldImage6, KxValueFormat::Distance},          // 19
    {KxImageFieldImage4, KxValueFormat::Aperture},          // 20
};

const KxImageRow kKxImageRows[KX_IMAGE_ROW_COUNT] = {
    {128, KxImageFieldWidth},    {129, KxImageFieldHeight},   {122, KxImageFieldImage12}, {123, KxImageFieldImage13},
    {0, KxImageFieldNone},
    {59, KxImageFieldLocation},  {8, KxImageFieldFileSize},   {119, KxImageFieldImage11},
    {0, KxImageFieldNone},
    {110, KxImageFieldImage1},   {135, KxImageFieldImage2},
    {0, KxImageFieldNone},
    {111, KxImageFieldImage3},   {112, KxImageFieldImage4},   {113, KxImageFieldImage5},  {114, KxImageFieldImage6},
    {115, KxImageFieldImage7},   {116, KxImageFieldImage8},   {117, KxImageFieldImage9},  {118, KxImageFieldImage10},
    {121, KxImageFieldImage15},  {124, KxImageFieldImage16},  {125, KxImageFieldImage17}, {126, KxImageFieldImage18},
};

namespace {
const int kOrientationIndex = 8;
}

LONG KxFormatImageProperties(const PROPVARIANT* values, IKxPropertyTextSource& texts, KxImagePropertyTexts& out) {
    for (ULONG i = 0; i < KX_IMAGE_KEY_COUNT; ++i) {
        const KxImageKeyFormat& entry = kKxImageKeyFormats[i];
        if (entry.field != KxImageFieldNone)
            out.field[entry.field] = KxFormatPropertyValue(entry.format, values[i], texts);
    }
    const PROPVARIANT& orientation = values[kOrientationIndex];
    return orientation.vt == VT_I4 || orientation.vt == VT_UI4 ? orientation.lVal : -1;
}

HRESULT KxReadImagePropertyTexts(IKxItemProperties* properties, KxPcPidl item, IKxPropertyTextSource& texts,
                                 KxImagePropertyTexts& out, LONG* orientation) {
    *orientation = -1;
    if (!properties) return E_POINTER;
    PROPVARIANT values[KX_IMAGE_KEY_COUNT];
    for (PROPVARIANT& v : values) PropVariantInit(&v);
    const HRESULT hr = properties->GetProperties(item, KX_IMAGE_KEY_COUNT, kKxImagePropertyKeys, values);
    HRESULT result = hr;
    if (hr == S_OK || hr == S_FALSE) {
        try {
            *orientation = KxFormatImageProperties(values, texts, out);
        } catch (const std::bad_alloc&) {
            result = E_OUTOFMEMORY;
        }
    }
    for (PROPVARIANT& v : values) PropVariantClear(&v);
    return result;
}

void KxBuildImageRows(const KxImagePropertyTexts& fields, IKxPropertyTextSource& texts, KxPropertyRows& rows) {
    rows.clear();
    rows.reserve(KX_IMAGE_ROW_COUNT);
    for (const KxImageRow& entry : kKxImageRows) {
        if (entry.field == KxImageFieldNone) {
            rows.emplace_back();
            continue;
        }
        std::unique_ptr<__tagListPropertys> row(new __tagListPropertys);
        row->label = texts.LoadText(entry.label);
        const std::wstring& text = fields.field[entry.field];
        row->value = L": " + (text.empty() ? std::wstring(L"-") : text);
        rows.push_back(std::move(row));
    }
}

LPCWSTR KxPropertyRowText(const KxPropertyRows& rows, int row, int column) {
    if (row < 0 || static_cast<size_t>(row) >= rows.size() || (column != 0 && column != 1)) return nullptr;
    const __tagListPropertys* entry = rows[static_cast<size_t>(row)].get();
    if (!entry) return nullptr;
    return column == 0 ? entry->label.c_str() : entry->value.c_str();
}

int KxRotateFlipForOrientation(LONG orientation) {
    switch (orientation) {
        case 2:
        case 6:
            return 1;  // Rotate90FlipNone
        case 3:
        case 7:
            return 2;  // Rotate180FlipNone
        case 4:
        case 8:
            return 3;  // Rotate270FlipNone
        case 5:
            return 4;  // RotateNoneFlipX
        default:
            return 0;
    }
}
