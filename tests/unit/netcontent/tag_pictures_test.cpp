// The tag readers on built tags, one table per container, the names beside a track, and the real
// MP3 with an embedded cover that the test-file fixture fetches.
#include "netcontent/tag_pictures.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "netcontent/side_picture.h"
#include "tag_builders.h"

namespace {

using namespace kxtest;
using kxnet::MemorySource;

const Bytes kJpeg = {0xFF, 0xD8, 0xFF, 0x00, 0xFF, 0xE0, 0x12, 0xFF, 0xD9};
const Bytes kPng = {0x89, 'P', 'N', 'G', 0xFF, 0x00, 0x01};
const Bytes kBig(300, 0x5A);    // its frame's syncsafe size read plainly would run past the tag
const Bytes kPlain(400, 0x5B);  // its frame's plain size has a byte that no syncsafe number has
const Bytes kNone;
const Bytes kNoDescription = {0};
const Bytes kUtf16Description = {0xFF, 0xFE, 'c', 0, 0, 0};

struct Case {
    const char* name;
    Bytes file;
    Bytes expected;  // empty: no picture
};

void Check(const std::vector<Case>& cases, bool (*reader)(const kxnet::ByteSource&, std::vector<uint8_t>*)) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const MemorySource source(c.file.data(), c.file.size());
        std::vector<uint8_t> picture;
        EXPECT_EQ(reader(source, &picture), !c.expected.empty());
        if (!c.expected.empty()) {
            EXPECT_EQ(picture, c.expected);
        }
        std::vector<uint8_t> any;
        EXPECT_EQ(kxnet::ReadEmbeddedPicture(source, &any), !c.expected.empty());
        EXPECT_EQ(any, picture);
    }
}

