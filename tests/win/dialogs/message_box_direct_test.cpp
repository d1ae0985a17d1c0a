// The message box cases against CDlgMassageBox linked into this program, plus what only the
// object shows: its members after the run.
#include "dialogs/win32/dlg_massage_box.h"
#include "tests/win/common/framework_module.h"
#include "tests/win/dialogs/message_box_cases.h"
#include "ui/module_state.h"

namespace kxtest {

namespace {

class DirectShower : public MessageBoxShower {
public:
    HRESULT Show(HWND parent, LPCWSTR text, LPCWSTR caption, UINT flags) override {
        CKxManageState state;
        CDlgMassageBox dlg(text, caption ? caption : L"Media Library", flags, CWnd::FromHandle(parent));
        dlg.DoModal();
        return dlg.m_hrResult;
    }
    std::wstring DefaultCaption() override { return L"Media Library"; }

private:
    FrameworkModule module_;
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Direct, MessageBoxCases, ::testing::Values(0));

MessageBoxShower* MessageBoxCases::MakeShower() { return new DirectShower; }

TEST(MessageBoxObject, WithoutYesNoTheModalResultIsOkEvenWhenCancelled) {
    FrameworkModule module;
    CKxManageState state;
    CDlgMassageBox dlg(L"text", L"caption", 0);
    DialogDriver driver;
    driver.Focus(1033).Do([](HWND dlgWnd) {
        // the first button's command while the close button has the focus: cancelled, but OnOK
        SendMessageW(dlgWnd, WM_COMMAND, MAKEWPARAM(1034, BN_CLICKED), 0);
    });
    EXPECT_EQ(IDOK, dlg.DoModal());
    EXPECT_EQ(static_cast<HRESULT>(0x800704C7L), dlg.m_hrResult);
    EXPECT_FALSE(dlg.m_bFirstShow);
    EXPECT_FALSE(dlg.m_bReturnKey);
    EXPECT_EQ(0u, dlg.m_hookWnd.m_hHook);
}

TEST(MessageBoxObject, ADialogThatCannotBeCreatedReportsCancelled) {
    // no resource module: no template
    CKxManageState state;
    KxSetModuleResourceHandle(nullptr);
    KxSetModuleInstance(GetModuleHandleW(L"kernel32.dll"));
    CDlgMassageBox dlg(L"text", L"caption", MB_YESNO);
    EXPECT_EQ(-1, dlg.DoModal());
    EXPECT_EQ(static_cast<HRESULT>(0x800704C7L), dlg.m_hrResult);
    KxSetModuleInstance(nullptr);
}

}  // namespace kxtest
