// CDragDropTarget: the OLE drop target of a tag dialog, registered on the dialog's own window so
// that every drag over the dialog comes here; the rules (library/drag_drop_rules.h) narrow it
// down to one picture file over the picture control. The dialog embeds the target: OLE's
// references are counted but never delete it, and the dialog revokes it before it goes.
#pragma once

#include <windows.h>
#include <ole2.h>

#include "base/owners.h"
#include "library/drag_drop_rules.h"

inline void KxGlobalFree(HGLOBAL block) { GlobalFree(block); }
// Owns a block of global memory and frees it.
typedef CKxUnique<HGLOBAL, &KxGlobalFree> CKxGlobal;

class CDragDropTarget : public IDropTarget, public CDragDropRules {
public:
    CDragDropTarget();
    // Frees the drag's data and revokes a registration still in place.
    virtual ~CDragDropTarget();
    CDragDropTarget(const CDragDropTarget&) = delete;
    CDragDropTarget& operator=(const CDragDropTarget&) = delete;

    // RegisterDragDrop on `hWnd`; with success `owner` becomes the dialog the rules ask.
    BOOL Register(HWND hWnd, IKxArtDropOwner* owner);
    // RevokeDragDrop, if registered.
    void Revoke();
    bool IsRegistered() const { return m_hWnd != nullptr; }
    // The CF_HDROP data of the drag in progress; null when there is none.
    HGLOBAL DropData() const { return m_hDropData.Get(); }

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID riid, void** ppv) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;
    // IDropTarget
    STDMETHODIMP DragEnter(IDataObject* pDataObj, DWORD grfKeyState, POINTL pt, DWORD* pdwEffect) override;
    STDMETHODIMP DragOver(DWORD grfKeyState, POINTL pt, DWORD* pdwEffect) override;
    STDMETHODIMP DragLeave() override;
    STDMETHODIMP Drop(IDataObject* pDataObj, DWORD grfKeyState, POINTL pt, DWORD* pdwEffect) override;

private:
    DWORD OnDragEnter(IDataObject* pDataObj);
    void OnDragLeave();

    CKxGlobal m_hDropData;
    HWND m_hWnd;  // the registered window
    LONG m_cRef;
};
