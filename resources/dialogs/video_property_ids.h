// Control identifiers of the video properties template (video_property.rc), for the template, the
// dialog and its tests. Plain #defines: the resource compiler reads this file too.
#ifndef KX_RESOURCES_DIALOGS_VIDEO_PROPERTY_IDS_H
#define KX_RESOURCES_DIALOGS_VIDEO_PROPERTY_IDS_H

#include "template_ids.h"

#define KX_IDC_VIDEOPROP_HEADING 1073   // the heading line
#define KX_IDC_VIDEOPROP_CLOSE 1074     // Close
#define KX_IDC_VIDEOPROP_PREVIEW 1075   // the picture
#define KX_IDC_VIDEOPROP_LIST 1076      // the list of six rows
#define KX_IDC_VIDEOPROP_PREVIOUS 1077  // < Previous
#define KX_IDC_VIDEOPROP_NEXT 1078      // Next >

#endif
