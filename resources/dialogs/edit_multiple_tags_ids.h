// Control identifiers of the multiple-item tag dialog's template (edit_multiple_tags.rc), for the
// template, the dialog and its tests. Each field has a change box beside it. Plain #defines: the
// resource compiler reads this file too. The picture's context menu is the single-item dialog's
// (KX_IDM_ART_*).
#ifndef KX_RESOURCES_DIALOGS_EDIT_MULTIPLE_TAGS_IDS_H
#define KX_RESOURCES_DIALOGS_EDIT_MULTIPLE_TAGS_IDS_H

#include "template_ids.h"

#define KX_IDC_MTAG_ARTIST_CHECK 10006   // change box: artist
#define KX_IDC_MTAG_ARTIST2_CHECK 10008  // change box: second artist
#define KX_IDC_MTAG_ARTIST2 10010        // combo box: second artist
#define KX_IDC_MTAG_ALBUM_CHECK 10011    // change box: album
#define KX_IDC_MTAG_GENRE_CHECK 10013    // change box: genre
#define KX_IDC_MTAG_GENRE 10014          // combo box: genre
#define KX_IDC_MTAG_ART_CHECK 10017      // change box: album art
#define KX_IDC_MTAG_ART 10020            // static: the picture
#define KX_IDC_MTAG_BROWSE 10021         // button: art from a file
#define KX_IDC_MTAG_REMOVE 10022         // button: remove the art
#define KX_IDC_MTAG_RATING_CHECK 10023   // change box: rating
#define KX_IDC_MTAG_RATING 10025         // slider 0 to 5: rating
#define KX_IDC_MTAG_YEAR_CHECK 10026     // change box: year
#define KX_IDC_MTAG_YEAR 10028           // combo box: year
#define KX_IDC_MTAG_ARTIST 10031         // combo box: artist
#define KX_IDC_MTAG_ALBUM 10032          // combo box: album
#define KX_IDC_MTAG_CLOSE 1058           // button: close, as Cancel
#define KX_IDC_MTAG_NOTE 1059            // static: the note (string 177)
#define KX_IDC_MTAG_STORE 2001           // link: the music store

#endif
