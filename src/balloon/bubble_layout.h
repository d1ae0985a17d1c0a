// The bubble's arithmetic without a window: line heights, the layout of title and body in one of
// four corners from measured text sizes, the choice of shape picture, and whether a sticky bubble
// still fits once its target has moved. Text reaches the platform only through IKxBubbleMeasure
// (DrawTextW with DT_CALCRECT), so every number here can be checked with fixed text sizes.
#pragma once

#include "balloon/bubble_constants.h"

enum class BubbleFont { Title, Body };

// Measures like DrawTextW with DT_CALCRECT: `rc` comes in with the width to wrap at (and a height)
// and goes out as the rectangle the text needs. Returns the height, 0 when nothing was measured.
class IKxBubbleMeasure {
public:
    virtual int CalcRect(BubbleFont font, LPCWSTR text, RECT* rc, UINT format) = 0;

protected:
    ~IKxBubbleMeasure() = default;
};

// Line heights of the title and body font, each measured once on one line in a rectangle 280
// wide. Heights already above 0 are kept; when either stays at 0 or below both fall back to 16 and
// 14. A null or empty text is measured as "123".
void MeasureBubbleLineHeights(IKxBubbleMeasure& measure, LPCWSTR title, LPCWSTR body, int* titleLine,
                              int* bodyLine);

// Picture of the flags and the corner: "ESpeechBubble.png", "SpeechBubbleRT.png", ...
const char* BubblePictureName(UINT flags, bool fitsRight, bool fitsDown);
// Top of the title inside the bubble: 24 with the point at the top, 8 with it at the bottom.
int BubbleTitleTop(bool fitsDown);

struct BubbleLayout {
    RECT window;       // screen rectangle of the bubble
    RECT title;        // title static, in the bubble
    RECT body;         // body static, in the bubble
    const char* picture;
    BOOL fitsRight;    // the bubble opens to the right of its point
    BOOL fitsDown;     // the bubble opens below its point
};

// Lays the bubble out with its point at screen position x, y on a desktop of `desktop`. The line
// heights are measured first if needed (and kept in *titleLine, *bodyLine). A title wraps only when
// it is wider than 280 on one line; a body always wraps at 280 and keeps its line breaks.
BubbleLayout LayoutBubble(IKxBubbleMeasure& measure, int* titleLine, int* bodyLine, LPCWSTR title, LPCWSTR body,
                          int x, int y, UINT flags, const RECT& desktop);

// What CheckPlacement knows of the last sticky show.
struct BubblePlacement {
    BOOL sticky;
    POINT offset;    // target's top left minus the bubble's point, taken at the first show
    RECT window;     // the bubble's rectangle at the last show
    BOOL fitsRight;
    BOOL fitsDown;
};

// Whether a sticky bubble must flip after its target moved. Both points are zeroed first. A null
// target or desktop rectangle (one that could not be read), or a bubble that is not sticky:
// false. No longer fitting: true, with the point to show the bubble at anew in *flipPoint. Still
// fitting: false, with the bubble's new top left in *movePoint.
bool CheckBubblePlacement(const BubblePlacement& placement, const RECT* target, const RECT* desktop,
                          POINT* flipPoint, POINT* movePoint);
