// CDlgImageProperty: a picture's preview and its 21 properties in an owner-data list, with
// Previous and Next through the host's view. The model reads and decides; the window shows.
#pragma once

#include "frame/win32/skinned_dialog.h"
#include "resources/dialogs/template_ids.h"
#include "imaging/image_property_model.h"
#include "imaging/win32/property_preview.h"
#include "imaging/win32/property_texts.h"
#include "ui/dialog.h"

class CDlgImageProperty : public CKxSkinnedDialog, private IImagePropertyControls {
public:
    enum { IDD = KX_IDD_IMAGEPROPERTY };
    enum : int {
        IDC_LIST = 1041,
        IDC_PREVIOUS = 1042,
        IDC_PREVIEW = 1044,
        IDC_NEXT = 1047,
        IDC_HEADING = 10034,
        IDC_CLOSE = 10035,
    };

    // The site, folder and item stay the caller's.
    CDlgImageProperty(IKxContentSite* pSite, IKxContentFolder* pFolder, KxPcPidl item, CWnd* pParentWnd = nullptr);
    ~CDlgImageProperty() override;

    HRESULT Result() const { return m_model.m_hrResult; }

protected:
    BOOL OnInitDialog() override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
    void OnShowWindow(BOOL bShow, UINT nStatus) override;
    void OnDestroy() override;
    BOOL PreTranslateMessage(MSG* pMsg) override;

private:
    void EnablePrevious(bool enable) override;
    void EnableNext(bool enable) override;
    void FocusPrevious() override;
    void FocusNext() override;
    void SetRowCount(int count) override;
    bool LoadPreviewFromFile(LPCWSTR path, int rotateFlip, LONG* width, LONG* height) override;
    bool LoadPreviewFromBitmap(HBITMAP bitmap, int rotateFlip, LONG* width, LONG* height) override;
    void DeleteBitmap(HBITMAP bitmap) override;
    HWND OwnerWindow() override { return m_hWnd; }

    CGdiplusSession m_gdiplus;  // first in, last out: the pictures below are GDI+ objects
    CKxPropertyTexts m_texts;
    CImagePropertyModel m_model;
    CPropertyPreview m_preview;
    BOOL m_bFirstShow = TRUE;
};


// Common to both properties dialogs: Left or Right released on the focused Previous or Next
// button, with no Shift, Control, Alt or Windows key down.
KxWalkKey KxWalkKeyOfMessage(const MSG& msg, HWND dialog, int previousId, int nextId);
// Two columns, left-aligned, with the headings of strings 108 and 109; `firstWidthChange` is
// added to the first column's half of the list's width and taken from the second's.
void KxInsertPropertyColumns(HWND list, IKxPropertyTextSource& texts, int firstWidthChange);
