// The file system and temp folder behind IArtFiles.
#pragma once

#include "imaging/art_files.h"

// The process's one real file system (it holds no state of its own).
IArtFiles& KxArtFiles();

class CArtFilesWin32 : public IArtFiles {
public:
    DWORD GetTempPathW(DWORD bufferLength, WCHAR* buffer) override;
    bool FindFileSize(const WCHAR* path, DWORD* sizeHigh, DWORD* sizeLow) override;
    DWORD GetFileAttributesW(const WCHAR* path) override;
    BOOL SetFileAttributesW(const WCHAR* path, DWORD attributes) override;
    BOOL DeleteFileW(const WCHAR* path) override;
    FILE* OpenForReading(const WCHAR* path) override;
    bool IsSameFile(const WCHAR* first, const WCHAR* second) override;
};
