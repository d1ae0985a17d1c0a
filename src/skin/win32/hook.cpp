#include "skin/win32/hook.h"

#include <algorithm>
#include <string>

#include "skin/win32/paint.h"

namespace hookwnd {

UINT g_staticMessage;

namespace {

// Shapes are cut where their alpha is at least half; the pixels inside get the picture's own colour.
const int kShapeThreshold = 128;
// The footer strip starts this far above its buttons.
const int kFooterPadding = 10;
// Buttons whose tops lie this close to the lowest top form the bottom row.
const int kRowTolerance = 4;
const char kPopupDescription[] = "Popup.ini";

bool IsClass(HWND hwnd, const wchar_t* name) {
    wchar_t cls[32] = {};
    GetClassNameW(hwnd, cls, 32);
    return lstrcmpiW(cls, name) == 0;
}

bool IsPushButton(HWND hwnd) {
    if (!IsClass(hwnd, L"Button") || !IsWindowVisible(hwnd)) return false;
    const LONG type = GetWindowLongW(hwnd, GWL_STYLE) & BS_TYPEMASK;
    return type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON;
}

RECT RectIn(HWND child, HWND parent) {
    RECT rc = {};
    GetWindowRect(child, &rc);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&rc), 2);
    return rc;
}

}  // namespace

// ---- attaching and releasing ----

bool Hook::Subclass(HWND hwnd, SUBCLASSPROC proc, DWORD_PTR data) {
    return SetWindowSubclass(hwnd, proc, m_handle, data) != FALSE;
}

BOOL CALLBACK Hook::CollectChild(HWND child, LPARAM self) {
    Hook* hook = reinterpret_cast<Hook*>(self);
    // direct children only: a static inside a child dialog belongs to that dialog's skin
    if (GetParent(child) != hook->m_window || !IsClass(child, L"Static") || hook->StaticOf(child)) return TRUE;
    std::unique_ptr<SkinnedStatic> s(new SkinnedStatic{hook, child});
    if (hook->Subclass(child, &StaticProc, reinterpret_cast<DWORD_PTR>(s.get()))) hook->m_statics.push_back(std::move(s));
    return TRUE;
}

void Hook::SubclassStatics() { EnumChildWindows(m_window, &CollectChild, reinterpret_cast<LPARAM>(this)); }

SkinnedStatic* Hook::StaticOf(HWND hwnd) {
    for (auto& s : m_statics)
        if (s->hwnd == hwnd) return s.get();
    return nullptr;
}

DWORD_PTR Hook::AttachDialog(HWND dialog, const char* descriptionFile, LPCWSTR package) {
    if (m_attached || !IsWindow(dialog) || !descriptionFile) return 0;
    kxskin::IniFile ini;
    if (!m_package.Load(package) || !m_package.ReadIni(descriptionFile, &ini)) return 0;
    m_skin = kxskin::ReadDialogSkin(ini);
    m_background = CreateSolidBrush(ToColorRef(m_skin.background));
    m_footer = CreateSolidBrush(ToColorRef(m_skin.hasFooter ? m_skin.footer : m_skin.background));
    m_window = dialog;
    if (!Subclass(dialog, &DialogProc, reinterpret_cast<DWORD_PTR>(this))) {
        m_window = nullptr;
        Release();
        return 0;
    }
    m_kind = Kind::Dialog;
    m_attached = true;
    ApplyFont();
    ApplyBold();
    SubclassStatics();
    // statics the description file gives a picture show it from the start
    for (auto& s : m_statics)
        if (const kxskin::StaticStyle* style = m_skin.Static(GetDlgCtrlID(s->hwnd)))
            if (!style->picture.empty()) GivePicture(*s, style->picture.c_str());
    InvalidateRect(dialog, nullptr, TRUE);
    return 1;
}

