// CGdiplusUtil on the fake platform: the encoder table whatever the list's order, every trace
// line, the status mapping, the fit arithmetic, open, save, resize and the metadata copy, with a
// failure at each step.
#include "imaging/gdiplus_util.h"

#include "tests/unit/imaging/imaging_test_support.h"

namespace kxtest {
namespace {

using namespace kxgdip;

const std::wstring kInit = L"S:CGdiplusUtil::InitFormatCodeConversionTable> ";
const std::wstring kProbeMissing =
    L"E:CGdiplusUtil::FormatCodeToGdiplusEncoder> Codec is not installed for formatCode 0x3801";
const std::wstring kProbeFound =
    L"S:CGdiplusUtil::FormatCodeToGdiplusEncoder> This FormatCode ( 0x3801 ) is supported by one of the existing "
    L"GDI+ encoder";
const std::wstring kAssignJpeg = kInit + L"EXIF codec not installed, we assign this to the EXIF";

using ImageUtilTest = ImagingTest;

DWORD RowOf(const CGdiplusUtil& util, DWORD code, CLSID* clsid) {
    for (const auto& row : util.m_formatTable)
        if (row.formatCode == code) {
            *clsid = row.encoderClsid;
            return row.installed;
        }
    return 99;
}

// Row 0x3801 holds the EXIF encoder whenever one is listed, else the first JPEG encoder.
TEST_F(ImageUtilTest, EncoderListsInAnyOrder) {
    const FakeEncoder bmp = MakeEncoder(ImageFormatBMP, L"BMP", 1), jpeg = MakeEncoder(ImageFormatJPEG, L"JPEG", 2),
                      jpeg2 = MakeEncoder(ImageFormatJPEG, L"JPEG 2", 3), exif = MakeEncoder(ImageFormatEXIF, L"EXIF", 4),
                      icon = MakeEncoder(ImageFormatIcon, L"ICO", 5), png = MakeEncoder(ImageFormatPNG, L"PNG", 6),
                      gif = MakeEncoder(ImageFormatGIF, L"GIF", 7), tiff = MakeEncoder(ImageFormatTIFF, L"TIFF", 8);
    struct Case {
        const char* name;
        std::vector<FakeEncoder> list;
        const FakeEncoder* row3801;  // null: not installed
        std::vector<std::wstring> traces;
    };
    const Case cases[] = {
        {"bmp and jpeg", {bmp, jpeg}, &jpeg,
         {kInit + L"Found Codec: \"BMP\"", kInit + L"It's a BMP Codec", kInit + L"Found Codec: \"JPEG\"",
          kInit + L"It's a JFIF Codec", kProbeMissing, kAssignJpeg}},
        {"jpeg then exif", {jpeg, exif}, &exif,
         {kInit + L"Found Codec: \"JPEG\"", kInit + L"It's a JFIF Codec", kProbeMissing, kAssignJpeg,
          kInit + L"Found Codec: \"EXIF\"", kInit + L"It's a EXIF Codec"}},
        {"exif then jpeg", {exif, jpeg}, &exif,
         {kInit + L"Found Codec: \"EXIF\"", kInit + L"It's a EXIF Codec", kInit + L"Found Codec: \"JPEG\"",
          kInit + L"It's a JFIF Codec", kProbeFound}},
        {"two jpegs", {jpeg, jpeg2}, &jpeg,
         {kInit + L"Found Codec: \"JPEG\"", kInit + L"It's a JFIF Codec", kProbeMissing, kAssignJpeg,
          kInit + L"Found Codec: \"JPEG 2\"", kInit + L"It's a JFIF Codec", kProbeFound}},
        {"icon, png, gif, tiff", {icon, png, gif, tiff}, nullptr,
         {kInit + L"Found Codec: \"ICO\"", kInit + L"Unknown Codec", kInit + L"Found Codec: \"PNG\"",
          kInit + L"It's a PNG Codec", kInit + L"Found Codec: \"GIF\"", kInit + L"It's a GIF Codec",
          kInit + L"Found Codec: \"TIFF\"", kInit + L"It's a TIFF Codec"}},
        {"none", {}, nullptr, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        gdip.encoders = c.list;
        CGdiplusUtil util(gdip);
        util.InitGdiplus();
        EXPECT_EQ(c.traces, Traces());
        CLSID clsid{};
        EXPECT_EQ(c.row3801 ? 1u : 0u, RowOf(util, 0x3801, &clsid));
        if (c.row3801) {
            EXPECT_EQ(c.row3801->clsid, clsid);
        }
        // The other rows take their own format's encoder, and only that.
        for (const FakeEncoder& e : c.list) {
            const DWORD code = CGdiplusUtil::RawFormatToFormatCode(e.format);
            if (code == 0x3801 || code == 0x3000) continue;
            EXPECT_EQ(1u, RowOf(util, code, &clsid));
            EXPECT_EQ(e.clsid, clsid);
        }
    }
}

// Each failure of the start: its trace lines, its code, and no row half filled.
TEST_F(ImageUtilTest, StartFailures) {
    const std::wstring initFailed = L"E:CGdiplusUtil::InitGdiplus> InitFormatCodeConversionTable failed";
    const std::wstring prefix = L"E:CGdiplusUtil::InitFormatCodeConversionTable> ";
    struct Case {
        GdipOp op;
        Status status;
        HRESULT table;  // InitFormatCodeConversionTable's result
        std::vector<std::wstring> traces;
    };
    const Case cases[] = {
        {GdipOp::Startup, GenericError, S_OK, {L"E:CGdiplusUtil::InitGdiplus> GdiplusStartup failed"}},
        {GdipOp::EncodersSize, OutOfMemory, E_OUTOFMEMORY, {prefix + L"GetImageEncodersSize Failed", initFailed}},
        {GdipOp::Alloc, Ok, E_OUTOFMEMORY, {prefix + L"Failed to alloc mem for ImageCodecInfo array", initFailed}},
        {GdipOp::Encoders, InsufficientBuffer, static_cast<HRESULT>(0x8007007Au),
         {prefix + L"GetImageEncoders Failed", initFailed}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.op));
        CGdiplusUtil util(gdip);
        gdip.Fail(c.op, c.status);
        util.InitGdiplus();
        EXPECT_EQ(c.traces, Traces());
        for (const auto& row : util.m_formatTable) EXPECT_FALSE(row.installed);
        EXPECT_EQ(c.op == GdipOp::Startup ? 0 : 1, gdip.LiveTokens());
        if (c.op != GdipOp::Startup) {
            gdip.Fail(c.op, c.status);
            EXPECT_EQ(c.table, util.InitFormatCodeConversionTable());
            Traces();
        }
        // Saving with the empty table names the search's code as "hr" and answers 0x80004005.
        EXPECT_EQ(E_FAIL, util.GdiplusFileSave(nullptr, PathOf("x.jpg").c_str()));
        EXPECT_EQ((std::vector<std::wstring>{kProbeMissing,
                                             L"E:CGdiplusUtil::GdiplusFileSave> FormatCodeToGdiplusEncoder Failed, "
                                             L"hr = 0x80004005"}),
                  Traces());
    }
}

TEST_F(ImageUtilTest, FormatCodeLookUp) {
    CGdiplusUtil util(gdip);  // not started: no row has an encoder
    CLSID clsid{};
    EXPECT_EQ(static_cast<HRESULT>(0x80070103u), util.FormatCodeToGdiplusEncoder(0x3000, &clsid));
    EXPECT_EQ(E_FAIL, util.FormatCodeToGdiplusEncoder(0x380B, &clsid));
    util.SetFormatCodeEncoder(0x1234, CLSID{7});  // no such row: nothing
    util.SetFormatCodeEncoder(0x380B, CLSID{9});
    EXPECT_EQ(S_OK, util.FormatCodeToGdiplusEncoder(0x380B, &clsid));
    EXPECT_EQ(9u, clsid.Data1);
    EXPECT_EQ((std::vector<std::wstring>{
                  L"E:CGdiplusUtil::FormatCodeToGdiplusEncoder> This FormatCode ( 0x3000 ) is not supported by any of "
                  L"the existing GDI+ encoder",
                  L"E:CGdiplusUtil::FormatCodeToGdiplusEncoder> Codec is not installed for formatCode 0x380B",
                  L"S:CGdiplusUtil::FormatCodeToGdiplusEncoder> This FormatCode ( 0x380B ) is supported by one of the "
                  L"existing GDI+ encoder"}),
              Traces());
}

TEST_F(ImageUtilTest, StatusMapping) {
    CGdiplusUtil util(gdip);
    const std::pair<int, uint32_t> fixed[] = {
        {0, 0},           {2, 0x80070057u},  {3, 0x8007000Eu},  {4, 0x800700AAu},  {5, 0x8007007Au},  {6, 0x80004001u},
        {8, 0x80004005u}, {9, 0x80004004u},  {10, 0x80070002u}, {11, 0x80004005u}, {12, 0x80070005u}, {13, 0x80004005u},
        {14, 0x80004005u}, {17, 0x80004005u}, {19, 0x80004005u}, {20, 0x80004005u}};
    for (const auto& f : fixed) EXPECT_EQ(static_cast<HRESULT>(f.second), util.Gdi2HResult(static_cast<Status>(f.first))) << f.first;
    EXPECT_TRUE(Traces().empty());
    // GenericError and Win32Error take the last platform error.
    const std::pair<DWORD, uint32_t> errors[] = {
        {0, 0}, {5, 0x80070005u}, {0x12345, 0x80072345u}, {0x80004005u, 0x80004005u}};
    for (Status status : {GenericError, Win32Error})
        for (const auto& e : errors) {
            gdip.lastError = e.first;
            EXPECT_EQ(static_cast<HRESULT>(e.second), util.Gdi2HResult(status)) << e.first;
        }
    EXPECT_EQ(E_FAIL, util.Gdi2HResult(static_cast<Status>(21)));
    EXPECT_EQ(E_FAIL, util.Gdi2HResult(static_cast<Status>(-4)));
    EXPECT_EQ((std::vector<std::wstring>{L"E:CGdiplusUtil::Gdi2HResult> Unknown Gdi+ error = 21",
                                         L"E:CGdiplusUtil::Gdi2HResult> Unknown Gdi+ error = -4"}),
              Traces());
}

// Two divisions in order and truncation: H / (W / DW) is a pixel below H * DW / W in some rows.
TEST_F(ImageUtilTest, FitTable) {
    struct Case { UINT w, h, dw, dh, outW, outH; };
    const Case cases[] = {
        {100, 50, 200, 200, 200, 100},   // enlarges
        {300, 200, 150, 90, 135, 90},    // hW = 100 > 90: wH and DH
        {100, 100, 90, 150, 90, 90},     // square, DW <= DH
        {100, 100, 150, 90, 90, 90},     // square, DW > DH
        {100, 100, 120, 120, 120, 120},  // square, equal box
        {100, 200, 40, 180, 40, 80},     // wH = 90 > 40: DW and hW
        {14, 7, 200, 200, 200, 99},   // 14 * 200 / 7 would give 100
        {7, 21, 150, 150, 49, 150},   // 7 * 150 / 21 would give 50
        {33, 55, 180, 180, 107, 180},  // 33 * 180 / 55 would give 108
        {4224, 3168, 180, 180, 180, 135},
    };
    for (const Case& c : cases) {
        CGdiplusUtil util(gdip);
        UINT w = c.w, h = c.h;
        util.FitImageToDeviceDimension(&w, &h, c.dw, c.dh);
        EXPECT_EQ(c.outW, w) << c.w << "x" << c.h << " in " << c.dw << "x" << c.dh;
        EXPECT_EQ(c.outH, h) << c.w << "x" << c.h << " in " << c.dw << "x" << c.dh;
        wchar_t line[100];
        swprintf(line, 100, L"S:CGdiplusUtil::FitImageToDeviceDimension> ImageWidth = %u, ImageHeight = %u", c.outW,
                 c.outH);
        EXPECT_EQ(std::vector<std::wstring>{line}, Traces());
    }
    // Zero sizes are never passed; they give defined numbers all the same.
    CGdiplusUtil util(gdip);
    const UINT zeros[][4] = {{0, 0, 180, 180}, {0, 50, 180, 180}, {50, 0, 180, 180}, {50, 20, 0, 0}};
    for (const auto& z : zeros) {
        UINT w = z[0], h = z[1];
        util.FitImageToDeviceDimension(&w, &h, z[2], z[3]);
        EXPECT_LE(w, 180u);
        EXPECT_LE(h, 180u);
    }
}

TEST_F(ImageUtilTest, OpenGivesTheFormatCodeOrTheDocumentedFailure) {
    CGdiplusUtil util(gdip);
    const std::pair<GUID, DWORD> formats[] = {{ImageFormatJPEG, 0x3801}, {ImageFormatPNG, 0x380B}, {ImageFormatIcon, 0x3000}};
    for (const auto& f : formats) {
        WritePicture("p.img", Picture(f.first, 20, 10));
        CGdipBitmap* bitmap = nullptr;
        DWORD code = 0;
        EXPECT_EQ(S_OK, util.GdiplusFileOpen(&bitmap, &code, PathOf("p.img").c_str()));
        EXPECT_EQ(f.second, code);
        ASSERT_NE(nullptr, bitmap);
        EXPECT_EQ(20u, bitmap->GetWidth());
        CGdipBitmap::Delete(bitmap);
    }
    keptFiles = {"p.img"};
    const std::wstring notImage =
        L"E:CGdiplusUtil::GdiplusFileOpen> Bitmap::FromFile failed, the file is either not a valid image file or GDI+ "
        L"don't have a decoder to open it...";
    struct Case {
        const char* file;
        GdipOp op;  // failed on demand; Count: none
        Status status;
        HRESULT hr;
        std::wstring trace;
    };
    const Case cases[] = {
        // (a text, an empty, a missing file: the same code and line, under Wine)
        {"p.img", GdipOp::FromFile, AccessDenied, static_cast<HRESULT>(0x8007000Du), notImage},
        {"p.img", GdipOp::Alloc, Ok, E_OUTOFMEMORY,
         L"E:CGdiplusUtil::GdiplusFileOpen> Can't create an Image object from the source file"},
        {"p.img", GdipOp::RawFormat, ObjectBusy, static_cast<HRESULT>(0x800700AAu),
         L"E:CGdiplusUtil::GdiplusFileOpen> ppBitmap->GetRawFormat Failed"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        if (c.op != GdipOp::Count) gdip.Fail(c.op, c.status);
        CGdipBitmap* bitmap = reinterpret_cast<CGdipBitmap*>(1);
        DWORD code = 7;
        EXPECT_EQ(c.hr, util.GdiplusFileOpen(&bitmap, &code, PathOf(c.file).c_str()));
        EXPECT_EQ(nullptr, bitmap);
        EXPECT_EQ(0u, code);
        EXPECT_EQ(std::vector<std::wstring>{c.trace}, Traces());
    }
}

TEST_F(ImageUtilTest, SaveWritesAJpegAtQuality85ThroughRow3801) {
    gdip.encoders = {MakeEncoder(ImageFormatJPEG, L"JPEG", 2), MakeEncoder(ImageFormatEXIF, L"EXIF", 4)};
    CGdiplusUtil util(gdip);
    util.InitGdiplus();
    KxBitmapPtr bitmap(CGdipBitmap::Create(gdip, 30, 20, PixelFormat32bppARGB));
    Traces();
    ASSERT_EQ(S_OK, util.GdiplusFileSave(bitmap.get(), PathOf("out.jpg").c_str()));
    EXPECT_EQ(std::vector<std::wstring>{kProbeFound}, Traces());
    std::vector<BYTE> bytes;
    FakePicture saved;
    ASSERT_TRUE(ReadBytes(NativeOf("out.jpg"), &bytes));
    ASSERT_TRUE(DecodeFakePicture(bytes, &saved));
    EXPECT_EQ(85u, saved.quality);
    keptFiles = {"out.jpg"};
    // A failed write: the platform's status mapped, no trace line of its own.
    EXPECT_EQ(static_cast<HRESULT>(0x80070003u), util.GdiplusFileSave(bitmap.get(), PathOf("no/such/x.jpg").c_str()));
    EXPECT_EQ(std::vector<std::wstring>{kProbeFound}, Traces());
}

TEST_F(ImageUtilTest, ResizeFitsDrawsWithTheQualitySettingsAndReportsEachFailure) {
    CGdiplusUtil util(gdip);
    KxBitmapPtr source(CGdipBitmap::Create(gdip, 1000, 500, PixelFormat32bppARGB));
    CGdipBitmap* dest = nullptr;
    ASSERT_EQ(S_OK, util.ResizeImage(source.get(), &dest, 180, 180));
    KxBitmapPtr owned(dest);
    EXPECT_EQ(180u, dest->GetWidth());
    EXPECT_EQ(90u, dest->GetHeight());
    EXPECT_EQ((std::vector<std::pair<GdipOp, int>>{{GdipOp::SetPixelOffset, 2}, {GdipOp::SetSmoothing, 2},
                                                   {GdipOp::SetInterpolation, 7}}),
              gdip.qualitySettings);
    ASSERT_EQ(1u, gdip.draws.size());
    EXPECT_EQ(1000u, gdip.draws[0].sourceWidth);
    EXPECT_EQ((std::vector<INT>{0, 0, 180, 90}),
              (std::vector<INT>{gdip.draws[0].x, gdip.draws[0].y, gdip.draws[0].width, gdip.draws[0].height}));
    Traces();

    const std::wstring fit = L"S:CGdiplusUtil::FitImageToDeviceDimension> ImageWidth = 180, ImageHeight = 90";
    struct Case { GdipOp op; Status status; HRESULT hr; bool destMade; std::vector<std::wstring> traces; };
    const Case cases[] = {
        {GdipOp::Alloc, Ok, E_OUTOFMEMORY, false, {fit, L"E:CGdiplusUtil::ResizeImage> Failed to create dest bitmap object"}},
        {GdipOp::FromScan0, OutOfMemory, static_cast<HRESULT>(0x8007000Du), true,
         {fit, L"E:CGdiplusUtil::ResizeImage> graphics constructor"}},
        {GdipOp::GraphicsContext, OutOfMemory, static_cast<HRESULT>(0x8007000Du), true,
         {fit, L"E:CGdiplusUtil::ResizeImage> graphics constructor"}},
        {GdipOp::SetPixelOffset, NotImplemented, S_OK, true, {fit}},
        {GdipOp::SetInterpolation, InvalidParameter, S_OK, true, {fit}},
        {GdipOp::DrawImage, WrongState, E_FAIL, true, {fit, L"E:CGdiplusUtil::ResizeImage> graphics.DrawImage failed"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.op));
        gdip.Fail(c.op, c.status);
        CGdipBitmap* out = nullptr;
        EXPECT_EQ(c.hr, util.ResizeImage(source.get(), &out, 180, 180));
        EXPECT_EQ(c.destMade, out != nullptr) << "the caller deletes whatever stands there";
        CGdipBitmap::Delete(out);
        EXPECT_EQ(c.traces, Traces());
    }
    // A source whose size cannot be read is drawn into a bitmap that cannot be made.
    gdip.Fail(GdipOp::Width, InvalidParameter);
    CGdipBitmap* out = nullptr;
    EXPECT_EQ(static_cast<HRESULT>(0x8007000Du), util.ResizeImage(source.get(), &out, 180, 180));
    CGdipBitmap::Delete(out);
}

TEST_F(ImageUtilTest, CopyMetaDataRewritesBothSizeTagsInPlace) {
    CGdiplusUtil util(gdip);
    FakePicture picture = Picture(ImageFormatJPEG, 1000, 500);
    picture.properties = {SizeTag(0x100, PropertyTagTypeShort, 1000), SizeTag(0x101, PropertyTagTypeLong, 500),
                          FakeProperty{0x10F, 2, {'C', 'a', 'm', 0}}, FakeProperty{0x112, 3, {6, 0}}};
    WritePicture("src.jpg", picture);
    keptFiles = {"src.jpg"};
    CGdipBitmap* opened = nullptr;
    DWORD code = 0;
    ASSERT_EQ(S_OK, util.GdiplusFileOpen(&opened, &code, PathOf("src.jpg").c_str()));
    KxBitmapPtr source(opened);
    KxBitmapPtr dest(CGdipBitmap::Create(gdip, 180, 90, PixelFormat32bppARGB));
    // A short tag takes the low 16 bits of 70000 (4464); the long one the whole number.
    ASSERT_EQ(S_OK, util.CopyMetaData(source.get(), dest.get(), 70000, 90));
    EXPECT_EQ((std::vector<std::wstring>{
                  L"S:CGdiplusUtil::CopyMetaData> No. of properties = 4, Buffer size required = " +
                      std::to_wstring(4 * sizeof(PropertyItem) + 2 + 4 + 4 + 2),
                  L"S:CGdiplusUtil::CopyMetaData> Updating [PropertyTagImageWidth] metadata = 70000",
                  L"S:CGdiplusUtil::CopyMetaData> Updating [PropertyTagImageHeight] metadata = 90"}),
              Traces());
    const FakePicture* copied = gdip.Picture(dest->Native());
    ASSERT_EQ(4u, copied->properties.size());
    EXPECT_EQ((std::vector<BYTE>{0x70, 0x11}), copied->properties[0].value);
    EXPECT_EQ(PropertyTagTypeShort, copied->properties[0].type);
    EXPECT_EQ((std::vector<BYTE>{90, 0, 0, 0}), copied->properties[1].value);
    EXPECT_EQ(picture.properties[2].value, copied->properties[2].value);
    EXPECT_EQ(picture.properties[3].value, copied->properties[3].value);
}

TEST_F(ImageUtilTest, CopyMetaDataFailuresAndEdges) {
    CGdiplusUtil util(gdip);
    const std::wstring sizeFailed = L"E:CGdiplusUtil::CopyMetaData> pSrcBitmap->GetPropertySize failed";
    const std::wstring none = L"S:CGdiplusUtil::CopyMetaData> No. of properties = 0, Buffer size required = 0";
    // An image without metadata: Ok with zero items where the platform has a store, PropertyNotFound where not.
    for (bool store : {true, false}) {
        gdip.scan0Metadata = store;
        KxBitmapPtr source(CGdipBitmap::Create(gdip, 10, 10, PixelFormat32bppARGB));
        KxBitmapPtr dest(CGdipBitmap::Create(gdip, 10, 10, PixelFormat32bppARGB));
        EXPECT_EQ(store ? S_OK : E_FAIL, util.CopyMetaData(source.get(), dest.get(), 5, 5));
        EXPECT_EQ(std::vector<std::wstring>{store ? none : sizeFailed}, Traces());
    }
    gdip.scan0Metadata = true;
    FakePicture picture = Picture(ImageFormatJPEG, 40, 30);
    // A damaged width tag that claims 8 bytes: the platform must not read past the number.
    picture.properties = {FakeProperty{0x100, PropertyTagTypeLong, {1, 2, 3, 4, 5, 6, 7, 8}},
                          FakeProperty{0x131, 2, {'x', 0}}};
    WritePicture("src.jpg", picture);
    keptFiles = {"src.jpg"};
    CGdipBitmap* opened = nullptr;
    DWORD code = 0;
    ASSERT_EQ(S_OK, util.GdiplusFileOpen(&opened, &code, PathOf("src.jpg").c_str()));
    KxBitmapPtr source(opened);
    KxBitmapPtr dest(CGdipBitmap::Create(gdip, 4, 3, PixelFormat32bppARGB));
    ASSERT_EQ(S_OK, util.CopyMetaData(source.get(), dest.get(), 0x01020304, 3));
    EXPECT_EQ((std::vector<BYTE>{4, 3, 2, 1, 0, 0, 0, 0}), gdip.Picture(dest->Native())->properties[0].value);
    Traces();

    struct Case {
        GdipOp op;
        Status status;
        HRESULT hr;
        std::wstring trace;  // after the count line, if any
    };
    const Case cases[] = {
        {GdipOp::PropertySize, Aborted, E_ABORT, sizeFailed},
        {GdipOp::Alloc, Ok, E_OUTOFMEMORY,
         L"E:CGdiplusUtil::CopyMetaData> Out of memory when trying to allocate buffer to retrieve image properties"},
        {GdipOp::AllPropertyItems, InsufficientBuffer, static_cast<HRESULT>(0x8007007Au),
         L"E:CGdiplusUtil::CopyMetaData> pSrcBitmap->GetAllPropertyItems failed"},
        {GdipOp::SetPropertyItem, PropertyNotSupported, S_OK,  // stored on the destination, not a stop
         L"S:CGdiplusUtil::CopyMetaData> Updating [PropertyTagImageWidth] metadata = 9"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.op));
        KxBitmapPtr target(CGdipBitmap::Create(gdip, 4, 3, PixelFormat32bppARGB));
        gdip.Fail(c.op, c.status);
        const int setsBefore = gdip.Calls(GdipOp::SetPropertyItem);
        EXPECT_EQ(c.hr, util.CopyMetaData(source.get(), target.get(), 9, 3));
        std::vector<std::wstring> lines = Traces();
        EXPECT_EQ(c.trace, lines.size() == 1 ? lines[0] : lines.at(1));
        if (c.op == GdipOp::SetPropertyItem) {
            EXPECT_EQ(setsBefore + 2, gdip.Calls(GdipOp::SetPropertyItem)) << "the loop goes on";
            EXPECT_EQ(PropertyNotSupported, target->GetLastStatus());
            EXPECT_EQ(1u, gdip.Picture(target->Native())->properties.size());
        }
    }
}

// The platform objects' last status: a failure stores, a success leaves it, reading takes it.
TEST_F(ImageUtilTest, LastStatusOfBitmapsAndSurfaces) {
    KxBitmapPtr bitmap(CGdipBitmap::Create(gdip, 8, 8, PixelFormat32bppARGB));
    EXPECT_EQ(Ok, bitmap->GetLastStatus());
    gdip.Fail(GdipOp::Width, ValueOverflow);
    EXPECT_EQ(0u, bitmap->GetWidth());
    EXPECT_EQ(8u, bitmap->GetHeight());
    EXPECT_EQ(ValueOverflow, bitmap->GetLastStatus()) << "a success left the failure";
    EXPECT_EQ(Ok, bitmap->GetLastStatus()) << "reading reset it";
    {
        CGdipGraphics graphics(bitmap.get());
        gdip.Fail(GdipOp::SetSmoothing, ObjectBusy);
        EXPECT_EQ(ObjectBusy, graphics.SetSmoothingMode(2));
        EXPECT_EQ(Ok, graphics.SetInterpolationMode(7));
        EXPECT_EQ(ObjectBusy, graphics.GetLastStatus());
        EXPECT_EQ(Ok, graphics.GetLastStatus());
    }
    CGdipBitmap* none = CGdipBitmap::FromFile(gdip, PathOf("missing").c_str());
    ASSERT_NE(nullptr, none);
    EXPECT_EQ(InvalidParameter, none->GetLastStatus());
    EXPECT_EQ(0u, none->GetWidth()) << "a bitmap that failed has size 0";
    CGdipBitmap::Delete(none);
    CGdipGraphics noTarget(nullptr);
    EXPECT_EQ(InvalidParameter, noTarget.GetLastStatus());
}

}  // namespace
}  // namespace kxtest
