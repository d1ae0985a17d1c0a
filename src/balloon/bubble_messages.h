// The window messages and key that the bubble and the tips look at. The platform's headers define
// them on Windows; native builds of the portable code get the same values here.
#pragma once

#include "kx/KxPlatform.h"

#ifndef WM_DESTROY
#define WM_DESTROY 0x0002
#endif
#ifndef WM_KEYUP
#define WM_KEYUP 0x0101
#endif
#ifndef WM_TIMER
#define WM_TIMER 0x0113
#endif
#ifndef WM_MOUSEMOVE
#define WM_MOUSEMOVE 0x0200
#endif
#ifndef WM_LBUTTONDOWN
#define WM_LBUTTONDOWN 0x0201
#endif
#ifndef WM_RBUTTONDOWN
#define WM_RBUTTONDOWN 0x0204
#endif
#ifndef WM_MBUTTONDOWN
#define WM_MBUTTONDOWN 0x0207
#endif
#ifndef VK_SPACE
#define VK_SPACE 0x20
#endif

inline bool IsBubbleMouseButton(UINT message) {
    return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN;
}
