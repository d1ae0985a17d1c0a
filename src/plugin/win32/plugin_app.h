// The plug-in library's application object: one static instance, started at library load.
#pragma once

#include <windows.h>

class CKxComResPlginApp {
public:
    CKxComResPlginApp() = default;
    virtual ~CKxComResPlginApp() = default;
    CKxComResPlginApp(const CKxComResPlginApp&) = delete;
    CKxComResPlginApp& operator=(const CKxComResPlginApp&) = delete;

    // Stores the library's instance handle for the frame and the window framework.
    virtual BOOL InitInstance(HINSTANCE instance);
    virtual int ExitInstance();
};
