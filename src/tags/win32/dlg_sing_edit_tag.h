// CDlgSingEditTag: the tags of one item, with Previous and Next through the host's view. The
// decisions are CSingleTagModel's; this window answers its controls interface, shows the field
// warnings as balloon tips and the art in the picture control, and takes picture files dropped on
// it. The help button is a flat button; the picture is a plain static whose context menu the
// dialog opens itself.
#pragma once

#include <string>

#include "controls/win32/flat_button.h"
#include "dialogs/edit_warning_tip.h"
#include "dialogs/win32/name_tip_maker.h"
#include "frame/win32/skinned_dialog.h"
#include "imaging/album_art.h"
#include "imaging/win32/property_preview.h"  // CGdiplusSession
#include "library/win32/drag_drop_target.h"
#include "tags/art_menu_rules.h"
#include "tags/single_tag_model.h"
#include "tags/win32/art_picture.h"
#include "tags/win32/net_art_lookup.h"

class CDlgSingEditTag : public CKxSkinnedDialog,
                        private IEditTagControls,
                        private IKxArtDropOwner,
                        private INetArtLookupOwner {
public:
    enum { IDD = KX_IDD_EDITSINGLETAGS };

    // The site, folder and items stay the caller's. `tipMaker` makes the warnings instead of the
    // dialog's own maker (tests watch them through it); it outlives the dialog.
    CDlgSingEditTag(IKxContentSite* site, IKxContentFolder* folder, UINT itemCount, const KxPcPidl* items,
                    CWnd* pParentWnd = nullptr, IEditTipMaker* tipMaker = nullptr);
    ~CDlgSingEditTag() override;

    BOOL PreTranslateMessage(MSG* pMsg) override;

    CGdiplusSession m_gdiplus;  // the dialog's own start of the imaging platform
    CSingleTagModel m_model;    // m_hrResult is what the host gets after OK
    WCHAR m_szSkinFile[MAX_PATH];
    CNameTipMaker m_tipMaker;
    CEditWarningTip m_digitBalloon;
    CEditWarningTip m_lengthBalloon;
    IKxBalloonTip* m_helpBalloon;
    CArtPicture m_picture;
    HWND m_tips[4];   // the tool tips of Close, Change..., Remove and the store link
    CAlbumArt m_art;  // the JPEG bytes of a chosen picture; its own start of the imaging platform
    CDragDropTarget m_dropTarget;  // a picture file dropped on the picture control
    CButtonFlat m_helpButton;      // 1029, with the system's question icon
    CNetArtLookup m_lookup{*this};  // menu command 9003: the art from the content manager


    // Shows and keeps the picture in `path` as the new art, scaled into the thumbnail's box and
    // stored as JPEG (a small JPEG as it is). False when it is no picture or its bytes cannot be made.
    bool LoadArtFromFile(LPCWSTR path) override;
    // The open dialog with the pictures' filter (string 106); false when cancelled.
    bool BrowseForArt();
    // The picture's context menu at a screen point: Choose, Paste and Remove as the art state and
    // the clipboard allow (a clipboard bitmap is encoded now). The extended static calls it on a
    // right click; the dialog on the keyboard's context-menu key.
    void ShowArtMenu(POINT at);
    // Menu command 9001: the file or the bitmap that the menu found on the clipboard.
    bool PasteArt();

protected:
    BOOL OnInitDialog() override;
    KxMessageMap GetMessageMap() const override;
    void OnShowWindow(BOOL bShow, UINT nStatus) override;
    BOOL OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
    void OnDestroy() override;

private:
    void OnOK() override;
    template <int Id>
    void OnFieldChange() {
        m_model.OnFieldChanged(Id);
    }
    void OnPrevItem();
    void OnNextItem();
    void OnRemoveArt();
    void OnBrowseArt();
    void OnPasteArt();
    void OnLookupArt();
    void OnHelp();
    void OnClose();
    void OnStore();
    void StepWithWaitCursor(bool forward);
    void AddToolTips();

    // IEditTagControls
    HWND DialogWindow() override;
    bool Exists(int id) override;
    bool GetText(int id, std::wstring* text) override;
    void SetText(int id, const std::wstring& text) override;
    void Enable(int id, bool enable) override;
    bool IsEnabled(int id) override;
    void Focus(int id) override;
    int FocusedControl() override;
    void SelectAllText(int id, bool editControl) override;
    void ResetList(int id) override;
    void AddToList(int id, const std::wstring& text) override;
    void InsertInList(int id, int index, const std::wstring& text) override;
    void SelectInList(int id, int index) override;
    int GetSliderPos(int id) override;
    void SetSliderPos(int id, int pos) override;
    void ShowArtBytes(const BYTE* bytes, ULONG size) override;
    void ShowDefaultArt() override;
    bool ShowWarning(KxFieldWarning which, int id, const std::wstring& text, const std::wstring& title) override;
    void HideWarning(KxFieldWarning which) override;
    std::wstring ResourceString(UINT id) override;
    void ShowMessage(UINT textId, UINT captionId) override;

    // IKxArtDropOwner: what the drop target asks before it takes a file
    bool IsDropOwnerWindow() override { return ::IsWindow(m_hWnd) != FALSE; }
    bool GetArtScreenRect(RECT* rect) override;
    int GetDropItemCount() override { return 1; }
    DWORD GetArtValueFlags() override { return m_model.m_tags.artFlags; }
    bool CanAcceptArtwork() override { return m_model.CanAcceptArtwork(); }

    // INetArtLookupOwner: the lookup's answer, on the dialog's thread
    HWND LookupWindow() override { return m_hWnd; }
    void EnableControl(int id, bool enable) override { Enable(id, enable); }
    bool ControlHasText(int id) override;
    bool PrevStepEnabled() override { return m_model.m_prevEnabled != FALSE; }
    bool NextStepEnabled() override { return m_model.m_nextEnabled != FALSE; }
    void SetArtCommandsEnabled(bool enabled) override { m_art.m_bArtCommandsEnabled = enabled ? TRUE : FALSE; }
    bool HasArtBytes() override { return m_model.m_pArtBytes && m_model.m_nArtSize > 0; }
    bool ShowFoundArt(const BYTE* bytes, ULONG size) override;
    void ShowNoArt() override;

    HWND Item(int id) const { return ::GetDlgItem(m_hWnd, id); }
};
