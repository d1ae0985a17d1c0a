// CDialogEditTag: the window side that both tag dialogs share. It answers the controls interface
// of the models by control id, shows the field warnings as balloon tips and the art in the
// picture control, opens the picture's context menu and the file dialog, takes a picture file
// dropped on the dialog or pasted, relays the mouse to the tool tips of its buttons, shows the
// hand over the store link and opens the store. Each dialog names its controls and its model.
#pragma once

#include <string>

#include "controls/win32/static_extension.h"
#include "dialogs/edit_warning_tip.h"
#include "dialogs/win32/name_tip_maker.h"
#include "frame/win32/skinned_dialog.h"
#include "imaging/album_art.h"
#include "imaging/win32/property_preview.h"  // CGdiplusSession
#include "library/win32/drag_drop_target.h"
#include "tags/art_menu_rules.h"
#include "tags/multiple_tag_model.h"
#include "tags/win32/art_picture.h"

// The controls of a tag dialog that the shared window side works with.
struct KxEditTagControlIds {
    int close;
    int browse;
    int remove;
    int picture;
    int store;
};

class CDialogEditTag : public CKxSkinnedDialog,
                       public IKxArtMenuOwner,
                       protected IMultipleTagControls,
                       private IKxArtDropOwner {
public:
    // `tipMaker` makes the warnings instead of the dialog's own maker (tests watch them through
    // it); it outlives the dialog.
    CDialogEditTag(UINT nIDTemplate, CWnd* pParentWnd, const KxEditTagControlIds& ids, IEditTipMaker* tipMaker);
    ~CDialogEditTag() override;

    BOOL PreTranslateMessage(MSG* pMsg) override;

    CGdiplusSession m_gdiplus;  // the dialog's own start of the imaging platform
    WCHAR m_szSkinFile[MAX_PATH];
    CNameTipMaker m_tipMaker;
    CEditWarningTip m_digitBalloon;
    CEditWarningTip m_lengthBalloon;
    CArtPicture m_picture;
    HWND m_tips[4];   // the tool tips of Close, Change..., Remove and the store link
    CAlbumArt m_art;  // the JPEG bytes of a chosen picture; its own start of the imaging platform
    CDragDropTarget m_dropTarget;  // a picture file dropped on the picture control
    CStaticExtension m_artControl;  // the picture: a right click or the context-menu key opens the art menu

    // Shows and keeps the picture in `path` as the new art, scaled into the thumbnail's box and
    // stored as JPEG (a small JPEG as it is). False when it is no picture or its bytes cannot be made.
    bool LoadArtFromFile(LPCWSTR path) override;
    // The open dialog with the pictures' filter (string 106); false when cancelled.
    bool BrowseForArt();
    // The picture's context menu: Choose, Paste and Remove as the art state and the clipboard
    // allow (a clipboard bitmap is encoded now). The picture static calls it on a right click and
    // on the keyboard's context-menu key or Shift+F10. It opens at the cursor when the cursor is
    // over the picture (a right click); from the keyboard the cursor may be anywhere, and the
    // menu opens at the picture's middle instead.
    void ShowArtMenu() override;
    // Menu command 9001: the file or the bitmap that the menu found on the clipboard.
    bool PasteArt();

protected:
    // The dialog's model, for what the shared side decides through it.
    virtual CEditTagDialogModel& Model() = 0;
    // The window side's part of OnInitDialog, before the model reads: the skin package's path
    // and the picture control.
    void InitSharedControls();
    // ... and after it: the drop target and the tool tips.
    void InitDropAndTips();
    // A key before the tool tips and the keystroke rule see it; true ends the message.
    virtual bool PreTranslateKey(MSG* pMsg);
    // Whether the art menu gets the online entry 9003 (asked as the menu is built); the dialog
    // for several items has no lookup.
    virtual bool WantsLookupEntry() { return false; }
    BOOL OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
    void OnDestroy() override;
    void OnClose();
    void OnStore();

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
    void RemoveFromList(int id, int index) override;
    void SetList(int id, const std::vector<std::wstring>& values) override;
    int GetSliderPos(int id) override;
    void SetSliderPos(int id, int pos) override;
    void ShowArtBytes(const BYTE* bytes, ULONG size) override;
    void ShowDefaultArt() override;
    bool ShowWarning(KxFieldWarning which, int id, const std::wstring& text, const std::wstring& title) override;
    void HideWarning(KxFieldWarning which) override;
    std::wstring ResourceString(UINT id) override;
    void ShowMessage(UINT textId, UINT captionId) override;
    // IMultipleTagControls
    bool IsChecked(int id) override;
    void SetChecked(int id, bool checked) override;
    bool GetSelectedText(int id, std::wstring* text) override;

    HWND Item(int id) const { return ::GetDlgItem(m_hWnd, id); }

    const KxEditTagControlIds m_ids;

private:
    void AddToolTips();
    void ShowArtMenuAt(POINT at);

    // IKxArtDropOwner: what the drop target asks before it takes a file
    bool IsDropOwnerWindow() override { return ::IsWindow(m_hWnd) != FALSE; }
    bool GetArtScreenRect(RECT* rect) override;
    int GetDropItemCount() override { return static_cast<int>(Model().m_itemCount); }
    DWORD GetArtValueFlags() override { return Model().m_tags.artFlags; }
    bool CanAcceptArtwork() override { return Model().CanAcceptArtwork(); }
};
