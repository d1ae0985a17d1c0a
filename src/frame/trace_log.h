// The component's diagnostic trace: TraceLog formats a message and sends the numbered line to
// up to three sinks (a list box, an open file, the debugger's output). Every sink is off at load;
// the variables below switch them on. TraceLog never fails towards its caller.
//
// Messages read "S:Class::Method> text" for a step of normal progress and
// "E:Class::Method> text" for a failure on that path.
#pragma once

#include "kx/KxPlatform.h"

#include <cstdarg>

// The status of a text cut to fit its buffer (the platform declares it in strsafe.h).
#ifndef STRSAFE_E_INSUFFICIENT_BUFFER
#define STRSAFE_E_INSUFFICIENT_BUFFER ((HRESULT)0x8007007AL)
#endif

// Characters of every trace buffer, terminator included.
constexpr int kTraceBufferChars = 512;

extern WCHAR g_szTraceMessage[kTraceBufferChars];  // the last message after formatting
extern LONG g_nTraceLine;                          // running line number, printed with each line
extern BOOL g_bTraceThreadId;                      // lines carry the calling thread's identifier
extern BOOL g_bTraceListBox;                       // lines go to g_hTraceListBox
extern HWND g_hTraceListBox;
extern HANDLE g_hTraceFile;                        // non-null: lines are written to this file
extern BOOL g_bTraceDebugString;                   // lines go to OutputDebugStringW
extern const WCHAR* g_szTraceName;                 // the component's name at the head of each line; null: empty

// Formats `format` ("%s" and "%ws" are wide strings) and sends the line to the sinks that are on.
void TraceLog(const WCHAR* format, ...);

// Bounded formatting into a buffer of kTraceBufferChars: at most 511 characters and a terminator.
// Returns S_OK, or STRSAFE_E_INSUFFICIENT_BUFFER (0x8007007a) when the text was cut at 511
// characters or could not be formatted (the buffer is then terminated in its last place).
HRESULT TraceFormatV(WCHAR* buffer, const WCHAR* format, va_list args);
HRESULT TraceFormat(WCHAR* buffer, const WCHAR* format, ...);

// Adds one finished line to the list box, dropping its oldest lines while it reports no space,
// and keeps the newest line selected.
void TraceListBoxAdd(HWND listBox, const WCHAR* line);
