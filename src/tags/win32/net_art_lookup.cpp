// The online art lookup of net_art_lookup.h.
#include "tags/win32/net_art_lookup.h"

#include <wininet.h>

#include <cstring>
#include <new>
#include <utility>

#include "base/boundary.h"
#include "netcontent/client_code.h"
#include "resources/dialogs/edit_single_tags_ids.h"

namespace {

// The plug-in's client access string; the client key is its first 16 bytes.
const char kClientAccess[] = "{9C41E7B2-53DA-4F08-A6E1-2B7D904C3F15}";
static_assert(sizeof(kClientAccess) == 39, "a GUID in braces");

// The plug-in's client identifier, set up field by field when a start record is filled.
void SetClientId(GUID* id) {
    id->Data1 = 0x6F3B0A24;
    id->Data2 = 0x1D7E;
    id->Data3 = 0x4C59;
    const BYTE tail[8] = {0x8B, 0x02, 0xE4, 0x71, 0x5A, 0xC9, 0x36, 0xD0};
    std::memcpy(id->Data4, tail, sizeof(tail));
}

// The controls a running lookup holds: Previous, Next, Change..., Remove and the album.
const int kHeldControls[] = {KX_IDC_TAG_PREV, KX_IDC_TAG_NEXT, KX_IDC_TAG_BROWSE, KX_IDC_TAG_REMOVE, KX_IDC_TAG_ALBUM};

}  // namespace

bool KxIsOnline() {
    DWORD flags = 0;
    return InternetGetConnectedStateEx(&flags, nullptr, 0, 0) || InternetGetConnectedState(&flags, 0);
}

CNetArtLookup::CNetArtLookup(INetArtLookupOwner& owner) : m_isOnline(&KxIsOnline), m_owner(owner) {}

CNetArtLookup::~CNetArtLookup() {
    ReleaseNetContentMgr();
    delete m_answer.exchange(nullptr);
}

bool CNetArtLookup::IsRunning() const {
    return m_netContentMgr && m_lookupEvent && ::WaitForSingleObject(m_lookupEvent.Get(), 0) == WAIT_TIMEOUT;
}

bool CNetArtLookup::WantsMenuEntry(bool singleItem, bool hasPath) {
    if (m_netContentMgr) return true;
    if (!singleItem || !hasPath || !InitNetContentMgr()) return false;
    CKxComPtr<INetContentLookup> lookup;
    if (FAILED(m_netContentMgr->QueryInterface(IID_INetContentLookup, lookup.PutVoid())) || !lookup) return false;
    return (lookup->GetCapabilities() & (kNetContentLocalArt | kNetContentServiceArt)) != 0;
}

BOOL CNetArtLookup::InitNetContentMgr() {
    if (!m_lookupAvailable) return FALSE;
    if (m_netContentMgr) return TRUE;
    // A start that fails closes the event it made: the next try makes its own.
    CKxEvent event(::CreateEventW(nullptr, TRUE, TRUE, L""));
    NetContentStartRecord record = {};
    SetClientId(&record.clientId);

    if (!m_create) {
        m_vnIntrfu.Reset(::LoadLibraryW(L"VnIntrfu.dll"));
        m_create = m_vnIntrfu.Export<PFN_VnCreateInstance>("VnCreateInstance");
        m_freeUnused = m_vnIntrfu.Export<PFN_VnFreeUnusedLibraries>("VnFreeUnusedLibraries");
        if (!m_create) return FALSE;
    }
    if (m_create(&CLSID_NetContentMgr, nullptr, 0, &IID_INetContentMgr, m_netContentMgr.PutVoid()) != VnIntrfcOk) {
        m_netContentMgr.Detach();  // a failed creation hands out nothing of ours to release
        return FALSE;
    }
    if (!m_netContentMgr) return FALSE;

    // A component that lacks either bit is not tried again in this dialog.
    m_lookupAvailable = 0;
    {
        CKxComPtr<INetContentLookup> lookup;
        if (SUCCEEDED(m_netContentMgr->QueryInterface(IID_INetContentLookup, lookup.PutVoid())) && lookup) {
            const DWORD bits = lookup->GetCapabilities();
            if ((bits & kNetContentLocalArt) && (bits & kNetContentServiceArt)) m_lookupAvailable = 1;
        }
    }
    if (!m_lookupAvailable) {
        m_netContentMgr.Reset();
        return FALSE;
    }

    record.cbSize = sizeof(record);
    lstrcpynW(record.clientName, L"NetContentMgrTest", 32);
    record.codePage = 1252;
    record.options[0] = 1;
    BYTE key[16];
    std::memcpy(key, kClientAccess, sizeof(key));
    char code[10];
    kxnet::DeriveClientCode(key, code);
    record.clientKey = key;
    record.clientCode = code;
    for (DWORD& flag : record.flags) flag = 1;
    const HWND window = m_owner.LookupWindow();
    RECT rc = {};
    ::GetWindowRect(window, &rc);
    if (rc.right - rc.left <= 0) rc.left = 15, rc.top = 325;
    record.area = {rc.left, rc.top, rc.left + 80, rc.top + 80};

    if (m_netContentMgr->Initialize(&record) != kNetContentOk) {
        m_netContentMgr.Reset();
        FreeUnused();
        return FALSE;
    }
    m_netContentMgr->SetCallback(&CNetArtLookup::OnLookupResult, this);
    if (m_netContentMgr->Open(&NETCONTENT_ARTWORK_CHANNEL, &NETCONTENT_ARTWORK_CHANNEL, window) != kNetContentOk) {
        m_netContentMgr->Terminate();
        m_netContentMgr.Reset();
        FreeUnused();
        return FALSE;
    }
    LONG pending = 0;
    if (m_netContentMgr->GetPendingFlag(&pending) == kNetContentOk && pending) m_netContentMgr->ResolvePending(0);
    m_lookupEvent = std::move(event);
    return TRUE;
}

