// The headless demo's hand on the mouse: catches the next dialog that the plug-in opens on this
// thread, waits until it is shown, optionally writes a picture of it, then clicks one of its
// buttons, so that every dialog step of the demo runs to its end without a user.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

class DemoAutopilot {
public:
    // `picture`: PNG file to write, empty for none; `button`: control identifier to click.
    DemoAutopilot(const std::wstring& picture, int button);
    ~DemoAutopilot();
    DemoAutopilot(const DemoAutopilot&) = delete;
    DemoAutopilot& operator=(const DemoAutopilot&) = delete;

    bool pictureWritten() const { return m_written; }
    // What the user does once the dialog is shown, before the picture is taken (typing, a click
    // that the dialog refuses).
    // The step may run a loop of its own (a context menu, a wait for an answer): the picture waits
    // until it returns.
    void BeforePicture(std::function<void(HWND dialog)> step) { m_before = std::move(step); }
    // A window of the dialog's own that lies over it (a balloon tip), found when the picture is
    // taken and pictured with the dialog; null when there is none.
    void PictureAlso(std::function<HWND()> overlay) { m_overlay = std::move(overlay); }

private:
    static LRESULT CALLBACK CbtProc(int code, WPARAM wParam, LPARAM lParam);
    static void CALLBACK TimerProc(HWND, UINT, UINT_PTR, DWORD);
    void Tick();

    std::wstring m_picture;
    std::function<void(HWND)> m_before;
    std::function<HWND()> m_overlay;
    int m_button;
    HHOOK m_hook = nullptr;
    UINT_PTR m_timer = 0;
    HWND m_dialog = nullptr;
    int m_shownTicks = 0;
    int m_ticks = 0;
    bool m_done = false;
    bool m_written = false;
    bool m_inBefore = false;  // the before-picture step runs; ticks meanwhile do nothing
};
