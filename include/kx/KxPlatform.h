// Base types for the public headers: the platform's own on Windows, the project's compatibility
// layer elsewhere (native builds of the portable code and its tests).
#pragma once

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <objbase.h>
#include <propidl.h>
#else
#include "compat/wincompat.h"
#endif

// Declares an interface identifier as a constant that needs no __uuidof.
#define KX_DEFINE_IID(name, l, w1, w2, b1, b2, b3, b4, b5, b6, b7, b8) \
    static const GUID name = {l, w1, w2, {b1, b2, b3, b4, b5, b6, b7, b8}}
