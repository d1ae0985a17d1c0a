// The tip objects against a fake platform and a fake bubble: creation in its order, every code of
// the failure table, the state kept between calls, reference counts from several threads. The
// fake bubble checks that every call reaches it inside the module's framework state.
#include "balloon/balloon_tip.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "balloon/bubble_messages.h"

namespace {

const HRESULT kNoFile = static_cast<HRESULT>(0x80070002u), kNoWindow = static_cast<HRESULT>(0x80070006u);
const wchar_t kSkin[] = L"C:\\Plugins\\ComRcRes.bff";
HWND Wnd(uintptr_t v) { return reinterpret_cast<HWND>(v); }
const HWND kTarget = Wnd(0x10), kGone = Wnd(0x30);

struct FakePlatform;

struct FakeBubble : IKxBubble {
    explicit FakeBubble(FakePlatform& p) : platform(p) {}
    ~FakeBubble() override;
    BOOL ShowBubble(LPCWSTR text, LPCWSTR title, HWND target, LPCWSTR skin, int x, int y, DWORD timeout, UINT flags,
                    BOOL sticky) override;
    HRESULT RelayMessage(HWND target, const MSG& m, UINT, LPCWSTR, LPCWSTR, LPCWSTR, DWORD timeout) override {
        Log("relay " + std::to_string(m.message) + " to " + std::to_string(target == kTarget) + " for " +
            std::to_string(timeout));
        return relayResult;
    }
    void HideBubble() override { Log("hide"); }
    void ResetBubble() override {
        Log("reset");
        window = visible = false;
    }
    BOOL CheckPlacement(POINT* flip, POINT* move, HWND) override {
        Log("check");
        *flip = POINT{11, 12};
        *move = POINT{21, 22};
        return flips;
    }
    bool HasWindow() override { return window; }
    bool IsVisible() override { return window && visible; }
    void MoveWindowTo(POINT p) override { Log("move " + std::to_string(p.x) + "," + std::to_string(p.y)); }
    void Log(const std::string& s);

    FakePlatform& platform;
    bool window = false, visible = false, showWorks = true, flips = false;
    HRESULT relayResult = S_OK;
};

struct FakePlatform : IKxBalloonPlatform {
    BOOL FileExists(LPCWSTR path) override { return path && files.count(path); }
    BOOL IsWindow(HWND h) override { return rects.count(h); }
    BOOL GetWindowRect(HWND h, RECT* rc) override {
        auto it = rects.find(h);
        if (it == rects.end()) return FALSE;
        *rc = it->second;
        return TRUE;
    }
    bool IsBadWritePtr(void* p, size_t bytes) override {
        EXPECT_EQ(sizeof(void*), bytes);
        return !p;
    }
    IKxBubble* NewBubble() override {
        if (failBubble) return nullptr;
        bubble = new FakeBubble(*this);
        ++bubbles;
        return bubble;
    }
    void EnterModuleState(KxModuleStateSlot*) override { ++depth; }
    void LeaveModuleState(KxModuleStateSlot*) override { --depth; }

