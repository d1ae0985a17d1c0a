// The breadcrumb bars on the platform's tool bar.
#include "controls/win32/breadcrumb_bar.h"

#include "controls/breadcrumb_path.h"
#include "frame/module_instance.h"

namespace {

const UINT kBarStyles = TBSTYLE_FLAT | TBSTYLE_TRANSPARENT;                          // 0x8800
const DWORD kBarExStyles = TBSTYLE_EX_DRAWDDARROWS | TBSTYLE_EX_MIXEDBUTTONS;        // 9
const UINT kDrawTextFlags = DT_CENTER | DT_VCENTER | DT_SINGLELINE;                  // 0x25
const int kCorner = 5;     // corners of the frame picture
const int kArrowPart = 11;  // the arrow part of a split button
const int kTextHeight = 22;

TBBUTTON Button(UINT command, BYTE style) {
    TBBUTTON b = {};
    b.iBitmap = I_IMAGENONE;
    b.idCommand = int(command);
    b.fsState = TBSTATE_ENABLED;
    b.fsStyle = style;
    b.iString = -1;
    return b;
}

HBITMAP LoadModuleBitmap(UINT id) {
    return static_cast<HBITMAP>(
        LoadImageW(g_hModuleInstance, MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
}

}  // namespace

// ---- CBreadCrumbBar ---------------------------------------------------------------------------------

CBreadCrumbBar::CBreadCrumbBar() : m_bMenuOpen(FALSE), m_row(*this) {}

CBreadCrumbBar::~CBreadCrumbBar() = default;

BOOL CBreadCrumbBar::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
    HWND hwnd = CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr, dwStyle | kBarStyles, rect.left, rect.top,
                                rect.right - rect.left, rect.bottom - rect.top, pParentWnd ? pParentWnd->m_hWnd : nullptr,
                                reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)), g_hModuleInstance, nullptr);
    if (!hwnd) return FALSE;
    if (!SubclassWindow(hwnd)) {
        ::DestroyWindow(hwnd);
        return FALSE;
    }
    // The bar is its own notification target: drop-downs, drawing and clicks come here first.
    SendMessage(TB_SETPARENT, reinterpret_cast<WPARAM>(m_hWnd));
    SetExtendedStyle(GetExtendedStyle() | kBarExStyles);
    return TRUE;
}

bool CBreadCrumbBar::AddStartButton() {
    const TBBUTTON b = Button(kKxCrumbFirstCommand, kKxStartButtonStyle);
    return CToolBarCtrl::AddButtons(1, &b) != FALSE;
}

bool CBreadCrumbBar::AddButtons(const std::vector<UINT>& commands) {
    std::vector<TBBUTTON> buttons;
    for (UINT c : commands) buttons.push_back(Button(c, 0));
    return CToolBarCtrl::AddButtons(int(buttons.size()), buttons.data()) != FALSE;
}

void CBreadCrumbBar::SetButtonText(UINT command, LPCWSTR text, BYTE style) {
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof(info);
    info.dwMask = TBIF_IMAGE | TBIF_TEXT | TBIF_STYLE;
    info.iImage = I_IMAGENONE;
    info.pszText = const_cast<LPWSTR>(text);
    info.fsStyle = style;
    SetButtonInfo(command, &info);
}

BOOL CBreadCrumbBar::ResetCrumbs() { return m_row.ResetCrumbs(); }

bool CBreadCrumbBar::SetCrumbPath(LPCWSTR path, int firstIndex, bool lastHasDropDown) {
    return m_row.SetCrumbPath(path, firstIndex, lastHasDropDown);
}

void* CBreadCrumbBar::GetButtonData(int index) const {
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof(info);
    info.dwMask = TBIF_BYINDEX | TBIF_LPARAM;
    if (GetButtonInfo(UINT(index), &info) < 0) return nullptr;
    return reinterpret_cast<void*>(info.lParam);
}

void CBreadCrumbBar::SetButtonData(int index, void* data) {
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof(info);
    info.dwMask = TBIF_BYINDEX | TBIF_LPARAM;
    info.lParam = reinterpret_cast<DWORD_PTR>(data);
    SetButtonInfo(UINT(index), &info);
}

void CBreadCrumbBar::ForwardToParent(UINT message, WPARAM wParam, LPARAM lParam) {
    if (HWND parent = ::GetParent(m_hWnd)) ::SendMessageW(parent, message, wParam, lParam);
}

