// The Windows and COM vocabulary that portable code needs, for builds off Windows.
// On Windows the same names come from the platform headers; nothing here is compiled there.
#pragma once

#ifdef _WIN32
#error "wincompat.h is for non-Windows builds; include kx/KxPlatform.h instead"
#endif

#include <cstddef>
#include <cstdint>
#include <cstdarg>
#include <cstring>

// ---- base types (LLP64 sizes, as on Windows) -------------------------------------------------
typedef int32_t HRESULT;
typedef int32_t LONG;
typedef uint32_t ULONG;
typedef uint32_t DWORD;
typedef uint16_t WORD;
typedef uint16_t USHORT;
typedef uint8_t BYTE;
typedef int32_t INT;
typedef uint32_t UINT;
typedef int BOOL;
typedef float FLOAT;
typedef int64_t LONGLONG;
typedef uint64_t ULONGLONG;
typedef wchar_t WCHAR;
typedef WCHAR* LPWSTR;
typedef const WCHAR* LPCWSTR;
typedef void* LPVOID;
typedef intptr_t INT_PTR;
typedef uintptr_t UINT_PTR;
typedef intptr_t LONG_PTR;
typedef uintptr_t ULONG_PTR;
typedef uintptr_t WPARAM;
typedef intptr_t LPARAM;
typedef intptr_t LRESULT;
typedef uint16_t VARTYPE;

#define TRUE 1
#define FALSE 0
#define STDMETHODCALLTYPE
#define STDAPICALLTYPE
#define WINAPI
#define CALLBACK

// Handles are distinct opaque pointer types, as with STRICT on Windows.
#define KX_COMPAT_HANDLE(name) \
    struct name##__ { int unused; }; \
    typedef struct name##__* name
KX_COMPAT_HANDLE(HWND);
KX_COMPAT_HANDLE(HINSTANCE);
KX_COMPAT_HANDLE(HBITMAP);
KX_COMPAT_HANDLE(HICON);
KX_COMPAT_HANDLE(HFONT);
KX_COMPAT_HANDLE(HDC);
#undef KX_COMPAT_HANDLE
typedef HINSTANCE HMODULE;
typedef void* HANDLE;

struct POINT { LONG x; LONG y; };
struct SIZE { LONG cx; LONG cy; };
struct RECT { LONG left; LONG top; LONG right; LONG bottom; };
struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};

union LARGE_INTEGER {
    struct { DWORD LowPart; LONG HighPart; } u;
    LONGLONG QuadPart;
};
union ULARGE_INTEGER {
    struct { DWORD LowPart; DWORD HighPart; } u;
    ULONGLONG QuadPart;
};

// ---- GUID --------------------------------------------------------------------------------------
struct GUID {
    uint32_t Data1;
    uint16_t Data2;
    uint16_t Data3;
    uint8_t Data4[8];
};
typedef GUID IID;
typedef GUID CLSID;
typedef const GUID& REFGUID;
typedef const IID& REFIID;
typedef const CLSID& REFCLSID;

inline bool IsEqualGUID(REFGUID a, REFGUID b) { return std::memcmp(&a, &b, sizeof(GUID)) == 0; }
inline bool IsEqualIID(REFIID a, REFIID b) { return IsEqualGUID(a, b); }
inline bool IsEqualCLSID(REFCLSID a, REFCLSID b) { return IsEqualGUID(a, b); }
inline bool operator==(REFGUID a, REFGUID b) { return IsEqualGUID(a, b); }
inline bool operator!=(REFGUID a, REFGUID b) { return !IsEqualGUID(a, b); }

// ---- status codes --------------------------------------------------------------------------------
#define SUCCEEDED(hr) (((HRESULT)(hr)) >= 0)
#define FAILED(hr) (((HRESULT)(hr)) < 0)
#define KX_HR(v) ((HRESULT)(uint32_t)(v))
#define HRESULT_FROM_WIN32(e) \
    ((HRESULT)(e) <= 0 ? (HRESULT)(e) : KX_HR((((uint32_t)(e)) & 0x0000FFFFu) | 0x80070000u))

#define S_OK ((HRESULT)0)
#define S_FALSE ((HRESULT)1)
#define E_NOTIMPL KX_HR(0x80004001u)
#define E_NOINTERFACE KX_HR(0x80004002u)
#define E_POINTER KX_HR(0x80004003u)
#define E_ABORT KX_HR(0x80004004u)
#define E_FAIL KX_HR(0x80004005u)
#define E_UNEXPECTED KX_HR(0x8000FFFFu)
#define E_ACCESSDENIED KX_HR(0x80070005u)
#define E_HANDLE KX_HR(0x80070006u)
#define E_OUTOFMEMORY KX_HR(0x8007000Eu)
#define E_INVALIDARG KX_HR(0x80070057u)
#define CLASS_E_NOAGGREGATION KX_HR(0x80040110u)
#define CLASS_E_CLASSNOTAVAILABLE KX_HR(0x80040111u)
#define STRSAFE_E_INSUFFICIENT_BUFFER KX_HR(0x8007007Au)
#define DISP_E_TYPEMISMATCH KX_HR(0x80020005u)

