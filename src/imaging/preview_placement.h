// Where a properties dialog's preview goes: the picture's size shrunk with one ratio into the
// preview box and into the room the control had at the start, and the control's rectangle
// centred on that size.
#pragma once

#include "kx/KxPlatform.h"

// The box every preview is shrunk into first.
enum : LONG { KX_PREVIEW_BOX_WIDTH = 340, KX_PREVIEW_BOX_HEIGHT = 200 };

// Shrinks width x height into the box with one ratio in double precision, truncating toward
// zero; a size that fits (compared unsigned) stays as it is. The image utility's ScaleToFitBox
// does the same for the art pipeline: where both are built, this calls it.
void KxShrinkIntoBox(LONG* width, LONG* height, LONG maxWidth, LONG maxHeight);

// The arithmetic of fitting the preview control. Nothing happens (false, sizes kept, rectangle
// untouched) when the room's width or height, the width or the height is negative. Otherwise a
// size beyond the room is shrunk into it, and a control of some width is centred on the size:
// left and top move by half the difference, a signed division that truncates toward zero.
// Returns whether the control has to move; *rect is the control's rectangle after.
bool KxPlacePreviewControl(LONG* width, LONG* height, RECT* rect, LONG roomWidth, LONG roomHeight);
