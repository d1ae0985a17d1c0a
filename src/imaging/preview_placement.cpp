// The preview's size and the control's place.
#include "imaging/preview_placement.h"

void KxShrinkIntoBox(LONG* width, LONG* height, LONG maxWidth, LONG maxHeight) {
    const ULONG w = static_cast<ULONG>(*width), h = static_cast<ULONG>(*height);
    if (w <= static_cast<ULONG>(maxWidth) && h <= static_cast<ULONG>(maxHeight)) return;
    const double ratioW = static_cast<double>(w) / maxWidth, ratioH = static_cast<double>(h) / maxHeight;
    const double ratio = ratioW > ratioH ? ratioW : ratioH;
    *width = static_cast<LONG>(w / ratio);
    *height = static_cast<LONG>(h / ratio);
}

bool KxPlacePreviewControl(LONG* width, LONG* height, RECT* rect, LONG roomWidth, LONG roomHeight) {
    if (roomWidth < 0 || roomHeight < 0 || *width < 0 || *height < 0) return false;
    bool move = false;
    if (*width > roomWidth || *height > roomHeight) {
        KxShrinkIntoBox(width, height, roomWidth, roomHeight);
        move = true;
    }
    if (rect->right - rect->left > 0) {
        if (rect->right - rect->left != *width) {
            rect->left += (rect->right - rect->left - *width) / 2;
            rect->right = rect->left + *width;
            move = true;
        }
        if (rect->bottom - rect->top != *height) {
            rect->top += (rect->bottom - rect->top - *height) / 2;
            rect->bottom = rect->top + *height;
            move = true;
        }
    }
    return move;
}
