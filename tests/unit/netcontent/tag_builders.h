// Builders of small ID3v2 tags, FLAC files and MP4 atoms for the tag readers' tests.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kxtest {

using Bytes = std::vector<uint8_t>;

inline Bytes Cat(std::initializer_list<Bytes> parts) {
    Bytes out;
    for (const Bytes& p : parts) out.insert(out.end(), p.begin(), p.end());
    return out;
}
inline Bytes Text(const std::string& s) { return Bytes(s.begin(), s.end()); }
inline Bytes Be32(uint32_t v) { return {uint8_t(v >> 24), uint8_t(v >> 16), uint8_t(v >> 8), uint8_t(v)}; }
inline Bytes Syncsafe(uint32_t v) {
    return {uint8_t((v >> 21) & 0x7F), uint8_t((v >> 14) & 0x7F), uint8_t((v >> 7) & 0x7F), uint8_t(v & 0x7F)};
}

// An APIC body: encoding, terminated MIME type, picture type, description, picture.
inline Bytes Apic(uint8_t encoding, const std::string& mime, uint8_t type, const Bytes& description,
                  const Bytes& data) {
    return Cat({{encoding}, Text(mime), {0}, {type}, description, data});
}
// The PIC body of version 2.2: a 3-letter image format instead of the MIME type.
inline Bytes Pic(uint8_t encoding, const std::string& format, uint8_t type, const Bytes& description,
                 const Bytes& data) {
    return Cat({{encoding}, Text(format), {type}, description, data});
}

// A frame of the given version; `format` is the second flag byte.
inline Bytes Frame(int major, const std::string& id, const Bytes& body, uint8_t format = 0) {
    if (major == 2) {
        const uint32_t n = uint32_t(body.size());
        return Cat({Text(id), {uint8_t(n >> 16), uint8_t(n >> 8), uint8_t(n)}, body});
    }
    const Bytes size = major == 4 ? Syncsafe(uint32_t(body.size())) : Be32(uint32_t(body.size()));
    return Cat({Text(id), size, {0, format}, body});
}

inline Bytes Id3(int major, uint8_t flags, const Bytes& body) {
    return Cat({Text("ID3"), {uint8_t(major), 0, flags}, Syncsafe(uint32_t(body.size())), body});
}

// ID3v2 unsynchronisation: a zero after every 0xFF.
inline Bytes Unsync(const Bytes& in) {
    Bytes out;
    for (uint8_t b : in) {
        out.push_back(b);
        if (b == 0xFF) out.push_back(0);
    }
    return out;
}

inline Bytes FlacBlock(uint8_t type, bool last, const Bytes& body) {
    const uint32_t n = uint32_t(body.size());
    return Cat({{uint8_t(type | (last ? 0x80 : 0))}, {uint8_t(n >> 16), uint8_t(n >> 8), uint8_t(n)}, body});
}
inline Bytes FlacPicture(uint32_t type, const Bytes& data) {
    return Cat({Be32(type), Be32(10), Text("image/jpeg"), Be32(0), Be32(1), Be32(1), Be32(24), Be32(0),
                Be32(uint32_t(data.size())), data});
}

inline Bytes Atom(const std::string& type, const Bytes& payload) {
    return Cat({Be32(uint32_t(payload.size() + 8)), Text(type), payload});
}

}  // namespace kxtest
