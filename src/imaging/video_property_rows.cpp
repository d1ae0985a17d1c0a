// The video properties dialog's keys and rows.
#include "imaging/video_property_rows.h"

#include <new>

const KxPropertyKey kKxVideoPropertyKeys[KX_VIDEO_KEY_COUNT] = {KxPropLocation, KxPropFileSize, KxPropVideo14,
                                                                KxPropVideo15, KxPropDuration};

const UINT kKxVideoRowLabels[KX_VIDEO_ROW_COUNT] = {128, 129, 0, 59, 8, 69};

namespace {

// For each key in call order: the row it fills and its format.
const struct {
    int row;
    KxValueFormat format;
} kVideoKeyRows[KX_VIDEO_KEY_COUNT] = {
    {3, KxValueFormat::Text},   {4, KxValueFormat::ByteSize}, {0, KxValueFormat::Pixels},
    {1, KxValueFormat::Pixels}, {5, KxValueFormat::Duration},
};

}  // namespace

void KxFormatVideoProperties(const PROPVARIANT* values, IKxPropertyTextSource& texts, KxVideoPropertyTexts& out) {
    for (ULONG i = 0; i < KX_VIDEO_KEY_COUNT; ++i)
        out.row[kVideoKeyRows[i].row] = KxFormatPropertyValue(kVideoKeyRows[i].format, values[i], texts);
}

HRESULT KxReadVideoPropertyTexts(IKxItemProperties* properties, KxPcPidl item, IKxPropertyTextSource& texts,
                                 KxVideoPropertyTexts& out) {
    if (!properties) return E_POINTER;
    PROPVARIANT values[KX_VIDEO_KEY_COUNT];
    for (PROPVARIANT& v : values) PropVariantInit(&v);
    const HRESULT hr = properties->GetProperties(item, KX_VIDEO_KEY_COUNT, kKxVideoPropertyKeys, values);
    HRESULT result = hr;
    if (hr == S_OK || hr == S_FALSE) {
        try {
            KxFormatVideoProperties(values, texts, out);
        } catch (const std::bad_alloc&) {
            result = E_OUTOFMEMORY;
        }
    }
    for (PROPVARIANT& v : values) PropVariantClear(&v);
    return result;
}
