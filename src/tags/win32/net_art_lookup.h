// The single-item tag dialog's side of the online art lookup: starting the content manager
// through VnIntrfu.dll, asking it for the shown item's art, waiting for it while the dialog keeps
// handling messages, and letting it go when the user steps or the dialog ends.
//
// Threads: the component calls back on a thread of its own. The callback touches no window and
// no art state: it copies the answer into a slot of this object and posts message 0x83EE, and
// OnLookupDone, on the dialog's thread, takes the answer from the slot and shows or clears the art
// there. So the art operations, the enabling of Remove and the event all belong to the dialog's
// thread, and the dialog's thread alone decides when a lookup has ended.
#pragma once

#include <windows.h>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "base/owners.h"
#include "netcontent/net_content_mgr.h"
#include "vnintrfu/vn_result.h"

constexpr UINT KX_WM_LOOKUP_DONE = 0x83EE;

// What the lookup needs of its dialog. All of it is called on the dialog's thread.
class INetArtLookupOwner {
public:
    virtual HWND LookupWindow() = 0;
    virtual void EnableControl(int id, bool enable) = 0;
    virtual bool ControlHasText(int id) = 0;
    // What the step buttons go back to when a lookup ends.
    virtual bool PrevStepEnabled() = 0;
    virtual bool NextStepEnabled() = 0;
    virtual void SetArtCommandsEnabled(bool enabled) = 0;
    // The shown item has new art bytes (kept for the save).
    virtual bool HasArtBytes() = 0;
    // Shows the picture; if it shows, keeps a copy as the item's new art. False: nothing changed.
    virtual bool ShowFoundArt(const BYTE* bytes, ULONG size) = 0;
    // The default picture, and the item's art marked for removal.
    virtual void ShowNoArt() = 0;

protected:
    ~INetArtLookupOwner() = default;
};

inline void KxCloseEvent(HANDLE event) { ::CloseHandle(event); }
using CKxEvent = CKxUnique<HANDLE, &KxCloseEvent>;

typedef tagVnINTRFCRESULT(WINAPI* PFN_VnCreateInstance)(const CLSID* clsid, IUnknown* outer, DWORD context,
                                                        const IID* iid, void** out);
typedef void(WINAPI* PFN_VnFreeUnusedLibraries)();
typedef bool (*PFN_KxIsOnline)();

class CNetArtLookup {
public:
    explicit CNetArtLookup(INetArtLookupOwner& owner);
    ~CNetArtLookup();  // ReleaseNetContentMgr, should the dialog not have
    CNetArtLookup(const CNetArtLookup&) = delete;
    CNetArtLookup& operator=(const CNetArtLookup&) = delete;

    // Whether the art menu gets entry 9003: single-item mode with a path, and a component that
    // starts and answers bit 4 or 8. Once the component runs the entry stays for the dialog's life.
    bool WantsMenuEntry(bool singleItem, bool hasPath);
    // Not 0 when the component is ready (started now or before).
    BOOL InitNetContentMgr();
    // Menu command 9003 for `itemPath`; nothing tells the user when it does not start.
    void StartArtworkLookup(const WCHAR* itemPath);
    // Message 0x83EE: the answer of the lookup on the dialog's thread, then the controls back.
    void OnLookupDone();
    // Before a step: a running lookup is waited for (3000 ms) and the component taken down.
    void CancelNetContentMgr();
    // WM_DESTROY: a running lookup is waited for (2000 ms), the component taken down.
    void ReleaseNetContentMgr();

    bool IsRunning() const;

    // The component's callback (any thread).
    static LONG CALLBACK OnLookupResult(LONG status, const NetContentResult* result, void* dialog);

    // Where the component comes from and how the platform says it is online; the plug-in's are
    // VnIntrfu.dll's exports and the system's connection state. Tests put their own.
    PFN_VnCreateInstance m_create = nullptr;
    PFN_VnFreeUnusedLibraries m_freeUnused = nullptr;
    PFN_KxIsOnline m_isOnline;

    CKxComPtr<INetContentMgr> m_netContentMgr;
    CKxEvent m_lookupEvent;  // manual reset; signalled: no lookup runs
    LONG m_lookupAvailable = 1;

private:
    struct Answer {
        LONG status;
        std::vector<BYTE> bytes;
    };
    void FreeUnused();
    void WaitForLookup(DWORD ms);
    void TakeDown();

    INetArtLookupOwner& m_owner;
    CKxModule m_vnIntrfu;
    std::atomic<Answer*> m_answer{nullptr};  // written by the callback, taken by OnLookupDone
};

// Both of the system's answers to "is this computer online": either one saying so is enough.
bool KxIsOnline();