    std::set<std::wstring> files = {kSkin};
    std::map<HWND, RECT> rects = {{kTarget, RECT{100, 200, 301, 401}}};
    bool failBubble = false;
    FakeBubble* bubble = nullptr;  // the last one made
    int bubbles = 0, depth = 0;
    std::vector<std::string> log;
};

FakeBubble::~FakeBubble() {
    Log("delete");
    if (platform.bubble == this) platform.bubble = nullptr;
}
BOOL FakeBubble::ShowBubble(LPCWSTR text, LPCWSTR title, HWND target, LPCWSTR skin, int x, int y, DWORD timeout,
                            UINT flags, BOOL sticky) {
    Log("show " + std::string(text, text + wcslen(text)) + "|" + std::string(title, title + wcslen(title)) + " at " +
        std::to_string(x) + "," + std::to_string(y) + " for " + std::to_string(timeout) + " flags " +
        std::to_string(flags) + " sticky " + std::to_string(sticky));
    EXPECT_EQ(kTarget, target);
    EXPECT_STREQ(kSkin, skin);
    window = visible = showWorks;
    return showWorks;
}
void FakeBubble::Log(const std::string& s) {
    EXPECT_GT(platform.depth, 0) << s << ": outside the module's state";
    platform.log.push_back(s);
}

class BalloonTipTest : public ::testing::Test {
protected:
    void SetUp() override { blocks = kxcompat::LiveTaskMemBlocks(); }
    void TearDown() override {
        kxcompat::ResetTaskMemFailures();
        EXPECT_EQ(0, platform.depth);
        EXPECT_EQ(blocks, kxcompat::LiveTaskMemBlocks()) << "CoTaskMem blocks left";
    }
    template <class I>
    I* Create(REFIID iid, UINT flags = 0x10, LPCWSTR title = L"Title") {
        void* out = nullptr;
        EXPECT_EQ(S_OK, KxCreateBalloonTip(platform, iid, kTarget, L"Text", title, flags, kSkin, L"Default", &out));
        return static_cast<I*>(out);
    }
    CKxBalloonlTip* Tip() { return static_cast<CKxBalloonlTip*>(Create<IKxBalloonTip>(IID_IKxBalloonTip)); }
    CKxBalloonlTipControl* Control() {
        return static_cast<CKxBalloonlTipControl*>(Create<IKxBalloonTipControl>(IID_IKxBalloonTipControl));
    }
    std::vector<std::string> TakeLog() {
        std::vector<std::string> l;
        l.swap(platform.log);
        return l;
    }

