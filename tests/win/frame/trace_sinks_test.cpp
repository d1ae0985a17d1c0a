// The trace log against the real platform: a list box window, a file on disk and the platform's
// bounded formatter; and the skin messages as the plug-in registers them.
#include <windows.h>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>

#include "frame/trace_log.h"
#include "frame/win32/skin_messages.h"

namespace {

std::wstring TempPath(const wchar_t* name) {
    wchar_t dir[MAX_PATH];
    GetTempPathW(MAX_PATH, dir);
    return std::wstring(dir) + name;
}

TEST(TraceSinks, ListBoxAndFileGetTheirLines) {
    HWND listBox = CreateWindowExW(0, L"LISTBOX", L"", WS_POPUP, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(nullptr, listBox);
    std::wstring path = TempPath(L"kx_trace_sink.log");
    HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, file);

    g_szTraceName = L"KxComResPlgin";
    g_bTraceListBox = TRUE;
    g_hTraceListBox = listBox;
    g_hTraceFile = file;
    LONG first = g_nTraceLine;
    TraceLog(L"S:Probe::Run>> %s=%d", L"count", 3);
    TraceLog(L"E:Probe::Run>> %ws", L"done");
    g_bTraceListBox = FALSE;
    g_hTraceFile = nullptr;
    CloseHandle(file);

    ASSERT_EQ(2, SendMessageW(listBox, LB_GETCOUNT, 0, 0));
    EXPECT_EQ(1, SendMessageW(listBox, LB_GETCURSEL, 0, 0));
    wchar_t text[512];
    SendMessageW(listBox, LB_GETTEXT, 0, reinterpret_cast<LPARAM>(text));
    EXPECT_EQ(L"(KxComResPlgin):" + std::to_wstring(first) + L"=S:Probe::Run>> count=3", std::wstring(text));
    DestroyWindow(listBox);

    // UTF-16LE text as it stands, no byte-order mark, each line with its line end.
    HANDLE in = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, in);
    char bytes[2048];
    DWORD read = 0;
    ReadFile(in, bytes, sizeof(bytes), &read, nullptr);
    CloseHandle(in);
    DeleteFileW(path.c_str());
    std::wstring expected = L"(KxComResPlgin):" + std::to_wstring(first) + L"=S:Probe::Run>> count=3\r\n" +
                            L"(KxComResPlgin):" + std::to_wstring(first + 1) + L"=E:Probe::Run>> done\r\n";
    ASSERT_EQ(expected.size() * 2, read);
    EXPECT_EQ('(', bytes[0]);
    EXPECT_EQ(0, bytes[1]);
    EXPECT_EQ(expected, std::wstring(reinterpret_cast<const wchar_t*>(bytes), read / 2));
}

TEST(TraceSinks, PlatformFormatterCutsAt511) {
    WCHAR buffer[kTraceBufferChars];
    EXPECT_EQ(S_OK, TraceFormat(buffer, L"%s", std::wstring(511, L'a').c_str()));
    EXPECT_EQ(511u, wcslen(buffer));
    EXPECT_EQ(STRSAFE_E_INSUFFICIENT_BUFFER, TraceFormat(buffer, L"%s!", std::wstring(511, L'a').c_str()));
    EXPECT_EQ(std::wstring(511, L'a'), buffer);
}

TEST(SkinMessages, NineDistinctMessagesUnderTheirNames) {
    KxRegisterSkinMessages();
#define KX_MESSAGE(name) {name, L"" #name}
    const std::pair<UINT, const wchar_t*> messages[] = {
        KX_MESSAGE(WM_HKSTATIC_FUNCTION),     KX_MESSAGE(WM_HKBUTTON_FUNCTION),
        KX_MESSAGE(WM_HKSLIDER_FUNCTION),     KX_MESSAGE(WM_HKLISTCTRL_FUNCTION),
        KX_MESSAGE(WM_HKHEADERCTRL_FUNCTION), KX_MESSAGE(WM_HKPROGRESSCTRL_FUNCTION),
        KX_MESSAGE(WM_HKCOMBOBOX_FUNCTION),   KX_MESSAGE(WM_HKEXTRATOOLBAR_FUNCTION),
        KX_MESSAGE(WM_HKWND_FUNC)};
#undef KX_MESSAGE
    std::set<UINT> seen;
    for (const auto& m : messages) {
        EXPECT_GE(m.first, 0xC000u) << m.second;
        EXPECT_EQ(RegisterWindowMessageW(m.second), m.first) << m.second;
        seen.insert(m.first);
    }
    EXPECT_EQ(9u, seen.size());
}

}  // namespace
