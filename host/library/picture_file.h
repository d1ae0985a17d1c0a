// Small real pictures for the sample library: pixels, and BMP files made of them.
#pragma once

#include "kx/KxPlatform.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kxhost {

// A w x h picture of 32-bit BGRA pixels (top row first): a diagonal gradient in the colours that
// `seed` picks, with a frame, so pictures differ and their orientation shows.
std::vector<DWORD> SamplePixels(LONG width, LONG height, uint32_t seed);

// A 24-bit uncompressed BMP file of the pixels (alpha dropped).
std::vector<BYTE> EncodeBmp(LONG width, LONG height, const std::vector<DWORD>& pixels);

// Writes bytes to a file, replacing it; false on any failure.
bool WriteBytesToFile(const std::wstring& path, const std::vector<BYTE>& bytes);

}  // namespace kxhost
