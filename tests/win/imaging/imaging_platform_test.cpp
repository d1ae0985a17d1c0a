// The image utility and the album art's bytes with the real GDI+ and real photographs from
// Debian's test-data packages: open, fit, resize, save, read back; bytes kept or re-encoded; the
// temp-folder guard; bad input. Where Wine's GDI+ lacks what the code relies on (metadata items,
// JPEG quality) the test says so and is skipped; that behaviour is pinned natively on the fake.
#include "tests/win/imaging/imaging_wine_support.h"

#include <windows.h>

namespace kxtest {
namespace {

using namespace kxgdip;

TEST_F(WineImagingTest, TheInstalledEncodersFillTheTable) {
    CGdiplusUtil util(gdip);
    util.InitGdiplus();
    for (const auto& row : util.m_formatTable) EXPECT_TRUE(row.installed) << std::hex << row.formatCode;
    CLSID jpeg;
    ASSERT_EQ(S_OK, util.FormatCodeToGdiplusEncoder(0x3801, &jpeg));
}

TEST_F(WineImagingTest, RealFilesOpenWithTheirFormatAndSize) {
    struct Case {
        const char* name;
        DWORD code;
        UINT width, height;
    };
    const Case cases[] = {
        {"branches.jpg", 0x3801, 600, 400},       {"branches.png", 0x380B, 600, 400},
        {"tower_progressive.jpg", 0x3801, 512, 512}, {"tower_grayscale.jpg", 0x3801, 512, 512},
        {"sample1.tif", 0x380D, 1728, 2376},      {"orientation_6.jpg", 0x3801, 70, 50},
        {"sample1.jpg", 0x3801, 500, 375},
    };
    for (const Case& c : cases) {
        UINT w = 0, h = 0;
        DWORD code = 0;
        ASSERT_TRUE(Describe(TestImage(c.name), &w, &h, &code)) << c.name;
        EXPECT_EQ(c.code, code) << c.name;
        EXPECT_EQ(c.width, w) << c.name;
        EXPECT_EQ(c.height, h) << c.name;
    }
}

// A JPEG within the box keeps its bytes; a PNG of the same picture is re-encoded at its size;
// a 1000 x 500 JPEG becomes a 180 x 90 JPEG: opened, fitted, resized, saved and read back.
TEST_F(WineImagingTest, PreparedArtBytes) {
    SaveResized(TestImage("branches.jpg"), 100, 100, 0x3801, work + L"small.jpg");
    SaveResized(TestImage("branches.jpg"), 100, 100, 0x380B, work + L"small.png");
    SaveResized(TestImage("large_image.jpg"), 1000, 500, 0x3801, work + L"wide.jpg");
    CAlbumArt art(gdip, files);

    BYTE* bytes = nullptr;
    ULONG size = 0;
    ASSERT_TRUE(art.PrepareArtBytes(&bytes, &size, (work + L"small.jpg").c_str(), 100, 100, 100, 100));
    EXPECT_EQ(FileBytes(work + L"small.jpg"), std::vector<BYTE>(bytes, bytes + size));
    CoTaskMemFree(bytes);
    for (const char* name : {"orientation_1.jpg", "orientation_8.jpg", "infinite_loop_exif.jpg"}) {
        UINT w = 0, h = 0;
        DWORD code = 0;
        ASSERT_TRUE(Describe(TestImage(name), &w, &h, &code)) << name;
        ASSERT_TRUE(art.PrepareArtBytes(&bytes, &size, TestImage(name).c_str(), w, h, w, h)) << name;
        EXPECT_EQ(FileBytes(TestImage(name)), std::vector<BYTE>(bytes, bytes + size)) << name;
        CoTaskMemFree(bytes);
    }

    if (!MetadataLack().empty()) {
        // Every re-encode copies metadata first: where the platform refuses to say there is none,
        // nothing is stored.
        EXPECT_FALSE(art.PrepareArtBytes(&bytes, &size, (work + L"small.png").c_str(), 100, 100, 100, 100));
        AnswerNoMetadataAsWindows();
    }
    struct Case {
        const wchar_t* name;
        INT fitW, fitH, srcW, srcH;
    };
    const Case cases[] = {{L"small.png", 100, 100, 100, 100}, {L"wide.jpg", 180, 90, 1000, 500}};
    for (const Case& c : cases) {
        ASSERT_TRUE(art.PrepareArtBytes(&bytes, &size, (work + c.name).c_str(), c.fitW, c.fitH, c.srcW, c.srcH));
        UINT w = 0, h = 0;
        DWORD code = 0;
        ASSERT_TRUE(DescribeBytes(bytes, size, &w, &h, &code));
        EXPECT_EQ((std::vector<UINT>{UINT(c.fitW), UINT(c.fitH), 0x3801}), (std::vector<UINT>{w, h, code}));
        EXPECT_NE(FileBytes(work + c.name), std::vector<BYTE>(bytes, bytes + size));
        CoTaskMemFree(bytes);
    }
}

// The copy of a re-encoded photograph carries its EXIF items, the two size tags rewritten.
TEST_F(WineImagingTest, MetadataCarriedOver) {
    const std::wstring lack = MetadataLack();
    if (!lack.empty()) GTEST_SKIP() << "no metadata to copy under this Wine: " << std::string(lack.begin(), lack.end());
    CGdiplusUtil util(gdip);
    CGdipBitmap* opened = nullptr;
    DWORD code = 0;
    ASSERT_EQ(S_OK, util.GdiplusFileOpen(&opened, &code, TestImage("sample1.jpg").c_str()));
    KxBitmapPtr source(opened);
    KxBitmapPtr dest(CGdipBitmap::Create(gdip, 180, 135, PixelFormat32bppARGB));
    ASSERT_EQ(S_OK, util.CopyMetaData(source.get(), dest.get(), 180, 135));
    UINT sourceSize = 0, sourceCount = 0, size = 0, count = 0;
    ASSERT_EQ(Ok, source->GetPropertySize(&sourceSize, &sourceCount));
    ASSERT_EQ(Ok, dest->GetPropertySize(&size, &count));
    EXPECT_EQ(sourceCount, count);
}

// Quality 85 is asked for; where the platform honours quality a lower one gives fewer bytes.
TEST_F(WineImagingTest, JpegQualityIsAskedFor) {
    CGdiplusUtil util(gdip);
    util.InitGdiplus();
    KxBitmapPtr photo(CGdipBitmap::FromFile(gdip, TestImage("tower.jpg").c_str()));
    CLSID jpeg;
    ASSERT_EQ(S_OK, util.FormatCodeToGdiplusEncoder(0x3801, &jpeg));
    ASSERT_EQ(S_OK, util.GdiplusFileSave(photo.get(), (work + L"q85.jpg").c_str()));
    ULONG low = 10;
    EncoderParameters parameters = {1, {{EncoderQuality, 1, EncoderParameterValueTypeLong, &low}}};
    ASSERT_EQ(Ok, photo->Save((work + L"q10.jpg").c_str(), &jpeg, &parameters));
    const size_t at85 = FileBytes(work + L"q85.jpg").size(), at10 = FileBytes(work + L"q10.jpg").size();
    if (at85 == at10) GTEST_SKIP() << "this Wine's GDI+ ignores the JPEG quality (both saves give " << at85 << " bytes)";
    EXPECT_GT(at85, at10);
}

// A source that lies in the temp folder is neither cleared nor overwritten, even read-only.
TEST_F(WineImagingTest, SourceInTheTempFolderIsKept) {
    AnswerNoMetadataAsWindows();
    const std::wstring source = files.folder + L"Cover.png";
    SaveResized(TestImage("flowers_small.png"), 240, 160, 0x380B, source);
    SetFileAttributesW(source.c_str(), FILE_ATTRIBUTE_READONLY);
    const std::vector<BYTE> original = FileBytes(source);
    keptTempFiles = {L"Cover.png"};
    CAlbumArt art(gdip, files);
    std::wstring temp;
    // Another spelling of the same file (case) is caught by asking the file system.
    ASSERT_TRUE(art.BuildTempPath((files.folder + L"COVER.PNG").c_str(), &temp));
    EXPECT_EQ(files.folder + L"KxArt-COVER.PNG", temp);
    BYTE* bytes = nullptr;
    ULONG size = 0;
    const bool prepared = art.PrepareArtBytes(&bytes, &size, source.c_str(), 180, 120, 240, 160);
    CoTaskMemFree(bytes);
    EXPECT_EQ(original, FileBytes(source));
    EXPECT_EQ(FILE_ATTRIBUTE_READONLY, GetFileAttributesW(source.c_str()) & FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(prepared);
    SetFileAttributesW(source.c_str(), FILE_ATTRIBUTE_NORMAL);
}

// Bad input: the documented code, no crash, nothing left, nothing leaked.
TEST_F(WineImagingTest, BadInput) {
    AnswerNoMetadataAsWindows();
    ASSERT_TRUE(PutFileBytes(work + L"text.jpg", {'n', 'o', ' ', 'i', 'm', 'a', 'g', 'e'}));
    ASSERT_TRUE(PutFileBytes(work + L"empty.jpg", {}));
    std::vector<BYTE> half = FileBytes(TestImage("branches.jpg"));
    half.resize(half.size() / 2);
    ASSERT_TRUE(PutFileBytes(work + L"cut.jpg", half));
    ASSERT_TRUE(CreateDirectoryW((work + L"folder.jpg").c_str(), nullptr));
    CGdiplusUtil util(gdip);
    util.InitGdiplus();
    CAlbumArt art(gdip, files);
    for (const wchar_t* name : {L"text.jpg", L"empty.jpg", L"folder.jpg", L"missing.jpg"}) {
        CGdipBitmap* bitmap = nullptr;
        DWORD code = 9;
        EXPECT_EQ(static_cast<HRESULT>(0x8007000Du), util.GdiplusFileOpen(&bitmap, &code, (work + name).c_str()));
        EXPECT_EQ(nullptr, bitmap);
        EXPECT_EQ(0u, code);
        BYTE* bytes = nullptr;
        ULONG size = 0;
        EXPECT_FALSE(art.PrepareArtBytes(&bytes, &size, (work + name).c_str(), 180, 180, 180, 180));
    }
    // Damaged photographs: a cut JPEG and EXIF blocks with impossible sizes open or are refused,
    // and whatever opens is re-encoded or refused without harm.
    for (const std::wstring& path : {work + L"cut.jpg", TestImage("huge_tag_exif.jpg"), TestImage("max_uint32_exif.jpg")}) {
        CGdipBitmap* bitmap = nullptr;
        DWORD code = 0;
        const HRESULT hr = util.GdiplusFileOpen(&bitmap, &code, path.c_str());
        EXPECT_TRUE(hr == S_OK || hr == static_cast<HRESULT>(0x8007000Du)) << std::hex << hr;
        CGdipBitmap::Delete(bitmap);
        BYTE* bytes = nullptr;
        ULONG size = 0;
        if (art.PrepareArtBytes(&bytes, &size, path.c_str(), 90, 60, 600, 400)) CoTaskMemFree(bytes);
    }
    // Paths of 259 and 260 characters.
    std::wstring longName = work;
    longName.append(259 - longName.size() - 4, L'p');
    longName += L".jpg";
    ASSERT_EQ(259u, longName.size());
    EXPECT_TRUE(CAlbumArt::IsAcceptedImageFile(longName.c_str()));
    ASSERT_TRUE(CopyFileW(TestImage("orientation_3.jpg").c_str(), longName.c_str(), FALSE));
    BYTE* bytes = nullptr;
    ULONG size = 0;
    ASSERT_TRUE(art.PrepareArtBytes(&bytes, &size, longName.c_str(), 70, 70, 50, 70));
    EXPECT_EQ(FileBytes(TestImage("orientation_3.jpg")), std::vector<BYTE>(bytes, bytes + size));
    CoTaskMemFree(bytes);
    EXPECT_FALSE(CAlbumArt::IsAcceptedImageFile((longName + L"x").c_str()));
}

// The pasted bitmap at its own size through "KxPastedDemo.jpg", deleted after the read.
TEST_F(WineImagingTest, PastedBitmapIsEncodedAtItsOwnSize) {
    AnswerNoMetadataAsWindows();
    HBITMAP handle = CreateBitmap(64, 48, 1, 32, nullptr);
    ASSERT_NE(nullptr, handle);
    {
        CAlbumArt art(gdip, files);
        ASSERT_TRUE(art.StorePastedBitmap(handle));
        UINT w = 0, h = 0;
        DWORD code = 0;
        ASSERT_TRUE(DescribeBytes(art.m_pPastedBytes, art.m_nPastedSize, &w, &h, &code));
        EXPECT_EQ((std::vector<UINT>{64, 48, 0x3801}), (std::vector<UINT>{w, h, code}));
    }
    DeleteObject(handle);
}

}  // namespace
}  // namespace kxtest
