// A fake of the GDI+ flat functions for native tests, faithful where the image code decides:
// encoder lists in any order, images with their format, size and metadata items (short and long
// size tags; no metadata at all answers PropertyNotFound, an empty store Ok with zero items),
// the exact buffer sizes the platform insists on, real files in a format of its own, and a
// failure on demand at any call. It counts what is alive so that tests can prove nothing leaked.
#pragma once

#include "imaging/gdiplus_flat.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace kxtest {

enum class GdipOp {
    Startup, Alloc, EncodersSize, Encoders, FromFile, FromHBITMAP, FromScan0, RawFormat, Width, Height,
    GraphicsContext, SetPixelOffset, SetSmoothing, SetInterpolation, DrawImage, Save, PropertySize, AllPropertyItems,
    SetPropertyItem, Count
};

struct FakeProperty { ULONG id; WORD type; std::vector<BYTE> value; };

// What a fake image file holds, and what an image object is.
struct FakePicture {
    GUID format{};
    UINT width = 0;
    UINT height = 0;
    bool hasMetadata = true;  // false: the property calls answer PropertyNotFound
    std::vector<FakeProperty> properties;
    ULONG quality = 0;  // the quality a save asked for (0: none asked)
};

// The picture as a fake image file, and back (false for anything that is not one).
std::vector<BYTE> EncodeFakePicture(const FakePicture& picture);
bool DecodeFakePicture(const std::vector<BYTE>& bytes, FakePicture* picture);
bool WriteFakePicture(const std::string& path, const FakePicture& picture);
// A property value of `length` bytes: 16 or 32 bits, little-endian.
FakeProperty SizeTag(ULONG id, WORD type, ULONG value);

struct FakeEncoder { GUID format; std::wstring name; CLSID clsid; };
// The encoders as Windows lists them: BMP, JPEG, GIF, TIFF, PNG.
std::vector<FakeEncoder> WindowsEncoders();
FakeEncoder MakeEncoder(const GUID& format, const wchar_t* name, BYTE tag);

class FakeGdiplus : public kxgdip::IGdiplusFlat {
public:
    FakeGdiplus();
    ~FakeGdiplus() override;

    // The nth call of `op` from now (1: the next) and count-1 after it answer `status` (Alloc:
    // null); count < 0: all from the nth on.
    void Fail(GdipOp op, kxgdip::Status status, int nth = 1, int count = 1);
    int Calls(GdipOp op) const { return m_calls[static_cast<int>(op)]; }

    std::vector<FakeEncoder> encoders;
    DWORD lastError = 0;       // what GetLastError answers
    bool scan0Metadata = true;  // a new empty bitmap has a metadata store (Ok, zero items)
    // Quality settings in the order they were set: (operation, mode).
    std::vector<std::pair<GdipOp, int>> qualitySettings;
    // Every draw: the source's size and the rectangle's.
    struct Draw { UINT sourceWidth, sourceHeight; INT x, y, width, height; };
    std::vector<Draw> draws;

    // Native stand-ins for platform handles a test passes in.
    HBITMAP MakeHBITMAP(const FakePicture& picture);
    void DeleteHBITMAP(HBITMAP handle);

    // What is alive: images, surfaces, allocator blocks, start tokens.
    long LiveImages() const { return static_cast<long>(m_images.size()); }
    long LiveGraphics() const { return static_cast<long>(m_graphics.size()); }
    long LiveBlocks() const { return static_cast<long>(m_blocks.size()); }
    long LiveTokens() const { return m_tokens; }
    // The picture behind a live image object.
    const FakePicture* Picture(kxgdip::GpImage* image) const;

