#include "balloon/win32/bubble_tooltip.h"

#include "frame/win32/skin_statics.h"
#include "ui/gdi_handles.h"
#include "ui/module_state.h"

namespace {

HINSTANCE ModuleInstance() { return KxGetStaticModuleState()->hInstance; }

// Measures in the bubble's fonts on a screen device context.
class CKxScreenMeasure : public IKxBubbleMeasure {
public:
    CKxScreenMeasure(CKXBubbleToolTip& bubble, HDC dc) : m_bubble(bubble), m_dc(dc) {}
    int CalcRect(BubbleFont font, LPCWSTR text, RECT* rc, UINT format) override {
        if (!m_bubble.m_hBodyFont || !m_bubble.m_hTitleFont) m_bubble.CreateFonts();
        CKxSelectObject select(m_dc, font == BubbleFont::Title ? m_bubble.m_hTitleFont : m_bubble.m_hBodyFont);
        return DrawTextW(m_dc, text, -1, rc, format);
    }

private:
    CKXBubbleToolTip& m_bubble;
    HDC m_dc;
};

}  // namespace

CKXBubbleToolTip::CKXBubbleToolTip()
    : m_hBodyFont(nullptr),
      m_hTitleFont(nullptr),
      m_nHideTimer(0),
      m_pTarget(nullptr),
      m_nTitleLineHeight(0),
      m_nBodyLineHeight(0),
      m_bSticky(FALSE),
      m_ptOffset{0, 0},
      m_rcWindow{0, 0, 0, 0},
      m_bFitsRight(TRUE),
      m_bFitsDown(TRUE),
      m_nCloseTimer(0) {}

CKXBubbleToolTip::~CKXBubbleToolTip() {
    // No window outlives its object: a bubble still up goes with it. The hook member detaches
    // after this body, once the window is gone.
    ResetBubble();
    DeleteFonts();
}

void CKXBubbleToolTip::DeleteFonts() {
    if (m_hBodyFont) DeleteObject(m_hBodyFont);
    if (m_hTitleFont) DeleteObject(m_hTitleFont);
    m_hBodyFont = m_hTitleFont = nullptr;
}

void CKXBubbleToolTip::CreateFonts() {
    DeleteFonts();
    LOGFONTW lf = {};
    GetObjectW(GetStockObject(DEFAULT_GUI_FONT), sizeof(lf), &lf);
    m_hBodyFont = CreateFontW(lf.lfHeight, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0, 0,
                              ANTIALIASED_QUALITY, 0, lf.lfFaceName);
    m_hTitleFont = CreateFontW(lf.lfHeight * 11 / 10, 0, 0, 0, FW_BOLD, FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0, 0,
                               ANTIALIASED_QUALITY, 0, lf.lfFaceName);
}

bool CKXBubbleToolTip::HasWindow() { return m_hWnd && ::IsWindow(m_hWnd); }

bool CKXBubbleToolTip::IsVisible() { return HasWindow() && ::IsWindowVisible(m_hWnd); }

BOOL CKXBubbleToolTip::DestroyWindow() {
    if (m_nHideTimer && m_hWnd) KillTimer(m_hWnd, kBubbleHideTimer);
    m_nHideTimer = 0;
    return CWnd::DestroyWindow();
}

HWND CKXBubbleToolTip::CreateStatic(LPCWSTR text) {
    return CreateWindowExW(0, L"STATIC", text ? text : L"", kBubbleStaticStyle, 0, 0, 0, 0, m_hWnd,
                           reinterpret_cast<HMENU>(static_cast<UINT_PTR>(kBubbleStaticId)), ModuleInstance(), nullptr);
}

bool CKXBubbleToolTip::Layout(LPCWSTR title, LPCWSTR body, int x, int y, UINT flags, BubbleLayout* out) {
    if (!m_hWnd || !m_wndTitle.m_hWnd || !m_wndBody.m_hWnd) return false;
    CKxWindowDC screen(nullptr, false);
    if (!screen) return false;
    RECT desktop = {0, 0, 0, 0};
    ::GetWindowRect(GetDesktopWindow(), &desktop);
    CKxScreenMeasure measure(*this, screen.Get());
    *out = LayoutBubble(measure, &m_nTitleLineHeight, &m_nBodyLineHeight, title, body, x, y, flags, desktop);
    m_bFitsRight = out->fitsRight;
    m_bFitsDown = out->fitsDown;
    return true;
}

