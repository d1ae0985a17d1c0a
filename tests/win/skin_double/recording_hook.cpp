// A recording stand-in for the skinning library HookWndU.DLL, for tests only (never shipped). It
// answers CallHookWnd like the library and writes every call, with its words and the names they
// point to, to the file named by the environment variable KX_HOOK_LOG, one line each; so does its
// loading and unloading. KX_HOOK_REFUSE names one operation (decimal or 0x hex) that answers 0, as
// the library does when it cannot open or attach. While a dialog is attached, its controls are
// watched for WM_HKSTATIC_FUNCTION; so are a skinned popup's, whose descriptor's picture and
// package path are written out, as is the picture of a popup's shape.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "frame/skin_client.h"

namespace {

UINT g_staticMessage;
DWORD_PTR g_nextHook = 0x4B01;

struct Watched {
    HWND hwnd;
    WNDPROC previous;
};
std::vector<Watched> g_watched;

std::string Utf8(const wchar_t* s) {
    int n = WideCharToMultiByte(CP_UTF8, 0, s, -1, nullptr, 0, nullptr, nullptr);
    std::string out(n > 0 ? n - 1 : 0, '\0');
    if (n > 1) WideCharToMultiByte(CP_UTF8, 0, s, -1, &out[0], n, nullptr, nullptr);
    return out;
}

std::string Hex(DWORD_PTR v) {
    char b[32];
    std::snprintf(b, sizeof(b), "0x%llx", static_cast<unsigned long long>(v));
    return b;
}

void Log(const std::string& line) {
    wchar_t path[MAX_PATH];
    if (!GetEnvironmentVariableW(L"KX_HOOK_LOG", path, MAX_PATH)) return;
    if (FILE* f = _wfopen(path, L"ab")) {
        std::fputs((line + "\n").c_str(), f);
        std::fclose(f);
    }
}

bool Refused(DWORD_PTR op) {
    char value[32];
    const DWORD n = GetEnvironmentVariableA("KX_HOOK_REFUSE", value, sizeof(value));
    return n && n < sizeof(value) && std::strtoull(value, nullptr, 0) == op;
}

std::string ClassName(HWND hwnd) {
    wchar_t cls[64] = {};
    GetClassNameW(hwnd, cls, 64);
    return Utf8(cls);
}

void Unwatch(size_t i) {
    SetWindowLongPtrW(g_watched[i].hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(g_watched[i].previous));
    g_watched.erase(g_watched.begin() + static_cast<long>(i));
}

void UnwatchAll() {
    while (!g_watched.empty()) Unwatch(g_watched.size() - 1);
}

LRESULT CALLBACK WatchProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    for (size_t i = 0; i < g_watched.size(); ++i) {
        if (g_watched[i].hwnd != hwnd) continue;
        WNDPROC previous = g_watched[i].previous;
        if (msg == g_staticMessage && g_staticMessage) {
            std::string line = "static id=" + std::to_string(GetDlgCtrlID(hwnd)) + " form=" + std::to_string(wp);
            if (wp == 2) line += " picture=" + std::string(lp ? reinterpret_cast<const char*>(lp) : "(null)");
            Log(line);
            return 0;
        }
        if (msg == WM_NCDESTROY) Unwatch(i);
        return CallWindowProcW(previous, hwnd, msg, wp, lp);
    }
    return DefWindowProcW(hwnd, msg, wp, lp);
}

BOOL CALLBACK WatchChild(HWND child, LPARAM) {
    for (const Watched& w : g_watched)
        if (w.hwnd == child) return TRUE;
    auto previous = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(child, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&WatchProc)));
    if (previous) g_watched.push_back(Watched{child, previous});
    return TRUE;
}

}  // namespace

extern "C" DWORD_PTR WINAPI CallHookWnd(DWORD_PTR op, DWORD_PTR hook, DWORD_PTR third, DWORD_PTR fourth,
                                        DWORD_PTR fifth) {
    std::string line = "call op=" + Hex(op) + " hook=" + Hex(hook);
    if (op == 0x1000) {
        line += " window=" + ClassName(reinterpret_cast<HWND>(third)) + " file=" +
                reinterpret_cast<const char*>(fourth) + " path=" + Utf8(reinterpret_cast<const wchar_t*>(fifth));
    } else if (op == 3 && fifth) {
        const auto* d = reinterpret_cast<const _tagHookPopupDescriptor*>(fifth);
        line += " " + Hex(third) + " window=" + ClassName(reinterpret_cast<HWND>(fourth)) + " picture=" +
                (d->pszPicture ? d->pszPicture : "(null)") + " path=" + (d->pszSkinPath ? Utf8(d->pszSkinPath) : "(null)");
    } else if (op == 12 && fifth) {
        line += " " + Hex(third) + " " + Hex(fourth) + " picture=" + reinterpret_cast<const char*>(fifth);
    } else {
        line += " " + Hex(third) + " " + Hex(fourth) + " " + Hex(fifth);
    }
    if (Refused(op)) {
        Log(line + " -> refused");
        return 0;
    }
    Log(line);
    if (op == 1) return g_nextHook++;
    if (op == 4) UnwatchAll();
    if (op == 0x1000) EnumChildWindows(reinterpret_cast<HWND>(third), &WatchChild, 0);
    if (op == 3) EnumChildWindows(reinterpret_cast<HWND>(fourth), &WatchChild, 0);
    return 1;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        DisableThreadLibraryCalls(instance);
        g_staticMessage = RegisterWindowMessageW(L"WM_HKSTATIC_FUNCTION");
        Log("load");
    } else if (reason == DLL_PROCESS_DETACH) {
        UnwatchAll();
        Log("free");
    }
    return TRUE;
}
