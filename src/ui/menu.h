// CMenu: a menu handle with the operations the dialogs use. A menu the object created or loaded is
// the object's and is destroyed with it; one it was given by Attach is only borrowed.
#pragma once

#include <windows.h>

class CMenu {
public:
    CMenu() : m_hMenu(nullptr), m_bOwned(false) {}
    ~CMenu() { DestroyMenu(); }
    CMenu(const CMenu&) = delete;
    CMenu& operator=(const CMenu&) = delete;

    HMENU m_hMenu;
    operator HMENU() const { return m_hMenu; }

    BOOL CreatePopupMenu();
    // Borrows a menu (the submenu of a loaded one, say): not destroyed by this object.
    BOOL Attach(HMENU hMenu);
    HMENU Detach();
    // Destroys a menu of its own, lets go of a borrowed one.
    BOOL DestroyMenu();

    BOOL AppendMenu(UINT nFlags, UINT_PTR nIDNewItem = 0, LPCWSTR lpszNewItem = nullptr) {
        return ::AppendMenuW(m_hMenu, nFlags, nIDNewItem, lpszNewItem);
    }
    UINT EnableMenuItem(UINT nIDEnableItem, UINT nEnable) { return ::EnableMenuItem(m_hMenu, nIDEnableItem, nEnable); }
    UINT GetMenuState(UINT nID, UINT nFlags) const { return ::GetMenuState(m_hMenu, nID, nFlags); }
    int GetMenuItemCount() const { return ::GetMenuItemCount(m_hMenu); }
    HMENU GetSubMenu(int nPos) const { return ::GetSubMenu(m_hMenu, nPos); }
    // With TPM_RETURNCMD the chosen command, 0 when none was chosen.
    BOOL TrackPopupMenuEx(UINT nFlags, int x, int y, HWND hWnd, LPTPMPARAMS lptpm = nullptr) {
        return ::TrackPopupMenuEx(m_hMenu, nFlags, x, y, hWnd, lptpm);
    }

private:
    bool m_bOwned;
};