LRESULT CBreadCrumbBar::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NOTIFY) {
        LRESULT result = 0;
        if (!OnNotify(wParam, lParam, &result)) ForwardToParent(message, wParam, lParam);
        return result;
    }
    if (message == WM_COMMAND && reinterpret_cast<HWND>(lParam) == m_hWnd) {
        OnCrumbCommand(wParam);
        return 0;
    }
    // The keyboard: with the focus the highlight starts on the last crumb (the folder shown), Left
    // and Right move it (the tool bar's own handling), Enter or Space opens the highlighted crumb's
    // folder as a click does, Down, F4 or Alt+Down opens its drop-down menu.
    switch (message) {
    case WM_GETDLGCODE: {
        LRESULT code = Default() | DLGC_WANTARROWS;
        const MSG* msg = reinterpret_cast<const MSG*>(lParam);
        if (msg && msg->message == WM_KEYDOWN && msg->wParam == VK_RETURN) code |= DLGC_WANTMESSAGE;
        return code;
    }
    case WM_SETFOCUS: {
        const LRESULT result = Default();  // the tool bar lights its first button
        if (GetButtonCount() > 0) SetHotItem(GetButtonCount() - 1);
        return result;
    }
    case WM_KILLFOCUS:
        if (!m_bMenuOpen) SetHotItem(-1);
        break;
    case WM_KEYDOWN:
        if (OnBarKey(static_cast<UINT>(wParam))) return 0;
        break;
    case WM_SYSKEYDOWN:
        if (wParam == VK_DOWN && OnBarKey(VK_F4)) return 0;
        break;
    default: break;
    }
    return Default();
}

bool CBreadCrumbBar::OnBarKey(UINT key) {
    if (key != VK_RETURN && key != VK_SPACE && key != VK_DOWN && key != VK_UP && key != VK_F4) return false;
    const int hot = GetHotItem();
    TBBUTTON button = {};
    if (hot < 0 || !GetButton(hot, &button)) return key == VK_UP || key == VK_DOWN;  // no wrap to other crumbs
    const bool dropDown = (button.fsStyle & (BTNS_DROPDOWN | BTNS_WHOLEDROPDOWN)) != 0;
    if ((key == VK_RETURN || key == VK_SPACE) && !(button.fsStyle & BTNS_WHOLEDROPDOWN)) {
        SendMessage(WM_COMMAND, MAKEWPARAM(button.idCommand, BN_CLICKED), reinterpret_cast<LPARAM>(m_hWnd));
        return true;
    }
    if (key == VK_UP || !dropDown) return true;  // Up, and Down on a crumb without a menu, do nothing
    NMTOOLBARW toolbar = {};
    toolbar.hdr.hwndFrom = m_hWnd;
    toolbar.hdr.idFrom = kKxBreadCrumbControlId;
    toolbar.hdr.code = TBN_DROPDOWN;
    toolbar.iItem = button.idCommand;
    GetRect(static_cast<UINT>(button.idCommand), &toolbar.rcButton);
    OnDropDown(&toolbar);
    return true;
}

void CBreadCrumbBar::OnCrumbCommand(WPARAM wParam) {
    ForwardToParent(WM_COMMAND, wParam, reinterpret_cast<LPARAM>(m_hWnd));
}

BOOL CBreadCrumbBar::OnNotify(WPARAM, LPARAM lParam, LRESULT* pResult) {
    NMHDR* header = reinterpret_cast<NMHDR*>(lParam);
    if (!header) return FALSE;
    if (header->code == TBN_DROPDOWN && header->idFrom == kKxBreadCrumbControlId) {
        OnDropDown(reinterpret_cast<NMTOOLBARW*>(lParam));
        *pResult = TBDDRET_DEFAULT;
        return TRUE;
    }
    if (header->code == NM_CUSTOMDRAW && header->hwndFrom == m_hWnd) {
        *pResult = OnCustomDraw(reinterpret_cast<NMTBCUSTOMDRAW*>(lParam));
        return TRUE;
    }
    return FALSE;
}

