// Random access to the bytes of a track file, so that the tag readers fetch only the headers they
// walk and the one block that holds the picture, never the whole file. A memory source serves the
// tests and the fuzz targets; the content manager reads the file itself through the platform.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kxnet {

class ByteSource {
public:
    virtual ~ByteSource() = default;
    // Total length of the file in bytes.
    virtual uint64_t Size() const = 0;
    // Exactly `count` bytes from `offset` into `out`, or false (out of range, read error).
    virtual bool Read(uint64_t offset, size_t count, uint8_t* out) const = 0;
};

class MemorySource : public ByteSource {
public:
    MemorySource(const uint8_t* data, size_t size) : m_data(data), m_size(size) {}
    uint64_t Size() const override { return m_size; }
    bool Read(uint64_t offset, size_t count, uint8_t* out) const override;

private:
    const uint8_t* m_data;
    size_t m_size;
};

// `count` bytes from `offset` into a vector, with the range checked against the source first so
// that a damaged size never becomes a huge allocation.
bool ReadBlock(const ByteSource& source, uint64_t offset, uint64_t count, std::vector<uint8_t>* out);

}  // namespace kxnet
