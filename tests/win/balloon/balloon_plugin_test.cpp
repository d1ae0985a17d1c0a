// Balloon tips through KxComResPlgin.dll as a host uses them: IKxCommonResource::CreateBalloonTip,
// then IKxBalloonTip and IKxBalloonTipControl on a window of the host's own. The skinning library
// is the recording double: the bubble refuses to show without a skin, and its call order is
// checked as a table. Each test ends with no window, GDI or USER object or CoTaskMem block left.
#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "balloon/bubble_constants.h"
#include "tests/win/balloon/balloon_fixture.h"
#include "tests/win/common/skin_recorder.h"

namespace kxtest {
namespace {

const HRESULT kNoFile = static_cast<HRESULT>(0x80070002u);
const GUID kOtherIid = {0x12345678, 1, 2, {3, 4, 5, 6, 7, 8, 9, 10}};

std::string Narrow(const std::wstring& w) { return std::string(w.begin(), w.end()); }  // ASCII paths

RECT WindowRect(HWND h) {
    RECT rc = {0, 0, 0, 0};
    GetWindowRect(h, &rc);
    return rc;
}

std::vector<LONG> Edges(const RECT& r) { return {r.left, r.top, r.right, r.bottom}; }

MSG Message(HWND hwnd, UINT message, WPARAM wParam = 0) {
    MSG m = {};
    m.hwnd = hwnd;
    m.message = message;
    m.wParam = wParam;
    return m;
}

bool NoBubble() { return BubbleWindows().empty(); }

class BalloonThroughPlugin : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        skinnedDir = PreparePluginFolder(L"balloon_plugin", true);
        bareDir = PreparePluginFolder(L"balloon_plugin_no_skin", false);
    }
    void SetUp() override {
        WatchTaskMemory();
        plugin.reset(new PluginLibrary(skinnedDir + L"KxComResPlgin.dll"));
        ASSERT_EQ(S_OK, plugin->Create(&resource));
        target = HostWindow(200, 150, 200, 100);
        other = HostWindow(600, 150, 100, 100);
        GetWindowRect(GetDesktopWindow(), &desktop);
        {
            // a first bubble pays for what the process keeps once: the class, the window manager's caches
            SkinRecorder warmup;
            IKxBalloonTip* tip = CreateTip(0x30);
            tip->Show(TRUE, 0);
            Pump(100);  // painted once
            tip->Release();
        }
        before = CountResources();
    }
    void TearDown() override {
        EXPECT_TRUE(NoBubble());
        EXPECT_EQ("", Leftovers(before));
        DestroyWindow(target);
        DestroyWindow(other);
        if (resource) resource->Release();
        plugin.reset();
    }
    IKxBalloonTip* CreateTip(UINT flags, LPCWSTR title = L"Title", LPCWSTR text = L"Text of the tip") {
        void* out = nullptr;
        EXPECT_EQ(S_OK, resource->CreateBalloonTip(IID_IKxBalloonTip, target, text, title, flags, &out));
        return static_cast<IKxBalloonTip*>(out);
    }
    IKxBalloonTipControl* CreateControl(UINT flags = 0x40) {
        void* out = nullptr;
        EXPECT_EQ(S_OK, resource->CreateBalloonTip(IID_IKxBalloonTipControl, target, L"Tracking text", L"Tracking",
                                                   flags, &out));
        return static_cast<IKxBalloonTipControl*>(out);
    }
    std::string SkinPath() const { return Narrow(skinnedDir) + "ComRcRes.bff"; }

    static std::wstring skinnedDir, bareDir;
    std::unique_ptr<PluginLibrary> plugin;
    IKxCommonResource* resource = nullptr;
    HWND target = nullptr, other = nullptr;
    RECT desktop = {};
    ResourceCounts before{};
};
std::wstring BalloonThroughPlugin::skinnedDir, BalloonThroughPlugin::bareDir;

