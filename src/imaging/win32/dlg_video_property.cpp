#include "imaging/win32/dlg_video_property.h"

#include <commctrl.h>

#include "frame/win32/skin_statics.h"
#include "imaging/win32/dlg_image_property.h"
#include "ui/module_state.h"

namespace {

const UINT kStringHeading = 35;
const DWORD kListStyles = LVS_EX_LABELTIP | LVS_EX_FULLROWSELECT;  // 0x4020
const char kFallbackPicture[] = "Video Properties.png";
// The label column is a little narrower than half the list, the value column as much wider.
const int kLabelColumnChange = -10;

}  // namespace

CDlgVideoProperty::CDlgVideoProperty(IKxContentSite* pSite, IKxContentFolder* pFolder, KxPcPidl item,
                                     CWnd* pParentWnd)
    : CKxSkinnedDialog(IDD, pParentWnd), m_model(pSite, pFolder, item, *this, m_texts), m_preview(*this, IDC_PREVIEW) {}

CDlgVideoProperty::~CDlgVideoProperty() = default;

BOOL CDlgVideoProperty::OnInitDialog() {
    CDialog::OnInitDialog();
    if (!m_model.m_pSite || !m_model.m_pFolder || !m_model.m_item) {
        m_model.m_hrResult = E_INVALIDARG;
        PostMessage(WM_CLOSE);
        return TRUE;
    }
    SetDlgItemText(IDC_HEADING, m_texts.LoadText(kStringHeading).c_str());
    AttachSkin();  // the platform look if it fails
    m_model.m_walk.Connect(m_model.m_pSite);
    if (CWnd* next = GetDlgItem(IDC_NEXT)) next->SetFocus();
    return FALSE;
}

void CDlgVideoProperty::OnShowWindow(BOOL bShow, UINT) {
    if (!bShow || !m_bFirstShow) return;
    m_preview.TakeRoom();
    const RECT& room = m_preview.Room();
    if (room.right - room.left > 0) {
        m_nPreviewWidth = room.right - room.left;
        m_nPreviewHeight = room.bottom - room.top;
    }
    m_bFirstShow = FALSE;

    const HWND list = ::GetDlgItem(m_hWnd, IDC_LIST);
    ::SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, kListStyles, kListStyles);
    KxInsertPropertyColumns(list, m_texts, kLabelColumnChange);
    for (int row = 0; row < KX_VIDEO_ROW_COUNT; ++row) {
        std::wstring label = kKxVideoRowLabels[row] ? m_texts.LoadText(kKxVideoRowLabels[row]) : std::wstring();
        LVITEMW item = {};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = &label[0];
        ::SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
    m_model.ReadVideoProperties(m_model.m_item);
}

BOOL CDlgVideoProperty::OnCommand(WPARAM wParam, LPARAM lParam) {
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
    if (id == IDOK) return TRUE;  // no OK here either
    return CDialog::OnCommand(wParam, lParam);
}

BOOL CDlgVideoProperty::OnNotify(WPARAM, LPARAM lParam, LRESULT* pResult) {
    // The list holds its own texts: a request for one is answered with nothing.
    const NMHDR* header = reinterpret_cast<const NMHDR*>(lParam);
    if (!header || header->idFrom != IDC_LIST || header->code != LVN_GETDISPINFOW) return FALSE;
    *pResult = 0;
    return TRUE;
}

BOOL CDlgVideoProperty::PreTranslateMessage(MSG* pMsg) {
    const KxWalkKey key = KxWalkKeyOfMessage(*pMsg, m_hWnd, IDC_PREVIOUS, IDC_NEXT);
    if (key != KxWalkKey::None) {
        // The button of the direction takes the focus first; the step may move it on.
        const int from = key == KxWalkKey::Previous ? IDC_NEXT : IDC_PREVIOUS;
        if (::GetFocus() == ::GetDlgItem(m_hWnd, from)) {
            if (key == KxWalkKey::Previous) FocusPrevious();
            else FocusNext();
        }
        m_model.MoveToItem(key == KxWalkKey::Previous);
        return TRUE;
    }
    return CDialog::PreTranslateMessage(pMsg);
}

void CDlgVideoProperty::OnDestroy() {
    m_preview.Free();
    CDialog::OnDestroy();
    m_model.m_walk.Release();
}

void CDlgVideoProperty::EnablePrevious(bool enable) {
    if (CWnd* button = GetDlgItem(IDC_PREVIOUS)) button->EnableWindow(enable ? TRUE : FALSE);
}

void CDlgVideoProperty::EnableNext(bool enable) {
    if (CWnd* button = GetDlgItem(IDC_NEXT)) button->EnableWindow(enable ? TRUE : FALSE);
}

void CDlgVideoProperty::FocusPrevious() {
    if (CWnd* button = GetDlgItem(IDC_PREVIOUS)) button->SetFocus();
}

void CDlgVideoProperty::FocusNext() {
    if (CWnd* button = GetDlgItem(IDC_NEXT)) button->SetFocus();
}

void CDlgVideoProperty::SetRowValue(int row, LPCWSTR text) {
    LVITEMW item = {};
    item.iSubItem = 1;
    item.pszText = const_cast<LPWSTR>(text);
    ::SendDlgItemMessageW(m_hWnd, IDC_LIST, LVM_SETITEMTEXTW, static_cast<WPARAM>(row),
                          reinterpret_cast<LPARAM>(&item));
}

void CDlgVideoProperty::ShowVideoPreview(HBITMAP bitmap) { m_preview.ShowBitmap(bitmap); }

void CDlgVideoProperty::ShowVideoFallback() {
    m_preview.ShowFallback(kFallbackPicture, m_nPreviewWidth, m_nPreviewHeight);
}
