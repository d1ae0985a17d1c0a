// The client access data of the content manager's start record: the 16-byte client key cut from a
// client access string, and the client code derived from the key by two CRC-32 steps. The tag
// dialog derives it, the component checks it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kxnet {

// CRC-32 in its standard reflected form: polynomial 0xEDB88320, start 0xFFFFFFFF, final complement.
uint32_t Crc32(const uint8_t* data, size_t size);

// The client code of a 16-byte key: c1 = CRC-32 of the key's first 4 bytes, printed as 8
// lower-case hexadecimal digits; c2 = CRC-32 of those 8 characters, printed the same way into
// `code` with its end mark (9 bytes; the record's place takes 10).
void DeriveClientCode(const uint8_t key[16], char code[10]);

}  // namespace kxnet