TEST_F(BalloonThroughPlugin, CreationTestsThePointerThenThePackageThenTheTargetThenTheInterface) {
    PluginLibrary bare(bareDir + L"KxComResPlgin.dll");
    IKxCommonResource* noSkin = nullptr;
    ASSERT_EQ(S_OK, bare.Create(&noSkin));
    // a page that cannot be written
    void** readOnly = static_cast<void**>(VirtualAlloc(nullptr, 4096, MEM_COMMIT | MEM_RESERVE, PAGE_READONLY));
    ASSERT_NE(nullptr, readOnly);
    void* sentinel = &before;
    void* out = sentinel;
    struct Row {
        IKxCommonResource* on;
        void** pp;
        HWND target;
        const GUID* iid;
        HRESULT result;
    } rows[] = {
        {noSkin, nullptr, nullptr, &kOtherIid, E_POINTER},
        {noSkin, readOnly, nullptr, &kOtherIid, E_POINTER},
        {noSkin, &out, nullptr, &kOtherIid, kNoFile},  // the package, not the resource library, is tested
        {noSkin, &out, target, &IID_IKxBalloonTip, kNoFile},
        {resource, &out, nullptr, &kOtherIid, E_INVALIDARG},
        {resource, &out, target, &kOtherIid, E_NOINTERFACE},
        {resource, &out, target, &IID_IUnknown, E_NOINTERFACE},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(testing::Message() << std::hex << r.result);
        EXPECT_EQ(r.result, r.on->CreateBalloonTip(*r.iid, r.target, L"t", L"t", 0x30, r.pp));
        EXPECT_EQ(sentinel, out) << "the out pointer is untouched";
        EXPECT_EQ(nullptr, *readOnly);
    }
    VirtualFree(readOnly, 0, MEM_RELEASE);
    EXPECT_EQ(0u, noSkin->Release());
}

TEST_F(BalloonThroughPlugin, AStickyTipShowsAtTheTargetsCentreStaysAndClosesOnAClick) {
    SkinRecorder skin;
    IKxBalloonTip* tip = CreateTip(0x30);
    void* out = &before;
    EXPECT_EQ(E_NOTIMPL, tip->QueryInterface(IID_IKxBalloonTip, &out));
    EXPECT_EQ(static_cast<void*>(&before), out);
    EXPECT_EQ(S_OK, tip->Show(TRUE, 0));
    HWND bubble = TheBubble();
    ASSERT_NE(nullptr, bubble);
    const RECT rc = WindowRect(bubble);
    EXPECT_EQ(300 - 6, rc.left) << "the point 6 pixels from the left edge, at the target's centre";
    EXPECT_EQ(200, rc.top);
    EXPECT_EQ(static_cast<LONG>(kBubbleExStyle), GetWindowLongW(bubble, GWL_EXSTYLE) & 0xFF);
    const DWORD style = static_cast<DWORD>(GetWindowLongW(bubble, GWL_STYLE));
    EXPECT_EQ(kBubbleStyle, style & 0xFFFF0000 & ~static_cast<DWORD>(WS_VISIBLE | WS_CLIPSIBLINGS));
    EXPECT_EQ(target, GetWindow(bubble, GW_OWNER));
    EXPECT_NE(bubble, GetActiveWindow()) << "shown without activation";
    EXPECT_EQ(std::vector<std::wstring>({L"Title", L"Text of the tip"}), BubbleTexts(bubble));
    Pump(300);
    EXPECT_EQ(bubble, TheBubble()) << "a time of 0 keeps the tip up";
    const size_t lines = skin.Lines().size();
    EXPECT_EQ(S_FALSE, tip->Show(TRUE, 4000)) << "already showing";
    EXPECT_EQ(lines, skin.Lines().size()) << "and nothing changed";
    EXPECT_EQ(Edges(rc), Edges(WindowRect(bubble)));
    PostMessageW(bubble, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 10));
    EXPECT_TRUE(PumpUntil(2000, &NoBubble)) << "a click closes the tip";
    EXPECT_EQ(0u, tip->Release());
    const std::string shape = "picture=SpeechBubble.png";
    const std::vector<std::string> expected = {
        "load",
        "call op=0x1 hook=0x0 0x0 0x0 0x0",
        "call op=0x3 hook=0x4b01 0x0 window={60322165-DEF2-4f50-BD74-B6FC52CB8585} " + shape + " path=" + SkinPath(),
        "static id=65535 form=1",
        "static id=65535 form=1",
        "call op=0xc hook=0x4b01 0x1 0x0 " + shape,
        "call op=0x4 hook=0x4b01 0x0 0x0 0x0",
        "call op=0x2 hook=0x4b01 0x0 0x0 0x0",
        "free",
    };
    EXPECT_EQ(expected, skin.Lines());
}

