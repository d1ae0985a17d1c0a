// One hook of the skinning library: what CallHookWnd opened with operation 1 and what it skins,
// one dialog or one popup at a time. It owns everything it made for that window (fonts, brushes,
// pictures, its subclassing of the window and of its statics) and gives all of it back on release.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <memory>
#include <utility>
#include <vector>

#include "skin/pixels.h"
#include "skin/skin_description.h"
#include "skin/win32/hook_protocol.h"
#include "skin/win32/package_file.h"

namespace hookwnd {

class Hook;

// A static of the skinned window. Once asked for a picture (form 2) or for the skin's text
// (form 1) it draws itself; until then it only listens.
struct SkinnedStatic {
    Hook* hook;
    HWND hwnd;
    kxskin::Picture picture;  // shown while showsPicture
    bool showsPicture = false;
    bool drawsText = false;
};

class Hook {
public:
    explicit Hook(DWORD_PTR handle) : m_handle(handle) {}
    ~Hook() { Release(); }
    Hook(const Hook&) = delete;
    Hook& operator=(const Hook&) = delete;

    // Operation 0x1000: 1 when the dialog is skinned, 0 when this hook holds a window already,
    // the window is gone, or the package or its description file cannot be read.
    DWORD_PTR AttachDialog(HWND dialog, const char* descriptionFile, LPCWSTR package);
    // Operation 3: 1 when the popup takes its picture, 0 as for a dialog or without the picture.
    DWORD_PTR AttachPopup(HWND popup, const HkPopupDescriptor* descriptor);
    // Operation 12: a new shape for the attached popup; 0 without a popup or the picture.
    DWORD_PTR SetPopupPicture(const char* picture);
    // Operation 4: lets the window go; 1 when one was attached, even if it no longer exists.
    DWORD_PTR Release();

    // For the statics: what lies behind `child` at its place, and its text colour.
    void PaintBehind(HWND child, HDC dc) const;
    COLORREF TextColour(HWND child) const;
    COLORREF AreaColour(HWND child) const;
    // Form 2: the package picture `name` into the static; false leaves it as it was.
    bool GivePicture(SkinnedStatic& s, const char* name) const;

private:
    enum class Kind { None, Dialog, Popup };

    // The subclass procedures: each runs its body and lets no exception out into the window
    // manager (the message then gets the window's own handling).
    static LRESULT CALLBACK DialogProc(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
    static LRESULT CALLBACK PopupProc(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
    static LRESULT CALLBACK StaticProc(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
    static LRESULT DialogBody(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
    static LRESULT PopupBody(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
    static LRESULT StaticBody(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
    static BOOL CALLBACK CollectChild(HWND child, LPARAM self);

    bool Subclass(HWND hwnd, SUBCLASSPROC proc, DWORD_PTR data);
    void SubclassStatics();
    void ApplyFont();
    void ApplyBold();
    void PaintDialog(HDC dc) const;
    // Top of the strip behind the bottom row of push buttons, in client coordinates; -1: none.
    int FooterTop() const;
    // The popup's picture sliced to its client size, and its window region.
    void Reshape();
    void WindowGone();
    void PaintStatic(SkinnedStatic& s, HDC dc);
    SkinnedStatic* StaticOf(HWND hwnd);

    DWORD_PTR m_handle;
    Kind m_kind = Kind::None;
    HWND m_window = nullptr;
    bool m_attached = false;  // a window was attached since the last release
    PackageFile m_package;
    kxskin::DialogSkin m_skin;
    HFONT m_font = nullptr;
    HFONT m_boldFont = nullptr;  // the bold face for statics whose section says Bold=1
    std::vector<std::pair<HWND, HFONT>> m_replacedFonts;  // window, the font it had before
    HBRUSH m_background = nullptr;
    HBRUSH m_footer = nullptr;
    kxskin::Picture m_shape;
    kxskin::Picture m_surface;  // m_shape at the client size, opaque inside the region
    SIZE m_shapedSize = {-1, -1};
    uint32_t m_popupText = 0;
    std::vector<std::unique_ptr<SkinnedStatic>> m_statics;
};

// WM_HKSTATIC_FUNCTION, registered on the first open.
extern UINT g_staticMessage;

}  // namespace hookwnd