void CBreadCrumbBar::OnDropDown(NMTOOLBARW* toolbar) {
    m_bMenuOpen = TRUE;
    m_menu.DestroyMenu();
    m_menu.CreatePopupMenu();
    HWND parent = ::GetParent(m_hWnd);
    // Bar and parent share the thread: this returns once the parent has filled the menu.
    if (parent) ::SendNotifyMessageW(parent, WM_NOTIFY, toolbar->hdr.idFrom, reinterpret_cast<LPARAM>(toolbar));
    RECT rect = {};
    GetRect(UINT(toolbar->iItem), &rect);
    MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    TPMPARAMS params = {};
    params.cbSize = sizeof(params);
    params.rcExclude = rect;
    if (m_menu.GetMenuItemCount() > 0) m_menu.TrackPopupMenuEx(TPM_VERTICAL, rect.right, rect.bottom, parent, &params);
    m_bMenuOpen = FALSE;
}

LRESULT CBreadCrumbBar::OnCustomDraw(NMTBCUSTOMDRAW* draw) {
    switch (draw->nmcd.dwDrawStage) {
    case CDDS_PREPAINT: return CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPREPAINT: return CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPOSTPAINT: {
        WCHAR text[kKxCrumbPathBuffer] = {};
        TBBUTTONINFOW info = {};
        info.cbSize = sizeof(info);
        info.dwMask = TBIF_TEXT;
        info.pszText = text;
        info.cchText = kKxCrumbPathBuffer;
        GetButtonInfo(UINT(draw->nmcd.dwItemSpec), &info);
        RECT r = draw->rcText;
        OffsetRect(&r, 0, -16);
        HFONT font = reinterpret_cast<HFONT>(SendMessage(WM_GETFONT));
        CKxSelectObject selected(draw->nmcd.hdc, font);
        DrawTextW(draw->nmcd.hdc, text, -1, &r, DT_RIGHT);
        return CDRF_DODEFAULT;
    }
    default: return CDRF_DODEFAULT;
    }
}

// ---- CKxBreadCrumb --------------------------------------------------------------------------------------

CKxBreadCrumb::CKxBreadCrumb()
    : m_hArrowBitmap(LoadModuleBitmap(108)),
      m_hHotBitmap(LoadModuleBitmap(109)),
      m_hPressedBitmap(LoadModuleBitmap(200)),
      m_hFrameBitmap(LoadModuleBitmap(201)),
      m_nArrowWidth(12),
      m_nBarHeight(22),
      m_nBitmapWidth(0),
      m_nBitmapHeight(0) {
    BITMAP bm = {};
    if (m_hHotBitmap && GetObjectW(m_hHotBitmap.Get(), sizeof(bm), &bm)) {
        m_nBitmapWidth = bm.bmWidth;
        m_nBitmapHeight = bm.bmHeight;
    }
}

CKxBreadCrumb::~CKxBreadCrumb() = default;

LRESULT CKxBreadCrumb::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    // The highlight follows the cursor across the parts of a split button.
    if (message == WM_MOUSEMOVE) InvalidateRect(m_hWnd, nullptr, TRUE);
    return CBreadCrumbBar::WindowProc(message, wParam, lParam);
}

LRESULT CKxBreadCrumb::OnCustomDraw(NMTBCUSTOMDRAW* draw) {
    switch (draw->nmcd.dwDrawStage) {
    case CDDS_PREPAINT: return CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPREPAINT: DrawButton(draw); return CDRF_SKIPDEFAULT;
    default: return CDRF_DODEFAULT;
    }
}

namespace {

void Blend(HDC dest, HDC source, int x, int y, int w, int h, int sx, int sy, int sw, int sh) {
    if (w <= 0 || h <= 0 || sw <= 0 || sh <= 0) return;
    const BLENDFUNCTION blend = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    AlphaBlend(dest, x, y, w, h, source, sx, sy, sw, sh, blend);
}

}  // namespace

