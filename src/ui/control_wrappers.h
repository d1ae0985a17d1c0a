// Thin wrappers of the standard controls, as far as the dialogs use them; more arrive with the
// dialogs that need them.
#pragma once

#include "ui/wnd.h"

class CStatic : public CWnd {
public:
    HBITMAP SetBitmap(HBITMAP hBitmap) {
        return reinterpret_cast<HBITMAP>(
            SendMessage(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(hBitmap)));
    }
    HBITMAP GetBitmap() const { return reinterpret_cast<HBITMAP>(SendMessage(STM_GETIMAGE, IMAGE_BITMAP, 0)); }
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
