#include "ui/dialog.h"

#include "base/boundary.h"
#include "ui/activation_context.h"
#include "ui/module_state.h"

namespace {

// The dialog whose window is being created on this thread: its procedure binds the first message
// of the new window (WM_SETFONT comes before WM_INITDIALOG) to it.
thread_local CDialog* t_creating = nullptr;
// Depth of modal loops on this thread; the temporary window objects go when the outermost ends.
thread_local int t_modalDepth = 0;

// Messages whose answer is the dialog procedure's return value rather than DWLP_MSGRESULT.
bool AnswersDirectly(UINT message) {
    switch (message) {
    case WM_INITDIALOG:
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
    case WM_COMPAREITEM:
    case WM_VKEYTOITEM:
    case WM_CHARTOITEM:
    case WM_QUERYDRAGICON:
        return true;
    default:
        return false;
    }
}

}  // namespace

INT_PTR CALLBACK KxDialogProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam) {
    CDialog* dlg = static_cast<CDialog*>(CWnd::FromHandlePermanent(hWnd));
    if (!dlg) {
        dlg = t_creating;
        if (!dlg) return FALSE;
        t_creating = nullptr;
        dlg->m_hWnd = hWnd;
        dlg->AddToPermanentMap();
    }
    LRESULT result = 0;
    // a handler that throws leaves the message to the dialog manager's default handling
    BOOL handled = KxGuard(
        L"CDialog::Dispatch", [&] { return dlg->Dispatch(message, wParam, lParam, &result); },
        [](KxExceptionKind) { return FALSE; });
    if (message == WM_NCDESTROY) {
        dlg->RemoveFromPermanentMap();
        dlg->m_hWnd = nullptr;
        return FALSE;
    }
    if (!handled) return FALSE;
    if (AnswersDirectly(message)) return static_cast<INT_PTR>(result);
    SetWindowLongPtrW(hWnd, DWLP_MSGRESULT, result);
    return TRUE;
}

void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& control) {
    if (control.m_hWnd || !pDX || !pDX->m_pDlgWnd) return;
    control.SubclassWindow(::GetDlgItem(pDX->m_pDlgWnd->m_hWnd, nIDC));
}

CDialog::CDialog(UINT nIDTemplate, CWnd* pParentWnd)
    : m_nIDHelp(nIDTemplate),
      m_pParentWnd(pParentWnd),
      m_lpszTemplateName(MAKEINTRESOURCEW(nIDTemplate)),
      m_nModalResult(-1),
      m_bModalEnded(false),
      m_layoutSize{0, 0} {}

CDialog::~CDialog() {
    if (m_hWnd) {
        // not normally reached: DoModal destroys its window before it returns
        HWND hWnd = m_hWnd;
        RemoveFromPermanentMap();
        m_hWnd = nullptr;
        ::DestroyWindow(hWnd);
    }
}

INT_PTR CDialog::DoModal() {
    HINSTANCE resources = KxGetResourceHandle();
    HRSRC found = FindResourceW(resources, m_lpszTemplateName, MAKEINTRESOURCEW(5) /* RT_DIALOG */);
    HGLOBAL loaded = found ? LoadResource(resources, found) : nullptr;
    auto* dialogTemplate = loaded ? static_cast<LPCDLGTEMPLATEW>(LockResource(loaded)) : nullptr;
    if (!dialogTemplate) return -1;
    LoadLayout(resources);

    // the owner is the top-level window of the parent; it is disabled while the dialog runs
    HWND owner = m_pParentWnd ? m_pParentWnd->m_hWnd : nullptr;
    if (owner) owner = GetAncestor(owner, GA_ROOT);
    CKxCommonControlsScope commonControls;

    m_nModalResult = -1;
    m_bModalEnded = false;
    ++t_modalDepth;
    t_creating = this;
    HWND hWnd = CreateDialogIndirectParamW(resources, dialogTemplate, owner, &KxDialogProc, 0);
    t_creating = nullptr;
    if (hWnd) {
        bool ownerDisabled = owner && ::IsWindowEnabled(owner);
        if (ownerDisabled) ::EnableWindow(owner, FALSE);
        if (!m_bModalEnded && m_hWnd) ::ShowWindow(m_hWnd, SW_SHOWNORMAL);
        RunModalLoop();
        if (ownerDisabled) ::EnableWindow(owner, TRUE);
        if (m_hWnd) {
            if (owner && ::GetActiveWindow() == m_hWnd) ::SetActiveWindow(owner);
            ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0,
                           SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
            ::DestroyWindow(m_hWnd);
        }
    } else if (m_hWnd) {
        // creation failed after the window got its first messages
        RemoveFromPermanentMap();
        m_hWnd = nullptr;
    }
    if (--t_modalDepth == 0) DeleteTempMap();
    return hWnd ? m_nModalResult : -1;
}

