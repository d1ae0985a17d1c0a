// The host's content library as the plug-in sees it: a tree of COM objects (folders, item
// identifier lists, enumerators, track lists, property and preview objects). The plug-in only
// calls these interfaces; the host implements them. Operations marked "reserved" are the host's
// own and are never called by the plug-in, but they hold their place in the table.
#pragma once

#include "kx/KxPlatform.h"

// ---- item identifier lists ------------------------------------------------------------------------
// A chain of records, each starting with its own 16-bit length (those two bytes included), ended by
// a record of length 0. The payload is the host's; the plug-in copies, compares and hands back.
#pragma pack(push, 1)
struct KxItemRecord {
    USHORT cb;
    BYTE abID[1];
};
struct KxItemIdList {
    KxItemRecord mkid;
};
#pragma pack(pop)

typedef KxItemIdList* KxPidl;
typedef const KxItemIdList* KxPcPidl;

// ---- property keys -------------------------------------------------------------------------------
struct KxPropertyKey {
    GUID fmtid;
    DWORD pid;
};
static_assert(sizeof(KxPropertyKey) == 20, "a property key is 20 bytes");

#define KX_DEFINE_PROPKEY(name, set, id) static const KxPropertyKey name = {set, id}

// Track tags {A716B533-41C1-4F75-9407-F646B3A2387D}
#define KX_TRACK_SET {0xA716B533, 0x41C1, 0x4F75, {0x94, 0x07, 0xF6, 0x46, 0xB3, 0xA2, 0x38, 0x7D}}
KX_DEFINE_PROPKEY(KxPropTitle, KX_TRACK_SET, 1);        // string
KX_DEFINE_PROPKEY(KxPropAlbum, KX_TRACK_SET, 2);        // string
KX_DEFINE_PROPKEY(KxPropArtist, KX_TRACK_SET, 3);       // string
KX_DEFINE_PROPKEY(KxPropGenre, KX_TRACK_SET, 4);        // string
KX_DEFINE_PROPKEY(KxPropYear, KX_TRACK_SET, 5);         // string
KX_DEFINE_PROPKEY(KxPropDuration, KX_TRACK_SET, 6);     // unsigned 32-bit, seconds
KX_DEFINE_PROPKEY(KxPropTrackNumber, KX_TRACK_SET, 7);  // 32-bit
KX_DEFINE_PROPKEY(KxPropArtist2, KX_TRACK_SET, 8);      // string
KX_DEFINE_PROPKEY(KxPropTagInt12, KX_TRACK_SET, 12);    // 32-bit, up to 7 digits
KX_DEFINE_PROPKEY(KxPropRating, KX_TRACK_SET, 13);      // 32-bit, 0 to 5
KX_DEFINE_PROPKEY(KxPropVideo14, KX_TRACK_SET, 14);     // 32-bit, video width
KX_DEFINE_PROPKEY(KxPropVideo15, KX_TRACK_SET, 15);     // 32-bit, video height
#undef KX_TRACK_SET

// Files {E96F2899-F6F6-4F29-93CC-095E3104AC92}
#define KX_FILE_SET {0xE96F2899, 0xF6F6, 0x4F29, {0x93, 0xCC, 0x09, 0x5E, 0x31, 0x04, 0xAC, 0x92}}
KX_DEFINE_PROPKEY(KxPropFileSize, KX_FILE_SET, 1);  // unsigned 64-bit, bytes
KX_DEFINE_PROPKEY(KxPropLocation, KX_FILE_SET, 2);  // string
KX_DEFINE_PROPKEY(KxPropFilePath, KX_FILE_SET, 3);  // string
#undef KX_FILE_SET

// Album art {F6FD959B-5628-4196-B62A-CA1BD855013B}
#define KX_ART_SET {0xF6FD959B, 0x5628, 0x4196, {0xB6, 0x2A, 0xCA, 0x1B, 0xD8, 0x55, 0x01, 0x3B}}
KX_DEFINE_PROPKEY(KxPropAlbumArt, KX_ART_SET, 1);
#undef KX_ART_SET

