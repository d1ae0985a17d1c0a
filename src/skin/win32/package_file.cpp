#include "skin/win32/package_file.h"

#include <objidl.h>
#include <gdiplus.h>

#include <cstring>

namespace hookwnd {

namespace {

// A package larger than this is no skin package; nothing of it is read.
const DWORD kLargestPackage = 64u << 20;
// Pictures are small; a larger one is refused before its pixels are allocated.
const UINT kLargestSide = 4096;

ULONG_PTR g_gdiplusToken;
int g_decoderUsers;

}  // namespace

void StartPictureDecoder() {
    if (g_decoderUsers++ > 0) return;
    Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&g_gdiplusToken, &input, nullptr) != Gdiplus::Ok) g_gdiplusToken = 0;
}

void StopPictureDecoder() {
    if (g_decoderUsers == 0 || --g_decoderUsers > 0) return;
    if (g_gdiplusToken) Gdiplus::GdiplusShutdown(g_gdiplusToken);
    g_gdiplusToken = 0;
}

bool PackageFile::Load(LPCWSTR path) {
    m_bytes.clear();
    if (!path || !*path) return false;
    HANDLE file = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    DWORD high = 0;
    const DWORD size = GetFileSize(file, &high);
    bool read = false;
    if (size != INVALID_FILE_SIZE && high == 0 && size <= kLargestPackage) {
        m_bytes.resize(size);
        DWORD got = 0;
        read = size == 0 || (ReadFile(file, m_bytes.data(), size, &got, nullptr) && got == size);
    }
    CloseHandle(file);
    return read && m_package.Open(m_bytes.data(), m_bytes.size());
}

bool PackageFile::ReadIni(const char* name, kxskin::IniFile* out) const {
    kxskin::PackageEntry entry;
    if (!m_package.Find(name, &entry)) return false;
    out->Parse(reinterpret_cast<const char*>(entry.data), entry.size);
    return true;
}

kxskin::Picture PackageFile::ReadPicture(const char* name) const {
    kxskin::Picture picture;
    kxskin::PackageEntry entry;
    if (!g_gdiplusToken || !m_package.Find(name, &entry) || entry.size == 0) return picture;

    // GDI+ reads from a stream of its own copy of the bytes
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, entry.size);
    if (!memory) return picture;
    if (void* p = GlobalLock(memory)) {
        std::memcpy(p, entry.data, entry.size);
        GlobalUnlock(memory);
    }
    IStream* stream = nullptr;
    if (FAILED(CreateStreamOnHGlobal(memory, TRUE, &stream))) {
        GlobalFree(memory);
        return picture;
    }
    Gdiplus::GpBitmap* bitmap = nullptr;
    if (Gdiplus::DllExports::GdipCreateBitmapFromStream(stream, &bitmap) == Gdiplus::Ok) {
        UINT width = 0, height = 0;
        Gdiplus::DllExports::GdipGetImageWidth(bitmap, &width);
        Gdiplus::DllExports::GdipGetImageHeight(bitmap, &height);
        if (width > 0 && height > 0 && width <= kLargestSide && height <= kLargestSide) {
            Gdiplus::Rect rect(0, 0, static_cast<INT>(width), static_cast<INT>(height));
            Gdiplus::BitmapData data = {};
            if (Gdiplus::DllExports::GdipBitmapLockBits(bitmap, &rect, Gdiplus::ImageLockModeRead,
                                                        PixelFormat32bppPARGB, &data) == Gdiplus::Ok) {
                picture.width = static_cast<int>(width);
                picture.height = static_cast<int>(height);
                picture.pixels.resize(static_cast<size_t>(width) * height);
                for (UINT y = 0; y < height; ++y)
                    std::memcpy(&picture.pixels[static_cast<size_t>(y) * width],
                                static_cast<const BYTE*>(data.Scan0) + static_cast<ptrdiff_t>(y) * data.Stride,
                                width * 4);
                Gdiplus::DllExports::GdipBitmapUnlockBits(bitmap, &data);
            }
        }
        Gdiplus::DllExports::GdipDisposeImage(bitmap);
    }
    stream->Release();  // frees the memory with it
    return picture;
}

}  // namespace hookwnd
