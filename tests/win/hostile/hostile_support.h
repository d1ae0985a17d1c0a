// What the hostile-host tables share: memory a host hands over that cannot be written or read
// past, a window handle that no longer names a window, long strings, damaged item identifier
// lists, and a watcher that dismisses every dialog of the thread as soon as it shows.
#pragma once

#include <windows.h>

#include <string>

#include "host/library/sample_library.h"
#include "kx/IKxCommonResource.h"
#include "kx/KxContentTree.h"
#include "tests/win/common/plugin_loader.h"

namespace kxtest {

// Two pages: the first read-only, the second no access. Lives for the process.
class GuardedPages {
public:
    static GuardedPages& Get();
    // A pointer into read-only memory: readable, never writable.
    void* ReadOnly() const { return m_base; }
    // `bytes` readable bytes that end exactly where the inaccessible page begins.
    void* EndOfReadable(size_t bytes) const { return m_base + m_page - bytes; }
    // Memory that can be neither read nor written.
    void* NoAccess() const { return m_base + m_page; }
    // Copies `bytes` to the end of the readable page (made writable for the copy) and returns them.
    const void* PlaceAtEnd(const void* data, size_t bytes);

private:
    GuardedPages();
    BYTE* m_base = nullptr;
    size_t m_page = 0;
};

// A handle that named a window of this thread a moment ago.
HWND DestroyedWindow();

// `count` characters, a readable text (letters and spaces); `count` 0 gives "".
const std::wstring& LongText(size_t count);

// Item identifier lists a host should never send: the empty chain (a terminator only) and a first
// record whose length runs past the end of its block, into memory that cannot be read.
KxPcPidl EmptyPidl();
KxPcPidl OverlongPidl();

// What a table calls into: the plug-in object and a sample library with its root folder, its site,
// the first playlist's track list and the identifiers of two tracks, a picture and a video.
struct HostileHost {
    IKxCommonResource* res = nullptr;
    kxhost::SampleLibrary sample;
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;
    IKxTrackList* given = nullptr;
    KxPidl track = nullptr, track2 = nullptr, picture = nullptr, video = nullptr;

    kxhost::InMemoryLibrary& Lib() const { return *sample.library; }
    // Builds the library and its objects and creates the plug-in's object; false when one failed.
    bool Open(const PluginLibrary& plugin);
    // Releases all of it; what the library still counts is a fixture's failure.
    void Close();
    template <typename T>
    T* ReadOnlyOut() const {
        return static_cast<T*>(GuardedPages::Get().ReadOnly());
    }
};

// A status code as "0x" and 8 hex digits.
std::string Hex(HRESULT hr);

// While it lives, every dialog of this thread is sent WM_CLOSE as soon as it is visible and
// enabled (a dialog under a nested one waits for it); counts the dialogs it dismissed. With a
// `button`, a dialog that has that control enabled gets it clicked first, and WM_CLOSE only if it
// is still there a tick later.
class DismissDialogs {
public:
    explicit DismissDialogs(int button = 0);
    ~DismissDialogs();
    DismissDialogs(const DismissDialogs&) = delete;
    DismissDialogs& operator=(const DismissDialogs&) = delete;
    int dismissed() const { return m_dismissed; }

private:
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD);
    static BOOL CALLBACK Visit(HWND window, LPARAM self);
    UINT_PTR m_timer = 0;
    int m_button;
    int m_dismissed = 0;
};

}  // namespace kxtest
