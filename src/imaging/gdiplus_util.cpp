// CGdiplusUtil: platform start, the format table, opening and saving.
#include "imaging/gdiplus_util.h"

#include "frame/trace_log.h"

using namespace kxgdip;

namespace {

const DWORD kTableOrder[CGdiplusUtil::kFormatRows] = {KX_FORMAT_BMP, KX_FORMAT_EXIF_JPEG, KX_FORMAT_GIF, KX_FORMAT_TIFF,
                                                       KX_FORMAT_PNG};

// Buffers for the platform's answers come from its own allocator and go back to it.
struct PlatformBlock {
    PlatformBlock(IGdiplusFlat& gdip, size_t size) : gdip(gdip), data(gdip.GdipAlloc(size)) {}
    ~PlatformBlock() {
        if (data) gdip.GdipFree(data);
    }
    PlatformBlock(const PlatformBlock&) = delete;
    PlatformBlock& operator=(const PlatformBlock&) = delete;
    IGdiplusFlat& gdip;
    void* data;
};

}  // namespace

CGdiplusUtil::CGdiplusUtil(IGdiplusFlat& gdip) : m_gdiplusToken(0), m_gdip(gdip) {
    for (int i = 0; i < kFormatRows; ++i) m_formatTable[i] = _tagFormatCodeConversion{kTableOrder[i], CLSID{}, FALSE};
}

CGdiplusUtil::~CGdiplusUtil() { ShutdownGdiplus(); }

void CGdiplusUtil::ShutdownGdiplus() {
    if (!m_gdiplusToken) return;
    m_gdip.GdiplusShutdown(m_gdiplusToken);
    m_gdiplusToken = 0;
}

void CGdiplusUtil::InitGdiplus() {
    // Version 1, no debug callback, the platform's background thread and external codecs allowed.
    const GdiplusStartupInput input = {1, nullptr, FALSE, FALSE};
    ULONG_PTR token = 0;
    if (m_gdip.GdiplusStartup(&token, &input, nullptr) != Ok) {
        TraceLog(L"E:CGdiplusUtil::InitGdiplus> GdiplusStartup failed");
        return;
    }
    m_gdiplusToken = token;
    if (FAILED(InitFormatCodeConversionTable()))
        TraceLog(L"E:CGdiplusUtil::InitGdiplus> InitFormatCodeConversionTable failed");
}

