// Files and the temp folder through the platform's calls.
#include "imaging/win32/art_files_win32.h"

#include <windows.h>

#include <cstdio>

IArtFiles& KxArtFiles() {
    static CArtFilesWin32 files;
    return files;
}

DWORD CArtFilesWin32::GetTempPathW(DWORD bufferLength, WCHAR* buffer) { return ::GetTempPathW(bufferLength, buffer); }

bool CArtFilesWin32::FindFileSize(const WCHAR* path, DWORD* sizeHigh, DWORD* sizeLow) {
    WIN32_FIND_DATAW found;
    HANDLE search = ::FindFirstFileW(path, &found);
    if (search == INVALID_HANDLE_VALUE) return false;
    ::FindClose(search);
    *sizeHigh = found.nFileSizeHigh;
    *sizeLow = found.nFileSizeLow;
    return true;
}

DWORD CArtFilesWin32::GetFileAttributesW(const WCHAR* path) { return ::GetFileAttributesW(path); }

BOOL CArtFilesWin32::SetFileAttributesW(const WCHAR* path, DWORD attributes) {
    return ::SetFileAttributesW(path, attributes);
}

BOOL CArtFilesWin32::DeleteFileW(const WCHAR* path) { return ::DeleteFileW(path); }

FILE* CArtFilesWin32::OpenForReading(const WCHAR* path) { return ::_wfopen(path, L"rb"); }

namespace {

// The volume and file index of an existing file or folder, opened without any access so that
// neither sharing nor attributes stand in the way.
bool FileIdentity(const WCHAR* path, BY_HANDLE_FILE_INFORMATION* info) {
    HANDLE file = ::CreateFileW(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const BOOL ok = ::GetFileInformationByHandle(file, info);
    ::CloseHandle(file);
    return ok != FALSE;
}

}  // namespace

bool CArtFilesWin32::IsSameFile(const WCHAR* first, const WCHAR* second) {
    BY_HANDLE_FILE_INFORMATION a, b;
    if (!FileIdentity(first, &a) || !FileIdentity(second, &b)) return false;
    return a.dwVolumeSerialNumber == b.dwVolumeSerialNumber && a.nFileIndexHigh == b.nFileIndexHigh &&
           a.nFileIndexLow == b.nFileIndexLow;
}
