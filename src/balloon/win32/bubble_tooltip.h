// CKXBubbleToolTip: the speech-bubble popup. A borderless top-most window with a bold title and a
// body text, shaped by one of the skin's twelve pictures, laid out so that its point touches a
// screen position while the bubble stays on the screen. It works sticky (shown at a place for a
// time by a plain tip) or tracking (the target's messages are relayed and it comes and goes with
// the mouse). The window is made anew for every show and destroyed by every close; the object
// keeps its fonts and measured line heights for its life.
#pragma once

#include "balloon/balloon_tip.h"
#include "balloon/bubble_layout.h"
#include "balloon/bubble_tracking.h"
#include "frame/skin_client.h"
#include "ui/control_wrappers.h"
#include "ui/wnd.h"

class CKXBubbleToolTip : public CWnd, public IKxBubble, private IKxBubbleTrackingHost {
public:
    CKXBubbleToolTip();
    ~CKXBubbleToolTip() override;

    BOOL ShowBubble(LPCWSTR text, LPCWSTR title, HWND target, LPCWSTR skinPath, int x, int y, DWORD timeout,
                    UINT flags, BOOL sticky) override;
    HRESULT RelayMessage(HWND targetWindow, const MSG& message, UINT flags, LPCWSTR title, LPCWSTR text,
                         LPCWSTR skinPath, DWORD timeout) override;
    // Ends timer 1002 and destroys the window if it is visible.
    void HideBubble() override;
    // Destroys the window if it exists (and arms the tracking again), then forgets the last show.
    void ResetBubble() override;
    BOOL CheckPlacement(POINT* flipPoint, POINT* movePoint, HWND targetWindow) override;
    bool HasWindow() override;
    bool IsVisible() override;
    void MoveWindowTo(POINT topLeft) override;

    // Kills timer 1000 if it runs, then destroys the window.
    BOOL DestroyWindow();

    CStatic m_wndBody;
    CStatic m_wndTitle;
    HookWndWC m_hookWnd;
    HFONT m_hBodyFont;          // regular; null until first needed
    HFONT m_hTitleFont;         // bold; null until first needed
    UINT_PTR m_nHideTimer;      // timer 1000 running, or 0
    HWND m_pTarget;             // the window the bubble belongs to
    int m_nTitleLineHeight;     // 0 until measured
    int m_nBodyLineHeight;      // 0 until measured
    CKxBubbleTracking m_tracking;  // m_bArmed and m_ptLastCursor
    BOOL m_bSticky;
    POINT m_ptOffset;           // sticky: target's top left minus the point, at the first show
    RECT m_rcWindow;            // the bubble's rectangle at the last show
    BOOL m_bFitsRight;
    BOOL m_bFitsDown;
    UINT_PTR m_nCloseTimer;     // timer 1002 running, or 0

    // Deletes the fonts there are and makes both from DEFAULT_GUI_FONT.
    void CreateFonts();

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    // IKxBubbleTrackingHost
    POINT CursorPos() override;
    HWND FocusWindow() override;
    bool BubbleWindowExists() override;
    bool ShowTrackingBubble(LPCWSTR text, LPCWSTR title, LPCWSTR skinPath, int x, int y, DWORD timeout,
                            UINT flags) override;

    bool Layout(LPCWSTR title, LPCWSTR body, int x, int y, UINT flags, BubbleLayout* out);
    HWND CreateStatic(LPCWSTR text);
    // A click on the bubble or the end of a sticky bubble's time.
    void CloseSticky();
    void ForgetLastShow();
    void DeleteFonts();
};
