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
        case LB_GETCOUNT:
            return static_cast<LRESULT>(lines.size());
        case LB_SETCURSEL:
            selection = static_cast<LRESULT>(wParam);
            return selection;
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
        byteCounts.push_back(bytes);
        const wchar_t* text = static_cast<const wchar_t*>(data);
        lines.emplace_back(text, bytes / sizeof(wchar_t));
        *written = bytes;
        return TRUE;
    }
    std::vector<std::wstring> lines;
    std::vector<DWORD> byteCounts;
};

std::vector<std::wstring> g_debugLines;
void CaptureDebug(LPCWSTR text, void*) { g_debugLines.emplace_back(text); }

void ResetTrace() {
    g_nTraceLine = 0;
    g_bTraceThreadId = FALSE;
    g_bTraceListBox = FALSE;
    g_hTraceListBox = nullptr;
    g_hTraceFile = nullptr;
    g_bTraceDebugString = FALSE;
    g_szTraceName = nullptr;
    g_debugLines.clear();
    kxcompat::SetDebugOutputSink(nullptr, nullptr);
}

class TraceLogTest : public ::testing::Test {
protected:
    void SetUp() override { ResetTrace(); }
    void TearDown() override { ResetTrace(); }
};

// Each test runs in its own process under ctest, so this one sees the state of a fresh load.
TEST(TraceLogAtLoad, EverySinkIsOffAndTheFirstLineIsNumberedZero) {
    EXPECT_EQ(0, g_nTraceLine);
    EXPECT_FALSE(g_bTraceThreadId);
    EXPECT_FALSE(g_bTraceListBox);
    EXPECT_EQ(nullptr, g_hTraceListBox);
    EXPECT_EQ(nullptr, g_hTraceFile);
    EXPECT_FALSE(g_bTraceDebugString);
    kxcompat::SetDebugOutputSink(CaptureDebug, nullptr);
    g_bTraceDebugString = TRUE;
    TraceLog(L"S:Probe::First>> %d", 7);
    ASSERT_EQ(1u, g_debugLines.size());
    EXPECT_EQ(L"():0=S:Probe::First>> 7\r\n", g_debugLines[0]);
    ResetTrace();
}

TEST_F(TraceLogTest, EachSinkGetsItsFormatAndOneCallOneNumber) {
    FakeListBox listBox(100);
    FakeTraceFile file;
    g_szTraceName = L"KxComResPlgin";
    g_bTraceListBox = TRUE;
    g_hTraceListBox = listBox.hwnd();
    g_hTraceFile = file.handle();
    g_bTraceDebugString = TRUE;
    kxcompat::SetDebugOutputSink(CaptureDebug, nullptr);
    g_nTraceLine = 41;

    TraceLog(L"S:KxComResPlginPluginObj::Init>>");
    TraceLog(L"E:CGdiplusUtil::ResizeImage> %s failed, %d", L"graphics.DrawImage", -3);

    ASSERT_EQ(2u, listBox.lines.size());
    EXPECT_EQ(L"(KxComResPlgin):41=S:KxComResPlginPluginObj::Init>>", listBox.lines[0]);
    EXPECT_EQ(L"(KxComResPlgin):42=E:CGdiplusUtil::ResizeImage> graphics.DrawImage failed, -3", listBox.lines[1]);
    EXPECT_EQ(1, listBox.selection);
    ASSERT_EQ(2u, file.lines.size());
    EXPECT_EQ(L"(KxComResPlgin):41=S:KxComResPlginPluginObj::Init>>\r\n", file.lines[0]);
    EXPECT_EQ(L"(KxComResPlgin):42=E:CGdiplusUtil::ResizeImage> graphics.DrawImage failed, -3\r\n", file.lines[1]);
    // The byte count is the line's length in characters times the size of one, no terminator.
    EXPECT_EQ(file.lines[0].size() * sizeof(wchar_t), file.byteCounts[0]);
    ASSERT_EQ(2u, g_debugLines.size());
    EXPECT_EQ(file.lines[1], g_debugLines[1]);
    EXPECT_EQ(43, g_nTraceLine);
    EXPECT_EQ(std::wstring(L"E:CGdiplusUtil::ResizeImage> graphics.DrawImage failed, -3"), g_szTraceMessage);
}

