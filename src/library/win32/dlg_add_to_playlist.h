// CDlgAddToPlaylist: asks for one target, an existing playlist (or slideshow) or the name of a new
// one. The window gathers what the user does and applies what the model decides.
#pragma once

#include <string>

#include "frame/win32/skinned_dialog.h"
#include "library/add_to_playlist_model.h"
#include "resources/dialogs/add_to_playlist_ids.h"
#include "ui/control_wrappers.h"

class CDlgAddToPlaylist : public CKxSkinnedDialog, private IAddToPlaylistControls {
public:
    enum { IDD = KX_IDD_ADDTOPLAYLIST };

    // mode 1: playlists, 0: slideshows. The folder stays the host's.
    CDlgAddToPlaylist(int mode, IKxContentFolder* pFolder, LPCWSTR pszInitialName, CWnd* pParentWnd = nullptr);
    ~CDlgAddToPlaylist() override;

    // After the modal loop: the chosen target or the new name (both outputs zeroed by the caller).
    HRESULT HandBack(KxPidl* pidl, LPWSTR* name) { return m_model.HandBack(pidl, name); }

    CAddToPlaylistModel m_model;  // m_nMode, m_pFolder, m_hrResult, the list and the edit state
    CComboBox m_combo;            // 1038
    CStatic m_picture;            // 1054

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;
    KxMessageMap GetMessageMap() const override;
    void OnDestroy() override;

private:
    void OnOK() override;  // button 1039, and IDOK
    void OnTargetsSelChange();
    void OnTargetsEdit();  // the edit part changed, or the list closed up

    // The combo box and the OK button, as the model drives them.
    void ResetCombo() override;
    void AddComboString(LPCWSTR text) override;
    void SetComboSelection(int index) override;
    int GetComboSelection() override;
    std::wstring GetComboText() override;
    void SetComboText(LPCWSTR text) override;
    void SetOkText(UINT stringId) override;
    void EnableOk(bool enable) override;
};

// The run of both add-to operations, mode 1 (playlists) or 0 (slideshows), behind the interface's
// preconditions: runs the dialog and hands over either *ppItem or *ppszNewName.
HRESULT RunAddToDialog(int mode, HWND hwndParent, IKxContentFolder* pFolder, LPCWSTR pszSuggestedName,
                       KxPidl* ppItem, LPWSTR* ppszNewName);
