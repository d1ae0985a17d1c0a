// Kernel and window calls off Windows: forwarded to the fakes of the tests.
#include "compat/winsys.h"

#include <atomic>
#include <sys/syscall.h>
#include <unistd.h>

namespace {
std::atomic<kxcompat::DebugOutputSink> g_debugSink{nullptr};
std::atomic<void*> g_debugContext{nullptr};
}  // namespace

DWORD GetCurrentThreadId() { return static_cast<DWORD>(::syscall(SYS_gettid)); }

BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD bytesToWrite, LPDWORD bytesWritten, LPOVERLAPPED) {
    if (bytesWritten) *bytesWritten = 0;
    if (!file || (!buffer && bytesToWrite)) return FALSE;
    DWORD written = 0;
    BOOL ok = static_cast<kxcompat::FakeFile*>(file)->Write(buffer, bytesToWrite, &written);
    if (bytesWritten) *bytesWritten = written;
    return ok;
}

void OutputDebugStringW(LPCWSTR text) {
    kxcompat::DebugOutputSink sink = g_debugSink.load();
    if (sink && text) sink(text, g_debugContext.load());
}

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!window) return 0;
    return reinterpret_cast<kxcompat::FakeWindow*>(window)->OnMessage(message, wParam, lParam);
}

namespace kxcompat {
void SetDebugOutputSink(DebugOutputSink sink, void* context) {
    g_debugContext.store(context);
    g_debugSink.store(sink);
}
}  // namespace kxcompat