// Image values {C45A9308-27B2-4A92-B9F5-A5D56547BDB7}
#define KX_IMAGE_SET {0xC45A9308, 0x27B2, 0x4A92, {0xB9, 0xF5, 0xA5, 0xD5, 0x65, 0x47, 0xBD, 0xB7}}
KX_DEFINE_PROPKEY(KxPropImage1, KX_IMAGE_SET, 1);    // string
KX_DEFINE_PROPKEY(KxPropImage2, KX_IMAGE_SET, 2);    // string
KX_DEFINE_PROPKEY(KxPropImage3, KX_IMAGE_SET, 3);    // rational
KX_DEFINE_PROPKEY(KxPropImage4, KX_IMAGE_SET, 4);    // 32-bit float
KX_DEFINE_PROPKEY(KxPropImage5, KX_IMAGE_SET, 5);    // rational
KX_DEFINE_PROPKEY(KxPropImage6, KX_IMAGE_SET, 6);    // rational
KX_DEFINE_PROPKEY(KxPropImage7, KX_IMAGE_SET, 7);    // 32-bit
KX_DEFINE_PROPKEY(KxPropImage8, KX_IMAGE_SET, 8);    // 32-bit, orientation 1 to 8
KX_DEFINE_PROPKEY(KxPropImage9, KX_IMAGE_SET, 9);    // 32-bit
KX_DEFINE_PROPKEY(KxPropImage10, KX_IMAGE_SET, 10);  // 32-bit
KX_DEFINE_PROPKEY(KxPropImage11, KX_IMAGE_SET, 11);  // string
KX_DEFINE_PROPKEY(KxPropImage12, KX_IMAGE_SET, 12);  // string
KX_DEFINE_PROPKEY(KxPropImage13, KX_IMAGE_SET, 13);  // string
KX_DEFINE_PROPKEY(KxPropImage14, KX_IMAGE_SET, 14);  // any
KX_DEFINE_PROPKEY(KxPropImage15, KX_IMAGE_SET, 15);  // 32-bit, 0 to 8
KX_DEFINE_PROPKEY(KxPropImage16, KX_IMAGE_SET, 16);  // 32-bit
KX_DEFINE_PROPKEY(KxPropImage17, KX_IMAGE_SET, 17);  // rational
KX_DEFINE_PROPKEY(KxPropImage18, KX_IMAGE_SET, 18);  // 32-bit
#undef KX_IMAGE_SET

// Rationals travel as a 64-bit value: numerator in the high 32 bits, denominator in the low.
inline ULONGLONG KxMakeRational(DWORD numerator, DWORD denominator) {
    return (static_cast<ULONGLONG>(numerator) << 32) | denominator;
}
inline DWORD KxRationalNumerator(ULONGLONG r) { return static_cast<DWORD>(r >> 32); }
inline DWORD KxRationalDenominator(ULONGLONG r) { return static_cast<DWORD>(r & 0xFFFFFFFFu); }

// ---- well-known folders under the root, resolved with ParseName (flags 8) ----------------------------
static const WCHAR KxFolderPlaylists[] = L"{3D4614C5-8317-4c4f-B50C-10291059EE72}";
static const WCHAR KxFolderSlideshows[] = L"{57CC3158-38C0-4f2e-9235-DD6315793320}";
static const WCHAR KxFolderAlbums[] = L"{3D4614C6-8317-4c4f-B50C-10291059EE72}";
static const WCHAR KxFolderArtists[] = L"{3D4614C7-8317-4c4f-B50C-10291059EE72}";
static const WCHAR KxFolderGenres[] = L"{3D4614C8-8317-4c4f-B50C-10291059EE72}";
static const WCHAR KxFolderAllTracks[] = L"{D2CCF534-0EE2-4809-9706-63B414D84D7A}";

// ---- flags and codes of the tree -----------------------------------------------------------------------
enum : DWORD {
    KX_ENUM_CONTAINERS = 1,  // EnumItems: child folders, through IKxItemEnum
    KX_ENUM_TRACKS = 4,      // EnumItems: tracks, through IKxTrackList
    KX_NAME_NORMAL = 1,      // GetItemName
    KX_PARSE_WELLKNOWN = 8,  // ParseName
    KX_ATTR_OPENABLE = 7,    // GetItemAttributes: all three bits kept = can be opened further
    KX_PROPINFO_READ = 1,    // GetPropertyInfo capability bits
    KX_PROPINFO_WRITE = 2,
    KX_PREVIEW_BITMAP = 2,   // GetPreviewSource: ask GetPreviewBitmap
};
// GetPropertyInfo: the item does not have the property (HRESULT_FROM_WIN32(ERROR_NOT_FOUND)).
#define KX_E_PROPERTY_NOT_FOUND ((HRESULT)0x80070490L)

