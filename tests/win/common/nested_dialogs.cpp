// The nested dialogs' answers, on a thread timer.
#include "tests/win/common/nested_dialogs.h"

#include <cwchar>

namespace kxtest {
namespace {

HWND g_owner = nullptr;
std::wstring g_path;
bool g_answered = false;

BOOL CALLBACK FindDialog(HWND window, LPARAM found) {
    HWND* result = reinterpret_cast<HWND*>(found);
    WCHAR cls[16] = {};
    GetClassNameW(window, cls, 16);
    if (window == result[1] || wcscmp(cls, L"#32770") != 0 || !IsWindowVisible(window)) return TRUE;
    result[0] = window;
    return FALSE;
}

void CALLBACK AnswerFileDialogTimer(HWND, UINT, UINT_PTR id, DWORD) {
    HWND box = FindOtherDialog(g_owner);
    if (!box) return;
    KillTimer(nullptr, id);
    for (int name : {0x47C, 0x480}) SetDlgItemTextW(box, name, g_path.c_str());  // combo or edit
    if (g_path.empty()) {
        PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
        return;
    }
    g_answered = true;
    PostMessageW(box, WM_COMMAND, IDOK, 0);
}

}  // namespace

HWND FindOtherDialog(HWND except) {
    HWND found[2] = {nullptr, except};
    EnumThreadWindows(GetCurrentThreadId(), FindDialog, reinterpret_cast<LPARAM>(found));
    return found[0];
}

void AnswerFileDialog(HWND owner, const std::wstring& path) {
    g_owner = owner;
    g_path = path;
    g_answered = false;
    SetTimer(nullptr, 0, 200, AnswerFileDialogTimer);
}

bool FileDialogAnswered() { return g_answered; }

}  // namespace kxtest
