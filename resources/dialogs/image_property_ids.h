// Control identifiers of the image properties template (image_property.rc), for the template, the
// dialog and its tests. Plain #defines: the resource compiler reads this file too.
#ifndef KX_RESOURCES_DIALOGS_IMAGE_PROPERTY_IDS_H
#define KX_RESOURCES_DIALOGS_IMAGE_PROPERTY_IDS_H

#include "template_ids.h"

#define KX_IDC_IMAGEPROP_LIST 1041       // the owner-data list of 24 rows
#define KX_IDC_IMAGEPROP_PREVIOUS 1042   // < Previous
#define KX_IDC_IMAGEPROP_PREVIEW 1044    // the picture
#define KX_IDC_IMAGEPROP_NEXT 1047       // Next >
#define KX_IDC_IMAGEPROP_HEADING 10034   // the heading line
#define KX_IDC_IMAGEPROP_CLOSE 10035     // Close

#endif