// ---- interface identifiers ----------------------------------------------------------------------------
KX_DEFINE_IID(IID_IKxContentFolder, 0x9F52AEBE, 0xA29C, 0x4A65, 0xA6, 0x80, 0x73, 0x50, 0x57, 0x40, 0xDC, 0x62);
KX_DEFINE_IID(IID_IKxContentRoot, 0x1BC0F38B, 0xC24A, 0x4C70, 0xA0, 0x2C, 0x44, 0xC1, 0x39, 0xB0, 0x05, 0x06);
KX_DEFINE_IID(IID_IKxItemEnum, 0x9C173C25, 0xAE8A, 0x4DAC, 0x95, 0xAE, 0xB2, 0x5F, 0xD6, 0xC8, 0x7A, 0x23);
KX_DEFINE_IID(IID_IKxTrackList, 0x2B593AAB, 0xB18D, 0x418B, 0xA1, 0xCF, 0x9F, 0x51, 0x9E, 0xF6, 0x7A, 0x90);
KX_DEFINE_IID(IID_IKxTrackFilter, 0xABCAB613, 0x3A07, 0x45B5, 0x8C, 0x28, 0x12, 0xB6, 0xFE, 0xB2, 0xF0, 0x95);
KX_DEFINE_IID(IID_IKxItemProperties, 0xE12D2505, 0xE6EC, 0x466D, 0xAA, 0x9D, 0x08, 0xDB, 0x6B, 0xB0, 0x8F, 0x1E);
KX_DEFINE_IID(IID_IKxItemPreview, 0xC0EEA4C7, 0xBDB5, 0x499B, 0xBC, 0xD2, 0x5D, 0xE2, 0x9D, 0x02, 0x65, 0x3E);
KX_DEFINE_IID(IID_IKxContentView, 0x17ABE1C9, 0x886D, 0x4C18, 0x9D, 0x73, 0x9B, 0xD6, 0x36, 0x53, 0x4C, 0x95);
KX_DEFINE_IID(IID_IKxItemCursor, 0x46C94CEC, 0x0734, 0x4BB8, 0x9D, 0xCD, 0xC5, 0x4E, 0x4B, 0x0F, 0x1B, 0x8F);

struct IKxContentSite;

// ---- interfaces ------------------------------------------------------------------------------------------

// Marks the folder that resolves the well-known names. It has no operation of its own.
struct IKxContentRoot : public IUnknown {};

// The host's view of the current selection. It has no operation of its own; the plug-in asks it
// for IKxItemCursor.
struct IKxContentView : public IUnknown {};

struct IKxContentFolder : public IUnknown {
    // flags 1: child containers (IKxItemEnum); flags 4: tracks (IKxTrackList). S_FALSE: nothing to
    // enumerate, but an object is still given.
    virtual HRESULT STDMETHODCALLTYPE EnumItems(DWORD reserved, DWORD flags, REFIID riid, void** ppv) = 0;
    // The caller sets *attributes to 7; bits that stay set tell what the item can do.
    virtual HRESULT STDMETHODCALLTYPE GetItemAttributes(UINT count, const KxPcPidl* items, DWORD* attributes) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved1() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetItemName(KxPcPidl item, DWORD flags, LPWSTR* ppszName) = 0;
    // IKxItemProperties or IKxItemPreview for a set of items of this folder.
    virtual HRESULT STDMETHODCALLTYPE GetItemObject(IKxContentSite* site, HWND owner, UINT count,
                                                    const KxPcPidl* items, REFIID riid, void** ppv) = 0;
    virtual HRESULT STDMETHODCALLTYPE BindToFolder(KxPcPidl item, REFIID riid, void** ppv) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved2() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved3() = 0;
    virtual HRESULT STDMETHODCALLTYPE ParseName(LPCWSTR name, DWORD flags, KxPidl* ppidl) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOwnId(KxPidl* ppidl) = 0;
};

