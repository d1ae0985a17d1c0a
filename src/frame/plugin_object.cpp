#include "frame/plugin_object.h"

#include "base/boundary.h"
#include "frame/module_instance.h"
#include "frame/plugin_platform.h"
#include "frame/string_lookup.h"
#include "frame/trace_log.h"

#include <cstring>

namespace {

// Path limit of the module's own file name; PathAppendW adds the file name behind it.
constexpr DWORD kModulePathLimit = 260;

// `fileName` beside the plug-in library, in a zeroed buffer of kSkinFileChars.
void BuildPathBesideModule(IKxPluginPlatform& platform, LPCWSTR fileName, WCHAR* path) {
    std::memset(path, 0, KxComResPlginPluginObj::kSkinFileChars * sizeof(WCHAR));
    platform.GetModuleFileNameW(g_hModuleInstance, path, kModulePathLimit);
    platform.PathRemoveFileSpecW(path);
    platform.PathAppendW(path, fileName);
}

HRESULT NoLibrary() { return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND); }

IKxDialogRunner* Runner() { return KxGetDialogRunner(); }

// The host's arguments as the dialog operations check them, beyond the documented preconditions.
// A parent that is given but names no window (one the host has destroyed) is refused with
// E_INVALIDARG before any dialog: a dialog cannot be owned by it, and running one without the
// owner the host meant would let the host's window take input during a modal dialog.
bool BadParent(HWND parent) {
    IKxPluginPlatform* platform = KxGetPluginPlatform();
    return parent && platform && !platform->IsWindow(parent);
}

// An out pointer that cannot be written is treated as a null one: the operation then answers as
// it does for null (refused before the dialog, or, where the dialog tests it, at its end).
template <typename T>
T* WritableOrNull(T* out) {
    IKxPluginPlatform* platform = KxGetPluginPlatform();
    return out && platform && platform->IsBadWritePtr(out, sizeof(T)) ? nullptr : out;
}

// An item array must be readable for all `count` items the host says it holds.
bool BadItemArray(const KxPcPidl* items, UINT count) {
    IKxPluginPlatform* platform = KxGetPluginPlatform();
    if (!platform) return false;
    if (count > static_cast<size_t>(-1) / sizeof(KxPcPidl)) return true;
    return platform->IsBadReadPtr(items, count * sizeof(KxPcPidl));
}

}  // namespace

KxComResPlginPluginObj::KxComResPlginPluginObj(IUnknown* outer)
    : CVnUnknown(outer), m_hrOleInitialize(E_FAIL) {
    m_szSkinFile[0] = L'\0';
    m_szDefaultCaption[0] = L'\0';
}

