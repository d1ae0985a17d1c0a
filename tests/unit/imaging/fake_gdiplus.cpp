// The fake imaging platform: images, encoders, metadata and files of its own format.
#include "tests/unit/imaging/fake_gdiplus.h"

#include "tests/unit/imaging/native_files.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace kxtest {

using namespace kxgdip;

namespace {

const char kMagic[8] = {'K', 'X', 'F', 'A', 'K', 'E', 'I', 'M'};
const GUID kMemoryBmp = {0xB96B3CAA, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

void Put(std::vector<BYTE>& out, const void* data, size_t size) {
    const BYTE* p = static_cast<const BYTE*>(data);
    out.insert(out.end(), p, p + size);
}

struct Reader {
    const std::vector<BYTE>& bytes;
    size_t at = 0;
    bool Get(void* data, size_t size) {
        if (size > bytes.size() - at) return false;
        std::memcpy(data, bytes.data() + at, size);
        at += size;
        return true;
    }
};

}  // namespace

std::vector<BYTE> EncodeFakePicture(const FakePicture& picture) {
    std::vector<BYTE> out;
    Put(out, kMagic, sizeof(kMagic));
    Put(out, &picture.format, sizeof(GUID));
    Put(out, &picture.width, 4);
    Put(out, &picture.height, 4);
    Put(out, &picture.quality, 4);
    BYTE metadata = picture.hasMetadata ? 1 : 0;
    Put(out, &metadata, 1);
    UINT count = static_cast<UINT>(picture.properties.size());
    Put(out, &count, 4);
    for (const FakeProperty& property : picture.properties) {
        UINT length = static_cast<UINT>(property.value.size());
        Put(out, &property.id, 4);
        Put(out, &property.type, 2);
        Put(out, &length, 4);
        Put(out, property.value.data(), length);
    }
    return out;
}

bool DecodeFakePicture(const std::vector<BYTE>& bytes, FakePicture* picture) {
    Reader in{bytes};
    char magic[8];
    BYTE metadata = 0;
    UINT count = 0;
    FakePicture p;
    if (!in.Get(magic, 8) || std::memcmp(magic, kMagic, 8) != 0) return false;
    if (!in.Get(&p.format, sizeof(GUID)) || !in.Get(&p.width, 4) || !in.Get(&p.height, 4) || !in.Get(&p.quality, 4) ||
        !in.Get(&metadata, 1) || !in.Get(&count, 4))
        return false;
    p.hasMetadata = metadata != 0;
    for (UINT i = 0; i < count; ++i) {
        FakeProperty property{};
        UINT length = 0;
        if (!in.Get(&property.id, 4) || !in.Get(&property.type, 2) || !in.Get(&length, 4)) return false;
        if (length > bytes.size() - in.at) return false;
        property.value.resize(length);
        if (!in.Get(property.value.data(), length)) return false;
        p.properties.push_back(property);
    }
    if (in.at != bytes.size()) return false;
    *picture = p;
    return true;
}

bool WriteFakePicture(const std::string& path, const FakePicture& picture) {
    return WriteBytes(path, EncodeFakePicture(picture));
}

FakeProperty SizeTag(ULONG id, WORD type, ULONG value) {
    FakeProperty property{id, type, {}};
    const size_t length = type == PropertyTagTypeShort ? 2 : 4;
    for (size_t i = 0; i < length; ++i) property.value.push_back(static_cast<BYTE>(value >> (8 * i)));
    return property;
}

FakeEncoder MakeEncoder(const GUID& format, const wchar_t* name, BYTE tag) {
    CLSID clsid = {0x557CF400u + tag, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, tag}};
    return FakeEncoder{format, name, clsid};
}

std::vector<FakeEncoder> WindowsEncoders() {
    return {MakeEncoder(ImageFormatBMP, L"Built-in BMP Codec", 1), MakeEncoder(ImageFormatJPEG, L"Built-in JPEG Codec", 2),
            MakeEncoder(ImageFormatGIF, L"Built-in GIF Codec", 3), MakeEncoder(ImageFormatTIFF, L"Built-in TIFF Codec", 4),
            MakeEncoder(ImageFormatPNG, L"Built-in PNG Codec", 5)};
}

// ---- bookkeeping -------------------------------------------------------------------------------------

FakeGdiplus::FakeGdiplus() : encoders(WindowsEncoders()) {}

