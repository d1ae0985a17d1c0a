#include "dialogs/win32/dlg_massage_box.h"

#include "frame/win32/skin_statics.h"
#include "ui/resource_string.h"

namespace {

// A bold copy of a font (weight 700, default quality); null when it cannot be made.
HFONT CreateBoldFont(HFONT base) {
    LOGFONTW lf = {};
    if (!base || !GetObjectW(base, sizeof(lf), &lf)) return nullptr;
    lf.lfWeight = FW_BOLD;
    lf.lfQuality = 0;
    return CreateFontIndirectW(&lf);
}

// The platform's icon of the same meaning as the skin's picture, for a dialog without the skin.
LPCWSTR PlatformIconFor(const char* picture) {
    const std::string p = picture;
    if (p == "Exclamation.png") return IDI_WARNING;
    if (p == "Criticalerror.png") return IDI_ERROR;
    if (p == "balloon Info.png") return IDI_INFORMATION;
    return IDI_QUESTION;
}

}  // namespace

CDlgMassageBox::CDlgMassageBox(LPCWSTR pszText, LPCWSTR pszCaption, UINT flags, CWnd* pParentWnd)
    : CKxSkinnedDialog(IDD, pParentWnd),
      m_strCaption(pszCaption ? pszCaption : L""),
      m_strText(pszText ? pszText : L""),
      m_nFlags(flags),
      m_bReturnKey(FALSE),
      m_bFirstShow(TRUE),
      m_rcCaption{0, 0, 0, 0},
      m_rcText{0, 0, 0, 0},
      m_hrResult(KX_MSGBOX_RESULT_CANCELLED) {
    MessageBoxCutText(m_strCaption);
    MessageBoxCutText(m_strText);
}

CDlgMassageBox::~CDlgMassageBox() = default;

void CDlgMassageBox::DoDataExchange(CDataExchange* pDX) {
    CDialog::DoDataExchange(pDX);
    DDX_Control(pDX, KX_IDC_MSGBOX_ICON, m_wndIcon);
    DDX_Control(pDX, KX_IDC_MSGBOX_FIRST, m_btnFirst);
    DDX_Control(pDX, KX_IDC_MSGBOX_SECOND, m_btnSecond);
    DDX_Control(pDX, KX_IDC_MSGBOX_CLOSE, m_btnClose);
}

BOOL CDlgMassageBox::PreTranslateMessage(MSG* pMsg) {
    m_bReturnKey = (pMsg->message == WM_KEYDOWN && pMsg->wParam == VK_RETURN) ? TRUE : FALSE;
    return CDialog::PreTranslateMessage(pMsg);
}

BOOL CDlgMassageBox::OnInitDialog() {
    CDialog::OnInitDialog();

    const MessageBoxButtons buttons = MessageBoxButtonsFor(m_nFlags);
    if (buttons.yesNo) {
        m_btnFirst.SetWindowText(KxLoadResourceString(buttons.firstString).c_str());
        m_btnSecond.SetWindowText(KxLoadResourceString(buttons.secondString).c_str());
        m_btnFirst.EnableWindow(TRUE);
        m_btnFirst.ShowWindow(SW_SHOW);
    } else {
        m_btnFirst.SetWindowText(KxLoadResourceString(buttons.firstString).c_str());
        m_btnFirst.SetFocus();
        m_btnSecond.EnableWindow(FALSE);
        m_btnSecond.ShowWindow(SW_HIDE);
        RECT rc;
        m_btnSecond.GetWindowRect(&rc);
        if (rc.right - rc.left > 0) {
            ScreenToClient(&rc);
            m_btnFirst.MoveWindow(&rc, FALSE);
        }
    }
    if (buttons.secondDefault) {
        m_btnFirst.ModifyStyle(BS_DEFPUSHBUTTON, 0);
        m_btnSecond.ModifyStyle(0, BS_DEFPUSHBUTTON);
        m_btnSecond.SetFocus();
    }
    // Two buttons without MB_DEFBUTTON2 leave the focus to the dialog manager, which gives it to
    // the first tab stop of the template: the first button.

    const DWORD_PTR skinned = AttachSkin();

    if (const char* picture = MessageBoxPictureFor(m_nFlags)) {
        SetStaticPicture(::GetDlgItem(m_hWnd, KX_IDC_MSGBOX_ICON), picture);
        // Without the skin the request has no effect; the platform's icon of the same meaning
        // keeps the box telling what kind of message it is. Shared icons are not destroyed.
        if (!skinned && m_wndIcon.m_hWnd)
            m_wndIcon.SetIcon(LoadIconW(nullptr, PlatformIconFor(picture)));
    }

    // the caption line is drawn in the bold face that its measuring assumes
    m_fontCaption.Reset(CreateBoldFont(GetFont()));
    if (CWnd* caption = GetDlgItem(KX_IDC_MSGBOX_CAPTION)) {
        if (m_fontCaption) caption->SetFont(m_fontCaption.Get(), FALSE);
    }
    SetDlgItemText(KX_IDC_MSGBOX_CAPTION, m_strCaption.c_str());
    SetDlgItemText(KX_IDC_MSGBOX_TEXT, m_strText.c_str());
    return FALSE;  // the focus has been set
}

