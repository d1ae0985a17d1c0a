// The few kernel and window calls that portable code makes, for builds off Windows, by the
// platform's names. There is no window system and no file system behind them here: a window
// handle is a test's kxcompat::FakeWindow, a file handle a kxcompat::FakeFile, and the debugger's
// output goes to a sink a test installs.
#pragma once

#ifdef _WIN32
#error "winsys.h is for non-Windows builds"
#endif

#include "compat/wincompat.h"

typedef const void* LPCVOID;
typedef DWORD* LPDWORD;
struct OVERLAPPED;
typedef OVERLAPPED* LPOVERLAPPED;

// List box messages and answers.
#define LB_ADDSTRING 0x0180
#define LB_DELETESTRING 0x0182
#define LB_SETCURSEL 0x0186
#define LB_GETCOUNT 0x018B
#define LB_OKAY 0
#define LB_ERR (-1)
#define LB_ERRSPACE (-2)

DWORD GetCurrentThreadId();
BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD bytesToWrite, LPDWORD bytesWritten, LPOVERLAPPED overlapped);
void OutputDebugStringW(LPCWSTR text);
LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

namespace kxcompat {

// A window as far as SendMessageW goes.
class FakeWindow {
public:
    virtual ~FakeWindow() = default;
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    HWND hwnd() { return reinterpret_cast<HWND>(this); }
};

// An open file as far as WriteFile goes.
class FakeFile {
public:
    virtual ~FakeFile() = default;
    virtual BOOL Write(const void* data, DWORD bytes, DWORD* written) = 0;
    HANDLE handle() { return this; }
};

// Receives every OutputDebugStringW of the process; null: the text goes nowhere.
typedef void (*DebugOutputSink)(LPCWSTR text, void* context);
void SetDebugOutputSink(DebugOutputSink sink, void* context);

}  // namespace kxcompat
