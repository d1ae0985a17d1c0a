// The tracking bubble's answers to relayed messages, row by row, and a visit of the target.
#include "balloon/bubble_tracking.h"

#include <gtest/gtest.h>

#include <vector>

#include "balloon/bubble_messages.h"

namespace {

HWND Wnd(uintptr_t v) { return reinterpret_cast<HWND>(v); }
const HWND kTarget = Wnd(0x10), kOther = Wnd(0x20);

struct FakeHost : IKxBubbleTrackingHost {
    POINT CursorPos() override { return cursor; }
    HWND FocusWindow() override { return focus; }
    bool BubbleWindowExists() override { return exists; }
    void HideBubble() override {
        ++hides;
        exists = false;
    }
    bool ShowTrackingBubble(LPCWSTR text, LPCWSTR title, LPCWSTR skin, int x, int y, DWORD timeout, UINT flags) override {
        shows.push_back({x, y});
        EXPECT_STREQ(L"text", text);
        EXPECT_STREQ(L"title", title);
        EXPECT_STREQ(L"skin", skin);
        EXPECT_EQ(700u, timeout);
        EXPECT_EQ(0x40u, flags);
        exists = showWorks;
        return showWorks;
    }
    POINT cursor = {50, 60};
    HWND focus = nullptr;
    bool exists = false, showWorks = true;
    int hides = 0;
    std::vector<POINT> shows;
};

HRESULT Relay(CKxBubbleTracking& t, FakeHost& host, HWND target, HWND hwnd, UINT message, WPARAM wParam = 0) {
    MSG msg = {};
    msg.hwnd = hwnd;
    msg.message = message;
    msg.wParam = wParam;
    return t.RelayMessage(host, target, msg, 0x40, L"title", L"text", L"skin", 700);
}

TEST(BubbleTracking, EveryRowOfTheRelayTable) {
    enum Exists { No, Yes };
    struct Row {
        const char* what;
        HWND target, hwnd;
        UINT message;
        WPARAM wParam;
        Exists exists;
        BOOL armed;          // before
        POINT last;          // before
        HWND focus;
        bool showWorks;
        HRESULT result;
        BOOL armedAfter;
        POINT lastAfter;
        int hides, shows;
    } rows[] = {
        {"move, no target", nullptr, kTarget, WM_MOUSEMOVE, 0, No, TRUE, {1, 1}, nullptr, true, E_NOTIMPL, TRUE, {1, 1}, 0, 0},
        {"move elsewhere", kTarget, kOther, WM_MOUSEMOVE, 0, Yes, FALSE, {1, 1}, nullptr, true, S_OK, TRUE, {50, 60}, 1, 0},
        {"move over target, bubble up", kTarget, kTarget, WM_MOUSEMOVE, 0, Yes, FALSE, {1, 1}, nullptr, true, E_NOTIMPL, FALSE, {50, 60}, 0, 0},
        {"move over target, shows", kTarget, kTarget, WM_MOUSEMOVE, 0, No, TRUE, {1, 1}, nullptr, true, S_OK, FALSE, {50, 60}, 0, 1},
        {"move over target, show fails", kTarget, kTarget, WM_MOUSEMOVE, 0, No, TRUE, {1, 1}, nullptr, false, E_FAIL, FALSE, {50, 60}, 0, 1},
        {"move along a row", kTarget, kTarget, WM_MOUSEMOVE, 0, No, TRUE, {1, 60}, nullptr, true, E_NOTIMPL, TRUE, {1, 60}, 0, 0},
        {"move along a column", kTarget, kTarget, WM_MOUSEMOVE, 0, No, TRUE, {50, 1}, nullptr, true, E_NOTIMPL, TRUE, {50, 1}, 0, 0},
        {"move, disarmed", kTarget, kTarget, WM_MOUSEMOVE, 0, No, FALSE, {1, 1}, nullptr, true, E_NOTIMPL, FALSE, {1, 1}, 0, 0},
        {"left button, bubble up", kTarget, kTarget, WM_LBUTTONDOWN, 0, Yes, TRUE, {1, 1}, nullptr, true, S_OK, FALSE, {50, 60}, 1, 0},
        {"right button, bubble up", kTarget, kTarget, WM_RBUTTONDOWN, 0, Yes, TRUE, {1, 1}, nullptr, true, S_OK, FALSE, {50, 60}, 1, 0},
        {"middle button, bubble up", kTarget, kTarget, WM_MBUTTONDOWN, 0, Yes, TRUE, {1, 1}, nullptr, true, S_OK, FALSE, {50, 60}, 1, 0},
        {"left button, no bubble", kTarget, kTarget, WM_LBUTTONDOWN, 0, No, TRUE, {1, 1}, nullptr, true, E_NOTIMPL, TRUE, {1, 1}, 0, 0},
        {"middle button, no bubble", kTarget, kTarget, WM_MBUTTONDOWN, 0, No, TRUE, {1, 1}, nullptr, true, E_NOTIMPL, TRUE, {1, 1}, 0, 0},
        {"space up, no bubble", kTarget, kTarget, WM_KEYUP, VK_SPACE, No, TRUE, {1, 1}, nullptr, true, S_OK, FALSE, {50, 60}, 1, 0},
        {"key up, focus elsewhere", kTarget, kTarget, WM_KEYUP, 'A', Yes, TRUE, {1, 1}, kOther, true, S_OK, FALSE, {50, 60}, 1, 0},
        {"key up, focus on target", kTarget, kTarget, WM_KEYUP, 'A', Yes, TRUE, {1, 1}, kTarget, true, E_NOTIMPL, TRUE, {1, 1}, 0, 0},
        {"key up, no focus", kTarget, kTarget, WM_KEYUP, 'A', Yes, TRUE, {1, 1}, nullptr, true, E_NOTIMPL, TRUE, {1, 1}, 0, 0},
        {"space down", kTarget, kTarget, 0x0100 /* WM_KEYDOWN */, VK_SPACE, Yes, TRUE, {1, 1}, kOther, true, E_NOTIMPL, TRUE, {1, 1}, 0, 0},
        {"other message", kTarget, kTarget, WM_TIMER, 1000, Yes, TRUE, {1, 1}, kOther, true, E_NOTIMPL, TRUE, {1, 1}, 0, 0},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.what);
        CKxBubbleTracking t;
        t.m_bArmed = r.armed;
        t.m_ptLastCursor = r.last;
        FakeHost host;
        host.exists = r.exists == Yes;
        host.focus = r.focus;
        host.showWorks = r.showWorks;
        EXPECT_EQ(r.result, Relay(t, host, r.target, r.hwnd, r.message, r.wParam));
        EXPECT_EQ(r.armedAfter, t.m_bArmed);
        EXPECT_EQ(std::vector<LONG>({r.lastAfter.x, r.lastAfter.y}), std::vector<LONG>({t.m_ptLastCursor.x, t.m_ptLastCursor.y}));
        EXPECT_EQ(r.hides, host.hides);
        ASSERT_EQ(static_cast<size_t>(r.shows), host.shows.size());
        if (r.shows) {
            EXPECT_EQ(std::vector<LONG>({50, 60}), std::vector<LONG>({host.shows[0].x, host.shows[0].y}));
        }
    }
}

// A whole visit (show, click, leave, come back) is driven through the plug-in under Wine.
TEST(BubbleTracking, ResetArmsAndForgetsTheCursor) {
    CKxBubbleTracking t;
    t.m_bArmed = FALSE;
    t.m_ptLastCursor = {5, 6};
    t.Reset();
    EXPECT_TRUE(t.m_bArmed);
    EXPECT_EQ(0, t.m_ptLastCursor.x | t.m_ptLastCursor.y);
}

}  // namespace
