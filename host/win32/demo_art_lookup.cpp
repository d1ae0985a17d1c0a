#include "host/win32/demo_art_lookup.h"

#include <cmath>
#include <cstdio>
#include <vector>

#include "host/library/jpeg_encoder.h"

namespace kxdemo {

namespace {

// The content manager's class, as KxNetContent.dll registers it.
const wchar_t kContentManagerKey[] = L"CLSID\\{D1180ABF-AFEC-4C17-97AE-AD2874B839EB}\\InprocServer32";

bool ContentManagerRegistered() {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, kContentManagerKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
    RegCloseKey(key);
    return true;
}

// regsvr32 run silently in `folder`, where the component finds VnIntrfu.dll; its exit code.
DWORD RunRegsvr32(const std::wstring& folder, const std::wstring& args) {
    std::wstring line = L"regsvr32.exe /s " + args;
    STARTUPINFOW si = {};
    si.cb = sizeof(si);
    PROCESS_INFORMATION pi = {};
    if (!CreateProcessW(nullptr, &line[0], nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(), &si, &pi))
        return 0xFFFFFFFF;
    WaitForSingleObject(pi.hProcess, 60000);
    DWORD code = 0xFFFFFFFE;
    GetExitCodeProcess(pi.hProcess, &code);
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    return code;
}

// A sunset: a sun over dark hills in a purple-to-orange sky, so that the found cover cannot be
// mistaken for the sample library's art or the dialog's default picture.
std::vector<BYTE> DrawCover() {
    const LONG size = 200;
    std::vector<DWORD> pixels(static_cast<size_t>(size * size));
    for (LONG y = 0; y < size; ++y) {
        for (LONG x = 0; x < size; ++x) {
            const double dx = x - 100.0, dy = y - 118.0;
            const DWORD red = static_cast<DWORD>(90 + y * 165 / size), green = static_cast<DWORD>(30 + y / 2),
                        blue = static_cast<DWORD>(140 - y / 2);
            DWORD c = 0xFF000000u | (red << 16) | (green << 8) | blue;
            if (dx * dx + dy * dy < 46.0 * 46.0) c = 0xFFFFD040;
            if (y > 140 + 14 * std::sin(x / 23.0)) c = 0xFF2A1838;
            pixels[static_cast<size_t>(y * size + x)] = c;
        }
    }
    return kxhost::EncodeJpeg(size, size, pixels, 90);
}

bool WriteFileBytes(const std::wstring& path, const std::vector<BYTE>& bytes) {
    FILE* f = _wfopen(path.c_str(), L"wb");
    if (!f) return false;
    const bool written = fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
    return fclose(f) == 0 && written;
}

// The open context menu's chooser, driven by a thread timer while the menu's own loop runs.
struct MenuChoice {
    UINT command = 0;
    int ticks = 0;
    bool chosen = false;
};
thread_local MenuChoice* t_choice = nullptr;

void CALLBACK StepThroughMenu(HWND, UINT, UINT_PTR timer, DWORD) {
    MenuChoice* c = t_choice;
    if (!c) return;
    HWND popup = FindWindowW(L"#32768", nullptr);
    HMENU menu = popup ? reinterpret_cast<HMENU>(SendMessageW(popup, 0x01E1 /* MN_GETHMENU */, 0, 0)) : nullptr;
    const UINT state = menu ? GetMenuState(menu, c->command, MF_BYCOMMAND) : 0xFFFFFFFF;
    if (++c->ticks > 100 || (menu && (state == 0xFFFFFFFF || (state & (MF_GRAYED | MF_DISABLED))))) {
        KillTimer(nullptr, timer);
        EndMenu();  // not there, not enabled or never reached: the menu closes unchosen
        return;
    }
    if (!menu) return;  // not open yet
    if (state & MF_HILITE) {
        KillTimer(nullptr, timer);
        c->chosen = true;
        PostMessageW(popup, WM_KEYDOWN, VK_RETURN, 1);
    } else {
        PostMessageW(popup, WM_KEYDOWN, VK_DOWN, 1);
    }
}

}  // namespace

ScopedContentManager::ScopedContentManager(const std::wstring& exeDir) : m_exeDir(exeDir) {
    m_available = ContentManagerRegistered();
    if (!m_available && RunRegsvr32(m_exeDir, L"KxNetContent.dll") == 0) {
        m_registered = true;
        m_available = ContentManagerRegistered();
    }
}

ScopedContentManager::~ScopedContentManager() {
    if (m_registered) RunRegsvr32(m_exeDir, L"/u KxNetContent.dll");
}

ScopedLookupTrack::ScopedLookupTrack(kxhost::InMemoryLibrary& library, kxhost::ItemId track)
    : m_library(library), m_track(track) {
    m_oldPath = library.Value(track, KxPropFilePath);
    m_oldCaps = library.Capabilities(track, KxPropFilePath);
    wchar_t temp[MAX_PATH] = {};
    if (!GetTempPathW(MAX_PATH, temp)) return;
    m_folder = std::wstring(temp) + L"kxhost-lookup-" + std::to_wstring(GetCurrentProcessId());
    if (!CreateDirectoryW(m_folder.c_str(), nullptr)) {
        m_folder.clear();
        return;
    }
    m_files[0] = m_folder + L"\\track.mp3";
    m_files[1] = m_folder + L"\\cover.jpg";
    // the track's own file carries no tags: the picture beside it is what the lookup finds
    m_ready = WriteFileBytes(m_files[0], {'n', 'o', ' ', 't', 'a', 'g', 's'}) && WriteFileBytes(m_files[1], DrawCover());
    library.SetString(track, KxPropFilePath, m_files[0], kxhost::kReadable);
}

ScopedLookupTrack::~ScopedLookupTrack() {
    if (m_oldPath) m_library.SetValue(m_track, KxPropFilePath, *m_oldPath, m_oldCaps);
    else m_library.RemoveValue(m_track, KxPropFilePath);
    for (const std::wstring& file : m_files)
        if (!file.empty()) DeleteFileW(file.c_str());
    if (!m_folder.empty()) RemoveDirectoryW(m_folder.c_str());
}

bool ChooseFromContextMenu(HWND dialog, int picture, UINT command) {
    HWND control = GetDlgItem(dialog, picture);
    if (!control) return false;
    MenuChoice choice;
    choice.command = command;
    t_choice = &choice;
    const UINT_PTR timer = SetTimer(nullptr, 0, 60, &StepThroughMenu);
    // the menu's loop runs inside the button-up and returns when the menu closes
    SendMessageW(control, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(10, 10));
    SendMessageW(control, WM_RBUTTONUP, 0, MAKELPARAM(10, 10));
    KillTimer(nullptr, timer);
    t_choice = nullptr;
    return choice.chosen;
}

bool AwaitControlHeldAndFreed(HWND dialog, int control, DWORD ms) {
    HWND item = GetDlgItem(dialog, control);
    bool held = false;
    for (DWORD start = GetTickCount(); item && GetTickCount() - start < ms;) {
        MSG msg;
        // the state is read after each message: the hold may begin and end in one batch
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
            if (!IsWindowEnabled(item)) held = true;
            else if (held) return true;
        }
        if (!IsWindowEnabled(item)) held = true;
        Sleep(10);
    }
    return false;
}

}  // namespace kxdemo
