// The video properties dialog: its controls, its messages and the first read on show.
#include "imaging/win32/dlg_video_property.h"

#include <commctrl.h>

namespace {
const char kFallbackPicture[] = "Video Properties.png";
// The label column is a little narrower than half the list, the value column as much wider.
const int kLabelColumnChange = -10;
}  // namespace

CDlgVideoProperty::CDlgVideoProperty(IKxContentSite* pSite, IKxContentFolder* pFolder, KxPcPidl item,
                                     CWnd* pParentWnd)
    : CDlgPropertyBase(IDD,
                       {KX_IDC_VIDEOPROP_HEADING, KX_IDC_VIDEOPROP_LIST, KX_IDC_VIDEOPROP_PREVIEW,
                        KX_IDC_VIDEOPROP_PREVIOUS, KX_IDC_VIDEOPROP_NEXT, KX_IDC_VIDEOPROP_CLOSE},
                       /*keyFocusesDirection=*/true, pParentWnd),
      m_model(pSite, pFolder, item, *this, *this, m_texts) {}

KxMessageMap CDlgVideoProperty::GetMessageMap() const {
    static const KxMessageEntry kEntries[] = {
        KxOnCommand(KX_IDC_VIDEOPROP_PREVIOUS, BN_CLICKED, &CDlgVideoProperty::OnPreviousButton),
        KxOnCommand(KX_IDC_VIDEOPROP_NEXT, BN_CLICKED, &CDlgVideoProperty::OnNextButton),
        KxOnCommand(KX_IDC_VIDEOPROP_CLOSE, BN_CLICKED, &CDlgVideoProperty::OnCloseButton),
        KxOnCommand(IDOK, BN_CLICKED, &CDlgVideoProperty::OnReturn),
        KxOnNotify(KX_IDC_VIDEOPROP_LIST, LVN_GETDISPINFOW, &CDlgVideoProperty::OnGetDispInfo),
    };
    return KxMakeMessageMap(kEntries);  // IDCANCEL (Escape, the close box): the base
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

    PrepareList(kLabelColumnChange);
    for (int row = 0; row < KX_VIDEO_ROW_COUNT; ++row)
        m_list.InsertItem(row, kKxVideoRowLabels[row] ? m_texts.LoadText(kKxVideoRowLabels[row]).c_str() : L"");
    m_model.ReadVideoProperties(m_model.m_item);
}

void CDlgVideoProperty::ShowVideoFallback() {
    m_preview.ShowFallback(kFallbackPicture, m_nPreviewWidth, m_nPreviewHeight);
}
