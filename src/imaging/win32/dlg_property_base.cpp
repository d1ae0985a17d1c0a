// The shared window side of the properties dialogs.
#include "imaging/win32/dlg_property_base.h"

#include <commctrl.h>

namespace {

const UINT kStringHeading = 35;
const UINT kStringColumnLabel = 108, kStringColumnValue = 109;
const DWORD kListStyles = LVS_EX_LABELTIP | LVS_EX_FULLROWSELECT;  // 0x4020

bool AnyModifierDown() {
    static const int keys[] = {VK_LSHIFT, VK_RSHIFT, VK_LCONTROL, VK_RCONTROL, VK_LMENU, VK_RMENU, VK_LWIN, VK_RWIN};
    for (int key : keys)
        if (GetKeyState(key) & 0x8000) return true;
    return false;
}

}  // namespace

CDlgPropertyBase::CDlgPropertyBase(UINT idd, const ControlIds& ids, bool keyFocusesDirection, CWnd* pParentWnd)
    : CKxSkinnedDialog(idd, pParentWnd), m_preview(*this, ids.preview), m_ids(ids),
      m_bKeyFocusesDirection(keyFocusesDirection) {}

void CDlgPropertyBase::DoDataExchange(CDataExchange* pDX) {
    DDX_Control(pDX, m_ids.list, m_list);
    DDX_Control(pDX, m_ids.previous, m_btnPrevious);
    DDX_Control(pDX, m_ids.next, m_btnNext);
}

BOOL CDlgPropertyBase::OnInitDialog() {
    CDialog::OnInitDialog();
    CPropertyItemModel& model = Model();
    if (!model.m_pSite || !model.m_pFolder || !model.m_item) {
        model.m_hrResult = E_INVALIDARG;
        PostMessage(WM_CLOSE);
        return TRUE;
    }
    SetDlgItemText(m_ids.heading, m_texts.LoadText(kStringHeading).c_str());
    AttachSkin();  // the platform look if it fails
    model.m_walk.Connect(model.m_pSite);
    OnStartDialog();
    m_btnNext.SetFocus();
    return FALSE;
}

void CDlgPropertyBase::PrepareList(int firstWidthChange) {
    m_list.SetExtendedStyle(m_list.GetExtendedStyle() | kListStyles);
    RECT client = {};
    ::GetClientRect(m_list.m_hWnd, &client);
    const int half = (client.right - client.left) / 2;
    m_list.InsertColumn(0, m_texts.LoadText(kStringColumnLabel).c_str(), LVCFMT_LEFT, half + firstWidthChange);
    m_list.InsertColumn(1, m_texts.LoadText(kStringColumnValue).c_str(), LVCFMT_LEFT, half - firstWidthChange);
}

BOOL CDlgPropertyBase::PreTranslateMessage(MSG* pMsg) {
    if (pMsg->message != WM_KEYUP || (pMsg->wParam != VK_LEFT && pMsg->wParam != VK_RIGHT))
        return CDialog::PreTranslateMessage(pMsg);
    const HWND focus = ::GetFocus();
    KxWalkKeyState state = {};
    state.virtualKey = static_cast<UINT>(pMsg->wParam);
    state.focusOnPrevious = focus && focus == m_btnPrevious.m_hWnd;
    state.focusOnNext = focus && focus == m_btnNext.m_hWnd;
    state.previousEnabled = m_btnPrevious.m_hWnd && m_btnPrevious.IsWindowEnabled();
    state.nextEnabled = m_btnNext.m_hWnd && m_btnNext.IsWindowEnabled();
    state.modifierDown = AnyModifierDown();
    const KxWalkKey key = KxWalkKeyOf(state);
    if (key == KxWalkKey::None) return CDialog::PreTranslateMessage(pMsg);
    const bool previous = key == KxWalkKey::Previous;
    if (m_bKeyFocusesDirection && (previous ? state.focusOnNext : state.focusOnPrevious)) {
        if (previous) FocusPrevious();
        else FocusNext();
    }
    Model().MoveToItem(previous);
    return TRUE;
}

void CDlgPropertyBase::OnDestroy() {
    m_preview.Free();
    Model().Release();
    CDialog::OnDestroy();
}
