#include "imaging/win32/dlg_image_property.h"

#include <commctrl.h>

#include "frame/win32/skin_statics.h"
#include "ui/module_state.h"

namespace {

const UINT kStringHeading = 35;
const UINT kStringColumnLabel = 108, kStringColumnValue = 109;
const DWORD kListStyles = LVS_EX_LABELTIP | LVS_EX_FULLROWSELECT;  // 0x4020
const char kCorruptedPicture[] = "Corrupted Photo Properties.png";

bool AnyModifierDown() {
    static const int keys[] = {VK_LSHIFT, VK_RSHIFT, VK_LCONTROL, VK_RCONTROL, VK_LMENU, VK_RMENU, VK_LWIN, VK_RWIN};
    for (int key : keys)
        if (GetKeyState(key) & 0x8000) return true;
    return false;
}

}  // namespace

KxWalkKey KxWalkKeyOfMessage(const MSG& msg, HWND dialog, int previousId, int nextId) {
    if (msg.message != WM_KEYUP || (msg.wParam != VK_LEFT && msg.wParam != VK_RIGHT)) return KxWalkKey::None;
    const HWND focus = GetFocus(), previous = GetDlgItem(dialog, previousId), next = GetDlgItem(dialog, nextId);
    KxWalkKeyState state = {};
    state.virtualKey = static_cast<UINT>(msg.wParam);
    state.focusOnPrevious = focus && focus == previous;
    state.focusOnNext = focus && focus == next;
    state.previousEnabled = previous && IsWindowEnabled(previous);
    state.nextEnabled = next && IsWindowEnabled(next);
    state.modifierDown = AnyModifierDown();
    return KxWalkKeyOf(state);
}

void KxInsertPropertyColumns(HWND list, IKxPropertyTextSource& texts, int firstWidthChange) {
    RECT client = {};
    GetClientRect(list, &client);
    const int half = (client.right - client.left) / 2;
    const UINT headings[] = {kStringColumnLabel, kStringColumnValue};
    for (int column = 0; column < 2; ++column) {
        std::wstring heading = texts.LoadText(headings[column]);
        LVCOLUMNW c = {};
        c.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM;
        c.fmt = LVCFMT_LEFT;
        c.cx = column == 0 ? half + firstWidthChange : half - firstWidthChange;
        c.pszText = &heading[0];
        c.iSubItem = column;
        SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&c));
    }
}

CDlgImageProperty::CDlgImageProperty(IKxContentSite* pSite, IKxContentFolder* pFolder, KxPcPidl item,
                                     CWnd* pParentWnd)
    : CKxSkinnedDialog(IDD, pParentWnd), m_model(pSite, pFolder, item, *this, m_texts), m_preview(*this, IDC_PREVIEW) {}

CDlgImageProperty::~CDlgImageProperty() = default;

BOOL CDlgImageProperty::OnInitDialog() {
    CDialog::OnInitDialog();
    if (!m_model.m_pSite || !m_model.m_pFolder || !m_model.m_item) {
        m_model.m_hrResult = E_INVALIDARG;
        PostMessage(WM_CLOSE);
        return TRUE;
    }
    SetDlgItemText(IDC_HEADING, m_texts.LoadText(kStringHeading).c_str());

    AttachSkin();  // the platform look if it fails

    const HWND list = ::GetDlgItem(m_hWnd, IDC_LIST);
    ::SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, kListStyles, kListStyles);
    m_model.m_walk.Connect(m_model.m_pSite);
    m_preview.TakeRoom();
    KxInsertPropertyColumns(list, m_texts, 0);
    m_model.ReadImageProperties(m_model.m_item);  // a failure shows as rows of "-"

    if (CWnd* next = GetDlgItem(IDC_NEXT)) next->SetFocus();
    return FALSE;
}

