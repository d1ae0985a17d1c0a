#include "ui/wnd.h"

#include "base/boundary.h"

#include <memory>
#include <unordered_map>

namespace {

struct ThreadMaps {
    std::unordered_map<HWND, CWnd*> permanent;
    std::unordered_map<HWND, std::unique_ptr<CWnd>> temporary;
};

ThreadMaps& Maps() {
    static thread_local ThreadMaps maps;
    return maps;
}

}  // namespace

LRESULT CALLBACK KxSubclassProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam) {
    CWnd* wnd = CWnd::FromHandlePermanent(hWnd);
    if (!wnd) return DefWindowProcW(hWnd, message, wParam, lParam);
    MSG previous = wnd->m_currentMsg;
    wnd->m_currentMsg = MSG{hWnd, message, wParam, lParam, 0, {0, 0}};
    // a handler that throws leaves the message to the default handling
    LRESULT result = KxGuard(
        L"CWnd::WindowProc", [&] { return wnd->WindowProc(message, wParam, lParam); },
        [&](KxExceptionKind) { return wnd->Default(); });
    wnd->m_currentMsg = previous;
    if (message == WM_NCDESTROY) {
        // the window is gone: give the object back its independence
        if (wnd->m_pfnSuper) SetWindowLongPtrW(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(wnd->m_pfnSuper));
        wnd->m_pfnSuper = nullptr;
        wnd->RemoveFromPermanentMap();
        wnd->m_hWnd = nullptr;
        wnd->PostNcDestroy();
    }
    return result;
}

CWnd::CWnd() : m_hWnd(nullptr), m_pfnSuper(nullptr), m_currentMsg{} {}

CWnd::~CWnd() {
    if (m_pfnSuper) UnsubclassWindow();
    else if (m_hWnd) Detach();
}

CWnd* CWnd::FromHandlePermanent(HWND hWnd) {
    if (!hWnd) return nullptr;
    auto& permanent = Maps().permanent;
    auto it = permanent.find(hWnd);
    return it == permanent.end() ? nullptr : it->second;
}

CWnd* CWnd::FromHandle(HWND hWnd) {
    if (!hWnd) return nullptr;
    if (CWnd* wnd = FromHandlePermanent(hWnd)) return wnd;
    auto& slot = Maps().temporary[hWnd];
    if (!slot) {
        slot.reset(new CWnd);
        slot->m_hWnd = hWnd;
    }
    return slot.get();
}

void CWnd::DeleteTempMap() {
    auto& temporary = Maps().temporary;
    for (auto& entry : temporary) entry.second->m_hWnd = nullptr;
    temporary.clear();
}

size_t CWnd::TemporaryObjectCount() { return Maps().temporary.size(); }

void CWnd::AddToPermanentMap() {
    Maps().permanent[m_hWnd] = this;
    Maps().temporary.erase(m_hWnd);
}

void CWnd::RemoveFromPermanentMap() {
    auto& permanent = Maps().permanent;
    auto it = permanent.find(m_hWnd);
    if (it != permanent.end() && it->second == this) permanent.erase(it);
}

BOOL CWnd::Attach(HWND hWnd) {
    if (!hWnd || m_hWnd || FromHandlePermanent(hWnd)) return FALSE;
    m_hWnd = hWnd;
    AddToPermanentMap();
    return TRUE;
}

HWND CWnd::Detach() {
    HWND hWnd = m_hWnd;
    if (hWnd) RemoveFromPermanentMap();
    m_hWnd = nullptr;
    return hWnd;
}

BOOL CWnd::SubclassWindow(HWND hWnd) {
    if (!IsWindow(hWnd) || !Attach(hWnd)) return FALSE;
    m_pfnSuper = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&KxSubclassProc)));
    if (!m_pfnSuper) {
        Detach();
        return FALSE;
    }
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent) {
    if (!pParent || !pParent->m_hWnd) return FALSE;
    return SubclassWindow(::GetDlgItem(pParent->m_hWnd, static_cast<int>(nID)));
}

HWND CWnd::UnsubclassWindow() {
    if (m_pfnSuper && m_hWnd) SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
    m_pfnSuper = nullptr;
    return Detach();
}