TEST_F(BalloonThroughPlugin, HidingForgetsThePositionButNotThatItWasSetAndTimer1002EndsTheTip) {
    SkinRecorder skin;
    IKxBalloonTip* tip = CreateTip(0x10);
    const POINT at = {50, 60};
    EXPECT_EQ(S_OK, tip->SetPosition(&at));
    EXPECT_EQ(E_POINTER, tip->Show(FALSE, 0)) << "a tip never shown has no bubble to hide";
    EXPECT_EQ(S_OK, tip->Show(TRUE, 300));
    HWND bubble = TheBubble();
    ASSERT_NE(nullptr, bubble);
    EXPECT_EQ(-6, WindowRect(bubble).left) << "shown at 0, 0";
    EXPECT_EQ(0, WindowRect(bubble).top);
    EXPECT_TRUE(PumpUntil(3000, &NoBubble)) << "the tip's time ends it";
    EXPECT_EQ(S_OK, tip->Show(FALSE, 0)) << "hiding a tip whose window closed itself";
    EXPECT_EQ(0u, tip->Release());
    EXPECT_EQ(1u, skin.LinesStartingWith("call op=0x3 hook=0x4b01 0x0 window={60322165-DEF2-4f50-BD74-B6FC52CB8585} "
                                         "picture=ESpeechBubble.png").size());
}

// The bubble is owned by its target: when the host destroys the target, the bubble goes with it
// and the tip can still be hidden, shown again and released.
TEST_F(BalloonThroughPlugin, ATipOutlivesTheBubbleThatItsTargetTookAlong) {
    SkinRecorder skin;
    IKxBalloonTip* tip = CreateTip(0x40);
    ASSERT_EQ(S_OK, tip->Show(TRUE, 0));
    DestroyWindow(target);
    EXPECT_TRUE(NoBubble());
    EXPECT_EQ(S_OK, tip->UpdatePosition()) << "no window to follow";
    EXPECT_EQ(S_OK, tip->Show(FALSE, 0));
    EXPECT_EQ(S_OK, tip->Show(TRUE, 0)) << "a target that is gone still has a tip, at 0, 0";
    EXPECT_NE(nullptr, TheBubble());
    EXPECT_EQ(0u, tip->Release());
    target = HostWindow(200, 150, 200, 100);  // the host's window, counted when the test began
}

// The point touches the asked position in each corner of the screen, the picture naming the corner
// (the flags' prefixes are pinned by the tests of each kind).
TEST_F(BalloonThroughPlugin, ThePointTouchesTheAskedPositionInAllFourCorners) {
    const LONG w = desktop.right - desktop.left, h = desktop.bottom - desktop.top;
    struct Row {
        POINT at;
        const char* suffix;
    } rows[] = {{{20, 20}, ""}, {{w - 20, 20}, "RT"}, {{20, h - 20}, "LB"}, {{w - 20, h - 20}, "BR"}};
    for (const Row& r : rows) {
        SCOPED_TRACE(testing::Message() << r.at.x << "," << r.at.y);
        SkinRecorder skin;
        IKxBalloonTip* tip = CreateTip(0x30);
        tip->SetPosition(&r.at);
        EXPECT_EQ(S_OK, tip->Show(TRUE, 0));
        const RECT rc = WindowRect(TheBubble());
        const bool right = *r.suffix == 'R' || *r.suffix == 'B', up = *r.suffix == 'L' || *r.suffix == 'B';
        EXPECT_EQ(r.at.x, right ? rc.right - 7 : rc.left + 6);
        EXPECT_EQ(r.at.y, up ? rc.bottom : rc.top);
        EXPECT_TRUE(rc.left >= 0 && rc.top >= 0 && rc.right <= w && rc.bottom <= h) << "on the screen";
        EXPECT_EQ(1u, skin.LinesStartingWith(std::string("call op=0xc hook=0x4b01 0x1 0x0 picture=SpeechBubble") +
                                             r.suffix + ".png").size());
        EXPECT_EQ(0u, tip->Release());
        EXPECT_TRUE(NoBubble()) << "the last Release destroys the window";
    }
}

