// ScaleToFitBox, in double precision, truncating.
#include "imaging/fit_box.h"

namespace {

// How many times a side exceeds its room. A side of 0 asks for no shrinking, whatever its room
// (0 / 0 would be no number); a positive side in a room of 0 gives an infinite ratio, and the
// size then becomes 0 x 0.
double Excess(UINT side, UINT room) {
    if (side == 0) return 0.0;
    return static_cast<double>(side) / static_cast<double>(room);
}

}  // namespace

void ScaleToFitBox(UINT* width, UINT* height, UINT maxWidth, UINT maxHeight) {
    if (!width || !height) return;
    if (*width <= maxWidth && *height <= maxHeight) return;
    const double byWidth = Excess(*width, maxWidth);
    const double byHeight = Excess(*height, maxHeight);
    const double ratio = byWidth > byHeight ? byWidth : byHeight;  // above 1: one side exceeds
    // Both quotients lie between 0 and the side itself, so the conversions are defined.
    *width = static_cast<UINT>(static_cast<double>(*width) / ratio);
    *height = static_cast<UINT>(static_cast<double>(*height) / ratio);
}
