// The identifiers of the dialog templates in ComRcRes.dll, the one place they are written: the
// templates (dialogs/*.rc), the dialogs and the tests all take them from here. Each template has
// its own header of control identifiers beside its script (dialogs/<template>_ids.h). Plain
// #defines, because the resource compiler reads these headers too.
#ifndef KX_RESOURCES_DIALOGS_TEMPLATE_IDS_H
#define KX_RESOURCES_DIALOGS_TEMPLATE_IDS_H

#define KX_IDD_NEWNAME 6002
#define KX_IDD_EDITMULTIPLETAGS 6003
#define KX_IDD_EDITSINGLETAGS 6004
#define KX_IDD_MESSAGEBOX 6005
#define KX_IDD_ADDTOPLAYLIST 6006
#define KX_IDD_IMAGEPROPERTY 6007
#define KX_IDD_ADDMUSICS 6008
#define KX_IDD_VIDEOPROPERTY 6009

#endif
