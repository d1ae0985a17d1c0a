// The library's side of the CallHookWnd protocol: the operations it answers and the popup
// descriptor it is handed. Words are 32 bits in the i686 build and pointer-sized in the x86_64
// build, as the plug-in passes them.
#pragma once

#include <windows.h>

#include <cstddef>

enum : DWORD_PTR {
    HK_OPEN = 1,              // -> a new hook handle
    HK_CLOSE = 2,             // hook -> releases what it holds and ends it
    HK_ATTACH_POPUP = 3,      // hook, 0, window, descriptor -> skins a popup by its picture
    HK_RELEASE = 4,           // hook -> lets the attached window go
    HK_POPUP_PICTURE = 12,    // hook, 1, 0, picture name -> the popup's new shape
    HK_ATTACH_DIALOG = 0x1000 // hook, window, description file, package path -> skins a dialog
};

struct HkPopupDescriptor {
    DWORD cbSize;
    LPCWSTR pszPackage;  // wide path of the package
    DWORD_PTR reserved1;
    const char* pszPicture;  // 8-bit picture name
    BYTE reserved2[24];
};
#if !defined(_WIN64)
static_assert(sizeof(HkPopupDescriptor) == 40, "the popup descriptor is 40 bytes");
static_assert(offsetof(HkPopupDescriptor, pszPackage) == 4, "package path at offset 4");
static_assert(offsetof(HkPopupDescriptor, pszPicture) == 12, "picture name at offset 12");
#endif