FakeGdiplus::~FakeGdiplus() {
    // Whatever a test leaked is reclaimed here, after the test has counted it.
    for (FakePicture* image : m_images) delete image;
    for (Graphics* graphics : m_graphics) delete graphics;
    for (void* block : m_blocks) std::free(block);
}

void FakeGdiplus::Fail(GdipOp op, Status status, int nth, int count) {
    const long from = m_calls[static_cast<int>(op)] + (nth < 1 ? 1 : nth);
    // An injected failure is never Ok (the allocator's failure has no status of its own).
    m_failures[static_cast<int>(op)] = Failure{status == Ok ? OutOfMemory : status, from, count < 0 ? -1 : from + count - 1};
}

Status FakeGdiplus::Enter(GdipOp op) {
    const int index = static_cast<int>(op);
    const long call = ++m_calls[index];
    auto it = m_failures.find(index);
    if (it == m_failures.end() || call < it->second.from) return Ok;
    if (it->second.until >= 0 && call > it->second.until) return Ok;
    return it->second.status;
}

FakePicture* FakeGdiplus::Image(GpImage* image) const {
    FakePicture* picture = reinterpret_cast<FakePicture*>(image);
    return m_images.count(picture) ? picture : nullptr;
}

const FakePicture* FakeGdiplus::Picture(GpImage* image) const { return Image(image); }

GpImage* FakeGdiplus::NewImage(const FakePicture& picture) {
    FakePicture* made = new FakePicture(picture);
    m_images.insert(made);
    return reinterpret_cast<GpImage*>(made);
}

HBITMAP FakeGdiplus::MakeHBITMAP(const FakePicture& picture) {
    HBITMAP handle = reinterpret_cast<HBITMAP>(m_nextHandle += 0x10);
    m_handles[handle] = picture;
    return handle;
}

void FakeGdiplus::DeleteHBITMAP(HBITMAP handle) { m_handles.erase(handle); }

UINT FakeGdiplus::EncodersBytes() const {
    size_t bytes = 0;
    for (const FakeEncoder& encoder : encoders) bytes += sizeof(ImageCodecInfo) + (encoder.name.size() + 1) * sizeof(WCHAR);
    return static_cast<UINT>(bytes);
}

UINT FakeGdiplus::PropertyBytes(const FakePicture& picture) {
    size_t bytes = 0;
    for (const FakeProperty& property : picture.properties) bytes += sizeof(PropertyItem) + property.value.size();
    return static_cast<UINT>(bytes);
}

// ---- the flat functions --------------------------------------------------------------------------------

Status FakeGdiplus::GdiplusStartup(ULONG_PTR* token, const GdiplusStartupInput* input, void*) {
    if (Status s = Enter(GdipOp::Startup)) return s;
    if (!token || !input || input->GdiplusVersion != 1) return InvalidParameter;
    *token = ++m_nextToken;
    ++m_tokens;
    return Ok;
}

void FakeGdiplus::GdiplusShutdown(ULONG_PTR) { --m_tokens; }

void* FakeGdiplus::GdipAlloc(size_t size) {
    if (Enter(GdipOp::Alloc) != Ok) return nullptr;
    void* block = std::malloc(size ? size : 1);
    if (block) m_blocks.insert(block);
    return block;
}

void FakeGdiplus::GdipFree(void* block) {
    if (!block) return;
    m_blocks.erase(block);
    std::free(block);
}

Status FakeGdiplus::GdipGetImageEncodersSize(UINT* numEncoders, UINT* size) {
    if (Status s = Enter(GdipOp::EncodersSize)) return s;
    if (!numEncoders || !size) return InvalidParameter;
    *numEncoders = static_cast<UINT>(encoders.size());
    *size = EncodersBytes();
    return Ok;
}

Status FakeGdiplus::GdipGetImageEncoders(UINT numEncoders, UINT size, ImageCodecInfo* out) {
    if (Status s = Enter(GdipOp::Encoders)) return s;
    if (!out || numEncoders != encoders.size() || size != EncodersBytes()) return GenericError;
    // Records first, then their names, all inside the caller's block.
    WCHAR* names = reinterpret_cast<WCHAR*>(reinterpret_cast<BYTE*>(out) + numEncoders * sizeof(ImageCodecInfo));
    for (UINT i = 0; i < numEncoders; ++i) {
        const FakeEncoder& encoder = encoders[i];
        ImageCodecInfo info{};
        info.Clsid = encoder.clsid;
        info.FormatID = encoder.format;
        std::memcpy(names, encoder.name.c_str(), (encoder.name.size() + 1) * sizeof(WCHAR));
        info.CodecName = names;
        names += encoder.name.size() + 1;
        out[i] = info;
    }
    return Ok;
}

