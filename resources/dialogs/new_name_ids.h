// Control identifiers of the name dialog's template (new_name.rc), for the template, the dialog
// and its tests. Plain #defines: the resource compiler reads this file too.
#ifndef KX_RESOURCES_DIALOGS_NEW_NAME_IDS_H
#define KX_RESOURCES_DIALOGS_NEW_NAME_IDS_H

#include "template_ids.h"

#define KX_IDC_NAME_OK 1           // OK: "Create" or "Rename"
#define KX_IDC_NAME_CANCEL 1048    // Cancel
#define KX_IDC_NAME_HEADING 1049   // the heading beside the picture
#define KX_IDC_NAME_LABEL 1050     // the label over the name field
#define KX_IDC_NAME_PICTURE 1051   // the kind's picture
#define KX_IDC_NAME_EDIT 10001     // the name field

#endif
