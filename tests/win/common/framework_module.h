// For Wine tests that link the window framework and the dialogs directly: makes this program the
// module and ComRcRes.dll beside it the resource source, as the plug-in's load and Init do, and
// registers the skin's window messages.
#pragma once

#include <windows.h>

namespace kxtest {

class FrameworkModule {
public:
    FrameworkModule();
    ~FrameworkModule();
    FrameworkModule(const FrameworkModule&) = delete;
    FrameworkModule& operator=(const FrameworkModule&) = delete;
    HMODULE resources() const { return m_resources; }

private:
    HMODULE m_resources;
};

}  // namespace kxtest
