// What the demo's album-art lookup needs around the tag dialog: the content manager registered
// in the prefix for the step's length, a track whose file lies in a temporary folder with a cover
// picture beside it, and a hand that chooses an entry of the picture's context menu.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "host/library/in_memory_library.h"

namespace kxdemo {

// Registers KxNetContent.dll (from the host's folder, through regsvr32 like any in-process class)
// unless it is registered already, and unregisters it again on destruction only if it did so, so
// that the prefix is left as it was found.
class ScopedContentManager {
public:
    explicit ScopedContentManager(const std::wstring& exeDir);
    ~ScopedContentManager();
    ScopedContentManager(const ScopedContentManager&) = delete;
    ScopedContentManager& operator=(const ScopedContentManager&) = delete;

    bool available() const { return m_available; }
    bool registeredHere() const { return m_registered; }

private:
    std::wstring m_exeDir;
    bool m_available = false;
    bool m_registered = false;
};

// Gives `track` a file in a new temporary folder with cover.jpg beside it (a drawn record sleeve)
// for the step's length; the destructor gives the track its old path back and removes the files.
class ScopedLookupTrack {
public:
    ScopedLookupTrack(kxhost::InMemoryLibrary& library, kxhost::ItemId track);
    ~ScopedLookupTrack();
    ScopedLookupTrack(const ScopedLookupTrack&) = delete;
    ScopedLookupTrack& operator=(const ScopedLookupTrack&) = delete;

    bool ready() const { return m_ready; }
    const std::wstring& folder() const { return m_folder; }

private:
    kxhost::InMemoryLibrary& m_library;
    kxhost::ItemId m_track;
    std::optional<kxhost::PropertyValue> m_oldPath;
    DWORD m_oldCaps = 0;
    std::wstring m_folder;
    std::wstring m_files[2];
    bool m_ready = false;
};

// Right-clicks the dialog's control `picture` and, in the menu that opens, moves the highlight to
// `command` with the arrow keys and presses Enter, as a user would. Returns once the menu is
// closed; true when the entry was there, enabled, and chosen.
bool ChooseFromContextMenu(HWND dialog, int picture, UINT command);

// Dispatches this thread's messages until `control` of the dialog has been disabled and enabled
// again (a lookup that holds the control while it runs) or `ms` have passed. True when it was.
bool AwaitControlHeldAndFreed(HWND dialog, int control, DWORD ms);

}  // namespace kxdemo
