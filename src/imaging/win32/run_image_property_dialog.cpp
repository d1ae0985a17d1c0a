// ShowImagePropertyDialog of IKxCommonResource: runs the dialog and answers what it kept in its
// result; closing it is not a cancel, since it changes nothing.
#include "imaging/win32/operations.h"

#include "imaging/win32/dlg_image_property.h"
#include "ui/module_state.h"

HRESULT RunImagePropertyDialog(KxComResPlginPluginObj&, HWND hwndParent, IKxContentSite* pSite, IKxContentFolder* pFolder, KxPcPidl item) {
    CKxManageState state;
    CDlgImageProperty dlg(pSite, pFolder, item, CWnd::FromHandle(hwndParent));
    dlg.DoModal();
    return dlg.Result();
}
