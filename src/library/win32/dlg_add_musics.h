// CDlgAddMusics: builds an ordered list of tracks. The left list shows one folder's tracks, reached
// through the breadcrumb bar or the search box; the right list holds the chosen tracks. The window
// gathers what the user does and hands it to the model, which decides and keeps the rows.
#pragma once

#include <string>

#include "controls/win32/breadcrumb_bar.h"
#include "frame/win32/skinned_dialog.h"
#include "library/add_musics_model.h"
#include "library/win32/drag_lists.h"
#include "resources/dialogs/add_musics_ids.h"

class CDlgAddMusics : public CKxSkinnedDialog, private IAddMusicsBar, private IAddMusicsControls {
public:
    enum { IDD = KX_IDD_ADDMUSICS };

    // The site, root folder and given tracks stay the host's; the root name is copied.
    CDlgAddMusics(ULONG_PTR reserved, IKxContentSite* pSite, IKxContentFolder* pRootFolder, IKxTrackList* pGivenTracks,
                  LPCWSTR pszRootName, CWnd* pParentWnd = nullptr);
    ~CDlgAddMusics() override;

    // After the modal loop: the chosen identifiers in their order, for the host to free.
    HRESULT HandOverChosen(INT* count, KxPidl** array) { return m_model.HandOverChosen(count, array); }

    CListCtrlDragFrom m_listTracks;  // 1063
    CListCtrlSelfDrag m_listChosen;  // 1064
    CKxBreadCrumbEx m_breadCrumb;    // 59392
    CAddMusicsModel m_model;         // the tree, the rows, m_hrResult
    BOOL m_bFirstShow;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;
    KxMessageMap GetMessageMap() const override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnShowWindow(BOOL bShow, UINT nStatus) override;
    void OnDestroy() override;
    BOOL OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
    void OnOK() override;      // button 1065, and IDOK
    void OnCancel() override;  // button 1060, and IDCANCEL

private:
    HRESULT InitBreadCrumb();
    void PlaceBarAndColumns();
    void OnSearchUpdate();
    void OnAddButton();
    void OnRemoveButton();
    void OnTracksDispInfo(NMHDR* header, LRESULT* pResult);
    void OnChosenDispInfo(NMHDR* header, LRESULT* pResult);
    void OnTracksDblClk(NMHDR* header, LRESULT* pResult);
    void OnChosenDblClk(NMHDR* header, LRESULT* pResult);
    void OnTracksChanged(NMHDR* header, LRESULT* pResult);
    void OnChosenChanged(NMHDR* header, LRESULT* pResult);
    void OnTracksBeginDrag(NMHDR* header, LRESULT* pResult);
    void OnChosenBeginDrag(NMHDR* header, LRESULT* pResult);
    void OnCrumbDropDown(NMHDR* header, LRESULT* pResult);
    void OnMenuEntry(UINT command);

    // IAddMusicsBar
    int GetButtonCount() override { return m_breadCrumb.m_hWnd ? m_breadCrumb.GetButtonCount() : 0; }
    int CommandToIndex(UINT command) override { return m_breadCrumb.CommandToIndex(command); }
    void* GetButtonData(int index) override { return m_breadCrumb.GetButtonData(index); }
    void SetButtonData(int index, void* data) override { m_breadCrumb.SetButtonData(index, data); }
    bool SetCrumbs(int firstIndex, LPCWSTR path, bool lastHasDropDown) override {
        return m_breadCrumb.SetCrumbs(firstIndex, path, lastHasDropDown);
    }
    // IAddMusicsControls
    HWND OwnerWindow() override { return m_hWnd; }
    void SetSearchText(LPCWSTR text) override { SetDlgItemText(KX_IDC_ADDMUSICS_SEARCH, text); }
    void SetTrackCount(int count) override;
    void SetChosenCount(int count) override;
    std::vector<int> SelectedTracks() override { return Selected(m_listTracks); }
    std::vector<int> SelectedChosen() override { return Selected(m_listChosen); }
    void SelectChosenRows(int first, int count) override;
    void EnsureChosenVisible(int row) override { m_listChosen.EnsureVisible(row, FALSE); }

    static std::vector<int> Selected(CListCtrl& list);
    void EnableButton(int id, bool enable);
};
