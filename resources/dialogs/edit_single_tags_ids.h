// Control identifiers of the single-item tag dialog's template (edit_single_tags.rc), for the
// template, the dialog and its tests. Plain #defines: the resource compiler reads this file too.
#ifndef KX_RESOURCES_DIALOGS_EDIT_SINGLE_TAGS_IDS_H
#define KX_RESOURCES_DIALOGS_EDIT_SINGLE_TAGS_IDS_H

#include "template_ids.h"

#define KX_IDC_TAG_ARTIST 1004       // combo box: artist
#define KX_IDC_TAG_ARTIST2 1006      // combo box: second artist
#define KX_IDC_TAG_ALBUM 1008        // combo box: album
#define KX_IDC_TAG_GENRE 1010        // combo box: genre
#define KX_IDC_TAG_ART 1014          // static: the picture
#define KX_IDC_TAG_BROWSE 1015       // button: art from a file
#define KX_IDC_TAG_REMOVE 1016       // button: remove the art
#define KX_IDC_TAG_RATING 1019       // slider 0 to 5: rating
#define KX_IDC_TAG_TRACK 1022        // combo box: track number
#define KX_IDC_TAG_NUMBER 1023       // edit: the number
#define KX_IDC_TAG_YEAR 1026         // combo box: year
#define KX_IDC_TAG_PREV 1027         // button: previous item
#define KX_IDC_TAG_NEXT 1028         // button: next item
#define KX_IDC_TAG_HELP 1029         // flat button: the help balloon
#define KX_IDC_TAG_TITLE 1031        // edit: title
#define KX_IDC_TAG_NOTE 1056         // static: the note (string 176)
#define KX_IDC_TAG_CLOSE 1057        // button: close, as Cancel
#define KX_IDC_TAG_STORE 2000        // link: the music store

// The picture's context menu.
#define KX_IDM_ART_BROWSE 9000
#define KX_IDM_ART_PASTE 9001
#define KX_IDM_ART_REMOVE 9002
#define KX_IDM_ART_LOOKUP 9003

#endif