HRESULT CGdiplusUtil::InitFormatCodeConversionTable() {
    UINT count = 0, size = 0;
    Status status = m_gdip.GdipGetImageEncodersSize(&count, &size);
    if (status != Ok) {
        TraceLog(L"E:CGdiplusUtil::InitFormatCodeConversionTable> GetImageEncodersSize Failed");
        return Gdi2HResult(status);
    }
    // A platform with no encoders answers a size of 0; one byte is asked for then, so that an
    // empty list reads as an empty table rather than as a want of memory.
    PlatformBlock block(m_gdip, size ? size : 1);
    if (!block.data) {
        TraceLog(L"E:CGdiplusUtil::InitFormatCodeConversionTable> Failed to alloc mem for ImageCodecInfo array");
        return E_OUTOFMEMORY;
    }
    ImageCodecInfo* codecs = static_cast<ImageCodecInfo*>(block.data);
    status = m_gdip.GdipGetImageEncoders(count, size, codecs);
    if (status != Ok) {
        TraceLog(L"E:CGdiplusUtil::InitFormatCodeConversionTable> GetImageEncoders Failed");
        return Gdi2HResult(status);
    }
    // The platform lays out `count` records at the start of `size` bytes; never read past them.
    if (static_cast<size_t>(count) * sizeof(ImageCodecInfo) > size) count = size / sizeof(ImageCodecInfo);

    for (UINT i = 0; i < count; ++i) {
        const ImageCodecInfo& codec = codecs[i];
        TraceLog(L"S:CGdiplusUtil::InitFormatCodeConversionTable> Found Codec: \"%ws\"",
                 codec.CodecName ? codec.CodecName : L"");
        if (codec.FormatID == ImageFormatBMP) {
            TraceLog(L"S:CGdiplusUtil::InitFormatCodeConversionTable> It's a BMP Codec");
            SetFormatCodeEncoder(KX_FORMAT_BMP, codec.Clsid);
        } else if (codec.FormatID == ImageFormatJPEG) {
            TraceLog(L"S:CGdiplusUtil::InitFormatCodeConversionTable> It's a JFIF Codec");
            CLSID assigned;
            if (FAILED(FormatCodeToGdiplusEncoder(KX_FORMAT_EXIF_JPEG, &assigned))) {
                SetFormatCodeEncoder(KX_FORMAT_EXIF_JPEG, codec.Clsid);
                TraceLog(L"S:CGdiplusUtil::InitFormatCodeConversionTable> EXIF codec not installed, we assign this "
                         L"to the EXIF");
            }
        } else if (codec.FormatID == ImageFormatPNG) {
            TraceLog(L"S:CGdiplusUtil::InitFormatCodeConversionTable> It's a PNG Codec");
            SetFormatCodeEncoder(KX_FORMAT_PNG, codec.Clsid);
        } else if (codec.FormatID == ImageFormatTIFF) {
            TraceLog(L"S:CGdiplusUtil::InitFormatCodeConversionTable> It's a TIFF Codec");
            SetFormatCodeEncoder(KX_FORMAT_TIFF, codec.Clsid);
        } else if (codec.FormatID == ImageFormatGIF) {
            TraceLog(L"S:CGdiplusUtil::InitFormatCodeConversionTable> It's a GIF Codec");
            SetFormatCodeEncoder(KX_FORMAT_GIF, codec.Clsid);
        } else if (codec.FormatID == ImageFormatEXIF) {
            TraceLog(L"S:CGdiplusUtil::InitFormatCodeConversionTable> It's a EXIF Codec");
            SetFormatCodeEncoder(KX_FORMAT_EXIF_JPEG, codec.Clsid);
        } else {
            TraceLog(L"S:CGdiplusUtil::InitFormatCodeConversionTable> Unknown Codec");
        }
    }
    return S_OK;
}

void CGdiplusUtil::SetFormatCodeEncoder(DWORD formatCode, const CLSID& clsid) {
    for (_tagFormatCodeConversion& row : m_formatTable) {
        if (row.formatCode != formatCode) continue;
        row.encoderClsid = clsid;
        row.installed = TRUE;
        return;
    }
}

HRESULT CGdiplusUtil::FormatCodeToGdiplusEncoder(DWORD formatCode, CLSID* clsid) {
    for (const _tagFormatCodeConversion& row : m_formatTable) {
        if (row.formatCode != formatCode) continue;
        if (!row.installed) {
            TraceLog(L"E:CGdiplusUtil::FormatCodeToGdiplusEncoder> Codec is not installed for formatCode 0x%X",
                     formatCode);
            return E_FAIL;
        }
        if (clsid) *clsid = row.encoderClsid;
        TraceLog(L"S:CGdiplusUtil::FormatCodeToGdiplusEncoder> This FormatCode ( 0x%X ) is supported by one of the "
                 L"existing GDI+ encoder",
                 formatCode);
        return S_OK;
    }
    TraceLog(L"E:CGdiplusUtil::FormatCodeToGdiplusEncoder> This FormatCode ( 0x%X ) is not supported by any of the "
             L"existing GDI+ encoder",
             formatCode);
    return KX_E_FORMAT_NOT_IN_TABLE;
}

DWORD CGdiplusUtil::RawFormatToFormatCode(const GUID& format) {
    if (format == ImageFormatBMP) return KX_FORMAT_BMP;
    if (format == ImageFormatJPEG) return KX_FORMAT_EXIF_JPEG;
    if (format == ImageFormatPNG) return KX_FORMAT_PNG;
    if (format == ImageFormatTIFF) return KX_FORMAT_TIFF;
    if (format == ImageFormatGIF) return KX_FORMAT_GIF;
    if (format == ImageFormatEXIF) return KX_FORMAT_EXIF_JPEG;
    return KX_FORMAT_UNDEFINED;
}

