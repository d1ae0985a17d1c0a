// Which description file of the skin package each dialog is drawn from, by dialog identifier
// (the template's identifier in ComRcRes.dll), and the package's file name.
#pragma once

#include "kx/KxPlatform.h"

#define KX_SKIN_PACKAGE_NAME L"ComRcRes.bff"

enum : UINT {
    KX_IDD_NEWNAME = 6002,
    KX_IDD_EDITMULTIPLETAGS = 6003,
    KX_IDD_EDITSINGLETAGS = 6004,
    KX_IDD_MESSAGEBOX = 6005,
    KX_IDD_ADDTOPLAYLIST = 6006,
    KX_IDD_IMAGEPROPERTY = 6007,
    KX_IDD_ADDMUSICS = 6008,
    KX_IDD_VIDEOPROPERTY = 6009,
};

// The description file of a dialog ("IDD_DIALOG_MESSGAEBOX.ini" for 6005), null for an identifier
// that has none. The names are the package's own spellings.
const char* KxSkinDescriptionFile(UINT dialogId);
