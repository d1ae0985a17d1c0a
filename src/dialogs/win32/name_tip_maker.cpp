#include "dialogs/win32/name_tip_maker.h"

// TODO(balloon tips): the tip objects arrive with src/balloon. Until they are linked in, no tip is
// made here and the dialog refuses a bad name without one. The lead wires in:
//     CKxBalloonlTip* made = new (std::nothrow) CKxBalloonlTip;
//     if (!made) return E_OUTOFMEMORY;
//     KxGetSkinPackagePath(m_szSkinFile);
//     made->Init(target, text, title, 0x30, m_szSkinFile, title, FALSE);  // plain mode
//     *tip = made;
//     return S_OK;
// and in SetTarget, the tip's target window (m_hTarget of CKxBaloontipBase) set to `target`.
HRESULT CNameTipMaker::MakeTip(HWND, LPCWSTR, LPCWSTR, IKxBalloonTip** tip) {
    *tip = nullptr;
    return S_FALSE;
}

void CNameTipMaker::SetTarget(IKxBalloonTip*, HWND) {}

bool CNameTipMaker::GetWindowRect(HWND window, RECT* rect) { return ::GetWindowRect(window, rect) != FALSE; }
