#include "controls/flat_button.h"

FlatButtonBits FlatButtonBitsOf(UINT itemState) {
    return FlatButtonBits{static_cast<BOOL>(itemState & kFlatItemFocus), static_cast<BOOL>(itemState & kFlatItemDisabled),
                          static_cast<BOOL>(itemState & kFlatItemSelected)};
}

FlatButtonPlan PlanFlatButton(bool hasIcon, bool hover, const FlatButtonBits& bits) {
    if (!hasIcon) return FlatButtonPlan{false, false, false, false, false};
    const bool frame = hover || bits.m_bFocus;
    // a disabled button keeps its icon as it is: the bit is kept, nothing greys
    return FlatButtonPlan{true, frame, frame && bits.m_bPressed, bits.m_bFocus != 0, true};
}

void FlatButtonEdges(const RECT& item, bool pressed, FlatEdge edges[4]) {
    const LONG w = item.right - item.left, h = item.bottom - item.top;
    const int light = pressed ? kFlatColorShadow : kFlatColorHighlight;
    const int dark = pressed ? kFlatColorHighlight : kFlatColorShadow;
    edges[0] = FlatEdge{RECT{item.left, item.top, item.left + w - 1, item.top + 1}, light};
    edges[1] = FlatEdge{RECT{item.left, item.top, item.left + 1, item.top + h - 1}, light};
    edges[2] = FlatEdge{RECT{item.left + w - 1, item.top, item.right, item.bottom}, dark};
    edges[3] = FlatEdge{RECT{item.left, item.top + h - 1, item.right, item.bottom}, dark};
}

void FlatButtonFocusPath(const RECT& item, POINT path[5]) {
    const LONG left = item.left + 1, top = item.top + 1, right = item.right - 2, bottom = item.bottom - 2;
    path[0] = POINT{left, top};
    path[1] = POINT{right, top};
    path[2] = POINT{right, bottom};
    path[3] = POINT{left, bottom};
    path[4] = POINT{left, top};
}

POINT FlatButtonIconOrigin(const RECT& item, int iconWidth, int iconHeight) {
    const LONG w = item.right - item.left, h = item.bottom - item.top;
    POINT at{item.left, item.top};
    // in 64 bits: twice a huge icon size must not wrap around
    const long long twiceWidth = 2LL * iconWidth, twiceHeight = 2LL * iconHeight;
    if (w > twiceWidth) at.x += static_cast<LONG>((w - twiceWidth) / 2);
    if (h > twiceHeight) at.y += static_cast<LONG>((h - twiceHeight) / 2);
    return at;
}

CFlatButtonHover::Action CFlatButtonHover::OnMouseMove(bool overSelf) {
    if (overSelf) {
        if (m_bHover) return None;
        m_bHover = 1;
        return Enter;
    }
    return OnMouseLeave();
}

CFlatButtonHover::Action CFlatButtonHover::OnMouseLeave() {
    if (!m_bHover) return None;
    m_bHover = 0;
    return Leave;
}