HRESULT CGdiplusUtil::GdiplusFileOpen(CGdipBitmap** bitmap, DWORD* formatCode, const WCHAR* fileName) {
    if (!bitmap || !formatCode) return E_POINTER;
    *bitmap = nullptr;
    *formatCode = 0;
    CGdipBitmap* opened = CGdipBitmap::FromFile(m_gdip, fileName);
    if (!opened) {
        TraceLog(L"E:CGdiplusUtil::GdiplusFileOpen> Can't create an Image object from the source file");
        return E_OUTOFMEMORY;
    }
    if (opened->GetLastStatus() != Ok) {
        TraceLog(L"E:CGdiplusUtil::GdiplusFileOpen> Bitmap::FromFile failed, the file is either not a valid image "
                 L"file or GDI+ don't have a decoder to open it...");
        CGdipBitmap::Delete(opened);
        return static_cast<HRESULT>(0x8007000Du);
    }
    GUID raw;
    Status status = opened->GetRawFormat(&raw);
    if (status != Ok) {
        TraceLog(L"E:CGdiplusUtil::GdiplusFileOpen> ppBitmap->GetRawFormat Failed");
        CGdipBitmap::Delete(opened);
        return Gdi2HResult(status);
    }
    *formatCode = RawFormatToFormatCode(raw);
    *bitmap = opened;
    return S_OK;
}

HRESULT CGdiplusUtil::GdiplusFileSave(CGdipBitmap* bitmap, const WCHAR* fileName) {
    CLSID encoder;
    HRESULT hr = FormatCodeToGdiplusEncoder(KX_FORMAT_EXIF_JPEG, &encoder);
    if (FAILED(hr)) {
        TraceLog(L"E:CGdiplusUtil::GdiplusFileSave> FormatCodeToGdiplusEncoder Failed, hr = 0x%X",
                 static_cast<unsigned>(hr));
        return E_FAIL;
    }
    if (!bitmap) return E_POINTER;
    ULONG quality = kJpegQuality;
    EncoderParameters parameters;
    parameters.Count = 1;
    parameters.Parameter[0] = EncoderParameter{EncoderQuality, 1, EncoderParameterValueTypeLong, &quality};
    Status status = bitmap->Save(fileName, &encoder, &parameters);
    return status == Ok ? S_OK : Gdi2HResult(status);
}

HRESULT CGdiplusUtil::Gdi2HResult(Status status) {
    switch (status) {
        case Ok: return S_OK;
        case GenericError:
        case Win32Error: {
            // The last platform error: 0 or a negative value as it stands, else as a result code.
            const LONG error = static_cast<LONG>(m_gdip.GetLastError());
            if (error <= 0) return static_cast<HRESULT>(error);
            return static_cast<HRESULT>((static_cast<DWORD>(error) & 0xFFFFu) | 0x80070000u);
        }
        case InvalidParameter: return E_INVALIDARG;
        case OutOfMemory: return E_OUTOFMEMORY;
        case ObjectBusy: return static_cast<HRESULT>(0x800700AAu);
        case InsufficientBuffer: return static_cast<HRESULT>(0x8007007Au);
        case NotImplemented: return E_NOTIMPL;
        case WrongState: return E_FAIL;
        case Aborted: return E_ABORT;
        case FileNotFound: return static_cast<HRESULT>(0x80070002u);
        case ValueOverflow: return E_FAIL;
        case AccessDenied: return E_ACCESSDENIED;
        case UnknownImageFormat: return E_FAIL;
        case FontFamilyNotFound:
        case FontStyleNotFound:
        case NotTrueTypeFont:
        case UnsupportedGdiplusVersion:
        case GdiplusNotInitialized:
        case PropertyNotFound:
        case PropertyNotSupported: return E_FAIL;
    }
    TraceLog(L"E:CGdiplusUtil::Gdi2HResult> Unknown Gdi+ error = %d", static_cast<int>(status));
    return E_FAIL;
}
