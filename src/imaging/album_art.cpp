// The album art's bytes: accepted files, preparing the stored JPEG, pasted bitmaps.
#include "imaging/album_art.h"

#include "base/owners.h"
#include "imaging/path_parts.h"

#include <cstring>
#include <cwctype>

namespace {

const WCHAR kAcceptedExtensions[] = L";.JPG;.JPEG;.JPE;.JFIF;.BMP;.GIF;.TIF;.TIFF;.PNG;";
const WCHAR kPastedFileName[] = L"KxPastedDemo.jpg";
const WCHAR kLongPathExtension[] = L".jpg";
// A temporary path of this many characters or more is cut to kCutLength and ends in ".jpg".
constexpr size_t kTooLongPath = 260;
constexpr size_t kCutLength = 255;
// Prefix of the temporary name when the plain one would be the source itself.
const WCHAR kGuardPrefix[] = L"KxArt-";
constexpr int kGuardTries = 4;

// The temp folder, or false when the platform gives none that fits its 260-character buffer.
bool TempFolder(IArtFiles& files, std::wstring* folder) {
    WCHAR buffer[kArtPathChars] = {};
    const DWORD length = files.GetTempPathW(kArtPathChars, buffer);
    if (length == 0 || length >= static_cast<DWORD>(kArtPathChars)) return false;
    folder->assign(buffer, length);
    return true;
}

// PathAppendW's join, without its 260-character limit (the cut below needs the full length).
std::wstring Append(const std::wstring& folder, const WCHAR* name) {
    std::wstring path = folder;
    if (!path.empty() && path.back() != L'\\' && path.back() != L'/') path += L'\\';
    while (*name == L'\\') ++name;
    path += name;
    return path;
}

}  // namespace

CAlbumArt::CAlbumArt(kxgdip::IGdiplusFlat& gdip, IArtFiles& files)
    : m_util(gdip),
      m_pPastedBytes(nullptr),
      m_nPastedSize(0),
      m_szPastedPath(),
      m_bArtCommandsEnabled(TRUE),
      m_files(files) {
    m_util.InitGdiplus();
}

CAlbumArt::~CAlbumArt() { CoTaskMemFree(m_pPastedBytes); }

bool CAlbumArt::IsAcceptedImageFile(const WCHAR* path) {
    if (!path || lstrlenW(path) > kArtLongestPath) return false;
    std::wstring key = L";";
    key += KxPathFindExtension(path);
    key += L";";
    for (WCHAR& c : key) c = static_cast<WCHAR>(std::towupper(c));
    return std::wcsstr(kAcceptedExtensions, key.c_str()) != nullptr;
}

bool CAlbumArt::BuildTempPath(const WCHAR* source, std::wstring* tempPath) {
    std::wstring folder;
    if (!source || !TempFolder(m_files, &folder)) return false;
    std::wstring name = KxPathFindFileName(source);
    // A source that lies in the temp folder would be its own temporary file, to be cleared and
    // overwritten. The temporary copy then takes a prefixed name: the source is never touched.
    // The test asks the file system, so that other spellings of the same file (case, short
    // names, links) are caught too. Should every try still reach the source, there is no path.
    for (int attempt = 0; attempt < kGuardTries; ++attempt) {
        std::wstring path = Append(folder, name.c_str());
        if (path.size() >= kTooLongPath) {
            path.resize(kCutLength);
            path += kLongPathExtension;
        }
        if (!m_files.IsSameFile(path.c_str(), source)) {
            *tempPath = path;
            return true;
        }
        name = kGuardPrefix + name;
    }
    return false;
}

