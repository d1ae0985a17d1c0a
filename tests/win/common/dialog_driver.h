// Drives a modal dialog from a test the way a user would. The driver catches the dialog when its
// window is created (a thread-local CBT hook), then plays a script from inside the dialog's own
// modal loop (a thread timer that the loop dispatches): each step runs on its own tick, after the
// loop has dispatched what the previous step posted. Keys and clicks are posted, so they pass
// through the loop and the dialog's PreTranslateMessage like real input. A watchdog closes a
// dialog whose script hangs.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace kxtest {

class DialogDriver {
public:
    using Step = std::function<void(HWND dialog)>;

    explicit DialogDriver(UINT timeoutMs = 10000);
    ~DialogDriver();
    DialogDriver(const DialogDriver&) = delete;
    DialogDriver& operator=(const DialogDriver&) = delete;

    // Script steps, played in order once the dialog is visible.
    DialogDriver& Do(Step step);
    // Gives control `id` the focus and types `text` into it, a WM_CHAR per character.
    DialogDriver& Type(int id, const std::wstring& text);
    // Clicks control `id` (BM_CLICK posted to it).
    DialogDriver& Click(int id);
    // Presses a key: WM_KEYDOWN and WM_KEYUP posted to the window with the focus, or to the dialog
    // when nothing has it.
    DialogDriver& Press(UINT vk);
    // Moves the focus to control `id`; 0 takes it away from every control of the dialog.
    DialogDriver& Focus(int id);
    // Posts WM_CLOSE to the dialog.
    DialogDriver& Close();
    // Reads the dialog as it is at this point of the script.
    DialogDriver& Inspect(Step step) { return Do(std::move(step)); }

    bool timedOut() const { return m_timedOut; }
    // Steps that ran.
    size_t stepsDone() const { return m_next; }
    size_t stepCount() const { return m_steps.size(); }

private:
    static LRESULT CALLBACK CbtProc(int code, WPARAM wParam, LPARAM lParam);
    static void CALLBACK TimerProc(HWND, UINT, UINT_PTR, DWORD);
    void Tick();

    std::vector<Step> m_steps;
    size_t m_next = 0;
    HHOOK m_hook = nullptr;
    UINT_PTR m_timer = 0;
    HWND m_dialog = nullptr;
    bool m_busy = false;
    bool m_timedOut = false;
    int m_ticks = 0;
    int m_shownTicks = 0;
    int m_activeTicks = 0;  // consecutive ticks with the dialog active
    int m_limit;
};

// What a dialog reads back.
std::wstring ItemText(HWND dialog, int id);
// Window rectangle of a control in the dialog's client coordinates.
RECT ItemRect(HWND dialog, int id);
bool ItemVisible(HWND dialog, int id);
bool ItemEnabled(HWND dialog, int id);
// Identifier of the control with the focus, 0 when none of the dialog's controls has it.
int FocusedId(HWND dialog);

// What the process holds, to prove that a dialog left nothing behind. Where the platform does not
// count GDI and USER objects for a process (Wine answers 0), GDI objects are counted by probing the
// handle table and USER objects as the process's windows.
struct ResourceCounts {
    int windows;
    int gdiObjects;
    int userObjects;
    long taskMemBlocks;  // live CoTaskMem blocks counted by the host library's malloc spy
};
ResourceCounts CountResources();
// What differs from `before`, each count named ("" when nothing was left behind).
std::string Leftovers(const ResourceCounts& before);
// Puts `text` on the clipboard as CF_UNICODETEXT, or empties the clipboard for an empty text;
// false when the clipboard could not be opened or filled.
bool SetClipboardText(const std::wstring& text);
// Holds the left Control key down in the thread's keyboard state, or lets it go.
void HoldControl(bool down);
// Starts the host library's CoTaskMem audit once for the process; later calls do nothing.
void WatchTaskMemory();

}  // namespace kxtest