// Forward enumerator. S_OK: there may be more; S_FALSE: at the end, but an item fetched by this
// call still counts.
struct IKxItemEnum : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Next(ULONG count, KxPidl* items, ULONG* fetched) = 0;
};

// Random-access track list with a current position.
struct IKxTrackList : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Reserved1() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved2() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved3() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved4() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCount(INT* count) = 0;
    virtual HRESULT STDMETHODCALLTYPE MoveTo(INT index) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved5() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved6() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved7() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved8() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved9() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCurrentId(KxPidl* ppidl) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reset() = 0;
};

// Text filter of a track list; an empty text shows all tracks.
struct IKxTrackFilter : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Reserved1() = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFilterText(LPCWSTR text) = 0;
};

struct IKxItemProperties : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE PrefetchProperties(ULONG keyCount, const KxPropertyKey* keys) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved1() = 0;
    // Fails (0x80070490) when the item lacks the property; bit 1 of *flags: it can be written.
    virtual HRESULT STDMETHODCALLTYPE GetPropertyInfo(KxPcPidl item, const KxPropertyKey* key, DWORD* flags,
                                                      void* reserved) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved2() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved3() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved4() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStringProperty(KxPcPidl item, const KxPropertyKey* key, LPWSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStringProperty(UINT count, const KxPcPidl* items, const KxPropertyKey* key,
                                                        LPCWSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIntProperty(KxPcPidl item, const KxPropertyKey* key, LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetIntProperty(UINT count, const KxPcPidl* items, const KxPropertyKey* key,
                                                     LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved5() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved6() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved7() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved8() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved9() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved10() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved11() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved12() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved13() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved14() = 0;
    // The bytes come from CoTaskMemAlloc and belong to the caller.
    virtual HRESULT STDMETHODCALLTYPE GetBlobProperty(KxPcPidl item, const KxPropertyKey* key, DWORD* word,
                                                      BYTE** data, ULONG* size) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetBlobProperty(UINT count, const KxPcPidl* items, const KxPropertyKey* key,
                                                      DWORD word, const BYTE* data, ULONG size) = 0;
    // The caller zeroes `values`; a key the item lacks stays VT_EMPTY. S_OK and S_FALSE succeed.
    virtual HRESULT STDMETHODCALLTYPE GetProperties(KxPcPidl item, ULONG keyCount, const KxPropertyKey* keys,
                                                    PROPVARIANT* values) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetProperties(UINT count, const KxPcPidl* items, ULONG keyCount,
                                                    const KxPropertyKey* keys, const PROPVARIANT* values) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveProperties(UINT count, const KxPcPidl* items, ULONG keyCount,
                                                       const KxPropertyKey* keys) = 0;
};

// A picture of an image or video item.
struct IKxItemPreview : public IUnknown {
    // kind 2: ask GetPreviewBitmap; any other kind: *path is a picture file.
    virtual HRESULT STDMETHODCALLTYPE GetPreviewSource(DWORD* kind, LPWSTR* path) = 0;
    // The bitmap belongs to the caller (DeleteObject), whatever the result.
    virtual HRESULT STDMETHODCALLTYPE GetPreviewBitmap(const SIZE* size, HBITMAP* bitmap) = 0;
};

struct IKxContentSite : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Reserved1() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved2() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved3() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved4() = 0;
    // riid is IID_IKxContentView; both words are 0.
    virtual HRESULT STDMETHODCALLTYPE QueryService(REFIID riid, DWORD word1, DWORD word2, void** ppv) = 0;
};

// One item of the view: its index and identifier (the identifier belongs to the caller).
struct KxCursorItem {
    LONG index;
    KxPidl pidl;
};

// The ordered items of the host's view, with a current item.
struct IKxItemCursor : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetCount(ULONG* count) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved1() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCurrentItems(ULONG count, KxCursorItem* items, ULONG* fetched) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved2() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved3() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetItemAt(LONG index, KxPidl* ppidl) = 0;
};
