#include "library/win32/dlg_add_to_playlist.h"

#include "frame/win32/skin_statics.h"
#include "ui/module_state.h"
#include "ui/resource_string.h"

namespace {

const UINT kStringHeadingPlaylist = 26;
const UINT kStringHeadingSlideshow = 130;
const UINT kStringLabelPlaylist = 131;
const UINT kStringLabelSlideshow = 132;

}  // namespace

CDlgAddToPlaylist::CDlgAddToPlaylist(int mode, IKxContentFolder* pFolder, LPCWSTR pszInitialName, CWnd* pParentWnd)
    : CKxSkinnedDialog(IDD, pParentWnd), m_model(mode, pFolder, pszInitialName) {}

CDlgAddToPlaylist::~CDlgAddToPlaylist() = default;

void CDlgAddToPlaylist::DoDataExchange(CDataExchange* pDX) {
    CDialog::DoDataExchange(pDX);
    DDX_Control(pDX, KX_IDC_ADDTO_TARGETS, m_combo);
    DDX_Control(pDX, KX_IDC_ADDTO_PICTURE, m_picture);
}

BOOL CDlgAddToPlaylist::OnInitDialog() {
    CDialog::OnInitDialog();
    if (!m_model.m_pFolder) {
        m_model.m_hrResult = E_POINTER;
        PostMessage(WM_CLOSE);
        return TRUE;
    }

    AttachSkin();  // the platform look if it fails

    const bool playlist = m_model.m_nMode == CAddToPlaylistModel::ModePlaylist;
    if (!playlist) SetStaticPicture(m_picture.m_hWnd, "Add New Slideshow.png");

    const std::wstring heading = KxLoadResourceString(playlist ? kStringHeadingPlaylist : kStringHeadingSlideshow);
    SetDlgItemText(KX_IDC_ADDTO_HEADING, heading.c_str());
    SetWindowText(heading.c_str());  // the title bar says the same as the heading
    SetDlgItemText(KX_IDC_ADDTO_LABEL, KxLoadResourceString(playlist ? kStringLabelPlaylist : kStringLabelSlideshow).c_str());
    SetDlgItemText(KX_IDC_ADDTO_OK, KxLoadResourceString(CAddToPlaylistModel::kStringOkExisting).c_str());

    const int which = playlist ? CAddToPlaylistModel::WhichPlaylists : CAddToPlaylistModel::WhichSlideshows;
    if (m_model.LoadExisting(which) != S_OK) PostMessage(WM_CLOSE);
    m_model.FillCombo(*this, m_model.m_pszInitialName.Get());
    return TRUE;
}

// Return reaches the default button 1039; should the dialog manager send IDOK (or Escape
// IDCANCEL) instead, the base's handling calls the same OnOK and OnCancel.
KxMessageMap CDlgAddToPlaylist::GetMessageMap() const {
    static const KxMessageEntry kEntries[] = {
        KxOnCommand(KX_IDC_ADDTO_TARGETS, CBN_SELCHANGE, &CDlgAddToPlaylist::OnTargetsSelChange),
        KxOnCommand(KX_IDC_ADDTO_TARGETS, CBN_EDITUPDATE, &CDlgAddToPlaylist::OnTargetsEdit),
        KxOnCommand(KX_IDC_ADDTO_TARGETS, CBN_CLOSEUP, &CDlgAddToPlaylist::OnTargetsEdit),
        KxOnCommand(KX_IDC_ADDTO_OK, BN_CLICKED, &CDlgAddToPlaylist::OnOK),
        KxOnCommand(KX_IDC_ADDTO_CANCEL, BN_CLICKED, &CDlgAddToPlaylist::OnCancel),
    };
    return KxMakeMessageMap(kEntries);
}

void CDlgAddToPlaylist::OnTargetsSelChange() { m_model.OnSelChange(*this); }

void CDlgAddToPlaylist::OnTargetsEdit() { m_model.OnEditChange(*this); }

void CDlgAddToPlaylist::OnOK() {
    if (m_model.OnOK(*this)) CDialog::OnOK();
}

void CDlgAddToPlaylist::OnDestroy() {
    m_model.FreeExisting();
    m_hookWnd.Detach();
    CDialog::OnDestroy();
}

void CDlgAddToPlaylist::ResetCombo() { m_combo.ResetContent(); }

void CDlgAddToPlaylist::AddComboString(LPCWSTR text) { m_combo.AddString(text); }

void CDlgAddToPlaylist::SetComboSelection(int index) { m_combo.SetCurSel(index); }

int CDlgAddToPlaylist::GetComboSelection() { return m_combo.GetCurSel(); }

std::wstring CDlgAddToPlaylist::GetComboText() { return GetDlgItemText(KX_IDC_ADDTO_TARGETS); }

void CDlgAddToPlaylist::SetComboText(LPCWSTR text) { m_combo.SetWindowText(text); }

void CDlgAddToPlaylist::SetOkText(UINT stringId) { SetDlgItemText(KX_IDC_ADDTO_OK, KxLoadResourceString(stringId).c_str()); }

void CDlgAddToPlaylist::EnableOk(bool enable) {
    if (CWnd* ok = GetDlgItem(KX_IDC_ADDTO_OK)) ok->EnableWindow(enable ? TRUE : FALSE);
}

HRESULT RunAddToDialog(int mode, HWND hwndParent, IKxContentFolder* pFolder, LPCWSTR pszSuggestedName,
                       KxPidl* ppItem, LPWSTR* ppszNewName) {
    CKxManageState state;
    CDlgAddToPlaylist dlg(mode, pFolder, pszSuggestedName, CWnd::FromHandle(hwndParent));
    const INT_PTR result = dlg.DoModal();
    if (dlg.m_model.m_hrResult != S_OK) return dlg.m_model.m_hrResult;
    if (result == IDCANCEL) return HRESULT_FROM_WIN32(ERROR_CANCELLED);
    // The outputs are the host's only once the hand-back succeeded.
    CKxTaskMem<KxPidl> item;
    CKxTaskMemString newName;
    const HRESULT hr = dlg.HandBack(item.Put(), newName.Put());
    *ppItem = hr == S_OK ? item.Detach() : nullptr;
    *ppszNewName = hr == S_OK ? newName.Detach() : nullptr;
    // A dialog that could not be shown leaves both outputs null and answers 0: the host sees
    // success with nothing in it, as it does for any dialog whose result field kept its start.
    return hr;
}
