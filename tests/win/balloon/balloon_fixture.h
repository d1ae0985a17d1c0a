// What the balloon tip tests under Wine share: a copy of the plug-in in a folder of its own, with
// or without a skin package beside it, the host's windows, the bubble windows of this thread, a
// message pump for the bubble's timers, and the audit of what the process holds.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "kx/IKxBalloonTip.h"
#include "kx/IKxCommonResource.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/plugin_loader.h"

namespace kxtest {

// A folder beside the test with KxComResPlgin.dll and ComRcRes.dll copied in, and with a skin
// package when `withSkin`: the built package when there is one, else a placeholder file that the
// recording skin library, which does not read it, is content with.
std::wstring PreparePluginFolder(const std::wstring& name, bool withSkin);

// The bubble windows that belong to this thread.
std::vector<HWND> BubbleWindows();
HWND TheBubble();  // the one bubble, null when there is none (or more than one)
// Texts of the bubble's two statics: title, then body.
std::vector<std::wstring> BubbleTexts(HWND bubble);
// Dispatches this thread's messages for `ms` milliseconds.
void Pump(DWORD ms);
// Dispatches until `done` holds, for at most `ms` milliseconds; whether it held.
bool PumpUntil(DWORD ms, bool (*done)());

// A top-level window of the host at a given screen rectangle.
HWND HostWindow(int x, int y, int w, int h);

}  // namespace kxtest
