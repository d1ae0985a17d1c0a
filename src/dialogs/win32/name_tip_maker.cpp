#include "dialogs/win32/name_tip_maker.h"

#include <new>

#include "balloon/win32/balloon_platform.h"
#include "frame/win32/skin_statics.h"

// A plain (shown on request) tip of flags 0x30 at the edit control, its title also its default
// title. The skin package's path is built into the dialog's buffer each time a tip is made.
HRESULT CNameTipMaker::MakeTip(HWND target, LPCWSTR text, LPCWSTR title, IKxBalloonTip** tip) {
    *tip = nullptr;
    auto* made = new (std::nothrow) CKxBalloonlTip(KxWin32BalloonPlatform());
    if (!made) return E_OUTOFMEMORY;
    KxGetSkinPackagePath(m_szSkinFile);
    made->Init(target, text, title, 0x30, m_szSkinFile, title, FALSE);
    *tip = made;
    return S_OK;
}

// A tip made here is always a CKxBalloonlTip: its target is the base's.
void CNameTipMaker::SetTarget(IKxBalloonTip* tip, HWND target) {
    if (tip) static_cast<CKxBalloonlTip*>(tip)->m_hTarget = target;
}

bool CNameTipMaker::GetWindowRect(HWND window, RECT* rect) { return ::GetWindowRect(window, rect) != FALSE; }
