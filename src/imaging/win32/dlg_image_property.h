// CDlgImageProperty: a picture's preview and its 21 properties in an owner-data list, with
// Previous and Next through the host's view. The model reads and decides; the window shows.
#pragma once

#include "imaging/image_property_model.h"
#include "imaging/win32/dlg_property_base.h"
#include "resources/dialogs/image_property_ids.h"

class CDlgImageProperty : public CDlgPropertyBase, private IImagePropertyControls {
public:
    enum { IDD = KX_IDD_IMAGEPROPERTY };

    // The site, folder and item stay the caller's.
    CDlgImageProperty(IKxContentSite* pSite, IKxContentFolder* pFolder, KxPcPidl item, CWnd* pParentWnd = nullptr);

protected:
    KxMessageMap GetMessageMap() const override;
    CPropertyItemModel& Model() override { return m_model; }
    void OnStartDialog() override;
    void OnShowWindow(BOOL bShow, UINT nStatus) override;

private:
    void OnGetDispInfo(NMHDR* pHeader, LRESULT* pResult);
    void SetRowCount(int count) override;
    bool LoadPreviewFromFile(LPCWSTR path, int rotateFlip, LONG* width, LONG* height) override;
    bool LoadPreviewFromBitmap(HBITMAP bitmap, int rotateFlip, LONG* width, LONG* height) override;

    CImagePropertyModel m_model;
    BOOL m_bFirstShow = TRUE;
};
