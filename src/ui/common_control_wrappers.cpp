#include "ui/common_control_wrappers.h"

int CListCtrl::InsertColumn(int nCol, LPCWSTR heading, int nFormat, int nWidth) {
    LVCOLUMNW column = {};
    column.mask = LVCF_FMT | LVCF_TEXT | (nWidth >= 0 ? LVCF_WIDTH : 0);
    column.fmt = nFormat;
    column.cx = nWidth;
    column.pszText = const_cast<LPWSTR>(heading);
    return static_cast<int>(SendMessage(LVM_INSERTCOLUMNW, static_cast<WPARAM>(nCol), reinterpret_cast<LPARAM>(&column)));
}

int CListCtrl::InsertItem(int nItem, LPCWSTR text) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = nItem;
    item.pszText = const_cast<LPWSTR>(text);
    return static_cast<int>(SendMessage(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

BOOL CListCtrl::SetItemText(int nItem, int nSubItem, LPCWSTR text) {
    LVITEMW item = {};
    item.iSubItem = nSubItem;
    item.pszText = const_cast<LPWSTR>(text);
    return static_cast<BOOL>(SendMessage(LVM_SETITEMTEXTW, static_cast<WPARAM>(nItem), reinterpret_cast<LPARAM>(&item)));
}

std::wstring CListCtrl::GetItemText(int nItem, int nSubItem) const {
    // the control copies at most the buffer's length and answers how much it copied; grow until
    // the text fits with room to spare
    for (size_t size = 256;; size *= 2) {
        std::wstring text(size, L'\0');
        LVITEMW item = {};
        item.iSubItem = nSubItem;
        item.pszText = &text[0];
        item.cchTextMax = static_cast<int>(size);
        const LRESULT n =
            SendMessage(LVM_GETITEMTEXTW, static_cast<WPARAM>(nItem), reinterpret_cast<LPARAM>(&item));
        if (n < 0) return std::wstring();
        if (static_cast<size_t>(n) + 1 < size) {
            text.resize(static_cast<size_t>(n));
            return text;
        }
    }
}

BOOL CListCtrl::SetItemState(int nItem, UINT nState, UINT nMask) {
    LVITEMW item = {};
    item.state = nState;
    item.stateMask = nMask;
    return static_cast<BOOL>(SendMessage(LVM_SETITEMSTATE, static_cast<WPARAM>(nItem), reinterpret_cast<LPARAM>(&item)));
}

BOOL CListCtrl::GetItemRect(int nItem, LPRECT lpRect, UINT nCode) const {
    if (!lpRect) return FALSE;
    lpRect->left = static_cast<LONG>(nCode);
    return static_cast<BOOL>(SendMessage(LVM_GETITEMRECT, static_cast<WPARAM>(nItem), reinterpret_cast<LPARAM>(lpRect)));
}

int CListCtrl::HitTest(POINT pt, UINT* pFlags) const {
    LVHITTESTINFO info = {};
    info.pt = pt;
    const int item = static_cast<int>(SendMessage(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&info)));
    if (pFlags) *pFlags = info.flags;
    return item;
}

CToolTipCtrl::~CToolTipCtrl() {
    if (m_hWnd) DestroyWindow();
}

BOOL CToolTipCtrl::Create(CWnd* pParentWnd, DWORD dwStyle) {
    if (m_hWnd) return FALSE;
    HWND owner = pParentWnd ? pParentWnd->m_hWnd : nullptr;
    HWND tip = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | dwStyle,
                                 CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr,
                                 nullptr, nullptr);
    if (!tip) return FALSE;
    // subclassed so that the object lets go when the owner's destruction takes the window
    if (!SubclassWindow(tip)) {
        ::DestroyWindow(tip);
        return FALSE;
    }
    return TRUE;
}

TTTOOLINFOW CToolTipCtrl::ToolFor(CWnd* pTool, LPCWSTR text) const {
    TTTOOLINFOW info = {};
    info.cbSize = sizeof(info);
    info.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    HWND tool = pTool ? pTool->m_hWnd : nullptr;
    info.hwnd = tool ? ::GetParent(tool) : nullptr;
    info.uId = reinterpret_cast<UINT_PTR>(tool);
    info.lpszText = const_cast<LPWSTR>(text);
    return info;
}

BOOL CToolTipCtrl::AddTool(CWnd* pTool, LPCWSTR text) {
    if (!pTool || !pTool->m_hWnd) return FALSE;
    TTTOOLINFOW info = ToolFor(pTool, text);
    return static_cast<BOOL>(SendMessage(TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info)));
}

void CToolTipCtrl::UpdateTipText(LPCWSTR text, CWnd* pTool) {
    if (!pTool || !pTool->m_hWnd) return;
    TTTOOLINFOW info = ToolFor(pTool, text);
    SendMessage(TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&info));
}

BOOL CToolBarCtrl::AddButtons(int nNumButtons, const TBBUTTON* lpButtons) {
    SendMessage(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
    return static_cast<BOOL>(
        SendMessage(TB_ADDBUTTONSW, static_cast<WPARAM>(nNumButtons), reinterpret_cast<LPARAM>(lpButtons)));
}