#define ERROR_SUCCESS 0L
#define ERROR_FILE_NOT_FOUND 2L
#define ERROR_ACCESS_DENIED 5L
#define ERROR_INVALID_HANDLE 6L
#define ERROR_NOT_ENOUGH_MEMORY 8L
#define ERROR_INVALID_PARAMETER 87L
#define ERROR_INSUFFICIENT_BUFFER 122L
#define ERROR_CANCELLED 1223L
#define ERROR_NOT_FOUND 1168L

// ---- dialog results and message box flags (portable dialog logic decides with these) ----------
#define IDOK 1
#define IDCANCEL 2
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5
#define IDYES 6
#define IDNO 7
#define IDCLOSE 8

#define MB_OK 0x00000000u
#define MB_OKCANCEL 0x00000001u
#define MB_ABORTRETRYIGNORE 0x00000002u
#define MB_YESNOCANCEL 0x00000003u
#define MB_YESNO 0x00000004u
#define MB_RETRYCANCEL 0x00000005u
#define MB_ICONHAND 0x00000010u
#define MB_ICONERROR MB_ICONHAND
#define MB_ICONSTOP MB_ICONHAND
#define MB_ICONQUESTION 0x00000020u
#define MB_ICONEXCLAMATION 0x00000030u
#define MB_ICONWARNING MB_ICONEXCLAMATION
#define MB_ICONASTERISK 0x00000040u
#define MB_ICONINFORMATION MB_ICONASTERISK
#define MB_DEFBUTTON1 0x00000000u
#define MB_DEFBUTTON2 0x00000100u
#define MB_DEFBUTTON3 0x00000200u
#define MB_TYPEMASK 0x0000000Fu
#define MB_ICONMASK 0x000000F0u
#define MB_DEFMASK 0x00000F00u

// ---- IUnknown, in the standard table order ------------------------------------------------------
struct IUnknown {
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) = 0;
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE Release() = 0;
};

struct IClassFactory : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID riid, void** ppv) = 0;
    virtual HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) = 0;
};

extern const IID IID_IUnknown;
extern const IID IID_IClassFactory;

// ---- PROPVARIANT -----------------------------------------------------------------------------
enum VARENUM : VARTYPE {
    VT_EMPTY = 0,
    VT_I4 = 3,
    VT_R4 = 4,
    VT_UI4 = 19,
    VT_I8 = 20,
    VT_UI8 = 21,
    VT_LPWSTR = 31,
    VT_BLOB = 65,
};

struct BLOB {
    ULONG cbSize;
    BYTE* pBlobData;
};

// A rational travels as VT_UI8 in uhVal: numerator in the high 32 bits, denominator in the low.
struct PROPVARIANT {
    VARTYPE vt;
    WORD wReserved1;
    WORD wReserved2;
    WORD wReserved3;
    union {
        LONG lVal;
        ULONG ulVal;
        INT intVal;
        UINT uintVal;
        FLOAT fltVal;
        LARGE_INTEGER hVal;
        ULARGE_INTEGER uhVal;
        LPWSTR pwszVal;
        BLOB blob;
    };
};

HRESULT PropVariantClear(PROPVARIANT* pv);
inline void PropVariantInit(PROPVARIANT* pv) { std::memset(pv, 0, sizeof(*pv)); }

// ---- COM task memory -----------------------------------------------------------------------------
void* CoTaskMemAlloc(size_t cb);
void* CoTaskMemRealloc(void* pv, size_t cb);
void CoTaskMemFree(void* pv);

// ---- interlocked ---------------------------------------------------------------------------------
inline LONG InterlockedIncrement(LONG volatile* p) { return __atomic_add_fetch(p, 1, __ATOMIC_SEQ_CST); }
inline LONG InterlockedDecrement(LONG volatile* p) { return __atomic_sub_fetch(p, 1, __ATOMIC_SEQ_CST); }
inline LONG InterlockedExchange(LONG volatile* p, LONG v) { return __atomic_exchange_n(p, v, __ATOMIC_SEQ_CST); }

// ---- strings ---------------------------------------------------------------------------------------
inline int lstrlenW(LPCWSTR s) {
    int n = 0;
    if (s)
        while (s[n]) ++n;
    return n;
}

namespace kxcompat {

// Live CoTaskMem blocks of this process (allocations minus frees).
long LiveTaskMemBlocks();

// Make CoTaskMemAlloc/CoTaskMemRealloc fail: the `nth` call from now (1 = the next one) and the
// `count` calls after it fail; count < 0 makes every call from the nth on fail.
void FailTaskMemAllocations(int nth, int count = 1);
// Stop failing allocations.
void ResetTaskMemFailures();
// Number of allocation calls (successful or failed) since the process started.
long TaskMemAllocationCalls();

}  // namespace kxcompat
