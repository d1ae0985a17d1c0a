// The Win32 platform behind the balloon tips: files, windows, the writable-pointer test, bubble
// windows, and the module's framework state.
#pragma once

#include "balloon/balloon_tip.h"

// The process-wide platform the plug-in's tips use.
IKxBalloonPlatform& KxWin32BalloonPlatform();