    FakePlatform platform;
    long blocks = 0;
};

using Lines = std::vector<std::string>;

// The order of the tests before the allocation is pinned through the plug-in under Wine.
TEST_F(BalloonTipTest, CreationWithoutMemoryForTheObjectGivesANullTip) {
    // no memory for the object: a null out pointer and 0x8007000e
    for (const GUID* iid : {&IID_IKxBalloonTip, &IID_IKxBalloonTipControl}) {
        void* out = &platform;
        kxcompat::FailTaskMemAllocations(1);
        EXPECT_EQ(E_OUTOFMEMORY, KxCreateBalloonTip(platform, *iid, kTarget, L"t", L"t", 0, kSkin, nullptr, &out));
        EXPECT_EQ(nullptr, out);
    }
    EXPECT_EQ(0, platform.bubbles);
}

TEST_F(BalloonTipTest, InitCopiesTheTextsWithTheirDefaultsAndCutsTheSkinPath) {
    CKxBalloonlTip* tip = Tip();
    EXPECT_EQ(kTarget, tip->m_hTarget);
    EXPECT_EQ(0x10u, tip->m_nFlags);
    EXPECT_FALSE(tip->m_bControlMode);
    EXPECT_EQ(0, platform.bubbles) << "a plain tip makes its bubble when first shown";
    struct Row { LPCWSTR text, title, defaultTitle, wantText, wantTitle; } rows[] = {
        {L"a", L"b", L"c", L"a", L"b"}, {nullptr, nullptr, L"c", L"", L"c"}, {nullptr, nullptr, nullptr, L"", L""}};
    for (const Row& r : rows) {
        tip->Init(kTarget, r.text, r.title, 0x40, kSkin, r.defaultTitle, FALSE);
        EXPECT_STREQ(r.wantText, tip->m_pszText);
        EXPECT_STREQ(r.wantTitle, tip->m_pszTitle);
    }
    const std::wstring longPath(300, L'p');
    tip->Init(kTarget, L"a", L"b", 0x40, longPath.c_str(), nullptr, FALSE);
    EXPECT_EQ(longPath.substr(0, 259), tip->m_szSkinFile);
    tip->Init(kTarget, L"a", L"b", 0x40, nullptr, nullptr, FALSE);
    EXPECT_STREQ(L"", tip->m_szSkinFile) << "Init clears first: a null path leaves it empty";
    kxcompat::FailTaskMemAllocations(2);  // the text's block
    tip->Init(kTarget, L"a", L"b", 0x40, kSkin, nullptr, FALSE);
    EXPECT_STREQ(L"b", tip->m_pszTitle);
    EXPECT_EQ(nullptr, tip->m_pszText);
    EXPECT_EQ(0u, tip->Release());
}

TEST_F(BalloonTipTest, EveryCodeOfTheFailureTable) {
    enum Op { ShowAt, Follow, Ensure, Relay, Hide };
    enum Setup { Plain, Control, NoSkin, NoTarget, DeadTarget, NoBubble, NoMemory, BubbleFails, Visible, RelayNothing, RelayFails };
    struct Row { Op op; Setup setup; HRESULT result; } rows[] = {
        {ShowAt, Control, E_INVALIDARG},  {ShowAt, NoSkin, kNoFile},     {ShowAt, NoTarget, E_INVALIDARG},
        {ShowAt, Visible, S_FALSE},       {ShowAt, NoMemory, E_OUTOFMEMORY}, {ShowAt, BubbleFails, E_FAIL},
        {ShowAt, Plain, S_OK},
        {Follow, Control, E_INVALIDARG},  {Follow, NoSkin, kNoFile},     {Follow, NoTarget, kNoWindow},
        {Follow, DeadTarget, kNoWindow},  {Follow, NoBubble, E_POINTER}, {Follow, Plain, S_OK},
        {Ensure, Plain, E_INVALIDARG},    {Ensure, NoSkin, kNoFile},     {Ensure, NoTarget, kNoWindow},
        {Ensure, DeadTarget, kNoWindow},  {Ensure, NoMemory, E_OUTOFMEMORY}, {Ensure, Visible, S_FALSE},
        {Ensure, Control, S_OK},
        {Relay, Plain, E_INVALIDARG},     {Relay, NoSkin, kNoFile},      {Relay, NoTarget, kNoWindow},
        {Relay, DeadTarget, kNoWindow},   {Relay, NoBubble, E_POINTER},  {Relay, RelayNothing, E_NOTIMPL},
        {Relay, RelayFails, E_FAIL},      {Relay, Control, S_OK},
        {Hide, NoBubble, E_POINTER},      {Hide, Plain, S_OK},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(testing::Message() << "op " << r.op << " setup " << r.setup);
        const bool control = r.op == Ensure || r.op == Relay ? r.setup != Plain : r.setup == Control;
        CKxBaloontipBase* tip = control ? static_cast<CKxBaloontipBase*>(new (std::nothrow) CKxBalloonlTipControl(platform))
                                        : new (std::nothrow) CKxBalloonlTip(platform);
        tip->Init(r.setup == NoTarget ? nullptr : r.setup == DeadTarget ? kGone : kTarget, L"x", L"y", 0x30, kSkin,
                  nullptr, control);
        if (r.setup != NoBubble && r.setup != NoMemory && (r.op != Ensure || r.setup == Visible)) {
            tip->m_pBubble = platform.NewBubble();
            platform.bubble->window = platform.bubble->visible = r.setup == Visible;
            platform.bubble->showWorks = r.setup != BubbleFails;
            platform.bubble->relayResult = r.setup == RelayNothing ? E_NOTIMPL : r.setup == RelayFails ? E_FAIL : S_OK;
        }
        if (r.setup == NoSkin) platform.files.clear();
        platform.failBubble = r.setup == NoMemory;
        MSG msg = {};
        msg.message = WM_MOUSEMOVE;
        HRESULT hr = E_UNEXPECTED;
        switch (r.op) {
            case ShowAt: hr = tip->ShowAt(POINT{5, 6}, 100); break;
            case Follow: hr = tip->FollowTarget(); break;
            case Ensure: hr = tip->EnsureBubble(); break;
            case Relay: hr = tip->RelayMessage(msg, 100); break;
            case Hide: hr = tip->Hide(); break;
        }
        EXPECT_EQ(r.result, hr);
        if (r.op == ShowAt) {
            EXPECT_EQ(r.result == S_OK ? 100u : 4000u, tip->m_nLastTimeout);
        }
        if (r.op == Ensure && r.result == S_OK) {
            EXPECT_NE(nullptr, tip->m_pBubble);
        }
        platform.files = {kSkin};
        platform.failBubble = false;
        delete tip;  // the destructor clears: the bubble goes with it
        EXPECT_EQ(nullptr, platform.bubble);
    }
}

TEST_F(BalloonTipTest, ShowUsesTheTargetsCentreUntilAPositionIsSetAndHidingForgetsThePositionOnly) {
    CKxBalloonlTip* tip = Tip();
    EXPECT_EQ(S_OK, tip->Show(TRUE, 0));
    EXPECT_EQ(4000u, tip->m_nLastTimeout) << "a time of 0 counts as 4000 for later flips";
    EXPECT_EQ(S_OK, tip->SetPosition(nullptr));
    EXPECT_FALSE(tip->m_bPositionSet) << "a null point sets nothing";
    const POINT at = {40, 50};
    EXPECT_EQ(S_OK, tip->SetPosition(&at));
    EXPECT_EQ(S_OK, tip->Show(FALSE, 0));
    EXPECT_EQ(S_OK, tip->Show(TRUE, 4000));
    EXPECT_EQ(S_OK, tip->Show(FALSE, 0));
    EXPECT_EQ(S_OK, tip->SetPosition(&at));
    EXPECT_EQ(S_OK, tip->Show(TRUE, 2500));
    const Lines expected = {
        "show Text|Title at 200,300 for 0 flags 16 sticky 1",  // the centre, each half truncated
        "reset", "show Text|Title at 0,0 for 4000 flags 16 sticky 1",  // hiding cleared the position, not the flag
        "reset", "show Text|Title at 40,50 for 2500 flags 16 sticky 1"};
    EXPECT_EQ(expected, TakeLog());
    EXPECT_EQ(1, platform.bubbles) << "one bubble object for the tip's life";
    tip->Close();
    EXPECT_EQ(E_INVALIDARG, tip->Show(TRUE, 0)) << "a closed tip is of the control sort";
    EXPECT_EQ(0x30u, tip->m_nFlags);
    EXPECT_EQ(nullptr, tip->m_pszText);
    EXPECT_EQ(Lines({"reset", "delete"}), TakeLog());
    EXPECT_EQ(0u, tip->Release());
}

TEST_F(BalloonTipTest, UpdatePositionMovesAFittingBubbleAndFlipsAnotherWithHalfTheTime) {
    CKxBalloonlTip* tip = Tip();
    EXPECT_EQ(S_OK, tip->UpdatePosition()) << "no bubble";
    EXPECT_EQ(S_OK, tip->Show(TRUE, 3000));
    EXPECT_EQ(S_OK, tip->UpdatePosition());
    platform.bubble->flips = true;
    EXPECT_EQ(S_OK, tip->UpdatePosition());
    EXPECT_EQ(1500u, tip->m_nLastTimeout);
    EXPECT_EQ(S_OK, tip->UpdatePosition());
    const Lines expected = {"show Text|Title at 200,300 for 3000 flags 16 sticky 1",
                            "check", "move 21,22",
                            "check", "reset", "show Text|Title at 11,12 for 1500 flags 16 sticky 1",
                            "check", "reset", "show Text|Title at 11,12 for 750 flags 16 sticky 1"};
    EXPECT_EQ(expected, TakeLog());
    EXPECT_EQ(0, tip->m_ptPosition.x + tip->m_ptPosition.y);
    platform.bubble->window = false;
    EXPECT_EQ(S_OK, tip->UpdatePosition()) << "a bubble without a window stays";
    EXPECT_EQ(Lines(), TakeLog());
    EXPECT_EQ(0u, tip->Release());
}

TEST_F(BalloonTipTest, RelayEventHidesOnTheTargetsDestroyAndRelaysTheRestWithTheTimeout) {
    CKxBalloonlTipControl* tip = Control();
    EXPECT_EQ(1, platform.bubbles) << "a control tip has its bubble from the start";
    EXPECT_EQ(S_OK, tip->SetTimeout(0));
    EXPECT_EQ(5000u, tip->m_nTimeout) << "0 keeps the old time";
    EXPECT_EQ(S_OK, tip->SetTimeout(700));
    struct Row { HWND hwnd; UINT message; HRESULT bubble; HRESULT result; const char* line; } rows[] = {
        {kTarget, WM_DESTROY, S_OK, 1, "reset"},
        {kGone, WM_DESTROY, S_OK, 1, "relay 2 to 1 for 700"},
        {kTarget, WM_MOUSEMOVE, S_OK, 1, "relay 512 to 1 for 700"},
        {kTarget, WM_MOUSEMOVE, E_NOTIMPL, 0, "relay 512 to 1 for 700"},
        {kTarget, WM_MOUSEMOVE, E_FAIL, 0, "relay 512 to 1 for 700"},
    };
    for (const Row& r : rows) {
        MSG msg = {};
        msg.hwnd = r.hwnd;
        msg.message = r.message;
        platform.bubble->relayResult = r.bubble;
        EXPECT_EQ(r.result, tip->RelayEvent(&msg));
        EXPECT_EQ(Lines({r.line}), TakeLog());
    }
    EXPECT_EQ(0u, tip->Release());
}

TEST_F(BalloonTipTest, AControlTipWhoseBubbleCouldNotBeMadeDealsWithNothing) {
    platform.failBubble = true;  // no bubble object: EnsureBubble fails
    CKxBalloonlTipControl* tip = Control();
    MSG msg = {};
    msg.hwnd = kTarget;
    msg.message = WM_MOUSEMOVE;
    EXPECT_EQ(0, tip->RelayEvent(&msg));
    EXPECT_EQ(0, platform.bubbles);
    EXPECT_EQ(0u, tip->Release());
}

// Many threads add and release references at once; the count ends where it began, and the last
// Release ends the object (the audit of CoTaskMem blocks and the sanitizers see it go once).
TEST_F(BalloonTipTest, ReferenceCountsHoldUnderThreadsAndEndAtZero) {
    CKxBalloonlTip* tip = Tip();
    CKxBalloonlTipControl* control = Control();
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t)
        threads.emplace_back([&] {
            for (int i = 0; i < 20000; ++i) {
                tip->AddRef();
                control->AddRef();
                tip->Release();
                control->Release();
            }
        });
    for (auto& t : threads) t.join();
    EXPECT_EQ(2u, tip->AddRef());
    EXPECT_EQ(1u, tip->Release());
    EXPECT_EQ(1, control->m_cRef);
    EXPECT_EQ(0u, tip->Release());
    EXPECT_EQ(0u, control->Release());
    EXPECT_EQ(1, platform.bubbles) << "the control tip's";
    EXPECT_EQ(nullptr, platform.bubble);
}

TEST_F(BalloonTipTest, AnObjectAtZeroIgnoresReleaseSetTimeoutAndRelayEvent) {
    CKxBalloonlTipControl* control = Control();
    CKxBalloonlTip* tip = Tip();
    control->m_cRef = 0;  // as another thread's last Release would leave it
    tip->m_cRef = 0;
    MSG msg = {};
    EXPECT_EQ(0u, control->Release());
    EXPECT_EQ(0u, tip->Release());
    EXPECT_EQ(E_POINTER, control->SetTimeout(100));
    EXPECT_EQ(E_POINTER, control->RelayEvent(&msg));
    EXPECT_EQ(5000u, control->m_nTimeout);
    EXPECT_EQ(Lines(), TakeLog()) << "nothing reached the bubble";
    control->m_cRef = 1;
    tip->m_cRef = 1;
    EXPECT_EQ(0u, control->Release());
    EXPECT_EQ(0u, tip->Release());
}

}  // namespace
