// What the name dialog decides without a window: the texts and picture of each kind of name in
// each mode, the validation of the name (at most 255 characters, digits only for a year), and the
// rule that tells a typed character from a paste, so that a typed character past the limit is
// taken back while a paste stays for the user to correct.
#pragma once

#include <string>

#include "kx/KxPlatform.h"
#include "resources/dialogs/new_name_ids.h"


// Strings of ComRcRes.dll besides the kinds' headings and labels.
enum : UINT {
    KX_IDS_NAME_OK_NEW = 133,
    KX_IDS_NAME_OK_RENAME = 47,
    KX_IDS_NAME_TIP_TITLE = 217,
    KX_IDS_NAME_TIP_YEAR = 218,
    KX_IDS_NAME_TIP_LENGTH = 247,  // a format with one number, the limit
};

enum : int { KX_NAME_MODE_NEW = 1, KX_NAME_MODE_RENAME = 2, KX_NAME_KIND_YEAR = 7, KX_NAME_MAX_LENGTH = 255 };

struct NameDialogTexts {
    UINT heading;         // control 1049
    UINT label;           // control 1050
    UINT okText;          // control 1
    const char* picture;  // the skin package's picture for control 1051
};
// The texts of kind 1 to 14 in mode 1 (new) or 2 (rename); false for any other kind or mode.
bool NameDialogTextsFor(int kind, int mode, NameDialogTexts* texts);

enum class NameTip { Year, Length };

// What the model needs of the dialog's controls.
class INameDialogControls {
public:
    virtual ~INameDialogControls() = default;
    // The text of the edit control 10001; false when the control is missing.
    virtual bool GetNameText(std::wstring* text) = 0;
    // Sets the edit control's text. The control reports the change (EN_UPDATE) before this returns.
    virtual void SetNameText(const std::wstring& text) = 0;
    // Focuses the edit control, selects all its text and scrolls the caret into view.
    virtual void SelectAllName() = 0;
    virtual std::wstring ResourceString(UINT id) = 0;
    // Shows the tip of this sort at the edit control, made at its first use and reused after;
    // false when the tip could not be allocated. A tip that cannot be shown is not a failure.
    virtual bool ShowTip(NameTip which, const std::wstring& text, const std::wstring& title) = 0;
};

class CNewEditNameModel {
public:
    // A null initial name starts the dialog empty.
    CNewEditNameModel(int nameKind, int mode, LPCWSTR pszInitialName);

    // 1 for a good name, 0 for a bad one (with its tip), -1 when validation cannot go on (no edit
    // control, no tip object). Reads the control into m_strName.
    int ValidateName(INameDialogControls& controls, BOOL selectAll, BOOL restoreOnOverflow);
    // Every WM_KEYDOWN the dialog sees; `controlHeld`: either Control key is down.
    void OnKeyDown(UINT vk, bool controlHeld);
    // EN_UPDATE of the edit control.
    void OnEditUpdate(INameDialogControls& controls);

    enum class OkOutcome { Close, Stay, Cancel };
    OkOutcome OnOK(INameDialogControls& controls);

    std::wstring m_strInitialName;
    std::wstring m_strName;  // the text at the last validation: what the dialog hands back
    int m_nKind;
    int m_nMode;
    BOOL m_bKeyTyped;  // the last key press adds a character
    std::wstring m_strPreviousName;
    BOOL m_bHavePrevious;  // while FALSE, the next change is not validated

private:
    bool Complain(INameDialogControls& controls, NameTip which);
};
