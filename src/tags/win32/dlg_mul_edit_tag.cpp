// The multiple-item tag dialog's window: its template's controls for the model.
#include "tags/win32/dlg_mul_edit_tag.h"

#include <commctrl.h>

#include "resources/dialogs/edit_single_tags_ids.h"  // the picture's menu

CDlgMulEditTag::CDlgMulEditTag(IKxContentSite* site, IKxContentFolder* folder, UINT itemCount, const KxPcPidl* items,
                               CWnd* pParentWnd, IEditTipMaker* tipMaker)
    : CDialogEditTag(IDD, pParentWnd,
                     {KX_IDC_MTAG_CLOSE, KX_IDC_MTAG_BROWSE, KX_IDC_MTAG_REMOVE, KX_IDC_MTAG_ART, KX_IDC_MTAG_STORE},
                     tipMaker),
      m_model(*this, site, folder, itemCount, items) {}

CDlgMulEditTag::~CDlgMulEditTag() = default;

// Any key takes the length warning away; the keystroke rule follows in the shared side.
bool CDlgMulEditTag::PreTranslateKey(MSG* pMsg) {
    if (pMsg->message == WM_KEYDOWN) m_lengthBalloon.Hide();
    return false;
}

BOOL CDlgMulEditTag::OnInitDialog() {
    CDialog::OnInitDialog();
    InitSharedControls();
    ::SendMessageW(Item(KX_IDC_MTAG_RATING), TBM_SETRANGE, FALSE, MAKELPARAM(0, 5));
    SetDlgItemText(KX_IDC_MTAG_NOTE, ResourceString(KX_IDS_MTAG_NOTE).c_str());
    ::SendMessageW(Item(KX_IDC_MTAG_YEAR), CB_LIMITTEXT, 4, 0);
    if (FAILED(m_model.InitDialog())) {
        PostMessage(WM_CLOSE);  // the host sees a cancelled dialog
        return TRUE;
    }
    AttachSkin();  // the platform look if it fails
    InitDropAndTips();
    return TRUE;
}

KxMessageMap CDlgMulEditTag::GetMessageMap() const {
    typedef CDlgMulEditTag D;
    static const KxMessageEntry kEntries[] = {
        KxOnCommand(KX_IDC_MTAG_ARTIST, CBN_EDITUPDATE, &D::OnFieldChange<KX_IDC_MTAG_ARTIST>),
        KxOnCommand(KX_IDC_MTAG_ARTIST2, CBN_EDITUPDATE, &D::OnFieldChange<KX_IDC_MTAG_ARTIST2>),
        KxOnCommand(KX_IDC_MTAG_ALBUM, CBN_EDITUPDATE, &D::OnFieldChange<KX_IDC_MTAG_ALBUM>),
        KxOnCommand(KX_IDC_MTAG_GENRE, CBN_EDITUPDATE, &D::OnFieldChange<KX_IDC_MTAG_GENRE>),
        KxOnCommand(KX_IDC_MTAG_YEAR, CBN_EDITCHANGE, &D::OnFieldChange<KX_IDC_MTAG_YEAR>),
        KxOnCommand(KX_IDC_MTAG_ARTIST, CBN_SELCHANGE, &D::OnSelChange<KX_IDC_MTAG_ARTIST>),
        KxOnCommand(KX_IDC_MTAG_ARTIST2, CBN_SELCHANGE, &D::OnSelChange<KX_IDC_MTAG_ARTIST2>),
        KxOnCommand(KX_IDC_MTAG_ALBUM, CBN_SELCHANGE, &D::OnSelChange<KX_IDC_MTAG_ALBUM>),
        KxOnCommand(KX_IDC_MTAG_GENRE, CBN_SELCHANGE, &D::OnSelChange<KX_IDC_MTAG_GENRE>),
        KxOnCommand(KX_IDC_MTAG_YEAR, CBN_SELCHANGE, &D::OnSelChange<KX_IDC_MTAG_YEAR>),
        KxOnCommand(KX_IDC_MTAG_BROWSE, BN_CLICKED, &D::OnBrowseArt),
        KxOnCommand(KX_IDC_MTAG_REMOVE, BN_CLICKED, &D::OnRemoveArt),
        KxOnCommand(KX_IDM_ART_BROWSE, 0, &D::OnBrowseArt),
        KxOnCommand(KX_IDM_ART_PASTE, 0, &D::OnPasteArt),
        KxOnCommand(KX_IDM_ART_REMOVE, 0, &D::OnRemoveArt),
        KxOnCommand(KX_IDC_MTAG_CLOSE, BN_CLICKED, &D::OnClose),
        KxOnCommand(KX_IDC_MTAG_STORE, BN_CLICKED, &D::OnStore),
    };
    return KxMakeMessageMap(kEntries);  // IDOK (Return) and IDCANCEL (Escape, close box): the base
}

void CDlgMulEditTag::OnShowWindow(BOOL bShow, UINT nStatus) {
    CDialog::OnShowWindow(bShow, nStatus);
    m_model.OnShowWindow(bShow != FALSE);
}

BOOL CDlgMulEditTag::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    // The slider's scroll ticks the rating box and goes on to the dialog as usual.
    if (message == WM_HSCROLL && reinterpret_cast<HWND>(lParam) == Item(KX_IDC_MTAG_RATING))
        m_model.OnRatingScroll(LOWORD(wParam));
    return CDialogEditTag::OnDialogMessage(message, wParam, lParam, pResult);
}

void CDlgMulEditTag::OnOK() {
    if (m_model.OnOK() == CMultipleTagModel::OkOutcome::Close) CDialog::OnOK();
}

void CDlgMulEditTag::OnBrowseArt() {
    if (BrowseForArt()) m_model.OnArtTaken();
}

void CDlgMulEditTag::OnPasteArt() {
    if (PasteArt()) m_model.OnArtTaken();
}

void CDlgMulEditTag::OnRemoveArt() { m_model.OnRemoveArt(); }
