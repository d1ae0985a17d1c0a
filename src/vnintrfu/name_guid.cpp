#include "vnintrfu/name_guid.h"

#include <vector>

namespace {

std::uint32_t Rotl(std::uint32_t v, int n) { return (v << n) | (v >> (32 - n)); }

void Sha1Block(std::uint32_t h[5], const std::uint8_t* p) {
    std::uint32_t w[80];
    for (int i = 0; i < 16; ++i)
        w[i] = std::uint32_t(p[4 * i]) << 24 | std::uint32_t(p[4 * i + 1]) << 16 | std::uint32_t(p[4 * i + 2]) << 8 |
               p[4 * i + 3];
    for (int i = 16; i < 80; ++i) w[i] = Rotl(w[i - 3] ^ w[i - 8] ^ w[i - 14] ^ w[i - 16], 1);
    std::uint32_t a = h[0], b = h[1], c = h[2], d = h[3], e = h[4];
    for (int i = 0; i < 80; ++i) {
        std::uint32_t f, k;
        if (i < 20) {
            f = (b & c) | (~b & d);
            k = 0x5A827999;
        } else if (i < 40) {
            f = b ^ c ^ d;
            k = 0x6ED9EBA1;
        } else if (i < 60) {
            f = (b & c) | (b & d) | (c & d);
            k = 0x8F1BBCDC;
        } else {
            f = b ^ c ^ d;
            k = 0xCA62C1D6;
        }
        const std::uint32_t t = Rotl(a, 5) + f + e + k + w[i];
        e = d;
        d = c;
        c = Rotl(b, 30);
        b = a;
        a = t;
    }
    h[0] += a;
    h[1] += b;
    h[2] += c;
    h[3] += d;
    h[4] += e;
}

void PutBigEndian(std::uint8_t* p, std::uint64_t v, int bytes) {
    for (int i = bytes - 1; i >= 0; --i, v >>= 8) p[i] = static_cast<std::uint8_t>(v);
}

}  // namespace

std::array<std::uint8_t, 20> KxSha1(const std::uint8_t* data, std::size_t size) {
    std::uint32_t h[5] = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};
    std::size_t whole = size - size % 64;
    for (std::size_t i = 0; i < whole; i += 64) Sha1Block(h, data + i);
    // The tail, the 0x80 mark and the length in bits fill one or two last blocks.
    std::uint8_t tail[128] = {};
    const std::size_t rest = size - whole;
    for (std::size_t i = 0; i < rest; ++i) tail[i] = data[whole + i];
    tail[rest] = 0x80;
    const std::size_t tailSize = rest < 56 ? 64 : 128;
    PutBigEndian(tail + tailSize - 8, static_cast<std::uint64_t>(size) * 8, 8);
    for (std::size_t i = 0; i < tailSize; i += 64) Sha1Block(h, tail + i);
    std::array<std::uint8_t, 20> digest{};
    for (int i = 0; i < 5; ++i) PutBigEndian(&digest[4 * i], h[i], 4);
    return digest;
}

GUID KxNameBasedGuid(const GUID& ns, const std::wstring& name) {
    std::vector<std::uint8_t> bytes(16);
    PutBigEndian(&bytes[0], ns.Data1, 4);
    PutBigEndian(&bytes[4], ns.Data2, 2);
    PutBigEndian(&bytes[6], ns.Data3, 2);
    for (int i = 0; i < 8; ++i) bytes[8 + i] = ns.Data4[i];
    for (wchar_t ch : name) {
        std::uint32_t c = static_cast<std::uint32_t>(ch);
        if (c > 0xFFFF) {  // a wide character wider than 16 bits becomes its surrogate pair
            c -= 0x10000;
            const std::uint32_t high = 0xD800 + (c >> 10), low = 0xDC00 + (c & 0x3FF);
            bytes.insert(bytes.end(), {std::uint8_t(high), std::uint8_t(high >> 8), std::uint8_t(low),
                                       std::uint8_t(low >> 8)});
        } else {
            bytes.insert(bytes.end(), {std::uint8_t(c), std::uint8_t(c >> 8)});
        }
    }
    const std::array<std::uint8_t, 20> d = KxSha1(bytes.data(), bytes.size());
    GUID g;
    g.Data1 = std::uint32_t(d[0]) << 24 | std::uint32_t(d[1]) << 16 | std::uint32_t(d[2]) << 8 | d[3];
    g.Data2 = static_cast<std::uint16_t>(d[4] << 8 | d[5]);
    g.Data3 = static_cast<std::uint16_t>(((d[6] & 0x0F) | 0x50) << 8 | d[7]);  // version 5
    g.Data4[0] = static_cast<std::uint8_t>((d[8] & 0x3F) | 0x80);               // RFC 4122 variant
    for (int i = 1; i < 8; ++i) g.Data4[i] = d[8 + i];
    return g;
}
