// The tracking half of the bubble: the relayed messages of a target window decide when the tip
// shows and hides. It shows once per visit of the target: armed when the mouse leaves the target,
// disarmed by a show, a click or a key; the shown tip closes by itself after its time.
#pragma once

#include "kx/KxPlatform.h"

// What the tracking asks of the bubble window and of the platform.
class IKxBubbleTrackingHost {
public:
    virtual POINT CursorPos() = 0;              // GetCursorPos
    virtual HWND FocusWindow() = 0;             // GetFocus: the focus window of this thread, or null
    virtual bool BubbleWindowExists() = 0;
    virtual void HideBubble() = 0;
    // Shows the bubble, not sticky, with its point at x, y and no parent window; true when showing.
    virtual bool ShowTrackingBubble(LPCWSTR text, LPCWSTR title, LPCWSTR skinPath, int x, int y, DWORD timeout,
                                    UINT flags) = 0;

protected:
    ~IKxBubbleTrackingHost() = default;
};

class CKxBubbleTracking {
public:
    // One message of the target: 0 when it acted, 0x80004001 when the message meant nothing,
    // 0x80004005 when showing failed.
    HRESULT RelayMessage(IKxBubbleTrackingHost& host, HWND targetWindow, const MSG& message, UINT flags,
                         LPCWSTR title, LPCWSTR text, LPCWSTR skinPath, DWORD timeout);
    // Armed again, the last cursor back to 0, 0.
    void Reset();

    POINT m_ptLastCursor = {0, 0};  // cursor at the last relayed event
    BOOL m_bArmed = TRUE;           // the next mouse move over the target may show the bubble

private:
    HRESULT Disarm(IKxBubbleTrackingHost& host);
    HRESULT ShowOnMove(IKxBubbleTrackingHost& host, UINT flags, LPCWSTR title, LPCWSTR text, LPCWSTR skinPath,
                       DWORD timeout);
};
