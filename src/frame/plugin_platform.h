// What the plug-in object needs of the platform, and the runner of its dialogs. The library's load
// installs the Win32 implementations; tests install fakes. Without a platform Init fails, without
// a dialog runner every dialog operation answers 0x80004001 after its preconditions.
#pragma once

#include "base/owners.h"
#include "frame/string_lookup.h"
#include "kx/IKxCommonResource.h"

class IKxPluginPlatform : public IKxStringSource {
public:
    virtual HRESULT OleInitialize() = 0;
    virtual void OleUninitialize() = 0;
    virtual DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD cchPath) = 0;
    virtual BOOL PathRemoveFileSpecW(LPWSTR path) = 0;
    virtual BOOL PathAppendW(LPWSTR path, LPCWSTR more) = 0;
    virtual HMODULE LoadLibraryW(LPCWSTR path) = 0;
    virtual BOOL FreeLibrary(HMODULE module) = 0;
    // Makes `resources` the source of the module's dialog templates and strings (inside a switch
    // to the module's framework state).
    virtual void SetModuleResourceHandle(HMODULE resources) = 0;
    // What the interface checks of the host's arguments before a dialog: whether `bytes` at `p`
    // can be read (IsBadReadPtr), and whether a handle names a window. A platform that cannot tell
    // answers that all is well.
    virtual bool IsBadReadPtr(const void* p, size_t bytes) {
        (void)p;
        (void)bytes;
        return false;
    }
    virtual bool IsWindow(HWND window) {
        (void)window;
        return true;
    }

protected:
    ~IKxPluginPlatform() = default;
};

class KxComResPlginPluginObj;

// One operation per dialog of IKxCommonResource, entered after the operation's preconditions held.
// Each holds the switch to the module's framework state for its whole length.
class IKxDialogRunner {
public:
    virtual HRESULT ShowNameDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, INT nameKind, INT mode,
                                   LPCWSTR pszInitialName, LPWSTR* ppszName) = 0;
    virtual HRESULT ShowEditTagDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentSite* pSite,
                                      IKxContentFolder* pFolder, UINT itemCount, const KxPcPidl* pItems) = 0;
    virtual HRESULT ShowAddToPlaylistDialog(KxComResPlginPluginObj& plugin, HWND hwndParent,
                                            IKxContentFolder* pFolder, LPCWSTR pszSuggestedName, KxPidl* ppItem,
                                            LPWSTR* ppszNewName) = 0;
    virtual HRESULT ShowAddToSlideshowDialog(KxComResPlginPluginObj& plugin, HWND hwndParent,
                                             IKxContentFolder* pFolder, LPCWSTR pszSuggestedName, KxPidl* ppItem,
                                             LPWSTR* ppszNewName) = 0;
    virtual HRESULT ShowMessageBox(KxComResPlginPluginObj& plugin, HWND hwndParent, LPCWSTR pszText,
                                   LPCWSTR pszCaption, UINT flags) = 0;
    virtual HRESULT CreateBalloonTip(KxComResPlginPluginObj& plugin, REFIID riid, HWND hwndTarget, LPCWSTR pszText,
                                     LPCWSTR pszTitle, UINT flags, void** ppTip) = 0;
    virtual HRESULT ShowImagePropertyDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentSite* pSite,
                                            IKxContentFolder* pFolder, KxPcPidl item) = 0;
    virtual HRESULT ShowVideoPropertyDialog(KxComResPlginPluginObj& plugin, HWND hwndParent, IKxContentSite* pSite,
                                            IKxContentFolder* pFolder, KxPcPidl item) = 0;
    virtual HRESULT ShowAddMusicsDialog(KxComResPlginPluginObj& plugin, DWORD reserved, IKxContentSite* pSite,
                                        IKxContentFolder* pRootFolder, LPCWSTR pszRootName,
                                        IKxTrackList* pTrackList, INT* pCount, KxPidl** ppItems) = 0;

protected:
    ~IKxDialogRunner() = default;
};

IKxPluginPlatform* KxGetPluginPlatform();
void KxSetPluginPlatform(IKxPluginPlatform* platform);
IKxDialogRunner* KxGetDialogRunner();
void KxSetDialogRunner(IKxDialogRunner* runner);

// Frees a module that the installed platform loaded; nothing without a platform.
void KxFreeLibraryThroughPlatform(HMODULE module);
// A module loaded through the installed platform and freed through it.
typedef CKxUnique<HMODULE, &KxFreeLibraryThroughPlatform> CKxPlatformModule;
