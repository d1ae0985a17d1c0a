// Pictures of windows for the headless demo: the window's own pixels copied from its window DC
// (PrintWindow gives nothing under Wine) and written as PNG with GDI+.
#pragma once

#include <windows.h>

// Writes the whole window, frame included, to `pngPath`. False when nothing could be written.
bool CaptureWindowToPng(HWND window, const wchar_t* pngPath);