TEST(TagPictures, Id3v2) {
    const Bytes title = Frame(3, "TIT2", Cat({{0}, Text("Song")}));
    const Bytes apic3 = Frame(3, "APIC", Apic(0, "image/jpeg", 3, kNoDescription, kJpeg));
    Bytes tooLong = Frame(3, "APIC", Apic(0, "image/jpeg", 3, kNoDescription, kJpeg));
    tooLong[7] = 0x7F;  // frame size past the tag's end
    Bytes notSyncsafe = Id3(3, 0, apic3);
    notSyncsafe[9] |= 0x80;
    Bytes truncated = Id3(3, 0, apic3);
    truncated.resize(truncated.size() - 1);
    const Bytes plainBody = Apic(0, "image/png", 3, kNoDescription, kPlain);
    const Bytes v4Plain = Cat({Text("APIC"), Be32(uint32_t(plainBody.size())), {0, 0}, plainBody});
    Check({
              {"2.3, after a text frame, with padding", Id3(3, 0, Cat({title, apic3, Bytes(20, 0)})), kJpeg},
              {"2.2 PIC", Id3(2, 0, Frame(2, "PIC", Pic(0, "JPG", 3, kNoDescription, kJpeg))), kJpeg},
              {"2.4 syncsafe frame size", Id3(4, 0, Frame(4, "APIC", Apic(3, "image/png", 3, kNoDescription, kBig))), kBig},
              {"2.4 plain frame size as some writers put it", Id3(4, 0, v4Plain), kPlain},
              {"UTF-16 description", Id3(3, 0, Frame(3, "APIC", Apic(1, "image/png", 3, kUtf16Description, kPng))), kPng},
              {"2.3 whole tag unsynchronised", Id3(3, 0x80, Unsync(apic3)), kJpeg},
              {"2.4 frame unsynchronised, with data length", Id3(4, 0, Frame(4, "APIC",
                   Cat({Syncsafe(20), Unsync(Apic(0, "image/jpeg", 3, kNoDescription, kJpeg))}), 0x03)), kJpeg},
              {"2.4 tag unsynchronised", Id3(4, 0x80, Frame(4, "APIC", Unsync(Apic(0, "image/jpeg", 3, kNoDescription, kJpeg)))), kJpeg},
              {"2.3 extended header", Id3(3, 0x40, Cat({Be32(6), Bytes(6, 0), apic3})), kJpeg},
              {"2.4 extended header", Id3(4, 0x40, Cat({Syncsafe(6), {1, 0}, Frame(4, "APIC",
                   Apic(0, "image/jpeg", 3, kNoDescription, kJpeg))})), kJpeg},
              {"2.3 grouped frame", Id3(3, 0, Frame(3, "APIC", Cat({{7}, Apic(0, "image/jpeg", 3, kNoDescription, kJpeg)}), 0x20)), kJpeg},
              {"front cover beats an earlier back cover", Id3(3, 0, Cat({Frame(3, "APIC",
                   Apic(0, "image/png", 4, kNoDescription, kPng)), apic3})), kJpeg},
              {"first picture when none is a front cover", Id3(3, 0, Cat({Frame(3, "APIC",
                   Apic(0, "image/png", 4, kNoDescription, kPng)), Frame(3, "APIC", Apic(0, "image/jpeg", 0, kNoDescription, kJpeg))})), kPng},
              {"compressed frame skipped", Id3(3, 0, Frame(3, "APIC", Apic(0, "image/jpeg", 3, kNoDescription, kJpeg), 0x80)), kNone},
              {"linked picture", Id3(3, 0, Frame(3, "APIC", Apic(0, "-->", 3, kNoDescription, Text("c.jpg")))), kNone},
              {"description without its end", Id3(3, 0, Frame(3, "APIC", Cat({{1}, Text("image/png"), {0, 3, 'a', 0, 'b'}}))), kNone},
              {"frame past the tag's end", Id3(3, 0, tooLong), kNone},
              {"tag size not syncsafe", notSyncsafe, kNone},
              {"tag past the file's end", truncated, kNone},
              {"extended header larger than the tag", Id3(3, 0x40, Cat({Be32(0xFFFFFFF0u), apic3})), kNone},
              {"version 5", Id3(5, 0, apic3), kNone},
              {"no tag", Text("RIFF....WAVE"), kNone},
          },
          kxnet::ReadId3v2Picture);
}

TEST(TagPictures, Flac) {
    const Bytes streamInfo = FlacBlock(0, false, Bytes(34, 0));
    Bytes mimeOverflow = FlacPicture(3, kJpeg);
    mimeOverflow[4] = mimeOverflow[5] = mimeOverflow[6] = mimeOverflow[7] = 0xFF;
    Bytes dataOverflow = FlacPicture(3, kJpeg);
    dataOverflow[dataOverflow.size() - kJpeg.size() - 1] += 1;
    Check({
              {"after stream info", Cat({Text("fLaC"), streamInfo, FlacBlock(6, true, FlacPicture(3, kJpeg))}), kJpeg},
              {"behind an ID3v2 tag without a picture", Cat({Id3(3, 0, Frame(3, "TIT2", {0, 'x'})), Text("fLaC"), streamInfo,
                   FlacBlock(6, true, FlacPicture(3, kJpeg))}), kJpeg},
              {"front cover beats an earlier other picture", Cat({Text("fLaC"), streamInfo,
                   FlacBlock(6, false, FlacPicture(0, kPng)), FlacBlock(6, true, FlacPicture(3, kJpeg))}), kJpeg},
              {"nothing after the last block counts", Cat({Text("fLaC"), FlacBlock(0, true, Bytes(34, 0)),
                   FlacBlock(6, true, FlacPicture(3, kJpeg))}), kNone},
              {"MIME length past the block", Cat({Text("fLaC"), FlacBlock(6, true, mimeOverflow)}), kNone},
              {"data length past the block", Cat({Text("fLaC"), FlacBlock(6, true, dataOverflow)}), kNone},
              {"block past the file's end", Cat({Text("fLaC"), {0x86, 0x00, 0x10, 0x00}, FlacPicture(3, kJpeg)}), kNone},
          },
          kxnet::ReadFlacPicture);
}

