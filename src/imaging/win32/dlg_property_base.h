// What both properties dialogs' windows share: the heading, Close, Previous and Next through the
// host's view (the buttons and the Left and Right keys), the list's two columns, the preview with
// the imaging platform it needs, and the end of the dialog. Each dialog names its controls, lists
// its messages and plays its own model's controls.
#pragma once

#include "frame/win32/skinned_dialog.h"
#include "imaging/property_item_model.h"
#include "imaging/win32/property_preview.h"
#include "imaging/win32/property_texts.h"
#include "ui/common_control_wrappers.h"
#include "ui/control_wrappers.h"
#include "ui/dialog.h"

class CDlgPropertyBase : public CKxSkinnedDialog, protected IPropertyDialogControls {
public:
    HRESULT Result() { return Model().m_hrResult; }

protected:
    struct ControlIds {
        int heading, list, preview, previous, next, close;
    };
    // `keyFocusesDirection`: Left on Next (Right on Previous) gives the button of the direction the
    // focus before the step, which may move it on.
    CDlgPropertyBase(UINT idd, const ControlIds& ids, bool keyFocusesDirection, CWnd* pParentWnd);

    // The dialog's model, a member of the dialog: constructed after this base.
    virtual CPropertyItemModel& Model() = 0;
    // What a dialog does at OnInitDialog once the common start has held, before Next takes the focus.
    virtual void OnStartDialog() {}

    // A missing site, folder or item gives 0x80070057 and closes the dialog at once; otherwise the
    // heading, the skin and the connection to the host's view, then OnStartDialog.
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* pDX) override;
    void OnDestroy() override;
    BOOL PreTranslateMessage(MSG* pMsg) override;

    // Rows of the dialogs' message tables.
    void OnPreviousButton() { Model().MoveToItem(true); }
    void OnNextButton() { Model().MoveToItem(false); }
    void OnCloseButton() { OnCancel(); }
    // The dialogs have no OK: Return on a control that is not a button does nothing.
    void OnReturn() {}

    // The list's full-row selection and label tips, and its two left-aligned columns with the
    // headings of strings 108 and 109: `firstWidthChange` is added to the first column's half of
    // the list's width and taken from the second's.
    void PrepareList(int firstWidthChange);

    CGdiplusSession m_gdiplus;  // first in, last out: the preview's pictures are GDI+ objects
    CKxPropertyTexts m_texts;
    CPropertyPreview m_preview;
    CListCtrl m_list;
    CButton m_btnPrevious, m_btnNext;

private:
    void EnablePrevious(bool enable) override { m_btnPrevious.EnableWindow(enable ? TRUE : FALSE); }
    void EnableNext(bool enable) override { m_btnNext.EnableWindow(enable ? TRUE : FALSE); }
    void FocusPrevious() override { m_btnPrevious.SetFocus(); }
    void FocusNext() override { m_btnNext.SetFocus(); }
    void DeleteBitmap(HBITMAP bitmap) override { DeleteObject(bitmap); }
    HWND OwnerWindow() override { return m_hWnd; }

    const ControlIds m_ids;
    const bool m_bKeyFocusesDirection;
};
