// Both balloon tip interfaces, through KxComResPlgin.dll, called the way a careless or hostile
// host might: null and unreadable pointers, a target destroyed under a tip, texts from empty to a
// million characters, calls after Close. One table per interface; each row makes a tip on a
// target of its own, runs its calls, and lets it go. Expected is the documented code, never a
// crash, a hang or a leak. The skinning library is the recording double, so bubbles really show.
#include <gtest/gtest.h>

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "kx/IKxBalloonTip.h"
#include "kx/IKxCommonResource.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/plugin_loader.h"
#include "tests/win/common/skin_recorder.h"
#include "tests/win/hostile/hostile_support.h"

namespace kxtest {
namespace {

const size_t kLengths[] = {0, 255, 256, 65535, 1000000};

// The window a tip is about; `target` may be destroyed by a row.
struct Scene {
    HWND target;
};

template <typename Tip>
struct Row {
    std::string name;
    std::function<HRESULT(Tip*, Scene&)> call;
    HRESULT expected;
    size_t textLength = 4;  // characters of the tip's text and title
};

MSG Message(HWND hwnd, UINT message) {
    MSG m = {};
    m.hwnd = hwnd;
    m.message = message;
    m.pt = POINT{120, 120};
    return m;
}

void Pump() {
    MSG m;
    for (int i = 0; i < 3; ++i) {
        while (PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&m);
        Sleep(5);
    }
}

std::vector<Row<IKxBalloonTip>> TipRows() {
    std::vector<Row<IKxBalloonTip>> rows = {
        {"SetPosition null", [](IKxBalloonTip* t, Scene&) { return t->SetPosition(nullptr); }, S_OK},
        {"SetPosition unreadable", [](IKxBalloonTip* t, Scene&) {
             return t->SetPosition(static_cast<const POINT*>(GuardedPages::Get().NoAccess()));
         }, S_OK},
        {"Show, every time", [](IKxBalloonTip* t, Scene&) { return t->Show(TRUE, 0xFFFFFFFF); }, S_OK},
        {"Show twice", [](IKxBalloonTip* t, Scene&) {
             t->Show(TRUE, 0);
             return t->Show(TRUE, 0);
         }, S_FALSE},
        {"hide, never shown", [](IKxBalloonTip* t, Scene&) { return t->Show(FALSE, 0); }, E_POINTER},
        {"UpdatePosition, never shown", [](IKxBalloonTip* t, Scene&) { return t->UpdatePosition(); }, S_OK},
        // a target that went after the tip was made still has its tip, at 0, 0
        {"Show, target destroyed", [](IKxBalloonTip* t, Scene& s) {
             DestroyWindow(s.target);
             return t->Show(TRUE, 0);
         }, S_OK},
        {"UpdatePosition, target destroyed while shown", [](IKxBalloonTip* t, Scene& s) {
             t->Show(TRUE, 0);
             DestroyWindow(s.target);
             return t->UpdatePosition();
         }, S_OK},
        {"Show after Close", [](IKxBalloonTip* t, Scene&) {
             t->Close();
             t->Close();
             return t->Show(TRUE, 0);
         }, E_INVALIDARG},
        {"UpdatePosition after Close", [](IKxBalloonTip* t, Scene&) {
             t->Show(TRUE, 0);
             t->Close();
             return t->UpdatePosition();
         }, S_OK},
        {"QueryInterface null out", [](IKxBalloonTip* t, Scene&) { return t->QueryInterface(IID_IUnknown, nullptr); },
         E_NOTIMPL},
    };
    for (size_t n : kLengths)
        rows.push_back({"Show texts of " + std::to_string(n),
                        [](IKxBalloonTip* t, Scene&) { return t->Show(TRUE, 0); }, S_OK, n});
    return rows;
}

std::vector<Row<IKxBalloonTipControl>> ControlRows() {
    std::vector<Row<IKxBalloonTipControl>> rows = {
        {"SetTimeout 0", [](IKxBalloonTipControl* t, Scene&) { return t->SetTimeout(0); }, S_OK},
        {"SetTimeout every time", [](IKxBalloonTipControl* t, Scene&) { return t->SetTimeout(0xFFFFFFFF); }, S_OK},
        {"RelayEvent null", [](IKxBalloonTipControl* t, Scene&) { return t->RelayEvent(nullptr); }, E_POINTER},
        {"RelayEvent unreadable", [](IKxBalloonTipControl* t, Scene&) {
             return t->RelayEvent(static_cast<MSG*>(GuardedPages::Get().NoAccess()));
         }, E_POINTER},
        {"RelayEvent of a destroyed window", [](IKxBalloonTipControl* t, Scene&) {
             MSG m = Message(DestroyedWindow(), WM_MOUSEMOVE);
             return t->RelayEvent(&m);
         }, 1},
        {"RelayEvent, target destroyed", [](IKxBalloonTipControl* t, Scene& s) {
             DestroyWindow(s.target);
             MSG m = Message(s.target, WM_MOUSEMOVE);
             return t->RelayEvent(&m);
         }, 0},
        {"RelayEvent of the target's end", [](IKxBalloonTipControl* t, Scene& s) {
             MSG move = Message(s.target, WM_MOUSEMOVE);
             t->RelayEvent(&move);
             MSG end = Message(s.target, WM_DESTROY);
             return t->RelayEvent(&end);
         }, 1},
        {"RelayEvent after Close", [](IKxBalloonTipControl* t, Scene& s) {
             t->Close();
             t->Close();
             MSG m = Message(s.target, WM_MOUSEMOVE);
             return t->RelayEvent(&m);
         }, 0},
        {"SetTimeout after Close", [](IKxBalloonTipControl* t, Scene&) {
             t->Close();
             return t->SetTimeout(10);
         }, S_OK},
        {"QueryInterface null out",
         [](IKxBalloonTipControl* t, Scene&) { return t->QueryInterface(IID_IUnknown, nullptr); }, E_NOTIMPL},
    };
    for (size_t n : kLengths)
        rows.push_back({"RelayEvent, texts of " + std::to_string(n), [n](IKxBalloonTipControl* t, Scene& s) {
                            // the tracking tip shows at the cursor, when it moved over the target
                            SetCursorPos(110 + static_cast<int>(n % 50), 110);
                            MSG m = Message(s.target, WM_MOUSEMOVE);
                            return t->RelayEvent(&m);
                        }, 1, n});
    return rows;
}

class HostileBalloonTips : public ::testing::Test {
protected:
    void SetUp() override {
        WatchTaskMemory();
        ASSERT_EQ(S_OK, plugin.Create(&res));
    }
    void TearDown() override {
        if (res) res->Release();
    }

