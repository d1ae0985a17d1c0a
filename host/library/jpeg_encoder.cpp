#include "host/library/jpeg_encoder.h"

#include <cmath>
#include <cstdint>

namespace kxhost {

namespace {

const BYTE kZigzag[64] = {0,  1,  8,  16, 9,  2,  3,  10, 17, 24, 32, 25, 18, 11, 4,  5,  12, 19, 26, 33, 40, 48,
                          41, 34, 27, 20, 13, 6,  7,  14, 21, 28, 35, 42, 49, 56, 57, 50, 43, 36, 29, 22, 15, 23,
                          30, 37, 44, 51, 58, 59, 52, 45, 38, 31, 39, 46, 53, 60, 61, 54, 47, 55, 62, 63};

const BYTE kLumaQuant[64] = {16, 11, 10, 16, 24,  40,  51,  61,  12, 12, 14, 19, 26,  58,  60,  55,
                             14, 13, 16, 24, 40,  57,  69,  56,  14, 17, 22, 29, 51,  87,  80,  62,
                             18, 22, 37, 56, 68,  109, 103, 77,  24, 35, 55, 64, 81,  104, 113, 92,
                             49, 64, 78, 87, 103, 121, 120, 101, 72, 92, 95, 98, 112, 100, 103, 99};
const BYTE kChromaQuant[64] = {17, 18, 24, 47, 99, 99, 99, 99, 18, 21, 26, 66, 99, 99, 99, 99,
                               24, 26, 56, 99, 99, 99, 99, 99, 47, 66, 99, 99, 99, 99, 99, 99,
                               99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99,
                               99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99};

// Code counts per length 1..16, then the symbols in code order.
struct HuffmanTable {
    BYTE counts[16];
    std::vector<BYTE> symbols;
};

const HuffmanTable& Table(bool ac, bool chroma) {
    static const HuffmanTable dcLuma = {{0, 1, 5, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0},
                                       {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}};
    static const HuffmanTable dcChroma = {{0, 3, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0},
                                         {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}};
    static const HuffmanTable acLuma = {
        {0, 2, 1, 3, 3, 2, 4, 3, 5, 5, 4, 4, 0, 0, 1, 0x7d},
        {0x01, 0x02, 0x03, 0x00, 0x04, 0x11, 0x05, 0x12, 0x21, 0x31, 0x41, 0x06, 0x13, 0x51, 0x61, 0x07, 0x22,
         0x71, 0x14, 0x32, 0x81, 0x91, 0xa1, 0x08, 0x23, 0x42, 0xb1, 0xc1, 0x15, 0x52, 0xd1, 0xf0, 0x24, 0x33,
         0x62, 0x72, 0x82, 0x09, 0x0a, 0x16, 0x17, 0x18, 0x19, 0x1a, 0x25, 0x26, 0x27, 0x28, 0x29, 0x2a, 0x34,
         0x35, 0x36, 0x37, 0x38, 0x39, 0x3a, 0x43, 0x44, 0x45, 0x46, 0x47, 0x48, 0x49, 0x4a, 0x53, 0x54, 0x55,
         0x56, 0x57, 0x58, 0x59, 0x5a, 0x63, 0x64, 0x65, 0x66, 0x67, 0x68, 0x69, 0x6a, 0x73, 0x74, 0x75, 0x76,
         0x77, 0x78, 0x79, 0x7a, 0x83, 0x84, 0x85, 0x86, 0x87, 0x88, 0x89, 0x8a, 0x92, 0x93, 0x94, 0x95, 0x96,
         0x97, 0x98, 0x99, 0x9a, 0xa2, 0xa3, 0xa4, 0xa5, 0xa6, 0xa7, 0xa8, 0xa9, 0xaa, 0xb2, 0xb3, 0xb4, 0xb5,
         0xb6, 0xb7, 0xb8, 0xb9, 0xba, 0xc2, 0xc3, 0xc4, 0xc5, 0xc6, 0xc7, 0xc8, 0xc9, 0xca, 0xd2, 0xd3, 0xd4,
         0xd5, 0xd6, 0xd7, 0xd8, 0xd9, 0xda, 0xe1, 0xe2, 0xe3, 0xe4, 0xe5, 0xe6, 0xe7, 0xe8, 0xe9, 0xea, 0xf1,
         0xf2, 0xf3, 0xf4, 0xf5, 0xf6, 0xf7, 0xf8, 0xf9, 0xfa}};
    static const HuffmanTable acChroma = {
        {0, 2, 1, 2, 4, 4, 3, 4, 7, 5, 4, 4, 0, 1, 2, 0x77},
        {0x00, 0x01, 0x02, 0x03, 0x11, 0x04, 0x05, 0x21, 0x31, 0x06, 0x12, 0x41, 0x51, 0x07, 0x61, 0x71, 0x13,
         0x22, 0x32, 0x81, 0x08, 0x14, 0x42, 0x91, 0xa1, 0xb1, 0xc1, 0x09, 0x23, 0x33, 0x52, 0xf0, 0x15, 0x62,
         0x72, 0xd1, 0x0a, 0x16, 0x24, 0x34, 0xe1, 0x25, 0xf1, 0x17, 0x18, 0x19, 0x1a, 0x26, 0x27, 0x28, 0x29,
         0x2a, 0x35, 0x36, 0x37, 0x38, 0x39, 0x3a, 0x43, 0x44, 0x45, 0x46, 0x47, 0x48, 0x49, 0x4a, 0x53, 0x54,
         0x55, 0x56, 0x57, 0x58, 0x59, 0x5a, 0x63, 0x64, 0x65, 0x66, 0x67, 0x68, 0x69, 0x6a, 0x73, 0x74, 0x75,
         0x76, 0x77, 0x78, 0x79, 0x7a, 0x82, 0x83, 0x84, 0x85, 0x86, 0x87, 0x88, 0x89, 0x8a, 0x92, 0x93, 0x94,
         0x95, 0x96, 0x97, 0x98, 0x99, 0x9a, 0xa2, 0xa3, 0xa4, 0xa5, 0xa6, 0xa7, 0xa8, 0xa9, 0xaa, 0xb2, 0xb3,
         0xb4, 0xb5, 0xb6, 0xb7, 0xb8, 0xb9, 0xba, 0xc2, 0xc3, 0xc4, 0xc5, 0xc6, 0xc7, 0xc8, 0xc9, 0xca, 0xd2,
         0xd3, 0xd4, 0xd5, 0xd6, 0xd7, 0xd8, 0xd9, 0xda, 0xe2, 0xe3, 0xe4, 0xe5, 0xe6, 0xe7, 0xe8, 0xe9, 0xea,
         0xf2, 0xf3, 0xf4, 0xf5, 0xf6, 0xf7, 0xf8, 0xf9, 0xfa}};
    return ac ? (chroma ? acChroma : acLuma) : (chroma ? dcChroma : dcLuma);
}

// Canonical codes from a table: code and length per symbol.
struct HuffmanCodes {
    uint16_t code[256] = {};
    BYTE length[256] = {};
    explicit HuffmanCodes(const HuffmanTable& table) {
        uint16_t code = 0;
        size_t k = 0;
        for (int len = 1; len <= 16; ++len) {
            for (int i = 0; i < table.counts[len - 1]; ++i, ++k) {
                this->code[table.symbols[k]] = code++;
                length[table.symbols[k]] = static_cast<BYTE>(len);
            }
            code = static_cast<uint16_t>(code << 1);
        }
    }
};

class BitWriter {
public:
    explicit BitWriter(std::vector<BYTE>& out) : out_(out) {}
    void Put(uint32_t bits, int count) {
        for (int i = count - 1; i >= 0; --i) {
            acc_ = static_cast<BYTE>((acc_ << 1) | ((bits >> i) & 1));
            if (++used_ == 8) Flush();
        }
    }
    void Finish() {  // pads the last byte with ones
        while (used_ != 0) Put(1, 1);
    }

private:
    void Flush() {
        out_.push_back(acc_);
        if (acc_ == 0xFF) out_.push_back(0);  // byte stuffing
        acc_ = 0;
        used_ = 0;
    }
    std::vector<BYTE>& out_;
    BYTE acc_ = 0;
    int used_ = 0;
};

void Put16(std::vector<BYTE>& out, uint32_t v) {
    out.push_back(static_cast<BYTE>(v >> 8));
    out.push_back(static_cast<BYTE>(v));
}

// Bits needed for a magnitude, and the value's bits as JPEG writes them (negatives as v - 1).
int Category(int v) {
    int a = v < 0 ? -v : v, n = 0;
    while (a) {
        ++n;
        a >>= 1;
    }
    return n;
}
uint32_t MagnitudeBits(int v, int category) {
    return static_cast<uint32_t>(v < 0 ? v + (1 << category) - 1 : v);
}

}  // namespace

const std::vector<BYTE>& JpegHuffmanSymbols(bool ac, bool chrominance) { return Table(ac, chrominance).symbols; }

std::vector<BYTE> EncodeJpeg(LONG width, LONG height, const std::vector<DWORD>& pixels, int quality) {
    std::vector<BYTE> out;
    if (width <= 0 || height <= 0 || width > 65535 || height > 65535 ||
        pixels.size() < static_cast<size_t>(width) * height)
        return out;
    quality = quality < 1 ? 1 : (quality > 100 ? 100 : quality);
    const int scale = quality < 50 ? 5000 / quality : 200 - 2 * quality;
    BYTE quant[2][64];
    for (int i = 0; i < 64; ++i) {
        const BYTE* base[2] = {kLumaQuant, kChromaQuant};
        for (int t = 0; t < 2; ++t) {
            int q = (base[t][i] * scale + 50) / 100;
            quant[t][i] = static_cast<BYTE>(q < 1 ? 1 : (q > 255 ? 255 : q));
        }
    }

    out = {0xFF, 0xD8, 0xFF, 0xE0, 0, 16, 'J', 'F', 'I', 'F', 0, 1, 1, 0, 0, 1, 0, 1, 0, 0};
    for (int t = 0; t < 2; ++t) {  // DQT, zigzag order
        out.insert(out.end(), {0xFF, 0xDB, 0, 67, static_cast<BYTE>(t)});
        for (int i = 0; i < 64; ++i) out.push_back(quant[t][kZigzag[i]]);
    }
    out.insert(out.end(), {0xFF, 0xC0, 0, 17, 8});  // SOF0
    Put16(out, static_cast<uint32_t>(height));
    Put16(out, static_cast<uint32_t>(width));
    out.insert(out.end(), {3, 1, 0x11, 0, 2, 0x11, 1, 3, 0x11, 1});
    const BYTE classes[4][2] = {{0x00, 0}, {0x10, 1}, {0x01, 2}, {0x11, 3}};  // DC0, AC0, DC1, AC1
    for (const auto& c : classes) {
        const HuffmanTable& table = Table((c[0] & 0x10) != 0, (c[0] & 0x01) != 0);
        out.insert(out.end(), {0xFF, 0xC4});
        Put16(out, static_cast<uint32_t>(2 + 1 + 16 + table.symbols.size()));
        out.push_back(c[0]);
        out.insert(out.end(), table.counts, table.counts + 16);
        out.insert(out.end(), table.symbols.begin(), table.symbols.end());
    }
    out.insert(out.end(), {0xFF, 0xDA, 0, 12, 3, 1, 0x00, 2, 0x11, 3, 0x11, 0, 63, 0});  // SOS

    const HuffmanCodes dc[2] = {HuffmanCodes(Table(false, false)), HuffmanCodes(Table(false, true))};
    const HuffmanCodes ac[2] = {HuffmanCodes(Table(true, false)), HuffmanCodes(Table(true, true))};
    double cosine[8][8];
    for (int x = 0; x < 8; ++x)
        for (int u = 0; u < 8; ++u) cosine[x][u] = std::cos((2 * x + 1) * u * 3.14159265358979323846 / 16);

    BitWriter bits(out);
    int previousDc[3] = {0, 0, 0};
    for (LONG by = 0; by < height; by += 8) {
        for (LONG bx = 0; bx < width; bx += 8) {
            double block[3][8][8];
            for (int y = 0; y < 8; ++y) {
                for (int x = 0; x < 8; ++x) {
                    const LONG px = bx + x < width ? bx + x : width - 1;  // edges repeat
                    const LONG py = by + y < height ? by + y : height - 1;
                    const DWORD p = pixels[static_cast<size_t>(py) * width + px];
                    const double r = (p >> 16) & 0xFF, g = (p >> 8) & 0xFF, b = p & 0xFF;
                    block[0][y][x] = 0.299 * r + 0.587 * g + 0.114 * b - 128;
                    block[1][y][x] = -0.168736 * r - 0.331264 * g + 0.5 * b;
                    block[2][y][x] = 0.5 * r - 0.418688 * g - 0.081312 * b;
                }
            }
            for (int c = 0; c < 3; ++c) {
                const int t = c == 0 ? 0 : 1;
                // separable DCT: rows, then columns
                double rows[8][8];
                for (int y = 0; y < 8; ++y)
                    for (int u = 0; u < 8; ++u) {
                        double sum = 0;
                        for (int x = 0; x < 8; ++x) sum += block[c][y][x] * cosine[x][u];
                        rows[y][u] = sum;
                    }
                int coefficients[64];
                for (int v = 0; v < 8; ++v) {
                    for (int u = 0; u < 8; ++u) {
                        double sum = 0;
                        for (int y = 0; y < 8; ++y) sum += rows[y][u] * cosine[y][v];
                        const double cu = u == 0 ? std::sqrt(0.5) : 1, cv = v == 0 ? std::sqrt(0.5) : 1;
                        const double value = 0.25 * cu * cv * sum / quant[t][v * 8 + u];
                        coefficients[v * 8 + u] = static_cast<int>(std::lround(value));
                    }
                }
                const int diff = coefficients[0] - previousDc[c];
                previousDc[c] = coefficients[0];
                const int dcCategory = Category(diff);
                bits.Put(dc[t].code[dcCategory], dc[t].length[dcCategory]);
                bits.Put(MagnitudeBits(diff, dcCategory), dcCategory);
                int run = 0;
                for (int i = 1; i < 64; ++i) {
                    const int v = coefficients[kZigzag[i]];
                    if (v == 0) {
                        ++run;
                        continue;
                    }
                    while (run > 15) {
                        bits.Put(ac[t].code[0xF0], ac[t].length[0xF0]);
                        run -= 16;
                    }
                    const int category = Category(v);
                    const int symbol = (run << 4) | category;
                    bits.Put(ac[t].code[symbol], ac[t].length[symbol]);
                    bits.Put(MagnitudeBits(v, category), category);
                    run = 0;
                }
                if (run > 0) bits.Put(ac[t].code[0x00], ac[t].length[0x00]);
            }
        }
    }
    bits.Finish();
    out.insert(out.end(), {0xFF, 0xD9});
    return out;
}

}  // namespace kxhost
