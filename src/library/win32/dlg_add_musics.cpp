// The add-music dialog's window: the bar, the two virtual lists, the search box and the buttons.
#include "library/win32/dlg_add_musics.h"

#include <cwchar>

#include "ui/resource_string.h"

namespace {

const UINT kStringTitleColumn = 2;
const UINT kStringNumberColumn = 3;
const UINT kStringDurationColumn = 69;
const UINT kStringHint = 178;
const int kMinBarHeight = 24;
const DWORD kBarStyle = 0x50000004;  // WS_CHILD | WS_VISIBLE | CCS_NORESIZE

// The wait cursor for a long step, the former cursor back at its end.
class CKxWaitCursor {
public:
    CKxWaitCursor() : m_hOld(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}
    ~CKxWaitCursor() { SetCursor(m_hOld); }
    CKxWaitCursor(const CKxWaitCursor&) = delete;
    CKxWaitCursor& operator=(const CKxWaitCursor&) = delete;

private:
    HCURSOR m_hOld;
};

void CopyCell(const std::wstring& text, LVITEMW& item) {
    if (!(item.mask & LVIF_TEXT) || !item.pszText || item.cchTextMax <= 0) return;
    const size_t room = size_t(item.cchTextMax) - 1;
    const size_t n = text.size() < room ? text.size() : room;
    std::wmemcpy(item.pszText, text.c_str(), n);
    item.pszText[n] = L'\0';
}

}  // namespace

CDlgAddMusics::CDlgAddMusics(ULONG_PTR reserved, IKxContentSite* pSite, IKxContentFolder* pRootFolder,
                             IKxTrackList* pGivenTracks, LPCWSTR pszRootName, CWnd* pParentWnd)
    : CKxSkinnedDialog(IDD, pParentWnd),
      m_model(reserved, pSite, pRootFolder, pGivenTracks, pszRootName),
      m_bFirstShow(TRUE) {
    m_model.Attach(this, this);
    m_listTracks.m_pTarget = &m_listChosen;
}

CDlgAddMusics::~CDlgAddMusics() {
    CKxWaitCursor wait;
    m_model.ClearChosen();
}

void CDlgAddMusics::DoDataExchange(CDataExchange* pDX) {
    CDialog::DoDataExchange(pDX);
    DDX_Control(pDX, KX_IDC_ADDMUSICS_TRACKS, m_listTracks);
    DDX_Control(pDX, KX_IDC_ADDMUSICS_CHOSEN, m_listChosen);
}

BOOL CDlgAddMusics::OnInitDialog() {
    CDialog::OnInitDialog();
    if (FAILED(m_model.Open())) {
        PostMessage(WM_CLOSE);
        return FALSE;
    }
    AttachSkin();  // the platform look if it fails
    SetDlgItemText(KX_IDC_ADDMUSICS_HINT, KxLoadResourceString(kStringHint).c_str());
    const HRESULT hr = InitBreadCrumb();
    m_model.m_hrResult = hr;
    if (FAILED(hr)) {
        PostMessage(WM_CLOSE);
        return FALSE;
    }
    if (CWnd* hidden = GetDlgItem(KX_IDC_ADDMUSICS_HIDDEN)) {
        hidden->ShowWindow(SW_HIDE);
        hidden->EnableWindow(FALSE);
    }
    return TRUE;
}

