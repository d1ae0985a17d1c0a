#include "dialogs/win32/dlg_new_edit_name.h"

#include "frame/win32/skin_statics.h"
#include "ui/resource_string.h"

CDlgNewEditName::CDlgNewEditName(int nameKind, int mode, LPCWSTR pszInitialName, CWnd* pParentWnd,
                                 IEditTipMaker* tipMaker)
    : CKxSkinnedDialog(IDD, pParentWnd),
      m_model(nameKind, mode, pszInitialName),
      m_szSkinFile{},
      m_tipMaker(m_szSkinFile),
      m_yearTip(tipMaker ? *tipMaker : m_tipMaker),
      m_lengthTip(tipMaker ? *tipMaker : m_tipMaker) {}

CDlgNewEditName::~CDlgNewEditName() = default;

BOOL CDlgNewEditName::PreTranslateMessage(MSG* pMsg) {
    if (pMsg->message == WM_KEYDOWN) {
        const bool control = GetKeyState(VK_LCONTROL) < 0 || GetKeyState(VK_RCONTROL) < 0;
        m_model.OnKeyDown(static_cast<UINT>(pMsg->wParam), control);
    }
    return CDialog::PreTranslateMessage(pMsg);
}

BOOL CDlgNewEditName::OnInitDialog() {
    CDialog::OnInitDialog();

    AttachSkin();  // the platform look if it fails

    HWND picture = ::GetDlgItem(m_hWnd, KX_IDC_NAME_PICTURE);
    NameDialogTexts texts;
    if (!NameDialogTextsFor(m_model.m_nKind, m_model.m_nMode, &texts)) {
        PostMessage(WM_CLOSE);  // comes out as cancelled
        return TRUE;
    }
    SetDlgItemText(KX_IDC_NAME_OK, ResourceString(texts.okText).c_str());
    SetDlgItemText(KX_IDC_NAME_HEADING, ResourceString(texts.heading).c_str());
    SetDlgItemText(KX_IDC_NAME_LABEL, ResourceString(texts.label).c_str());
    if (picture) SetStaticPicture(picture, texts.picture);

    // The edit control reports this change too: an over-long initial name is warned at once.
    SetDlgItemText(KX_IDC_NAME_EDIT, m_model.m_strInitialName.c_str());
    if (HWND edit = ::GetDlgItem(m_hWnd, KX_IDC_NAME_EDIT)) ::SetFocus(edit);
    return FALSE;  // the focus has been set
}

KxMessageMap CDlgNewEditName::GetMessageMap() const {
    static const KxMessageEntry kEntries[] = {
        KxOnCommand(KX_IDC_NAME_EDIT, EN_UPDATE, &CDlgNewEditName::OnNameUpdate),
        KxOnCommand(KX_IDC_NAME_CANCEL, BN_CLICKED, &CDlgNewEditName::OnCancelButton),
    };
    return KxMakeMessageMap(kEntries);  // IDOK (button 1, Return) and IDCANCEL (Escape, close box): the base
}

void CDlgNewEditName::OnNameUpdate() { m_model.OnEditUpdate(*this); }

void CDlgNewEditName::OnCancelButton() { OnCancel(); }

BOOL CDlgNewEditName::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    // a tip points at where the edit control was; once the dialog moves it would point elsewhere
    if (message == WM_MOVE) {
        m_yearTip.Hide();
        m_lengthTip.Hide();
    }
    return CDialog::OnDialogMessage(message, wParam, lParam, pResult);
}

void CDlgNewEditName::OnOK() {
    switch (m_model.OnOK(*this)) {
    case CNewEditNameModel::OkOutcome::Close:
        CDialog::OnOK();
        break;
    case CNewEditNameModel::OkOutcome::Stay:
        break;
    case CNewEditNameModel::OkOutcome::Cancel:
        OnCancel();
        break;
    }
}

void CDlgNewEditName::OnDestroy() {
    m_yearTip.Release();
    m_lengthTip.Release();
    CDialog::OnDestroy();
}

bool CDlgNewEditName::GetNameText(std::wstring* text) {
    HWND edit = ::GetDlgItem(m_hWnd, KX_IDC_NAME_EDIT);
    if (!edit) return false;
    text->assign(static_cast<size_t>(::GetWindowTextLengthW(edit)) + 1, L'\0');
    text->resize(static_cast<size_t>(::GetWindowTextW(edit, &(*text)[0], static_cast<int>(text->size()))));
    return true;
}

void CDlgNewEditName::SetNameText(const std::wstring& text) { SetDlgItemText(KX_IDC_NAME_EDIT, text.c_str()); }

void CDlgNewEditName::SelectAllName() {
    HWND edit = ::GetDlgItem(m_hWnd, KX_IDC_NAME_EDIT);
    if (!edit) return;
    ::SetFocus(edit);
    ::SendMessageW(edit, EM_SETSEL, 0, -1);
    ::SendMessageW(edit, EM_SCROLLCARET, 0, 0);
}

std::wstring CDlgNewEditName::ResourceString(UINT id) { return KxLoadResourceString(id); }

bool CDlgNewEditName::ShowTip(NameTip which, const std::wstring& text, const std::wstring& title) {
    CEditWarningTip& tip = which == NameTip::Year ? m_yearTip : m_lengthTip;
    return tip.Show(::GetDlgItem(m_hWnd, KX_IDC_NAME_EDIT), text.c_str(), title.c_str());
}
