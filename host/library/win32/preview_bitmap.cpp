// The preview bitmap on Windows: a top-down 32-bit DIB section with the pixels.
#include "host/library/in_memory_library.h"

#include <cstring>

namespace kxhost {

namespace {

HRESULT MakeDibSection(LONG width, LONG height, const DWORD* pixels, HBITMAP* bitmap) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    HBITMAP dib = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (!dib || !bits) return E_OUTOFMEMORY;
    std::memcpy(bits, pixels, static_cast<size_t>(width) * height * sizeof(DWORD));
    GdiFlush();
    *bitmap = dib;
    return S_OK;
}

}  // namespace

PreviewBitmapMaker DefaultPreviewBitmapMaker() { return &MakeDibSection; }

}  // namespace kxhost
