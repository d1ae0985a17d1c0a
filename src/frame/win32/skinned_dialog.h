// CKxSkinnedDialog: the base of every dialog that the skinning library draws. It holds the skin
// client and attaches it with the description file of the dialog's template and the package
// ComRcRes.bff beside the module, so that no dialog builds the path or names its file itself.
#pragma once

#include "frame/skin_client.h"
#include "ui/dialog.h"

class CKxSkinnedDialog : public CDialog {
public:
    CKxSkinnedDialog(UINT nIDTemplate, CWnd* pParentWnd);

    HookWndWC m_hookWnd;  // attached until the dialog object goes (its destructor detaches)

protected:
    // Attaches the skin and returns the library's answer (0: the platform's own look). The
    // dialog calls it from its OnInitDialog, after the base, at the point where what it tests
    // first has held: each dialog tests different things before it is skinned, and one that
    // closes at once is never skinned. Most dialogs do not test the answer.
    DWORD_PTR AttachSkin();
};
