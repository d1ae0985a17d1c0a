// The preview's size and the control's place.
#include "imaging/preview_placement.h"

#include "imaging/fit_box.h"

bool KxPlacePreviewControl(LONG* width, LONG* height, RECT* rect, LONG roomWidth, LONG roomHeight) {
    if (roomWidth < 0 || roomHeight < 0 || *width < 0 || *height < 0) return false;
    bool move = false;
    if (*width > roomWidth || *height > roomHeight) {
        UINT w = static_cast<UINT>(*width), h = static_cast<UINT>(*height);
        ScaleToFitBox(&w, &h, static_cast<UINT>(roomWidth), static_cast<UINT>(roomHeight));
        *width = static_cast<LONG>(w);
        *height = static_cast<LONG>(h);
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
