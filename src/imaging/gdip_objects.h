// Bitmap and drawing-surface objects over the flat functions, with the platform's object
// semantics that the image code decides on: each object keeps a last status, which a failed
// operation sets, a successful one leaves, and GetLastStatus takes and resets. A bitmap is made
// with the platform's allocator; when even that fails there is no object at all (null).
#pragma once

#include "imaging/gdiplus_flat.h"

#include <memory>

class CGdipBitmap {
public:
    // Each gives null only when no object could be made; otherwise the object carries the
    // status of its creation as its last status (and no native image when that failed).
    static CGdipBitmap* FromFile(kxgdip::IGdiplusFlat& gdip, const WCHAR* fileName);
    static CGdipBitmap* FromStream(kxgdip::IGdiplusFlat& gdip, IStream* stream);
    static CGdipBitmap* FromHBITMAP(kxgdip::IGdiplusFlat& gdip, HBITMAP source);
    // An empty bitmap of that size: stride 0, no pixel buffer.
    static CGdipBitmap* Create(kxgdip::IGdiplusFlat& gdip, INT width, INT height, kxgdip::PixelFormat format);
    // Deletes the object and its native image; null does nothing.
    static void Delete(CGdipBitmap* bitmap);

    kxgdip::Status GetLastStatus();

    // 0 on failure, the status then stored.
    UINT GetWidth();
    UINT GetHeight();
    kxgdip::Status GetRawFormat(GUID* format);
    kxgdip::Status GetPropertySize(UINT* totalBufferSize, UINT* numProperties);
    kxgdip::Status GetAllPropertyItems(UINT totalBufferSize, UINT numProperties, kxgdip::PropertyItem* items);
    kxgdip::Status SetPropertyItem(const kxgdip::PropertyItem* item);
    kxgdip::Status Save(const WCHAR* fileName, const CLSID* encoder, const kxgdip::EncoderParameters* parameters);
    kxgdip::Status GetHBITMAP(DWORD background, HBITMAP* result);
    kxgdip::Status RotateFlip(int rotateFlipType);

    kxgdip::IGdiplusFlat& Platform() const { return m_gdip; }
    kxgdip::GpImage* Native() const { return m_native; }

    CGdipBitmap(const CGdipBitmap&) = delete;
    CGdipBitmap& operator=(const CGdipBitmap&) = delete;

private:
    explicit CGdipBitmap(kxgdip::IGdiplusFlat& gdip) : m_gdip(gdip) {}
    ~CGdipBitmap();
    static CGdipBitmap* Allocate(kxgdip::IGdiplusFlat& gdip);
    kxgdip::Status SetStatus(kxgdip::Status status);

    kxgdip::IGdiplusFlat& m_gdip;
    kxgdip::GpImage* m_native = nullptr;
    kxgdip::Status m_lastResult = kxgdip::Ok;
};

// Owner of a bitmap object.
struct CGdipBitmapDeleter {
    void operator()(CGdipBitmap* bitmap) const { CGdipBitmap::Delete(bitmap); }
};
typedef std::unique_ptr<CGdipBitmap, CGdipBitmapDeleter> KxBitmapPtr;

// A drawing surface over a bitmap, on the caller's stack.
class CGdipGraphics {
public:
    explicit CGdipGraphics(CGdipBitmap* target);
    ~CGdipGraphics();
    CGdipGraphics(const CGdipGraphics&) = delete;
    CGdipGraphics& operator=(const CGdipGraphics&) = delete;

    kxgdip::Status GetLastStatus();
    kxgdip::Status SetPixelOffsetMode(int mode);
    kxgdip::Status SetSmoothingMode(int mode);
    kxgdip::Status SetInterpolationMode(int mode);
    // Draws the whole image into (x, y, width, height).
    kxgdip::Status DrawImage(CGdipBitmap* image, INT x, INT y, INT width, INT height);

private:
    kxgdip::Status SetStatus(kxgdip::Status status);

    kxgdip::IGdiplusFlat* m_gdip = nullptr;
    kxgdip::GpGraphics* m_native = nullptr;
    kxgdip::Status m_lastResult = kxgdip::Ok;
};
