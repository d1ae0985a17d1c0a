// The one interface of the common-resource plug-in: localised strings, the modal dialogs and the
// balloon tips. Create the object with class CLSID_KxComResPlginPluginObj through the library's
// DllGetClassObject and ask for IID_IKxCommonResource.
#pragma once

#include "kx/KxPlatform.h"
#include "kx/KxContentTree.h"
#include "kx/IKxBalloonTip.h"

// {EB8BC225-FFEA-4DD4-A8DE-A6A71E93E059}
KX_DEFINE_IID(CLSID_KxComResPlginPluginObj, 0xEB8BC225, 0xFFEA, 0x4DD4, 0xA8, 0xDE, 0xA6, 0xA7, 0x1E, 0x93, 0xE0,
              0x59);
// {8DC5F236-FC4F-4B15-8BF7-2B56993A2792}
KX_DEFINE_IID(IID_IKxCommonResource, 0x8DC5F236, 0xFC4F, 0x4B15, 0x8B, 0xF7, 0x2B, 0x56, 0x99, 0x3A, 0x27, 0x92);

// Kinds of name for ShowNameDialog (1 to 14) and its modes.
enum : int { KX_NAMEDLG_NEW = 1, KX_NAMEDLG_RENAME = 2 };

struct IKxCommonResource : public IUnknown {
    // String `stringId` of ComRcRes.dll in a CoTaskMem block that the caller frees.
    // 0x80070006: no such string; 0x80070002: no resource library.
    virtual HRESULT STDMETHODCALLTYPE GetResourceString(UINT stringId, LPWSTR* ppszText) = 0;
    // Copies the string into the caller's buffer; *pcchNeeded is its length with terminator.
    // A null buffer asks for the size; a short buffer gets a cut string and 0x8007007a.
    virtual HRESULT STDMETHODCALLTYPE LoadResourceString(UINT stringId, LPWSTR pszBuffer, INT cchBuffer,
                                                         INT* pcchNeeded) = 0;
    // mode 1 new, 2 rename. The name comes from CoTaskMemAlloc.
    virtual HRESULT STDMETHODCALLTYPE ShowNameDialog(HWND hwndParent, INT nameKind, INT mode, LPCWSTR pszInitialName,
                                                     LPWSTR* ppszName) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowEditTagDialog(HWND hwndParent, IKxContentSite* pSite,
                                                        IKxContentFolder* pFolder, UINT itemCount,
                                                        const KxPcPidl* pItems) = 0;
    // Either *ppItem (an existing playlist) or *ppszNewName is set, never both.
    virtual HRESULT STDMETHODCALLTYPE ShowAddToPlaylistDialog(HWND hwndParent, IKxContentFolder* pFolder,
                                                              LPCWSTR pszSuggestedName, KxPidl* ppItem,
                                                              LPWSTR* ppszNewName) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowAddToSlideshowDialog(HWND hwndParent, IKxContentFolder* pFolder,
                                                               LPCWSTR pszSuggestedName, KxPidl* ppItem,
                                                               LPWSTR* ppszNewName) = 0;
    // 0 (OK), 6 (Yes), 7 (No) or 0x800704c7 (cancelled).
    virtual HRESULT STDMETHODCALLTYPE ShowMessageBox(HWND hwndParent, LPCWSTR pszText, LPCWSTR pszCaption,
                                                     UINT flags) = 0;
    // riid: IID_IKxBalloonTip or IID_IKxBalloonTipControl. The tip has one reference, the caller's.
    virtual HRESULT STDMETHODCALLTYPE CreateBalloonTip(REFIID riid, HWND hwndTarget, LPCWSTR pszText,
                                                       LPCWSTR pszTitle, UINT flags, void** ppTip) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowImagePropertyDialog(HWND hwndParent, IKxContentSite* pSite,
                                                              IKxContentFolder* pFolder, KxPcPidl item) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowVideoPropertyDialog(HWND hwndParent, IKxContentSite* pSite,
                                                              IKxContentFolder* pFolder, KxPcPidl item) = 0;
    // The array and each of its identifiers come from CoTaskMemAlloc; the caller frees each
    // element, then the array.
    virtual HRESULT STDMETHODCALLTYPE ShowAddMusicsDialog(DWORD reserved, IKxContentSite* pSite,
                                                          IKxContentFolder* pRootFolder, LPCWSTR pszRootName,
                                                          IKxTrackList* pTrackList, INT* pCount,
                                                          KxPidl** ppItems) = 0;
};
