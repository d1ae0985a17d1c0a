// The album art of the tag dialogs without their window: which files are accepted, the JPEG bytes
// that will be stored (taken as they are, or scaled and re-encoded through a temporary file), and
// what the picture's menu found to paste. The new or removed art of the shown item is the tag
// model's (CEditTagModel); the dialogs hand it the bytes made here.
#pragma once

#include "imaging/art_files.h"
#include "imaging/gdiplus_util.h"

#include <string>

// The largest thumbnail, both ways.
constexpr INT kArtThumbnailBox = 180;
// Longest path (in characters) that is accepted, and the room of a pasted path.
constexpr int kArtLongestPath = 259;
constexpr int kArtPathChars = 260;

class CAlbumArt {
public:
    // Starts the imaging platform and fills the encoder table (failures are traced, not fatal).
    CAlbumArt(kxgdip::IGdiplusFlat& gdip, IArtFiles& files);
    // Frees a pasted block.
    ~CAlbumArt();
    CAlbumArt(const CAlbumArt&) = delete;
    CAlbumArt& operator=(const CAlbumArt&) = delete;

    // A path of fewer than 260 characters whose extension, between semicolons and in upper case,
    // stands in ";.JPG;.JPEG;.JPE;.JFIF;.BMP;.GIF;.TIF;.TIFF;.PNG;".
    static bool IsAcceptedImageFile(const WCHAR* path);

    // The JPEG bytes to store for the picture in `path` (CoTaskMemAlloc, the caller's), given the
    // size of its thumbnail (`fit...`) and of the picture (`source...`).
    bool PrepareArtBytes(BYTE** bytes, ULONG* size, const WCHAR* path, INT fitWidth, INT fitHeight, INT sourceWidth,
                         INT sourceHeight);
    // The temporary file PrepareArtBytes writes for `source`; false when there is none to be had.
    bool BuildTempPath(const WCHAR* source, std::wstring* tempPath);
    // A whole file into a CoTaskMemAlloc block; on failure both outputs are null and 0.
    bool ReadWholeFile(const WCHAR* path, BYTE** bytes, ULONG* size);
    // Deletes a temporary file, should one exist, once read-only and system are cleared.
    void ClearTempFile(const WCHAR* path);

    // The pasted bitmap at its own size (height held in 16 bits) as JPEG bytes, through the
    // temporary file "KxPastedDemo.jpg".
    bool EncodePastedBitmap(CGdipBitmap* bitmap, BYTE** bytes, ULONG* size);
    // A clipboard bitmap into m_pPastedBytes, encoded now.
    bool StorePastedBitmap(HBITMAP bitmapHandle);

    // ---- state ------------------------------------------------------------------------------------
    CGdiplusUtil m_util;
    BYTE* m_pPastedBytes;  // CoTaskMemAlloc, owned
    ULONG m_nPastedSize;
    WCHAR m_szPastedPath[kArtPathChars];
    BOOL m_bArtCommandsEnabled;

private:
    IArtFiles& m_files;
};