BOOL CKXBubbleToolTip::ShowBubble(LPCWSTR text, LPCWSTR title, HWND target, LPCWSTR skinPath, int x, int y,
                                  DWORD timeout, UINT flags, BOOL sticky) {
    if (IsVisible()) return TRUE;  // the bubble that is up keeps its text
    // A window that exists but is hidden is left over from a show that never finished; it goes, so
    // that the new one is not leaked.
    if (HasWindow()) DestroyWindow();

    WNDCLASSEXW wc = {};
    wc.cbSize = sizeof(wc);
    wc.style = kBubbleClassStyle;
    wc.lpfnWndProc = DefWindowProcW;
    wc.hInstance = ModuleInstance();
    wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    wc.lpszClassName = KX_BUBBLE_CLASS_NAME;
    RegisterClassExW(&wc);  // fails only when the class exists already

    HWND parent = target && ::IsWindow(target) ? target : nullptr;
    HWND hWnd = CreateWindowExW(kBubbleExStyle, KX_BUBBLE_CLASS_NAME, nullptr, kBubbleStyle, x, y, 0, 0, parent,
                                nullptr, ModuleInstance(), nullptr);
    if (!hWnd) return FALSE;
    if (!SubclassWindow(hWnd)) {
        ::DestroyWindow(hWnd);
        return FALSE;
    }

    m_wndTitle.Attach(CreateStatic(title));
    m_wndBody.Attach(CreateStatic(text));
    if (m_wndBody.m_hWnd) {
        if (!m_hBodyFont) CreateFonts();
        m_wndBody.SetFont(m_hBodyFont, FALSE);
    }

    BubbleLayout layout;
    if (!Layout(title, text, x, y, flags, &layout)) {
        DestroyWindow();
        return FALSE;
    }
    _tagHookPopupDescriptor descriptor = MakeHookPopupDescriptor(skinPath, layout.picture);
    if (!m_hookWnd.AttachPopup(m_hWnd, &descriptor)) {
        // the bubble does not appear unskinned
        DestroyWindow();
        return FALSE;
    }
    m_pTarget = target;

    MoveWindow(&layout.window, TRUE);
    m_wndTitle.MoveWindow(&layout.title, TRUE);
    m_wndBody.MoveWindow(&layout.body, TRUE);

    m_wndTitle.SetFont(m_hTitleFont, TRUE);
    NotifyStaticText(m_wndTitle.m_hWnd);
    if (!m_hBodyFont) CreateFonts();
    m_wndBody.SetFont(m_hBodyFont, TRUE);
    NotifyStaticText(m_wndBody.m_hWnd);

    m_wndTitle.SetWindowText(title);
    m_wndBody.SetWindowText(text);
    if (m_hookWnd.m_hHook) m_hookWnd.SetPopupPicture(m_hookWnd.m_hHook, layout.picture);

    ShowWindow(SW_SHOWNOACTIVATE);

    if (!sticky) {
        m_nHideTimer = SetTimer(m_hWnd, kBubbleHideTimer, timeout, nullptr);
        m_bSticky = FALSE;
    } else {
        m_bSticky = TRUE;
        RECT rc;
        if (m_ptOffset.x == 0 && m_ptOffset.y == 0 && target && ::IsWindow(target) && ::GetWindowRect(target, &rc))
            m_ptOffset = POINT{rc.left - x, rc.top - y};
        if (timeout > 0) m_nCloseTimer = SetTimer(m_hWnd, kBubbleCloseTimer, timeout, nullptr);
    }
    m_rcWindow = layout.window;
    return TRUE;
}

void CKXBubbleToolTip::HideBubble() {
    if (m_nCloseTimer && HasWindow()) KillTimer(m_hWnd, kBubbleCloseTimer);
    m_nCloseTimer = 0;
    if (IsVisible()) DestroyWindow();
}

void CKXBubbleToolTip::ForgetLastShow() {
    m_ptOffset = POINT{0, 0};
    m_rcWindow = RECT{0, 0, 0, 0};
    m_bFitsRight = m_bFitsDown = TRUE;
}

void CKXBubbleToolTip::ResetBubble() {
    if (HasWindow()) {
        DestroyWindow();
        m_tracking.Reset();
    }
    ForgetLastShow();
}

void CKXBubbleToolTip::CloseSticky() {
    HideBubble();
    ForgetLastShow();
}

LRESULT CKXBubbleToolTip::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
        case WM_MBUTTONDOWN:
            if (m_bSticky) CloseSticky();
            else DestroyWindow();
            break;
        case WM_TIMER:
            if (wParam == kBubbleHideTimer && !m_bSticky) {
                KillTimer(m_hWnd, kBubbleHideTimer);
                m_nHideTimer = 0;
                DestroyWindow();
            } else if (wParam == kBubbleCloseTimer && m_bSticky) {
                CloseSticky();
            }
            break;
        case WM_NCDESTROY:
            // the statics are gone with their parent: their objects let the handles go
            m_wndTitle.Detach();
            m_wndBody.Detach();
            break;
        default:
            break;
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

HRESULT CKXBubbleToolTip::RelayMessage(HWND targetWindow, const MSG& message, UINT flags, LPCWSTR title,
                                       LPCWSTR text, LPCWSTR skinPath, DWORD timeout) {
    return m_tracking.RelayMessage(*this, targetWindow, message, flags, title, text, skinPath, timeout);
}

POINT CKXBubbleToolTip::CursorPos() {
    POINT pt = {0, 0};
    GetCursorPos(&pt);
    return pt;
}

HWND CKXBubbleToolTip::FocusWindow() { return ::GetFocus(); }

bool CKXBubbleToolTip::BubbleWindowExists() { return HasWindow(); }

bool CKXBubbleToolTip::ShowTrackingBubble(LPCWSTR text, LPCWSTR title, LPCWSTR skinPath, int x, int y,
                                          DWORD timeout, UINT flags) {
    // the bubble itself is the target: it has no window yet, so there is no parent
    return ShowBubble(text, title, m_hWnd, skinPath, x, y, timeout, flags, FALSE) != FALSE;
}

BOOL CKXBubbleToolTip::CheckPlacement(POINT* flipPoint, POINT* movePoint, HWND targetWindow) {
    RECT target, desktop;
    const bool haveTarget = targetWindow && ::GetWindowRect(targetWindow, &target);
    const bool haveDesktop = ::GetWindowRect(GetDesktopWindow(), &desktop) != FALSE;
    const BubblePlacement placement = {m_bSticky, m_ptOffset, m_rcWindow, m_bFitsRight, m_bFitsDown};
    return CheckBubblePlacement(placement, haveTarget ? &target : nullptr, haveDesktop ? &desktop : nullptr,
                                flipPoint, movePoint);
}

void CKXBubbleToolTip::MoveWindowTo(POINT topLeft) {
    SetWindowPos(m_hWnd, nullptr, topLeft.x, topLeft.y, 0, 0, kBubbleMoveFlags);
}
