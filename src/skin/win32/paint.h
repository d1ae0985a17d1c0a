// Drawing the library's pictures with GDI: pixels to a device context, spans to a window region.
#pragma once

#include <windows.h>

#include <vector>

#include "skin/pixels.h"

namespace hookwnd {

// Draws the picture's colours (alpha ignored: the picture is opaque by now) with its top left
// corner at x, y.
void DrawPicture(HDC dc, const kxskin::Picture& picture, int x, int y);

// A region made of the spans; null when the platform refuses one. The caller owns it.
HRGN CreateSpanRegion(const std::vector<kxskin::Span>& spans);

COLORREF ToColorRef(uint32_t rgb);

}  // namespace hookwnd
