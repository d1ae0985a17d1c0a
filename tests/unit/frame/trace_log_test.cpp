// The trace log: line formats, numbering, cuts at 511 characters and the sinks, with a fake list
// box and a captured debugger channel (the file sink is followed under Wine).
#include "frame/trace_log.h"

#include "compat/winsys.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// A list box that holds at most `capacity` lines and answers LB_ERRSPACE beyond.
struct FakeListBox : kxcompat::FakeWindow {
    explicit FakeListBox(size_t capacity) : capacity(capacity) {}
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        ++calls;
        if (message == LB_SETCURSEL) selection = static_cast<LRESULT>(wParam);
        if (message == LB_DELETESTRING && wParam < lines.size()) lines.erase(lines.begin() + static_cast<long>(wParam));
        if (message != LB_ADDSTRING) return static_cast<LRESULT>(lines.size());
        if (lines.size() >= capacity) return LB_ERRSPACE;
        lines.emplace_back(reinterpret_cast<const wchar_t*>(lParam));
        return static_cast<LRESULT>(lines.size() - 1);
    }
    size_t capacity;
    std::vector<std::wstring> lines;
    LRESULT selection = -100;
    int calls = 0;
};

std::vector<std::wstring> g_debugLines;

void ResetTrace() {
    g_nTraceLine = 0;
    g_bTraceThreadId = g_bTraceListBox = g_bTraceDebugString = FALSE;
    g_hTraceListBox = nullptr;
    g_hTraceFile = nullptr;
    g_szTraceName = nullptr;
    g_debugLines.clear();
    kxcompat::SetDebugOutputSink([](LPCWSTR text, void*) { g_debugLines.emplace_back(text); }, nullptr);
}

class TraceLogTest : public ::testing::Test {
protected:
    void SetUp() override { ResetTrace(); }
    void TearDown() override { ResetTrace(); }
};

// Each test runs in its own process under ctest (and this one first in a whole run), so it sees
// the state of a fresh load.
TEST(TraceLogAtLoad, EverySinkIsOffAndTheCounterRisesOnEveryCall) {
    EXPECT_FALSE(g_bTraceListBox || g_bTraceDebugString || g_bTraceThreadId);
    EXPECT_EQ(nullptr, g_hTraceFile);
    for (int i = 0; i < 3; ++i) TraceLog(L"S:X::Y> %d", i);
    EXPECT_EQ(3, g_nTraceLine);
    EXPECT_EQ(std::wstring(L"S:X::Y> 2"), g_szTraceMessage);
}

TEST_F(TraceLogTest, FourLineFormatsAndOneNumberPerCall) {
    wchar_t id[16];
    swprintf(id, 16, L"[%x]", static_cast<unsigned>(GetCurrentThreadId()));
    for (BOOL threadId : {FALSE, TRUE}) {
        FakeListBox listBox(100);
        g_debugLines.clear();
        g_szTraceName = L"Kx";
        g_bTraceThreadId = threadId;
        g_bTraceListBox = g_bTraceDebugString = TRUE;
        g_hTraceListBox = listBox.hwnd();
        g_nTraceLine = 41;
        TraceLog(L"E:B::Resize> %s failed, %d", L"DrawImage", -3);
        // The list box's line has no line end; the file (under Wine) and the debugger get it with one.
        const std::wstring line =
            std::wstring(L"(Kx):41") + (threadId ? id : L"") + L"=E:B::Resize> DrawImage failed, -3";
        EXPECT_EQ(std::vector<std::wstring>{line}, listBox.lines);
        EXPECT_EQ(std::vector<std::wstring>{line + L"\r\n"}, g_debugLines);
        EXPECT_EQ(42, g_nTraceLine);
    }
}

TEST_F(TraceLogTest, MessagesAndLinesAreCutAt511) {
    WCHAR buffer[kTraceBufferChars];
    EXPECT_EQ(S_OK, TraceFormat(buffer, L"%s", std::wstring(511, L'a').c_str()));
    EXPECT_EQ(static_cast<HRESULT>(0x8007007Au), TraceFormat(buffer, L"%s", std::wstring(512, L'b').c_str()));
    EXPECT_EQ(std::wstring(511, L'b'), buffer);

    g_bTraceDebugString = TRUE;
    g_szTraceName = L"Name";
    TraceLog(L"%s", std::wstring(600, L'm').c_str());
    EXPECT_EQ(std::wstring(511, L'm'), g_szTraceMessage);
    // The prefix and the cut message fill the line: it is cut at 511 and loses its line end.
    // A line that ends exactly at 511 characters with its line end keeps it.
    TraceLog(L"%s", std::wstring(511 - 11, L'x').c_str());
    ASSERT_EQ(2u, g_debugLines.size());
    EXPECT_EQ(L"(Name):0=" + std::wstring(511 - 9, L'm'), g_debugLines[0]);
    EXPECT_EQ(L"(Name):1=" + std::wstring(511 - 11, L'x') + L"\r\n", g_debugLines[1]);
}

TEST_F(TraceLogTest, FullListBoxDropsItsOldestLinesAndOneWithoutRoomDoesNotHang) {
    FakeListBox listBox(3);
    g_bTraceListBox = TRUE;
    g_hTraceListBox = listBox.hwnd();
    for (int i = 0; i < 5; ++i) TraceLog(L"%d", i);
    EXPECT_EQ((std::vector<std::wstring>{L"():2=2", L"():3=3", L"():4=4"}), listBox.lines);
    EXPECT_EQ(2, listBox.selection);

    // An empty list box that takes no line: the line is lost, the other sinks and the count go on.
    FakeListBox never(0);
    g_hTraceListBox = never.hwnd();
    g_bTraceDebugString = TRUE;
    TraceLog(L"still here");
    EXPECT_TRUE(never.lines.empty());
    EXPECT_LT(never.calls, 10);
    EXPECT_EQ(1u, g_debugLines.size());
    EXPECT_EQ(6, g_nTraceLine);
}

}  // namespace
