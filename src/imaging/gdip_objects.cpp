// Bitmap and drawing-surface objects with the platform's last-status rule.
#include "imaging/gdip_objects.h"

#include <new>

using namespace kxgdip;

const GUID kxgdip::ImageFormatBMP = {0xB96B3CAB, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
const GUID kxgdip::ImageFormatJPEG = {0xB96B3CAE, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
const GUID kxgdip::ImageFormatPNG = {0xB96B3CAF, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
const GUID kxgdip::ImageFormatGIF = {0xB96B3CB0, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
const GUID kxgdip::ImageFormatTIFF = {0xB96B3CB1, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
const GUID kxgdip::ImageFormatEXIF = {0xB96B3CB2, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
const GUID kxgdip::ImageFormatIcon = {0xB96B3CB5, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
const GUID kxgdip::EncoderQuality = {0x1D5BE4B5, 0xFA4A, 0x452D, {0x9C, 0xDD, 0x5D, 0xB3, 0x51, 0x05, 0xE7, 0xEB}};

// ---- bitmap ----------------------------------------------------------------------------------------

CGdipBitmap* CGdipBitmap::Allocate(IGdiplusFlat& gdip) {
    void* block = gdip.GdipAlloc(sizeof(CGdipBitmap));
    return block ? new (block) CGdipBitmap(gdip) : nullptr;
}

CGdipBitmap* CGdipBitmap::FromFile(IGdiplusFlat& gdip, const WCHAR* fileName) {
    CGdipBitmap* bitmap = Allocate(gdip);
    if (bitmap) bitmap->m_lastResult = gdip.GdipCreateBitmapFromFile(fileName, &bitmap->m_native);
    return bitmap;
}

CGdipBitmap* CGdipBitmap::FromStream(IGdiplusFlat& gdip, IStream* stream) {
    CGdipBitmap* bitmap = Allocate(gdip);
    if (bitmap) bitmap->m_lastResult = gdip.GdipCreateBitmapFromStream(stream, &bitmap->m_native);
    return bitmap;
}

CGdipBitmap* CGdipBitmap::FromHBITMAP(IGdiplusFlat& gdip, HBITMAP source) {
    CGdipBitmap* bitmap = Allocate(gdip);
    if (bitmap) bitmap->m_lastResult = gdip.GdipCreateBitmapFromHBITMAP(source, &bitmap->m_native);
    return bitmap;
}

CGdipBitmap* CGdipBitmap::Create(IGdiplusFlat& gdip, INT width, INT height, PixelFormat format) {
    CGdipBitmap* bitmap = Allocate(gdip);
    if (bitmap)
        bitmap->m_lastResult = gdip.GdipCreateBitmapFromScan0(width, height, 0, format, nullptr, &bitmap->m_native);
    return bitmap;
}

CGdipBitmap::~CGdipBitmap() {
    if (m_native) m_gdip.GdipDisposeImage(m_native);
}

void CGdipBitmap::Delete(CGdipBitmap* bitmap) {
    if (!bitmap) return;
    IGdiplusFlat& gdip = bitmap->m_gdip;
    bitmap->~CGdipBitmap();
    gdip.GdipFree(bitmap);
}

Status CGdipBitmap::SetStatus(Status status) {
    if (status != Ok) m_lastResult = status;
    return status;
}

Status CGdipBitmap::GetLastStatus() {
    Status last = m_lastResult;
    m_lastResult = Ok;
    return last;
}

UINT CGdipBitmap::GetWidth() {
    UINT width = 0;
    SetStatus(m_gdip.GdipGetImageWidth(m_native, &width));
    return width;
}

UINT CGdipBitmap::GetHeight() {
    UINT height = 0;
    SetStatus(m_gdip.GdipGetImageHeight(m_native, &height));
    return height;
}

Status CGdipBitmap::GetRawFormat(GUID* format) { return SetStatus(m_gdip.GdipGetImageRawFormat(m_native, format)); }

Status CGdipBitmap::GetPropertySize(UINT* totalBufferSize, UINT* numProperties) {
    return SetStatus(m_gdip.GdipGetPropertySize(m_native, totalBufferSize, numProperties));
}

Status CGdipBitmap::GetAllPropertyItems(UINT totalBufferSize, UINT numProperties, PropertyItem* items) {
    return SetStatus(m_gdip.GdipGetAllPropertyItems(m_native, totalBufferSize, numProperties, items));
}

Status CGdipBitmap::SetPropertyItem(const PropertyItem* item) {
    return SetStatus(m_gdip.GdipSetPropertyItem(m_native, item));
}

Status CGdipBitmap::Save(const WCHAR* fileName, const CLSID* encoder, const EncoderParameters* parameters) {
    return SetStatus(m_gdip.GdipSaveImageToFile(m_native, fileName, encoder, parameters));
}

Status CGdipBitmap::GetHBITMAP(DWORD background, HBITMAP* result) {
    return SetStatus(m_gdip.GdipCreateHBITMAPFromBitmap(m_native, result, background));
}

Status CGdipBitmap::RotateFlip(int rotateFlipType) { return SetStatus(m_gdip.GdipImageRotateFlip(m_native, rotateFlipType)); }

// ---- drawing surface -----------------------------------------------------------------------------

CGdipGraphics::CGdipGraphics(CGdipBitmap* target) {
    if (!target) {
        m_lastResult = InvalidParameter;
        return;
    }
    m_gdip = &target->Platform();
    m_lastResult = m_gdip->GdipGetImageGraphicsContext(target->Native(), &m_native);
    if (m_lastResult != Ok) m_native = nullptr;
}

CGdipGraphics::~CGdipGraphics() {
    if (m_native) m_gdip->GdipDeleteGraphics(m_native);
}

Status CGdipGraphics::SetStatus(Status status) {
    if (status != Ok) m_lastResult = status;
    return status;
}

Status CGdipGraphics::GetLastStatus() {
    Status last = m_lastResult;
    m_lastResult = Ok;
    return last;
}

Status CGdipGraphics::SetPixelOffsetMode(int mode) {
    return m_gdip ? SetStatus(m_gdip->GdipSetPixelOffsetMode(m_native, mode)) : SetStatus(InvalidParameter);
}

Status CGdipGraphics::SetSmoothingMode(int mode) {
    return m_gdip ? SetStatus(m_gdip->GdipSetSmoothingMode(m_native, mode)) : SetStatus(InvalidParameter);
}

Status CGdipGraphics::SetInterpolationMode(int mode) {
    return m_gdip ? SetStatus(m_gdip->GdipSetInterpolationMode(m_native, mode)) : SetStatus(InvalidParameter);
}

Status CGdipGraphics::DrawImage(CGdipBitmap* image, INT x, INT y, INT width, INT height) {
    if (!m_gdip) return SetStatus(InvalidParameter);
    return SetStatus(m_gdip->GdipDrawImageRectI(m_native, image ? image->Native() : nullptr, x, y, width, height));
}
