// CDlgSingEditTag: the tags of one item, with Previous and Next through the host's view. The
// decisions are CSingleTagModel's; the controls, warnings, picture, drop and store link are the
// shared window side's (CDialogEditTag). Its own are the step buttons and keys and the help
// button, a flat button that opens the help balloon.
#pragma once

#include "controls/win32/flat_button.h"
#include "tags/single_tag_model.h"
#include "tags/win32/dialog_edit_tag.h"
#include "tags/win32/net_art_lookup.h"

class CDlgSingEditTag : public CDialogEditTag, private INetArtLookupOwner {
public:
    enum { IDD = KX_IDD_EDITSINGLETAGS };

    // The site, folder and items stay the caller's. `tipMaker` makes the warnings instead of the
    // dialog's own maker (tests watch them through it); it outlives the dialog.
    CDlgSingEditTag(IKxContentSite* site, IKxContentFolder* folder, UINT itemCount, const KxPcPidl* items,
                    CWnd* pParentWnd = nullptr, IEditTipMaker* tipMaker = nullptr);
    ~CDlgSingEditTag() override;

    CSingleTagModel m_model;    // m_hrResult is what the host gets after OK
    IKxBalloonTip* m_helpBalloon;
    CButtonFlat m_helpButton;      // 1029, with the system's question icon
    CNetArtLookup m_lookup{*this};  // menu command 9003: the art from the content manager

protected:
    CEditTagDialogModel& Model() override { return m_model; }
    bool PreTranslateKey(MSG* pMsg) override;
    bool WantsLookupEntry() override;
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
    template <int Id>
    void OnListNeeded() {
        m_model.FillListOnDemand(Id);
    }
    void OnPrevItem();
    void OnNextItem();
    void OnRemoveArt();
    void OnBrowseArt();
    void OnPasteArt();
    void OnLookupArt();
    void OnHelp();
    void StepWithWaitCursor(bool forward);

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
};
