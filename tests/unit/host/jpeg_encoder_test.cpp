// The JPEG encoder's stream structure and Huffman tables. (Decoding is checked under Wine, with
// the platform's imaging.)
#include "host/library/jpeg_encoder.h"
#include "host/library/picture_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

// Offset of a marker segment FF xx before the entropy data; -1 if there is none.
long FindMarker(const std::vector<BYTE>& b, BYTE marker) {
    for (size_t i = 2; i + 1 < b.size();) {
        if (b[i] != 0xFF) return -1;
        if (b[i + 1] == marker) return static_cast<long>(i);
        if (b[i + 1] == 0xDA) return -1;  // entropy data follows
        i += 2 + (static_cast<size_t>(b[i + 2]) << 8 | b[i + 3]);
    }
    return -1;
}

TEST(JpegEncoder, HuffmanTablesCoverEverySymbolOnce) {
    std::set<BYTE> dc(kxhost::JpegHuffmanSymbols(false, false).begin(), kxhost::JpegHuffmanSymbols(false, false).end());
    std::set<BYTE> expectedDc;
    for (BYTE s = 0; s <= 11; ++s) expectedDc.insert(s);
    EXPECT_EQ(expectedDc, dc);
    EXPECT_EQ(expectedDc, std::set<BYTE>(kxhost::JpegHuffmanSymbols(false, true).begin(),
                                         kxhost::JpegHuffmanSymbols(false, true).end()));
    std::set<BYTE> expectedAc = {0x00, 0xF0};
    for (int run = 0; run < 16; ++run)
        for (int size = 1; size <= 10; ++size) expectedAc.insert(static_cast<BYTE>(run << 4 | size));
    for (bool chroma : {false, true}) {
        const auto& symbols = kxhost::JpegHuffmanSymbols(true, chroma);
        EXPECT_EQ(expectedAc.size(), symbols.size()) << "no symbol twice";
        EXPECT_EQ(expectedAc, std::set<BYTE>(symbols.begin(), symbols.end()));
    }
}

TEST(JpegEncoder, StreamHasTheMarkersAndSizeOfABaselineJpeg) {
    const auto pixels = kxhost::SamplePixels(61, 37, 3);
    const auto jpeg = kxhost::EncodeJpeg(61, 37, pixels);
    ASSERT_GT(jpeg.size(), 200u);
    EXPECT_EQ(0xFF, jpeg[0]);
    EXPECT_EQ(0xD8, jpeg[1]);
    EXPECT_EQ(0xFF, jpeg[jpeg.size() - 2]);
    EXPECT_EQ(0xD9, jpeg[jpeg.size() - 1]);
    const long sof = FindMarker(jpeg, 0xC0);
    ASSERT_GT(sof, 0);
    EXPECT_EQ(37, jpeg[sof + 5] << 8 | jpeg[sof + 6]);
    EXPECT_EQ(61, jpeg[sof + 7] << 8 | jpeg[sof + 8]);
    EXPECT_EQ(3, jpeg[sof + 9]) << "three components";
    EXPECT_GT(FindMarker(jpeg, 0xDB), 0);
    EXPECT_GT(FindMarker(jpeg, 0xC4), 0);
    // in the entropy data every FF is stuffed with a 00
    const long sos = FindMarker(jpeg, 0xDA);
    ASSERT_GT(sos, 0);
    for (size_t i = static_cast<size_t>(sos) + 14; i + 2 < jpeg.size(); ++i)
        if (jpeg[i] == 0xFF) {
            EXPECT_EQ(0x00, jpeg[i + 1]) << i;
        }
    // deterministic, and quality changes the size
    EXPECT_EQ(jpeg, kxhost::EncodeJpeg(61, 37, pixels));
    EXPECT_LT(kxhost::EncodeJpeg(61, 37, pixels, 20).size(), kxhost::EncodeJpeg(61, 37, pixels, 100).size());
}

TEST(JpegEncoder, NothingForAnEmptyOrShortPicture) {
    EXPECT_TRUE(kxhost::EncodeJpeg(0, 5, {}).empty());
    EXPECT_TRUE(kxhost::EncodeJpeg(4, 4, std::vector<DWORD>(15)).empty());
    EXPECT_FALSE(kxhost::EncodeJpeg(1, 1, std::vector<DWORD>(1, 0xFFFFFFFF)).empty());
}

}  // namespace