void Hook::ApplyFont() {
    if (m_skin.fontFace.empty()) return;
    std::wstring face(m_skin.fontFace.begin(), m_skin.fontFace.end());
    HDC screen = GetDC(nullptr);
    const int height = -MulDiv(m_skin.fontSize, screen ? GetDeviceCaps(screen, LOGPIXELSY) : 96, 72);
    if (screen) ReleaseDC(nullptr, screen);
    m_font = CreateFontW(height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                         CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_DONTCARE, face.c_str());
    if (!m_font) return;
    std::vector<HWND> windows(1, m_window);
    for (HWND child = GetWindow(m_window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        windows.push_back(child);
    for (HWND w : windows) {
        m_replacedFonts.emplace_back(w, reinterpret_cast<HFONT>(SendMessageW(w, WM_GETFONT, 0, 0)));
        SendMessageW(w, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), FALSE);
    }
}

void Hook::ApplyBold() {
    for (HWND child = GetWindow(m_window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const kxskin::StaticStyle* style = m_skin.Static(GetDlgCtrlID(child));
        if (!style || !style->bold) continue;
        HFONT current = reinterpret_cast<HFONT>(SendMessageW(child, WM_GETFONT, 0, 0));
        if (!m_boldFont) {
            LOGFONTW lf = {};
            HGDIOBJ base = current ? static_cast<HGDIOBJ>(current) : GetStockObject(DEFAULT_GUI_FONT);
            if (!GetObjectW(base, sizeof(lf), &lf)) return;
            lf.lfWeight = FW_BOLD;
            m_boldFont = CreateFontIndirectW(&lf);
            if (!m_boldFont) return;
        }
        // the font it had before the skin came, unless the skin's own font replaced it already
        bool known = false;
        for (const auto& f : m_replacedFonts) known = known || f.first == child;
        if (!known) m_replacedFonts.emplace_back(child, current);
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(m_boldFont), FALSE);
    }
}

DWORD_PTR Hook::AttachPopup(HWND popup, const HkPopupDescriptor* descriptor) {
    if (m_attached || !IsWindow(popup) || !descriptor || descriptor->cbSize != sizeof(HkPopupDescriptor) ||
        !descriptor->pszPicture)
        return 0;
    if (!m_package.Load(descriptor->pszPackage)) return 0;
    m_shape = m_package.ReadPicture(descriptor->pszPicture);
    if (m_shape.Empty()) return 0;
    kxskin::IniFile ini;
    if (m_package.ReadIni(kPopupDescription, &ini)) m_popupText = kxskin::ReadPopupTextColour(ini);
    m_window = popup;
    if (!Subclass(popup, &PopupProc, reinterpret_cast<DWORD_PTR>(this))) {
        m_window = nullptr;
        return 0;
    }
    m_kind = Kind::Popup;
    m_attached = true;
    SubclassStatics();
    // Over a shaped picture no static may paint the platform's background: they all draw their
    // text themselves from the start, before any form 1 comes.
    for (auto& s : m_statics) s->drawsText = true;
    // The popup may still be 0 x 0 here: it takes its shape when it gets a size.
    Reshape();
    return 1;
}

DWORD_PTR Hook::SetPopupPicture(const char* picture) {
    if (m_kind != Kind::Popup || !m_window || !picture) return 0;
    kxskin::Picture shape = m_package.ReadPicture(picture);
    if (shape.Empty()) return 0;
    m_shape = std::move(shape);
    m_shapedSize = SIZE{-1, -1};
    Reshape();
    InvalidateRect(m_window, nullptr, TRUE);
    return 1;
}

void Hook::WindowGone() {
    // The window is being destroyed: its subclassing ends with it; what this hook made for it
    // waits for the release.
    if (m_window) RemoveWindowSubclass(m_window, m_kind == Kind::Dialog ? &DialogProc : &PopupProc, m_handle);
    m_window = nullptr;
    m_replacedFonts.clear();
}

DWORD_PTR Hook::Release() {
    const DWORD_PTR released = m_attached ? 1 : 0;
    for (auto& s : m_statics)
        if (IsWindow(s->hwnd)) RemoveWindowSubclass(s->hwnd, &StaticProc, m_handle);
    m_statics.clear();
    if (m_window && IsWindow(m_window)) {
        // a window that lives on goes back to its own look
        RemoveWindowSubclass(m_window, m_kind == Kind::Dialog ? &DialogProc : &PopupProc, m_handle);
        for (const auto& f : m_replacedFonts)
            if (IsWindow(f.first)) {
                HFONT now = reinterpret_cast<HFONT>(SendMessageW(f.first, WM_GETFONT, 0, 0));
                if (now && (now == m_font || now == m_boldFont))
                    SendMessageW(f.first, WM_SETFONT, reinterpret_cast<WPARAM>(f.second), FALSE);
            }
        if (m_kind == Kind::Popup) SetWindowRgn(m_window, nullptr, TRUE);
        InvalidateRect(m_window, nullptr, TRUE);
    }
    m_window = nullptr;
    m_replacedFonts.clear();
    if (m_font) DeleteObject(m_font);
    if (m_boldFont) DeleteObject(m_boldFont);
    m_boldFont = nullptr;
    if (m_background) DeleteObject(m_background);
    if (m_footer) DeleteObject(m_footer);
    m_font = nullptr;
    m_background = m_footer = nullptr;
    m_shape = kxskin::Picture();
    m_surface = kxskin::Picture();
    m_shapedSize = SIZE{-1, -1};
    m_kind = Kind::None;
    m_attached = false;
    return released;
}

// ---- the dialog ----

int Hook::FooterTop() const {
    if (!m_skin.hasFooter || !m_window) return -1;
    std::vector<RECT> buttons;
    for (HWND child = GetWindow(m_window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (IsPushButton(child)) buttons.push_back(RectIn(child, m_window));
    if (buttons.empty()) return -1;
    int lowest = buttons[0].top;
    for (const RECT& b : buttons) lowest = std::max(lowest, static_cast<int>(b.top));
    int top = lowest;
    for (const RECT& b : buttons)
        if (b.top >= lowest - kRowTolerance) top = std::min(top, static_cast<int>(b.top));
    return std::max(0, top - kFooterPadding);
}

void Hook::PaintDialog(HDC dc) const {
    RECT client;
    GetClientRect(m_window, &client);
    const int footer = FooterTop();
    RECT body = client;
    if (footer >= 0) body.bottom = footer;
    FillRect(dc, &body, m_background);
    if (footer < 0) return;
    RECT strip = client;
    strip.top = footer;
    FillRect(dc, &strip, m_footer);
    if (m_skin.hasFooterLine) {
        RECT line = strip;
        line.bottom = line.top + 1;
        SetBkColor(dc, ToColorRef(m_skin.footerLine));
        ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &line, nullptr, 0, nullptr);
    }
}

COLORREF Hook::AreaColour(HWND child) const {
    if (m_kind == Kind::Popup) return RGB(255, 255, 255);
    const int footer = FooterTop();
    const bool inFooter = footer >= 0 && RectIn(child, m_window).top >= footer;
    return ToColorRef(inFooter ? m_skin.footer : m_skin.background);
}

COLORREF Hook::TextColour(HWND child) const {
    return ToColorRef(m_kind == Kind::Popup ? m_popupText : m_skin.TextColour(GetDlgCtrlID(child)));
}

namespace {

using SubclassBody = LRESULT (*)(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);

LRESULT RunGuarded(SubclassBody body, HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id, DWORD_PTR data) {
    try {
        return body(hwnd, msg, wp, lp, id, data);
    } catch (...) {
        return DefSubclassProc(hwnd, msg, wp, lp);
    }
}

}  // namespace

LRESULT CALLBACK Hook::DialogProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id, DWORD_PTR data) {
    return RunGuarded(&DialogBody, hwnd, msg, wp, lp, id, data);
}

LRESULT CALLBACK Hook::PopupProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id, DWORD_PTR data) {
    return RunGuarded(&PopupBody, hwnd, msg, wp, lp, id, data);
}

