// The native scratch folder behind IArtFiles.
#include "tests/unit/imaging/native_files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <filesystem>

namespace kxtest {

std::string NativePath(const WCHAR* path) {
    std::string out;
    for (; path && *path; ++path) {
        const wchar_t c = *path == L'\\' ? L'/' : *path;
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else {  // UTF-8
            char buffer[8];
            std::mbstate_t state{};
            const size_t n = std::wcrtomb(buffer, c, &state);
            if (n != static_cast<size_t>(-1)) out.append(buffer, n);
            else out += '?';
        }
    }
    return out;
}

std::wstring WidePath(const std::string& path) { return std::wstring(path.begin(), path.end()); }

bool ReadBytes(const std::string& path, std::vector<BYTE>* bytes) {
    FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) return false;
    bytes->clear();
    BYTE buffer[4096];
    size_t n;
    while ((n = std::fread(buffer, 1, sizeof(buffer), file)) > 0) bytes->insert(bytes->end(), buffer, buffer + n);
    const bool ok = !std::ferror(file);
    std::fclose(file);
    return ok;
}

bool WriteBytes(const std::string& path, const std::vector<BYTE>& bytes) {
    FILE* file = std::fopen(path.c_str(), "wb");
    if (!file) return false;
    const bool ok = bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && ok;
}

NativeArtFiles::NativeArtFiles() {
    std::string pattern = (std::filesystem::temp_directory_path() / "kx_imaging_XXXXXX").string();
    std::vector<char> buffer(pattern.begin(), pattern.end());
    buffer.push_back('\0');
    if (mkdtemp(buffer.data())) m_folder = std::string(buffer.data()) + "/";
    tempPath = WidePath(m_folder);
}

NativeArtFiles::~NativeArtFiles() {
    std::error_code ignored;
    if (!m_folder.empty()) std::filesystem::remove_all(m_folder, ignored);
}

std::vector<std::string> NativeArtFiles::Files() const {
    std::vector<std::string> names;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(m_folder, ignored))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

DWORD NativeArtFiles::GetTempPathW(DWORD bufferLength, WCHAR* buffer) {
    if (tempPathFails) return 0;
    const DWORD length = static_cast<DWORD>(tempPath.size());
    if (length + 1 > bufferLength) return length + 1;
    std::wmemcpy(buffer, tempPath.c_str(), length + 1);
    return length;
}

bool NativeArtFiles::FindFileSize(const WCHAR* path, DWORD* sizeHigh, DWORD* sizeLow) {
    struct stat info;
    if (stat(NativePath(path).c_str(), &info) != 0) return false;
    const unsigned long long size = S_ISDIR(info.st_mode) ? 0 : static_cast<unsigned long long>(info.st_size);
    *sizeHigh = static_cast<DWORD>(size >> 32);
    *sizeLow = static_cast<DWORD>(size);
    return true;
}

DWORD NativeArtFiles::GetFileAttributesW(const WCHAR* path) {
    const std::string native = NativePath(path);
    struct stat info;
    if (stat(native.c_str(), &info) != 0) return kInvalidFileAttributes;
    DWORD attributes = S_ISDIR(info.st_mode) ? kFileAttributeDirectory : 0x80u;  // normal
    if (!(info.st_mode & S_IWUSR)) attributes |= kFileAttributeReadOnly;
    auto it = m_flags.find(native);
    if (it != m_flags.end() && it->second) attributes = (attributes & ~0x80u) | it->second;
    return attributes;
}

BOOL NativeArtFiles::SetFileAttributesW(const WCHAR* path, DWORD attributes) {
    const std::string native = NativePath(path);
    struct stat info;
    if (stat(native.c_str(), &info) != 0) return FALSE;
    const mode_t mode = (attributes & kFileAttributeReadOnly) ? (info.st_mode & ~0222) : (info.st_mode | S_IWUSR);
    if (chmod(native.c_str(), mode) != 0) return FALSE;
    m_flags[native] = attributes & (kFileAttributeHidden | kFileAttributeSystem);
    return TRUE;
}

BOOL NativeArtFiles::DeleteFileW(const WCHAR* path) {
    const std::string native = NativePath(path);
    const DWORD attributes = GetFileAttributesW(path);
    // As on Windows: no folders, and a read-only file stays.
    if (attributes == kInvalidFileAttributes || (attributes & (kFileAttributeDirectory | kFileAttributeReadOnly)))
        return FALSE;
    if (unlink(native.c_str()) != 0) return FALSE;
    m_flags.erase(native);
    return TRUE;
}

FILE* NativeArtFiles::OpenForReading(const WCHAR* path) { return std::fopen(NativePath(path).c_str(), "rb"); }

bool NativeArtFiles::IsSameFile(const WCHAR* first, const WCHAR* second) {
    struct stat a, b;
    if (stat(NativePath(first).c_str(), &a) != 0 || stat(NativePath(second).c_str(), &b) != 0) return false;
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace kxtest
