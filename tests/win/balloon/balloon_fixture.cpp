#include "tests/win/balloon/balloon_fixture.h"

#include "balloon/bubble_constants.h"

namespace kxtest {

std::wstring PreparePluginFolder(const std::wstring& name, bool withSkin) {
    const std::wstring dir = ExeDir() + name + L"\\";
    CreateDirectoryW(dir.c_str(), nullptr);
    CopyFileW((ExeDir() + L"KxComResPlgin.dll").c_str(), (dir + L"KxComResPlgin.dll").c_str(), FALSE);
    CopyFileW((ExeDir() + L"ComRcRes.dll").c_str(), (dir + L"ComRcRes.dll").c_str(), FALSE);
    const std::wstring package = dir + L"ComRcRes.bff";
    if (!withSkin) {
        DeleteFileW(package.c_str());
    } else if (!CopyFileW((ExeDir() + L"ComRcRes.bff").c_str(), package.c_str(), FALSE)) {
        HANDLE f = CreateFileW(package.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        if (f != INVALID_HANDLE_VALUE) CloseHandle(f);
    }
    return dir;
}

namespace {
BOOL CALLBACK CollectBubble(HWND hwnd, LPARAM lp) {
    wchar_t cls[64] = {};
    GetClassNameW(hwnd, cls, 64);
    if (std::wstring(cls) == KX_BUBBLE_CLASS_NAME) reinterpret_cast<std::vector<HWND>*>(lp)->push_back(hwnd);
    return TRUE;
}
BOOL CALLBACK CollectText(HWND hwnd, LPARAM lp) {
    wchar_t text[512] = {};
    GetWindowTextW(hwnd, text, 512);
    reinterpret_cast<std::vector<std::wstring>*>(lp)->push_back(text);
    return TRUE;
}
}  // namespace

std::vector<HWND> BubbleWindows() {
    std::vector<HWND> found;
    EnumThreadWindows(GetCurrentThreadId(), &CollectBubble, reinterpret_cast<LPARAM>(&found));
    return found;
}

HWND TheBubble() {
    std::vector<HWND> b = BubbleWindows();
    return b.size() == 1 ? b[0] : nullptr;
}

std::vector<std::wstring> BubbleTexts(HWND bubble) {
    std::vector<std::wstring> texts;
    if (bubble) EnumChildWindows(bubble, &CollectText, reinterpret_cast<LPARAM>(&texts));
    return texts;
}

void Pump(DWORD ms) {
    const DWORD end = GetTickCount() + ms;
    do {
        MSG m;
        while (PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&m);
            DispatchMessageW(&m);
        }
        Sleep(5);
    } while (static_cast<LONG>(GetTickCount() - end) < 0);
}

bool PumpUntil(DWORD ms, bool (*done)()) {
    const DWORD end = GetTickCount() + ms;
    while (!done()) {
        if (static_cast<LONG>(GetTickCount() - end) >= 0) return false;
        Pump(10);
    }
    return true;
}

HWND HostWindow(int x, int y, int w, int h) {
    return CreateWindowExW(0, L"STATIC", L"host", WS_POPUP | WS_VISIBLE, x, y, w, h, nullptr, nullptr, nullptr,
                           nullptr);
}

}  // namespace kxtest