TEST(TagPictures, Mp4) {
    const Bytes ftyp = Atom("ftyp", Cat({Text("M4A "), Be32(0)}));
    const Bytes hdlr = Atom("hdlr", Bytes(25, 0));
    auto ilst = [](const Bytes& picture) {
        return Atom("ilst", Cat({Atom("\xA9nam", Bytes(8, 0)), Atom("covr", Atom("data", Cat({Be32(13), Be32(0), picture})))}));
    };
    auto file = [&](const Bytes& meta) { return Cat({ftyp, Atom("moov", Cat({Atom("mvhd", Bytes(8, 0)), Atom("udta", meta)})), Atom("mdat", Bytes(4, 1))}); };
    const Bytes fullMeta = Atom("meta", Cat({Be32(0), hdlr, ilst(kJpeg)}));
    const Bytes udta = Atom("udta", fullMeta);
    const Bytes wide = Cat({ftyp, Be32(1), Text("moov"), Be32(0), Be32(uint32_t(16 + udta.size())), udta});
    Bytes childPastParent = file(fullMeta);
    childPastParent[ftyp.size() + 8 + 16 + 3] += 8;  // udta claims more than moov holds
    Check({
              {"full meta atom", file(fullMeta), kJpeg},
              {"plain meta atom", file(Atom("meta", Cat({hdlr, ilst(kPng)}))), kPng},
              {"64-bit moov size", wide, kJpeg},
              {"last atom runs to the end", Cat({ftyp, Be32(0), Text("moov"), Atom("udta", fullMeta)}), kJpeg},
              {"child past its parent", childPastParent, kNone},
              {"atom smaller than its header", Cat({ftyp, Be32(4), Text("moov"), Atom("udta", fullMeta)}), kNone},
              {"no cover", file(Atom("meta", Cat({Be32(0), hdlr, Atom("ilst", Bytes())}))), kNone},
          },
          kxnet::ReadMp4Cover);
}

TEST(SidePicture, Candidates) {
    const auto c = kxnet::SidePictureCandidates(L"C:\\Music\\Album\\01 Song.mp3");
    ASSERT_EQ(c.size(), 15u);
    EXPECT_EQ(c.front(), L"C:\\Music\\Album\\cover.jpg");
    EXPECT_EQ(c[5], L"C:\\Music\\Album\\folder.jpg");
    EXPECT_EQ(c.back(), L"C:\\Music\\Album\\front.gif");
    EXPECT_EQ(kxnet::SidePictureCandidates(L"/music/a.flac").front(), L"/music/cover.jpg");
    EXPECT_TRUE(kxnet::SidePictureCandidates(L"Song.mp3").empty());
    EXPECT_TRUE(kxnet::SidePictureCandidates(L"C:\\Music\\").empty());
}

TEST(TagPictures, RealMp3WithCover) {
    std::ifstream in(KX_NETCONTENT_TEST_FILES "/BeatThee.mp3", std::ios::binary);
    ASSERT_TRUE(in) << "the test-file fixture did not fetch BeatThee.mp3";
    const Bytes file((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    const MemorySource source(file.data(), file.size());
    std::vector<uint8_t> picture;
    ASSERT_TRUE(kxnet::ReadEmbeddedPicture(source, &picture));
    // The APIC frame holds 142570 bytes: encoding, "image/jpeg", type and a UTF-16 "cover" take 27.
    ASSERT_EQ(picture.size(), 142543u);
    EXPECT_EQ(picture[0], 0xFF);
    EXPECT_EQ(picture[1], 0xD8);
    EXPECT_EQ(picture[picture.size() - 2], 0xFF);
    EXPECT_EQ(picture[picture.size() - 1], 0xD9);
}

}  // namespace
