// Thin typed wrappers of the common controls (comctl32) that the dialogs use: list views, sliders,
// tooltips and toolbars. Each method is one message to the control, except CToolTipCtrl::Create.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <string>

#include "ui/wnd.h"

class CListCtrl : public CWnd {
public:
    int InsertColumn(int nCol, LPCWSTR heading, int nFormat = LVCFMT_LEFT, int nWidth = -1);
    // Inserts a row with its first column's text; the row's index, -1 on failure.
    int InsertItem(int nItem, LPCWSTR text);
    BOOL SetItemText(int nItem, int nSubItem, LPCWSTR text);
    std::wstring GetItemText(int nItem, int nSubItem) const;
    int GetItemCount() const { return static_cast<int>(SendMessage(LVM_GETITEMCOUNT)); }
    // For a virtual list (LVS_OWNERDATA): how many rows it shows.
    BOOL SetItemCountEx(int nItems, DWORD dwFlags = LVSICF_NOINVALIDATEALL) {
        return static_cast<BOOL>(SendMessage(LVM_SETITEMCOUNT, static_cast<WPARAM>(nItems), dwFlags));
    }
    BOOL SetItemState(int nItem, UINT nState, UINT nMask);
    UINT GetSelectedCount() const { return static_cast<UINT>(SendMessage(LVM_GETSELECTEDCOUNT)); }
    // The next row after nItem (-1: from the start) with the LVNI_ flags, -1 when there is none.
    int GetNextItem(int nItem, UINT nFlags) const {
        return static_cast<int>(SendMessage(LVM_GETNEXTITEM, static_cast<WPARAM>(nItem), MAKELPARAM(nFlags, 0)));
    }
    DWORD GetExtendedStyle() const { return static_cast<DWORD>(SendMessage(LVM_GETEXTENDEDLISTVIEWSTYLE)); }
    DWORD SetExtendedStyle(DWORD dwExStyle) {
        return static_cast<DWORD>(SendMessage(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, dwExStyle));
    }
    BOOL EnsureVisible(int nItem, BOOL bPartialOK) {
        return static_cast<BOOL>(SendMessage(LVM_ENSUREVISIBLE, static_cast<WPARAM>(nItem), bPartialOK));
    }
    int GetCountPerPage() const { return static_cast<int>(SendMessage(LVM_GETCOUNTPERPAGE)); }
    // nCode: LVIR_BOUNDS, LVIR_ICON, LVIR_LABEL or LVIR_SELECTBOUNDS.
    BOOL GetItemRect(int nItem, LPRECT lpRect, UINT nCode) const;
    // The row under a point of the client area, -1 for none; pFlags receives LVHT_ flags.
    int HitTest(POINT pt, UINT* pFlags = nullptr) const;
    BOOL DeleteAllItems() { return static_cast<BOOL>(SendMessage(LVM_DELETEALLITEMS)); }
};

class CSliderCtrl : public CWnd {
public:
    void SetRange(int nMin, int nMax, BOOL bRedraw = FALSE) {
        SendMessage(TBM_SETRANGE, static_cast<WPARAM>(bRedraw), MAKELPARAM(nMin, nMax));
    }
    int GetPos() const { return static_cast<int>(SendMessage(TBM_GETPOS)); }
    void SetPos(int nPos) { SendMessage(TBM_SETPOS, TRUE, nPos); }
};

// A tooltip window that the object creates, owned by a dialog: the platform destroys it with its
// owner; an object that outlives neither destroys it itself.
class CToolTipCtrl : public CWnd {
public:
    ~CToolTipCtrl() override;
    BOOL Create(CWnd* pParentWnd, DWORD dwStyle = 0);
    // A tool for the whole of window `tool`, its tip `text` (copied by the control).
    BOOL AddTool(CWnd* pTool, LPCWSTR text);
    void UpdateTipText(LPCWSTR text, CWnd* pTool);
    void RelayEvent(MSG* pMsg) { SendMessage(TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(pMsg)); }
    int GetToolCount() const { return static_cast<int>(SendMessage(TTM_GETTOOLCOUNT)); }
    void Activate(BOOL bActivate) { SendMessage(TTM_ACTIVATE, static_cast<WPARAM>(bActivate)); }

private:
    TTTOOLINFOW ToolFor(CWnd* pTool, LPCWSTR text) const;
};

class CToolBarCtrl : public CWnd {
public:
    // TB_BUTTONSTRUCTSIZE is sent before the first buttons are added.
    BOOL AddButtons(int nNumButtons, const TBBUTTON* lpButtons);
    BOOL DeleteButton(int nIndex) { return static_cast<BOOL>(SendMessage(TB_DELETEBUTTON, static_cast<WPARAM>(nIndex))); }
    int GetButtonCount() const { return static_cast<int>(SendMessage(TB_BUTTONCOUNT)); }
    int CommandToIndex(UINT nID) const { return static_cast<int>(SendMessage(TB_COMMANDTOINDEX, nID)); }
    BOOL GetRect(UINT nID, LPRECT lpRect) const {
        return static_cast<BOOL>(SendMessage(TB_GETRECT, nID, reinterpret_cast<LPARAM>(lpRect)));
    }
    int GetHotItem() const { return static_cast<int>(SendMessage(TB_GETHOTITEM)); }
    int SetHotItem(int nHot) { return static_cast<int>(SendMessage(TB_SETHOTITEM, static_cast<WPARAM>(nHot))); }
    BOOL GetButton(int nIndex, TBBUTTON* lpButton) const {
        return static_cast<BOOL>(SendMessage(TB_GETBUTTON, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(lpButton)));
    }
    // The button's index, -1 when there is none; the caller sets cbSize and dwMask.
    int GetButtonInfo(UINT nID, TBBUTTONINFOW* ptbbi) const {
        return static_cast<int>(SendMessage(TB_GETBUTTONINFOW, nID, reinterpret_cast<LPARAM>(ptbbi)));
    }
    BOOL SetButtonInfo(UINT nID, const TBBUTTONINFOW* ptbbi) {
        return static_cast<BOOL>(SendMessage(TB_SETBUTTONINFOW, nID, reinterpret_cast<LPARAM>(ptbbi)));
    }
    DWORD GetExtendedStyle() const { return static_cast<DWORD>(SendMessage(TB_GETEXTENDEDSTYLE)); }
    DWORD SetExtendedStyle(DWORD dwExStyle) { return static_cast<DWORD>(SendMessage(TB_SETEXTENDEDSTYLE, 0, dwExStyle)); }
    void AutoSize() { SendMessage(TB_AUTOSIZE); }
};