void CNetArtLookup::StartArtworkLookup(const WCHAR* itemPath) {
    if (!m_isOnline || !m_isOnline()) return;
    if (!itemPath || !*itemPath) return;
    if (!InitNetContentMgr()) return;
    CKxComPtr<INetContentLookup> lookup;
    if (FAILED(m_netContentMgr->QueryInterface(IID_INetContentLookup, lookup.PutVoid())) || !lookup) return;
    const LONG started = lookup->RequestArtwork(1, 2, itemPath, 0, 0, 5, 0, 0, 0, 0, 0);
    lookup.Reset();
    if (started != kNetContentOk || !m_lookupEvent) return;
    ::ResetEvent(m_lookupEvent.Get());
    for (int id : kHeldControls) m_owner.EnableControl(id, false);
    m_owner.SetArtCommandsEnabled(false);
}

// On the component's thread. Nothing here touches a window or the art: the answer waits in the
// slot for the dialog's thread. An answer that cannot be copied counts as no picture.
LONG CALLBACK CNetArtLookup::OnLookupResult(LONG status, const NetContentResult* result, void* dialog) {
    auto* self = static_cast<CNetArtLookup*>(dialog);
    if (!self) return 0;
    KxGuard(
        L"CNetArtLookup::OnLookupResult",
        [&] {
            std::unique_ptr<Answer> answer(new Answer{status, {}});
            if (status == kNetContentFound && result && result->picture && result->pictureSize)
                answer->bytes.assign(result->picture, result->picture + result->pictureSize);
            delete self->m_answer.exchange(answer.release());
            return 0;
        },
        [](KxExceptionKind) { return 0; });
    ::PostMessageW(self->m_owner.LookupWindow(), KX_WM_LOOKUP_DONE, 0, 0);
    return 0;
}

void CNetArtLookup::OnLookupDone() {
    std::unique_ptr<Answer> answer(m_answer.exchange(nullptr));
    if (answer) {
        if (answer->status == kNetContentFound && !answer->bytes.empty()) {
            if (m_owner.ShowFoundArt(answer->bytes.data(), static_cast<ULONG>(answer->bytes.size())))
                m_owner.EnableControl(KX_IDC_TAG_REMOVE, true);
        } else {
            m_owner.ShowNoArt();
            m_owner.EnableControl(KX_IDC_TAG_REMOVE, false);
        }
    }
    if (m_lookupEvent) ::SetEvent(m_lookupEvent.Get());
    m_owner.SetArtCommandsEnabled(true);
    m_owner.EnableControl(KX_IDC_TAG_PREV, m_owner.PrevStepEnabled());
    m_owner.EnableControl(KX_IDC_TAG_NEXT, m_owner.NextStepEnabled());
    if (m_owner.ControlHasText(KX_IDC_TAG_ALBUM)) m_owner.EnableControl(KX_IDC_TAG_BROWSE, true);
    if (m_owner.HasArtBytes()) m_owner.EnableControl(KX_IDC_TAG_REMOVE, true);
    m_owner.EnableControl(KX_IDC_TAG_ALBUM, true);
}

// The dialog's thread keeps handling its messages, so that 0x83EE comes in, but a close or a
// destroy that arrives meanwhile is dropped. A quit message is put back once the wait is over, so
// that the loop it was meant for still ends.
void CNetArtLookup::WaitForLookup(DWORD ms) {
    const HCURSOR before = ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
    bool quit = false;
    WPARAM quitCode = 0;
    // the wait is `ms` in all, however many messages come in meanwhile
    const DWORD start = ::GetTickCount();
    for (;;) {
        MSG msg;
        while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            if (msg.message == WM_CLOSE || msg.message == WM_DESTROY) continue;
            if (msg.message == WM_QUIT) {
                quit = true;
                quitCode = msg.wParam;
                continue;
            }
            ::DispatchMessageW(&msg);
        }
        const DWORD spent = ::GetTickCount() - start;
        if (spent >= ms) break;
        const HANDLE event = m_lookupEvent.Get();
        if (::MsgWaitForMultipleObjects(1, &event, FALSE, ms - spent, QS_ALLINPUT) != WAIT_OBJECT_0 + 1) break;
    }
    if (quit) ::PostQuitMessage(static_cast<int>(quitCode));
    ::SetCursor(before);
}

void CNetArtLookup::FreeUnused() {
    if (m_freeUnused) m_freeUnused();
}

// Close, Terminate and the release; an answer that came meanwhile is for an item no longer shown.
void CNetArtLookup::TakeDown() {
    m_netContentMgr->Close();
    m_netContentMgr->Terminate();
    m_netContentMgr.Reset();
    delete m_answer.exchange(nullptr);
}

void CNetArtLookup::CancelNetContentMgr() {
    if (!m_netContentMgr || !m_lookupEvent || ::WaitForSingleObject(m_lookupEvent.Get(), 0) == WAIT_OBJECT_0) return;
    WaitForLookup(3000);
    ::Sleep(300);
    TakeDown();
    FreeUnused();
    m_lookupEvent.Reset();
}

void CNetArtLookup::ReleaseNetContentMgr() {
    if (!m_netContentMgr) return;
    if (m_lookupEvent) {
        if (::WaitForSingleObject(m_lookupEvent.Get(), 0) != WAIT_OBJECT_0) WaitForLookup(2000);
        m_lookupEvent.Reset();
    }
    ::Sleep(300);
    TakeDown();
    FreeUnused();
}