HRESULT KxComResPlginPluginObj::CreateInstance(IUnknown* outer, CVnUnknown** out) {
    TraceLog(L"S:KxComResPlginPluginObj::CreateInstance>>");
    KxComResPlginPluginObj* object = new (std::nothrow) KxComResPlginPluginObj(outer);
    if (out) *out = object;
    if (!object) {
        TraceLog(L"E:KxComResPlginPluginObj::CreateInstance>> Failed to create KxComResPlginPluginObj object");
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

HRESULT KxComResPlginPluginObj::Init() {
    TraceLog(L"S:KxComResPlginPluginObj::Init>>");
    IKxPluginPlatform* platform = KxGetPluginPlatform();
    m_hrOleInitialize = platform ? platform->OleInitialize() : E_FAIL;
    if (!g_hModuleInstance || !platform) return E_FAIL;

    WCHAR path[kSkinFileChars];
    BuildPathBesideModule(*platform, L"ComRcRes.dll", path);
    m_hResourceLibrary.Reset(platform->LoadLibraryW(path));
    if (m_hResourceLibrary) platform->SetModuleResourceHandle(m_hResourceLibrary.Get());

    BuildPathBesideModule(*platform, L"ComRcRes.bff", m_szSkinFile);
    platform->LoadStringW(m_hResourceLibrary.Get(), kDefaultCaptionString, m_szDefaultCaption, kDefaultCaptionChars);
    return m_hResourceLibrary ? S_OK : E_FAIL;
}

void KxComResPlginPluginObj::FinalRelease() {
    TraceLog(L"S:KxComResPlginPluginObj::FinalRelease>>");
    IKxPluginPlatform* platform = KxGetPluginPlatform();
    m_hResourceLibrary.Reset();
    if (m_hrOleInitialize >= 0 && platform) platform->OleUninitialize();
    InterlockedExchange(&m_cRef, 1);
}

HRESULT STDMETHODCALLTYPE KxComResPlginPluginObj::NondelegatingQueryInterface(REFIID riid, void** ppv) {
    TraceLog(L"S:KxComResPlginPluginObj::NondelegatingQueryInterface>>");
    if (ppv && IsEqualIID(riid, IID_IKxCommonResource)) {
        IKxCommonResource* resource = this;
        *ppv = resource;
        resource->AddRef();
        return S_OK;
    }
    return CVnUnknown::NondelegatingQueryInterface(riid, ppv);
}

HRESULT STDMETHODCALLTYPE KxComResPlginPluginObj::GetResourceString(UINT stringId, LPWSTR* ppszText) {
    return KxGuardStatus(L"KxComResPlginPluginObj::GetResourceString", [&]() -> HRESULT {
        IKxPluginPlatform* platform = KxGetPluginPlatform();
        if (!platform) return NoLibrary();
        return KxGetResourceString(*platform, m_hResourceLibrary.Get(), stringId, ppszText);
    });
}

HRESULT STDMETHODCALLTYPE KxComResPlginPluginObj::LoadResourceString(UINT stringId, LPWSTR pszBuffer, INT cchBuffer,
                                                                     INT* pcchNeeded) {
    return KxGuardStatus(L"KxComResPlginPluginObj::LoadResourceString", [&]() -> HRESULT {
        IKxPluginPlatform* platform = KxGetPluginPlatform();
        if (!platform) return NoLibrary();
        return KxLoadResourceString(*platform, m_hResourceLibrary.Get(), stringId, pszBuffer, cchBuffer, pcchNeeded);
    });
}

// The dialog operations: preconditions in the interface's order, then the dialog's runner.

HRESULT STDMETHODCALLTYPE KxComResPlginPluginObj::ShowNameDialog(HWND hwndParent, INT nameKind, INT mode,
                                                                 LPCWSTR pszInitialName, LPWSTR* ppszName) {
    return KxGuardStatus(L"KxComResPlginPluginObj::ShowNameDialog", [&]() -> HRESULT {
        if (!m_hResourceLibrary) return NoLibrary();
        if (BadParent(hwndParent)) return E_INVALIDARG;
        if (!Runner()) return E_NOTIMPL;
        return Runner()->ShowNameDialog(*this, hwndParent, nameKind, mode, pszInitialName, WritableOrNull(ppszName));
    });
}

HRESULT STDMETHODCALLTYPE KxComResPlginPluginObj::ShowEditTagDialog(HWND hwndParent, IKxContentSite* pSite,
                                                                    IKxContentFolder* pFolder, UINT itemCount,
                                                                    const KxPcPidl* pItems) {
    return KxGuardStatus(L"KxComResPlginPluginObj::ShowEditTagDialog", [&]() -> HRESULT {
        if (!m_hResourceLibrary) return NoLibrary();
        if (!pSite || !pFolder || !itemCount || !pItems) return E_INVALIDARG;
        if (BadItemArray(pItems, itemCount) || BadParent(hwndParent)) return E_INVALIDARG;
        if (!Runner()) return E_NOTIMPL;
        return Runner()->ShowEditTagDialog(*this, hwndParent, pSite, pFolder, itemCount, pItems);
    });
}

HRESULT STDMETHODCALLTYPE KxComResPlginPluginObj::ShowAddToPlaylistDialog(HWND hwndParent, IKxContentFolder* pFolder,
                                                                          LPCWSTR pszSuggestedName, KxPidl* ppItem,
                                                                          LPWSTR* ppszNewName) {
    return KxGuardStatus(L"KxComResPlginPluginObj::ShowAddToPlaylistDialog", [&]() -> HRESULT {
        if (!m_hResourceLibrary) return NoLibrary();
        if (!pFolder) return E_INVALIDARG;
        // Both outputs are needed: the host gets one or the other, and only the dialog knows which.
        if (!WritableOrNull(ppItem) || !WritableOrNull(ppszNewName) || BadParent(hwndParent)) return E_INVALIDARG;
        if (!Runner()) return E_NOTIMPL;
        return Runner()->ShowAddToPlaylistDialog(*this, hwndParent, pFolder, pszSuggestedName, ppItem, ppszNewName);
    });
}

HRESULT STDMETHODCALLTYPE KxComResPlginPluginObj::ShowAddToSlideshowDialog(HWND hwndParent, IKxContentFolder* pFolder,
                                                                           LPCWSTR pszSuggestedName, KxPidl* ppItem,
                                                                           LPWSTR* ppszNewName) {
    return KxGuardStatus(L"KxComResPlginPluginObj::ShowAddToSlideshowDialog", [&]() -> HRESULT {
        if (!m_hResourceLibrary) return NoLibrary();
        if (!pFolder) return E_INVALIDARG;
        // Both outputs are needed: the host gets one or the other, and only the dialog knows which.
        if (!WritableOrNull(ppItem) || !WritableOrNull(ppszNewName) || BadParent(hwndParent)) return E_INVALIDARG;
        if (!Runner()) return E_NOTIMPL;
        return Runner()->ShowAddToSlideshowDialog(*this, hwndParent, pFolder, pszSuggestedName, ppItem, ppszNewName);
    });
}

HRESULT STDMETHODCALLTYPE KxComResPlginPluginObj::ShowMessageBox(HWND hwndParent, LPCWSTR pszText,
                                                                 LPCWSTR pszCaption, UINT flags) {
    return KxGuardStatus(L"KxComResPlginPluginObj::ShowMessageBox", [&]() -> HRESULT {
        if (!m_hResourceLibrary) return NoLibrary();
        if (BadParent(hwndParent)) return E_INVALIDARG;
        if (!Runner()) return E_NOTIMPL;
        return Runner()->ShowMessageBox(*this, hwndParent, pszText, pszCaption, flags);
    });
}

HRESULT STDMETHODCALLTYPE KxComResPlginPluginObj::CreateBalloonTip(REFIID riid, HWND hwndTarget, LPCWSTR pszText,
                                                                   LPCWSTR pszTitle, UINT flags, void** ppTip) {
    return KxGuardStatus(L"KxComResPlginPluginObj::CreateBalloonTip", [&]() -> HRESULT {
        // The balloon tip tests its own preconditions.
        if (!Runner()) return E_NOTIMPL;
        return Runner()->CreateBalloonTip(*this, riid, hwndTarget, pszText, pszTitle, flags, ppTip);
    });
}

HRESULT STDMETHODCALLTYPE KxComResPlginPluginObj::ShowImagePropertyDialog(HWND hwndParent, IKxContentSite* pSite,
                                                                          IKxContentFolder* pFolder, KxPcPidl item) {
    return KxGuardStatus(L"KxComResPlginPluginObj::ShowImagePropertyDialog", [&]() -> HRESULT {
        if (!m_hResourceLibrary) return NoLibrary();
        if (!pFolder || !item || BadParent(hwndParent)) return E_INVALIDARG;
        if (!Runner()) return E_NOTIMPL;
        return Runner()->ShowImagePropertyDialog(*this, hwndParent, pSite, pFolder, item);
    });
}

HRESULT STDMETHODCALLTYPE KxComResPlginPluginObj::ShowVideoPropertyDialog(HWND hwndParent, IKxContentSite* pSite,
                                                                          IKxContentFolder* pFolder, KxPcPidl item) {
    return KxGuardStatus(L"KxComResPlginPluginObj::ShowVideoPropertyDialog", [&]() -> HRESULT {
        if (!m_hResourceLibrary) return NoLibrary();
        if (!pFolder || !item || BadParent(hwndParent)) return E_INVALIDARG;
        if (!Runner()) return E_NOTIMPL;
        return Runner()->ShowVideoPropertyDialog(*this, hwndParent, pSite, pFolder, item);
    });
}

HRESULT STDMETHODCALLTYPE KxComResPlginPluginObj::ShowAddMusicsDialog(DWORD reserved, IKxContentSite* pSite,
                                                                      IKxContentFolder* pRootFolder,
                                                                      LPCWSTR pszRootName, IKxTrackList* pTrackList,
                                                                      INT* pCount, KxPidl** ppItems) {
    return KxGuardStatus(L"KxComResPlginPluginObj::ShowAddMusicsDialog", [&]() -> HRESULT {
        if (!m_hResourceLibrary) return NoLibrary();
        // The dialog tests the rest of its arguments.
        if (!Runner()) return E_NOTIMPL;
        return Runner()->ShowAddMusicsDialog(*this, reserved, pSite, pRootFolder, pszRootName, pTrackList,
                                             WritableOrNull(pCount), WritableOrNull(ppItems));
    });
}
