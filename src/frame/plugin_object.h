// The plug-in object: the one creatable class of the library, the host's IKxCommonResource.
// It comes up only with its resource library ComRcRes.dll, loaded from the plug-in's own folder.
#pragma once

#include "frame/plugin_platform.h"
#include "frame/vn_unknown.h"
#include "kx/IKxCommonResource.h"

class KxComResPlginPluginObj : public CVnUnknown, public IKxCommonResource {
public:
    // The class table's create function: a new object with one reference in *out.
    static HRESULT CreateInstance(IUnknown* outer, CVnUnknown** out);

    // IUnknown of IKxCommonResource: the outer unknown's.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override { return OuterQueryInterface(riid, ppv); }
    ULONG STDMETHODCALLTYPE AddRef() override { return OuterAddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return OuterRelease(); }

    HRESULT STDMETHODCALLTYPE NondelegatingQueryInterface(REFIID riid, void** ppv) override;
    HRESULT Init() override;
    void FinalRelease() override;

    HRESULT STDMETHODCALLTYPE GetResourceString(UINT stringId, LPWSTR* ppszText) override;
    HRESULT STDMETHODCALLTYPE LoadResourceString(UINT stringId, LPWSTR pszBuffer, INT cchBuffer,
                                                 INT* pcchNeeded) override;
    HRESULT STDMETHODCALLTYPE ShowNameDialog(HWND hwndParent, INT nameKind, INT mode, LPCWSTR pszInitialName,
                                             LPWSTR* ppszName) override;
    HRESULT STDMETHODCALLTYPE ShowEditTagDialog(HWND hwndParent, IKxContentSite* pSite, IKxContentFolder* pFolder,
                                                UINT itemCount, const KxPcPidl* pItems) override;
    HRESULT STDMETHODCALLTYPE ShowAddToPlaylistDialog(HWND hwndParent, IKxContentFolder* pFolder,
                                                      LPCWSTR pszSuggestedName, KxPidl* ppItem,
                                                      LPWSTR* ppszNewName) override;
    HRESULT STDMETHODCALLTYPE ShowAddToSlideshowDialog(HWND hwndParent, IKxContentFolder* pFolder,
                                                       LPCWSTR pszSuggestedName, KxPidl* ppItem,
                                                       LPWSTR* ppszNewName) override;
    HRESULT STDMETHODCALLTYPE ShowMessageBox(HWND hwndParent, LPCWSTR pszText, LPCWSTR pszCaption,
                                             UINT flags) override;
    HRESULT STDMETHODCALLTYPE CreateBalloonTip(REFIID riid, HWND hwndTarget, LPCWSTR pszText, LPCWSTR pszTitle,
                                               UINT flags, void** ppTip) override;
    HRESULT STDMETHODCALLTYPE ShowImagePropertyDialog(HWND hwndParent, IKxContentSite* pSite,
                                                      IKxContentFolder* pFolder, KxPcPidl item) override;
    HRESULT STDMETHODCALLTYPE ShowVideoPropertyDialog(HWND hwndParent, IKxContentSite* pSite,
                                                      IKxContentFolder* pFolder, KxPcPidl item) override;
    HRESULT STDMETHODCALLTYPE ShowAddMusicsDialog(DWORD reserved, IKxContentSite* pSite,
                                                  IKxContentFolder* pRootFolder, LPCWSTR pszRootName,
                                                  IKxTrackList* pTrackList, INT* pCount, KxPidl** ppItems) override;

    // What the dialogs read of the object.
    HMODULE ResourceLibrary() const { return m_hResourceLibrary.Get(); }
    LPCWSTR SkinFile() const { return m_szSkinFile; }
    LPCWSTR DefaultCaption() const { return m_szDefaultCaption; }
    HRESULT OleInitializeResult() const { return m_hrOleInitialize; }

    static constexpr int kSkinFileChars = 280;
    static constexpr int kDefaultCaptionChars = 260;
    static constexpr UINT kDefaultCaptionString = 188;

protected:
    explicit KxComResPlginPluginObj(IUnknown* outer);
    ~KxComResPlginPluginObj() override = default;

private:
    CKxPlatformModule m_hResourceLibrary;  // ComRcRes.dll
    WCHAR m_szSkinFile[kSkinFileChars];
    WCHAR m_szDefaultCaption[kDefaultCaptionChars];
    HRESULT m_hrOleInitialize;
};
