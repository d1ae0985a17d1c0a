// The statics of a skinned window: form 2 of WM_HKSTATIC_FUNCTION shows a package picture, fitted
// into the static over what lies behind it; form 1 makes the static draw its text itself,
// transparently over its parent's skin, in the skin's colour. A picture the static is given the
// platform's way (STM_SETIMAGE, STM_SETICON) replaces the package picture.
#include <string>
#include <vector>

#include "skin/win32/hook.h"
#include "skin/win32/paint.h"

namespace hookwnd {

namespace {

// DrawTextW flags for a text static's own style.
UINT TextFlags(LONG style) {
    UINT flags = DT_EXPANDTABS | DT_EXTERNALLEADING;
    const LONG type = style & SS_TYPEMASK;
    if (type == SS_CENTER) flags |= DT_CENTER;
    else if (type == SS_RIGHT) flags |= DT_RIGHT;
    if (type == SS_SIMPLE || type == SS_LEFTNOWORDWRAP) flags |= DT_SINGLELINE;
    else flags |= DT_WORDBREAK;
    if (style & SS_NOPREFIX) flags |= DT_NOPREFIX;
    if (style & SS_CENTERIMAGE) flags |= DT_VCENTER | DT_SINGLELINE;
    return flags;
}

}  // namespace

bool Hook::GivePicture(SkinnedStatic& s, const char* name) const {
    if (!name) return false;
    kxskin::Picture picture = m_package.ReadPicture(name);
    if (picture.Empty()) return false;
    s.picture = std::move(picture);
    s.showsPicture = true;
    InvalidateRect(s.hwnd, nullptr, TRUE);
    return true;
}

void Hook::PaintStatic(SkinnedStatic& s, HDC dc) {
    RECT rc;
    GetClientRect(s.hwnd, &rc);
    if (s.showsPicture) {
        const kxskin::Picture fitted = kxskin::FitInto(s.picture, rc.right, rc.bottom);
        const COLORREF area = AreaColour(s.hwnd);
        DrawPicture(dc, kxskin::OverColour(fitted, (GetRValue(area) << 16) | (GetGValue(area) << 8) | GetBValue(area)),
                    0, 0);
        return;
    }
    PaintBehind(s.hwnd, dc);
    const int length = GetWindowTextLengthW(s.hwnd);
    if (length <= 0) return;
    std::vector<wchar_t> text(static_cast<size_t>(length) + 1);
    const int got = GetWindowTextW(s.hwnd, text.data(), length + 1);
    HFONT font = reinterpret_cast<HFONT>(SendMessageW(s.hwnd, WM_GETFONT, 0, 0));
    HGDIOBJ old = SelectObject(dc, font ? static_cast<HGDIOBJ>(font) : GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, IsWindowEnabled(s.hwnd) ? TextColour(s.hwnd) : GetSysColor(COLOR_GRAYTEXT));
    DrawTextW(dc, text.data(), got, &rc, TextFlags(GetWindowLongW(s.hwnd, GWL_STYLE)));
    SelectObject(dc, old);
}

LRESULT Hook::StaticBody(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id, DWORD_PTR data) {
    SkinnedStatic& s = *reinterpret_cast<SkinnedStatic*>(data);
    Hook* hook = s.hook;
    if (msg == g_staticMessage && g_staticMessage) {
        if (wp == 2) return hook->GivePicture(s, reinterpret_cast<const char*>(lp)) ? 1 : 0;
        if (wp == 1) {
            s.drawsText = true;
            InvalidateRect(hwnd, nullptr, TRUE);
            return 1;
        }
        return 0;
    }
    const bool drawsItself = s.showsPicture || s.drawsText;
    switch (msg) {
    case STM_SETIMAGE:
    case STM_SETICON:
        // the platform's way wins: the static shows what it is given from now on
        s.showsPicture = false;
        s.picture = kxskin::Picture();
        InvalidateRect(hwnd, nullptr, TRUE);
        break;
    case WM_ERASEBKGND:
        if (drawsItself) return 1;
        break;
    case WM_PAINT:
        if (drawsItself) {
            PAINTSTRUCT ps;
            if (HDC dc = BeginPaint(hwnd, &ps)) {
                hook->PaintStatic(s, dc);
                EndPaint(hwnd, &ps);
            }
            return 0;
        }
        break;
    case WM_PRINTCLIENT:
        if (drawsItself) {
            hook->PaintStatic(s, reinterpret_cast<HDC>(wp));
            return 0;
        }
        break;
    case WM_SETTEXT:
    case WM_SETFONT:
    case WM_ENABLE:
        if (s.drawsText) {
            // the control paints its own text at once; this paint puts the skin's over it
            const LRESULT r = DefSubclassProc(hwnd, msg, wp, lp);
            InvalidateRect(hwnd, nullptr, TRUE);
            return r;
        }
        break;
    case WM_NCDESTROY:
        RemoveWindowSubclass(hwnd, &StaticProc, id);
        s.hwnd = nullptr;
        break;
    default:
        break;
    }
    return DefSubclassProc(hwnd, msg, wp, lp);
}

}  // namespace hookwnd