    // Runs every row of one interface's table; the codes that differ, one line each.
    template <typename Tip>
    std::string RunTable(const std::vector<Row<Tip>>& rows, REFIID iid) {
        std::string wrong;
        for (const Row<Tip>& row : rows) {
            Scene scene{CreateWindowExW(0, L"STATIC", L"target", WS_POPUP | WS_VISIBLE, 100, 100, 80, 24, nullptr,
                                        nullptr, nullptr, nullptr)};
            Tip* tip = nullptr;
            const std::wstring& text = LongText(row.textLength);
            HRESULT hr = res->CreateBalloonTip(iid, scene.target, text.c_str(), text.c_str(), 0x30,
                                               reinterpret_cast<void**>(&tip));
            if (hr == S_OK && tip) {
                hr = row.call(tip, scene);
                Pump();
                if (tip->Release() != 0) wrong += row.name + ": a reference is left\n";
            }
            if (hr != row.expected) wrong += row.name + ": " + Hex(hr) + "\n";
            if (IsWindow(scene.target)) DestroyWindow(scene.target);
            Pump();
        }
        return wrong;
    }

    std::string RunBoth() {
        return RunTable(TipRows(), IID_IKxBalloonTip) + RunTable(ControlRows(), IID_IKxBalloonTipControl);
    }

    SkinRecorder skin;
    PluginLibrary plugin;
    IKxCommonResource* res = nullptr;
};

TEST_F(HostileBalloonTips, EveryRowAnswersItsCodeAndLeavesNothing) {
    EXPECT_EQ("", RunBoth());
    const ResourceCounts before = CountResources();
    EXPECT_EQ("", RunBoth());
    EXPECT_EQ("", Leftovers(before));
}

}  // namespace
}  // namespace kxtest
