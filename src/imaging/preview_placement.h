// Where a properties dialog's preview goes: the picture's size shrunk with one ratio into the
// preview box and into the room the control had at the start, and the control's rectangle
// centred on that size.
#pragma once

#include "kx/KxPlatform.h"

// The box every preview is shrunk into first (ScaleToFitBox).
enum : LONG { KX_PREVIEW_BOX_WIDTH = 340, KX_PREVIEW_BOX_HEIGHT = 200 };

// The arithmetic of fitting the preview control. Nothing happens (false, sizes kept, rectangle
// untouched) when the room's width or height, the width or the height is negative. Otherwise a
// size beyond the room is shrunk into it, and a control of some width is centred on the size:
// left and top move by half the difference, a signed division that truncates toward zero.
// Returns whether the control has to move; *rect is the control's rectangle after.
bool KxPlacePreviewControl(LONG* width, LONG* height, RECT* rect, LONG roomWidth, LONG roomHeight);
