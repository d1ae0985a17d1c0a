// CDlgMulEditTag: tags set on several items at once, each field with a change box beside it. The
// decisions are CMultipleTagModel's; the controls, warnings, picture, drop and store link are the
// shared window side's (CDialogEditTag). Its own are the change notifications of its fields, the
// slider's scroll and the art commands that tick the art box.
#pragma once

#include "tags/multiple_tag_model.h"
#include "tags/win32/dialog_edit_tag.h"

class CDlgMulEditTag : public CDialogEditTag {
public:
    enum { IDD = KX_IDD_EDITMULTIPLETAGS };

    // The site, folder and items stay the caller's. `tipMaker` as for the single-item dialog.
    CDlgMulEditTag(IKxContentSite* site, IKxContentFolder* folder, UINT itemCount, const KxPcPidl* items,
                   CWnd* pParentWnd = nullptr, IEditTipMaker* tipMaker = nullptr);
    ~CDlgMulEditTag() override;

    CMultipleTagModel m_model;  // m_hrResult is what the host gets after OK

protected:
    CEditTagDialogModel& Model() override { return m_model; }
    bool PreTranslateKey(MSG* pMsg) override;
    BOOL OnInitDialog() override;
    KxMessageMap GetMessageMap() const override;
    void OnShowWindow(BOOL bShow, UINT nStatus) override;
    BOOL OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

private:
    void OnOK() override;
    template <int Id>
    void OnFieldChange() {
        m_model.OnFieldChanged(Id);
    }
    template <int Id>
    void OnSelChange() {
        m_model.OnSelectionChanged(Id);
    }
    void OnBrowseArt();
    void OnPasteArt();
    void OnRemoveArt();
};
