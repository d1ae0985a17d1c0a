// What the imaging tests under Wine share: the real platform with live bitmaps and surfaces
// counted, a private temp folder, the fetched photographs, and a fixture that ends every test
// with no bitmap, surface, GDI object or temporary file left.
#pragma once

#include "imaging/album_art.h"
#include "imaging/win32/art_files_win32.h"
#include "imaging/win32/gdiplus_flat_win32.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/test_files.h"
#include "tests/win/imaging/no_metadata_as_windows.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kxtest {

// gdiplus.dll, counting what it made and what was given back; Wine's answer for an image
// without metadata is kept as it is until a test asks for Windows' answer.
class CountingGdiplus : public CNoMetadataAsWindows {
public:
    CountingGdiplus() { windowsNoMetadata = false; }
    long liveImages = 0;
    long liveGraphics = 0;
    kxgdip::Status GdipCreateBitmapFromFile(const WCHAR* f, kxgdip::GpImage** b) override {
        const kxgdip::Status status = CGdiplusFlatWin32::GdipCreateBitmapFromFile(f, b);
        return Count(status, *b);
    }
    kxgdip::Status GdipCreateBitmapFromHBITMAP(HBITMAP h, kxgdip::GpImage** b) override {
        const kxgdip::Status status = CGdiplusFlatWin32::GdipCreateBitmapFromHBITMAP(h, b);
        return Count(status, *b);
    }
    kxgdip::Status GdipCreateBitmapFromScan0(INT w, INT h, INT s, kxgdip::PixelFormat f, BYTE* p,
                                             kxgdip::GpImage** b) override {
        const kxgdip::Status status = CGdiplusFlatWin32::GdipCreateBitmapFromScan0(w, h, s, f, p, b);
        return Count(status, *b);
    }
    kxgdip::Status GdipDisposeImage(kxgdip::GpImage* image) override {
        kxgdip::Status status = CGdiplusFlatWin32::GdipDisposeImage(image);
        if (status == kxgdip::Ok) --liveImages;
        return status;
    }
    kxgdip::Status GdipGetImageGraphicsContext(kxgdip::GpImage* image, kxgdip::GpGraphics** graphics) override {
        kxgdip::Status status = CGdiplusFlatWin32::GdipGetImageGraphicsContext(image, graphics);
        if (status == kxgdip::Ok && *graphics) ++liveGraphics;
        return status;
    }
    kxgdip::Status GdipDeleteGraphics(kxgdip::GpGraphics* graphics) override {
        kxgdip::Status status = CGdiplusFlatWin32::GdipDeleteGraphics(graphics);
        if (status == kxgdip::Ok) --liveGraphics;
        return status;
    }

private:
    kxgdip::Status Count(kxgdip::Status status, kxgdip::GpImage* made) {
        if (status == kxgdip::Ok && made) ++liveImages;
        return status;
    }
};

// The real file system with a temp folder of the test's own (parallel tests share the prefix's).
class PrivateTempFiles : public CArtFilesWin32 {
public:
    std::wstring folder;  // with its closing backslash
    DWORD GetTempPathW(DWORD bufferLength, WCHAR* buffer) override {
        const DWORD length = static_cast<DWORD>(folder.size());
        if (length + 1 > bufferLength) return length + 1;
        lstrcpyW(buffer, folder.c_str());
        return length;
    }
};

// A fetched photograph or test file (fails the test when it is missing).
std::wstring TestImage(const char* name);
inline std::vector<BYTE> FileBytes(const std::wstring& path) { return ReadFileBytes(path); }
inline bool PutFileBytes(const std::wstring& path, const std::vector<BYTE>& bytes) { return WriteFileBytes(path, bytes); }
// Names in a folder, sorted.
std::vector<std::wstring> FolderFiles(const std::wstring& folder);

class WineImagingTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // An image at a new size (drawn from `source`), saved through the encoder of `formatCode`.
    void SaveResized(const std::wstring& source, UINT width, UINT height, DWORD formatCode, const std::wstring& target);
    // Width, height and format code of an image file; false when it does not open.
    bool Describe(const std::wstring& path, UINT* width, UINT* height, DWORD* formatCode);
    // The same, of bytes in memory (written to a file of the test's folder first).
    bool DescribeBytes(const BYTE* bytes, ULONG size, UINT* width, UINT* height, DWORD* formatCode);
    // Why this Wine cannot carry metadata items over (empty when it can), asked of the platform
    // as it is.
    std::wstring MetadataLack();
    // For a test that re-encodes: when this Wine has no metadata, says so on the output and
    // answers "no items" as Windows does from now on.
    void AnswerNoMetadataAsWindows();

    CountingGdiplus gdip;
    PrivateTempFiles files;
    std::wstring work;  // a folder for the test's own sources, outside the temp folder
    std::vector<std::wstring> keptTempFiles;

private:
    ResourceCounts m_before{};
    ULONG_PTR m_token = 0;
};

}  // namespace kxtest
