// Reads the skin package ComRcRes.bff: a ZIP archive whose entries are stored (not compressed).
// The reader works on the package's bytes in memory and hands out views into them; it trusts
// nothing in the archive: every offset and size is checked against the bytes it has, and an entry
// that is compressed, encrypted, damaged or out of bounds counts as missing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kxskin {

// One usable entry: its name (not terminated) and its bytes, both inside the package's buffer.
struct PackageEntry {
    const char* name;
    size_t nameLength;
    const uint8_t* data;
    size_t size;
};

class SkinPackage {
public:
    // Parses the archive's directory. False, with no entries, when the bytes are no archive. The
    // bytes must outlive the package object.
    bool Open(const uint8_t* bytes, size_t size);

    // The entry called `name` (an 8-bit, null-terminated file name, compared without regard to
    // ASCII case as the platform's file names are), or false when there is none usable.
    bool Find(const char* name, PackageEntry* out) const;

    size_t EntryCount() const { return m_entries.size(); }
    const PackageEntry& Entry(size_t i) const { return m_entries[i]; }

private:
    std::vector<PackageEntry> m_entries;
};

// The CRC-32 of the archive format (polynomial 0xEDB88320), as stored in every entry.
uint32_t ZipCrc32(const uint8_t* data, size_t size);

}  // namespace kxskin
