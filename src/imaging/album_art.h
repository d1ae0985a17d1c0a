// The album art of the tag dialogs without their window: which files are accepted, the JPEG bytes
// that will be stored (taken as they are, or scaled and re-encoded through a temporary file), the
// pasted bitmap's bytes, and the art state that the writer of the tags consumes. The Win32 dialog
// derives from this class and overrides the operations that need its picture control.
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
    // Frees the new art and a pasted block.
    virtual ~CAlbumArt();
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
    // The pasted block becomes the new art (moved, not copied) once it shows.
    bool ApplyPastedBytes();

    // A copy of art from elsewhere; null or empty means the art is removed.
    void SetArtBytes(const BYTE* bytes, ULONG size);
    // True, with the default picture shown and the art marked removed, if there was art.
    bool RemoveArt();
    // Back to the default picture; the new art is freed.
    void ShowDefaultArt();

    // ---- what the dialog's picture control provides ---------------------------------------------
    // Shows bytes without storing them; without a picture control nothing shows.
    virtual bool ShowArtBytes(const BYTE* bytes, ULONG size);
    // Gives the control its full room back and shows the skin's default picture; nothing to do
    // without a control.
    virtual void ResetArtPicture();
    // Whether the item had art when its tags were read.
    virtual bool ItemHasArt() const;
    // New art was stored (the dialogs enable their Remove control).
    virtual void OnArtChanged();

    // ---- state ------------------------------------------------------------------------------------
    CGdiplusUtil m_util;
    BYTE* m_pArtBytes;  // CoTaskMemAlloc, owned
    ULONG m_nArtSize;
    BOOL m_bArtChanged;
    BOOL m_bArtRemoved;
    BYTE* m_pPastedBytes;  // CoTaskMemAlloc, owned
    ULONG m_nPastedSize;
    WCHAR m_szPastedPath[kArtPathChars];
    BOOL m_bArtCommandsEnabled;

protected:
    IArtFiles& m_files;
};
