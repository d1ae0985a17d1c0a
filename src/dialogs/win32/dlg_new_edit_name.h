// CDlgNewEditName: asks for a name of one of fourteen kinds, new or a rename. It checks the name
// while the user types and when OK is pressed, complains with balloon tips at the edit control,
// and leaves the accepted name in m_model.m_strName.
#pragma once

#include <string>

#include "dialogs/edit_warning_tip.h"
#include "dialogs/name_dialog_model.h"
#include "dialogs/win32/name_tip_maker.h"
#include "frame/win32/skinned_dialog.h"
#include "resources/dialogs/new_name_ids.h"

class CDlgNewEditName : public CKxSkinnedDialog, private INameDialogControls {
public:
    enum { IDD = KX_IDD_NEWNAME };

    // A null initial name starts the dialog empty. `tipMaker` makes the dialog's tips instead of
    // its own maker (tests watch the tips through it); it outlives the dialog.
    CDlgNewEditName(int nameKind, int mode, LPCWSTR pszInitialName, CWnd* pParentWnd = nullptr,
                    IEditTipMaker* tipMaker = nullptr);
    ~CDlgNewEditName() override;

    BOOL PreTranslateMessage(MSG* pMsg) override;

    // m_strInitialName, m_strName, m_nKind, m_nMode, m_bKeyTyped, m_strPreviousName, m_bHavePrevious
    CNewEditNameModel m_model;
    WCHAR m_szSkinFile[MAX_PATH];
    CNameTipMaker m_tipMaker;
    CEditWarningTip m_yearTip;    // a year that is not all digits
    CEditWarningTip m_lengthTip;  // a name over 255 characters

protected:
    BOOL OnInitDialog() override;
    KxMessageMap GetMessageMap() const override;
    BOOL OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
    void OnDestroy() override;

private:
    void OnOK() override;
    void OnNameUpdate();    // EN_UPDATE of the name field
    void OnCancelButton();  // button 1048

    // The edit control and the tips, as the model drives them.
    bool GetNameText(std::wstring* text) override;
    void SetNameText(const std::wstring& text) override;
    void SelectAllName() override;
    std::wstring ResourceString(UINT id) override;
    bool ShowTip(NameTip which, const std::wstring& text, const std::wstring& title) override;
};
