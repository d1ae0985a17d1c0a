// CDlgMassageBox: the skinned message box. It shows a bold caption line, the message, a picture
// and one button (OK) or two (Yes, No), grows to fit its texts when it is first shown, and leaves
// its answer in m_hrResult: 0, 6 (IDYES), 7 (IDNO) or 0x800704c7 (cancelled).
#pragma once

#include <string>

#include "dialogs/message_box_logic.h"
#include "frame/win32/skinned_dialog.h"
#include "resources/dialogs/message_box_ids.h"
#include "ui/control_wrappers.h"
#include "ui/gdi_handles.h"

class CDlgMassageBox : public CKxSkinnedDialog {
public:
    enum { IDD = KX_IDD_MESSAGEBOX };

    // A null text or caption leaves the member empty.
    CDlgMassageBox(LPCWSTR pszText, LPCWSTR pszCaption, UINT flags, CWnd* pParentWnd = nullptr);
    ~CDlgMassageBox() override;

    BOOL PreTranslateMessage(MSG* pMsg) override;

    CStatic m_wndIcon;          // 1045, the picture
    std::wstring m_strCaption;  // shown in 1070, not the window's title
    std::wstring m_strText;     // shown in 1046
    UINT m_nFlags;              // the caller's MB_... flags
    CButton m_btnFirst;         // 1034
    CButton m_btnSecond;        // 1035
    CButton m_btnClose;         // 1033
    BOOL m_bReturnKey;          // a Return key press is being dispatched
    BOOL m_bFirstShow;          // the sizing has not run yet
    RECT m_rcCaption;           // working rectangle of 1070
    RECT m_rcText;              // working rectangle of 1046
    HRESULT m_hrResult;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;
    KxMessageMap GetMessageMap() const override;
    void OnShowWindow(BOOL bShow, UINT nStatus) override;

private:
    // Button 1034: OK or Yes; a Return key press counts by where the focus is.
    void OnFirstButton();
    void OnSecondButton();  // 1035: No
    void OnCloseButton();   // 1033: cancelled
    MessageBoxFocus FocusNow() const;
    // DrawTextW's wrapped height of `text` in the dialog's font (bold on request) in the width of
    // `rc`; a control without width, an empty text or no device context needs rc's own height.
    LONG NeededHeight(const RECT& rc, const std::wstring& text, bool bold) const;
    // moves a control to a rectangle given in screen coordinates, keeping it as the working rectangle
    void PlaceControl(HWND control, RECT* working, const RECT& screen);
    void GrowToFitTexts();

    CKxFont m_fontCaption;  // the bold font of the caption line, owned for the dialog's life
};
