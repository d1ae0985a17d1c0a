// The file and temp-folder operations of the album-art pipeline, by their platform names, behind
// one small interface: the Win32 adapter (win32/art_files_win32.h) is the real one; native tests
// give one over a private folder. The shell's path-splitting rules are portable (path_parts.h).
#pragma once

#include "kx/KxPlatform.h"

#include <cstdio>

constexpr DWORD kInvalidFileAttributes = 0xFFFFFFFFu;
constexpr DWORD kFileAttributeReadOnly = 0x1u;
constexpr DWORD kFileAttributeHidden = 0x2u;
constexpr DWORD kFileAttributeSystem = 0x4u;
constexpr DWORD kFileAttributeDirectory = 0x10u;

class IArtFiles {
public:
    virtual ~IArtFiles() = default;

    // The temp folder with its closing separator; the number of characters, 0 on failure, or the
    // room needed when `bufferLength` is too small.
    virtual DWORD GetTempPathW(DWORD bufferLength, WCHAR* buffer) = 0;
    // FindFirstFileW and FindClose: the size of a file (or folder) as two halves; false when
    // nothing of that name is found.
    virtual bool FindFileSize(const WCHAR* path, DWORD* sizeHigh, DWORD* sizeLow) = 0;
    virtual DWORD GetFileAttributesW(const WCHAR* path) = 0;  // kInvalidFileAttributes when absent
    virtual BOOL SetFileAttributesW(const WCHAR* path, DWORD attributes) = 0;
    virtual BOOL DeleteFileW(const WCHAR* path) = 0;
    // _wfopen(path, L"rb"); the caller reads with fread and closes with fclose.
    virtual FILE* OpenForReading(const WCHAR* path) = 0;
    // Whether both names reach one existing file (however spelt: case, short names, links).
    virtual bool IsSameFile(const WCHAR* first, const WCHAR* second) = 0;
};
