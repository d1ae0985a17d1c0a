// The imaging tests' fixture under Wine.
#include "tests/win/imaging/imaging_wine_support.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>

#ifndef KX_TEST_IMAGES
#error "KX_TEST_IMAGES names the folder of the fetched test images"
#endif

namespace kxtest {

using namespace kxgdip;

std::wstring TestImage(const char* name) { return FixtureFile(KX_TEST_IMAGES, name); }

std::vector<std::wstring> FolderFiles(const std::wstring& folder) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found;
    HANDLE search = FindFirstFileW((folder + L"*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
        const std::wstring name = found.cFileName;
        if (name != L"." && name != L"..") names.push_back(name);
    } while (FindNextFileW(search, &found));
    FindClose(search);
    std::sort(names.begin(), names.end());
    return names;
}

namespace {

std::wstring MakeFolder(const wchar_t* prefix) {
    WCHAR name[MAX_PATH];
    swprintf(name, MAX_PATH, L"%ls%ls%lu_%lu\\", TempFolder().c_str(), prefix, GetCurrentProcessId(), GetTickCount());
    CreateDirectoryW(name, nullptr);
    return name;
}

void RemoveFolder(const std::wstring& folder) {
    for (const std::wstring& name : FolderFiles(folder)) {
        const std::wstring path = folder + name;
        SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        if (!DeleteFileW(path.c_str())) RemoveFolder(path + L"\\");
    }
    RemoveDirectoryW(folder.c_str());
}

}  // namespace

void WineImagingTest::SetUp() {
    const GdiplusStartupInput input = {1, nullptr, FALSE, FALSE};
    ASSERT_EQ(Ok, gdip.GdiplusStartup(&m_token, &input, nullptr));
    files.folder = MakeFolder(L"kx_art_temp_");
    work = MakeFolder(L"kx_art_work_");
    m_before = CountResources();
}

void WineImagingTest::TearDown() {
    EXPECT_EQ(0, gdip.liveImages) << "bitmaps leaked";
    EXPECT_EQ(0, gdip.liveGraphics) << "drawing surfaces leaked";
    EXPECT_EQ(m_before.gdiObjects, CountResources().gdiObjects) << "GDI objects leaked";
    EXPECT_EQ(keptTempFiles, FolderFiles(files.folder)) << "files left in the temp folder";
    RemoveFolder(files.folder);
    RemoveFolder(work);
    if (m_token) gdip.GdiplusShutdown(m_token);
}

void WineImagingTest::SaveResized(const std::wstring& source, UINT width, UINT height, DWORD formatCode,
                                  const std::wstring& target) {
    CGdiplusUtil util(gdip);
    util.InitGdiplus();
    CGdipBitmap* opened = nullptr;
    DWORD code = 0;
    ASSERT_EQ(S_OK, util.GdiplusFileOpen(&opened, &code, source.c_str()));
    KxBitmapPtr from(opened);
    KxBitmapPtr to(CGdipBitmap::Create(gdip, static_cast<INT>(width), static_cast<INT>(height), PixelFormat32bppARGB));
    {
        CGdipGraphics graphics(to.get());
        ASSERT_EQ(Ok, graphics.DrawImage(from.get(), 0, 0, static_cast<INT>(width), static_cast<INT>(height)));
    }
    CLSID encoder;
    ASSERT_EQ(S_OK, util.FormatCodeToGdiplusEncoder(formatCode, &encoder));
    ASSERT_EQ(Ok, to->Save(target.c_str(), &encoder, nullptr));
}

bool WineImagingTest::Describe(const std::wstring& path, UINT* width, UINT* height, DWORD* formatCode) {
    CGdiplusUtil util(gdip);
    CGdipBitmap* opened = nullptr;
    if (FAILED(util.GdiplusFileOpen(&opened, formatCode, path.c_str()))) return false;
    *width = opened->GetWidth();
    *height = opened->GetHeight();
    CGdipBitmap::Delete(opened);
    return true;
}

bool WineImagingTest::DescribeBytes(const BYTE* bytes, ULONG size, UINT* width, UINT* height, DWORD* formatCode) {
    const std::wstring path = work + L"described.bin";
    if (!PutFileBytes(path, std::vector<BYTE>(bytes, bytes + size))) return false;
    const bool ok = Describe(path, width, height, formatCode);
    DeleteFileW(path.c_str());
    return ok;
}

void WineImagingTest::AnswerNoMetadataAsWindows() {
    const std::wstring lack = MetadataLack();
    if (lack.empty()) return;
    std::printf("note: %ls; images without items are answered as on Windows (Ok, none)\n", lack.c_str());
    gdip.windowsNoMetadata = true;
}

std::wstring WineImagingTest::MetadataLack() {
    struct Plain {
        CountingGdiplus& gdip;
        bool was;
        ~Plain() { gdip.windowsNoMetadata = was; }
    } plain{gdip, gdip.windowsNoMetadata};
    gdip.windowsNoMetadata = false;
    KxBitmapPtr photo(CGdipBitmap::FromFile(gdip, TestImage("sample1.jpg").c_str()));
    if (!photo || photo->GetLastStatus() != Ok) return L"the EXIF photograph does not open";
    UINT size = 0, count = 0;
    const Status status = photo->GetPropertySize(&size, &count);
    wchar_t why[160];
    if (status != Ok) {
        swprintf(why, 160, L"GdipGetPropertySize answers status %d for a photograph with EXIF", static_cast<int>(status));
        return why;
    }
    if (count == 0) return L"GdipGetPropertySize finds no item in a photograph with EXIF";
    KxBitmapPtr empty(CGdipBitmap::Create(gdip, 4, 4, PixelFormat32bppARGB));
    LONG value = 77;
    const PropertyItem item = {PropertyTagImageWidth, 4, PropertyTagTypeLong, &value};
    empty->SetPropertyItem(&item);
    if (empty->GetPropertySize(&size, &count) != Ok || count == 0)
        return L"GdipSetPropertyItem keeps no item on a new bitmap";
    return L"";
}

}  // namespace kxtest
