// A recording stand-in for the skinning library HookWndU.DLL, for tests only (never shipped). It
// answers CallHookWnd like the library and writes every call, with its words and the names they
// point to, to the file named by the environment variable KX_HOOK_LOG, one line each; so does its
// loading and unloading. KX_HOOK_REFUSE lists operations (decimal or 0x hex, comma separated)
// that answer 0. While a dialog is attached, its controls are watched for WM_HKSTATIC_FUNCTION.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

HMODULE g_self;
UINT g_staticMessage;
DWORD_PTR g_nextHook = 0x4B01;

struct Watched {
    HWND hwnd;
    WNDPROC previous;
};
std::vector<Watched> g_watched;

std::string Utf8(const wchar_t* s) {
    if (!s) return "(null)";
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
    FILE* f = _wfopen(path, L"ab");
    if (!f) return;
    std::fputs(line.c_str(), f);
    std::fputc('\n', f);
    std::fclose(f);
}

bool Refused(DWORD_PTR op) {
    char list[256];
    DWORD n = GetEnvironmentVariableA("KX_HOOK_REFUSE", list, sizeof(list));
    if (!n || n >= sizeof(list)) return false;
    for (char* p = list; *p;) {
        char* end = nullptr;
        unsigned long v = std::strtoul(p, &end, 0);
        if (end == p) break;
        if (v == op) return true;
        p = *end == ',' ? end + 1 : end;
    }
    return false;
}

Watched* FindWatched(HWND hwnd) {
    for (auto& w : g_watched)
        if (w.hwnd == hwnd) return &w;
    return nullptr;
}

void Unwatch(HWND hwnd) {
    for (size_t i = 0; i < g_watched.size(); ++i) {
        if (g_watched[i].hwnd != hwnd) continue;
        SetWindowLongPtrW(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(g_watched[i].previous));
        g_watched.erase(g_watched.begin() + static_cast<long>(i));
        return;
    }
}

LRESULT CALLBACK WatchProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    Watched* w = FindWatched(hwnd);
    if (!w) return DefWindowProcW(hwnd, msg, wp, lp);
    WNDPROC previous = w->previous;
    if (msg == g_staticMessage && g_staticMessage) {
        std::string line = "static id=" + std::to_string(GetDlgCtrlID(hwnd)) + " form=" + std::to_string(wp);
        if (wp == 2) line += " picture=" + std::string(lp ? reinterpret_cast<const char*>(lp) : "(null)");
        Log(line);
        return 0;
    }
    if (msg == WM_NCDESTROY) Unwatch(hwnd);
    return CallWindowProcW(previous, hwnd, msg, wp, lp);
}

BOOL CALLBACK WatchChild(HWND child, LPARAM) {
    if (FindWatched(child)) return TRUE;
    auto previous = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(child, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&WatchProc)));
    if (previous) g_watched.push_back(Watched{child, previous});
    return TRUE;
}

void UnwatchAll() {
    while (!g_watched.empty()) Unwatch(g_watched.back().hwnd);
}

std::string ClassName(HWND hwnd) {
    wchar_t cls[64] = {};
    GetClassNameW(hwnd, cls, 64);
    return Utf8(cls);
}

}  // namespace

extern "C" DWORD_PTR WINAPI CallHookWnd(DWORD_PTR op, DWORD_PTR hook, DWORD_PTR third, DWORD_PTR fourth,
                                        DWORD_PTR fifth) {
    std::string line = "call op=" + Hex(op) + " hook=" + Hex(hook);
    switch (op) {
    case 1:
    case 2:
    case 4:
        line += " " + Hex(third) + " " + Hex(fourth) + " " + Hex(fifth);
        break;
    case 3: {
        auto* words = reinterpret_cast<const DWORD_PTR*>(fifth);
        const DWORD size = fifth ? *reinterpret_cast<const DWORD*>(fifth) : 0;
        line += " " + Hex(third) + " window=" + ClassName(reinterpret_cast<HWND>(fourth)) +
                " size=" + std::to_string(size);
        if (fifth) {
            line += " path=" + Utf8(reinterpret_cast<const wchar_t*>(words[1])) + " zero=" + Hex(words[2]) +
                    " picture=" + std::string(reinterpret_cast<const char*>(words[3]));
        }
        break;
    }
    case 12:
        line += " " + Hex(third) + " " + Hex(fourth) + " picture=" + reinterpret_cast<const char*>(fifth);
        break;
    case 0x1000:
        line += " window=" + ClassName(reinterpret_cast<HWND>(third)) + " file=" +
                reinterpret_cast<const char*>(fourth) + " path=" + Utf8(reinterpret_cast<const wchar_t*>(fifth));
        break;
    default:
        line += " " + Hex(third) + " " + Hex(fourth) + " " + Hex(fifth);
        break;
    }
    const bool refused = Refused(op);
    Log(line + (refused ? " -> refused" : ""));
    if (refused) return 0;
    switch (op) {
    case 1:
        return g_nextHook++;
    case 4:
        UnwatchAll();
        return 1;
    case 0x1000:
        EnumChildWindows(reinterpret_cast<HWND>(third), &WatchChild, 0);
        return 1;
    default:
        return 1;
    }
}

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        g_self = instance;
        DisableThreadLibraryCalls(instance);
        g_staticMessage = RegisterWindowMessageW(L"WM_HKSTATIC_FUNCTION");
        Log("load");
    } else if (reason == DLL_PROCESS_DETACH) {
        UnwatchAll();
        Log("free");
    }
    return TRUE;
}
