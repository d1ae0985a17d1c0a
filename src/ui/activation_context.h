// Common controls 6 for the plug-in's own windows. The host's manifest is not ours to rely on, so
// the module carries its own (resource 2 of type RT_MANIFEST, asking for common controls 6) and
// activates it around everything that creates its windows.
#pragma once

#include <windows.h>

class CKxCommonControlsScope {
public:
    CKxCommonControlsScope();
    ~CKxCommonControlsScope();
    CKxCommonControlsScope(const CKxCommonControlsScope&) = delete;
    CKxCommonControlsScope& operator=(const CKxCommonControlsScope&) = delete;

    // True when the module's manifest is active on this thread for the scope's length.
    bool Active() const { return m_cookie != 0; }

private:
    HANDLE m_hContext;
    ULONG_PTR m_cookie;
};

// The module whose code this is: the plug-in DLL, or a test program that links the framework.
HMODULE KxGetCodeModule();
