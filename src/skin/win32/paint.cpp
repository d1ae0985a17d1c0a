#include "skin/win32/paint.h"

#include <vector>

namespace hookwnd {

void DrawPicture(HDC dc, const kxskin::Picture& picture, int x, int y) {
    if (picture.Empty()) return;
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = picture.width;
    info.bmiHeader.biHeight = -picture.height;  // rows top down
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    SetDIBitsToDevice(dc, x, y, static_cast<DWORD>(picture.width), static_cast<DWORD>(picture.height), 0, 0, 0,
                      static_cast<UINT>(picture.height), picture.pixels.data(), &info, DIB_RGB_COLORS);
}

HRGN CreateSpanRegion(const std::vector<kxskin::Span>& spans) {
    if (spans.empty()) return CreateRectRgn(0, 0, 0, 0);
    std::vector<BYTE> buffer(sizeof(RGNDATAHEADER) + spans.size() * sizeof(RECT));
    auto* data = reinterpret_cast<RGNDATA*>(buffer.data());
    data->rdh.dwSize = sizeof(RGNDATAHEADER);
    data->rdh.iType = RDH_RECTANGLES;
    data->rdh.nCount = static_cast<DWORD>(spans.size());
    data->rdh.nRgnSize = static_cast<DWORD>(spans.size() * sizeof(RECT));
    RECT bounds = {spans[0].left, spans[0].top, spans[0].right, spans[0].bottom};
    auto* rects = reinterpret_cast<RECT*>(data->Buffer);
    for (size_t i = 0; i < spans.size(); ++i) {
        rects[i] = RECT{spans[i].left, spans[i].top, spans[i].right, spans[i].bottom};
        UnionRect(&bounds, &bounds, &rects[i]);
    }
    data->rdh.rcBound = bounds;
    return ExtCreateRegion(nullptr, static_cast<DWORD>(buffer.size()), data);
}

COLORREF ToColorRef(uint32_t rgb) { return RGB((rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF); }

}  // namespace hookwnd
