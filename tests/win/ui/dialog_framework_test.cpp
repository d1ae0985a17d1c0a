// The window framework under Wine: a dialog of ComRcRes.dll run by CDialog::DoModal and driven
// like a user.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/framework_module.h"
#include "ui/activation_context.h"
#include "ui/controls.h"
#include "ui/dialog.h"
#include "ui/module_state.h"

namespace {

using kxtest::DialogDriver;

// Template 6005 has buttons 1034 and 1035 (bottom, anchored by its layout) and texts 1070, 1046.
class CProbeDialog : public CDialog {
public:
    explicit CProbeDialog(UINT id = 6005, CWnd* parent = nullptr) : CDialog(id, parent) {}

    std::vector<std::string> events;
    std::vector<UINT> preTranslated;
    CButton m_first;
    CWnd* m_selfDuringInit = nullptr;

    BOOL PreTranslateMessage(MSG* msg) override {
        if (msg->message == WM_KEYDOWN || msg->message == WM_CHAR) preTranslated.push_back(msg->message);
        return CDialog::PreTranslateMessage(msg);
    }

protected:
    void DoDataExchange(CDataExchange* dx) override { DDX_Control(dx, 1034, m_first); }
    BOOL OnInitDialog() override {
        events.push_back("init");
        CDialog::OnInitDialog();
        m_selfDuringInit = CWnd::FromHandle(m_hWnd);
        return TRUE;
    }
    void OnShowWindow(BOOL show, UINT status) override {
        events.push_back(show ? "show" : "hide");
        CDialog::OnShowWindow(show, status);
    }
    BOOL OnCommand(WPARAM wp, LPARAM lp) override {
        if (LOWORD(wp) == 1034 && HIWORD(wp) == BN_CLICKED) {
            events.push_back("first");
            EndDialog(1034);
            return TRUE;
        }
        return CDialog::OnCommand(wp, lp);
    }
    void OnOK() override {
        events.push_back("ok");
        CDialog::OnOK();
    }
    void OnCancel() override {
        events.push_back("cancel");
        CDialog::OnCancel();
    }
    void OnDestroy() override { events.push_back("destroy"); }
};

class DialogFramework : public ::testing::Test {
protected:
    kxtest::FrameworkModule module;
    CKxManageState state;
};

TEST_F(DialogFramework, ADialogWithoutItsTemplateIsNotCreatedAndDoModalSaysMinusOne) {
    kxtest::ResourceCounts before = kxtest::CountResources();
    CProbeDialog dlg(6999);
    EXPECT_EQ(-1, dlg.DoModal());
    EXPECT_TRUE(dlg.events.empty());
    EXPECT_EQ(before.windows, kxtest::CountResources().windows);
}

TEST_F(DialogFramework, RunsInitShowAndEndsByEscapeThroughPreTranslateMessage) {
    CProbeDialog dlg;
    DialogDriver driver;
    HWND seen = nullptr;
    driver.Inspect([&](HWND h) {
              seen = h;
              EXPECT_EQ(&dlg, CWnd::FromHandlePermanent(h));
              EXPECT_EQ(h, dlg.m_first.GetParent()->m_hWnd);
          })
        .Press(VK_ESCAPE);
    EXPECT_EQ(IDCANCEL, dlg.DoModal());
    EXPECT_EQ(driver.dialog(), seen);
    EXPECT_FALSE(driver.timedOut());
    EXPECT_EQ((std::vector<std::string>{"init", "show", "cancel", "destroy"}), dlg.events);
    ASSERT_FALSE(dlg.preTranslated.empty());
    EXPECT_EQ(static_cast<UINT>(WM_KEYDOWN), dlg.preTranslated.front());
    EXPECT_EQ(&dlg, dlg.m_selfDuringInit) << "FromHandle gives the permanent object";
    EXPECT_EQ(nullptr, dlg.m_hWnd);
    EXPECT_FALSE(IsWindow(seen));
}

TEST_F(DialogFramework, ControlsBoundByDataExchangeAreReleasedWithTheirWindows) {
    CProbeDialog dlg;
    DialogDriver driver;
    HWND button = nullptr;
    driver.Inspect([&](HWND h) {
              button = GetDlgItem(h, 1034);
              EXPECT_EQ(button, dlg.m_first.m_hWnd);
              EXPECT_EQ(&dlg.m_first, CWnd::FromHandlePermanent(button));
          })
        .Click(1034);
    EXPECT_EQ(1034, dlg.DoModal());
    EXPECT_EQ(nullptr, dlg.m_first.m_hWnd);
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(button));
}

