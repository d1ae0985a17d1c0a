// Which description file of the skin package each dialog is drawn from, by dialog identifier
// (the template's identifier in ComRcRes.dll), and the package's file name.
#pragma once

#include "kx/KxPlatform.h"
#include "resources/dialogs/template_ids.h"

#define KX_SKIN_PACKAGE_NAME L"ComRcRes.bff"


// The description file of a dialog ("IDD_DIALOG_MESSGAEBOX.ini" for 6005), null for an identifier
// that has none. The names are the package's own spellings.
const char* KxSkinDescriptionFile(UINT dialogId);
