#include "host/win32/window_capture.h"

#include <objidl.h>
#include <gdiplus.h>

namespace {

// The PNG encoder's class identifier, looked up among GDI+'s encoders.
bool PngEncoder(CLSID* clsid) {
    UINT count = 0, size = 0;
    if (Gdiplus::DllExports::GdipGetImageEncodersSize(&count, &size) != Gdiplus::Ok || size == 0) return false;
    auto* codecs = static_cast<Gdiplus::ImageCodecInfo*>(HeapAlloc(GetProcessHeap(), 0, size));
    if (!codecs) return false;
    bool found = false;
    if (Gdiplus::DllExports::GdipGetImageEncoders(count, size, codecs) == Gdiplus::Ok) {
        for (UINT i = 0; i < count && !found; ++i) {
            if (lstrcmpiW(codecs[i].MimeType, L"image/png") == 0) {
                *clsid = codecs[i].Clsid;
                found = true;
            }
        }
    }
    HeapFree(GetProcessHeap(), 0, codecs);
    return found;
}

}  // namespace

bool CaptureWindowToPng(HWND window, const wchar_t* pngPath) {
    RECT rc;
    if (!GetWindowRect(window, &rc)) return false;
    const int width = rc.right - rc.left, height = rc.bottom - rc.top;
    if (width <= 0 || height <= 0) return false;

    // let the window finish painting before its pixels are taken
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW | RDW_ERASE);

    HDC windowDC = GetWindowDC(window);
    if (!windowDC) return false;
    HDC memoryDC = CreateCompatibleDC(windowDC);
    HBITMAP bitmap = CreateCompatibleBitmap(windowDC, width, height);
    HGDIOBJ old = SelectObject(memoryDC, bitmap);
    BitBlt(memoryDC, 0, 0, width, height, windowDC, 0, 0, SRCCOPY);
    SelectObject(memoryDC, old);
    DeleteDC(memoryDC);
    ReleaseDC(window, windowDC);

    bool written = false;
    Gdiplus::GdiplusStartupInput input;
    ULONG_PTR token = 0;
    if (Gdiplus::GdiplusStartup(&token, &input, nullptr) == Gdiplus::Ok) {
        Gdiplus::GpBitmap* image = nullptr;
        CLSID png;
        if (PngEncoder(&png) &&
            Gdiplus::DllExports::GdipCreateBitmapFromHBITMAP(bitmap, nullptr, &image) == Gdiplus::Ok) {
            written = Gdiplus::DllExports::GdipSaveImageToFile(image, pngPath, &png, nullptr) == Gdiplus::Ok;
            Gdiplus::DllExports::GdipDisposeImage(image);
        }
        Gdiplus::GdiplusShutdown(token);
    }
    DeleteObject(bitmap);
    return written;
}
