// The imaging platform as the image code sees it: the GDI+ flat functions it calls, by their
// platform names, behind one small interface. The Win32 adapter (win32/gdiplus_flat_win32.h)
// forwards to gdiplus.dll; native tests give a fake. The records below have the platform's layout
// (the adapter asserts it), so buffers pass through unchanged.
#pragma once

#include "kx/KxPlatform.h"

#include <cstddef>

#ifndef _WIN32
struct IStream;  // only passed along; the native build has no streams of its own
#endif

namespace kxgdip {

// Statuses, with the platform's numbers.
enum Status : int {
    Ok = 0,
    GenericError = 1,
    InvalidParameter = 2,
    OutOfMemory = 3,
    ObjectBusy = 4,
    InsufficientBuffer = 5,
    NotImplemented = 6,
    Win32Error = 7,
    WrongState = 8,
    Aborted = 9,
    FileNotFound = 10,
    ValueOverflow = 11,
    AccessDenied = 12,
    UnknownImageFormat = 13,
    FontFamilyNotFound = 14,
    FontStyleNotFound = 15,
    NotTrueTypeFont = 16,
    UnsupportedGdiplusVersion = 17,
    GdiplusNotInitialized = 18,
    PropertyNotFound = 19,
    PropertyNotSupported = 20,
};

// Opaque platform objects. A bitmap is an image.
struct GpImage;
struct GpGraphics;

typedef DWORD PixelFormat;
constexpr PixelFormat PixelFormat32bppARGB = 0x26200A;

enum : int {
    PixelOffsetModeHighQuality = 2,
    SmoothingModeHighQuality = 2,
    InterpolationModeHighQualityBicubic = 7,
};

enum : ULONG {
    PropertyTagImageWidth = 0x100,
    PropertyTagImageHeight = 0x101,
};
enum : WORD {
    PropertyTagTypeShort = 3,
    PropertyTagTypeLong = 4,
};
enum : ULONG { EncoderParameterValueTypeLong = 4 };

struct GdiplusStartupInput {
    UINT GdiplusVersion;
    void* DebugEventCallback;
    BOOL SuppressBackgroundThread;
    BOOL SuppressExternalCodecs;
};

struct ImageCodecInfo {
    CLSID Clsid;
    GUID FormatID;
    const WCHAR* CodecName;
    const WCHAR* DllName;
    const WCHAR* FormatDescription;
    const WCHAR* FilenameExtension;
    const WCHAR* MimeType;
    DWORD Flags;
    DWORD Version;
    DWORD SigCount;
    DWORD SigSize;
    const BYTE* SigPattern;
    const BYTE* SigMask;
};

struct PropertyItem {
    ULONG id;
    ULONG length;  // bytes at value
    WORD type;
    void* value;
};

struct EncoderParameter {
    GUID Guid;
    ULONG NumberOfValues;
    ULONG Type;
    void* Value;
};

struct EncoderParameters {
    UINT Count;
    EncoderParameter Parameter[1];
};

// Format identifiers of loaded images and encoders.
extern const GUID ImageFormatBMP;
extern const GUID ImageFormatJPEG;
extern const GUID ImageFormatPNG;
extern const GUID ImageFormatGIF;
extern const GUID ImageFormatTIFF;
extern const GUID ImageFormatEXIF;
extern const GUID ImageFormatIcon;
extern const GUID EncoderQuality;

// The flat functions. Each answers a Status; out pointers are the platform's.
class IGdiplusFlat {
public:
    virtual ~IGdiplusFlat() = default;

    virtual Status GdiplusStartup(ULONG_PTR* token, const GdiplusStartupInput* input, void* output) = 0;
    virtual void GdiplusShutdown(ULONG_PTR token) = 0;
    // The platform's allocator (its C++ objects are made with it).
    virtual void* GdipAlloc(size_t size) = 0;
    virtual void GdipFree(void* block) = 0;

    virtual Status GdipGetImageEncodersSize(UINT* numEncoders, UINT* size) = 0;
    virtual Status GdipGetImageEncoders(UINT numEncoders, UINT size, ImageCodecInfo* encoders) = 0;

    virtual Status GdipCreateBitmapFromFile(const WCHAR* fileName, GpImage** bitmap) = 0;
    virtual Status GdipCreateBitmapFromStream(IStream* stream, GpImage** bitmap) = 0;
    virtual Status GdipCreateBitmapFromHBITMAP(HBITMAP source, GpImage** bitmap) = 0;  // no palette
    virtual Status GdipCreateBitmapFromScan0(INT width, INT height, INT stride, PixelFormat format, BYTE* scan0,
                                             GpImage** bitmap) = 0;
    virtual Status GdipDisposeImage(GpImage* image) = 0;

    virtual Status GdipGetImageRawFormat(GpImage* image, GUID* format) = 0;
    virtual Status GdipGetImageWidth(GpImage* image, UINT* width) = 0;
    virtual Status GdipGetImageHeight(GpImage* image, UINT* height) = 0;

    virtual Status GdipGetImageGraphicsContext(GpImage* image, GpGraphics** graphics) = 0;
    virtual Status GdipDeleteGraphics(GpGraphics* graphics) = 0;
    virtual Status GdipSetPixelOffsetMode(GpGraphics* graphics, int mode) = 0;
    virtual Status GdipSetSmoothingMode(GpGraphics* graphics, int mode) = 0;
    virtual Status GdipSetInterpolationMode(GpGraphics* graphics, int mode) = 0;
    virtual Status GdipDrawImageRectI(GpGraphics* graphics, GpImage* image, INT x, INT y, INT width,
                                      INT height) = 0;

    virtual Status GdipSaveImageToFile(GpImage* image, const WCHAR* fileName, const CLSID* encoder,
                                       const EncoderParameters* parameters) = 0;

    virtual Status GdipGetPropertySize(GpImage* image, UINT* totalBufferSize, UINT* numProperties) = 0;
    virtual Status GdipGetAllPropertyItems(GpImage* image, UINT totalBufferSize, UINT numProperties,
                                           PropertyItem* allItems) = 0;
    virtual Status GdipSetPropertyItem(GpImage* image, const PropertyItem* item) = 0;

    virtual Status GdipCreateHBITMAPFromBitmap(GpImage* bitmap, HBITMAP* result, DWORD background) = 0;
    virtual Status GdipImageRotateFlip(GpImage* image, int rotateFlipType) = 0;

    // The calling thread's last platform error, read when a status says GenericError or Win32Error.
    virtual DWORD GetLastError() = 0;
};

}  // namespace kxgdip
