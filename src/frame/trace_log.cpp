#include "frame/trace_log.h"

#include "base/boundary.h"

#ifndef _WIN32
#include "compat/wformat.h"
#include "compat/winsys.h"
#else
#include <stdio.h>
#endif

WCHAR g_szTraceMessage[kTraceBufferChars];
LONG g_nTraceLine;
BOOL g_bTraceThreadId;
BOOL g_bTraceListBox;
HWND g_hTraceListBox;
HANDLE g_hTraceFile;
BOOL g_bTraceDebugString;
const WCHAR* g_szTraceName;

HRESULT TraceFormatV(WCHAR* buffer, const WCHAR* format, va_list args) {
    // A count one below the buffer's size: the formatter cuts at 511 characters and answers -1,
    // leaving the last place for the terminator.
    int written = _vsnwprintf_s(buffer, kTraceBufferChars, kTraceBufferChars - 1, format, args);
    if (written < 0) {
        buffer[kTraceBufferChars - 1] = L'\0';
        return STRSAFE_E_INSUFFICIENT_BUFFER;
    }
    return S_OK;
}

HRESULT TraceFormat(WCHAR* buffer, const WCHAR* format, ...) {
    va_list args;
    va_start(args, format);
    HRESULT hr = TraceFormatV(buffer, format, args);
    va_end(args);
    return hr;
}

void TraceListBoxAdd(HWND listBox, const WCHAR* line) {
    for (;;) {
        LRESULT added = SendMessageW(listBox, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line));
        if (added != LB_ERRSPACE) break;
        // The list is full: the oldest line makes room. A list that is already empty, or will
        // not give up its first line, can never take this one, so the line is dropped.
        if (SendMessageW(listBox, LB_GETCOUNT, 0, 0) <= 0) return;
        if (SendMessageW(listBox, LB_DELETESTRING, 0, 0) == LB_ERR) return;
    }
    LRESULT count = SendMessageW(listBox, LB_GETCOUNT, 0, 0);
    SendMessageW(listBox, LB_SETCURSEL, static_cast<WPARAM>(count - 1), 0);
}

void TraceLog(const WCHAR* format, ...) {
    va_list args;
    va_start(args, format);
    TraceFormatV(g_szTraceMessage, format ? format : L"", args);
    va_end(args);

    const WCHAR* name = g_szTraceName ? g_szTraceName : L"";
    WCHAR line[kTraceBufferChars];
    if (g_bTraceListBox) {
        if (g_bTraceThreadId)
            TraceFormat(line, L"(%s):%d[%x]=%s", name, static_cast<int>(g_nTraceLine),
                        static_cast<unsigned>(GetCurrentThreadId()), g_szTraceMessage);
        else
            TraceFormat(line, L"(%s):%d=%s", name, static_cast<int>(g_nTraceLine), g_szTraceMessage);
        TraceListBoxAdd(g_hTraceListBox, line);
    }

    if (g_bTraceThreadId)
        TraceFormat(line, L"(%s):%d[%x]=%s\r\n", name, static_cast<int>(g_nTraceLine),
                    static_cast<unsigned>(GetCurrentThreadId()), g_szTraceMessage);
    else
        TraceFormat(line, L"(%s):%d=%s\r\n", name, static_cast<int>(g_nTraceLine), g_szTraceMessage);

    if (g_hTraceFile) {
        // UTF-16LE as it stands in memory, no byte-order mark; the outcome is not looked at.
        DWORD written = 0;
        WriteFile(g_hTraceFile, line, static_cast<DWORD>(lstrlenW(line)) * sizeof(WCHAR), &written, nullptr);
    }
    if (g_bTraceDebugString) OutputDebugStringW(line);

    InterlockedIncrement(&g_nTraceLine);
}

// The trace line of the boundary guard (base/boundary.h).
void KxTraceException(const WCHAR* where, KxExceptionKind kind) noexcept {
    TraceLog(L"E:%s>> Caught an exception: %s", where ? where : L"",
             kind == KxExceptionKind::OutOfMemory ? L"out of memory" : L"unexpected error");
}
