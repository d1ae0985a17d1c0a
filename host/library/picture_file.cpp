#include "host/library/picture_file.h"

#include <filesystem>
#include <fstream>

namespace kxhost {

std::vector<DWORD> SamplePixels(LONG width, LONG height, uint32_t seed) {
    std::vector<DWORD> pixels(static_cast<size_t>(width) * height);
    const uint32_t r0 = (seed * 97u) & 0xFF, g0 = (seed * 57u + 80u) & 0xFF, b0 = (seed * 23u + 160u) & 0xFF;
    for (LONG y = 0; y < height; ++y) {
        for (LONG x = 0; x < width; ++x) {
            const uint32_t t = static_cast<uint32_t>((x + y) * 255 / (width + height));
            uint32_t r = (r0 + t) & 0xFF, g = (g0 + t / 2) & 0xFF, b = (b0 + 255 - t) & 0xFF;
            const bool frame = x < 2 || y < 2 || x >= width - 2 || y >= height - 2;
            const bool corner = x < width / 4 && y < height / 4;  // marks the top left
            if (frame) r = g = b = 0x20;
            else if (corner) r = g = b = 0xF0;
            pixels[static_cast<size_t>(y) * width + x] = 0xFF000000u | (r << 16) | (g << 8) | b;
        }
    }
    return pixels;
}

namespace {

void Put16(std::vector<BYTE>& out, uint32_t v) {
    out.push_back(static_cast<BYTE>(v));
    out.push_back(static_cast<BYTE>(v >> 8));
}
void Put32(std::vector<BYTE>& out, uint32_t v) {
    Put16(out, v & 0xFFFF);
    Put16(out, v >> 16);
}

}  // namespace

std::vector<BYTE> EncodeBmp(LONG width, LONG height, const std::vector<DWORD>& pixels) {
    const uint32_t stride = (static_cast<uint32_t>(width) * 3 + 3) & ~3u;
    const uint32_t imageSize = stride * static_cast<uint32_t>(height);
    std::vector<BYTE> out;
    out.reserve(54 + imageSize);
    out.push_back('B');
    out.push_back('M');
    Put32(out, 54 + imageSize);
    Put32(out, 0);
    Put32(out, 54);
    Put32(out, 40);  // BITMAPINFOHEADER
    Put32(out, static_cast<uint32_t>(width));
    Put32(out, static_cast<uint32_t>(height));  // bottom-up rows
    Put16(out, 1);
    Put16(out, 24);
    Put32(out, 0);  // BI_RGB
    Put32(out, imageSize);
    Put32(out, 2835);  // 72 dpi
    Put32(out, 2835);
    Put32(out, 0);
    Put32(out, 0);
    for (LONG y = height - 1; y >= 0; --y) {
        const size_t start = out.size();
        for (LONG x = 0; x < width; ++x) {
            const DWORD p = pixels[static_cast<size_t>(y) * width + x];
            out.push_back(static_cast<BYTE>(p));
            out.push_back(static_cast<BYTE>(p >> 8));
            out.push_back(static_cast<BYTE>(p >> 16));
        }
        while (out.size() - start < stride) out.push_back(0);
    }
    return out;
}

bool WriteBytesToFile(const std::wstring& path, const std::vector<BYTE>& bytes) {
    std::ofstream file(std::filesystem::path(path), std::ios::binary | std::ios::trunc);
    if (!file) return false;
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(file);
}

}  // namespace kxhost
