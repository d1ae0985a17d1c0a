#include "dialogs/win32/dlg_new_edit_name.h"
#include "frame/win32/dialog_runner.h"

HRESULT CKxDialogRunner::ShowNameDialog(KxComResPlginPluginObj&, HWND hwndParent, INT nameKind, INT mode,
                                        LPCWSTR pszInitialName, LPWSTR* ppszName) {
    return RunNameDialog(hwndParent, nameKind, mode, pszInitialName, ppszName);
}
