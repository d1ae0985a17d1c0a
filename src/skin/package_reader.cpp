#include "skin/package_reader.h"

#include <cstring>

namespace kxskin {

namespace {

const uint32_t kEndOfDirectory = 0x06054b50;
const uint32_t kDirectoryEntry = 0x02014b50;
const uint32_t kLocalHeader = 0x04034b50;
const size_t kEndOfDirectorySize = 22;
const size_t kDirectoryEntrySize = 46;
const size_t kLocalHeaderSize = 30;
// Names longer than the platform's path limit cannot be asked for; the longest archive comment
// bounds the search for the end record.
const size_t kLongestName = 260;
const size_t kLongestComment = 0xFFFF;

uint16_t Read16(const uint8_t* p) { return static_cast<uint16_t>(p[0] | (p[1] << 8)); }
uint32_t Read32(const uint8_t* p) {
    return static_cast<uint32_t>(p[0]) | (static_cast<uint32_t>(p[1]) << 8) | (static_cast<uint32_t>(p[2]) << 16) |
           (static_cast<uint32_t>(p[3]) << 24);
}

// [offset, offset + length) lies inside [0, size), without overflow.
bool Inside(size_t offset, size_t length, size_t size) { return offset <= size && length <= size - offset; }

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

uint32_t ZipCrc32(const uint8_t* data, size_t size) {
    uint32_t crc = 0xFFFFFFFFu;
    for (size_t i = 0; i < size; ++i) {
        crc ^= data[i];
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

bool SkinPackage::Open(const uint8_t* bytes, size_t size) {
    m_entries.clear();
    if (!bytes || size < kEndOfDirectorySize) return false;

    // the end record is the last one whose comment reaches exactly to the end of the file
    size_t end = size - kEndOfDirectorySize;
    const size_t lowest = size - kEndOfDirectorySize > kLongestComment ? end - kLongestComment : 0;
    bool found = false;
    for (;; --end) {
        if (Read32(bytes + end) == kEndOfDirectory && end + kEndOfDirectorySize + Read16(bytes + end + 20) == size) {
            found = true;
            break;
        }
        if (end == lowest) break;
    }
    if (!found) return false;

    const uint8_t* eocd = bytes + end;
    // one disk only: split archives are not packages
    if (Read16(eocd + 4) != 0 || Read16(eocd + 6) != 0) return false;
    const size_t count = Read16(eocd + 10);
    const size_t directorySize = Read32(eocd + 12);
    const size_t directoryOffset = Read32(eocd + 16);
    if (Read16(eocd + 8) != count || !Inside(directoryOffset, directorySize, end)) return false;

    size_t at = directoryOffset;
    const size_t directoryEnd = directoryOffset + directorySize;
    for (size_t i = 0; i < count; ++i) {
        if (!Inside(at, kDirectoryEntrySize, directoryEnd) || Read32(bytes + at) != kDirectoryEntry) break;
        const uint8_t* h = bytes + at;
        const uint16_t flags = Read16(h + 8), method = Read16(h + 10);
        const uint32_t crc = Read32(h + 16);
        const size_t packed = Read32(h + 20), unpacked = Read32(h + 24);
        const size_t nameLength = Read16(h + 28), extra = Read16(h + 30), comment = Read16(h + 32);
        const size_t local = Read32(h + 42);
        const size_t next = at + kDirectoryEntrySize + nameLength + extra + comment;
        if (!Inside(at + kDirectoryEntrySize, nameLength + extra + comment, directoryEnd)) break;
        at = next;

        // Stored and not encrypted, one size for both, a name that can be asked for; the local
        // header must agree on the name's length and lie, with the data, before the directory.
        if (method != 0 || (flags & 1) || packed != unpacked || nameLength == 0 || nameLength > kLongestName) continue;
        const char* name = reinterpret_cast<const char*>(h + kDirectoryEntrySize);
        if (std::memchr(name, '\0', nameLength)) continue;
        if (!Inside(local, kLocalHeaderSize, directoryOffset) || Read32(bytes + local) != kLocalHeader) continue;
        const size_t dataOffset = local + kLocalHeaderSize + Read16(bytes + local + 26) + Read16(bytes + local + 28);
        if (Read16(bytes + local + 26) != nameLength || !Inside(dataOffset, packed, directoryOffset)) continue;
        if (ZipCrc32(bytes + dataOffset, packed) != crc) continue;
        m_entries.push_back(PackageEntry{name, nameLength, bytes + dataOffset, packed});
    }
    return true;
}

bool SkinPackage::Find(const char* name, PackageEntry* out) const {
    if (!name || !out) return false;
    const size_t length = strnlen(name, kLongestName + 1);
    if (length == 0 || length > kLongestName) return false;
    for (const PackageEntry& e : m_entries) {
        if (e.nameLength != length) continue;
        size_t i = 0;
        while (i < length && Lower(e.name[i]) == Lower(name[i])) ++i;
        if (i == length) {
            *out = e;
            return true;
        }
    }
    return false;
}

}  // namespace kxskin
