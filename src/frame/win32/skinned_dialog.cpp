#include "frame/win32/skinned_dialog.h"

#include "frame/skin_files.h"
#include "frame/win32/skin_statics.h"

CKxSkinnedDialog::CKxSkinnedDialog(UINT nIDTemplate, CWnd* pParentWnd) : CDialog(nIDTemplate, pParentWnd) {}

DWORD_PTR CKxSkinnedDialog::AttachSkin() {
    WCHAR skinPath[MAX_PATH] = {};
    KxGetSkinPackagePath(skinPath);
    return m_hookWnd.AttachDialog(m_hWnd, KxSkinDescriptionFile(m_nIDHelp), skinPath);
}
