// CWnd: a window handle with the operations the dialogs use, an object map per thread, and
// subclassing so that a C++ object can take a control's messages.
//
// Permanent objects are the ones the code made (a dialog, a control bound by DDX_Control);
// FromHandle gives a temporary object for any other window, owned by the thread and deleted when
// the outermost modal loop of the thread ends.
#pragma once

#include <windows.h>

#include <string>

class CWnd {
public:
    CWnd();
    virtual ~CWnd();
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    HWND m_hWnd;
    HWND GetSafeHwnd() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; }

    // The permanent object of a window, else a temporary one for this thread; null for null.
    static CWnd* FromHandle(HWND hWnd);
    static CWnd* FromHandlePermanent(HWND hWnd);
    static void DeleteTempMap();
    // Temporary objects alive on this thread.
    static size_t TemporaryObjectCount();

    // Binds the object to a window without taking its messages.
    BOOL Attach(HWND hWnd);
    HWND Detach();
    // Binds the object to a window and routes its messages through WindowProc.
    BOOL SubclassWindow(HWND hWnd);
    BOOL SubclassDlgItem(UINT nID, CWnd* pParent);
    HWND UnsubclassWindow();

    // Called by the modal loop before a message for this window or a child is dispatched; true
    // when the message has been dealt with.
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    // A notification the parent dialog hands back to the control it is about (WM_DRAWITEM of an
    // owner-drawn control): TRUE when the control dealt with it, with the answer in *pResult.
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    CWnd* GetDlgItem(int nID) const;
    CWnd* GetParent() const;
    static CWnd* GetFocus();
    CWnd* SetFocus();
    int GetDlgCtrlID() const;

    void GetWindowRect(LPRECT lpRect) const;
    void GetClientRect(LPRECT lpRect) const;
    void ScreenToClient(LPRECT lpRect) const;
    void ClientToScreen(LPRECT lpRect) const;
    void MoveWindow(LPCRECT lpRect, BOOL bRepaint = TRUE);
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE);

    void SetWindowText(LPCWSTR lpszString);
    std::wstring GetWindowText() const;
    void SetDlgItemText(int nID, LPCWSTR lpszString);
    std::wstring GetDlgItemText(int nID) const;

    BOOL EnableWindow(BOOL bEnable = TRUE);
    BOOL IsWindowEnabled() const;
    BOOL ShowWindow(int nCmdShow);
    BOOL IsWindowVisible() const;
    DWORD GetStyle() const;
    // Changes style bits; with nFlags, SetWindowPos is called with them and SWP_FRAMECHANGED.
    BOOL ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    HFONT GetFont() const;
    void SetFont(HFONT hFont, BOOL bRedraw = TRUE);
    BOOL DestroyWindow();

protected:
    // The window procedure of a subclassed window; Default runs the one it replaced.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Default();
    // Called when the window has received its last message.
    virtual void PostNcDestroy() {}

    void AddToPermanentMap();
    void RemoveFromPermanentMap();

    WNDPROC m_pfnSuper;  // the window procedure that subclassing replaced

private:
    friend LRESULT CALLBACK KxSubclassProc(HWND, UINT, WPARAM, LPARAM);
    MSG m_currentMsg;  // the message WindowProc is handling, for Default
};
