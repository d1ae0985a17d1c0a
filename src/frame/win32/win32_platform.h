// The plug-in object's platform on Win32.
#pragma once

#include "frame/plugin_platform.h"

// The process-wide instance that the library's load installs.
IKxPluginPlatform& KxWin32PluginPlatform();
