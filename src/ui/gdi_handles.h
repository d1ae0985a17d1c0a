// Owners of GDI objects: each deletes what it holds when it goes, so no path leaks a font, a
// bitmap, a brush or a device context. The objects are held by the general owner of base/owners.h.
#pragma once

#include <windows.h>

#include "base/owners.h"

template <typename Handle>
void KxDeleteGdiObject(Handle h) {
    DeleteObject(h);
}

// Owns one GDI object (font, bitmap, brush, pen, region) and deletes it.
template <typename Handle>
using CKxGdiObject = CKxUnique<Handle, &KxDeleteGdiObject<Handle>>;

typedef CKxGdiObject<HFONT> CKxFont;
typedef CKxGdiObject<HBITMAP> CKxBitmap;
typedef CKxGdiObject<HBRUSH> CKxBrush;
typedef CKxGdiObject<HPEN> CKxPen;
typedef CKxGdiObject<HRGN> CKxRegion;

// A memory device context compatible with `compatible` (the screen for null); deleted at the end.
class CKxMemoryDC {
public:
    explicit CKxMemoryDC(HDC compatible = nullptr) : m_hDC(CreateCompatibleDC(compatible)) {}
    ~CKxMemoryDC() {
        if (m_hDC) DeleteDC(m_hDC);
    }
    CKxMemoryDC(const CKxMemoryDC&) = delete;
    CKxMemoryDC& operator=(const CKxMemoryDC&) = delete;
    HDC Get() const { return m_hDC; }
    explicit operator bool() const { return m_hDC != nullptr; }

private:
    HDC m_hDC;
};

// A window's device context from GetDC or GetWindowDC, released at the end.
class CKxWindowDC {
public:
    CKxWindowDC(HWND hWnd, bool wholeWindow) : m_hWnd(hWnd), m_hDC(wholeWindow ? GetWindowDC(hWnd) : GetDC(hWnd)) {}
    ~CKxWindowDC() {
        if (m_hDC) ReleaseDC(m_hWnd, m_hDC);
    }
    CKxWindowDC(const CKxWindowDC&) = delete;
    CKxWindowDC& operator=(const CKxWindowDC&) = delete;
    HDC Get() const { return m_hDC; }
    explicit operator bool() const { return m_hDC != nullptr; }

private:
    HWND m_hWnd;
    HDC m_hDC;
};

// Selects an object into a device context and selects the former one back at the end.
class CKxSelectObject {
public:
    CKxSelectObject(HDC hDC, HGDIOBJ obj) : m_hDC(hDC), m_hOld(hDC && obj ? SelectObject(hDC, obj) : nullptr) {}
    ~CKxSelectObject() {
        if (m_hOld) SelectObject(m_hDC, m_hOld);
    }
    CKxSelectObject(const CKxSelectObject&) = delete;
    CKxSelectObject& operator=(const CKxSelectObject&) = delete;

private:
    HDC m_hDC;
    HGDIOBJ m_hOld;
};
