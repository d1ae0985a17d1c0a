// Pictures of windows for the headless demo: the window's own pixels copied from its window DC
// (PrintWindow gives nothing under Wine) and written as PNG with GDI+.
#pragma once

#include <windows.h>

#include <vector>

// Writes the whole window, frame included, to `pngPath`. False when nothing could be written.
bool CaptureWindowToPng(HWND window, const wchar_t* pngPath);
// Several windows in one picture as they lie on the screen, later ones over earlier ones (a
// dialog, then the balloon tip that points at one of its fields), on the rectangle that holds
// them all; what none covers is the desktop's colour.
bool CaptureWindowsToPng(const std::vector<HWND>& windows, const wchar_t* pngPath);
