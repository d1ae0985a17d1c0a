// Makes the balloon tips with which the name dialog complains at its edit control, and points them
// at the control.
#pragma once

#include "dialogs/edit_warning_tip.h"

class CNameTipMaker final : public IEditTipMaker {
public:
    // `skinFile`: the dialog's MAX_PATH buffer, filled with the skin package's path when a tip is made.
    explicit CNameTipMaker(WCHAR* skinFile) : m_szSkinFile(skinFile) {}

    HRESULT MakeTip(HWND target, LPCWSTR text, LPCWSTR title, IKxBalloonTip** tip) override;
    void SetTarget(IKxBalloonTip* tip, HWND target) override;
    bool GetWindowRect(HWND window, RECT* rect) override;

private:
    WCHAR* m_szSkinFile;
};
