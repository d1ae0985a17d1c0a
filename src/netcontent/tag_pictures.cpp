// The three tag readers of tag_pictures.h. Each walks its container's headers through the byte
// source and reads one block at a time; sizes are 64-bit while they are compared, so that no sum
// of damaged values can wrap.
#include "netcontent/tag_pictures.h"

#include <cstring>

namespace kxnet {
namespace {

constexpr uint8_t kFrontCover = 3;
// A whole ID3v2 tag above this is taken as damaged rather than read (the format allows 256 MB).
constexpr uint32_t kMaxId3TagBytes = kMaxPictureBytes + 1024u * 1024u;

uint32_t Be32(const uint8_t* p) {
    return (uint32_t(p[0]) << 24) | (uint32_t(p[1]) << 16) | (uint32_t(p[2]) << 8) | p[3];
}
uint32_t Be24(const uint8_t* p) { return (uint32_t(p[0]) << 16) | (uint32_t(p[1]) << 8) | p[2]; }
uint64_t Be64(const uint8_t* p) { return (uint64_t(Be32(p)) << 32) | Be32(p + 4); }

// Four 7-bit bytes, high bit clear in each.
bool Syncsafe(const uint8_t* p, uint32_t* value) {
    if ((p[0] | p[1] | p[2] | p[3]) & 0x80) return false;
    *value = (uint32_t(p[0]) << 21) | (uint32_t(p[1]) << 14) | (uint32_t(p[2]) << 7) | p[3];
    return true;
}

// Undoes ID3v2 unsynchronisation: every 0xFF 0x00 pair stands for 0xFF.
void Resynchronise(std::vector<uint8_t>* bytes) {
    std::vector<uint8_t>& b = *bytes;
    size_t w = 0;
    for (size_t r = 0; r < b.size(); ++r) {
        b[w++] = b[r];
        if (b[r] == 0xFF && r + 1 < b.size() && b[r + 1] == 0x00) ++r;
    }
    b.resize(w);
}

// The picture chosen so far: the first front cover beats the first picture of another type.
class Choice {
public:
    void Offer(uint32_t type, const uint8_t* data, size_t size) {
        if (size == 0 || size > kMaxPictureBytes) return;
        if (m_found && (m_front || type != kFrontCover)) return;
        m_bytes.assign(data, data + size);
        m_found = true;
        m_front = type == kFrontCover;
    }
    bool Found() const { return m_found; }
    bool Front() const { return m_front; }
    bool Take(std::vector<uint8_t>* out) {
        if (m_found) out->swap(m_bytes);
        return m_found;
    }

private:
    bool m_found = false;
    bool m_front = false;
    std::vector<uint8_t> m_bytes;
};

// ---- ID3v2 -------------------------------------------------------------------------------------

constexpr size_t kNoText = static_cast<size_t>(-1);

// The position after a terminated text of the given encoding that starts at `pos`: one zero byte
// for ISO-8859-1 and UTF-8 (0 and 3), a zero 16-bit unit for UTF-16 (1 and 2).
size_t SkipText(const uint8_t* p, size_t pos, size_t end, uint8_t encoding) {
    if (encoding == 1 || encoding == 2) {
        for (; pos + 1 < end; pos += 2)
            if (p[pos] == 0 && p[pos + 1] == 0) return pos + 2;
        return kNoText;
    }
    for (; pos < end; ++pos)
        if (p[pos] == 0) return pos + 1;
    return kNoText;
}

// An APIC frame (PIC in version 2.2, where the MIME type is a 3-letter image format). A linked
// picture (MIME type or format "-->") names a file elsewhere and is not taken.
void ParsePictureFrame(const uint8_t* p, size_t n, bool v22, Choice* choice) {
    if (n < 1 || p[0] > 3) return;
    const uint8_t encoding = p[0];
    size_t pos = 1;
    if (v22) {
        if (n < 4 || std::memcmp(p + 1, "-->", 3) == 0) return;
        pos = 4;
    } else {
        pos = SkipText(p, 1, n, 0);
        if (pos == kNoText || (pos == 5 && std::memcmp(p + 1, "-->", 3) == 0)) return;
    }
    if (pos >= n) return;
    const uint8_t type = p[pos++];
    pos = SkipText(p, pos, n, encoding);
    if (pos == kNoText) return;
    choice->Offer(type, p + pos, n - pos);
}

bool ParseId3v2Tag(const uint8_t* header, std::vector<uint8_t>* body, Choice* choice) {
    const uint8_t major = header[3];
    const uint8_t flags = header[5];
    const bool tagUnsync = (flags & 0x80) != 0;
    // Before 2.4 the unsynchronisation covers the whole tag, extended header included.
    if (tagUnsync && major < 4) Resynchronise(body);
    const std::vector<uint8_t>& b = *body;
    size_t pos = 0;
    if (major >= 3 && (flags & 0x40)) {
        if (b.size() < 4) return false;
        uint64_t extended = 0;
        if (major == 3) {
            extended = uint64_t(Be32(b.data())) + 4;  // the size leaves out its own four bytes
        } else {
            uint32_t s = 0;
            if (!Syncsafe(b.data(), &s)) return false;
            extended = s;
        }
        if (extended < 6 || extended > b.size()) return false;
        pos = static_cast<size_t>(extended);
    }
    const size_t headerLength = major == 2 ? 6 : 10;
    while (b.size() - pos >= headerLength) {
        const uint8_t* f = b.data() + pos;
        if (f[0] == 0) break;  // padding
        uint32_t size = 0;
        uint8_t format = 0;
        if (major == 2) {
            size = Be24(f + 3);
        } else if (major == 3) {
            size = Be32(f + 4);
            format = f[9];
        } else {
            // Some writers put plain sizes into 2.4 frames; a size that is no syncsafe number
            // can only be one of those.
            if (!Syncsafe(f + 4, &size)) size = Be32(f + 4);
            format = f[9];
        }
        pos += headerLength;
        if (size > b.size() - pos) break;  // a frame past the tag's end: the rest is damaged
        const bool picture = major == 2 ? std::memcmp(f, "PIC", 3) == 0 : std::memcmp(f, "APIC", 4) == 0;
        if (picture) {
            const uint8_t* d = b.data() + pos;
            size_t n = size;
            std::vector<uint8_t> frame;
            bool usable = true;
            if (major == 3) {
                usable = (format & 0xC0) == 0;  // compressed or encrypted
                if (usable && (format & 0x20)) {  // group identifier
                    usable = n >= 1;
                    if (usable) ++d, --n;
                }
            } else if (major == 4) {
                usable = (format & 0x0C) == 0;  // compressed or encrypted
                if (usable && (format & 0x40)) {  // group identifier
                    usable = n >= 1;
                    if (usable) ++d, --n;
                }
                if (usable && (format & 0x01)) {  // data length indicator
                    usable = n >= 4;
                    if (usable) d += 4, n -= 4;
                }
                if (usable && ((format & 0x02) || tagUnsync)) {
                    frame.assign(d, d + n);
                    Resynchronise(&frame);
                    d = frame.data();
                    n = frame.size();
                }
            }
            if (usable) ParsePictureFrame(d, n, major == 2, choice);
            if (choice->Front()) break;
        }
        pos += size;
    }
    return choice->Found();
}

// The ID3v2 header at the file's start: version 2 to 4, syncsafe size. The total length of the
// tag (header, body, footer) goes to `length`.
bool ReadId3v2Header(const ByteSource& file, uint8_t header[10], uint64_t* length) {
    if (!file.Read(0, 10, header) || std::memcmp(header, "ID3", 3) != 0) return false;
    if (header[3] < 2 || header[3] > 4 || header[4] == 0xFF) return false;
    uint32_t size = 0;
    if (!Syncsafe(header + 6, &size)) return false;
    *length = 10 + uint64_t(size) + ((header[3] == 4 && (header[5] & 0x10)) ? 10 : 0);
    return true;
}

// ---- FLAC --------------------------------------------------------------------------------------

// A PICTURE block: type, MIME type, description, four numbers of the picture, then its data.
void ParseFlacPicture(const std::vector<uint8_t>& b, Choice* choice) {
    uint64_t pos = 0;
    auto word = [&](uint32_t* v) {
        if (b.size() - pos < 4) return false;
        *v = Be32(b.data() + pos);
        pos += 4;
        return true;
    };
    uint32_t type = 0, mimeLength = 0, descriptionLength = 0, dataLength = 0;
    if (!word(&type) || !word(&mimeLength) || mimeLength > b.size() - pos) return;
    pos += mimeLength;
    if (!word(&descriptionLength) || descriptionLength > b.size() - pos) return;
    pos += descriptionLength;
    if (b.size() - pos < 16) return;  // width, height, depth, colours
    pos += 16;
    if (!word(&dataLength) || dataLength > b.size() - pos) return;
    choice->Offer(type, b.data() + pos, dataLength);
}

bool ReadFlacPictureAt(const ByteSource& file, uint64_t pos, Choice* choice) {
    uint8_t head[4];
    if (!file.Read(pos, 4, head) || std::memcmp(head, "fLaC", 4) != 0) return false;
    pos += 4;
    for (;;) {
        if (!file.Read(pos, 4, head)) break;
        const bool last = (head[0] & 0x80) != 0;
        const uint8_t type = head[0] & 0x7F;
        const uint32_t length = Be24(head + 1);
        pos += 4;
        if (type == 127) break;  // invalid block type
        if (type == 6) {
            std::vector<uint8_t> block;
            if (!ReadBlock(file, pos, length, &block)) break;
            ParseFlacPicture(block, choice);
            if (choice->Front()) break;
        }
        pos += length;
        if (last) break;
    }
    return choice->Found();
}

// ---- MP4 ---------------------------------------------------------------------------------------

struct Atom {
    char type[4];
    uint64_t payload;  // first byte after the header
    uint64_t end;      // first byte after the atom
};

// The atom at `pos`, which must end by `limit` (its parent's end). Size 1: a 64-bit size follows
// the type; size 0: the atom runs to the end of its parent.
bool ReadAtom(const ByteSource& file, uint64_t pos, uint64_t limit, Atom* atom) {
    if (pos > limit || limit - pos < 8) return false;
    uint8_t h[16];
    if (!file.Read(pos, 8, h)) return false;
    uint64_t size = Be32(h);
    uint64_t header = 8;
    if (size == 1) {
        if (limit - pos < 16 || !file.Read(pos + 8, 8, h + 8)) return false;
        size = Be64(h + 8);
        header = 16;
    } else if (size == 0) {
        size = limit - pos;
    }
    if (size < header || size > limit - pos) return false;
    std::memcpy(atom->type, h + 4, 4);
    atom->payload = pos + header;
    atom->end = pos + size;
    return true;
}

bool FindChild(const ByteSource& file, uint64_t begin, uint64_t end, const char* type, Atom* out) {
    for (uint64_t pos = begin; pos < end;) {
        Atom atom;
        if (!ReadAtom(file, pos, end, &atom)) return false;
        if (std::memcmp(atom.type, type, 4) == 0) {
            *out = atom;
            return true;
        }
        pos = atom.end;
    }
    return false;
}

}  // namespace

bool ReadId3v2Picture(const ByteSource& file, std::vector<uint8_t>* picture) {
    uint8_t header[10];
    uint64_t length = 0;
    if (!ReadId3v2Header(file, header, &length)) return false;
    // Version 2.2 knows a compressed tag with no defined compression: nothing to read there.
    if (header[3] == 2 && (header[5] & 0x40)) return false;
    uint32_t size = 0;
    Syncsafe(header + 6, &size);
    if (size > kMaxId3TagBytes) return false;
    std::vector<uint8_t> body;
    if (!ReadBlock(file, 10, size, &body)) return false;
    Choice choice;
    ParseId3v2Tag(header, &body, &choice);
    return choice.Take(picture);
}

bool ReadFlacPicture(const ByteSource& file, std::vector<uint8_t>* picture) {
    uint8_t header[10];
    uint64_t start = 0;
    if (!ReadId3v2Header(file, header, &start)) start = 0;
    Choice choice;
    ReadFlacPictureAt(file, start, &choice);
    return choice.Take(picture);
}

bool ReadMp4Cover(const ByteSource& file, std::vector<uint8_t>* picture) {
    Atom moov, udta, meta, ilst, covr;
    if (!FindChild(file, 0, file.Size(), "moov", &moov) ||
        !FindChild(file, moov.payload, moov.end, "udta", &udta) ||
        !FindChild(file, udta.payload, udta.end, "meta", &meta))
        return false;
    // meta is a full atom (version and flags before its children) in MP4 files, a plain one in
    // QuickTime files; the plain form starts at once with its handler atom.
    uint64_t children = meta.payload;
    uint8_t peek[8];
    if (meta.end - meta.payload >= 8 && file.Read(meta.payload, 8, peek) && std::memcmp(peek + 4, "hdlr", 4) != 0)
        children += 4;
    if (!FindChild(file, children, meta.end, "ilst", &ilst) || !FindChild(file, ilst.payload, ilst.end, "covr", &covr))
        return false;
    // covr holds one data atom per picture: type indicator and locale, then the picture.
    Choice choice;
    for (uint64_t pos = covr.payload; pos < covr.end && !choice.Found();) {
        Atom data;
        if (!ReadAtom(file, pos, covr.end, &data)) break;
        if (std::memcmp(data.type, "data", 4) == 0 && data.end - data.payload > 8 &&
            data.end - data.payload - 8 <= kMaxPictureBytes) {
            std::vector<uint8_t> bytes;
            if (ReadBlock(file, data.payload + 8, data.end - data.payload - 8, &bytes))
                choice.Offer(kFrontCover, bytes.data(), bytes.size());
        }
        pos = data.end;
    }
    return choice.Take(picture);
}

bool ReadEmbeddedPicture(const ByteSource& file, std::vector<uint8_t>* picture) {
    uint8_t head[8];
    if (!file.Read(0, 8, head)) return false;
    if (std::memcmp(head, "ID3", 3) == 0) return ReadId3v2Picture(file, picture) || ReadFlacPicture(file, picture);
    if (std::memcmp(head, "fLaC", 4) == 0) return ReadFlacPicture(file, picture);
    if (std::memcmp(head + 4, "ftyp", 4) == 0) return ReadMp4Cover(file, picture);
    return false;
}

}  // namespace kxnet
