#include "ui/menu.h"

BOOL CMenu::CreatePopupMenu() {
    if (m_hMenu) return FALSE;
    m_hMenu = ::CreatePopupMenu();
    m_bOwned = m_hMenu != nullptr;
    return m_hMenu != nullptr;
}

BOOL CMenu::Attach(HMENU hMenu) {
    if (m_hMenu || !hMenu) return FALSE;
    m_hMenu = hMenu;
    m_bOwned = false;
    return TRUE;
}

HMENU CMenu::Detach() {
    HMENU hMenu = m_hMenu;
    m_hMenu = nullptr;
    m_bOwned = false;
    return hMenu;
}

BOOL CMenu::DestroyMenu() {
    if (!m_hMenu) return FALSE;
    const BOOL destroyed = m_bOwned ? ::DestroyMenu(m_hMenu) : TRUE;
    m_hMenu = nullptr;
    m_bOwned = false;
    return destroyed;
}
