// CDlgVideoProperty: a video's preview and six rows (width, height, location, size, duration),
// with Previous and Next through the host's view. The model reads and decides; the window shows.
#pragma once

#include "imaging/video_property_model.h"
#include "imaging/win32/dlg_property_base.h"
#include "resources/dialogs/video_property_ids.h"

// The preview needs the imaging platform, and no other part of the process is bound to have
// started it while this dialog runs: the dialog starts it for itself (the base's session), as the
// image dialog does, since without a start every preview would fail.
class CDlgVideoProperty : public CDlgPropertyBase, private IVideoPropertyControls {
public:
    enum { IDD = KX_IDD_VIDEOPROPERTY };

    // The site, folder and item stay the caller's.
    CDlgVideoProperty(IKxContentSite* pSite, IKxContentFolder* pFolder, KxPcPidl item, CWnd* pParentWnd = nullptr);

protected:
    KxMessageMap GetMessageMap() const override;
    CPropertyItemModel& Model() override { return m_model; }
    void OnShowWindow(BOOL bShow, UINT nStatus) override;

private:
    // The list holds its own texts: a request for one is answered with nothing.
    void OnGetDispInfo(NMHDR*, LRESULT* pResult) { *pResult = 0; }
    void SetRowValue(int row, LPCWSTR text) override { m_list.SetItemText(row, 1, text); }
    void ShowVideoPreview(HBITMAP bitmap) override { m_preview.ShowBitmap(bitmap); }
    void ShowVideoFallback() override;

    CVideoPropertyModel m_model;
    BOOL m_bFirstShow = TRUE;
    LONG m_nPreviewWidth = 0, m_nPreviewHeight = 0;
};
