// The imaging platform itself: every flat function forwards to gdiplus.dll.
#pragma once

#include "imaging/gdiplus_flat.h"

// The process's one real platform (it holds no state of its own).
kxgdip::IGdiplusFlat& KxGdiplusPlatform();

// The same functions as a class, for tests and benchmarks that count or time a call by deriving.
class CGdiplusFlatWin32 : public kxgdip::IGdiplusFlat {
public:
    kxgdip::Status GdiplusStartup(ULONG_PTR* token, const kxgdip::GdiplusStartupInput* input, void* output) override;
    void GdiplusShutdown(ULONG_PTR token) override;
    void* GdipAlloc(size_t size) override;
    void GdipFree(void* block) override;
    kxgdip::Status GdipGetImageEncodersSize(UINT* numEncoders, UINT* size) override;
    kxgdip::Status GdipGetImageEncoders(UINT numEncoders, UINT size, kxgdip::ImageCodecInfo* encoders) override;
    kxgdip::Status GdipCreateBitmapFromFile(const WCHAR* fileName, kxgdip::GpImage** bitmap) override;
    kxgdip::Status GdipCreateBitmapFromStream(IStream* stream, kxgdip::GpImage** bitmap) override;
    kxgdip::Status GdipCreateBitmapFromHBITMAP(HBITMAP source, kxgdip::GpImage** bitmap) override;
    kxgdip::Status GdipCreateBitmapFromScan0(INT width, INT height, INT stride, kxgdip::PixelFormat format,
                                             BYTE* scan0, kxgdip::GpImage** bitmap) override;
    kxgdip::Status GdipDisposeImage(kxgdip::GpImage* image) override;
    kxgdip::Status GdipGetImageRawFormat(kxgdip::GpImage* image, GUID* format) override;
    kxgdip::Status GdipGetImageWidth(kxgdip::GpImage* image, UINT* width) override;
    kxgdip::Status GdipGetImageHeight(kxgdip::GpImage* image, UINT* height) override;
    kxgdip::Status GdipGetImageGraphicsContext(kxgdip::GpImage* image, kxgdip::GpGraphics** graphics) override;
    kxgdip::Status GdipDeleteGraphics(kxgdip::GpGraphics* graphics) override;
    kxgdip::Status GdipSetPixelOffsetMode(kxgdip::GpGraphics* graphics, int mode) override;
    kxgdip::Status GdipSetSmoothingMode(kxgdip::GpGraphics* graphics, int mode) override;
    kxgdip::Status GdipSetInterpolationMode(kxgdip::GpGraphics* graphics, int mode) override;
    kxgdip::Status GdipDrawImageRectI(kxgdip::GpGraphics* graphics, kxgdip::GpImage* image, INT x, INT y, INT width,
                                      INT height) override;
    kxgdip::Status GdipSaveImageToFile(kxgdip::GpImage* image, const WCHAR* fileName, const CLSID* encoder,
                                       const kxgdip::EncoderParameters* parameters) override;
    kxgdip::Status GdipGetPropertySize(kxgdip::GpImage* image, UINT* totalBufferSize, UINT* numProperties) override;
    kxgdip::Status GdipGetAllPropertyItems(kxgdip::GpImage* image, UINT totalBufferSize, UINT numProperties,
                                           kxgdip::PropertyItem* allItems) override;
    kxgdip::Status GdipSetPropertyItem(kxgdip::GpImage* image, const kxgdip::PropertyItem* item) override;
    kxgdip::Status GdipCreateHBITMAPFromBitmap(kxgdip::GpImage* bitmap, HBITMAP* result, DWORD background) override;
    kxgdip::Status GdipImageRotateFlip(kxgdip::GpImage* image, int rotateFlipType) override;
    DWORD GetLastError() override;
};
