// What both properties dialogs' models share: the item on show with the host's objects that read
// it, the walk through the host's view, the result for the host, and what the models need of any
// properties dialog's window.
#pragma once

#include "imaging/property_view_walk.h"

// The dialog's side of both models: Previous and Next, the owner of the host's objects and the
// deletion of the bitmaps the host hands over.
class IPropertyDialogControls : public IPropertyWalkControls {
public:
    // DeleteObject of a bitmap that the host handed over.
    virtual void DeleteBitmap(HBITMAP bitmap) = 0;
    // The window that owns the host's property objects.
    virtual HWND OwnerWindow() = 0;

protected:
    ~IPropertyDialogControls() = default;
};

class CPropertyItemModel {
public:
    // The site, folder and item stay the caller's; the dialog outlives the model.
    CPropertyItemModel(IKxContentSite* site, IKxContentFolder* folder, KxPcPidl item, IPropertyDialogControls& dialog)
        : m_pSite(site), m_pFolder(folder), m_item(item), m_dialog(dialog) {}
    CPropertyItemModel(const CPropertyItemModel&) = delete;
    CPropertyItemModel& operator=(const CPropertyItemModel&) = delete;

    // One step back or on in the host's view, with what the new item shows.
    virtual void MoveToItem(bool previous) = 0;
    // WM_DESTROY: lets go of what the model holds of the host; here the view.
    virtual void Release() { m_walk.Release(); }

    IKxContentSite* m_pSite;
    IKxContentFolder* m_pFolder;
    KxPcPidl m_item;
    HRESULT m_hrResult = S_OK;
    CPropertyViewWalk m_walk;

protected:
    ~CPropertyItemModel() = default;
    // Asks the folder for the item's properties and preview objects, owned by the dialog's window.
    // 0x80004003 for a missing item or folder; also kept in m_hrResult when either object is
    // missing. An object handed out with a failure is released all the same.
    HRESULT OpenItemObjects(KxPcPidl item, CKxComPtr<IKxItemProperties>& properties,
                            CKxComPtr<IKxItemPreview>& preview);

    IPropertyDialogControls& m_dialog;
};