bool CAlbumArt::PrepareArtBytes(BYTE** bytes, ULONG* size, const WCHAR* path, INT fitWidth, INT fitHeight,
                                INT sourceWidth, INT sourceHeight) {
    if (!bytes || !size) return false;
    if (!path) return false;
    CGdipBitmap* opened = nullptr;
    DWORD formatCode = 0;
    if (FAILED(m_util.GdiplusFileOpen(&opened, &formatCode, path))) return false;
    KxBitmapPtr source(opened);

    // A JPEG that the thumbnail did not have to shrink keeps its exact bytes, metadata included.
    if (formatCode == KX_FORMAT_EXIF_JPEG && sourceWidth <= fitWidth && sourceHeight <= fitHeight) {
        source.reset();
        return ReadWholeFile(path, bytes, size);
    }

    std::wstring tempPath;
    if (!BuildTempPath(path, &tempPath)) return false;

    CGdipBitmap* resized = nullptr;
    HRESULT hr = m_util.ResizeImage(source.get(), &resized, static_cast<UINT>(fitWidth), static_cast<UINT>(fitHeight));
    KxBitmapPtr dest(resized);
    if (FAILED(hr)) return false;
    if (FAILED(m_util.CopyMetaData(source.get(), dest.get(), static_cast<UINT>(fitWidth), static_cast<UINT>(fitHeight))))
        return false;
    ClearTempFile(tempPath.c_str());
    if (FAILED(m_util.GdiplusFileSave(dest.get(), tempPath.c_str()))) return false;
    const bool read = ReadWholeFile(tempPath.c_str(), bytes, size);
    dest.reset();
    source.reset();
    ClearTempFile(tempPath.c_str());
    return read;
}

bool CAlbumArt::ReadWholeFile(const WCHAR* path, BYTE** bytes, ULONG* size) {
    if (!bytes || !size) return false;
    *bytes = nullptr;
    *size = 0;
    DWORD high = 0, low = 0;
    if (!path || !m_files.FindFileSize(path, &high, &low)) return false;
    // Only the low half counts: a block cannot be larger.
    CKxTaskMem<BYTE*> block(static_cast<BYTE*>(CoTaskMemAlloc(low)));
    if (!block) return false;
    FILE* file = m_files.OpenForReading(path);
    if (!file) return false;
    const size_t read = low ? std::fread(block.Get(), 1, low, file) : 0;
    std::fclose(file);
    if (read == 0) return false;
    *bytes = block.Detach();
    *size = static_cast<ULONG>(read);
    return true;
}

void CAlbumArt::ClearTempFile(const WCHAR* path) {
    const DWORD attributes = m_files.GetFileAttributesW(path);
    if (attributes == kInvalidFileAttributes) return;
    // Read-only and system go; hidden and the others stay.
    m_files.SetFileAttributesW(path, attributes & ~(kFileAttributeReadOnly | kFileAttributeSystem));
    m_files.DeleteFileW(path);
}

bool CAlbumArt::EncodePastedBitmap(CGdipBitmap* bitmap, BYTE** bytes, ULONG* size) {
    if (!bytes || !size) return false;
    *bytes = nullptr;
    *size = 0;
    if (!bitmap) return false;
    std::wstring folder;
    if (!TempFolder(m_files, &folder)) return false;
    const std::wstring tempPath = Append(folder, kPastedFileName);

    const UINT width = bitmap->GetWidth();
    const WORD height = static_cast<WORD>(bitmap->GetHeight());  // held in 16 bits: 65536 wraps to 0

    CGdipBitmap* resized = nullptr;
    HRESULT hr = m_util.ResizeImage(bitmap, &resized, width, height);
    KxBitmapPtr dest(resized);
    if (FAILED(hr) || FAILED(m_util.CopyMetaData(bitmap, dest.get(), width, height))) return false;
    ClearTempFile(tempPath.c_str());
    if (FAILED(m_util.GdiplusFileSave(dest.get(), tempPath.c_str()))) return false;
    const bool read = ReadWholeFile(tempPath.c_str(), bytes, size);
    m_files.DeleteFileW(tempPath.c_str());
    return read;
}

bool CAlbumArt::StorePastedBitmap(HBITMAP bitmapHandle) {
    KxBitmapPtr bitmap(CGdipBitmap::FromHBITMAP(m_util.Platform(), bitmapHandle));
    if (!bitmap) return false;
    BYTE* bytes = nullptr;
    ULONG size = 0;
    if (!EncodePastedBitmap(bitmap.get(), &bytes, &size)) return false;
    CoTaskMemFree(m_pPastedBytes);
    m_pPastedBytes = bytes;
    m_nPastedSize = size;
    return true;
}

