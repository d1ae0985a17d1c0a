// The logic of the add-to-playlist dialog, without a window: it walks the host's playlists or
// slideshows, keeps them sorted, follows what the user does with the combo box and hands back
// either an existing target or a new name, never both.
#pragma once

#include <string>

#include "base/owners.h"
#include "kx/KxContentTree.h"

// One existing target. Both fields are owned.
struct __tagExistedItemsPidl {
    KxPidl pidl;
    LPWSTR name;  // CoTaskMemAlloc
};

// What the model needs of the dialog's controls: the combo box 1038 and the OK button 1039.
class IAddToPlaylistControls {
public:
    virtual ~IAddToPlaylistControls() = default;
    virtual void ResetCombo() = 0;                     // CB_RESETCONTENT
    virtual void AddComboString(LPCWSTR text) = 0;     // CB_ADDSTRING
    virtual void SetComboSelection(int index) = 0;     // CB_SETCURSEL
    virtual int GetComboSelection() = 0;               // CB_GETCURSEL
    virtual std::wstring GetComboText() = 0;           // text of 1038
    virtual void SetComboText(LPCWSTR text) = 0;       // the edit part of 1038
    virtual void SetOkText(UINT stringId) = 0;         // text of 1039 from ComRcRes.dll
    virtual void EnableOk(bool enable) = 0;
};

class CAddToPlaylistModel {
public:
    enum Mode { ModeSlideshow = 0, ModePlaylist = 1 };
    enum Which { WhichPlaylists = 1, WhichSlideshows = 2 };
    // Texts of the OK button.
    static constexpr UINT kStringOkNew = 133;
    static constexpr UINT kStringOkExisting = 134;

    CAddToPlaylistModel(int mode, IKxContentFolder* folder, LPCWSTR initialName);
    ~CAddToPlaylistModel();
    CAddToPlaylistModel(const CAddToPlaylistModel&) = delete;
    CAddToPlaylistModel& operator=(const CAddToPlaylistModel&) = delete;

    // Reads the existing targets (1 playlists, 2 slideshows) into the sorted list. Any failure on
    // the way gives 0x80004003, stored in m_hrResult.
    HRESULT LoadExisting(int which);
    // Takes over the records of a walk, sorted by name (code units, null names first).
    void StoreSorted(__tagExistedItemsPidl** records, int count);
    // Index of the target with exactly this name, or -1.
    int FindExisting(LPCWSTR text) const;
    // Frees the list of existing targets.
    void FreeExisting();

    void FillCombo(IAddToPlaylistControls& controls, LPCWSTR initial);
    void OnSelChange(IAddToPlaylistControls& controls);
    // CBN_EDITUPDATE and CBN_CLOSEUP.
    void OnEditChange(IAddToPlaylistControls& controls);
    // OK pressed: true when the dialog may close.
    bool OnOK(IAddToPlaylistControls& controls);
    // After the modal loop: the chosen target or the new name; both outputs zeroed by the caller.
    HRESULT HandBack(KxPidl* pidl, LPWSTR* name);

    // The walk's well-known folder for the mode.
    LPCWSTR FolderName() const;

    int m_nMode;
    IKxContentFolder* m_pFolder;  // the host's, not released
    CKxTaskMem<KxPidl> m_pidlChosen;  // passes to the caller through HandBack
    HRESULT m_hrResult;
    CKxTaskMemString m_pszInitialName;  // private copy, or null; the model's alone
    __tagExistedItemsPidl** m_ppExisting;
    int m_nExisting;
    int m_nSelected;
    std::wstring m_strNewName;
    BOOL m_bNewName;

private:
    bool IsValidIndex(int index) const { return index >= 0 && index < m_nExisting; }
};

// Frees a record and what it holds; null is allowed.
void FreeExistedItem(__tagExistedItemsPidl* record);
