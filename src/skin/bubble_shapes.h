// Geometry of the skin package's pictures: the size of every picture, and for the twelve speech
// bubble shapes where the point's tip lies and how the skinning library may stretch them.
//
// A bubble picture is the window's shape: alpha 0 outside the bubble, opaque inside. Its point
// touches the anchor the bubble is laid out for: the tip is one pixel, 6 columns from the left
// edge (column 6) or 7 from the right (column width - 7), on the first row for a point at the top
// or the last row for a point at the bottom. The body's text lies from column 76 to 10 columns
// before the right edge, its first line at row 24 (point at the top) or 8 (point at the bottom),
// and the sign beside the text (32 x 32, its top at the title's top) lies left of column 62.
//
// Fitting a picture to its window (nine slices): the bands sliceLeft / sliceRight columns wide at
// the sides and sliceTop / sliceBottom rows high at the top and bottom keep their pixels; the
// middle bands are stretched or shrunk. The point and the sign lie inside the kept corner bands,
// and the body's edges are straight and its fill plain across the middle bands, so the point stays
// where the layout expects it. The picture's centre column and centre row lie in the middle bands
// too: repeating or cutting out the centre column and row gives the same result. The layout's
// smallest bubble (a text block of 64 rows, 86 columns more than its text) still holds the kept
// bands, which come to 98 columns and 72 rows at most.

// Portable: no platform header; the skinning library and the tests read the same tables.
#pragma once

namespace kxskin {

struct BubbleShape {
    const char* name;   // picture name in the package
    int width;
    int height;
    int tipX;           // the point's tip pixel
    int tipY;
    int titleTop;       // first text row inside the picture
    int sliceLeft;      // kept bands: columns at the left and right, rows at the top and bottom
    int sliceTop;
    int sliceRight;
    int sliceBottom;
};

constexpr int kBubbleWidth = 128;
constexpr int kBubbleHeight = 120;
constexpr int kBubbleTextLeft = 76;       // first text column
constexpr int kBubbleTextRightGap = 10;   // columns right of the text
constexpr int kBubblePointHeight = 16;    // rows of the point above or below the body

// Suffix none: point at the top left; LB: bottom left; RT: top right; BR: bottom right.
// Prefix E: the error sign; none: the warning sign; I: the information sign.
#define KX_BUBBLE_ROWS(prefix)                                                                      \
    {prefix "SpeechBubble.png", kBubbleWidth, kBubbleHeight, 6, 0, 24, 62, 60, 12, 12},               \
    {prefix "SpeechBubbleLB.png", kBubbleWidth, kBubbleHeight, 6, kBubbleHeight - 1, 8, 62, 44, 12, 28}, \
    {prefix "SpeechBubbleRT.png", kBubbleWidth, kBubbleHeight, kBubbleWidth - 7, 0, 24, 62, 60, 36, 12}, \
    {prefix "SpeechBubbleBR.png", kBubbleWidth, kBubbleHeight, kBubbleWidth - 7, kBubbleHeight - 1, 8, 62, 44, 36, 28}

inline constexpr BubbleShape kBubbleShapes[] = {
    KX_BUBBLE_ROWS("E"),
    KX_BUBBLE_ROWS(""),
    KX_BUBBLE_ROWS("I"),
};
#undef KX_BUBBLE_ROWS

constexpr int kBubbleShapeCount = static_cast<int>(sizeof(kBubbleShapes) / sizeof(kBubbleShapes[0]));

// Every other picture of the package and its size in pixels. A static shows its picture fitted
// into the control; these sizes are what the dialogs' controls hold at 96 dpi.
struct SkinPicture {
    const char* name;
    int width;
    int height;
};

#define KX_NAME_PICTURES(kind) {"New " kind ".png", 48, 48}, {"Rename " kind ".png", 48, 48}

inline constexpr SkinPicture kSkinPictures[] = {
    {"Exclamation.png", 32, 32},
    {"Criticalerror.png", 32, 32},
    {"balloon Info.png", 32, 32},
    {"Question Mark.png", 32, 32},
    KX_NAME_PICTURES("Album"),
    KX_NAME_PICTURES("Artist"),
    KX_NAME_PICTURES("Genre"),
    KX_NAME_PICTURES("Folder"),
    KX_NAME_PICTURES("Playlist"),
    KX_NAME_PICTURES("Slideshow"),
    KX_NAME_PICTURES("Year"),
    KX_NAME_PICTURES("People"),
    KX_NAME_PICTURES("Event"),
    KX_NAME_PICTURES("Place"),
    KX_NAME_PICTURES("Director"),
    KX_NAME_PICTURES("Video Cast"),
    KX_NAME_PICTURES("Producer"),
    KX_NAME_PICTURES("Video Genre"),
    {"Add New Slideshow.png", 36, 36},
    {"albumT.png", 128, 128},
    {"Corrupted Photo Properties.png", 128, 128},
    {"Video Properties.png", 128, 128},
};
#undef KX_NAME_PICTURES

constexpr int kSkinPictureCount = static_cast<int>(sizeof(kSkinPictures) / sizeof(kSkinPictures[0]));

}  // namespace kxskin
