// gdiplus.dll with one of Wine's known gaps bridged: Windows answers Ok with no items for an
// image without metadata, Wine answers PropertyNotFound (it reads no metadata at all). With
// `windowsNoMetadata` set, that answer is given as Windows gives it, so that the re-encoding path
// runs here on real pixels and real encoders. The metadata copy itself is pinned on the fake.
#pragma once

#include "imaging/win32/gdiplus_flat_win32.h"

class CNoMetadataAsWindows : public CGdiplusFlatWin32 {
public:
    bool windowsNoMetadata = true;

    kxgdip::Status GdipGetPropertySize(kxgdip::GpImage* image, UINT* size, UINT* count) override {
        const kxgdip::Status status = CGdiplusFlatWin32::GdipGetPropertySize(image, size, count);
        if (status != kxgdip::PropertyNotFound || !windowsNoMetadata || !size || !count) return status;
        *size = *count = 0;
        return kxgdip::Ok;
    }
    kxgdip::Status GdipGetAllPropertyItems(kxgdip::GpImage* image, UINT size, UINT count,
                                           kxgdip::PropertyItem* items) override {
        const kxgdip::Status status = CGdiplusFlatWin32::GdipGetAllPropertyItems(image, size, count, items);
        if (status == kxgdip::PropertyNotFound && windowsNoMetadata && size == 0 && count == 0) return kxgdip::Ok;
        return status;
    }
};
