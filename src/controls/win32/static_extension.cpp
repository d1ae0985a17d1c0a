// The picture static's right click, context-menu keys and focus frame.
#include "controls/win32/static_extension.h"

#include <windowsx.h>

void CStaticExtension::AskParentForMenu() {
    HWND parent = ::GetParent(m_hWnd);
    if (!parent || !::IsWindow(parent)) return;
    if (auto* owner = dynamic_cast<IKxArtMenuOwner*>(CWnd::FromHandlePermanent(parent))) owner->ShowArtMenu();
}

LRESULT CStaticExtension::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SETFOCUS:
    case WM_KILLFOCUS: {
        const LRESULT result = CStatic::WindowProc(message, wParam, lParam);
        ::InvalidateRect(m_hWnd, nullptr, TRUE);
        return result;
    }
    case WM_PAINT: {
        // A static shows no focus of its own: reached by Tab, it gets the dotted frame inside its
        // border, drawn over what the default painting left.
        const LRESULT result = CStatic::WindowProc(message, wParam, lParam);
        if (::GetFocus() == m_hWnd) {
            if (HDC dc = ::GetDC(m_hWnd)) {
                RECT rc;
                ::GetClientRect(m_hWnd, &rc);
                ::InflateRect(&rc, -2, -2);
                ::DrawFocusRect(dc, &rc);
                ::ReleaseDC(m_hWnd, dc);
            }
        }
        return result;
    }
    case WM_RBUTTONDOWN: {
        const LRESULT result = Default();
        AskParentForMenu();
        return result;
    }
    case WM_KEYUP:
        // The context-menu key is answered here and not passed on: the default handling of some
        // platforms makes a WM_CONTEXTMENU of its release, others' (Wine's) do not, and the menu
        // is to come exactly once on all of them.
        if (wParam == VK_APPS) {
            AskParentForMenu();
            return 0;
        }
        return CStatic::WindowProc(message, wParam, lParam);
    case WM_CONTEXTMENU:
        // From the keyboard (the context-menu key, Shift+F10) the point is (-1, -1): that asks
        // for the menu. The one that follows the right button's release is taken here without
        // passing it on, since the press has already opened the menu; handed to the dialog by
        // the default handling it would open a second one.
        if (GET_X_LPARAM(lParam) == -1 && GET_Y_LPARAM(lParam) == -1) AskParentForMenu();
        return 0;
    default:
        return CStatic::WindowProc(message, wParam, lParam);
    }
}
