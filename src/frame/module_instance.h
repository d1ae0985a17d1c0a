// The plug-in library's own instance handle, null until the library's load has stored it.
#pragma once

#include "kx/KxPlatform.h"

extern HINSTANCE g_hModuleInstance;