void CDialog::RunModalLoop() {
    MSG msg;
    while (!m_bModalEnded && m_hWnd) {
        BOOL got = GetMessageW(&msg, nullptr, 0, 0);
        if (got == 0) {
            // WM_QUIT ends the dialog and goes on to the loop that waits for it
            PostQuitMessage(static_cast<int>(msg.wParam));
            break;
        }
        if (got == -1) break;
        if (!WalkPreTranslateTree(&msg)) {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
    }
}

// Offers the message to the objects of its window and of each parent up to this dialog.
BOOL CDialog::WalkPreTranslateTree(MSG* pMsg) {
    for (HWND h = pMsg->hwnd; h; h = ::GetParent(h)) {
        CWnd* wnd = FromHandlePermanent(h);
        if (wnd && wnd->PreTranslateMessage(pMsg)) return TRUE;
        if (h == m_hWnd) break;
    }
    return FALSE;
}

void CDialog::EndDialog(int nResult) {
    m_nModalResult = nResult;
    m_bModalEnded = true;
    if (m_hWnd) ::PostMessageW(m_hWnd, WM_NULL, 0, 0);  // wakes the modal loop
}

BOOL CDialog::UpdateData(BOOL bSaveAndValidate) {
    CDataExchange dx{this, bSaveAndValidate};
    DoDataExchange(&dx);
    return TRUE;
}

BOOL CDialog::PreTranslateMessage(MSG* pMsg) {
    // keyboard and mouse input of the dialog and its controls goes through the dialog manager:
    // Tab, the arrows, Return, Escape and mnemonics
    bool input = (pMsg->message >= WM_KEYFIRST && pMsg->message <= WM_KEYLAST) ||
                 (pMsg->message >= WM_MOUSEFIRST && pMsg->message <= WM_MOUSELAST);
    if (!input || !m_hWnd) return FALSE;
    if (pMsg->hwnd != m_hWnd && !::IsChild(m_hWnd, pMsg->hwnd)) return FALSE;
    return ::IsDialogMessageW(m_hWnd, pMsg);
}

BOOL CDialog::OnInitDialog() {
    UpdateData(FALSE);
    return TRUE;
}

void CDialog::OnOK() {
    UpdateData(TRUE);
    EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

void CDialog::DoDataExchange(CDataExchange*) {}

BOOL CDialog::OnCommand(WPARAM wParam, LPARAM) {
    UINT code = HIWORD(wParam);
    if (code != BN_CLICKED) return FALSE;
    switch (LOWORD(wParam)) {
    case IDOK:
        OnOK();
        return TRUE;
    case IDCANCEL:
        OnCancel();
        return TRUE;
    default:
        return FALSE;
    }
}

BOOL CDialog::OnNotify(WPARAM, LPARAM, LRESULT*) { return FALSE; }

KxMessageMap CDialog::GetMessageMap() const { return KxMessageMap{nullptr, 0}; }

const KxMessageEntry* CDialog::FindEntry(KxMessageEntry::Kind kind, int id, UINT code) const {
    const KxMessageMap map = GetMessageMap();
    for (size_t i = 0; i < map.count; ++i) {
        const KxMessageEntry& e = map.entries[i];
        if (e.kind == kind && e.id == id && e.code == code) return &e;
    }
    return nullptr;
}

// The dialog manager's own handling (it remembers the focus of a dialog being hidden) runs after
// this: the procedure does not claim the message.
void CDialog::OnShowWindow(BOOL, UINT) {}

void CDialog::OnDestroy() {}

BOOL CDialog::OnDialogMessage(UINT, WPARAM, LPARAM, LRESULT*) { return FALSE; }

BOOL CDialog::Dispatch(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    switch (message) {
    case WM_INITDIALOG: {
        RECT client;
        ::GetClientRect(m_hWnd, &client);
        m_layoutSize = SIZE{client.right, client.bottom};
        *pResult = OnInitDialog();
        return TRUE;
    }
    case WM_SIZE:
        if (wParam != SIZE_MINIMIZED) ApplyLayout(LOWORD(lParam), HIWORD(lParam));
        return OnDialogMessage(message, wParam, lParam, pResult);
    case WM_COMMAND:
        if (const KxMessageEntry* e = FindEntry(KxMessageEntry::Command, LOWORD(wParam), HIWORD(wParam))) {
            (this->*e->onCommand)();
            return TRUE;
        }
        return OnCommand(wParam, lParam);
    case WM_NOTIFY: {
        auto* header = reinterpret_cast<NMHDR*>(lParam);
        const KxMessageEntry* e =
            header ? FindEntry(KxMessageEntry::Notify, static_cast<int>(header->idFrom), header->code) : nullptr;
        if (e) {
            (this->*e->onNotify)(header, pResult);
            return TRUE;
        }
        return OnNotify(wParam, lParam, pResult);
    }
    case WM_DRAWITEM: {
        // an owner-drawn control that has an object of its own draws itself
        auto* item = reinterpret_cast<DRAWITEMSTRUCT*>(lParam);
        CWnd* control = item ? FromHandlePermanent(item->hwndItem) : nullptr;
        if (control && control != this && control->OnChildNotify(message, wParam, lParam, pResult)) return TRUE;
        return OnDialogMessage(message, wParam, lParam, pResult);
    }
    case WM_SHOWWINDOW:
        OnShowWindow(static_cast<BOOL>(wParam), static_cast<UINT>(lParam));
        return FALSE;
    case WM_DESTROY:
        OnDestroy();
        return FALSE;
    default:
        return OnDialogMessage(message, wParam, lParam, pResult);
    }
}

void CDialog::LoadLayout(HINSTANCE resources) {
    m_layout.clear();
    m_layoutSize = SIZE{0, 0};
    HRSRC found = FindResourceW(resources, m_lpszTemplateName, L"KX_DIALOG_LAYOUT");
    HGLOBAL loaded = found ? LoadResource(resources, found) : nullptr;
    auto* words = loaded ? static_cast<const WORD*>(LockResource(loaded)) : nullptr;
    DWORD count = found ? SizeofResource(resources, found) / sizeof(WORD) : 0;
    if (!words || count < 1 || words[0] != 0) return;
    for (DWORD i = 1; i + 5 <= count; i += 5)
        m_layout.push_back(LayoutEntry{words[i], words[i + 1], words[i + 2], words[i + 3], words[i + 4]});
}

// Moves the controls by their share of the change since the last layout, so that controls the
// dialog's own code has moved in between keep their new places.
void CDialog::ApplyLayout(int cx, int cy) {
    if (m_layout.empty() || (m_layoutSize.cx == 0 && m_layoutSize.cy == 0)) return;
    int dx = cx - m_layoutSize.cx, dy = cy - m_layoutSize.cy;
    if (dx == 0 && dy == 0) return;
    for (const LayoutEntry& e : m_layout) {
        HWND control = ::GetDlgItem(m_hWnd, e.nID);
        if (!control) continue;
        RECT rc;
        ::GetWindowRect(control, &rc);
        MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<LPPOINT>(&rc), 2);
        int x = rc.left + dx * e.moveX / 100, y = rc.top + dy * e.moveY / 100;
        int w = rc.right - rc.left + dx * e.sizeX / 100, h = rc.bottom - rc.top + dy * e.sizeY / 100;
        ::MoveWindow(control, x, y, w, h, TRUE);
    }
    m_layoutSize = SIZE{cx, cy};
}
