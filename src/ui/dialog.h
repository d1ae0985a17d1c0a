// CDialog: a modal dialog from a template of the current resource module (ComRcRes.dll inside a
// CKxManageState), run by our own modal loop so that PreTranslateMessage sees every message for
// the dialog and its controls before it is dispatched.
#pragma once

#include "ui/wnd.h"

#include <vector>

class CDialog;

// What DoDataExchange works on.
struct CDataExchange {
    CDialog* m_pDlgWnd;
    BOOL m_bSaveAndValidate;
};

// Binds `control` to the dialog's control `nIDC` once (subclassing it).
void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& control);

// One row of a dialog's table of commands and notifications: the control, the notification code
// and the handler. A dialog lists its rows in GetMessageMap, as the list of messages it answers;
// CDialog looks a WM_COMMAND or WM_NOTIFY up there first, and offers what no row takes to
// OnCommand or OnNotify. Rows are made with KxOnCommand and KxOnNotify.
struct KxMessageEntry {
    enum Kind { Command, Notify };
    Kind kind;
    int id;     // the control's identifier
    UINT code;  // BN_CLICKED, CBN_SELCHANGE, NM_CLICK, ...
    void (CDialog::*onCommand)();
    void (CDialog::*onNotify)(NMHDR* pHeader, LRESULT* pResult);
};

struct KxMessageMap {
    const KxMessageEntry* entries;
    size_t count;
};

template <size_t N>
KxMessageMap KxMakeMessageMap(const KxMessageEntry (&entries)[N]) {
    return KxMessageMap{entries, N};
}

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
    // The dialog's rows of commands and notifications; the base has none.
    virtual KxMessageMap GetMessageMap() const;
    // WM_COMMAND that no row took: TRUE when handled. The base ends the dialog for IDOK and IDCANCEL.
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    // WM_NOTIFY that no row took: TRUE when handled, with the answer in *pResult.
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual void OnShowWindow(BOOL bShow, UINT nStatus);
    virtual void OnDestroy();
    // Any other message: TRUE when handled, with the answer in *pResult.
    virtual BOOL OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);

    CWnd* m_pParentWnd;

private:
    friend INT_PTR CALLBACK KxDialogProc(HWND, UINT, WPARAM, LPARAM);
    BOOL Dispatch(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    // The row for this control and code, null when there is none.
    const KxMessageEntry* FindEntry(KxMessageEntry::Kind kind, int id, UINT code) const;
    void RunModalLoop();
    BOOL WalkPreTranslateTree(MSG* pMsg);

    // Dynamic layout: a template may come with a resource of type KX_DIALOG_LAYOUT and the same
    // name, a version word 0 and then five words per control: its identifier and how far it moves
    // right and down and grows wider and taller, in percent of the change of the dialog's client
    // size. The framework applies it whenever the dialog changes size, so a template can keep its
    // buttons at the bottom of a dialog that grows with its text.
    struct LayoutEntry {
        int nID;
        int moveX, moveY, sizeX, sizeY;
    };
    void LoadLayout(HINSTANCE resources);
    void ApplyLayout(int cx, int cy);

    LPCWSTR m_lpszTemplateName;
    INT_PTR m_nModalResult;
    bool m_bModalEnded;
    std::vector<LayoutEntry> m_layout;
    SIZE m_layoutSize;  // client size the controls are placed for; 0 until WM_INITDIALOG
};

// A row for a WM_COMMAND from control `id` with notification `code`, handled by a member of the
// dialog class D.
template <class D>
KxMessageEntry KxOnCommand(int id, UINT code, void (D::*handler)()) {
    return KxMessageEntry{KxMessageEntry::Command, id, code, static_cast<void (CDialog::*)()>(handler), nullptr};
}

// A row for a WM_NOTIFY from control `id` with notification `code`; the handler sets *pResult.
template <class D>
KxMessageEntry KxOnNotify(int id, UINT code, void (D::*handler)(NMHDR* pHeader, LRESULT* pResult)) {
    return KxMessageEntry{KxMessageEntry::Notify, id, code, nullptr,
                          static_cast<void (CDialog::*)(NMHDR*, LRESULT*)>(handler)};
}
