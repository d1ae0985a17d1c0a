// Forwarding of the flat functions to gdiplus.dll. The records of gdiplus_flat.h have the
// platform's layout (asserted below), so buffers and statuses pass through as they are.
#include "imaging/win32/gdiplus_flat_win32.h"

#include <windows.h>
#include <gdiplus.h>

#include <cstddef>

namespace G = Gdiplus;
namespace F = Gdiplus::DllExports;
using kxgdip::GpGraphics;
using kxgdip::GpImage;
using kxgdip::Status;

static_assert(sizeof(kxgdip::ImageCodecInfo) == sizeof(G::ImageCodecInfo), "codec record layout");
static_assert(offsetof(kxgdip::ImageCodecInfo, FormatID) == offsetof(G::ImageCodecInfo, FormatID), "codec record");
static_assert(offsetof(kxgdip::ImageCodecInfo, CodecName) == offsetof(G::ImageCodecInfo, CodecName), "codec record");
static_assert(offsetof(kxgdip::ImageCodecInfo, SigMask) == offsetof(G::ImageCodecInfo, SigMask), "codec record");
static_assert(sizeof(kxgdip::PropertyItem) == sizeof(G::PropertyItem), "property item layout");
static_assert(offsetof(kxgdip::PropertyItem, type) == offsetof(G::PropertyItem, type), "property item layout");
static_assert(offsetof(kxgdip::PropertyItem, value) == offsetof(G::PropertyItem, value), "property item layout");
static_assert(sizeof(kxgdip::EncoderParameters) == sizeof(G::EncoderParameters), "encoder parameters layout");
static_assert(offsetof(kxgdip::EncoderParameter, Value) == offsetof(G::EncoderParameter, Value), "encoder parameter");
static_assert(sizeof(kxgdip::GdiplusStartupInput) == sizeof(G::GdiplusStartupInput), "start record layout");
static_assert(static_cast<int>(kxgdip::PropertyNotSupported) == static_cast<int>(G::PropertyNotSupported), "status numbers");

namespace {

Status S(G::Status status) { return static_cast<Status>(status); }
G::GpBitmap* B(GpImage* image) { return reinterpret_cast<G::GpBitmap*>(image); }
G::GpImage* I(GpImage* image) { return reinterpret_cast<G::GpImage*>(image); }
G::GpGraphics* Gr(GpGraphics* graphics) { return reinterpret_cast<G::GpGraphics*>(graphics); }

}  // namespace

kxgdip::IGdiplusFlat& KxGdiplusPlatform() {
    static CGdiplusFlatWin32 platform;
    return platform;
}

Status CGdiplusFlatWin32::GdiplusStartup(ULONG_PTR* token, const kxgdip::GdiplusStartupInput* input, void* output) {
    G::GdiplusStartupInput in;
    in.GdiplusVersion = input->GdiplusVersion;
    in.DebugEventCallback = reinterpret_cast<G::DebugEventProc>(input->DebugEventCallback);
    in.SuppressBackgroundThread = input->SuppressBackgroundThread;
    in.SuppressExternalCodecs = input->SuppressExternalCodecs;
    return S(G::GdiplusStartup(token, &in, static_cast<G::GdiplusStartupOutput*>(output)));
}

void CGdiplusFlatWin32::GdiplusShutdown(ULONG_PTR token) { G::GdiplusShutdown(token); }
void* CGdiplusFlatWin32::GdipAlloc(size_t size) { return F::GdipAlloc(size); }
void CGdiplusFlatWin32::GdipFree(void* block) { F::GdipFree(block); }

Status CGdiplusFlatWin32::GdipGetImageEncodersSize(UINT* numEncoders, UINT* size) {
    return S(F::GdipGetImageEncodersSize(numEncoders, size));
}

Status CGdiplusFlatWin32::GdipGetImageEncoders(UINT numEncoders, UINT size, kxgdip::ImageCodecInfo* encoders) {
    return S(F::GdipGetImageEncoders(numEncoders, size, reinterpret_cast<G::ImageCodecInfo*>(encoders)));
}

Status CGdiplusFlatWin32::GdipCreateBitmapFromFile(const WCHAR* fileName, GpImage** bitmap) {
    G::GpBitmap* made = nullptr;
    Status status = S(F::GdipCreateBitmapFromFile(fileName, &made));
    *bitmap = reinterpret_cast<GpImage*>(made);
    return status;
}

Status CGdiplusFlatWin32::GdipCreateBitmapFromStream(IStream* stream, GpImage** bitmap) {
    G::GpBitmap* made = nullptr;
    Status status = S(F::GdipCreateBitmapFromStream(stream, &made));
    *bitmap = reinterpret_cast<GpImage*>(made);
    return status;
}