LRESULT CWnd::WindowProc(UINT, WPARAM, LPARAM) { return Default(); }

LRESULT CWnd::Default() {
    const MSG& m = m_currentMsg;
    if (m_pfnSuper) return CallWindowProcW(m_pfnSuper, m.hwnd, m.message, m.wParam, m.lParam);
    return DefWindowProcW(m.hwnd, m.message, m.wParam, m.lParam);
}

BOOL CWnd::PreTranslateMessage(MSG*) { return FALSE; }

BOOL CWnd::OnChildNotify(UINT, WPARAM, LPARAM, LRESULT*) { return FALSE; }

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::SendMessageW(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::PostMessageW(m_hWnd, message, wParam, lParam);
}

CWnd* CWnd::GetDlgItem(int nID) const { return FromHandle(::GetDlgItem(m_hWnd, nID)); }

CWnd* CWnd::GetParent() const { return FromHandle(::GetParent(m_hWnd)); }

CWnd* CWnd::GetFocus() { return FromHandle(::GetFocus()); }

CWnd* CWnd::SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }

int CWnd::GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }

void CWnd::GetWindowRect(LPRECT lpRect) const {
    if (!::GetWindowRect(m_hWnd, lpRect)) SetRectEmpty(lpRect);
}

void CWnd::GetClientRect(LPRECT lpRect) const {
    if (!::GetClientRect(m_hWnd, lpRect)) SetRectEmpty(lpRect);
}

void CWnd::ScreenToClient(LPRECT lpRect) const {
    MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CWnd::ClientToScreen(LPRECT lpRect) const {
    MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CWnd::MoveWindow(LPCRECT lpRect, BOOL bRepaint) {
    ::MoveWindow(m_hWnd, lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top,
                 bRepaint);
}

void CWnd::MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint) {
    ::MoveWindow(m_hWnd, x, y, nWidth, nHeight, bRepaint);
}

void CWnd::SetWindowText(LPCWSTR lpszString) { ::SetWindowTextW(m_hWnd, lpszString ? lpszString : L""); }

std::wstring CWnd::GetWindowText() const {
    int n = ::GetWindowTextLengthW(m_hWnd);
    if (n <= 0) return std::wstring();
    std::wstring text(static_cast<size_t>(n) + 1, L'\0');
    n = ::GetWindowTextW(m_hWnd, &text[0], n + 1);
    text.resize(n > 0 ? static_cast<size_t>(n) : 0);
    return text;
}

void CWnd::SetDlgItemText(int nID, LPCWSTR lpszString) {
    ::SetDlgItemTextW(m_hWnd, nID, lpszString ? lpszString : L"");
}

std::wstring CWnd::GetDlgItemText(int nID) const {
    HWND item = ::GetDlgItem(m_hWnd, nID);
    if (!item) return std::wstring();
    CWnd temp;
    temp.m_hWnd = item;
    std::wstring text = temp.GetWindowText();
    temp.m_hWnd = nullptr;
    return text;
}

BOOL CWnd::EnableWindow(BOOL bEnable) { return ::EnableWindow(m_hWnd, bEnable); }

BOOL CWnd::IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }

BOOL CWnd::ShowWindow(int nCmdShow) { return ::ShowWindow(m_hWnd, nCmdShow); }

BOOL CWnd::IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }

DWORD CWnd::GetStyle() const { return static_cast<DWORD>(::GetWindowLongW(m_hWnd, GWL_STYLE)); }

BOOL CWnd::ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags) {
    DWORD style = GetStyle();
    DWORD changed = (style & ~dwRemove) | dwAdd;
    if (style == changed) return FALSE;
    ::SetWindowLongW(m_hWnd, GWL_STYLE, static_cast<LONG>(changed));
    if (nFlags)
        ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0,
                       SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED | nFlags);
    return TRUE;
}

HFONT CWnd::GetFont() const { return reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)); }

void CWnd::SetFont(HFONT hFont, BOOL bRedraw) {
    SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(hFont), MAKELPARAM(bRedraw, 0));
}

BOOL CWnd::DestroyWindow() {
    if (!m_hWnd) return FALSE;
    return ::DestroyWindow(m_hWnd);
}