TEST_F(BalloonThroughPlugin, UpdatePositionFollowsTheTargetAndFlipsAtTheScreensEdge) {
    SkinRecorder skin;
    IKxBalloonTip* tip = CreateTip(0x30);
    EXPECT_EQ(S_OK, tip->UpdatePosition()) << "no bubble yet";
    EXPECT_EQ(S_OK, tip->Show(TRUE, 0));
    const RECT first = WindowRect(TheBubble());
    SetWindowPos(target, nullptr, 230, 170, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(S_OK, tip->UpdatePosition());
    RECT moved = WindowRect(TheBubble());
    EXPECT_EQ(Edges(RECT{first.left + 30, first.top + 20, first.right + 30, first.bottom + 20}), Edges(moved))
        << "the point keeps its place relative to the target";
    const LONG w = desktop.right - desktop.left;
    SetWindowPos(target, nullptr, w - 150, 170, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(S_OK, tip->UpdatePosition());
    HWND bubble = TheBubble();
    ASSERT_NE(nullptr, bubble);
    const RECT flipped = WindowRect(bubble);
    EXPECT_EQ(w - 150 + 100, flipped.right - 7) << "the point stays at the target's centre, the bubble left of it";
    EXPECT_LE(flipped.right, w);
    EXPECT_EQ(1u, skin.LinesStartingWith("call op=0xc hook=0x4b01 0x1 0x0 picture=SpeechBubbleRT.png").size());
    EXPECT_EQ(0u, tip->Release());
}

TEST_F(BalloonThroughPlugin, AControlTipShowsOncePerVisitOfTheTargetAndLeavesWithItsTime) {
    SkinRecorder skin;
    IKxBalloonTipControl* tip = CreateControl();
    void* out = &before;
    EXPECT_EQ(E_NOTIMPL, tip->QueryInterface(IID_IKxBalloonTipControl, &out));
    EXPECT_EQ(static_cast<void*>(&before), out);
    EXPECT_EQ(S_OK, tip->SetTimeout(400));
    MSG overTarget = Message(target, WM_MOUSEMOVE), elsewhere = Message(other, WM_MOUSEMOVE);
    SetCursorPos(250, 180);
    EXPECT_EQ(1, tip->RelayEvent(&overTarget)) << "the first move over the target shows the tip";
    HWND bubble = TheBubble();
    ASSERT_NE(nullptr, bubble);
    EXPECT_EQ(250 - 6, WindowRect(bubble).left) << "the point at the cursor";
    EXPECT_EQ(180, WindowRect(bubble).top);
    EXPECT_EQ(nullptr, GetWindow(bubble, GW_OWNER)) << "a tracking bubble has no parent";
    SetCursorPos(260, 190);
    EXPECT_EQ(0, tip->RelayEvent(&overTarget)) << "the tip is up";
    EXPECT_TRUE(PumpUntil(3000, &NoBubble)) << "timer 1000 ends the tip";
    SetCursorPos(270, 200);
    EXPECT_EQ(0, tip->RelayEvent(&overTarget)) << "once per visit";
    SetCursorPos(650, 200);
    EXPECT_EQ(1, tip->RelayEvent(&elsewhere)) << "leaving the target arms the tip";
    SetCursorPos(280, 210);
    EXPECT_EQ(1, tip->RelayEvent(&overTarget));
    EXPECT_NE(nullptr, TheBubble());
    MSG click = Message(target, WM_LBUTTONDOWN);
    EXPECT_EQ(1, tip->RelayEvent(&click)) << "a click hides it";
    EXPECT_TRUE(NoBubble());
    SetCursorPos(290, 220);
    EXPECT_EQ(0, tip->RelayEvent(&overTarget)) << "and keeps it away until the mouse has left";
    EXPECT_EQ(E_POINTER, tip->RelayEvent(nullptr));
    MSG destroyed = Message(target, WM_DESTROY);
    EXPECT_EQ(1, tip->RelayEvent(&destroyed)) << "the target's end hides the tip";
    EXPECT_EQ(0u, tip->Release());
    EXPECT_EQ(2u, skin.LinesStartingWith("call op=0xc hook=0x4b01 0x1 0x0 picture=ISpeechBubble.png").size());
}

// Without the library, or with a library that refuses the popup, nothing appears and no window
// remains.
TEST_F(BalloonThroughPlugin, TheBubbleRefusesToShowUnskinned) {
    for (DWORD_PTR refuse : {DWORD_PTR(0), DWORD_PTR(1), DWORD_PTR(3)}) {
        SCOPED_TRACE(refuse);
        std::unique_ptr<SkinRecorder> skin(refuse ? new SkinRecorder(refuse) : nullptr);
        IKxBalloonTip* tip = CreateTip(0x30);
        EXPECT_EQ(E_FAIL, tip->Show(TRUE, 0));
        EXPECT_TRUE(NoBubble());
        IKxBalloonTipControl* control = CreateControl();
        MSG move = Message(target, WM_MOUSEMOVE);
        SetCursorPos(251 + static_cast<int>(refuse), 181 + static_cast<int>(refuse));
        EXPECT_EQ(0, control->RelayEvent(&move));
        EXPECT_TRUE(NoBubble());
        EXPECT_EQ(0u, tip->Release());
        EXPECT_EQ(0u, control->Release());
    }
}

}  // namespace
}  // namespace kxtest
