#include "dialogs/edit_warning_tip.h"

bool CEditWarningTip::Show(HWND edit, LPCWSTR text, LPCWSTR title) {
    if (m_pTip) {
        m_pTip->Show(FALSE, 0);
        m_maker.SetTarget(m_pTip, edit);
    } else {
        IKxBalloonTip* tip = nullptr;
        const HRESULT hr = m_maker.MakeTip(edit, text, title, &tip);
        if (hr == E_OUTOFMEMORY) return false;
        if (!tip) return true;  // no tip to be had: the complaint stands without one
        m_pTip = tip;
    }
    RECT rc = {0, 0, 0, 0};
    if (m_maker.GetWindowRect(edit, &rc) && rc.right - rc.left > 0) {
        const POINT at = {rc.left, rc.top + (rc.bottom - rc.top) / 2};
        m_pTip->SetPosition(&at);
    }
    if (FAILED(m_pTip->Show(TRUE, kShowTime))) {  // no skin package: the user sees no tip
        m_pTip->Release();
        m_pTip = nullptr;
    }
    return true;
}

void CEditWarningTip::Hide() {
    if (m_pTip) m_pTip->Show(FALSE, 0);
}

void CEditWarningTip::Release() {
    if (!m_pTip) return;
    m_pTip->Show(FALSE, 0);
    m_pTip->Release();
    m_pTip = nullptr;
}
