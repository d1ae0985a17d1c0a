// The image properties dialog: its controls, its messages and its model's reads on show.
#include "imaging/win32/dlg_image_property.h"

#include <commctrl.h>

namespace {
const char kCorruptedPicture[] = "Corrupted Photo Properties.png";
}

CDlgImageProperty::CDlgImageProperty(IKxContentSite* pSite, IKxContentFolder* pFolder, KxPcPidl item,
                                     CWnd* pParentWnd)
    : CDlgPropertyBase(IDD,
                       {KX_IDC_IMAGEPROP_HEADING, KX_IDC_IMAGEPROP_LIST, KX_IDC_IMAGEPROP_PREVIEW,
                        KX_IDC_IMAGEPROP_PREVIOUS, KX_IDC_IMAGEPROP_NEXT, KX_IDC_IMAGEPROP_CLOSE},
                       /*keyFocusesDirection=*/false, pParentWnd),
      m_model(pSite, pFolder, item, *this, *this, m_texts) {}

KxMessageMap CDlgImageProperty::GetMessageMap() const {
    static const KxMessageEntry kEntries[] = {
        KxOnCommand(KX_IDC_IMAGEPROP_PREVIOUS, BN_CLICKED, &CDlgImageProperty::OnPreviousButton),
        KxOnCommand(KX_IDC_IMAGEPROP_NEXT, BN_CLICKED, &CDlgImageProperty::OnNextButton),
        KxOnCommand(KX_IDC_IMAGEPROP_CLOSE, BN_CLICKED, &CDlgImageProperty::OnCloseButton),
        KxOnCommand(IDOK, BN_CLICKED, &CDlgImageProperty::OnReturn),
        KxOnNotify(KX_IDC_IMAGEPROP_LIST, LVN_GETDISPINFOW, &CDlgImageProperty::OnGetDispInfo),
    };
    return KxMakeMessageMap(kEntries);  // IDCANCEL (Escape, the close box): the base
}

void CDlgImageProperty::OnStartDialog() {
    m_preview.TakeRoom();
    PrepareList(0);
    m_model.ReadImageProperties(m_model.m_item);  // a failure shows as rows of "-"
}

void CDlgImageProperty::OnShowWindow(BOOL bShow, UINT) {
    if (!bShow || !m_bFirstShow) return;
    m_model.ShowImageProperties();
    m_bFirstShow = FALSE;
}

void CDlgImageProperty::OnGetDispInfo(NMHDR* pHeader, LRESULT* pResult) {
    NMLVDISPINFOW* info = reinterpret_cast<NMLVDISPINFOW*>(pHeader);
    if ((info->item.mask & LVIF_TEXT) && info->item.pszText && info->item.cchTextMax > 0) {
        if (LPCWSTR text = m_model.RowText(info->item.iItem, info->item.iSubItem))
            lstrcpynW(info->item.pszText, text, info->item.cchTextMax);
    }
    *pResult = 0;
}

void CDlgImageProperty::SetRowCount(int count) {
    m_list.SetItemCountEx(count, 0);
    ::InvalidateRect(m_list.m_hWnd, nullptr, TRUE);  // the rows' texts are asked for again
}

bool CDlgImageProperty::LoadPreviewFromFile(LPCWSTR path, int rotateFlip, LONG* width, LONG* height) {
    return m_preview.LoadFromFile(path, rotateFlip, width, height, kCorruptedPicture);
}

bool CDlgImageProperty::LoadPreviewFromBitmap(HBITMAP bitmap, int rotateFlip, LONG* width, LONG* height) {
    return m_preview.LoadFromBitmap(bitmap, rotateFlip, width, height, kCorruptedPicture);
}
