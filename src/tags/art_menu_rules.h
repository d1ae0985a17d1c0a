// Which entries of the picture's context menu are enabled, and whether it opens at all, from the
// art state and what the clipboard offers. A bitmap is taken first; a file list only without a
// device-independent bitmap, with exactly one file, and not when it was put there by Cut. It
// never opens without an album text or while the Change... button is shown disabled.
#pragma once

#include <string>

// What the clipboard offers when the menu opens (the Win32 side reads it, encoding a bitmap now).
struct ArtClipboardOffer {
    bool hasBitmap = false;      // CF_BITMAP
    bool bitmapStored = false;   // ... and it was encoded into the pasted bytes
    bool hasDib = false;         // CF_DIB
    bool hasFileList = false;    // CF_HDROP
    int fileCount = 0;
    std::wstring firstFile;
    bool hasDropEffect = false;  // "Preferred DropEffect" data is there
    unsigned char dropEffect = 0;  // its first byte
};

struct ArtMenuState {
    bool artRemoved = false;       // m_bArtRemoved
    bool commandsEnabled = true;   // m_bArtCommandsEnabled
    bool singleItem = true;
    bool hasLookup = false;        // the online entry is in the menu
    bool albumHasText = true;      // the album field exists and is not empty
    bool browseBlocked = false;    // the Change... button is visible and disabled
};

// Whether the menu may open at all: without an album there is nothing to attach art to, and a
// visible but disabled Change... button means the art cannot be changed. Checked before the
// clipboard is read, so that nothing is encoded for a menu that does not open.
bool ArtMenuMayOpen(const ArtMenuState& state);

struct ArtMenuDecision {
    bool browse = false;   // 9000
    bool paste = false;    // 9001
    bool remove = false;   // 9002
    bool lookup = false;   // 9003, when it is in the menu
    bool open = false;     // the menu shows
    std::wstring pastedPath;  // the one file that Paste would load; empty otherwise
};

// `acceptedFile` tells an accepted image file (CAlbumArt::IsAcceptedImageFile).
ArtMenuDecision DecideArtMenu(const ArtMenuState& state, const ArtClipboardOffer& offer,
                              bool (*acceptedFile)(const wchar_t* path));