TEST_F(TraceLogTest, ThreadIdentifierInLowerCaseHexAndNegativeLineNumbers) {
    FakeListBox listBox(10);
    FakeTraceFile file;
    g_szTraceName = L"T";
    g_bTraceThreadId = TRUE;
    g_bTraceListBox = TRUE;
    g_hTraceListBox = listBox.hwnd();
    g_hTraceFile = file.handle();
    g_nTraceLine = -2;
    TraceLog(L"S:X::Y> a");

    wchar_t id[16];
    swprintf(id, 16, L"%x", static_cast<unsigned>(GetCurrentThreadId()));
    ASSERT_EQ(1u, listBox.lines.size());
    EXPECT_EQ(std::wstring(L"(T):-2[") + id + L"]=S:X::Y> a", listBox.lines[0]);
    ASSERT_EQ(1u, file.lines.size());
    EXPECT_EQ(std::wstring(L"(T):-2[") + id + L"]=S:X::Y> a\r\n", file.lines[0]);
}

TEST_F(TraceLogTest, CounterRisesWithEverySinkOff) {
    for (int i = 0; i < 5; ++i) TraceLog(L"S:X::Y> %d", i);
    EXPECT_EQ(5, g_nTraceLine);
    EXPECT_EQ(std::wstring(L"S:X::Y> 4"), g_szTraceMessage);
}

TEST_F(TraceLogTest, BoundedFormatFitsAt511AndCutsBeyond) {
    WCHAR buffer[kTraceBufferChars];
    std::wstring fits(511, L'a');
    EXPECT_EQ(S_OK, TraceFormat(buffer, L"%s", fits.c_str()));
    EXPECT_EQ(fits, buffer);

    std::wstring over(512, L'b');
    EXPECT_EQ(STRSAFE_E_INSUFFICIENT_BUFFER, TraceFormat(buffer, L"%s", over.c_str()));
    EXPECT_EQ(std::wstring(511, L'b'), buffer);
}

TEST_F(TraceLogTest, LongMessageAndLongLineGoOutCut) {
    FakeTraceFile file;
    g_hTraceFile = file.handle();
    g_szTraceName = L"Name";
    std::wstring message(600, L'm');
    TraceLog(L"%s", message.c_str());
    EXPECT_EQ(std::wstring(511, L'm'), g_szTraceMessage);
    ASSERT_EQ(1u, file.lines.size());
    // The prefix and the cut message fill the line: it is cut at 511 and loses its line end.
    std::wstring expected = L"(Name):0=" + std::wstring(511 - 9, L'm');
    EXPECT_EQ(expected, file.lines[0]);
    EXPECT_EQ(511u, file.lines[0].size());

    // A line that ends exactly at 511 characters with its line end keeps it.
    file.lines.clear();
    TraceLog(L"%s", std::wstring(511 - 11, L'x').c_str());
    ASSERT_EQ(1u, file.lines.size());
    EXPECT_EQ(511u, file.lines[0].size());
    EXPECT_EQ(L"\r\n", file.lines[0].substr(509));
}

TEST_F(TraceLogTest, FullListBoxDropsItsOldestLines) {
    FakeListBox listBox(3);
    g_bTraceListBox = TRUE;
    g_hTraceListBox = listBox.hwnd();
    for (int i = 0; i < 5; ++i) TraceLog(L"%d", i);
    ASSERT_EQ(3u, listBox.lines.size());
    EXPECT_EQ(L"():2=2", listBox.lines[0]);
    EXPECT_EQ(L"():4=4", listBox.lines[2]);
    EXPECT_EQ(2, listBox.selection);
}

TEST_F(TraceLogTest, ListBoxWithoutRoomEvenWhenEmptyDoesNotHang) {
    FakeListBox never(0);
    TraceListBoxAdd(never.hwnd(), L"line");
    EXPECT_TRUE(never.lines.empty());
    EXPECT_LT(never.calls, 10);

    // Through TraceLog the line is lost but the other sinks and the count go on.
    FakeTraceFile file;
    g_bTraceListBox = TRUE;
    g_hTraceListBox = never.hwnd();
    g_hTraceFile = file.handle();
    TraceLog(L"still here");
    EXPECT_EQ(1u, file.lines.size());
    EXPECT_EQ(1, g_nTraceLine);
}

}  // namespace
