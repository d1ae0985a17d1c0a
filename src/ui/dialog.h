// CDialog: a modal dialog from a template of the current resource module (ComRcRes.dll inside a
// CKxManageState), run by our own modal loop so that PreTranslateMessage sees every message for
// the dialog and its controls before it is dispatched.
#pragma once

#include "ui/wnd.h"

class CDialog;

// What DoDataExchange works on.
struct CDataExchange {
    CDialog* m_pDlgWnd;
    BOOL m_bSaveAndValidate;
};

// Binds `control` to the dialog's control `nIDC` once (subclassing it).
void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& control);

class CDialog : public CWnd {
public:
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    ~CDialog() override;

    // Runs the dialog and returns what EndDialog was given; -1 when the dialog could not be
    // created (no template in the resource module, or creation failed).
    virtual INT_PTR DoModal();
    void EndDialog(int nResult);

    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);
    BOOL PreTranslateMessage(MSG* pMsg) override;

    UINT m_nIDHelp;  // the template identifier

protected:
    virtual BOOL OnInitDialog();
    virtual void OnOK();
    virtual void OnCancel();
    virtual void DoDataExchange(CDataExchange* pDX);
    // WM_COMMAND: TRUE when handled. The base ends the dialog for IDOK and IDCANCEL.
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    // WM_NOTIFY: TRUE when handled, with the answer in *pResult.
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual void OnShowWindow(BOOL bShow, UINT nStatus);
    virtual void OnDestroy();
    // Any other message: TRUE when handled, with the answer in *pResult.
    virtual BOOL OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);

    CWnd* m_pParentWnd;

private:
    friend INT_PTR CALLBACK KxDialogProc(HWND, UINT, WPARAM, LPARAM);
    BOOL Dispatch(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    void RunModalLoop();
    BOOL WalkPreTranslateTree(MSG* pMsg);

    LPCWSTR m_lpszTemplateName;
    INT_PTR m_nModalResult;
    bool m_bModalEnded;
};
