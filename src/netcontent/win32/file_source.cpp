// The file source of file_source.h: positioned reads through OVERLAPPED offsets on a handle
// opened for synchronous reading, so that no file pointer is shared between reads.
#include "netcontent/win32/file_source.h"

namespace kxnet {

FileSource::FileSource(const std::wstring& path) {
    m_file.Reset(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                             nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    LARGE_INTEGER size;
    if (Ok() && GetFileSizeEx(m_file.Get(), &size) && size.QuadPart >= 0)
        m_size = static_cast<uint64_t>(size.QuadPart);
    else
        m_file.Reset();
}

bool FileSource::Read(uint64_t offset, size_t count, uint8_t* out) const {
    if (!Ok() || offset > m_size || count > m_size - offset) return false;
    while (count > 0) {
        OVERLAPPED at = {};
        at.Offset = static_cast<DWORD>(offset);
        at.OffsetHigh = static_cast<DWORD>(offset >> 32);
        const DWORD chunk = count > 0x10000000u ? 0x10000000u : static_cast<DWORD>(count);
        DWORD got = 0;
        if (!ReadFile(m_file.Get(), out, chunk, &got, &at) || got == 0) return false;
        offset += got;
        out += got;
        count -= got;
    }
    return true;
}

bool ReadWholeFile(const std::wstring& path, uint64_t limit, std::vector<uint8_t>* bytes) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY)) return false;
    const FileSource file(path);
    if (!file.Ok() || file.Size() == 0 || file.Size() > limit) return false;
    return ReadBlock(file, 0, file.Size(), bytes);
}

}  // namespace kxnet
