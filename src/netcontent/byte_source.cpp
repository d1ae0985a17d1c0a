// The memory source and the checked block read of byte_source.h.
#include "netcontent/byte_source.h"

#include <cstring>

namespace kxnet {

bool MemorySource::Read(uint64_t offset, size_t count, uint8_t* out) const {
    if (offset > m_size || count > m_size - offset) return false;
    if (count != 0) std::memcpy(out, m_data + offset, count);
    return true;
}

bool ReadBlock(const ByteSource& source, uint64_t offset, uint64_t count, std::vector<uint8_t>* out) {
    const uint64_t size = source.Size();
    if (offset > size || count > size - offset || count > SIZE_MAX) return false;
    out->resize(static_cast<size_t>(count));
    return count == 0 || source.Read(offset, static_cast<size_t>(count), out->data());
}

}  // namespace kxnet