Status FakeGdiplus::GdipCreateBitmapFromFile(const WCHAR* fileName, GpImage** bitmap) {
    if (!bitmap) return InvalidParameter;
    *bitmap = nullptr;
    if (Status s = Enter(GdipOp::FromFile)) return s;
    if (!fileName) return InvalidParameter;
    std::vector<BYTE> bytes;
    if (!ReadBytes(NativePath(fileName), &bytes)) return InvalidParameter;
    FakePicture picture;
    if (!DecodeFakePicture(bytes, &picture)) return OutOfMemory;  // the platform's answer to "no image"
    *bitmap = NewImage(picture);
    return Ok;
}

Status FakeGdiplus::GdipCreateBitmapFromHBITMAP(HBITMAP source, GpImage** bitmap) {
    if (!bitmap) return InvalidParameter;
    *bitmap = nullptr;
    if (Status s = Enter(GdipOp::FromHBITMAP)) return s;
    auto it = m_handles.find(source);
    if (it == m_handles.end()) return InvalidParameter;
    FakePicture picture = it->second;
    picture.format = kMemoryBmp;
    picture.hasMetadata = scan0Metadata;
    picture.properties.clear();
    *bitmap = NewImage(picture);
    return Ok;
}

Status FakeGdiplus::GdipCreateBitmapFromScan0(INT width, INT height, INT, PixelFormat, BYTE*, GpImage** bitmap) {
    if (!bitmap) return InvalidParameter;
    *bitmap = nullptr;
    if (Status s = Enter(GdipOp::FromScan0)) return s;
    if (width <= 0 || height <= 0) return InvalidParameter;
    FakePicture picture;
    picture.format = kMemoryBmp;
    picture.width = static_cast<UINT>(width);
    picture.height = static_cast<UINT>(height);
    picture.hasMetadata = scan0Metadata;
    *bitmap = NewImage(picture);
    return Ok;
}

Status FakeGdiplus::GdipDisposeImage(GpImage* image) {
    FakePicture* picture = Image(image);
    if (!picture) return InvalidParameter;
    m_images.erase(picture);
    delete picture;
    return Ok;
}

template <class T>
Status FakeGdiplus::Read(GdipOp op, GpImage* image, T* out, T FakePicture::*field) {
    if (Status s = Enter(op)) return s;
    FakePicture* picture = Image(image);
    if (!picture || !out) return InvalidParameter;
    *out = picture->*field;
    return Ok;
}
Status FakeGdiplus::GdipGetImageRawFormat(GpImage* image, GUID* format) {
    return Read(GdipOp::RawFormat, image, format, &FakePicture::format);
}
Status FakeGdiplus::GdipGetImageWidth(GpImage* image, UINT* width) {
    return Read(GdipOp::Width, image, width, &FakePicture::width);
}
Status FakeGdiplus::GdipGetImageHeight(GpImage* image, UINT* height) {
    return Read(GdipOp::Height, image, height, &FakePicture::height);
}

Status FakeGdiplus::GdipGetImageGraphicsContext(GpImage* image, GpGraphics** graphics) {
    if (Status s = Enter(GdipOp::GraphicsContext)) return s;
    FakePicture* picture = Image(image);
    if (!picture || !graphics) return InvalidParameter;
    Graphics* made = new Graphics{picture};
    m_graphics.insert(made);
    *graphics = reinterpret_cast<GpGraphics*>(made);
    return Ok;
}

Status FakeGdiplus::GdipDeleteGraphics(GpGraphics* graphics) {
    Graphics* g = reinterpret_cast<Graphics*>(graphics);
    if (!m_graphics.erase(g)) return InvalidParameter;
    delete g;
    return Ok;
}

Status FakeGdiplus::Quality(GdipOp op, GpGraphics* graphics, int mode) {
    qualitySettings.emplace_back(op, mode);
    if (Status s = Enter(op)) return s;
    return m_graphics.count(reinterpret_cast<Graphics*>(graphics)) ? Ok : InvalidParameter;
}