void CDlgImageProperty::OnShowWindow(BOOL bShow, UINT) {
    if (!bShow || !m_bFirstShow) return;
    m_model.ShowImageProperties();
    m_bFirstShow = FALSE;
}

BOOL CDlgImageProperty::OnCommand(WPARAM wParam, LPARAM lParam) {
    const int id = LOWORD(wParam);
    const UINT code = HIWORD(wParam);
    if (code == BN_CLICKED && (id == IDC_PREVIOUS || id == IDC_NEXT)) {
        m_model.MoveToItem(id == IDC_PREVIOUS);
        return TRUE;
    }
    if ((id == IDC_CLOSE && code == BN_CLICKED) || id == IDCANCEL) {
        OnCancel();
        return TRUE;
    }
    // The dialog has no OK: Return on a control that is not a button does nothing.
    if (id == IDOK) return TRUE;
    return CDialog::OnCommand(wParam, lParam);
}

BOOL CDlgImageProperty::OnNotify(WPARAM, LPARAM lParam, LRESULT* pResult) {
    const NMHDR* header = reinterpret_cast<const NMHDR*>(lParam);
    if (!header || header->idFrom != IDC_LIST || header->code != LVN_GETDISPINFOW) return FALSE;
    NMLVDISPINFOW* info = reinterpret_cast<NMLVDISPINFOW*>(lParam);
    if ((info->item.mask & LVIF_TEXT) && info->item.pszText && info->item.cchTextMax > 0) {
        if (LPCWSTR text = m_model.RowText(info->item.iItem, info->item.iSubItem))
            lstrcpynW(info->item.pszText, text, info->item.cchTextMax);
    }
    *pResult = 0;
    return TRUE;
}

BOOL CDlgImageProperty::PreTranslateMessage(MSG* pMsg) {
    const KxWalkKey key = KxWalkKeyOfMessage(*pMsg, m_hWnd, IDC_PREVIOUS, IDC_NEXT);
    if (key != KxWalkKey::None) {
        m_model.MoveToItem(key == KxWalkKey::Previous);
        return TRUE;
    }
    return CDialog::PreTranslateMessage(pMsg);
}

void CDlgImageProperty::OnDestroy() {
    m_preview.Free();
    m_model.Release();
    CDialog::OnDestroy();
}

void CDlgImageProperty::EnablePrevious(bool enable) {
    if (CWnd* button = GetDlgItem(IDC_PREVIOUS)) button->EnableWindow(enable ? TRUE : FALSE);
}

void CDlgImageProperty::EnableNext(bool enable) {
    if (CWnd* button = GetDlgItem(IDC_NEXT)) button->EnableWindow(enable ? TRUE : FALSE);
}

void CDlgImageProperty::FocusPrevious() {
    if (CWnd* button = GetDlgItem(IDC_PREVIOUS)) button->SetFocus();
}

void CDlgImageProperty::FocusNext() {
    if (CWnd* button = GetDlgItem(IDC_NEXT)) button->SetFocus();
}

void CDlgImageProperty::SetRowCount(int count) {
    const HWND list = ::GetDlgItem(m_hWnd, IDC_LIST);
    ::SendMessageW(list, LVM_SETITEMCOUNT, static_cast<WPARAM>(count), 0);
    ::InvalidateRect(list, nullptr, TRUE);  // the rows' texts are asked for again
}

bool CDlgImageProperty::LoadPreviewFromFile(LPCWSTR path, int rotateFlip, LONG* width, LONG* height) {
    return m_preview.LoadFromFile(path, rotateFlip, width, height, kCorruptedPicture);
}

bool CDlgImageProperty::LoadPreviewFromBitmap(HBITMAP bitmap, int rotateFlip, LONG* width, LONG* height) {
    return m_preview.LoadFromBitmap(bitmap, rotateFlip, width, height, kCorruptedPicture);
}

void CDlgImageProperty::DeleteBitmap(HBITMAP bitmap) { DeleteObject(bitmap); }
