#include "frame/skin_files.h"

namespace {

struct DescriptionFile {
    UINT dialogId;
    const char* name;
};

// The names stand as the package spells them.
const DescriptionFile kDescriptionFiles[] = {
    {KX_IDD_NEWNAME, "IDD_DIALOG_NEWNAME.ini"},
    {KX_IDD_EDITMULTIPLETAGS, "IDD_DIALOG_EDITMULIPLETAGS.ini"},
    {KX_IDD_EDITSINGLETAGS, "IDD_DIALOG_EDITSINGLETAGS.ini"},
    {KX_IDD_MESSAGEBOX, "IDD_DIALOG_MESSGAEBOX.ini"},
    {KX_IDD_ADDTOPLAYLIST, "IDD_DIALOG_ADDTOPLAYLIST.ini"},
    {KX_IDD_IMAGEPROPERTY, "IDD_DIALOG_IMAGEPROPERTY.ini"},
    {KX_IDD_ADDMUSICS, "IDD_DIALOG_ADDMUSICS.ini"},
    {KX_IDD_VIDEOPROPERTY, "IDD_DIALOG_ VIDEOPROPERTY.ini"},
};

}  // namespace

const char* KxSkinDescriptionFile(UINT dialogId) {
    for (const auto& f : kDescriptionFiles)
        if (f.dialogId == dialogId) return f.name;
    return nullptr;
}