HRESULT CDlgAddMusics::InitBreadCrumb() {
    if (!m_model.m_pRootItem || !m_model.m_pRootFolder) return E_INVALIDARG;
    const RECT empty = {};
    // A tab stop in the place its template keeps for it, after the hint and before the search box:
    // the keyboard reaches every crumb and its menu (the bar's own keys).
    if (!m_breadCrumb.Create(kBarStyle | WS_TABSTOP, empty, this, KX_IDC_ADDMUSICS_BAR)) return E_FAIL;
    if (CWnd* place = GetDlgItem(KX_IDC_ADDMUSICS_BARPLACE))
        ::SetWindowPos(m_breadCrumb.m_hWnd, place->m_hWnd, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    m_breadCrumb.ClearCrumbs();
    m_breadCrumb.m_pfnTruncate = &CAddMusicsModel::OnCrumbTruncate;
    m_breadCrumb.m_pTruncateOwner = &m_model;
    if (!m_breadCrumb.ResetCrumbs()) return m_model.m_hrResult = E_FAIL;
    m_breadCrumb.SetButtonData(0, nullptr);
    EnableButton(KX_IDC_ADDMUSICS_ADD, false);
    EnableButton(KX_IDC_ADDMUSICS_REMOVE, false);
    CKxWaitCursor wait;
    const HRESULT hr = m_model.InitBreadCrumb();
    return FAILED(hr) ? hr : S_OK;
}

KxMessageMap CDlgAddMusics::GetMessageMap() const {
    static const KxMessageEntry kEntries[] = {
        KxOnCommand(KX_IDC_ADDMUSICS_OK, BN_CLICKED, &CDlgAddMusics::OnOK),
        KxOnCommand(KX_IDC_ADDMUSICS_CANCEL, BN_CLICKED, &CDlgAddMusics::OnCancel),
        KxOnCommand(KX_IDC_ADDMUSICS_ADD, BN_CLICKED, &CDlgAddMusics::OnAddButton),
        KxOnCommand(KX_IDC_ADDMUSICS_REMOVE, BN_CLICKED, &CDlgAddMusics::OnRemoveButton),
        KxOnCommand(KX_IDC_ADDMUSICS_SEARCH, EN_UPDATE, &CDlgAddMusics::OnSearchUpdate),
        KxOnNotify(KX_IDC_ADDMUSICS_TRACKS, LVN_GETDISPINFOW, &CDlgAddMusics::OnTracksDispInfo),
        KxOnNotify(KX_IDC_ADDMUSICS_CHOSEN, LVN_GETDISPINFOW, &CDlgAddMusics::OnChosenDispInfo),
        KxOnNotify(KX_IDC_ADDMUSICS_TRACKS, NM_DBLCLK, &CDlgAddMusics::OnTracksDblClk),
        KxOnNotify(KX_IDC_ADDMUSICS_CHOSEN, NM_DBLCLK, &CDlgAddMusics::OnChosenDblClk),
        KxOnNotify(KX_IDC_ADDMUSICS_TRACKS, LVN_ITEMCHANGED, &CDlgAddMusics::OnTracksChanged),
        KxOnNotify(KX_IDC_ADDMUSICS_CHOSEN, LVN_ITEMCHANGED, &CDlgAddMusics::OnChosenChanged),
        KxOnNotify(KX_IDC_ADDMUSICS_TRACKS, LVN_BEGINDRAG, &CDlgAddMusics::OnTracksBeginDrag),
        KxOnNotify(KX_IDC_ADDMUSICS_CHOSEN, LVN_BEGINDRAG, &CDlgAddMusics::OnChosenBeginDrag),
        KxOnNotify(KX_IDC_ADDMUSICS_BAR, TBN_DROPDOWN, &CDlgAddMusics::OnCrumbDropDown),
    };
    return KxMakeMessageMap(kEntries);
}

BOOL CDlgAddMusics::OnCommand(WPARAM wParam, LPARAM lParam) {
    const UINT command = LOWORD(wParam);
    if (HIWORD(wParam) == 0 && KxIsCrumbCommand(command) && reinterpret_cast<HWND>(lParam) == m_breadCrumb.m_hWnd) {
        CKxWaitCursor wait;
        m_model.OnCrumbCommand(command);
        return TRUE;
    }
    if (HIWORD(wParam) == 0 && lParam == 0 && command >= CAddMusicsModel::kFirstEntryCommand &&
        command <= CAddMusicsModel::kLastEntryCommand) {
        OnMenuEntry(command);
        return TRUE;
    }
    return CDialog::OnCommand(wParam, lParam);
}

void CDlgAddMusics::OnCrumbDropDown(NMHDR* header, LRESULT* pResult) {
    *pResult = TBDDRET_DEFAULT;
    NMTOOLBARW* toolbar = reinterpret_cast<NMTOOLBARW*>(header);
    const int index = m_breadCrumb.CommandToIndex(UINT(toolbar->iItem));
    CKxWaitCursor wait;
    const std::vector<CAddMusicsMenuEntry> entries = m_model.OnDropDown(index);
    CMenu& menu = m_breadCrumb.m_menu;
    for (const CAddMusicsMenuEntry& entry : entries) {
        if (!menu.AppendMenu(MF_STRING, entry.command, entry.text.c_str())) continue;
        MENUITEMINFOW item = {};
        item.cbSize = sizeof(item);
        item.fMask = MIIM_DATA;
        item.dwItemData = reinterpret_cast<ULONG_PTR>(entry.data);
        SetMenuItemInfoW(menu, entry.command, FALSE, &item);
    }
    if (m_model.m_nDropCrumb < 0) return;
    MENUINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIM_MENUDATA;
    info.dwMenuData = ULONG_PTR(index);
    SetMenuInfo(menu, &info);
}

void CDlgAddMusics::OnMenuEntry(UINT command) {
    CMenu& menu = m_breadCrumb.m_menu;
    MENUITEMINFOW item = {};
    item.cbSize = sizeof(item);
    item.fMask = MIIM_DATA;
    MENUINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIM_MENUDATA;
    if (!menu.m_hMenu || !GetMenuItemInfoW(menu, command, FALSE, &item) || !GetMenuInfo(menu, &info)) return;
    CKxWaitCursor wait;
    m_model.OnMenuEntry(reinterpret_cast<CTBItemInfo*>(item.dwItemData), int(info.dwMenuData));
}

void CDlgAddMusics::OnShowWindow(BOOL bShow, UINT nStatus) {
    CDialog::OnShowWindow(bShow, nStatus);
    if (!bShow || !m_bFirstShow) return;
    m_bFirstShow = FALSE;
    PlaceBarAndColumns();
}

void CDlgAddMusics::PlaceBarAndColumns() {
    if (m_breadCrumb.m_hWnd) {
        if (CWnd* place = GetDlgItem(KX_IDC_ADDMUSICS_BARPLACE)) {
            RECT r;
            place->GetWindowRect(&r);
            ScreenToClient(&r);
            if (r.right - r.left > 0) {
                const int height = r.bottom - r.top < kMinBarHeight ? kMinBarHeight : r.bottom - r.top;
                m_breadCrumb.MoveWindow(r.left, r.top, r.right - r.left, height);
                place->MoveWindow(r.left, r.top, r.right - r.left, 2);
            }
        }
    }
    const int scroll = GetSystemMetrics(SM_CXVSCROLL);
    const std::wstring number = KxLoadResourceString(kStringNumberColumn);
    const std::wstring title = KxLoadResourceString(kStringTitleColumn);
    const std::wstring duration = KxLoadResourceString(kStringDurationColumn);
    CListCtrl* lists[] = {&m_listTracks, &m_listChosen};
    const int counts[] = {m_model.TrackCount(), m_model.ChosenCount()};
    for (int i = 0; i < 2; ++i) {
        RECT r;
        lists[i]->GetClientRect(&r);
        const int W = (r.right - r.left) - scroll;
        const int extra = counts[i] < lists[i]->GetCountPerPage() ? scroll : 0;
        lists[i]->InsertColumn(0, number.c_str(), LVCFMT_LEFT, W / 6);
        lists[i]->InsertColumn(1, title.c_str(), LVCFMT_LEFT, W - 2 * (W / 6));
        lists[i]->InsertColumn(2, duration.c_str(), LVCFMT_LEFT, W / 6 + extra);
        lists[i]->SetExtendedStyle(lists[i]->GetExtendedStyle() | LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
    }
    SetTrackCount(m_model.TrackCount());
    SetChosenCount(m_model.ChosenCount());
}

void CDlgAddMusics::SetTrackCount(int count) { m_listTracks.SendMessage(LVM_SETITEMCOUNT, WPARAM(count), 0); }

void CDlgAddMusics::SetChosenCount(int count) { m_listChosen.SetItemCountEx(count, LVSICF_NOINVALIDATEALL); }

std::vector<int> CDlgAddMusics::Selected(CListCtrl& list) {
    std::vector<int> rows;
    const UINT selected = list.GetSelectedCount();
    for (int row = list.GetNextItem(-1, LVNI_SELECTED); row >= 0 && rows.size() < selected;
         row = list.GetNextItem(row, LVNI_SELECTED))
        rows.push_back(row);
    return rows;
}

void CDlgAddMusics::SelectChosenRows(int first, int count) {
    m_listChosen.SetItemState(-1, 0, LVIS_SELECTED);
    for (int row = first; row < first + count; ++row) m_listChosen.SetItemState(row, LVIS_SELECTED, LVIS_SELECTED);
}

void CDlgAddMusics::EnableButton(int id, bool enable) {
    if (CWnd* button = GetDlgItem(id)) button->EnableWindow(enable ? TRUE : FALSE);
}

void CDlgAddMusics::OnSearchUpdate() {
    CKxWaitCursor wait;
    m_model.OnSearchUpdate(GetDlgItemText(KX_IDC_ADDMUSICS_SEARCH));
}

void CDlgAddMusics::OnAddButton() { m_model.AddSelectedTracks(); }

void CDlgAddMusics::OnRemoveButton() { m_model.RemoveChosenTracks(); }

void CDlgAddMusics::OnTracksDispInfo(NMHDR* header, LRESULT* pResult) {
    *pResult = 0;
    NMLVDISPINFOW* info = reinterpret_cast<NMLVDISPINFOW*>(header);
    CopyCell(CAddMusicsModel::CellText(m_model.TrackRow(info->item.iItem), info->item.iSubItem), info->item);
}

void CDlgAddMusics::OnChosenDispInfo(NMHDR* header, LRESULT* pResult) {
    *pResult = 0;
    NMLVDISPINFOW* info = reinterpret_cast<NMLVDISPINFOW*>(header);
    CopyCell(CAddMusicsModel::CellText(m_model.ChosenRow(info->item.iItem), info->item.iSubItem), info->item);
}

void CDlgAddMusics::OnTracksDblClk(NMHDR* header, LRESULT* pResult) {
    *pResult = 0;
    m_model.AddTrack(reinterpret_cast<NMITEMACTIVATE*>(header)->iItem);
}

void CDlgAddMusics::OnChosenDblClk(NMHDR* header, LRESULT* pResult) {
    *pResult = 0;
    m_model.RemoveChosen(reinterpret_cast<NMITEMACTIVATE*>(header)->iItem);
}

void CDlgAddMusics::OnTracksChanged(NMHDR*, LRESULT* pResult) {
    *pResult = 0;
    EnableButton(KX_IDC_ADDMUSICS_ADD, m_listTracks.GetSelectedCount() > 0);
}

void CDlgAddMusics::OnChosenChanged(NMHDR*, LRESULT* pResult) {
    *pResult = 0;
    EnableButton(KX_IDC_ADDMUSICS_REMOVE, m_listChosen.GetSelectedCount() > 0);
}

void CDlgAddMusics::OnTracksBeginDrag(NMHDR*, LRESULT* pResult) { m_listTracks.OnBeginDrag(pResult); }

void CDlgAddMusics::OnChosenBeginDrag(NMHDR*, LRESULT* pResult) { m_listChosen.OnBeginDrag(pResult); }

BOOL CDlgAddMusics::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    switch (message) {
    case WMU_ADD_SELECTED: m_model.AddSelectedTracks(); break;
    case WMU_REMOVE_SELECTED: m_model.RemoveChosenTracks(); break;
    case WMU_MOVE_SELECTED: m_model.MoveChosenTracks(int(lParam)); break;
    default: return CDialog::OnDialogMessage(message, wParam, lParam, pResult);
    }
    *pResult = 0;
    return TRUE;
}

void CDlgAddMusics::OnOK() {
    {
        CKxWaitCursor wait;
        m_model.PrepareHandOver();
    }
    CDialog::OnOK();
}

void CDlgAddMusics::OnCancel() {
    {
        CKxWaitCursor wait;
        m_model.ClearChosen();
    }
    CDialog::OnCancel();
}

void CDlgAddMusics::OnDestroy() {
    CKxWaitCursor wait;
    // The bar goes first: its callback empties the crumbs' records while they are alive.
    if (m_breadCrumb.m_hWnd) m_breadCrumb.ClearCrumbs();
    m_model.Destroy();
    m_hookWnd.Detach();
    CDialog::OnDestroy();
}
