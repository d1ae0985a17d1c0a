// Pictures as the skinning library works on them: 32-bit pixels, premultiplied alpha, 0xAARRGGBB,
// rows top down. Here is everything it does to a picture before the platform draws it: stretching
// a shape to its window, fitting a picture into a static, laying it on a background, and finding
// the window region that the picture's alpha gives.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kxskin {

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;  // width * height

    uint32_t At(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
    bool Empty() const { return width <= 0 || height <= 0; }
};

// A shape stretched (or shrunk) to width x height without scaling any of it: the middle column and
// the middle row of the picture are repeated to grow it, or the middle is cut out to shrink it. A
// point in a corner and the margins along the edges therefore stay where the picture has them,
// measured from their own edge.
Picture SliceToSize(const Picture& shape, int width, int height);

// The picture shrunk with its proportions (area averaging) until it fits into width x height,
// and centred there on transparent pixels. A picture that fits already keeps its size.
Picture FitInto(const Picture& picture, int width, int height);

// The picture laid over an opaque background colour (0xRRGGBB): every pixel opaque.
Picture OverColour(const Picture& picture, uint32_t rgb);

// The shape's own colours made opaque where its alpha reaches `threshold` (1..255), and
// transparent elsewhere: what a window clipped to RegionOf shows, with no fringe of a colour that
// is not the picture's.
Picture OpaqueWithin(const Picture& shape, int threshold);

struct Span {
    int left, top, right, bottom;  // right and bottom exclusive
};
// The pixels whose alpha reaches `threshold`, as rectangles: runs of each row, with equal runs of
// consecutive rows joined.
std::vector<Span> RegionOf(const Picture& shape, int threshold);

}  // namespace kxskin
