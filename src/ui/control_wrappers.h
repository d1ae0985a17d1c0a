// Thin typed wrappers of the standard controls (user32), as far as the dialogs use them: each
// method is one message to the control. The common controls are in common_control_wrappers.h.
#pragma once

#include <string>

#include "ui/wnd.h"

class CStatic : public CWnd {
public:
    HBITMAP SetBitmap(HBITMAP hBitmap) {
        return reinterpret_cast<HBITMAP>(
            SendMessage(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(hBitmap)));
    }
    HBITMAP GetBitmap() const { return reinterpret_cast<HBITMAP>(SendMessage(STM_GETIMAGE, IMAGE_BITMAP, 0)); }
    // The previous icon; a shared icon (LoadIconW of the platform's) is not destroyed by anyone.
    HICON SetIcon(HICON hIcon) { return reinterpret_cast<HICON>(SendMessage(STM_SETICON, reinterpret_cast<WPARAM>(hIcon))); }
};

class CButton : public CWnd {
public:
    UINT GetState() const { return static_cast<UINT>(SendMessage(BM_GETSTATE)); }
    int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
    void SetCheck(int nCheck) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck)); }
    UINT GetButtonStyle() const { return GetStyle() & 0xFFFF; }
    // BM_SETSTYLE: the way to change BS_DEFPUSHBUTTON so that the button redraws its frame.
    void SetButtonStyle(UINT nStyle, BOOL bRedraw = TRUE) {
        SendMessage(BM_SETSTYLE, nStyle, static_cast<LPARAM>(bRedraw));
    }
};

class CEdit : public CWnd {
public:
    // Selects characters nStart to nEnd (-1: to the end; nStart -1: no selection).
    void SetSel(int nStart, int nEnd) { SendMessage(EM_SETSEL, static_cast<WPARAM>(nStart), nEnd); }
    void GetSel(int& nStart, int& nEnd) const {
        DWORD start = 0, end = 0;
        SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        nStart = static_cast<int>(start);
        nEnd = static_cast<int>(end);
    }
    // Brings the caret into view.
    void ScrollCaret() { SendMessage(EM_SCROLLCARET); }
    // How many characters the user can type (0: the platform's largest).
    void LimitText(int nChars) { SendMessage(EM_LIMITTEXT, static_cast<WPARAM>(nChars)); }
    UINT GetLimitText() const { return static_cast<UINT>(SendMessage(EM_GETLIMITTEXT)); }
};

class CComboBox : public CWnd {
public:
    void ResetContent() { SendMessage(CB_RESETCONTENT); }
    // The index of the new entry; CB_ERR or CB_ERRSPACE on failure.
    int AddString(LPCWSTR text) { return static_cast<int>(SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text))); }
    int InsertString(int nIndex, LPCWSTR text) {
        return static_cast<int>(SendMessage(CB_INSERTSTRING, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(text)));
    }
    int GetCount() const { return static_cast<int>(SendMessage(CB_GETCOUNT)); }
    int GetCurSel() const { return static_cast<int>(SendMessage(CB_GETCURSEL)); }
    int SetCurSel(int nSelect) { return static_cast<int>(SendMessage(CB_SETCURSEL, static_cast<WPARAM>(nSelect))); }
    // The text of entry nIndex; empty for an index out of range.
    std::wstring GetLBText(int nIndex) const {
        const LRESULT n = SendMessage(CB_GETLBTEXTLEN, static_cast<WPARAM>(nIndex));
        if (n <= 0) return std::wstring();
        std::wstring text(static_cast<size_t>(n) + 1, L'\0');
        const LRESULT got = SendMessage(CB_GETLBTEXT, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(&text[0]));
        text.resize(got > 0 ? static_cast<size_t>(got) : 0);
        return text;
    }
    // Limits what the user can type into the edit part.
    void LimitText(int nChars) { SendMessage(CB_LIMITTEXT, static_cast<WPARAM>(nChars)); }
    void SetEditSel(int nStart, int nEnd) { SendMessage(CB_SETEDITSEL, 0, MAKELPARAM(nStart, nEnd)); }
};