LRESULT CALLBACK Hook::StaticProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id, DWORD_PTR data) {
    return RunGuarded(&StaticBody, hwnd, msg, wp, lp, id, data);
}

LRESULT Hook::DialogBody(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR data) {
    Hook* hook = reinterpret_cast<Hook*>(data);
    switch (msg) {
    case WM_ERASEBKGND:
        hook->PaintDialog(reinterpret_cast<HDC>(wp));
        return 1;
    case WM_PRINTCLIENT:
        hook->PaintDialog(reinterpret_cast<HDC>(wp));
        return 0;
    case WM_CTLCOLORDLG:
        return reinterpret_cast<LRESULT>(hook->m_background);
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN: {
        HWND child = reinterpret_cast<HWND>(lp);
        HDC dc = reinterpret_cast<HDC>(wp);
        const COLORREF area = hook->AreaColour(child);
        SetTextColor(dc, hook->TextColour(child));
        SetBkColor(dc, area);
        return reinterpret_cast<LRESULT>(area == ToColorRef(hook->m_skin.background) ? hook->m_background
                                                                                      : hook->m_footer);
    }
    case WM_SIZE:
        // the buttons move after the dialog: the strip behind them is drawn anew
        InvalidateRect(hwnd, nullptr, TRUE);
        break;
    case WM_NCDESTROY:
        hook->WindowGone();
        break;
    default:
        break;
    }
    return DefSubclassProc(hwnd, msg, wp, lp);
}

