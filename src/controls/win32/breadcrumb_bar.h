// The breadcrumb bars: a path as a row of tool-bar buttons, one a level, each with a drop-down
// whose menu the owner fills. CBreadCrumbBar holds the buttons, the path splitting and the
// drop-down; CKxBreadCrumb draws the buttons with the module's pictures; CKxBreadCrumbEx tells its
// owner before crumbs go and cuts the row when a crumb is clicked.
#pragma once

#include "controls/breadcrumb_row.h"
#include "ui/common_control_wrappers.h"
#include "ui/gdi_handles.h"
#include "ui/menu.h"

class CBreadCrumbBar : public CToolBarCtrl, public IKxCrumbButtons {
public:
    CBreadCrumbBar();
    ~CBreadCrumbBar() override;

    // id must be 59392: the drop-down handler listens under this identifier.
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // Removes every button (telling nobody), adds the start button. Always 1.
    BOOL ResetCrumbs();
    bool SetCrumbPath(LPCWSTR path, int firstIndex, bool lastHasDropDown);
    void* GetButtonData(int index) const;
    void SetButtonData(int index, void* data);

    CMenu m_menu;       // the popup of the open drop-down
    BOOL m_bMenuOpen;   // 1 while it is shown

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    // A notification the bar sent itself: TRUE when handled, with the answer in *pResult.
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual LRESULT OnCustomDraw(NMTBCUSTOMDRAW* draw);
    // A WM_COMMAND the bar sent itself; the plain bar passes it to its parent.
    virtual void OnCrumbCommand(WPARAM wParam);
    // A key while the bar has the focus; true when the bar used it.
    bool OnBarKey(UINT key);
    void ForwardToParent(UINT message, WPARAM wParam, LPARAM lParam);

public:
    // IKxCrumbButtons, on the tool bar
    int ButtonCount() override { return GetButtonCount(); }
    void DeleteButton(int index) override { CToolBarCtrl::DeleteButton(index); }
    bool AddStartButton() override;
    bool AddButtons(const std::vector<UINT>& commands) override;
    void SetButtonText(UINT command, LPCWSTR text, BYTE style) override;
    int CommandToIndex(UINT command) override { return CToolBarCtrl::CommandToIndex(command); }
    void AutoSize() override { CToolBarCtrl::AutoSize(); }

protected:
    CKxCrumbRow m_row;

private:
    void OnDropDown(NMTOOLBARW* toolbar);
};

class CKxBreadCrumb : public CBreadCrumbBar {
public:
    CKxBreadCrumb();
    ~CKxBreadCrumb() override;

    // Module bitmaps 108, 109, 200, 201: 32 bits with alpha, loaded at construction.
    CKxBitmap m_hArrowBitmap;
    CKxBitmap m_hHotBitmap;
    CKxBitmap m_hPressedBitmap;
    CKxBitmap m_hFrameBitmap;
    int m_nArrowWidth;
    int m_nBarHeight;
    int m_nBitmapWidth, m_nBitmapHeight;  // of bitmap 109

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnCustomDraw(NMTBCUSTOMDRAW* draw) override;

private:
    void DrawButton(NMTBCUSTOMDRAW* draw);
};

class CKxBreadCrumbEx : public CKxBreadCrumb {
public:
    // Tells the callback (kind 1), then SetCrumbPath.
    bool SetCrumbs(int firstIndex, LPCWSTR path, bool lastHasDropDown);
    // Tells the callback (kind 0, -1), then removes every button.
    void ClearCrumbs();

    KxCrumbTruncateProc m_pfnTruncate = nullptr;  // may be null
    void* m_pTruncateOwner = nullptr;

protected:
    // Commands 5000 to 5100: tell the callback, cut the row behind the crumb, tell the parent.
    void OnCrumbCommand(WPARAM wParam) override;

private:
    void ShareCallback() {
        m_row.m_pfnTruncate = m_pfnTruncate;
        m_row.m_pTruncateOwner = m_pTruncateOwner;
    }
};
