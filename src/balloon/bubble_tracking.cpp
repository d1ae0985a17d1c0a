#include "balloon/bubble_tracking.h"

#include "balloon/bubble_messages.h"

HRESULT CKxBubbleTracking::Disarm(IKxBubbleTrackingHost& host) {
    m_bArmed = FALSE;
    m_ptLastCursor = host.CursorPos();
    host.HideBubble();
    return S_OK;
}

HRESULT CKxBubbleTracking::ShowOnMove(IKxBubbleTrackingHost& host, UINT flags, LPCWSTR title, LPCWSTR text,
                                      LPCWSTR skinPath, DWORD timeout) {
    const POINT pt = host.CursorPos();
    // both coordinates must have changed: a move along a row or a column shows nothing
    if (pt.x == m_ptLastCursor.x || pt.y == m_ptLastCursor.y || !m_bArmed) return E_NOTIMPL;
    m_ptLastCursor = pt;
    const bool shown = host.ShowTrackingBubble(text, title, skinPath, pt.x, pt.y, timeout, flags);
    m_bArmed = FALSE;
    return shown ? S_OK : E_FAIL;
}

HRESULT CKxBubbleTracking::RelayMessage(IKxBubbleTrackingHost& host, HWND targetWindow, const MSG& message,
                                        UINT flags, LPCWSTR title, LPCWSTR text, LPCWSTR skinPath, DWORD timeout) {
    if (message.message == WM_MOUSEMOVE) {
        if (!targetWindow) return E_NOTIMPL;
        if (message.hwnd != targetWindow) {
            // the mouse has left the target: the next visit may show the tip again
            m_bArmed = TRUE;
            m_ptLastCursor = host.CursorPos();
            host.HideBubble();
            return S_OK;
        }
        if (host.BubbleWindowExists()) {
            m_ptLastCursor = host.CursorPos();
            return E_NOTIMPL;
        }
        return ShowOnMove(host, flags, title, text, skinPath, timeout);
    }
    if (IsBubbleMouseButton(message.message)) return host.BubbleWindowExists() ? Disarm(host) : E_NOTIMPL;
    if (message.message == WM_KEYUP) {
        if (message.wParam == VK_SPACE) return Disarm(host);
        const HWND focus = host.FocusWindow();
        if (focus && focus != targetWindow) return Disarm(host);
    }
    return E_NOTIMPL;
}

void CKxBubbleTracking::Reset() {
    m_bArmed = TRUE;
    m_ptLastCursor = POINT{0, 0};
}
