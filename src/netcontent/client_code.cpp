// The CRC-32 and the client code of client_code.h.
#include "netcontent/client_code.h"

#include <cstdio>

namespace kxnet {

uint32_t Crc32(const uint8_t* data, size_t size) {
    uint32_t crc = 0xFFFFFFFFu;
    for (size_t i = 0; i < size; ++i) {
        crc ^= data[i];
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

void DeriveClientCode(const uint8_t key[16], char code[10]) {
    char first[10];
    std::snprintf(first, sizeof(first), "%08lx", static_cast<unsigned long>(Crc32(key, 4)));
    const uint32_t c2 = Crc32(reinterpret_cast<const uint8_t*>(first), 8);
    std::snprintf(code, 10, "%08lx", static_cast<unsigned long>(c2));
    code[9] = 0;
}

}  // namespace kxnet