LONG CDlgMassageBox::NeededHeight(const RECT& rc, const std::wstring& text, bool bold) const {
    RECT measured = rc;
    // a control without width, an empty text or no measuring context: the text counts as fitting
    if (rc.right - rc.left <= 0 || text.empty()) return rc.bottom - rc.top;
    CKxMemoryDC dc;
    if (!dc) return rc.bottom - rc.top;
    HFONT dialogFont = GetFont();
    CKxFont boldFont(bold ? CreateBoldFont(dialogFont) : nullptr);
    // without the bold font the caption is measured in the dialog's font
    CKxSelectObject select(dc.Get(), boldFont ? static_cast<HGDIOBJ>(boldFont.Get()) : dialogFont);
    DrawTextW(dc.Get(), text.c_str(), static_cast<int>(text.size()), &measured,
              DT_CALCRECT | DT_EXTERNALLEADING | DT_WORDBREAK);
    return measured.bottom - measured.top;
}

void CDlgMassageBox::PlaceControl(HWND control, RECT* working, const RECT& screen) {
    *working = screen;
    ScreenToClient(working);
    ::MoveWindow(control, working->left, working->top, working->right - working->left,
                 working->bottom - working->top, TRUE);
}

void CDlgMassageBox::GrowToFitTexts() {
    HWND caption = ::GetDlgItem(m_hWnd, KX_IDC_MSGBOX_CAPTION);
    HWND text = ::GetDlgItem(m_hWnd, KX_IDC_MSGBOX_TEXT);
    if (!caption || !text) return;

    MessageBoxMeasures m;
    GetWindowRect(&m.dialog);
    ::GetWindowRect(caption, &m_rcCaption);
    m.caption = m_rcCaption;
    m.captionNeeded = NeededHeight(m.caption, m_strCaption, true);
    ::GetWindowRect(text, &m_rcText);
    m.text = m_rcText;
    m.textNeeded = NeededHeight(m.text, m_strText, false);

    const MessageBoxGrowth g = MessageBoxGrow(m);
    if (g.moveDialog) MoveWindow(&g.dialog, TRUE);
    if (g.moveCaption) PlaceControl(caption, &m_rcCaption, g.caption);
    if (g.moveText) PlaceControl(text, &m_rcText, g.text);
}

void CDlgMassageBox::OnShowWindow(BOOL bShow, UINT nStatus) {
    CDialog::OnShowWindow(bShow, nStatus);
    if (!bShow || !m_bFirstShow) return;
    GrowToFitTexts();
    if (!(m_nFlags & MB_YESNO)) {
        RECT rc;
        m_btnSecond.GetWindowRect(&rc);
        if (rc.right - rc.left > 0) {
            ScreenToClient(&rc);
            m_btnFirst.MoveWindow(&rc, TRUE);
        }
    }
    m_bFirstShow = FALSE;
}

MessageBoxFocus CDlgMassageBox::FocusNow() const {
    HWND focus = ::GetFocus();
    if (focus && focus == m_btnFirst.m_hWnd) return MessageBoxFocus::First;
    if (focus && focus == m_btnSecond.m_hWnd) return MessageBoxFocus::Second;
    if (focus && focus == m_btnClose.m_hWnd) return MessageBoxFocus::Close;
    return MessageBoxFocus::Other;
}

void CDlgMassageBox::OnFirstButton() {
    const MessageBoxOutcome o = MessageBoxFirstButtonOutcome(m_bReturnKey != FALSE, m_nFlags, FocusNow());
    m_hrResult = o.hrResult;
    if (o.endWithOk) OnOK();
    else OnCancel();
}

void CDlgMassageBox::OnSecondButton() {
    m_hrResult = IDNO;
    OnCancel();
}

void CDlgMassageBox::OnCloseButton() {
    m_hrResult = KX_MSGBOX_RESULT_CANCELLED;
    OnCancel();
}

KxMessageMap CDlgMassageBox::GetMessageMap() const {
    static const KxMessageEntry kEntries[] = {
        KxOnCommand(KX_IDC_MSGBOX_CLOSE, BN_CLICKED, &CDlgMassageBox::OnCloseButton),
        KxOnCommand(KX_IDC_MSGBOX_SECOND, BN_CLICKED, &CDlgMassageBox::OnSecondButton),
        KxOnCommand(KX_IDC_MSGBOX_FIRST, BN_CLICKED, &CDlgMassageBox::OnFirstButton),
    };
    return KxMakeMessageMap(kEntries);
}
