// A track file opened for reading as a ByteSource of the tag readers, and whole small files read
// at once (the pictures beside a track).
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "base/owners.h"
#include "netcontent/byte_source.h"

namespace kxnet {

inline void CloseFileHandle(HANDLE h) {
    if (h != INVALID_HANDLE_VALUE) CloseHandle(h);
}
using CFileHandle = CKxUnique<HANDLE, &CloseFileHandle>;

class FileSource : public ByteSource {
public:
    // Opens `path` sharing it with writers and deleters (a player may hold it); Ok() says whether
    // that worked.
    explicit FileSource(const std::wstring& path);
    bool Ok() const { return m_file.Get() != nullptr && m_file.Get() != INVALID_HANDLE_VALUE; }
    uint64_t Size() const override { return m_size; }
    bool Read(uint64_t offset, size_t count, uint8_t* out) const override;

private:
    CFileHandle m_file;
    uint64_t m_size = 0;
};

// The whole file at `path` when it is a file of 1 to `limit` bytes.
bool ReadWholeFile(const std::wstring& path, uint64_t limit, std::vector<uint8_t>* bytes);

}  // namespace kxnet
