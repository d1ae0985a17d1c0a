#include "dialogs/name_dialog_model.h"

#include <cwchar>
#include <cwctype>

namespace {

struct KindRow {
    UINT headingNew, headingRename, label;
    const char* pictureNew;
    const char* pictureRename;
};

// Kinds 1 to 14. The video genre shares the genre's strings and has its own pictures.
const KindRow kKinds[14] = {
    {46, 171, 165, "New Album.png", "Rename Album.png"},
    {64, 172, 166, "New Artist.png", "Rename Artist.png"},
    {65, 173, 167, "New Genre.png", "Rename Genre.png"},
    {42, 174, 168, "New Folder.png", "Rename Folder.png"},
    {63, 170, 164, "New Playlist.png", "Rename Playlist.png"},
    {163, 175, 169, "New Slideshow.png", "Rename Slideshow.png"},
    {189, 179, 202, "New Year.png", "Rename Year.png"},
    {190, 196, 203, "New People.png", "Rename People.png"},
    {191, 197, 204, "New Event.png", "Rename Event.png"},
    {192, 198, 205, "New Place.png", "Rename Place.png"},
    {193, 199, 206, "New Director.png", "Rename Director.png"},
    {194, 200, 207, "New Video Cast.png", "Rename Video Cast.png"},
    {195, 201, 208, "New Producer.png", "Rename Producer.png"},
    {65, 173, 167, "New Video Genre.png", "Rename Video Genre.png"},
};

bool AllDigits(const std::wstring& name) {
    for (wchar_t c : name) {
        if (c == L'\0') return true;
        if (!std::iswdigit(static_cast<wint_t>(c))) return false;
    }
    return true;
}

}  // namespace

bool NameDialogTextsFor(int kind, int mode, NameDialogTexts* texts) {
    if (kind < 1 || kind > 14 || (mode != KX_NAME_MODE_NEW && mode != KX_NAME_MODE_RENAME)) return false;
    const KindRow& row = kKinds[kind - 1];
    const bool rename = mode == KX_NAME_MODE_RENAME;
    texts->heading = rename ? row.headingRename : row.headingNew;
    texts->label = row.label;
    texts->okText = rename ? UINT(KX_IDS_NAME_OK_RENAME) : UINT(KX_IDS_NAME_OK_NEW);
    texts->picture = rename ? row.pictureRename : row.pictureNew;
    return true;
}

CNewEditNameModel::CNewEditNameModel(int nameKind, int mode, LPCWSTR pszInitialName)
    : m_strInitialName(pszInitialName ? pszInitialName : L""),
      m_nKind(nameKind),
      m_nMode(mode),
      m_bKeyTyped(FALSE),
      m_bHavePrevious(TRUE) {}

bool CNewEditNameModel::Complain(INameDialogControls& controls, NameTip which) {
    const std::wstring title = controls.ResourceString(KX_IDS_NAME_TIP_TITLE);
    std::wstring text;
    if (which == NameTip::Year) {
        text = controls.ResourceString(KX_IDS_NAME_TIP_YEAR);
    } else {
        const std::wstring format = controls.ResourceString(KX_IDS_NAME_TIP_LENGTH);
        wchar_t buffer[512];
        // a format that does not fit says nothing useful: the tip then shows it as it stands
        const int n = std::swprintf(buffer, 512, format.c_str(), static_cast<int>(KX_NAME_MAX_LENGTH));
        text = n >= 0 ? std::wstring(buffer, static_cast<size_t>(n)) : format;
    }
    return controls.ShowTip(which, text, title);
}

int CNewEditNameModel::ValidateName(INameDialogControls& controls, BOOL selectAll, BOOL restoreOnOverflow) {
    if (!controls.GetNameText(&m_strName)) return -1;
    const bool fits = m_strName.size() <= static_cast<size_t>(KX_NAME_MAX_LENGTH);
    if (m_nKind == KX_NAME_KIND_YEAR && fits) {
        if (AllDigits(m_strName)) return 1;  // the empty year too
        if (selectAll) controls.SelectAllName();
        return Complain(controls, NameTip::Year) ? 0 : -1;
    }
    if (fits) return 1;

    if (selectAll) controls.SelectAllName();
    if (restoreOnOverflow) {
        // The text of before goes back into the control; the change this makes is not validated.
        m_strName = m_strPreviousName;
        m_bHavePrevious = FALSE;
        controls.SetNameText(m_strName);
    }
    return Complain(controls, NameTip::Length) ? 0 : -1;
}

void CNewEditNameModel::OnKeyDown(UINT vk, bool controlHeld) {
    m_bKeyTyped = TRUE;
    // Backspace, Tab, Escape and Delete add nothing; Control with V (or 0x76) pastes.
    if (vk == 0x08 || vk == 0x09 || vk == 0x1B || vk == 0x2E) m_bKeyTyped = FALSE;
    if ((vk == 0x56 || vk == 0x76) && controlHeld) m_bKeyTyped = FALSE;
}

void CNewEditNameModel::OnEditUpdate(INameDialogControls& controls) {
    if (m_bHavePrevious) {
        ValidateName(controls, FALSE, m_bKeyTyped);  // while typing a failure has nothing to cancel
        m_bKeyTyped = FALSE;
    }
    m_strPreviousName = m_strName;
    m_bHavePrevious = TRUE;
}

CNewEditNameModel::OkOutcome CNewEditNameModel::OnOK(INameDialogControls& controls) {
    const int valid = ValidateName(controls, TRUE, FALSE);
    if (valid > 0) return OkOutcome::Close;
    return valid == 0 ? OkOutcome::Stay : OkOutcome::Cancel;
}
