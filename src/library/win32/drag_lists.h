// The add-music dialog's two lists with their drag and key handling. CListCtrlDragFrom (the
// tracks) lets rows be dragged onto the chosen list; CListCtrlSelfDrag (the chosen tracks) lets
// rows be dragged to a new place in itself. Neither holds row data or changes anything: at the end
// of a gesture each posts a message to its parent, which acts on the list's selection.
#pragma once

#include "library/drag_insert_position.h"
#include "ui/common_control_wrappers.h"

// Posted to the parent; they carry no rows.
const UINT WMU_ADD_SELECTED = 0x83E9;     // from the tracks: add what is selected there
const UINT WMU_REMOVE_SELECTED = 0x83EA;  // from the chosen list: remove what is selected there
const UINT WMU_MOVE_SELECTED = 0x83EB;    // from the chosen list: move the selection, lParam = insert position

// What both lists share: the drag image of the selected rows, the start and end of a drag with
// its capture, Ctrl+A, and the image's end with the window.
class CKxDragListBase : public CListCtrl {
public:
    CKxDragListBase();
    ~CKxDragListBase() override;

    // LVN_BEGINDRAG of this list, passed on by the parent.
    void OnBeginDrag(LRESULT* pResult);
    // 1 with m_pDragImage made from the selected rows, 0 with nothing made.
    BOOL BuildDragImage();

    HIMAGELIST m_pDragImage;  // owned; null outside a drag
    HCURSOR m_hCursorDrop;     // IDC_ARROW
    HCURSOR m_hCursorNoDrop;   // IDC_NO
    BOOL m_bDragging;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    virtual void OnDragMove(POINT screen) = 0;
    virtual void OnDragDrop(POINT client, POINT screen) = 0;
    virtual void OnKeyUp(UINT key) = 0;
    // Posts to the parent if it is a window.
    void PostToParent(UINT message, LPARAM lParam = 0);
    void EndDragImage();
    void DeleteDragImage();
};

class CListCtrlDragFrom : public CKxDragListBase {
public:
    // The parent's chosen list: the one target of a drag.
    CWnd* m_pTarget = nullptr;

protected:
    void OnDragMove(POINT screen) override;
    void OnDragDrop(POINT client, POINT screen) override;
    void OnKeyUp(UINT key) override;  // Space adds the selection

private:
    HWND TargetWindow() const;
};

class CListCtrlSelfDrag : public CKxDragListBase, private IKxRowGeometry {
public:
    // Where a point of the client area puts the dragged rows, 0 to the number of rows.
    int InsertPosition(POINT client) { return KxInsertPosition(*this, client); }

protected:
    void OnDragMove(POINT screen) override;
    void OnDragDrop(POINT client, POINT screen) override;
    void OnKeyUp(UINT key) override;  // Delete removes the selection

private:
    int HitRow(POINT point) override { return HitTest(point); }
    bool RowBounds(int row, RECT* bounds) override { return GetItemRect(row, bounds, LVIR_BOUNDS) != FALSE; }
    RECT ClientRect() override {
        RECT r;
        GetClientRect(&r);
        return r;
    }
    int RowCount() override { return GetItemCount(); }
};
