// One balloon tip that a dialog shows at an edit control to complain about its text: made at the
// first complaint, hidden and pointed at the control again for each later one, released when it
// cannot be shown and when the dialog ends.
#pragma once

#include "kx/IKxBalloonTip.h"

// What a complaint needs beyond IKxBalloonTip: making a plain tip, pointing it at a window, and
// the window's place on the screen.
class IEditTipMaker {
public:
    // Makes a plain tip (not following the mouse) about `target` with this text and title, flags
    // 0x30 and the skin package beside the plug-in. E_OUTOFMEMORY when it cannot be allocated;
    // another status with *tip null when no tip is to be had.
    virtual HRESULT MakeTip(HWND target, LPCWSTR text, LPCWSTR title, IKxBalloonTip** tip) = 0;
    virtual void SetTarget(IKxBalloonTip* tip, HWND target) = 0;
    // The window rectangle of `window` in screen coordinates; false when there is none.
    virtual bool GetWindowRect(HWND window, RECT* rect) = 0;

protected:
    ~IEditTipMaker() = default;
};

class CEditWarningTip {
public:
    static constexpr DWORD kShowTime = 4000;  // milliseconds

    explicit CEditWarningTip(IEditTipMaker& maker) : m_maker(maker) {}
    ~CEditWarningTip() { Release(); }
    CEditWarningTip(const CEditWarningTip&) = delete;
    CEditWarningTip& operator=(const CEditWarningTip&) = delete;

    // Shows the tip at the left edge of `edit`, at its vertical middle. The text and title are
    // those of a tip that is made now; a tip that exists keeps its own. False only when the tip
    // could not be allocated.
    bool Show(HWND edit, LPCWSTR text, LPCWSTR title);
    // Hides a tip that exists.
    void Hide();
    // Hides and releases a tip that exists.
    void Release();

    IKxBalloonTip* m_pTip = nullptr;

private:
    IEditTipMaker& m_maker;
};
