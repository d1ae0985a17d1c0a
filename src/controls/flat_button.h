// What the flat button draws and when it repaints, without its window: the state bits it keeps
// from the last drawing, the parts a drawing consists of, the frame's edges and colours, the
// focus frame, where the icon stands, and the hover tracking. The Win32 button
// (win32/flat_button.h) plays these with GDI.
#pragma once

#include "kx/KxPlatform.h"

// The owner-draw item state bits the button keeps.
constexpr UINT kFlatItemSelected = 0x0001;  // ODS_SELECTED
constexpr UINT kFlatItemDisabled = 0x0004;  // ODS_DISABLED
constexpr UINT kFlatItemFocus = 0x0010;     // ODS_FOCUS

// System colour indexes of the face and the frame.
constexpr int kFlatColorFace = 15;       // COLOR_BTNFACE
constexpr int kFlatColorShadow = 16;     // COLOR_BTNSHADOW
constexpr int kFlatColorHighlight = 20;  // COLOR_3DHIGHLIGHT
// The inner frame of a focused button, as a COLORREF (red 137, green 173, blue 228).
constexpr DWORD kFlatFocusColor = 0xE4AD89;

// The state of the last drawing, by the record's item state.
struct FlatButtonBits {
    BOOL m_bFocus;
    BOOL m_bDisabled;
    BOOL m_bPressed;
};
FlatButtonBits FlatButtonBitsOf(UINT itemState);

// What one drawing consists of. Without an icon nothing is drawn at all, not even the face.
struct FlatButtonPlan {
    bool face;        // the rectangle filled with the face colour
    bool frame;       // the one-pixel frame (hover or focus)
    bool sunken;      // the frame's colours swapped: pressed
    bool focusFrame;  // the inner focus frame
    bool icon;
};
FlatButtonPlan PlanFlatButton(bool hasIcon, bool hover, const FlatButtonBits& bits);

// One edge of the frame: the rectangle to fill and its system colour index. Top and left come
// first, then right and bottom.
struct FlatEdge {
    RECT rect;
    int color;
};
void FlatButtonEdges(const RECT& item, bool pressed, FlatEdge edges[4]);

// The corners of the focus frame in drawing order, ending where it started.
void FlatButtonFocusPath(const RECT& item, POINT path[5]);

// Where the icon's top left corner stands. Only what exceeds twice the icon's size is shared
// out, so a 16-pixel icon stands at 4 on a 40-pixel button and at 0 on a 30-pixel one.
POINT FlatButtonIconOrigin(const RECT& item, int iconWidth, int iconHeight);

// Hover tracking: m_bHover and what each mouse message asks of the window.
class CFlatButtonHover {
public:
    enum Action {
        None,           // nothing to repaint
        Enter,          // repaint with erasing and ask for WM_MOUSELEAVE
        Leave,          // repaint with erasing
    };
    // A mouse move; `overSelf` says whether the window under the cursor is the button.
    Action OnMouseMove(bool overSelf);
    Action OnMouseLeave();
    bool IsHover() const { return m_bHover != 0; }

private:
    BOOL m_bHover = 0;
};