Status FakeGdiplus::GdipDrawImageRectI(GpGraphics* graphics, GpImage* image, INT x, INT y, INT width, INT height) {
    if (Status s = Enter(GdipOp::DrawImage)) return s;
    FakePicture* source = Image(image);
    if (!m_graphics.count(reinterpret_cast<Graphics*>(graphics)) || !source) return InvalidParameter;
    draws.push_back(Draw{source->width, source->height, x, y, width, height});
    return Ok;
}

Status FakeGdiplus::GdipSaveImageToFile(GpImage* image, const WCHAR* fileName, const CLSID* encoder,
                                         const EncoderParameters* parameters) {
    if (Status s = Enter(GdipOp::Save)) return s;
    FakePicture* picture = Image(image);
    if (!picture || !fileName || !encoder) return InvalidParameter;
    const FakeEncoder* chosen = nullptr;
    for (const FakeEncoder& e : encoders)
        if (e.clsid == *encoder) chosen = &e;
    if (!chosen) return FileNotFound;  // the platform's answer to an unknown encoder
    FakePicture saved = *picture;
    saved.format = chosen->format == ImageFormatEXIF ? ImageFormatJPEG : chosen->format;
    saved.hasMetadata = true;
    saved.quality = 0;
    if (parameters) {
        for (UINT i = 0; i < parameters->Count; ++i) {
            const EncoderParameter& p = parameters->Parameter[i];
            if (p.Guid == EncoderQuality && p.Type == EncoderParameterValueTypeLong && p.NumberOfValues == 1)
                saved.quality = *static_cast<const ULONG*>(p.Value);
        }
    }
    errno = 0;
    if (!WriteFakePicture(NativePath(fileName), saved)) {
        lastError = errno == ENOENT ? 3u : 5u;  // path not found, or access denied
        return Win32Error;
    }
    return Ok;
}

Status FakeGdiplus::GdipGetPropertySize(GpImage* image, UINT* totalBufferSize, UINT* numProperties) {
    if (Status s = Enter(GdipOp::PropertySize)) return s;
    FakePicture* picture = Image(image);
    if (!picture || !totalBufferSize || !numProperties) return InvalidParameter;
    if (!picture->hasMetadata) return PropertyNotFound;
    *totalBufferSize = PropertyBytes(*picture);
    *numProperties = static_cast<UINT>(picture->properties.size());
    return Ok;
}

Status FakeGdiplus::GdipGetAllPropertyItems(GpImage* image, UINT totalBufferSize, UINT numProperties,
                                             PropertyItem* allItems) {
    if (Status s = Enter(GdipOp::AllPropertyItems)) return s;
    FakePicture* picture = Image(image);
    if (!picture || !allItems) return InvalidParameter;
    if (!picture->hasMetadata) return PropertyNotFound;
    const UINT count = static_cast<UINT>(picture->properties.size());
    if (totalBufferSize != PropertyBytes(*picture) || numProperties != count) return InvalidParameter;
    BYTE* values = reinterpret_cast<BYTE*>(allItems) + count * sizeof(PropertyItem);
    for (UINT i = 0; i < count; ++i) {
        const FakeProperty& property = picture->properties[i];
        PropertyItem item{property.id, static_cast<ULONG>(property.value.size()), property.type, values};
        if (!property.value.empty()) std::memcpy(values, property.value.data(), property.value.size());
        values += property.value.size();
        allItems[i] = item;
    }
    return Ok;
}

Status FakeGdiplus::GdipSetPropertyItem(GpImage* image, const PropertyItem* item) {
    if (Status s = Enter(GdipOp::SetPropertyItem)) return s;
    FakePicture* picture = Image(image);
    if (!picture || !item) return InvalidParameter;
    if (!picture->hasMetadata) return PropertyNotSupported;
    // Reads exactly `length` bytes at `value`, as the platform does.
    FakeProperty property{item->id, item->type, {}};
    const BYTE* value = static_cast<const BYTE*>(item->value);
    if (item->length) property.value.assign(value, value + item->length);
    for (FakeProperty& existing : picture->properties) {
        if (existing.id == item->id) {
            existing = property;
            return Ok;
        }
    }
    picture->properties.push_back(property);
    return Ok;
}

}  // namespace kxtest
