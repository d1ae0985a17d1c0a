// CButtonFlat: an owner-drawn push button that shows one icon on a flat face and raises a thin
// frame only while the mouse is over it or it has the focus; pressed, the frame looks sunken.
// The button takes over the icon it is given. Its parent dialog hands WM_DRAWITEM back to it.
#pragma once

#include <windows.h>

#include "base/owners.h"
#include "controls/flat_button.h"
#include "ui/control_wrappers.h"

inline void KxDestroyIcon(HICON hIcon) { DestroyIcon(hIcon); }
// Owns an icon and destroys it.
typedef CKxUnique<HICON, &KxDestroyIcon> CKxIcon;

class CButtonFlat : public CButton {
public:
    CButtonFlat();

    // Takes over `hIcon` (null: none), destroying the one it held, takes its size from its
    // bitmaps and repaints. The icon is destroyed with the button's window, or with the object
    // if it never had one.
    void SetIcon(HICON hIcon);
    HICON GetIcon() const { return m_hIcon.Get(); }
    int GetIconWidth() const { return m_nIconWidth; }
    int GetIconHeight() const { return m_nIconHeight; }
    bool IsHover() const { return m_hover.IsHover(); }
    const FlatButtonBits& LastDrawnBits() const { return m_bits; }

    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void OnMouseMove(LPARAM lParam);
    void Repaint(CFlatButtonHover::Action action);

    CKxIcon m_hIcon;
    int m_nIconWidth;
    int m_nIconHeight;
    CFlatButtonHover m_hover;  // m_bHover
    FlatButtonBits m_bits;     // m_bFocus, m_bDisabled, m_bPressed of the last drawing
};
