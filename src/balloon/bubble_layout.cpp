#include "balloon/bubble_layout.h"

#include <algorithm>

namespace {

LPCWSTR OrMeasureText(LPCWSTR text) { return text && *text ? text : KX_BUBBLE_EMPTY_MEASURE; }

int Width(const RECT& rc) { return rc.right - rc.left; }
int Height(const RECT& rc) { return rc.bottom - rc.top; }

}  // namespace

void MeasureBubbleLineHeights(IKxBubbleMeasure& measure, LPCWSTR title, LPCWSTR body, int* titleLine,
                              int* bodyLine) {
    if (*titleLine > 0 && *bodyLine > 0) return;
    RECT rc = {0, 0, kBubbleTextMaxWidth, 0};
    *titleLine = measure.CalcRect(BubbleFont::Title, OrMeasureText(title), &rc, kBubbleMeasureOneLine);
    rc = RECT{0, 0, kBubbleTextMaxWidth, 0};
    *bodyLine = measure.CalcRect(BubbleFont::Body, OrMeasureText(body), &rc, kBubbleMeasureOneLine);
    if (*titleLine <= 0 || *bodyLine <= 0) {
        *titleLine = kBubbleFallbackTitleLine;
        *bodyLine = kBubbleFallbackBodyLine;
    }
}

const char* BubblePictureName(UINT flags, bool fitsRight, bool fitsDown) {
    // [kind][corner]: corner 0 none, 1 LB, 2 RT, 3 BR
    static const char* const names[3][4] = {
        {KX_BUBBLE_PICTURE_ERROR ".png", KX_BUBBLE_PICTURE_ERROR KX_BUBBLE_SUFFIX_LEFT_BOTTOM ".png",
         KX_BUBBLE_PICTURE_ERROR KX_BUBBLE_SUFFIX_RIGHT_TOP ".png",
         KX_BUBBLE_PICTURE_ERROR KX_BUBBLE_SUFFIX_RIGHT_BOTTOM ".png"},
        {KX_BUBBLE_PICTURE_WARNING ".png", KX_BUBBLE_PICTURE_WARNING KX_BUBBLE_SUFFIX_LEFT_BOTTOM ".png",
         KX_BUBBLE_PICTURE_WARNING KX_BUBBLE_SUFFIX_RIGHT_TOP ".png",
         KX_BUBBLE_PICTURE_WARNING KX_BUBBLE_SUFFIX_RIGHT_BOTTOM ".png"},
        {KX_BUBBLE_PICTURE_INFO ".png", KX_BUBBLE_PICTURE_INFO KX_BUBBLE_SUFFIX_LEFT_BOTTOM ".png",
         KX_BUBBLE_PICTURE_INFO KX_BUBBLE_SUFFIX_RIGHT_TOP ".png",
         KX_BUBBLE_PICTURE_INFO KX_BUBBLE_SUFFIX_RIGHT_BOTTOM ".png"},
    };
    // the flags are compared whole: 0x10 and 0x30 pick their pictures, anything else the I ones
    const int kind = flags == 0x10 ? 0 : flags == 0x30 ? 1 : 2;
    const int corner = fitsRight ? (fitsDown ? 0 : 1) : (fitsDown ? 2 : 3);
    return names[kind][corner];
}

int BubbleTitleTop(bool fitsDown) { return fitsDown ? kBubbleTitleTopPointUp : kBubbleTitleTopPointDown; }

BubbleLayout LayoutBubble(IKxBubbleMeasure& measure, int* titleLine, int* bodyLine, LPCWSTR title, LPCWSTR body,
                          int x, int y, UINT flags, const RECT& desktop) {
    MeasureBubbleLineHeights(measure, title, body, titleLine, bodyLine);
    title = OrMeasureText(title);
    body = OrMeasureText(body);

    // the title wraps only when one line is wider than the widest text
    RECT rcTitle = {0, 0, 0, *titleLine};
    measure.CalcRect(BubbleFont::Title, title, &rcTitle, kBubbleMeasureOneLine);
    if (Width(rcTitle) > kBubbleTextMaxWidth) {
        rcTitle = RECT{0, 0, kBubbleTextMaxWidth, *titleLine};
        measure.CalcRect(BubbleFont::Title, title, &rcTitle, kBubbleMeasureWrapped);
    }
    // the body's test is against 0: any body is measured again wrapped, and keeps its line breaks
    RECT rcBody = {0, 0, 0, *bodyLine};
    measure.CalcRect(BubbleFont::Body, body, &rcBody, kBubbleMeasureOneLine);
    if (Width(rcBody) > 0) {
        rcBody = RECT{0, 0, kBubbleTextMaxWidth, *bodyLine};
        measure.CalcRect(BubbleFont::Body, body, &rcBody, kBubbleMeasureWrapped);
    }

    const int textWidth = std::max(Width(rcTitle), Width(rcBody));
    const int bubbleWidth = textWidth + kBubbleExtraWidth;
    const int textHeight = std::max(Height(rcTitle) + Height(rcBody) + kBubbleTitleBodyGap, kBubbleMinTextHeight);
    const int bubbleHeight = textHeight + kBubbleExtraHeight;

    BubbleLayout out;
    out.fitsRight = bubbleWidth + x + kBubbleScreenMargin <= Width(desktop);
    out.fitsDown = bubbleHeight + y + kBubbleScreenMargin <= Height(desktop);
    out.picture = BubblePictureName(flags, out.fitsRight, out.fitsDown);

    const int titleTop = BubbleTitleTop(out.fitsDown != FALSE);
    out.title = RECT{kBubbleTextLeft, titleTop, kBubbleTextLeft + textWidth, titleTop + Height(rcTitle)};
    const int bodyTop = out.title.bottom + kBubbleTitleBodyGap;
    out.body = RECT{kBubbleTextLeft, bodyTop, kBubbleTextLeft + textWidth, bodyTop + Height(rcBody)};

    const int left = out.fitsRight ? x - kBubblePointFromLeft : x - bubbleWidth + kBubblePointFromRight;
    const int top = out.fitsDown ? y : y - bubbleHeight;
    out.window = RECT{left, top, left + bubbleWidth, top + bubbleHeight};
    return out;
}

bool CheckBubblePlacement(const BubblePlacement& p, const RECT* target, const RECT* desktop, POINT* flipPoint,
                          POINT* movePoint) {
    *flipPoint = POINT{0, 0};
    *movePoint = POINT{0, 0};
    if (!target || !p.sticky || !desktop) return false;

    // the bubble's point, carried along with the target
    LONG x = target->left - p.offset.x;
    LONG y = target->top - p.offset.y;
    const int w = Width(p.window), h = Height(p.window);

    const bool outX = p.fitsRight ? x + w + kBubbleScreenMargin > Width(*desktop) : x - w - kBubbleScreenMargin < 0;
    const bool outY = p.fitsDown ? y + h + kBubbleScreenMargin > Height(*desktop) : y - h - kBubbleScreenMargin < 0;
    if (outX || outY) {
        if (x < target->left) x -= kBubblePointFromLeft;
        else if (x > target->right) x += kBubblePointFromRight;
        if (y < target->top) y = target->top;
        else if (y > target->bottom) y = target->bottom;
        *flipPoint = POINT{x, y};
        return true;
    }
    x = std::min(std::max(x, target->left), target->right);
    y = std::min(std::max(y, target->top), target->bottom);
    movePoint->x = p.fitsRight ? x - kBubblePointFromLeft : x - w + kBubblePointFromRight;
    movePoint->y = p.fitsDown ? y : y - h;
    return false;
}
