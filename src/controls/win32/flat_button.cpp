#include "controls/win32/flat_button.h"

#include <commctrl.h>
#include <windowsx.h>

#include "ui/gdi_handles.h"

namespace {

// The size of an icon from its bitmaps; a monochrome icon's mask holds the image above the mask.
SIZE IconSize(HICON hIcon) {
    ICONINFO info = {};
    if (!hIcon || !GetIconInfo(hIcon, &info)) return SIZE{0, 0};
    // GetIconInfo hands out copies of both bitmaps: they are ours to delete
    CKxBitmap color(info.hbmColor), mask(info.hbmMask);
    BITMAP bm = {};
    if (color && GetObjectW(color.Get(), sizeof(bm), &bm)) return SIZE{bm.bmWidth, bm.bmHeight};
    if (mask && GetObjectW(mask.Get(), sizeof(bm), &bm)) return SIZE{bm.bmWidth, bm.bmHeight / 2};
    return SIZE{0, 0};
}

// Fills a rectangle with a system colour the way a text fill does (ExtTextOutW, ETO_OPAQUE).
void FillWithColor(HDC dc, const RECT& rect, int colorIndex) {
    SetBkColor(dc, GetSysColor(colorIndex));
    ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &rect, nullptr, 0, nullptr);
}

}  // namespace

CButtonFlat::CButtonFlat() : m_hIcon(), m_nIconWidth(0), m_nIconHeight(0), m_hover(), m_bits{0, 0, 0} {}

void CButtonFlat::SetIcon(HICON hIcon) {
    if (hIcon == m_hIcon.Get()) return;
    m_hIcon.Reset(hIcon);
    const SIZE size = IconSize(hIcon);
    m_nIconWidth = size.cx;
    m_nIconHeight = size.cy;
    if (m_hWnd) ::InvalidateRect(m_hWnd, nullptr, TRUE);
}

BOOL CButtonFlat::OnChildNotify(UINT message, WPARAM, LPARAM lParam, LRESULT* pResult) {
    if (message != WM_DRAWITEM) return FALSE;
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    if (pResult) *pResult = TRUE;
    return TRUE;
}

void CButtonFlat::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) {
    if (!lpDrawItemStruct || !m_hIcon) return;
    m_bits = FlatButtonBitsOf(lpDrawItemStruct->itemState);
    HDC dc = lpDrawItemStruct->hDC;
    if (!dc) return;
    const FlatButtonPlan plan = PlanFlatButton(true, m_hover.IsHover(), m_bits);
    // the device context is the parent's to keep: it goes back as it came
    const int saved = SaveDC(dc);
    SetBkMode(dc, TRANSPARENT);
    const RECT item = lpDrawItemStruct->rcItem;
    {
        CKxBrush face(CreateSolidBrush(GetSysColor(kFlatColorFace)));
        if (face) FillRect(dc, &item, face.Get());
    }
    if (plan.frame) {
        FlatEdge edges[4];
        FlatButtonEdges(item, plan.sunken, edges);
        for (const FlatEdge& edge : edges) FillWithColor(dc, edge.rect, edge.color);
    }
    if (plan.focusFrame) {
        CKxPen pen(CreatePen(PS_SOLID, 1, kFlatFocusColor));
        if (pen) {
            CKxSelectObject selected(dc, pen.Get());
            POINT path[5];
            FlatButtonFocusPath(item, path);
            MoveToEx(dc, path[0].x, path[0].y, nullptr);
            for (int i = 1; i < 5; ++i) LineTo(dc, path[i].x, path[i].y);
        }
    }
    const POINT at = FlatButtonIconOrigin(item, m_nIconWidth, m_nIconHeight);
    DrawStateW(dc, nullptr, nullptr, reinterpret_cast<LPARAM>(m_hIcon.Get()), 0, at.x, at.y, m_nIconWidth, m_nIconHeight,
               DST_ICON | DSS_NORMAL);
    if (saved) RestoreDC(dc, saved);
}

void CButtonFlat::Repaint(CFlatButtonHover::Action action) {
    if (action == CFlatButtonHover::None) return;
    ::InvalidateRect(m_hWnd, nullptr, TRUE);
    if (action == CFlatButtonHover::Enter) {
        TRACKMOUSEEVENT track = {sizeof(track), TME_LEAVE, m_hWnd, 0};
        _TrackMouseEvent(&track);
    }
}

void CButtonFlat::OnMouseMove(LPARAM lParam) {
    POINT pt = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    ::ClientToScreen(m_hWnd, &pt);
    // a window lying over the button is not the button: that counts as leaving it
    Repaint(m_hover.OnMouseMove(::WindowFromPoint(pt) == m_hWnd));
}

LRESULT CButtonFlat::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_MOUSEMOVE: {
        const LRESULT result = Default();
        OnMouseMove(lParam);
        return result;
    }
    case WM_MOUSELEAVE:
        Repaint(m_hover.OnMouseLeave());
        return 0;
    case WM_DESTROY:
        m_hIcon.Reset();
        return Default();
    default:
        return CButton::WindowProc(message, wParam, lParam);
    }
}
