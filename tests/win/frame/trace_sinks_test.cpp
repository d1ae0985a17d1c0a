// The trace log against the real platform: a file on disk and the platform's bounded formatter.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "frame/trace_log.h"

namespace {

// The file gets UTF-16LE text as it stands, no byte-order mark, each line with its line end.
TEST(TraceSinks, FileGetsItsLines) {
    wchar_t dir[MAX_PATH];
    GetTempPathW(MAX_PATH, dir);
    const std::wstring path = std::wstring(dir) + L"kx_trace_sink.log";
    HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, file);
    g_szTraceName = L"Kx";
    g_hTraceFile = file;
    g_nTraceLine = 7;
    TraceLog(L"S:Probe::Run>> %s=%d", L"count", 3);
    TraceLog(L"E:Probe::Run>> %ws", L"done");
    g_hTraceFile = nullptr;
    CloseHandle(file);
    HANDLE in = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, in);
    char bytes[512];
    DWORD read = 0;
    ReadFile(in, bytes, sizeof(bytes), &read, nullptr);
    CloseHandle(in);
    DeleteFileW(path.c_str());
    EXPECT_EQ(std::wstring(L"(Kx):7=S:Probe::Run>> count=3\r\n(Kx):8=E:Probe::Run>> done\r\n"),
              std::wstring(reinterpret_cast<const wchar_t*>(bytes), read / 2));
    EXPECT_EQ(0, read % 2);
}

TEST(TraceSinks, PlatformFormatterCutsAt511) {
    WCHAR buffer[kTraceBufferChars];
    EXPECT_EQ(S_OK, TraceFormat(buffer, L"%s", std::wstring(511, L'a').c_str()));
    EXPECT_EQ(static_cast<HRESULT>(0x8007007Au), TraceFormat(buffer, L"%s!", std::wstring(511, L'b').c_str()));
    EXPECT_EQ(std::wstring(511, L'b'), buffer);
}

}  // namespace
