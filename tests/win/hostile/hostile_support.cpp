// What the hostile-host tables share.
#include "tests/win/hostile/hostile_support.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <vector>

namespace kxtest {

namespace {
thread_local DismissDialogs* t_dismisser = nullptr;
thread_local std::vector<HWND>* t_seen = nullptr;
}  // namespace

GuardedPages& GuardedPages::Get() {
    static GuardedPages pages;
    return pages;
}

GuardedPages::GuardedPages() {
    SYSTEM_INFO info;
    GetSystemInfo(&info);
    m_page = info.dwPageSize;
    m_base = static_cast<BYTE*>(VirtualAlloc(nullptr, 2 * m_page, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
    DWORD old = 0;
    VirtualProtect(m_base, m_page, PAGE_READONLY, &old);
    VirtualProtect(m_base + m_page, m_page, PAGE_NOACCESS, &old);
}

const void* GuardedPages::PlaceAtEnd(const void* data, size_t bytes) {
    DWORD old = 0;
    VirtualProtect(m_base, m_page, PAGE_READWRITE, &old);
    std::memcpy(EndOfReadable(bytes), data, bytes);
    VirtualProtect(m_base, m_page, PAGE_READONLY, &old);
    return EndOfReadable(bytes);
}

bool HostileHost::Open(const PluginLibrary& plugin) {
    sample = kxhost::BuildSampleLibrary(kxhost::DefaultSampleOptions());
    if (Lib().GetRootFolder(&root) != S_OK || Lib().CreateSite(&site) != S_OK ||
        Lib().CreateTrackList(sample.playlists[0], &given) != S_OK)
        return false;
    track = Lib().NewPidl(sample.tracks[0]);
    track2 = Lib().NewPidl(sample.tracks[1]);
    picture = Lib().NewPidl(sample.pictures[0]);
    video = Lib().NewPidl(sample.videos[0]);
    return plugin.Create(&res) == S_OK;
}

void HostileHost::Close() {
    if (res) res->Release();
    for (KxPidl p : {track, track2, picture, video}) CoTaskMemFree(p);
    for (IUnknown* o : std::initializer_list<IUnknown*>{given, site, root})
        if (o) o->Release();
    EXPECT_EQ(0, Lib().OutstandingReferences()) << Lib().DescribeLiveObjects();
}

std::string Hex(HRESULT hr) {
    char b[16];
    wsprintfA(b, "0x%08lx", static_cast<unsigned long>(hr));
    return b;
}

HWND DestroyedWindow() {
    HWND window = CreateWindowExW(0, L"STATIC", L"gone", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    DestroyWindow(window);
    return window;
}

const std::wstring& LongText(size_t count) {
    static std::map<size_t, std::wstring> texts;
    std::wstring& text = texts[count];
    if (text.size() != count) {
        text.resize(count);
        for (size_t i = 0; i < count; ++i) text[i] = i % 7 == 6 ? L' ' : static_cast<wchar_t>(L'a' + i % 26);
    }
    return text;
}

KxPcPidl EmptyPidl() {
    static const USHORT terminator = 0;
    return reinterpret_cast<KxPcPidl>(&terminator);
}

KxPcPidl OverlongPidl() {
    // A record that says it is 200 bytes long, four bytes before the unreadable page.
    const USHORT record[2] = {200, 0x4242};
    return static_cast<KxPcPidl>(GuardedPages::Get().PlaceAtEnd(record, sizeof(record)));
}

DismissDialogs::DismissDialogs(int button) : m_button(button) {
    t_dismisser = this;
    t_seen = new std::vector<HWND>();
    m_timer = SetTimer(nullptr, 0, 20, &Tick);
}

DismissDialogs::~DismissDialogs() {
    KillTimer(nullptr, m_timer);
    MSG msg;
    while (PeekMessageW(&msg, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE)) {
    }
    delete t_seen;
    t_seen = nullptr;
    t_dismisser = nullptr;
}

BOOL CALLBACK DismissDialogs::Visit(HWND window, LPARAM self) {
    wchar_t cls[16] = {};
    GetClassNameW(window, cls, 16);
    if (lstrcmpW(cls, L"#32770") != 0 || !IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
    auto* dismisser = reinterpret_cast<DismissDialogs*>(self);
    bool seen = false;
    for (HWND w : *t_seen) seen = seen || w == window;
    if (!seen) {
        t_seen->push_back(window);
        ++dismisser->m_dismissed;
        HWND button = dismisser->m_button ? GetDlgItem(window, dismisser->m_button) : nullptr;
        if (button && IsWindowEnabled(button)) {
            PostMessageW(button, BM_CLICK, 0, 0);
            return TRUE;
        }
    }
    PostMessageW(window, WM_CLOSE, 0, 0);
    return TRUE;
}

void CALLBACK DismissDialogs::Tick(HWND, UINT, UINT_PTR, DWORD) {
    if (t_dismisser) EnumThreadWindows(GetCurrentThreadId(), &Visit, reinterpret_cast<LPARAM>(t_dismisser));
}

}  // namespace kxtest
