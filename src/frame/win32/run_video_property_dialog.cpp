#include "frame/win32/dialog_runner.h"
#include "imaging/win32/dlg_video_property.h"

HRESULT CKxDialogRunner::ShowVideoPropertyDialog(KxComResPlginPluginObj&, HWND hwndParent, IKxContentSite* pSite,
                                                 IKxContentFolder* pFolder, KxPcPidl item) {
    return RunVideoPropertyDialog(hwndParent, pSite, pFolder, item);
}