Status CGdiplusFlatWin32::GdipCreateBitmapFromHBITMAP(HBITMAP source, GpImage** bitmap) {
    G::GpBitmap* made = nullptr;
    Status status = S(F::GdipCreateBitmapFromHBITMAP(source, nullptr, &made));
    *bitmap = reinterpret_cast<GpImage*>(made);
    return status;
}

Status CGdiplusFlatWin32::GdipCreateBitmapFromScan0(INT width, INT height, INT stride, kxgdip::PixelFormat format,
                                                     BYTE* scan0, GpImage** bitmap) {
    G::GpBitmap* made = nullptr;
    Status status = S(F::GdipCreateBitmapFromScan0(width, height, stride, format, scan0, &made));
    *bitmap = reinterpret_cast<GpImage*>(made);
    return status;
}

Status CGdiplusFlatWin32::GdipDisposeImage(GpImage* image) { return S(F::GdipDisposeImage(I(image))); }

Status CGdiplusFlatWin32::GdipGetImageRawFormat(GpImage* image, GUID* format) {
    return S(F::GdipGetImageRawFormat(I(image), format));
}

Status CGdiplusFlatWin32::GdipGetImageWidth(GpImage* image, UINT* width) { return S(F::GdipGetImageWidth(I(image), width)); }

Status CGdiplusFlatWin32::GdipGetImageHeight(GpImage* image, UINT* height) {
    return S(F::GdipGetImageHeight(I(image), height));
}

Status CGdiplusFlatWin32::GdipGetImageGraphicsContext(GpImage* image, GpGraphics** graphics) {
    G::GpGraphics* made = nullptr;
    Status status = S(F::GdipGetImageGraphicsContext(I(image), &made));
    *graphics = reinterpret_cast<GpGraphics*>(made);
    return status;
}

Status CGdiplusFlatWin32::GdipDeleteGraphics(GpGraphics* graphics) { return S(F::GdipDeleteGraphics(Gr(graphics))); }

Status CGdiplusFlatWin32::GdipSetPixelOffsetMode(GpGraphics* graphics, int mode) {
    return S(F::GdipSetPixelOffsetMode(Gr(graphics), static_cast<G::PixelOffsetMode>(mode)));
}

Status CGdiplusFlatWin32::GdipSetSmoothingMode(GpGraphics* graphics, int mode) {
    return S(F::GdipSetSmoothingMode(Gr(graphics), static_cast<G::SmoothingMode>(mode)));
}

Status CGdiplusFlatWin32::GdipSetInterpolationMode(GpGraphics* graphics, int mode) {
    return S(F::GdipSetInterpolationMode(Gr(graphics), static_cast<G::InterpolationMode>(mode)));
}

Status CGdiplusFlatWin32::GdipDrawImageRectI(GpGraphics* graphics, GpImage* image, INT x, INT y, INT width, INT height) {
    return S(F::GdipDrawImageRectI(Gr(graphics), I(image), x, y, width, height));
}

Status CGdiplusFlatWin32::GdipSaveImageToFile(GpImage* image, const WCHAR* fileName, const CLSID* encoder,
                                               const kxgdip::EncoderParameters* parameters) {
    return S(F::GdipSaveImageToFile(I(image), fileName, encoder,
                                    reinterpret_cast<const G::EncoderParameters*>(parameters)));
}

Status CGdiplusFlatWin32::GdipGetPropertySize(GpImage* image, UINT* totalBufferSize, UINT* numProperties) {
    return S(F::GdipGetPropertySize(I(image), totalBufferSize, numProperties));
}

Status CGdiplusFlatWin32::GdipGetAllPropertyItems(GpImage* image, UINT totalBufferSize, UINT numProperties,
                                                   kxgdip::PropertyItem* allItems) {
    return S(F::GdipGetAllPropertyItems(I(image), totalBufferSize, numProperties,
                                        reinterpret_cast<G::PropertyItem*>(allItems)));
}

Status CGdiplusFlatWin32::GdipSetPropertyItem(GpImage* image, const kxgdip::PropertyItem* item) {
    return S(F::GdipSetPropertyItem(I(image), reinterpret_cast<const G::PropertyItem*>(item)));
}

Status CGdiplusFlatWin32::GdipCreateHBITMAPFromBitmap(GpImage* bitmap, HBITMAP* result, DWORD background) {
    return S(F::GdipCreateHBITMAPFromBitmap(B(bitmap), result, background));
}

Status CGdiplusFlatWin32::GdipImageRotateFlip(GpImage* image, int rotateFlipType) {
    return S(F::GdipImageRotateFlip(I(image), static_cast<G::RotateFlipType>(rotateFlipType)));
}

DWORD CGdiplusFlatWin32::GetLastError() { return ::GetLastError(); }
