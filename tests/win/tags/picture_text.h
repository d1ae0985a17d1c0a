// A picture's bytes as the tag tests under Wine read them back: "JPEG 120x80" when GDI+ decodes a
// JPEG, "other ..." for another format, "unreadable" when it decodes nothing.
#pragma once

#include <windows.h>
#include <gdiplus.h>
#include <shlwapi.h>

#include <string>
#include <vector>

namespace kxtest {

inline std::string DescribePicture(const std::vector<BYTE>& bytes) {
    using namespace Gdiplus;
    GdiplusStartupInput input;
    ULONG_PTR token = 0;
    if (GdiplusStartup(&token, &input, nullptr) != Ok) return "no platform";
    std::string out = "unreadable";
    IStream* stream = SHCreateMemStream(bytes.data(), static_cast<UINT>(bytes.size()));
    GpBitmap* bitmap = nullptr;
    if (stream && DllExports::GdipCreateBitmapFromStream(stream, &bitmap) == Ok && bitmap) {
        UINT w = 0, h = 0;
        GUID format = {};
        DllExports::GdipGetImageWidth(bitmap, &w);
        DllExports::GdipGetImageHeight(bitmap, &h);
        DllExports::GdipGetImageRawFormat(bitmap, &format);
        out = (IsEqualGUID(format, ImageFormatJPEG) ? "JPEG " : "other ") + std::to_string(w) + "x" + std::to_string(h);
        DllExports::GdipDisposeImage(bitmap);
    }
    if (stream) stream->Release();
    GdiplusShutdown(token);
    return out;
}

}  // namespace kxtest
