// Real files for the native tests: a private scratch folder that plays the temp folder behind
// IArtFiles, with the platform's rules where POSIX differs (read-only files cannot be deleted;
// hidden and system are remembered per file), and byte helpers.
#pragma once

#include "imaging/art_files.h"

#include <map>
#include <string>
#include <vector>

namespace kxtest {

// A wide path as the native file system names it ('\' read as '/').
std::string NativePath(const WCHAR* path);
std::wstring WidePath(const std::string& path);
bool ReadBytes(const std::string& path, std::vector<BYTE>* bytes);
bool WriteBytes(const std::string& path, const std::vector<BYTE>& bytes);

class NativeArtFiles : public IArtFiles {
public:
    // Makes a fresh folder below the system's temp folder; removes it with all it holds.
    NativeArtFiles();
    ~NativeArtFiles() override;

    // The scratch folder, ending in '/'; its files (names only, sorted).
    const std::string& Folder() const { return m_folder; }
    std::wstring WideFolder() const { return WidePath(m_folder); }
    std::vector<std::string> Files() const;

    // What GetTempPathW answers from now: another folder (as it stands), or a failure.
    std::wstring tempPath;
    bool tempPathFails = false;

    DWORD GetTempPathW(DWORD bufferLength, WCHAR* buffer) override;
    bool FindFileSize(const WCHAR* path, DWORD* sizeHigh, DWORD* sizeLow) override;
    DWORD GetFileAttributesW(const WCHAR* path) override;
    BOOL SetFileAttributesW(const WCHAR* path, DWORD attributes) override;
    BOOL DeleteFileW(const WCHAR* path) override;
    FILE* OpenForReading(const WCHAR* path) override;
    bool IsSameFile(const WCHAR* first, const WCHAR* second) override;

private:
    std::string m_folder;
    std::map<std::string, DWORD> m_flags;  // hidden and system, by native path
};

}  // namespace kxtest
