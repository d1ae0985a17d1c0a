// The content manager's two interfaces, its start record and its callback: the binary contract
// between the tag dialog and the component (our own KxNetContent.dll or any other that keeps it).
// The operations answer kNetContentOk (0x1000) for success and any other value for failure.
// Unused slots keep the table's layout; a caller never calls them and ours answer
// kNetContentNotSupported.
#pragma once

#include "kx/KxPlatform.h"

#include <cstddef>

KX_DEFINE_IID(CLSID_NetContentMgr, 0xD1180ABF, 0xAFEC, 0x4C17, 0x97, 0xAE, 0xAD, 0x28, 0x74, 0xB8, 0x39, 0xEB);
KX_DEFINE_IID(IID_INetContentMgr, 0xFE1B19D2, 0x5C95, 0x4378, 0x8D, 0xE0, 0x45, 0x95, 0x63, 0x7B, 0xE0, 0xC4);
KX_DEFINE_IID(IID_INetContentLookup, 0x5A5CE04E, 0xE6BF, 0x49D3, 0x84, 0xCA, 0xCA, 0x1D, 0xC1, 0x08, 0x97, 0x21);
// The channel a client opens, given twice to Open.
KX_DEFINE_IID(NETCONTENT_ARTWORK_CHANNEL, 0x7B8E99DD, 0xB549, 0x4853, 0x81, 0xB5, 0xD8, 0xE5, 0x20, 0xD8, 0xCF, 0x57);

constexpr LONG kNetContentOk = 0x1000;
constexpr LONG kNetContentNotSupported = 0x1001;  // an unused slot, or an operation out of order
constexpr LONG kNetContentBadArgument = 0x1002;   // a null pointer, a record or channel refused
constexpr LONG kNetContentBusy = 0x1003;          // a lookup is running already
constexpr LONG kNetContentFailed = 0x1004;        // no memory, no thread

// Capability bits of GetCapabilities: pictures of the track's own files, and of an art service.
constexpr DWORD kNetContentLocalArt = 0x4;
constexpr DWORD kNetContentServiceArt = 0x8;

// Statuses of the callback. Only kNetContentFound carries a picture.
constexpr LONG kNetContentFound = 7;
constexpr LONG kNetContentNotFound = 8;

// Where a found picture came from (NetContentResult::source).
enum NetContentSource : DWORD { kSourceNone = 0, kSourceBeside = 1, kSourceEmbedded = 2, kSourceService = 3 };

// The block of a callback, valid during the call only: the receiver copies what it keeps.
struct NetContentResult {
    DWORD cbSize;      // sizeof(NetContentResult)
    DWORD source;      // NetContentSource
    DWORD pictureSize; // byte 8: size of the picture
    BYTE* picture;     // byte 12 on i686: the picture's bytes
};

typedef LONG(CALLBACK* NetContentCallback)(LONG status, const NetContentResult* result, void* context);

// The start record given to Initialize: 144 bytes on i686, the pointers widened on x86_64.
struct NetContentStartRecord {
    DWORD cbSize;              // sizeof(NetContentStartRecord)
    WCHAR clientName[32];      // terminated
    GUID clientId;
    DWORD codePage;            // 1252
    DWORD reserved88;          // not set by the plug-in
    DWORD options[3];          // 1, 0, 0
    const BYTE* clientKey;     // 16 bytes, not terminated
    const char* clientCode;    // 8 lower-case hexadecimal digits and their end mark
    DWORD flags[4];            // 1, 1, 1, 1
    RECT area;                 // the dialog's top-left corner and 80 by 80 beyond it
};

#if defined(_WIN32) && !defined(_WIN64)
static_assert(sizeof(NetContentStartRecord) == 144, "start record");
static_assert(offsetof(NetContentStartRecord, clientId) == 68 && offsetof(NetContentStartRecord, codePage) == 84 &&
                  offsetof(NetContentStartRecord, clientKey) == 104 && offsetof(NetContentStartRecord, clientCode) == 108 &&
                  offsetof(NetContentStartRecord, flags) == 112 && offsetof(NetContentStartRecord, area) == 128,
              "start record layout");
