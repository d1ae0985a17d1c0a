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
    return CaptureWindowsToPng(std::vector<HWND>{window}, pngPath);
}

bool CaptureWindowsToPng(const std::vector<HWND>& windows, const wchar_t* pngPath) {
    RECT all = {0, 0, 0, 0};
    for (HWND window : windows) {
        RECT rc;
        if (!GetWindowRect(window, &rc)) return false;
        UnionRect(&all, &all, &rc);
    }
    const int width = all.right - all.left, height = all.bottom - all.top;
    if (width <= 0 || height <= 0) return false;

    HDC screenDC = GetDC(nullptr);
    if (!screenDC) return false;
    HDC memoryDC = CreateCompatibleDC(screenDC);
    HBITMAP bitmap = CreateCompatibleBitmap(screenDC, width, height);
    ReleaseDC(nullptr, screenDC);
    HGDIOBJ old = SelectObject(memoryDC, bitmap);
    const RECT canvas = {0, 0, width, height};
    FillRect(memoryDC, &canvas, GetSysColorBrush(COLOR_DESKTOP));
    for (HWND window : windows) {
        RECT rc;
        GetWindowRect(window, &rc);
        // let the window finish painting before its pixels are taken
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW | RDW_ERASE);
        if (HDC windowDC = GetWindowDC(window)) {
            BitBlt(memoryDC, rc.left - all.left, rc.top - all.top, rc.right - rc.left, rc.bottom - rc.top, windowDC, 0,
                   0, SRCCOPY);
            ReleaseDC(window, windowDC);
        }
    }
    SelectObject(memoryDC, old);
    DeleteDC(memoryDC);

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