void CKxBreadCrumb::DrawButton(NMTBCUSTOMDRAW* draw) {
    HDC hdc = draw->nmcd.hdc;
    const UINT command = UINT(draw->nmcd.dwItemSpec);
    const RECT R = draw->nmcd.rc;
    const int W = R.right - R.left;
    const int index = CommandToIndex(command);

    WCHAR text[kKxCrumbPathBuffer] = {};
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof(info);
    info.dwMask = TBIF_TEXT | TBIF_STATE | TBIF_STYLE | TBIF_SIZE;  // 0x4E
    info.pszText = text;
    info.cchText = kKxCrumbPathBuffer;
    GetButtonInfo(command, &info);

    RECT T = R;
    T.bottom = kTextHeight;
    CKxMemoryDC memory(hdc);
    HBITMAP fill = (info.fsState & TBSTATE_PRESSED) || m_bMenuOpen ? m_hPressedBitmap.Get() : m_hHotBitmap.Get();
    const int bw = m_nBitmapWidth, bh = m_nBitmapHeight;

    if ((index == GetHotItem() || m_bMenuOpen) && memory && m_hFrameBitmap && bw > 2 * kCorner && bh > 2 * kCorner) {
        {
            CKxSelectObject frame(memory.Get(), m_hFrameBitmap.Get());
            const int c = kCorner, midH = 12, bottomY = 17;
            Blend(hdc, memory.Get(), R.left, R.top, c, c, 0, 0, c, c);
            Blend(hdc, memory.Get(), R.left + c, R.top, W - 2 * c, c, c, 0, bw - 2 * c, c);
            Blend(hdc, memory.Get(), R.right - c, R.top, c, c, bw - c, 0, c, c);
            Blend(hdc, memory.Get(), R.left, R.top + c, c, midH, 0, c, c, bh - 2 * c);
            Blend(hdc, memory.Get(), R.left + c, R.top + c, W - 2 * c, midH, c, c, bw - 2 * c, bh - 2 * c);
            Blend(hdc, memory.Get(), R.right - c, R.top + c, c, midH, bw - c, c, c, bh - 2 * c);
            Blend(hdc, memory.Get(), R.left, bottomY, c, c, 0, bh - c, c, c);
            Blend(hdc, memory.Get(), R.left + c, bottomY, W - 2 * c, c, c, bh - c, bw - 2 * c, c);
            Blend(hdc, memory.Get(), R.right - c, bottomY, c, c, bw - c, bh - c, c, c);
        }
        RECT M = T;
        if (info.fsStyle & BTNS_DROPDOWN) M.right -= kArrowPart;
        const DWORD pos = GetMessagePos();
        POINT cursor = {LONG(short(LOWORD(pos))), LONG(short(HIWORD(pos)))};
        ::ScreenToClient(m_hWnd, &cursor);
        if (fill) {
            CKxSelectObject selected(memory.Get(), fill);
            if (PtInRect(&M, cursor)) {
                M.left += 2, M.top += 2, M.right -= 2, M.bottom -= 1;
                Blend(hdc, memory.Get(), M.left, M.top, M.right - M.left, M.bottom - M.top, 2, 2, 1,
                      M.bottom - M.top < bh - 2 ? M.bottom - M.top : bh - 2);
            } else {
                M.left += 2, M.top += 2, M.right -= 2, M.bottom -= 2;
                Blend(hdc, memory.Get(), M.right, M.top, kArrowPart, M.bottom - M.top, 2, 2, 1,
                      M.bottom - M.top < bh - 2 ? M.bottom - M.top : bh - 2);
            }
        }
    }

    {
        HFONT font = reinterpret_cast<HFONT>(SendMessage(WM_GETFONT));
        CKxSelectObject selected(hdc, font);
        const int oldMode = SetBkMode(hdc, TRANSPARENT);
        DrawTextW(hdc, text, -1, &T, kDrawTextFlags);
        SetBkMode(hdc, oldMode);
    }
    if ((info.fsStyle & (BTNS_DROPDOWN | BTNS_WHOLEDROPDOWN)) && m_hArrowBitmap && memory) {
        CKxSelectObject selected(memory.Get(), m_hArrowBitmap.Get());
        Blend(hdc, memory.Get(), T.right - m_nArrowWidth, 0, m_nArrowWidth, m_nBarHeight, 0, 0, m_nArrowWidth,
              m_nBarHeight);
    }
}

// ---- CKxBreadCrumbEx ------------------------------------------------------------------------------------

bool CKxBreadCrumbEx::SetCrumbs(int firstIndex, LPCWSTR path, bool lastHasDropDown) {
    ShareCallback();
    return m_row.SetCrumbs(firstIndex, path, lastHasDropDown);
}

void CKxBreadCrumbEx::ClearCrumbs() {
    ShareCallback();
    m_row.ClearCrumbs();
}

void CKxBreadCrumbEx::OnCrumbCommand(WPARAM wParam) {
    const UINT command = LOWORD(wParam);
    if (!KxIsCrumbCommand(command)) return CKxBreadCrumb::OnCrumbCommand(wParam);
    ShareCallback();
    m_row.ClickCrumb(command);
    ForwardToParent(WM_COMMAND, MAKEWPARAM(command, 0), reinterpret_cast<LPARAM>(m_hWnd));
}