    // ---- the flat functions ---------------------------------------------------------------------
    kxgdip::Status GdiplusStartup(ULONG_PTR* token, const kxgdip::GdiplusStartupInput* input, void* output) override;
    void GdiplusShutdown(ULONG_PTR token) override;
    void* GdipAlloc(size_t size) override;
    void GdipFree(void* block) override;
    kxgdip::Status GdipGetImageEncodersSize(UINT* numEncoders, UINT* size) override;
    kxgdip::Status GdipGetImageEncoders(UINT numEncoders, UINT size, kxgdip::ImageCodecInfo* encoders) override;
    kxgdip::Status GdipCreateBitmapFromFile(const WCHAR* fileName, kxgdip::GpImage** bitmap) override;
    // Not reached by the code these tests drive.
    kxgdip::Status GdipCreateBitmapFromStream(IStream*, kxgdip::GpImage**) override { return kxgdip::NotImplemented; }
    kxgdip::Status GdipCreateHBITMAPFromBitmap(kxgdip::GpImage*, HBITMAP*, DWORD) override { return kxgdip::NotImplemented; }
    kxgdip::Status GdipImageRotateFlip(kxgdip::GpImage*, int) override { return kxgdip::NotImplemented; }
    kxgdip::Status GdipCreateBitmapFromHBITMAP(HBITMAP source, kxgdip::GpImage** bitmap) override;
    kxgdip::Status GdipCreateBitmapFromScan0(INT width, INT height, INT stride, kxgdip::PixelFormat format,
                                             BYTE* scan0, kxgdip::GpImage** bitmap) override;
    kxgdip::Status GdipDisposeImage(kxgdip::GpImage* image) override;
    kxgdip::Status GdipGetImageRawFormat(kxgdip::GpImage* image, GUID* format) override;
    kxgdip::Status GdipGetImageWidth(kxgdip::GpImage* image, UINT* width) override;
    kxgdip::Status GdipGetImageHeight(kxgdip::GpImage* image, UINT* height) override;
    kxgdip::Status GdipGetImageGraphicsContext(kxgdip::GpImage* image, kxgdip::GpGraphics** graphics) override;
    kxgdip::Status GdipDeleteGraphics(kxgdip::GpGraphics* graphics) override;
    kxgdip::Status GdipSetPixelOffsetMode(kxgdip::GpGraphics* g, int mode) override {
        return Quality(GdipOp::SetPixelOffset, g, mode);
    }
    kxgdip::Status GdipSetSmoothingMode(kxgdip::GpGraphics* g, int mode) override {
        return Quality(GdipOp::SetSmoothing, g, mode);
    }
    kxgdip::Status GdipSetInterpolationMode(kxgdip::GpGraphics* g, int mode) override {
        return Quality(GdipOp::SetInterpolation, g, mode);
    }
    kxgdip::Status GdipDrawImageRectI(kxgdip::GpGraphics* graphics, kxgdip::GpImage* image, INT x, INT y, INT width,
                                      INT height) override;
    kxgdip::Status GdipSaveImageToFile(kxgdip::GpImage* image, const WCHAR* fileName, const CLSID* encoder,
                                       const kxgdip::EncoderParameters* parameters) override;
    kxgdip::Status GdipGetPropertySize(kxgdip::GpImage* image, UINT* totalBufferSize, UINT* numProperties) override;
    kxgdip::Status GdipGetAllPropertyItems(kxgdip::GpImage* image, UINT totalBufferSize, UINT numProperties,
                                           kxgdip::PropertyItem* allItems) override;
    kxgdip::Status GdipSetPropertyItem(kxgdip::GpImage* image, const kxgdip::PropertyItem* item) override;
    DWORD GetLastError() override { return lastError; }

private:
    struct Failure {
        kxgdip::Status status;
        long from, until;  // absolute call numbers; until < 0: no end
    };
    // Counts the call; the injected status, or Ok.
    kxgdip::Status Enter(GdipOp op);
    kxgdip::Status Quality(GdipOp op, kxgdip::GpGraphics* graphics, int mode);
    template <class T>
    kxgdip::Status Read(GdipOp op, kxgdip::GpImage* image, T* out, T FakePicture::*field);
    FakePicture* Image(kxgdip::GpImage* image) const;
    kxgdip::GpImage* NewImage(const FakePicture& picture);
    UINT EncodersBytes() const;
    static UINT PropertyBytes(const FakePicture& picture);

    int m_calls[static_cast<int>(GdipOp::Count)] = {};
    std::map<int, Failure> m_failures;
    std::set<FakePicture*> m_images;
    struct Graphics { FakePicture* target; };
    std::set<Graphics*> m_graphics;
    std::set<void*> m_blocks;
    long m_tokens = 0;
    ULONG_PTR m_nextToken = 0x100;
    std::map<HBITMAP, FakePicture> m_handles;  // given by tests
    uintptr_t m_nextHandle = 0x1000;
};

}  // namespace kxtest
