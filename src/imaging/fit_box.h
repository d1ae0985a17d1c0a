// ScaleToFitBox: shrinks a width and height into a box with one ratio, truncating. Shared by the
// album art and the properties dialogs.
#pragma once

#include "kx/KxPlatform.h"

// Leaves a size that already fits (unsigned comparison) as it is; otherwise divides both sides by
// the larger of width / maxWidth and height / maxHeight and truncates toward zero. Never enlarges.
void ScaleToFitBox(UINT* width, UINT* height, UINT maxWidth, UINT maxHeight);
