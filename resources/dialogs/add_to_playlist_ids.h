// Control identifiers of the add-to template (add_to_playlist.rc), for the template, the dialog
// and its tests. Plain #defines: the resource compiler reads this file too.
#ifndef KX_RESOURCES_DIALOGS_ADD_TO_PLAYLIST_IDS_H
#define KX_RESOURCES_DIALOGS_ADD_TO_PLAYLIST_IDS_H

#include "template_ids.h"

#define KX_IDC_ADDTO_LABEL 1037    // the prompt
#define KX_IDC_ADDTO_TARGETS 1038  // the drop-down of existing targets, with its edit part
#define KX_IDC_ADDTO_OK 1039       // OK or Create, the default button
#define KX_IDC_ADDTO_CANCEL 1052
#define KX_IDC_ADDTO_PICTURE 1054
#define KX_IDC_ADDTO_HEADING 1055

#endif
