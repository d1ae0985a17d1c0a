#include "library/win32/dlg_add_to_playlist.h"

#include "frame/skin_files.h"
#include "frame/win32/skin_statics.h"
#include "ui/module_state.h"

namespace {

const UINT kStringHeadingPlaylist = 26;
const UINT kStringHeadingSlideshow = 130;
const UINT kStringLabelPlaylist = 131;
const UINT kStringLabelSlideshow = 132;

std::wstring ResourceString(UINT id) {
    const wchar_t* text = nullptr;
    int n = LoadStringW(KxGetResourceHandle(), id, reinterpret_cast<LPWSTR>(&text), 0);
    return n > 0 && text ? std::wstring(text, static_cast<size_t>(n)) : std::wstring();
}

}  // namespace

CDlgAddToPlaylist::CDlgAddToPlaylist(int mode, IKxContentFolder* pFolder, LPCWSTR pszInitialName, CWnd* pParentWnd)
    : CDialog(IDD, pParentWnd), m_model(mode, pFolder, pszInitialName) {}

CDlgAddToPlaylist::~CDlgAddToPlaylist() = default;

void CDlgAddToPlaylist::DoDataExchange(CDataExchange* pDX) {
    CDialog::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_TARGETS, m_combo);
    DDX_Control(pDX, IDC_PICTURE, m_picture);
}

BOOL CDlgAddToPlaylist::OnInitDialog() {
    CDialog::OnInitDialog();
    if (!m_model.m_pFolder) {
        m_model.m_hrResult = E_POINTER;
        PostMessage(WM_CLOSE);
        return TRUE;
    }

    WCHAR skinPath[MAX_PATH] = {};
    KxGetSkinPackagePath(skinPath);
    m_hookWnd.AttachDialog(m_hWnd, KxSkinDescriptionFile(IDD), skinPath);  // the platform look if it fails

    const bool playlist = m_model.m_nMode == CAddToPlaylistModel::ModePlaylist;
    if (!playlist) SetStaticPicture(m_picture.m_hWnd, "Add New Slideshow.png");

    const std::wstring heading = ResourceString(playlist ? kStringHeadingPlaylist : kStringHeadingSlideshow);
    SetDlgItemText(IDC_HEADING, heading.c_str());
    SetWindowText(heading.c_str());  // the title bar says the same as the heading
    SetDlgItemText(IDC_LABEL, ResourceString(playlist ? kStringLabelPlaylist : kStringLabelSlideshow).c_str());
    SetDlgItemText(IDC_OK, ResourceString(CAddToPlaylistModel::kStringOkExisting).c_str());

    const int which = playlist ? CAddToPlaylistModel::WhichPlaylists : CAddToPlaylistModel::WhichSlideshows;
    if (m_model.LoadExisting(which) != S_OK) PostMessage(WM_CLOSE);
    m_model.FillCombo(*this, m_model.m_pszInitialName.Get());
    return TRUE;
}

BOOL CDlgAddToPlaylist::OnCommand(WPARAM wParam, LPARAM lParam) {
    const int id = LOWORD(wParam);
    const UINT code = HIWORD(wParam);
    if (id == IDC_TARGETS) {
        if (code == CBN_SELCHANGE) m_model.OnSelChange(*this);
        else if (code == CBN_EDITUPDATE || code == CBN_CLOSEUP) m_model.OnEditChange(*this);
        return TRUE;
    }
    // Return reaches the default button 1039; should the dialog manager send IDOK instead, it
    // means the same.
    if ((id == IDC_OK && code == BN_CLICKED) || id == IDOK) {
        OnOK();
        return TRUE;
    }
    if ((id == IDC_CANCEL && code == BN_CLICKED) || id == IDCANCEL) {
        OnCancel();
        return TRUE;
    }
    return CDialog::OnCommand(wParam, lParam);
}

void CDlgAddToPlaylist::OnOK() {
    if (m_model.OnOK(*this)) CDialog::OnOK();
}

void CDlgAddToPlaylist::OnDestroy() {
    m_model.FreeExisting();
    m_hookWnd.Detach();
    CDialog::OnDestroy();
}

void CDlgAddToPlaylist::ResetCombo() { m_combo.SendMessage(CB_RESETCONTENT); }

void CDlgAddToPlaylist::AddComboString(LPCWSTR text) {
    m_combo.SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
}

void CDlgAddToPlaylist::SetComboSelection(int index) { m_combo.SendMessage(CB_SETCURSEL, static_cast<WPARAM>(index)); }

int CDlgAddToPlaylist::GetComboSelection() { return static_cast<int>(m_combo.SendMessage(CB_GETCURSEL)); }

std::wstring CDlgAddToPlaylist::GetComboText() { return GetDlgItemText(IDC_TARGETS); }

void CDlgAddToPlaylist::SetComboText(LPCWSTR text) { m_combo.SetWindowText(text); }

void CDlgAddToPlaylist::SetOkText(UINT stringId) { SetDlgItemText(IDC_OK, ResourceString(stringId).c_str()); }

void CDlgAddToPlaylist::EnableOk(bool enable) {
    if (CWnd* ok = GetDlgItem(IDC_OK)) ok->EnableWindow(enable ? TRUE : FALSE);
}

HRESULT RunAddToPlaylistDialog(int mode, HWND hwndParent, IKxContentFolder* pFolder, LPCWSTR pszSuggestedName,
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
