#include "tests/win/common/dialog_driver.h"

#include <cstring>

#include "host/library/taskmem_audit.h"

namespace kxtest {

namespace {

const UINT kPeriodMs = 15;
thread_local DialogDriver* t_driver = nullptr;

bool IsDialogWindow(HWND hwnd) {
    wchar_t cls[16] = {};
    GetClassNameW(hwnd, cls, 16);
    return lstrcmpW(cls, L"#32770") == 0;
}

BOOL CALLBACK CountChild(HWND, LPARAM count) {
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

BOOL CALLBACK CountTopLevel(HWND hwnd, LPARAM count) {
    DWORD pid = 0;
    GetWindowThreadProcessId(hwnd, &pid);
    if (pid != GetCurrentProcessId()) return TRUE;
    ++*reinterpret_cast<int*>(count);
    EnumChildWindows(hwnd, &CountChild, count);
    return TRUE;
}

void PostKey(HWND target, UINT vk) {
    UINT scan = MapVirtualKeyW(vk, 0 /* MAPVK_VK_TO_VSC */);
    PostMessageW(target, WM_KEYDOWN, vk, static_cast<LPARAM>(1 | (scan << 16)));
    PostMessageW(target, WM_KEYUP, vk, static_cast<LPARAM>(1 | (scan << 16) | (3u << 30)));
}

}  // namespace

// Dispatches what is pending for this thread, among it the late activation changes that the
// window system sends after a window of the thread went away, until nothing came for a while.
void Settle() {
    DWORD start = GetTickCount(), quietSince = start;
    while (GetTickCount() - quietSince < 40 && GetTickCount() - start < 400) {
        MSG msg;
        if (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            if (msg.message == WM_QUIT) {
                PostQuitMessage(static_cast<int>(msg.wParam));
                return;
            }
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
            quietSince = GetTickCount();
        } else {
            Sleep(5);
        }
    }
}

DialogDriver::DialogDriver(UINT timeoutMs) : m_limit(static_cast<int>(timeoutMs / kPeriodMs)) {
    Settle();
    t_driver = this;
    m_hook = SetWindowsHookExW(WH_CBT, &CbtProc, nullptr, GetCurrentThreadId());
    m_timer = SetTimer(nullptr, 0, kPeriodMs, &TimerProc);
}

DialogDriver::~DialogDriver() {
    if (m_timer) KillTimer(nullptr, m_timer);
    if (m_hook) UnhookWindowsHookEx(m_hook);
    // a tick that was already queued finds no driver
    MSG msg;
    while (PeekMessageW(&msg, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE)) {
    }
    t_driver = nullptr;
}

DialogDriver& DialogDriver::Do(Step step) {
    m_steps.push_back(std::move(step));
    return *this;
}

DialogDriver& DialogDriver::Type(int id, const std::wstring& text) {
    return Do([id, text](HWND dlg) {
        HWND control = GetDlgItem(dlg, id);
        SetFocus(control);
        for (wchar_t c : text) PostMessageW(control, WM_CHAR, c, 1);
    });
}

DialogDriver& DialogDriver::Click(int id) {
    return Do([id](HWND dlg) { PostMessageW(GetDlgItem(dlg, id), BM_CLICK, 0, 0); });
}

DialogDriver& DialogDriver::Press(UINT vk) {
    return Do([vk](HWND dlg) {
        HWND focus = GetFocus();
        PostKey(focus && (focus == dlg || IsChild(dlg, focus)) ? focus : dlg, vk);
    });
}

DialogDriver& DialogDriver::Focus(int id) {
    return Do([id](HWND dlg) { SetFocus(id ? GetDlgItem(dlg, id) : nullptr); });
}

DialogDriver& DialogDriver::Close() {
    return Do([](HWND dlg) { PostMessageW(dlg, WM_CLOSE, 0, 0); });
}

LRESULT CALLBACK DialogDriver::CbtProc(int code, WPARAM wParam, LPARAM lParam) {
    DialogDriver* d = t_driver;
    if (d && code == HCBT_CREATEWND && !d->m_dialog) {
        HWND hwnd = reinterpret_cast<HWND>(wParam);
        auto* create = reinterpret_cast<CBT_CREATEWNDW*>(lParam);
        bool child = create && create->lpcs && (create->lpcs->style & WS_CHILD);
        if (!child && IsDialogWindow(hwnd)) d->m_dialog = hwnd;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void CALLBACK DialogDriver::TimerProc(HWND, UINT, UINT_PTR, DWORD) {
    if (DialogDriver* d = t_driver) d->Tick();
}

void DialogDriver::Tick() {
    if (m_busy) return;
    m_busy = true;
    ++m_ticks;
    // the script starts once the dialog is shown and active, so that activation does not move the
    // focus after a step has set it; a dialog that never becomes active gets the script later
    bool shown = m_dialog && IsWindow(m_dialog) && IsWindowVisible(m_dialog);
    if (shown) ++m_shownTicks;
    if (shown && GetActiveWindow() == m_dialog) ++m_activeTicks;
    else m_activeTicks = 0;
    bool ready = shown && (m_activeTicks > 2 || m_shownTicks > 130);
    if (ready && m_next < m_steps.size()) m_steps[m_next++](m_dialog);
    if (m_ticks > m_limit && m_dialog && IsWindow(m_dialog)) {
        // the script hangs: ask the dialog to close, then take its window away
        if (!m_timedOut) PostMessageW(m_dialog, WM_CLOSE, 0, 0);
        else if (m_ticks > m_limit + 70) DestroyWindow(m_dialog);
        m_timedOut = true;
    }
    m_busy = false;
}

std::wstring ItemText(HWND dialog, int id) {
    wchar_t buffer[4096] = {};
    GetDlgItemTextW(dialog, id, buffer, 4096);
    return buffer;
}

RECT ItemRect(HWND dialog, int id) {
    RECT rc = {};
    HWND item = GetDlgItem(dialog, id);
    if (!item) return rc;
    GetWindowRect(item, &rc);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rc), 2);
    return rc;
}

// A missing control answers 0 to both.
bool ItemVisible(HWND dialog, int id) { return GetWindowLongW(GetDlgItem(dialog, id), GWL_STYLE) & WS_VISIBLE; }
bool ItemEnabled(HWND dialog, int id) { return IsWindowEnabled(GetDlgItem(dialog, id)) != FALSE; }

int FocusedId(HWND dialog) {
    HWND focus = GetFocus();
    return focus && IsChild(dialog, focus) ? GetDlgCtrlID(focus) : 0;
}

void WatchTaskMemory() {
    // once per process: starting again would reset a count that a test may be relying on
    static const bool started = kxhost::StartTaskMemAudit();
    (void)started;
}

ResourceCounts CountResources() {
    ResourceCounts c{0, 0, 0, 0};
    EnumWindows(&CountTopLevel, reinterpret_cast<LPARAM>(&c.windows));
    HANDLE self = GetCurrentProcess();
    c.gdiObjects = static_cast<int>(GetGuiResources(self, GR_GDIOBJECTS));
    if (c.gdiObjects == 0) {
        // Wine answers 0; it keeps GDI objects in a per-process table indexed by the handle's low word
        for (ULONG_PTR i = 1; i < 0x10000; ++i)
            if (GetObjectType(reinterpret_cast<HGDIOBJ>(i))) ++c.gdiObjects;
    }
    c.userObjects = static_cast<int>(GetGuiResources(self, GR_USEROBJECTS));
    if (c.userObjects == 0) c.userObjects = c.windows;
    c.taskMemBlocks = kxhost::LiveTaskMemBlocks();
    return c;
}

std::string Leftovers(const ResourceCounts& b) {
    const ResourceCounts a = CountResources();
    std::string s;
    auto add = [&](const char* what, long before, long after) {
        if (before != after)
            s += std::string(what) + " " + std::to_string(before) + " -> " + std::to_string(after) + "; ";
    };
    add("windows", b.windows, a.windows);
    add("GDI objects", b.gdiObjects, a.gdiObjects);
    add("USER objects", b.userObjects, a.userObjects);
    add("CoTaskMem blocks", b.taskMemBlocks, a.taskMemBlocks);
    return s;
}

bool SetClipboardText(const std::wstring& text) {
    if (!OpenClipboard(nullptr)) return false;
    EmptyClipboard();
    bool ok = true;
    if (!text.empty()) {
        const size_t bytes = (text.size() + 1) * sizeof(wchar_t);
        HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes);
        ok = block != nullptr;
        if (ok) {
            memcpy(GlobalLock(block), text.c_str(), bytes);
            GlobalUnlock(block);
            ok = SetClipboardData(CF_UNICODETEXT, block) != nullptr;  // the clipboard owns it now
            if (!ok) GlobalFree(block);
        }
    }
    CloseClipboard();
    return ok;
}

void HoldControl(bool down) {
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[VK_CONTROL] = keys[VK_LCONTROL] = down ? 0x80 : 0;
    SetKeyboardState(keys);
}

}  // namespace kxtest