TEST_F(DialogFramework, WmCloseCancelsAndTheOwnerIsDisabledOnlyWhileTheDialogRuns) {
    HWND owner = CreateWindowExW(0, L"STATIC", L"owner", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(nullptr, owner);
    CProbeDialog dlg(6005, CWnd::FromHandle(owner));
    DialogDriver driver;
    driver.Inspect([&](HWND h) {
              EXPECT_FALSE(IsWindowEnabled(owner));
              EXPECT_EQ(owner, GetWindow(h, GW_OWNER));
          })
        .Close();
    EXPECT_EQ(IDCANCEL, dlg.DoModal());
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ((std::vector<std::string>{"init", "show", "cancel", "destroy"}), dlg.events);
    DestroyWindow(owner);
}

TEST_F(DialogFramework, TypedCharactersPassThroughTheLoopIntoAnEdit) {
    CProbeDialog dlg;
    DialogDriver driver;
    std::wstring typed;
    driver.Do([](HWND h) {
              CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 10, 10, 100, 20, h,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(2000)), nullptr, nullptr);
          })
        .Type(2000, L"Road trip")
        .Inspect([&](HWND h) { typed = kxtest::ItemText(h, 2000); })
        .Close();
    dlg.DoModal();
    EXPECT_EQ(L"Road trip", typed);
    EXPECT_EQ(9u, std::count(dlg.preTranslated.begin(), dlg.preTranslated.end(), static_cast<UINT>(WM_CHAR)));
}

TEST_F(DialogFramework, ReturnOnTheDefaultButtonReachesItsCommand) {
    CProbeDialog dlg;
    DialogDriver driver;
    driver.Focus(1034).Press(VK_RETURN);
    EXPECT_EQ(1034, dlg.DoModal());
    EXPECT_EQ("first", dlg.events[2]);
}

TEST_F(DialogFramework, TheTemplateLayoutKeepsAnchoredControlsAtTheBottomWhenTheDialogGrows) {
    CProbeDialog dlg;
    DialogDriver driver;
    RECT first0{}, first1{}, text0{}, text1{};
    driver.Inspect([&](HWND h) {
              first0 = kxtest::ItemRect(h, 1034);
              text0 = kxtest::ItemRect(h, 1046);
              RECT rc;
              GetWindowRect(h, &rc);
              MoveWindow(h, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top + 57, TRUE);
          })
        .Inspect([&](HWND h) {
            first1 = kxtest::ItemRect(h, 1034);
            text1 = kxtest::ItemRect(h, 1046);
        })
        .Close();
    dlg.DoModal();
    EXPECT_EQ(first0.top + 57, first1.top);
    EXPECT_EQ(first0.left, first1.left);
    EXPECT_EQ(first0.bottom - first0.top, first1.bottom - first1.top);
    EXPECT_EQ(text0.top, text1.top) << "controls without layout stay";
    EXPECT_EQ(text0.bottom, text1.bottom);
}

TEST_F(DialogFramework, DialogsRunWithTheModuleManifestForCommonControls6) {
    CProbeDialog dlg;
    DialogDriver driver;
    bool idealSize = false;
    driver.Inspect([&](HWND h) {
              SIZE size = {0, 0};
              // BCM_GETIDEALSIZE is answered by the version 6 button only
              idealSize = SendMessageW(GetDlgItem(h, 1034), BCM_GETIDEALSIZE, 0, reinterpret_cast<LPARAM>(&size)) &&
                          size.cx > 0;
          })
        .Close();
    dlg.DoModal();
    EXPECT_TRUE(idealSize);
}

TEST_F(DialogFramework, AQuitMessageEndsTheModalLoopAndIsPostedAgainForTheOuterLoop) {
    CProbeDialog dlg;
    DialogDriver driver;
    driver.Do([](HWND) { PostQuitMessage(42); });
    EXPECT_EQ(-1, dlg.DoModal());
    MSG msg;
    ASSERT_TRUE(PeekMessageW(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(42u, msg.wParam);
}

TEST_F(DialogFramework, TemporaryWindowObjectsLastUntilTheOutermostModalLoopEnds) {
    HWND desktop = GetDesktopWindow();
    CWnd* temp = CWnd::FromHandle(desktop);
    ASSERT_NE(nullptr, temp);
    EXPECT_EQ(temp, CWnd::FromHandle(desktop)) << "one temporary object per window";
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(desktop));
    CProbeDialog dlg;
    DialogDriver driver;
    CWnd* inside = nullptr;
    driver.Do([&](HWND) { inside = CWnd::FromHandle(desktop); });
    size_t during = 0;
    driver.Do([&](HWND) { during = CWnd::TemporaryObjectCount(); }).Close();
    dlg.DoModal();
    EXPECT_EQ(temp, inside);
    EXPECT_GE(during, 1u);
    EXPECT_EQ(0u, CWnd::TemporaryObjectCount()) << "the temporary map was emptied";
}

TEST_F(DialogFramework, NothingIsLeftBehindByADialogRun) {
    {
        CProbeDialog warmup;
        DialogDriver driver;
        driver.Close();
        warmup.DoModal();
    }
    kxtest::ResourceCounts before = kxtest::CountResources();
    for (int i = 0; i < 3; ++i) {
        CProbeDialog dlg;
        DialogDriver driver;
        driver.Click(1034);
        dlg.DoModal();
    }
    kxtest::ResourceCounts after = kxtest::CountResources();
    EXPECT_EQ(before.windows, after.windows);
    EXPECT_EQ(before.gdiObjects, after.gdiObjects);
    EXPECT_EQ(before.userObjects, after.userObjects);
}

}  // namespace