// ---- the popup ----

void Hook::Reshape() {
    RECT client;
    if (!m_window || !GetClientRect(m_window, &client)) return;
    const SIZE size = {client.right, client.bottom};
    if (size.cx == m_shapedSize.cx && size.cy == m_shapedSize.cy) return;
    m_shapedSize = size;
    if (size.cx <= 0 || size.cy <= 0) {
        m_surface = kxskin::Picture();
        return;
    }
    const kxskin::Picture sliced = kxskin::SliceToSize(m_shape, size.cx, size.cy);
    m_surface = kxskin::OpaqueWithin(sliced, kShapeThreshold);
    // the window owns the region from here on
    if (HRGN region = CreateSpanRegion(kxskin::RegionOf(sliced, kShapeThreshold)))
        if (!SetWindowRgn(m_window, region, TRUE)) DeleteObject(region);
}

LRESULT Hook::PopupBody(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR data) {
    Hook* hook = reinterpret_cast<Hook*>(data);
    switch (msg) {
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT: {
        PAINTSTRUCT ps;
        if (HDC dc = BeginPaint(hwnd, &ps)) {
            DrawPicture(dc, hook->m_surface, 0, 0);
            EndPaint(hwnd, &ps);
        }
        return 0;
    }
    case WM_PRINTCLIENT:
        DrawPicture(reinterpret_cast<HDC>(wp), hook->m_surface, 0, 0);
        return 0;
    case WM_SIZE:
        hook->Reshape();
        InvalidateRect(hwnd, nullptr, TRUE);
        break;
    case WM_CTLCOLORSTATIC:
        // a static that draws itself paints the picture behind it; this is for any other one
        SetBkMode(reinterpret_cast<HDC>(wp), TRANSPARENT);
        SetTextColor(reinterpret_cast<HDC>(wp), ToColorRef(hook->m_popupText));
        return reinterpret_cast<LRESULT>(GetStockObject(NULL_BRUSH));
    case WM_NCDESTROY:
        hook->WindowGone();
        break;
    default:
        break;
    }
    return DefSubclassProc(hwnd, msg, wp, lp);
}

void Hook::PaintBehind(HWND child, HDC dc) const {
    RECT rc;
    GetClientRect(child, &rc);
    if (m_kind == Kind::Popup) {
        POINT origin = {0, 0};
        MapWindowPoints(child, m_window, &origin, 1);
        DrawPicture(dc, m_surface, -origin.x, -origin.y);
        return;
    }
    SetBkColor(dc, AreaColour(child));
    ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &rc, nullptr, 0, nullptr);
}

}  // namespace hookwnd
