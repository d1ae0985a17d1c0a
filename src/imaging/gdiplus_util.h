// CGdiplusUtil: the one place where files become bitmaps and bitmaps become JPEG files. It starts
// the imaging platform, keeps a table of five format codes and their installed encoders, and
// opens, fits, resizes, copies metadata and saves, each with a result code and a trace line for
// every failure.
#pragma once

#include "imaging/gdip_objects.h"

// Format codes (the object-format numbers of the picture-transfer standards).
enum : DWORD {
    KX_FORMAT_UNDEFINED = 0x3000,
    KX_FORMAT_EXIF_JPEG = 0x3801,
    KX_FORMAT_BMP = 0x3804,
    KX_FORMAT_GIF = 0x3807,
    KX_FORMAT_PNG = 0x380B,
    KX_FORMAT_TIFF = 0x380D,
};

// "No such format code in the table": the platform's code 0x103 (no more items) as a result code.
constexpr HRESULT KX_E_FORMAT_NOT_IN_TABLE = static_cast<HRESULT>(0x80070103u);

// The JPEG quality every save asks for.
constexpr ULONG kJpegQuality = 85;

struct _tagFormatCodeConversion {
    DWORD formatCode;
    CLSID encoderClsid;  // meaningful only where installed is 1
    BOOL installed;
};

class CGdiplusUtil {
public:
    enum { kFormatRows = 5 };

    // The table holds its five codes, without encoders, until InitGdiplus.
    explicit CGdiplusUtil(kxgdip::IGdiplusFlat& gdip);
    virtual ~CGdiplusUtil();
    CGdiplusUtil(const CGdiplusUtil&) = delete;
    CGdiplusUtil& operator=(const CGdiplusUtil&) = delete;

    void InitGdiplus();
    // Gives the token back (the owner does this before its own); a second call does nothing.
    void ShutdownGdiplus();
    HRESULT InitFormatCodeConversionTable();
    HRESULT FormatCodeToGdiplusEncoder(DWORD formatCode, CLSID* clsid);
    void SetFormatCodeEncoder(DWORD formatCode, const CLSID& clsid);
    static DWORD RawFormatToFormatCode(const GUID& formatIdentifier);

    HRESULT GdiplusFileOpen(CGdipBitmap** bitmap, DWORD* formatCode, const WCHAR* fileName);
    HRESULT GdiplusFileSave(CGdipBitmap* bitmap, const WCHAR* fileName);
    HRESULT ResizeImage(CGdipBitmap* sourceBitmap, CGdipBitmap** destBitmap, UINT deviceWidth, UINT deviceHeight);
    void FitImageToDeviceDimension(UINT* imageWidth, UINT* imageHeight, UINT deviceWidth, UINT deviceHeight);
    HRESULT CopyMetaData(CGdipBitmap* sourceBitmap, CGdipBitmap* destBitmap, UINT width, UINT height);
    HRESULT Gdi2HResult(kxgdip::Status status);

    kxgdip::IGdiplusFlat& Platform() const { return m_gdip; }

    ULONG_PTR m_gdiplusToken;
    _tagFormatCodeConversion m_formatTable[kFormatRows];

private:
    kxgdip::IGdiplusFlat& m_gdip;
};
