// HookWndWC: the client of the skinning library HookWndU.DLL. The library is loaded by name at run
// time and reached through its one export, CallHookWnd, which takes an operation, a hook handle
// and three operands. Every dialog and the bubble hold one HookWndWC; when the library is not
// there, attaching returns 0 and the window keeps the platform's own look.
#pragma once

#include <cstddef>

#include "base/owners.h"

// The words of CallHookWnd are 32 bits in the shipped i686 build; the x86_64 build widens them to
// pointer size so that window handles and pointers pass unchanged.
typedef DWORD_PTR(WINAPI* PFN_CALLHOOKWND)(DWORD_PTR operation, DWORD_PTR hook, DWORD_PTR third, DWORD_PTR fourth,
                                           DWORD_PTR fifth);

// Operations of CallHookWnd that the component uses.
enum : DWORD {
    KX_HOOKOP_OPEN = 1,              // -> hook handle, 0 on failure
    KX_HOOKOP_CLOSE = 2,             // hook
    KX_HOOKOP_ATTACH_POPUP = 3,      // hook, 0, window, popup descriptor -> 0 on failure
    KX_HOOKOP_RELEASE = 4,           // hook: lets the attached window go, before KX_HOOKOP_CLOSE
    KX_HOOKOP_POPUP_PICTURE = 12,    // hook, 1, 0, picture name
    KX_HOOKOP_ATTACH_DIALOG = 0x1000 // hook, window, description file name, package path
};

// File name of the skinning library and of its export.
#define KX_HOOK_LIBRARY_NAME L"HookWndU.DLL"
#define KX_HOOK_EXPORT_NAME "CallHookWnd"

// Popup descriptor of KX_HOOKOP_ATTACH_POPUP: 40 bytes on i686, on the caller's stack for the
// length of the call. Names of pictures are 8-bit strings, the package path is wide.
struct _tagHookPopupDescriptor {
    DWORD cbSize;             // sizeof(_tagHookPopupDescriptor): 40 on i686
    LPCWSTR pszSkinPath;      // the package ComRcRes.bff
    DWORD_PTR dwReserved1;    // 0
    const char* pszPicture;   // the popup's picture
    BYTE reserved2[24];       // 0
};
#if defined(_WIN32) && !defined(_WIN64)
static_assert(sizeof(_tagHookPopupDescriptor) == 40, "the popup descriptor is 40 bytes");
static_assert(offsetof(_tagHookPopupDescriptor, pszSkinPath) == 4, "package path at offset 4");
static_assert(offsetof(_tagHookPopupDescriptor, dwReserved1) == 8, "zero word at offset 8");
static_assert(offsetof(_tagHookPopupDescriptor, pszPicture) == 12, "picture name at offset 12");
static_assert(offsetof(_tagHookPopupDescriptor, reserved2) == 16, "24 zero bytes at offset 16");
#endif

// A zeroed descriptor with its size, the package path and the picture name filled in.
_tagHookPopupDescriptor MakeHookPopupDescriptor(LPCWSTR pszSkinPath, const char* pszPicture);

class HookWndWC {
public:
    HookWndWC();
    virtual ~HookWndWC();
    HookWndWC(const HookWndWC&) = delete;
    HookWndWC& operator=(const HookWndWC&) = delete;

    // Skins a dialog from its description file in the package. Returns the library's answer to
    // the attach, 0 when the library, its export or a hook cannot be had.
    DWORD_PTR AttachDialog(HWND hWnd, const char* pszDescriptionFile, LPCWSTR pszSkinPath);
    // Skins a popup; starts from a fresh hook and a freshly loaded library every time.
    DWORD_PTR AttachPopup(HWND hWnd, _tagHookPopupDescriptor* pDescriptor);
    // Sets the shape picture of a skinned popup; 0 without the library.
    DWORD_PTR SetPopupPicture(DWORD_PTR hHook, const char* pszPicture);
    // Releases the window, closes the hook, frees the library. Returns the release's answer, 0
    // when there was no hook.
    DWORD_PTR Detach();

    DWORD_PTR m_hHook;                 // 0: none
    CKxModule m_hHookLibrary;          // HookWndU.DLL
    PFN_CALLHOOKWND m_pfnCallHookWnd;  // its export

private:
    // Loads the library if needed and finds the export; false when either is missing.
    bool LoadHookLibrary();
};
