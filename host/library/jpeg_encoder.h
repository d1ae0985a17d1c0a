// A small baseline JPEG encoder (8-bit, YCbCr 4:4:4, the example tables of the JPEG standard
// scaled by quality) so the sample library's art and picture files are real JPEG bytes, made the
// same way on every platform without any imaging library.
#pragma once

#include "kx/KxPlatform.h"

#include <vector>

namespace kxhost {

// 32-bit BGRA pixels, top row first; quality 1 to 100. Empty for an empty picture.
std::vector<BYTE> EncodeJpeg(LONG width, LONG height, const std::vector<DWORD>& pixels, int quality = 85);

// The symbols of the encoder's Huffman tables: 0 for DC, 1 for AC; luminance or chrominance.
// Exposed so that tests can check that every symbol the encoder may emit has a code.
const std::vector<BYTE>& JpegHuffmanSymbols(bool ac, bool chrominance);

}  // namespace kxhost
