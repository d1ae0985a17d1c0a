#include "frame/win32/dialog_runner.h"
#include "imaging/win32/dlg_image_property.h"

HRESULT CKxDialogRunner::ShowImagePropertyDialog(KxComResPlginPluginObj&, HWND hwndParent, IKxContentSite* pSite,
                                                 IKxContentFolder* pFolder, KxPcPidl item) {
    return RunImagePropertyDialog(hwndParent, pSite, pFolder, item);
}
