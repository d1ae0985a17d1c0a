#include "host/win32/demo_autopilot.h"

#include "host/win32/window_capture.h"

namespace {

thread_local DemoAutopilot* t_pilot = nullptr;

}  // namespace

DemoAutopilot::DemoAutopilot(const std::wstring& picture, int button) : m_picture(picture), m_button(button) {
    t_pilot = this;
    m_hook = SetWindowsHookExW(WH_CBT, &CbtProc, nullptr, GetCurrentThreadId());
    m_timer = SetTimer(nullptr, 0, 20, &TimerProc);
}

DemoAutopilot::~DemoAutopilot() {
    if (m_timer) KillTimer(nullptr, m_timer);
    if (m_hook) UnhookWindowsHookEx(m_hook);
    t_pilot = nullptr;
}

LRESULT CALLBACK DemoAutopilot::CbtProc(int code, WPARAM wParam, LPARAM lParam) {
    DemoAutopilot* p = t_pilot;
    if (p && code == HCBT_CREATEWND && !p->m_dialog) {
        HWND hwnd = reinterpret_cast<HWND>(wParam);
        auto* create = reinterpret_cast<CBT_CREATEWNDW*>(lParam);
        wchar_t cls[16] = {};
        GetClassNameW(hwnd, cls, 16);
        if (lstrcmpW(cls, L"#32770") == 0 && create->lpcs && !(create->lpcs->style & WS_CHILD)) p->m_dialog = hwnd;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void CALLBACK DemoAutopilot::TimerProc(HWND, UINT, UINT_PTR, DWORD) {
    if (DemoAutopilot* p = t_pilot) p->Tick();
}

void DemoAutopilot::Tick() {
    ++m_ticks;
    if (m_done || m_inBefore || !m_dialog || !IsWindow(m_dialog) || !IsWindowVisible(m_dialog)) return;
    // a few ticks after it is shown and active the dialog has painted its final look
    ++m_shownTicks;
    if (m_shownTicks == 2 && m_before) {  // the ticks after it let the dialog repaint
        m_inBefore = true;
        m_before(m_dialog);
        m_inBefore = false;
    }
    if (m_shownTicks < 4 || (GetActiveWindow() != m_dialog && m_shownTicks < 30)) return;
    m_done = true;
    if (!m_picture.empty()) {
        std::vector<HWND> windows = {m_dialog};
        if (HWND over = m_overlay ? m_overlay() : nullptr) windows.push_back(over);
        m_written = CaptureWindowsToPng(windows, m_picture.c_str());
    }
    HWND button = GetDlgItem(m_dialog, m_button);
    if (button) PostMessageW(button, BM_CLICK, 0, 0);
    else PostMessageW(m_dialog, WM_CLOSE, 0, 0);
}
