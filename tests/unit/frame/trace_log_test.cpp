// The trace log: line formats, numbering, cuts at 511 characters and the three sinks, with a fake
// list box, a fake file and a captured debugger channel.
#include "frame/trace_log.h"

#include "compat/winsys.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

namespace {

// A list box that holds at most `capacity` lines and answers LB_ERRSPACE beyond.
class FakeListBox : public kxcompat::FakeWindow {
public:
    explicit FakeListBox(size_t capacity) : capacity_(capacity) {}
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        ++calls;
        switch (message) {
        case LB_ADDSTRING:
            if (lines.size() >= capacity_) return LB_ERRSPACE;
            lines.emplace_back(reinterpret_cast<const wchar_t*>(lParam));
            return static_cast<LRESULT>(lines.size() - 1);
        case LB_DELETESTRING:
            if (wParam >= lines.size()) return LB_ERR;
            lines.erase(lines.begin() + static_cast<long>(wParam));
            return static_cast<LRESULT>(lines.size());
        case LB_GETCOUNT: return static_cast<LRESULT>(lines.size());
        case LB_SETCURSEL: return selection = static_cast<LRESULT>(wParam);
        }
        return LB_ERR;
    }
    std::deque<std::wstring> lines;
    LRESULT selection = -100;
    int calls = 0;

private:
    size_t capacity_;
};

class FakeTraceFile : public kxcompat::FakeFile {
public:
    BOOL Write(const void* data, DWORD bytes, DWORD* written) override {
        lines.emplace_back(static_cast<const wchar_t*>(data), bytes / sizeof(wchar_t));
        *written = bytes;
        return TRUE;
    }
    std::vector<std::wstring> lines;
};

std::vector<std::wstring> g_debugLines;
void CaptureDebug(LPCWSTR text, void*) { g_debugLines.emplace_back(text); }

void ResetTrace() {
    g_nTraceLine = 0;
    g_bTraceThreadId = g_bTraceListBox = g_bTraceDebugString = FALSE;
    g_hTraceListBox = nullptr;
    g_hTraceFile = nullptr;
    g_szTraceName = nullptr;
    g_debugLines.clear();
    kxcompat::SetDebugOutputSink(nullptr, nullptr);
}

class TraceLogTest : public ::testing::Test {
protected:
    void SetUp() override { ResetTrace(); }
    void TearDown() override { ResetTrace(); }
};

// Each test runs in its own process under ctest, so this one sees the state of a fresh load:
// only the debugger sink, once switched on, gets the line, numbered zero.
TEST(TraceLogAtLoad, EverySinkIsOffAndTheFirstLineIsNumberedZero) {
    EXPECT_EQ(nullptr, g_hTraceFile);
    kxcompat::SetDebugOutputSink(CaptureDebug, nullptr);
    g_bTraceDebugString = TRUE;
    TraceLog(L"S:Probe::First>> %d", 7);
    EXPECT_EQ(std::vector<std::wstring>{L"():0=S:Probe::First>> 7\r\n"}, g_debugLines);
    ResetTrace();
}

TEST_F(TraceLogTest, EachSinkGetsItsFormatAndOneCallOneNumber) {
    FakeListBox listBox(100);
    FakeTraceFile file;
    g_szTraceName = L"Kx";
    g_bTraceListBox = TRUE;
    g_hTraceListBox = listBox.hwnd();
    g_hTraceFile = file.handle();
    g_bTraceDebugString = TRUE;
    kxcompat::SetDebugOutputSink(CaptureDebug, nullptr);
    g_nTraceLine = 41;

    TraceLog(L"S:A::Init>>");
    TraceLog(L"E:B::Resize> %s failed, %d", L"DrawImage", -3);

    const std::wstring second = L"(Kx):42=E:B::Resize> DrawImage failed, -3";
    EXPECT_EQ((std::deque<std::wstring>{L"(Kx):41=S:A::Init>>", second}), listBox.lines);
    EXPECT_EQ(1, listBox.selection);
    EXPECT_EQ((std::vector<std::wstring>{L"(Kx):41=S:A::Init>>\r\n", second + L"\r\n"}), file.lines);
    EXPECT_EQ(file.lines, g_debugLines);
    EXPECT_EQ(43, g_nTraceLine);
    EXPECT_EQ(std::wstring(L"E:B::Resize> DrawImage failed, -3"), g_szTraceMessage);
}

TEST_F(TraceLogTest, ThreadIdentifierInLowerCaseHexAndNegativeLineNumbers) {
    FakeTraceFile file;
    g_szTraceName = L"T";
    g_bTraceThreadId = TRUE;
    g_hTraceFile = file.handle();
    g_nTraceLine = -2;
    TraceLog(L"S:X::Y> a");
    wchar_t id[16];
    swprintf(id, 16, L"%x", static_cast<unsigned>(GetCurrentThreadId()));
    EXPECT_EQ(std::vector<std::wstring>{std::wstring(L"(T):-2[") + id + L"]=S:X::Y> a\r\n"}, file.lines);
}

TEST_F(TraceLogTest, CounterRisesWithEverySinkOff) {
    for (int i = 0; i < 5; ++i) TraceLog(L"S:X::Y> %d", i);
    EXPECT_EQ(5, g_nTraceLine);
    EXPECT_EQ(std::wstring(L"S:X::Y> 4"), g_szTraceMessage);
}

TEST_F(TraceLogTest, MessagesAndLinesAreCutAt511) {
    WCHAR buffer[kTraceBufferChars];
    EXPECT_EQ(S_OK, TraceFormat(buffer, L"%s", std::wstring(511, L'a').c_str()));
    EXPECT_EQ(STRSAFE_E_INSUFFICIENT_BUFFER, TraceFormat(buffer, L"%s", std::wstring(512, L'b').c_str()));
    EXPECT_EQ(std::wstring(511, L'b'), buffer);

    FakeTraceFile file;
    g_hTraceFile = file.handle();
    g_szTraceName = L"Name";
    TraceLog(L"%s", std::wstring(600, L'm').c_str());
    EXPECT_EQ(std::wstring(511, L'm'), g_szTraceMessage);
    // The prefix and the cut message fill the line: it is cut at 511 and loses its line end.
    // A line that ends exactly at 511 characters with its line end keeps it.
    TraceLog(L"%s", std::wstring(511 - 11, L'x').c_str());
    ASSERT_EQ(2u, file.lines.size());
    EXPECT_EQ(L"(Name):0=" + std::wstring(511 - 9, L'm'), file.lines[0]);
    EXPECT_EQ(511u, file.lines[1].size());
    EXPECT_EQ(L"\r\n", file.lines[1].substr(509));
}

TEST_F(TraceLogTest, FullListBoxDropsItsOldestLinesAndOneWithoutRoomDoesNotHang) {
    FakeListBox listBox(3);
    g_bTraceListBox = TRUE;
    g_hTraceListBox = listBox.hwnd();
    for (int i = 0; i < 5; ++i) TraceLog(L"%d", i);
    EXPECT_EQ((std::deque<std::wstring>{L"():2=2", L"():3=3", L"():4=4"}), listBox.lines);
    EXPECT_EQ(2, listBox.selection);

    // Through TraceLog the line is lost but the other sinks and the count go on.
    FakeListBox never(0);
    FakeTraceFile file;
    g_hTraceListBox = never.hwnd();
    g_hTraceFile = file.handle();
    TraceLog(L"still here");
    EXPECT_TRUE(never.lines.empty());
    EXPECT_LT(never.calls, 10);
    EXPECT_EQ(1u, file.lines.size());
    EXPECT_EQ(6, g_nTraceLine);
}

}  // namespace
