// The window framework under Wine: a dialog of ComRcRes.dll run by CDialog::DoModal and driven
// like a user.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/dialogs/message_box_ids.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/framework_module.h"
#include "frame/trace_log.h"
#include "ui/control_wrappers.h"
#include "ui/dialog.h"
#include "ui/module_state.h"

namespace {

using kxtest::DialogDriver;
using Events = std::vector<std::string>;

const int kFirst = KX_IDC_MSGBOX_FIRST, kSecond = KX_IDC_MSGBOX_SECOND;

// The message box's template: two buttons and two texts. Its message map takes clicks of the first
// button and NM_CLICK notifications from the second.
class CProbeDialog : public CDialog {
public:
    explicit CProbeDialog(UINT id = KX_IDD_MESSAGEBOX, CWnd* parent = nullptr) : CDialog(id, parent) {}

    Events events;
    CButton m_first;
    CWnd* m_selfDuringInit = nullptr;

    BOOL PreTranslateMessage(MSG* msg) override {
        if (msg->message == WM_KEYDOWN) events.push_back("pretranslate");
        return CDialog::PreTranslateMessage(msg);
    }

protected:
    void DoDataExchange(CDataExchange* dx) override { DDX_Control(dx, kFirst, m_first); }
    KxMessageMap GetMessageMap() const override {
        static const KxMessageEntry kEntries[] = {
            KxOnCommand(kFirst, BN_CLICKED, &CProbeDialog::OnFirst),
            KxOnNotify(kSecond, static_cast<UINT>(NM_CLICK), &CProbeDialog::OnSecondClicked),
        };
        return KxMakeMessageMap(kEntries);
    }
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
    void OnFirst() {
        events.push_back("first");
        EndDialog(kFirst);
    }
    void OnSecondClicked(NMHDR* header, LRESULT* result) {
        events.push_back("notify " + std::to_string(header->idFrom));
        *result = 77;
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

// Every way to end the dialog, with what the object and its bound control show meanwhile and after;
// temporary window objects last until the outermost modal loop ends, then go with everything else.
TEST_F(DialogFramework, KeysCommandsNotificationsAndWmCloseReachTheirHandlersBeforeTheWindowGoes) {
    enum Action { Click, Return, Escape, Notify, Close };
    struct Case {
        Action action;
        INT_PTR result;
        Events events;
    } cases[] = {
        {Click, kFirst, {"init", "show", "first", "destroy"}},
        {Return, kFirst, {"init", "show", "pretranslate", "first", "destroy"}},
        {Escape, IDCANCEL, {"init", "show", "pretranslate", "cancel", "destroy"}},
        {Notify, IDCANCEL, {"init", "show", "notify " + std::to_string(kSecond), "cancel", "destroy"}},
        {Close, IDCANCEL, {"init", "show", "cancel", "destroy"}},
    };
    kxtest::ResourceCounts before{};
    for (const Case& c : cases) {
        if (&c == &cases[1]) before = kxtest::CountResources();  // the first run pays for what the process keeps
        CWnd* temp = CWnd::FromHandle(GetDesktopWindow());
        CProbeDialog dlg;
        DialogDriver driver;
        HWND seen = nullptr, button = nullptr;
        bool commonControls6 = false;
        LRESULT answer = 0;
        driver.Inspect([&](HWND h) {
            seen = h;
            EXPECT_EQ(temp, CWnd::FromHandle(GetDesktopWindow())) << "one temporary object per window";
            button = GetDlgItem(h, kFirst);
            EXPECT_EQ(&dlg, CWnd::FromHandlePermanent(h));
            EXPECT_EQ(button, dlg.m_first.m_hWnd) << "bound by data exchange";
            EXPECT_EQ(&dlg.m_first, CWnd::FromHandlePermanent(button));
            // BCM_GETIDEALSIZE is answered by the version 6 button only: the module's manifest
            SIZE size = {0, 0};
            commonControls6 = SendMessageW(button, BCM_GETIDEALSIZE, 0, reinterpret_cast<LPARAM>(&size)) && size.cx;
        });
        if (c.action == Click) driver.Click(kFirst);
        if (c.action == Return) driver.Focus(kFirst).Press(VK_RETURN);
        if (c.action == Escape) driver.Press(VK_ESCAPE);
        if (c.action == Notify) {
            driver.Do([&](HWND h) {
                // a row takes its own code only: these two reach the default handling
                SendMessageW(h, WM_COMMAND, MAKEWPARAM(kFirst, BN_DOUBLECLICKED), 0);
                NMHDR other = {GetDlgItem(h, kSecond), static_cast<UINT_PTR>(kSecond), static_cast<UINT>(NM_DBLCLK)};
                EXPECT_EQ(0, SendMessageW(h, WM_NOTIFY, kSecond, reinterpret_cast<LPARAM>(&other)));
                NMHDR hdr = {GetDlgItem(h, kSecond), static_cast<UINT_PTR>(kSecond), static_cast<UINT>(NM_CLICK)};
                answer = SendMessageW(h, WM_NOTIFY, kSecond, reinterpret_cast<LPARAM>(&hdr));
            });
        }
        if (c.action == Notify || c.action == Close) driver.Close();
        EXPECT_EQ(c.result, dlg.DoModal()) << c.action;
        EXPECT_EQ(c.events, dlg.events) << c.action;
        EXPECT_EQ(c.action == Notify ? 77 : 0, answer) << "the handler's result is the message's answer";
        EXPECT_EQ(&dlg, dlg.m_selfDuringInit) << "FromHandle gives the permanent object";
        EXPECT_TRUE(commonControls6);
        EXPECT_FALSE(driver.timedOut());
        EXPECT_FALSE(IsWindow(seen));
        EXPECT_EQ(nullptr, dlg.m_hWnd);
        EXPECT_EQ(nullptr, dlg.m_first.m_hWnd);
        EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(button));
        EXPECT_EQ(0u, CWnd::TemporaryObjectCount()) << "the temporary map was emptied";
    }
    EXPECT_EQ("", kxtest::Leftovers(before));
}

// A control whose handler runs out of memory setting its text, and a dialog whose command
// handler throws for button 1035.
class CThrowingButton : public CButton {
protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_SETTEXT) throw std::bad_alloc();
        return CButton::WindowProc(message, wParam, lParam);
    }
};
class CThrowingDialog : public CDialog {
public:
    CThrowingDialog() : CDialog(6005, nullptr) {}
    CThrowingButton m_first;

protected:
    void DoDataExchange(CDataExchange* dx) override { DDX_Control(dx, 1034, m_first); }
    BOOL OnCommand(WPARAM wp, LPARAM lp) override {
        if (LOWORD(wp) == 1035) throw 1035;
        return CDialog::OnCommand(wp, lp);
    }
};

// An exception in a handler stops in the procedure that called it: the message gets the default
// handling (the text is set all the same, the click does nothing) and the trace names the place.
TEST_F(DialogFramework, AHandlerThatThrowsLeavesTheMessageToTheDefaultHandling) {
    CThrowingDialog dlg;
    std::wstring text, afterSetText, afterClick;
    DialogDriver driver;
    driver.Do([](HWND dlg) { SetDlgItemTextW(dlg, 1034, L"after"); })
        .Inspect([&](HWND dlg) {
            text = kxtest::ItemText(dlg, 1034);
            afterSetText = g_szTraceMessage;
        })
        .Click(1035)
        .Inspect([&](HWND) { afterClick = g_szTraceMessage; })
        .Close();
    EXPECT_EQ(IDCANCEL, dlg.DoModal());
    EXPECT_EQ(L"after", text);
    EXPECT_EQ(L"E:CWnd::WindowProc>> Caught an exception: out of memory", afterSetText);
    EXPECT_EQ(L"E:CDialog::Dispatch>> Caught an exception: unexpected error", afterClick);
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

}  // namespace
