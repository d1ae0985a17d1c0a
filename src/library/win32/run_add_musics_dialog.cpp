// ShowAddMusicsDialog of IKxCommonResource: runs the add-music dialog with no parent and hands the
// host the chosen identifiers in their order.
#include "library/win32/dlg_add_musics.h"
#include "library/win32/operations.h"

#include "ui/module_state.h"

HRESULT RunAddMusicsDialog(KxComResPlginPluginObj&, DWORD reserved, IKxContentSite* pSite, IKxContentFolder* pRootFolder,
                           LPCWSTR pszRootName, IKxTrackList* pTrackList, INT* pCount, KxPidl** ppItems) {
    CKxManageState state;
    CDlgAddMusics dlg(reserved, pSite, pRootFolder, pTrackList, pszRootName);
    // A failed start, Cancel and the close box all end as a cancel and touch no output.
    if (dlg.DoModal() != IDOK) return HRESULT_FROM_WIN32(ERROR_CANCELLED);
    if (dlg.m_model.m_hrResult != S_OK) return dlg.m_model.m_hrResult;
    return dlg.HandOverChosen(pCount, ppItems);
}
