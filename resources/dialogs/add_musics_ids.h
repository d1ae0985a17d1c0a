// Control identifiers of the add-music template (add_musics.rc), for the template, the dialog and
// its tests. Plain #defines: the resource compiler reads this file too.
#ifndef KX_RESOURCES_DIALOGS_ADD_MUSICS_IDS_H
#define KX_RESOURCES_DIALOGS_ADD_MUSICS_IDS_H

#include "template_ids.h"

#define KX_IDC_ADDMUSICS_CANCEL 1060
#define KX_IDC_ADDMUSICS_HIDDEN 1061    // hidden and disabled at start
#define KX_IDC_ADDMUSICS_SEARCH 1062    // the search box
#define KX_IDC_ADDMUSICS_TRACKS 1063    // tracks of the current folder (owner data)
#define KX_IDC_ADDMUSICS_CHOSEN 1064    // the chosen tracks (owner data)
#define KX_IDC_ADDMUSICS_OK 1065
#define KX_IDC_ADDMUSICS_BARPLACE 1067  // where the breadcrumb bar goes
#define KX_IDC_ADDMUSICS_HINT 1068
#define KX_IDC_ADDMUSICS_ADD 1079
#define KX_IDC_ADDMUSICS_REMOVE 1080
#define KX_IDC_ADDMUSICS_BAR 59392      // the bar, made at run time

#endif
