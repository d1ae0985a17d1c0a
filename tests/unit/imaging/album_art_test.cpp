// The album art without its window, on the fake platform and real files in a scratch temp folder:
// accepted names, the box fit, the stored bytes (taken as they are or re-encoded), the temporary
// path and its guard, bad input and the pasted bitmap.
#include "imaging/album_art.h"
#include "imaging/fit_box.h"

#include "tests/unit/imaging/imaging_test_support.h"

#include <filesystem>

namespace kxtest {
namespace {

using namespace kxgdip;

class AlbumArtTest : public ImagingTest {
protected:
    FakePicture Stored(BYTE* bytes, ULONG size) {
        FakePicture picture;
        EXPECT_TRUE(DecodeFakePicture(std::vector<BYTE>(bytes, bytes + size), &picture));
        CoTaskMemFree(bytes);
        return picture;
    }
};

TEST(AlbumArtNames, AcceptedExtensions) {
    const std::pair<const wchar_t*, bool> cases[] = {
        {L"x.jpeg", true},   {L"X.JPEG", true},    {L"x.Tif", true},       {L"c:\\a.b\\p.png", true},
        {L"a.jfif", true},   {L"a.jpe", true},     {L"y.jpeg.txt", false}, {L"noext", false},
        {L"z.PN", false},    {L"a.jp g", false},   {L"dir.png\\x", false}, {L"", false},
        {L"x.JPG;.PNG", true},  // the last dot decides
    };
    for (const auto& c : cases) EXPECT_EQ(c.second, CAlbumArt::IsAcceptedImageFile(c.first)) << c.first;
    EXPECT_FALSE(CAlbumArt::IsAcceptedImageFile(nullptr));  // 259 and 260 characters: under Wine
}

TEST(AlbumArtFit, ScaleToFitBoxOnlyShrinks) {
    struct Case { UINT w, h, mw, mh, outW, outH; };
    const Case cases[] = {
        {100, 100, 180, 180, 100, 100}, {180, 180, 180, 180, 180, 180}, {1000, 500, 180, 180, 180, 90},
        {500, 1000, 180, 180, 90, 180}, {1000, 500, 150, 150, 150, 75},  {4224, 3168, 180, 180, 180, 135},
        {181, 1, 180, 180, 180, 0},     {7, 21, 5, 150, 5, 15},           {300, 10, 0, 10, 0, 0},
        {0, 300, 0, 100, 0, 100},
    };
    for (const Case& c : cases) {
        UINT w = c.w, h = c.h;
        ScaleToFitBox(&w, &h, c.mw, c.mh);
        EXPECT_EQ(c.outW, w) << c.w << "x" << c.h << " into " << c.mw << "x" << c.mh;
        EXPECT_EQ(c.outH, h) << c.w << "x" << c.h << " into " << c.mw << "x" << c.mh;
    }
}

// The fast path keeps the JPEG's bytes; everything else is scaled to the thumbnail's size and
// re-encoded at quality 85 with the size tags rewritten, and the temporary file is gone after.
// (A small JPEG and PNG and a wide JPEG go through the real platform under Wine.)
TEST_F(AlbumArtTest, PreparedBytes) {
    struct Case { const char* name; GUID format; UINT w, h; INT fitW, fitH; bool sameBytes; };
    const Case cases[] = {
        {"narrow room.jpg", ImageFormatJPEG, 1000, 500, 150, 75, false},
        {"exif.jpg", ImageFormatEXIF, 60, 40, 60, 40, true},
        {"pic.bmp", ImageFormatBMP, 60, 40, 60, 40, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        FakePicture picture = Picture(c.format, c.w, c.h);
        picture.properties = {SizeTag(0x100, PropertyTagTypeShort, c.w), SizeTag(0x101, PropertyTagTypeLong, c.h)};
        WritePicture(c.name, picture);
        std::vector<BYTE> original;
        ASSERT_TRUE(ReadBytes(NativeOf(c.name), &original));
        CAlbumArt art(gdip, files);
        BYTE* bytes = nullptr;
        ULONG size = 0;
        ASSERT_TRUE(art.PrepareArtBytes(&bytes, &size, PathOf(c.name).c_str(), c.fitW, c.fitH, c.w, c.h));
        if (c.sameBytes) {
            EXPECT_EQ(original, std::vector<BYTE>(bytes, bytes + size));
            CoTaskMemFree(bytes);
            ASSERT_TRUE(files.DeleteFileW(PathOf(c.name).c_str()));
            continue;
        }
        FakePicture stored = Stored(bytes, size);
        EXPECT_EQ(ImageFormatJPEG, stored.format);
        EXPECT_EQ(85u, stored.quality);
        EXPECT_EQ(static_cast<UINT>(c.fitW), stored.width);
        EXPECT_EQ(static_cast<UINT>(c.fitH), stored.height);
        ASSERT_EQ(2u, stored.properties.size());
        EXPECT_EQ(SizeTag(0x100, PropertyTagTypeShort, c.fitW).value, stored.properties[0].value);
        EXPECT_EQ(SizeTag(0x101, PropertyTagTypeLong, c.fitH).value, stored.properties[1].value);
        std::vector<BYTE> after;
        ASSERT_TRUE(ReadBytes(NativeOf(c.name), &after));
        EXPECT_EQ(original, after) << "the source is never touched";
        ASSERT_TRUE(files.DeleteFileW(PathOf(c.name).c_str()));
    }
}

// The temporary file is named after the source in the temp folder; 260 characters or more are
// cut to 255 and end in ".jpg" (259 in all).
TEST_F(AlbumArtTest, TemporaryPathLength) {
    CAlbumArt art(gdip, files);
    files.tempPath = L"C:\\Temp\\";  // 8 characters
    struct Case {
        size_t nameLength;  // with its extension ".png"
        size_t pathLength;
        bool cut;
    };
    const Case cases[] = {{20, 28, false}, {251, 259, false}, {252, 259, true}, {400, 259, true}};
    for (const Case& c : cases) {
        const std::wstring name = std::wstring(c.nameLength - 4, L'n') + L".png";
        std::wstring path;
        ASSERT_TRUE(art.BuildTempPath((L"D:\\pictures\\" + name).c_str(), &path));
        EXPECT_EQ(c.pathLength, path.size()) << c.nameLength;
        EXPECT_EQ(c.cut ? L".jpg" : L".png", path.substr(path.size() - 4));
        EXPECT_EQ(L"C:\\Temp\\nn", path.substr(0, 10));
    }
    files.tempPath = L"C:\\Temp";  // no closing separator: one is put between
    std::wstring path;
    ASSERT_TRUE(art.BuildTempPath(L"cover.png", &path));
    EXPECT_EQ(L"C:\\Temp\\cover.png", path);
    files.tempPathFails = true;
    EXPECT_FALSE(art.BuildTempPath(L"cover.png", &path));
}

// A writable source in the temp folder is never deleted nor overwritten: the copy takes another
// name (a read-only one goes through the real platform under Wine).
TEST_F(AlbumArtTest, SourceInTheTempFolderIsKept) {
    WritePicture("cover.png", Picture(ImageFormatPNG, 400, 200));
    std::vector<BYTE> original;
    ASSERT_TRUE(ReadBytes(NativeOf("cover.png"), &original));
    {
        CAlbumArt art(gdip, files);
        BYTE* bytes = nullptr;
        ULONG size = 0;
        ASSERT_TRUE(art.PrepareArtBytes(&bytes, &size, PathOf("cover.png").c_str(), 180, 90, 400, 200));
        EXPECT_EQ(180u, Stored(bytes, size).width);
    }
    std::vector<BYTE> after;
    ASSERT_TRUE(ReadBytes(NativeOf("cover.png"), &after));
    EXPECT_EQ(original, after);
    // The prefixed name is taken again only while it still reaches the source.
    WritePicture("KxArt-a.png", Picture(ImageFormatPNG, 4, 4));
    keptFiles = {"KxArt-a.png", "cover.png"};
    CAlbumArt art(gdip, files);
    std::wstring path;
    ASSERT_TRUE(art.BuildTempPath(PathOf("KxArt-a.png").c_str(), &path));
    EXPECT_EQ(PathOf("KxArt-KxArt-a.png"), path);
}

// A read-only, hidden copy left from before is cleared and replaced; the temp folder ends empty.
TEST_F(AlbumArtTest, LeftoverTemporaryCopyIsCleared) {
    NativeArtFiles sources;
    ASSERT_TRUE(WriteFakePicture(sources.Folder() + "art.png", Picture(ImageFormatPNG, 90, 90)));
    ASSERT_TRUE(WriteBytes(NativeOf("art.png"), {1, 2, 3}));
    ASSERT_TRUE(files.SetFileAttributesW(PathOf("art.png").c_str(),
                                         kFileAttributeReadOnly | kFileAttributeHidden | kFileAttributeSystem));
    CAlbumArt art(gdip, files);
    BYTE* bytes = nullptr;
    ULONG size = 0;
    ASSERT_TRUE(art.PrepareArtBytes(&bytes, &size, (sources.WideFolder() + L"art.png").c_str(), 90, 90, 90, 90));
    EXPECT_EQ(90u, Stored(bytes, size).height);
}

// Bad input: no crash, false, nothing left behind, nothing leaked.
TEST_F(AlbumArtTest, BadInput) {
    ASSERT_TRUE(WriteBytes(NativeOf("text.png"), {'h', 'e', 'l', 'l', 'o'}));
    ASSERT_TRUE(WriteBytes(NativeOf("empty.jpg"), {}));
    std::vector<BYTE> truncated = EncodeFakePicture(Picture(ImageFormatJPEG, 50, 50));
    truncated.resize(truncated.size() - 3);
    ASSERT_TRUE(WriteBytes(NativeOf("cut.jpg"), truncated));
    ASSERT_TRUE(std::filesystem::create_directory(NativeOf("folder.jpg")));
    keptFiles = {"cut.jpg", "empty.jpg", "folder.jpg", "text.png"};
    CAlbumArt art(gdip, files);
    // (file, whether it reads whole: a file that is no image still has bytes)
    const std::pair<const char*, bool> cases[] = {
        {"text.png", true}, {"empty.jpg", false}, {"cut.jpg", true}, {"folder.jpg", false}, {"missing.png", false}};
    for (const auto& c : cases) {
        BYTE* bytes = nullptr;
        ULONG size = 9;
        EXPECT_FALSE(art.PrepareArtBytes(&bytes, &size, PathOf(c.first).c_str(), 180, 180, 180, 180)) << c.first;
        EXPECT_EQ(c.second, art.ReadWholeFile(PathOf(c.first).c_str(), &bytes, &size)) << c.first;
        EXPECT_EQ(c.second, bytes != nullptr);
        CoTaskMemFree(bytes);
    }
    BYTE* bytes = nullptr;
    ULONG size = 0;
    EXPECT_FALSE(art.PrepareArtBytes(&bytes, &size, nullptr, 180, 180, 180, 180));
    EXPECT_FALSE(art.ReadWholeFile(PathOf("empty.jpg").c_str(), &bytes, &size));
    EXPECT_EQ(nullptr, bytes);
    EXPECT_EQ(0u, size);
    EXPECT_FALSE(art.ReadWholeFile(PathOf("folder.jpg").c_str(), &bytes, &size));
}

// A failure at each step: false, nothing stored, the temporary file gone or never made.
TEST_F(AlbumArtTest, FailureAtEachStep) {
    WritePicture("big.jpg", Picture(ImageFormatJPEG, 1000, 500));
    keptFiles = {"big.jpg"};
    struct Case { GdipOp op; Status status; };
    const Case cases[] = {{GdipOp::FromFile, OutOfMemory},   {GdipOp::RawFormat, GenericError},
                          {GdipOp::FromScan0, OutOfMemory},  {GdipOp::GraphicsContext, OutOfMemory},
                          {GdipOp::DrawImage, WrongState}, {GdipOp::PropertySize, PropertyNotFound},
                          {GdipOp::AllPropertyItems, OutOfMemory}, {GdipOp::Save, Win32Error}};
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.op));
        CAlbumArt art(gdip, files);
        gdip.Fail(c.op, c.status);
        BYTE* bytes = nullptr;
        ULONG size = 0;
        EXPECT_FALSE(art.PrepareArtBytes(&bytes, &size, PathOf("big.jpg").c_str(), 180, 90, 1000, 500));
        EXPECT_EQ(nullptr, bytes);
        CoTaskMemFree(bytes);
    }
    // A failed draw that the platform calls a generic error with no last error maps to 0: the
    // picture goes on as drawn.
    {
        CAlbumArt art(gdip, files);
        gdip.lastError = 0;
        gdip.Fail(GdipOp::DrawImage, GenericError);
        BYTE* bytes = nullptr;
        ULONG size = 0;
        EXPECT_TRUE(art.PrepareArtBytes(&bytes, &size, PathOf("big.jpg").c_str(), 180, 90, 1000, 500));
        CoTaskMemFree(bytes);
    }
    // Out of task memory for the read-back: the temporary file still goes.
    CAlbumArt art(gdip, files);
    kxcompat::FailTaskMemAllocations(1);
    BYTE* bytes = nullptr;
    ULONG size = 0;
    EXPECT_FALSE(art.PrepareArtBytes(&bytes, &size, PathOf("big.jpg").c_str(), 180, 90, 1000, 500));
    kxcompat::FailTaskMemAllocations(1);
    EXPECT_FALSE(art.PrepareArtBytes(&bytes, &size, PathOf("big.jpg").c_str(), 1000, 500, 1000, 500));
}

