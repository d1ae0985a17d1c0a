// CGdiplusUtil: fitting a size into the device box, resizing into a new bitmap, and carrying the
// metadata over with the two size tags rewritten.
#include "imaging/gdiplus_util.h"

#include "frame/trace_log.h"

#include <cstring>
#include <vector>

using namespace kxgdip;

namespace {

// Truncation toward zero into 32 bits. A zero width or height gives a quotient that is not
// finite (the callers test for positive sizes first and never pass one); such a quotient, or one
// beyond 32 bits, comes out as 0 so that the conversion is always defined.
UINT TruncToUInt(double value) {
    if (!(value >= 0.0) || value >= 4294967296.0) return 0;
    return static_cast<UINT>(value);
}

}  // namespace

void CGdiplusUtil::FitImageToDeviceDimension(UINT* imageWidth, UINT* imageHeight, UINT deviceWidth, UINT deviceHeight) {
    const UINT w = *imageWidth, h = *imageHeight;
    const double W = w, H = h, DW = deviceWidth, DH = deviceHeight;
    // Two divisions each, in this order: H / (W / DW) can be a pixel below H * DW / W.
    const UINT heightForDeviceWidth = TruncToUInt(H / (W / DW));
    const UINT widthForDeviceHeight = TruncToUInt(W / (H / DH));

    bool fullWidth;  // (DW, heightForDeviceWidth); otherwise (widthForDeviceHeight, DH)
    if (w > h)
        fullWidth = heightForDeviceWidth <= deviceHeight;
    else if (w < h)
        fullWidth = widthForDeviceHeight > deviceWidth;
    else
        fullWidth = deviceWidth <= deviceHeight;

    if (fullWidth) {
        *imageWidth = deviceWidth;
        *imageHeight = heightForDeviceWidth;
    } else {
        *imageWidth = widthForDeviceHeight;
        *imageHeight = deviceHeight;
    }
    TraceLog(L"S:CGdiplusUtil::FitImageToDeviceDimension> ImageWidth = %d, ImageHeight = %d",
             static_cast<int>(*imageWidth), static_cast<int>(*imageHeight));
}

HRESULT CGdiplusUtil::ResizeImage(CGdipBitmap* sourceBitmap, CGdipBitmap** destBitmap, UINT deviceWidth,
                                  UINT deviceHeight) {
    if (!sourceBitmap || !destBitmap) return E_POINTER;
    UINT width = sourceBitmap->GetWidth();
    UINT height = sourceBitmap->GetHeight();
    FitImageToDeviceDimension(&width, &height, deviceWidth, deviceHeight);

    *destBitmap = CGdipBitmap::Create(m_gdip, static_cast<INT>(width), static_cast<INT>(height), PixelFormat32bppARGB);
    if (!*destBitmap) {
        TraceLog(L"E:CGdiplusUtil::ResizeImage> Failed to create dest bitmap object");
        return E_OUTOFMEMORY;
    }
    CGdipGraphics graphics(*destBitmap);
    if (graphics.GetLastStatus() != Ok) {
        TraceLog(L"E:CGdiplusUtil::ResizeImage> graphics constructor");
        return static_cast<HRESULT>(0x8007000Du);
    }
    // Failures of the quality settings stay in the surface's last status; they decide nothing.
    graphics.SetPixelOffsetMode(PixelOffsetModeHighQuality);
    graphics.SetSmoothingMode(SmoothingModeHighQuality);
    graphics.SetInterpolationMode(InterpolationModeHighQualityBicubic);

    HRESULT result = S_OK;
    Status status = graphics.DrawImage(sourceBitmap, 0, 0, static_cast<INT>(width), static_cast<INT>(height));
    if (status != Ok) {
        TraceLog(L"E:CGdiplusUtil::ResizeImage> graphics.DrawImage failed");
        result = Gdi2HResult(status);
    }
    return result;
}

HRESULT CGdiplusUtil::CopyMetaData(CGdipBitmap* sourceBitmap, CGdipBitmap* destBitmap, UINT width, UINT height) {
    if (!sourceBitmap || !destBitmap) return E_POINTER;
    UINT size = 0, count = 0;
    Status status = sourceBitmap->GetPropertySize(&size, &count);
    if (status != Ok) {
        TraceLog(L"E:CGdiplusUtil::CopyMetaData> pSrcBitmap->GetPropertySize failed");
        return Gdi2HResult(status);
    }
    TraceLog(L"S:CGdiplusUtil::CopyMetaData> No. of properties = %d, Buffer size required = %d",
             static_cast<int>(count), static_cast<int>(size));

    // An image without metadata answers a size of 0; one byte keeps that from reading as a want
    // of memory.
    void* block = m_gdip.GdipAlloc(size ? size : 1);
    if (!block) {
        TraceLog(L"E:CGdiplusUtil::CopyMetaData> Out of memory when trying to allocate buffer to retrieve image "
                 L"properties");
        return E_OUTOFMEMORY;
    }
    PropertyItem* items = static_cast<PropertyItem*>(block);
    status = sourceBitmap->GetAllPropertyItems(size, count, items);
    if (status != Ok) {
        TraceLog(L"E:CGdiplusUtil::CopyMetaData> pSrcBitmap->GetAllPropertyItems failed");
        m_gdip.GdipFree(block);
        return Gdi2HResult(status);
    }
    if (static_cast<size_t>(count) * sizeof(PropertyItem) > size) count = size / sizeof(PropertyItem);

    // The size tags take the caller's numbers as 32-bit little-endian values. Length and type
    // stay, so a tag typed short takes the low 16 bits. A tag that claims more than 4 bytes (a
    // damaged file) reads the number followed by zeros: the platform never reads past our value.
    const BYTE widthBytes[4] = {BYTE(width), BYTE(width >> 8), BYTE(width >> 16), BYTE(width >> 24)};
    const BYTE heightBytes[4] = {BYTE(height), BYTE(height >> 8), BYTE(height >> 16), BYTE(height >> 24)};
    std::vector<BYTE> longValue;
    for (UINT i = 0; i < count; ++i) {
        PropertyItem item = items[i];
        const BYTE* replacement = nullptr;
        if (item.id == PropertyTagImageWidth) {
            TraceLog(L"S:CGdiplusUtil::CopyMetaData> Updating [PropertyTagImageWidth] metadata = %d",
                     static_cast<int>(width));
            replacement = widthBytes;
        } else if (item.id == PropertyTagImageHeight) {
            TraceLog(L"S:CGdiplusUtil::CopyMetaData> Updating [PropertyTagImageHeight] metadata = %d",
                     static_cast<int>(height));
            replacement = heightBytes;
        }
        if (replacement) {
            if (item.length <= 4) {
                item.value = const_cast<BYTE*>(replacement);
            } else {
                longValue.assign(item.length, 0);
                std::memcpy(longValue.data(), replacement, 4);
                item.value = longValue.data();
            }
        }
        // A refused item stays in the destination's last status and does not stop the copy.
        destBitmap->SetPropertyItem(&item);
    }
    m_gdip.GdipFree(block);
    return S_OK;
}
