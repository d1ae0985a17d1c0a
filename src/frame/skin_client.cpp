#include "frame/skin_client.h"

#include <cstring>

_tagHookPopupDescriptor MakeHookPopupDescriptor(LPCWSTR pszSkinPath, const char* pszPicture) {
    _tagHookPopupDescriptor d;
    std::memset(&d, 0, sizeof(d));
    d.cbSize = sizeof(d);
    d.pszSkinPath = pszSkinPath;
    d.pszPicture = pszPicture;
    return d;
}

HookWndWC::HookWndWC() : m_hHook(0), m_pfnCallHookWnd(nullptr) {}

HookWndWC::~HookWndWC() { Detach(); }

bool HookWndWC::LoadHookLibrary() {
    // by name alone, so that the platform's search order finds it
    if (!m_hHookLibrary) m_hHookLibrary.Reset(LoadLibraryW(KX_HOOK_LIBRARY_NAME));
    if (!m_hHookLibrary) return false;
    m_pfnCallHookWnd = m_hHookLibrary.Export<PFN_CALLHOOKWND>(KX_HOOK_EXPORT_NAME);
    return m_pfnCallHookWnd != nullptr;
}

DWORD_PTR HookWndWC::AttachDialog(HWND hWnd, const char* pszDescriptionFile, LPCWSTR pszSkinPath) {
    if (!LoadHookLibrary()) return 0;
    DWORD_PTR hook = m_pfnCallHookWnd(KX_HOOKOP_OPEN, 0, 0, 0, 0);
    if (!hook) return 0;
    m_hHook = hook;
    return m_pfnCallHookWnd(KX_HOOKOP_ATTACH_DIALOG, m_hHook, reinterpret_cast<DWORD_PTR>(hWnd),
                            reinterpret_cast<DWORD_PTR>(pszDescriptionFile), reinterpret_cast<DWORD_PTR>(pszSkinPath));
}

DWORD_PTR HookWndWC::AttachPopup(HWND hWnd, _tagHookPopupDescriptor* pDescriptor) {
    Detach();
    if (!m_pfnCallHookWnd && !LoadHookLibrary()) return 0;
    DWORD_PTR hook = m_pfnCallHookWnd(KX_HOOKOP_OPEN, 0, 0, 0, 0);
    if (!hook) return 0;
    m_hHook = hook;
    return m_pfnCallHookWnd(KX_HOOKOP_ATTACH_POPUP, m_hHook, 0, reinterpret_cast<DWORD_PTR>(hWnd),
                            reinterpret_cast<DWORD_PTR>(pDescriptor));
}

DWORD_PTR HookWndWC::SetPopupPicture(DWORD_PTR hHook, const char* pszPicture) {
    if (!m_hHookLibrary || !m_pfnCallHookWnd) return 0;
    return m_pfnCallHookWnd(KX_HOOKOP_POPUP_PICTURE, hHook, 1, 0, reinterpret_cast<DWORD_PTR>(pszPicture));
}

DWORD_PTR HookWndWC::Detach() {
    DWORD_PTR released = 0;
    if (m_hHook) {
        // a hook exists only where the export was found
        released = m_pfnCallHookWnd(KX_HOOKOP_RELEASE, m_hHook, 0, 0, 0);
        m_pfnCallHookWnd(KX_HOOKOP_CLOSE, m_hHook, 0, 0, 0);
        m_hHook = 0;
    }
    m_hHookLibrary.Reset();
    m_pfnCallHookWnd = nullptr;
    return released;
}
