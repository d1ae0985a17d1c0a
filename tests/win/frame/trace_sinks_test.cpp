// The trace log against the real platform: a list box window, a file on disk and the platform's
// bounded formatter.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "frame/trace_log.h"

namespace {

// A real list box gets the lines and selects the newest; the file gets UTF-16LE text as it stands,
// no byte-order mark, each line with its line end.
TEST(TraceSinks, ListBoxAndFileGetTheirLines) {
    HWND listBox = CreateWindowExW(0, L"LISTBOX", L"", WS_POPUP, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(nullptr, listBox);
    wchar_t dir[MAX_PATH];
    GetTempPathW(MAX_PATH, dir);
    const std::wstring path = std::wstring(dir) + L"kx_trace_sink.log";
    HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, file);
    g_szTraceName = L"Kx";
    g_bTraceListBox = TRUE;
    g_hTraceListBox = listBox;
    g_hTraceFile = file;
    const std::wstring first = std::to_wstring(g_nTraceLine), second = std::to_wstring(g_nTraceLine + 1);
    TraceLog(L"S:Probe::Run>> %s=%d", L"count", 3);
    TraceLog(L"E:Probe::Run>> %ws", L"done");
    g_bTraceListBox = FALSE;
    g_hTraceFile = nullptr;
    CloseHandle(file);

    EXPECT_EQ(2, SendMessageW(listBox, LB_GETCOUNT, 0, 0));
    EXPECT_EQ(1, SendMessageW(listBox, LB_GETCURSEL, 0, 0));
    DestroyWindow(listBox);
    HANDLE in = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, in);
    char bytes[512];
    DWORD read = 0;
    ReadFile(in, bytes, sizeof(bytes), &read, nullptr);
    CloseHandle(in);
    DeleteFileW(path.c_str());
    const std::wstring expected =
        L"(Kx):" + first + L"=S:Probe::Run>> count=3\r\n(Kx):" + second + L"=E:Probe::Run>> done\r\n";
    ASSERT_EQ(expected.size() * 2, read);
    EXPECT_EQ(0, std::memcmp("(\0K\0x\0", bytes, 6));
    EXPECT_EQ(expected, std::wstring(reinterpret_cast<const wchar_t*>(bytes), read / 2));
}

TEST(TraceSinks, PlatformFormatterCutsAt511) {
    WCHAR buffer[kTraceBufferChars];
    EXPECT_EQ(S_OK, TraceFormat(buffer, L"%s", std::wstring(511, L'a').c_str()));
    EXPECT_EQ(static_cast<HRESULT>(0x8007007Au), TraceFormat(buffer, L"%s!", std::wstring(511, L'b').c_str()));
    EXPECT_EQ(std::wstring(511, L'b'), buffer);
}

}  // namespace