// A pasted bitmap is encoded at its own size with the height in 16 bits, through
// "KxPastedDemo.jpg", which is deleted after the read.
TEST_F(AlbumArtTest, PastedBitmap) {
    CAlbumArt art(gdip, files);
    BYTE* bytes = reinterpret_cast<BYTE*>(&art);
    ULONG size = 5;
    EXPECT_FALSE(art.EncodePastedBitmap(nullptr, &bytes, &size));
    EXPECT_EQ(nullptr, bytes);
    EXPECT_EQ(0u, size);

    struct Case { UINT w, h, outW, outH; };
    // 70000 is held as 4464: the fit into 300 x 4464 gives 19 x 4464.
    const Case cases[] = {{640, 480, 640, 480}, {300, 70000, 19, 4464}};
    for (const Case& c : cases) {
        HBITMAP handle = gdip.MakeHBITMAP(Picture(ImageFormatBMP, c.w, c.h));
        KxBitmapPtr bitmap(CGdipBitmap::FromHBITMAP(gdip, handle));
        ASSERT_TRUE(art.EncodePastedBitmap(bitmap.get(), &bytes, &size));
        FakePicture stored = Stored(bytes, size);
        EXPECT_EQ(c.outW, stored.width);
        EXPECT_EQ(c.outH, stored.height);
        gdip.DeleteHBITMAP(handle);
    }
    // A leftover file of that name is cleared first; a failed save leaves nothing to delete.
    ASSERT_TRUE(WriteBytes(NativeOf("KxPastedDemo.jpg"), {9}));
    ASSERT_TRUE(files.SetFileAttributesW(PathOf("KxPastedDemo.jpg").c_str(), kFileAttributeReadOnly));
    HBITMAP handle = gdip.MakeHBITMAP(Picture(ImageFormatBMP, 10, 10));
    EXPECT_TRUE(art.StorePastedBitmap(handle));
    EXPECT_EQ(10u, Stored(art.m_pPastedBytes, art.m_nPastedSize).width);
    art.m_pPastedBytes = nullptr;
    art.m_nPastedSize = 0;
    gdip.Fail(GdipOp::Save, AccessDenied);
    EXPECT_FALSE(art.StorePastedBitmap(handle));
    gdip.Fail(GdipOp::FromHBITMAP, OutOfMemory);
    EXPECT_FALSE(art.StorePastedBitmap(handle));
    EXPECT_EQ(nullptr, art.m_pPastedBytes);
    gdip.DeleteHBITMAP(handle);
}

}  // namespace
}  // namespace kxtest
