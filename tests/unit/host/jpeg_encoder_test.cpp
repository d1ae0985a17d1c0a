// The JPEG encoder's Huffman tables and output rules. (Decoding is checked under Wine, with the
// platform's imaging.)
#include "host/library/jpeg_encoder.h"
#include "host/library/picture_file.h"

#include <gtest/gtest.h>

#include <set>

namespace {

TEST(JpegEncoder, HuffmanTablesCoverEverySymbolOnce) {
    std::set<BYTE> dc, ac = {0x00, 0xF0};
    for (BYTE s = 0; s <= 11; ++s) dc.insert(s);
    for (int run = 0; run < 16; ++run)
        for (int size = 1; size <= 10; ++size) ac.insert(static_cast<BYTE>(run << 4 | size));
    for (bool chroma : {false, true}) {
        const auto& dcSymbols = kxhost::JpegHuffmanSymbols(false, chroma);
        const auto& acSymbols = kxhost::JpegHuffmanSymbols(true, chroma);
        EXPECT_EQ(dc, std::set<BYTE>(dcSymbols.begin(), dcSymbols.end())) << chroma;
        EXPECT_EQ(ac.size(), acSymbols.size()) << "no symbol twice";
        EXPECT_EQ(ac, std::set<BYTE>(acSymbols.begin(), acSymbols.end())) << chroma;
    }
}

TEST(JpegEncoder, DeterministicQualityBoundAndNothingForShortInput) {
    const auto pixels = kxhost::SamplePixels(61, 37, 3);
    const auto jpeg = kxhost::EncodeJpeg(61, 37, pixels);
    ASSERT_GT(jpeg.size(), 200u);
    EXPECT_EQ(jpeg, kxhost::EncodeJpeg(61, 37, pixels));
    EXPECT_LT(kxhost::EncodeJpeg(61, 37, pixels, 20).size(), kxhost::EncodeJpeg(61, 37, pixels, 100).size());
    EXPECT_TRUE(kxhost::EncodeJpeg(0, 5, {}).empty());
    EXPECT_TRUE(kxhost::EncodeJpeg(4, 4, std::vector<DWORD>(15)).empty());
    EXPECT_FALSE(kxhost::EncodeJpeg(1, 1, std::vector<DWORD>(1, 0xFFFFFFFF)).empty());
}

TEST(PictureFile, BmpRowsArePaddedAndTheHeaderTellsTheSize) {
    auto bmp = kxhost::EncodeBmp(5, 3, kxhost::SamplePixels(5, 3, 1));
    ASSERT_EQ(54u + 16u * 3, bmp.size());  // rows of 5 * 3 bytes padded to 16
    EXPECT_EQ(bmp.size(), static_cast<size_t>(bmp[2] | bmp[3] << 8 | bmp[4] << 16 | bmp[5] << 24));
}

}  // namespace
