// Readers of the picture a track file carries in its own tags: the attached pictures of ID3v2
// (versions 2.2, 2.3 and 2.4, as MP3 files have them), the PICTURE metadata blocks of FLAC and the
// cover atom of MP4/M4A (moov/udta/meta/ilst/covr). They trust nothing in the file: every size is
// checked against its container and against the file, and a damaged tag means no picture.
#pragma once

#include <cstdint>
#include <vector>

#include "netcontent/byte_source.h"

namespace kxnet {

// No picture is taken that is larger than this: a tag that claims more is treated as damaged.
constexpr uint32_t kMaxPictureBytes = 32u * 1024u * 1024u;

// Which picture of a tag wins: the first front cover (ID3v2 and FLAC picture type 3), otherwise
// the first picture of any other type. Each reader answers true with the picture's bytes.
bool ReadId3v2Picture(const ByteSource& file, std::vector<uint8_t>* picture);
bool ReadFlacPicture(const ByteSource& file, std::vector<uint8_t>* picture);
bool ReadMp4Cover(const ByteSource& file, std::vector<uint8_t>* picture);

// The picture of a file of any of the three kinds, recognised by its first bytes ("ID3", "fLaC",
// an MP4 "ftyp" atom); a FLAC file that begins with an ID3v2 tag is read as both.
bool ReadEmbeddedPicture(const ByteSource& file, std::vector<uint8_t>* picture);

}  // namespace kxnet