static_assert(sizeof(NetContentResult) == 16 && offsetof(NetContentResult, picture) == 12, "result block");
#elif defined(_WIN64)
// The same fields with the two pointers widened to 8 bytes and aligned.
static_assert(sizeof(NetContentStartRecord) == 152, "start record");
static_assert(offsetof(NetContentStartRecord, clientKey) == 104 && offsetof(NetContentStartRecord, clientCode) == 112 &&
                  offsetof(NetContentStartRecord, flags) == 120 && offsetof(NetContentStartRecord, area) == 136,
              "start record layout");
static_assert(sizeof(NetContentResult) == 24 && offsetof(NetContentResult, picture) == 16, "result block");
#endif

struct INetContentMgr : public IUnknown {
    virtual LONG STDMETHODCALLTYPE Unused3() = 0;
    virtual LONG STDMETHODCALLTYPE Unused4() = 0;
    virtual LONG STDMETHODCALLTYPE Initialize(const NetContentStartRecord* record) = 0;
    virtual LONG STDMETHODCALLTYPE Terminate() = 0;
    virtual LONG STDMETHODCALLTYPE SetCallback(NetContentCallback callback, void* context) = 0;
    virtual LONG STDMETHODCALLTYPE Open(const GUID* channel, const GUID* channelAgain, HWND window) = 0;
    virtual LONG STDMETHODCALLTYPE Close() = 0;
    virtual LONG STDMETHODCALLTYPE Unused10() = 0;
    virtual LONG STDMETHODCALLTYPE Unused11() = 0;
    virtual LONG STDMETHODCALLTYPE GetPendingFlag(LONG* pending) = 0;
    virtual LONG STDMETHODCALLTYPE Unused13() = 0;
    virtual LONG STDMETHODCALLTYPE ResolvePending(LONG_PTR zero) = 0;
};

#define KX_NETCONTENT_UNUSED(n) virtual LONG STDMETHODCALLTYPE Unused##n() = 0;
struct INetContentLookup : public IUnknown {
    KX_NETCONTENT_UNUSED(3) KX_NETCONTENT_UNUSED(4) KX_NETCONTENT_UNUSED(5) KX_NETCONTENT_UNUSED(6)
    KX_NETCONTENT_UNUSED(7) KX_NETCONTENT_UNUSED(8) KX_NETCONTENT_UNUSED(9) KX_NETCONTENT_UNUSED(10)
    KX_NETCONTENT_UNUSED(11) KX_NETCONTENT_UNUSED(12) KX_NETCONTENT_UNUSED(13) KX_NETCONTENT_UNUSED(14)
    KX_NETCONTENT_UNUSED(15) KX_NETCONTENT_UNUSED(16) KX_NETCONTENT_UNUSED(17) KX_NETCONTENT_UNUSED(18)
    KX_NETCONTENT_UNUSED(19) KX_NETCONTENT_UNUSED(20) KX_NETCONTENT_UNUSED(21) KX_NETCONTENT_UNUSED(22)
    KX_NETCONTENT_UNUSED(23) KX_NETCONTENT_UNUSED(24) KX_NETCONTENT_UNUSED(25) KX_NETCONTENT_UNUSED(26)
    KX_NETCONTENT_UNUSED(27) KX_NETCONTENT_UNUSED(28) KX_NETCONTENT_UNUSED(29) KX_NETCONTENT_UNUSED(30)
    KX_NETCONTENT_UNUSED(31) KX_NETCONTENT_UNUSED(32)
    virtual DWORD STDMETHODCALLTYPE GetCapabilities() = 0;
    // The three first and the six last words are the request's kind and options (1, 2, then
    // 0, 0, 5, 0, 0, 0, 0, 0 from the tag dialog); this component takes any and answers the art.
    virtual LONG STDMETHODCALLTYPE RequestArtwork(LONG kind, LONG variant, LPCWSTR path, LONG_PTR a4, LONG_PTR a5,
                                                  LONG a6, LONG_PTR a7, LONG_PTR a8, LONG_PTR a9, LONG_PTR a10,
                                                  LONG_PTR a11) = 0;
};
#undef KX_NETCONTENT_UNUSED
