// CDlgVideoProperty: a video's preview and six rows (width, height, location, size, duration),
// with Previous and Next through the host's view. The model reads and decides; the window shows.
#pragma once

#include "frame/win32/skinned_dialog.h"
#include "resources/dialogs/template_ids.h"
#include "imaging/video_property_model.h"
#include "imaging/win32/property_preview.h"
#include "imaging/win32/property_texts.h"
#include "ui/dialog.h"

class CDlgVideoProperty : public CKxSkinnedDialog, private IVideoPropertyControls {
public:
    enum { IDD = KX_IDD_VIDEOPROPERTY };
    enum : int {
        IDC_HEADING = 1073,
        IDC_CLOSE = 1074,
        IDC_PREVIEW = 1075,
        IDC_LIST = 1076,
        IDC_PREVIOUS = 1077,
        IDC_NEXT = 1078,
    };

    // The site, folder and item stay the caller's.
    CDlgVideoProperty(IKxContentSite* pSite, IKxContentFolder* pFolder, KxPcPidl item, CWnd* pParentWnd = nullptr);
    ~CDlgVideoProperty() override;

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
    void SetRowValue(int row, LPCWSTR text) override;
    void ShowVideoPreview(HBITMAP bitmap) override;
    void ShowVideoFallback() override;
    void DeleteBitmap(HBITMAP bitmap) override { DeleteObject(bitmap); }
    HWND OwnerWindow() override { return m_hWnd; }

    // The preview needs the imaging platform, and no other part of the process is bound to have
    // started it while this dialog runs: the dialog starts it for itself, as the image dialog
    // does, since without a start every preview would fail.
    CGdiplusSession m_gdiplus;
    CKxPropertyTexts m_texts;
    CVideoPropertyModel m_model;
    CPropertyPreview m_preview;
    BOOL m_bFirstShow = TRUE;
    LONG m_nPreviewWidth = 0, m_nPreviewHeight = 0;
};

