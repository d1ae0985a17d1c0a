// Control identifiers of the message box's template (message_box.rc), for the template, the
// dialog and its tests. Plain #defines: the resource compiler reads this file too.
#ifndef KX_RESOURCES_DIALOGS_MESSAGE_BOX_IDS_H
#define KX_RESOURCES_DIALOGS_MESSAGE_BOX_IDS_H

#include "template_ids.h"

#define KX_IDC_MSGBOX_CLOSE 1033    // the close button, bottom left
#define KX_IDC_MSGBOX_FIRST 1034    // OK, or Yes
#define KX_IDC_MSGBOX_SECOND 1035   // No; hidden with one button
#define KX_IDC_MSGBOX_ICON 1045     // the picture
#define KX_IDC_MSGBOX_TEXT 1046     // the message
#define KX_IDC_MSGBOX_CAPTION 1070  // the bold caption line

#endif
