// The content manager object of content_mgr.h.
#include "netcontent/win32/content_mgr.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "base/boundary.h"
#include "netcontent/client_code.h"
#include "netcontent/win32/art_search.h"

namespace {

// The guard of the object's operations: an exception inside becomes kNetContentFailed.
template <typename Body>
LONG Guarded(const WCHAR* where, Body&& body) noexcept {
    return KxGuard(where, body, [](KxExceptionKind) { return kNetContentFailed; });
}

class CSharedLock {
public:
    explicit CSharedLock(SRWLOCK* lock) : m_lock(lock) { AcquireSRWLockShared(lock); }
    ~CSharedLock() { ReleaseSRWLockShared(m_lock); }
    CSharedLock(const CSharedLock&) = delete;
    CSharedLock& operator=(const CSharedLock&) = delete;

private:
    SRWLOCK* m_lock;
};

class CExclusiveLock {
public:
    explicit CExclusiveLock(SRWLOCK* lock) : m_lock(lock) { AcquireSRWLockExclusive(lock); }
    ~CExclusiveLock() { ReleaseSRWLockExclusive(m_lock); }
    CExclusiveLock(const CExclusiveLock&) = delete;
    CExclusiveLock& operator=(const CExclusiveLock&) = delete;

private:
    SRWLOCK* m_lock;
};

// The longest path a lookup takes, in characters: the platform's extended-length limit.
constexpr size_t kMaxPathChars = 32767;

}  // namespace

HRESULT CNetContentMgr::CreateInstance(IUnknown* outer, CVnUnknown** out) {
    CNetContentMgr* object = new (std::nothrow) CNetContentMgr(outer);
    if (out) *out = object;
    return object ? S_OK : E_OUTOFMEMORY;
}

HRESULT STDMETHODCALLTYPE CNetContentMgr::NondelegatingQueryInterface(REFIID riid, void** ppv) {
    if (ppv && IsEqualIID(riid, IID_INetContentMgr)) {
        INetContentMgr* mgr = this;
        *ppv = mgr;
        mgr->AddRef();
        return S_OK;
    }
    if (ppv && IsEqualIID(riid, IID_INetContentLookup)) {
        INetContentLookup* lookup = this;
        *ppv = lookup;
        lookup->AddRef();
        return S_OK;
    }
    return CVnUnknown::NondelegatingQueryInterface(riid, ppv);
}

// A client that lets go without Close still gets no callback after its last Release, and the
// worker never outlives the object (nor, so, the library).
void CNetContentMgr::FinalRelease() {
    StopWorker();
    CVnUnknown::FinalRelease();
}

// The record is refused unless it has this build's size, a terminated client name that is not
// empty, and a client code that the client key gives by the two CRC-32 steps. The client
// identifier and the other words are taken as they come: this component serves any client that
// holds a consistent key and code. The art service's template is read here, once per start.
LONG STDMETHODCALLTYPE CNetContentMgr::Initialize(const NetContentStartRecord* record) {
    return Guarded(L"CNetContentMgr::Initialize", [&]() -> LONG {
        if (!record || record->cbSize != sizeof(NetContentStartRecord)) return kNetContentBadArgument;
        const WCHAR* name = record->clientName;
        const WCHAR* end = std::find(name, name + 32, WCHAR(0));
        if (end == name || end == name + 32) return kNetContentBadArgument;
        if (!record->clientKey || !record->clientCode) return kNetContentBadArgument;
        char code[10];
        kxnet::DeriveClientCode(record->clientKey, code);
        if (std::memcmp(code, record->clientCode, 9) != 0) return kNetContentBadArgument;
        std::wstring serviceTemplate = kxnet::ReadArtServiceTemplate();
        CExclusiveLock lock(&m_lock);
        if (m_initialized) return kNetContentNotSupported;
        m_serviceTemplate.swap(serviceTemplate);
        m_initialized = true;
        return kNetContentOk;
    });
}

LONG STDMETHODCALLTYPE CNetContentMgr::Terminate() {
    StopWorker();
    CExclusiveLock lock(&m_lock);
    const bool was = m_initialized;
    m_initialized = m_open = false;
    return was ? kNetContentOk : kNetContentNotSupported;
}

LONG STDMETHODCALLTYPE CNetContentMgr::SetCallback(NetContentCallback callback, void* context) {
    CExclusiveLock lock(&m_lock);
    m_callback = callback;
    m_context = context;
    return kNetContentOk;
}

// The window is not used: the component shows nothing of its own.
LONG STDMETHODCALLTYPE CNetContentMgr::Open(const GUID* channel, const GUID* channelAgain, HWND) {
    if (!channel || !channelAgain || !IsEqualGUID(*channel, NETCONTENT_ARTWORK_CHANNEL) ||
        !IsEqualGUID(*channelAgain, NETCONTENT_ARTWORK_CHANNEL))
        return kNetContentBadArgument;
    CExclusiveLock lock(&m_lock);
    if (!m_initialized) return kNetContentNotSupported;
    m_open = true;
    return kNetContentOk;
}

LONG STDMETHODCALLTYPE CNetContentMgr::Close() {
    StopWorker();
    CExclusiveLock lock(&m_lock);
    const bool was = m_open;
    m_open = false;
    return was ? kNetContentOk : kNetContentNotSupported;
}

// Nothing is ever left for the client to resolve: every lookup ends in its callback.
LONG STDMETHODCALLTYPE CNetContentMgr::GetPendingFlag(LONG* pending) {
    if (!pending) return kNetContentBadArgument;
    *pending = 0;
    return kNetContentOk;
}

LONG STDMETHODCALLTYPE CNetContentMgr::ResolvePending(LONG_PTR) { return kNetContentOk; }

DWORD STDMETHODCALLTYPE CNetContentMgr::GetCapabilities() { return kNetContentLocalArt | kNetContentServiceArt; }

// Only one lookup runs at a time: a request while one runs is answered kNetContentBusy, and the
// client waits for its callback. A lookup that has called back is over for its client, though its
// thread may still be on its way out: the next request waits for that thread to end rather than
// refuse, unless it comes from the callback itself (that thread cannot wait for itself: busy).
// The request's other words are not read.
LONG STDMETHODCALLTYPE CNetContentMgr::RequestArtwork(LONG, LONG, LPCWSTR path, LONG_PTR, LONG_PTR, LONG, LONG_PTR,
                                                      LONG_PTR, LONG_PTR, LONG_PTR, LONG_PTR) {
    return Guarded(L"CNetContentMgr::RequestArtwork", [&]() -> LONG {
        if (!path || !*path) return kNetContentBadArgument;
        size_t length = 0;
        while (path[length] && length <= kMaxPathChars) ++length;
        if (length > kMaxPathChars) return kNetContentBadArgument;
        kxnet::CFileHandle finishing;
        {
            CSharedLock lock(&m_lock);
            HANDLE copy = nullptr;
            if (m_worker && m_answered && GetThreadId(m_worker.Get()) != GetCurrentThreadId() &&
                DuplicateHandle(GetCurrentProcess(), m_worker.Get(), GetCurrentProcess(), &copy, SYNCHRONIZE, FALSE, 0))
                finishing.Reset(copy);
        }
        if (finishing) WaitForSingleObject(finishing.Get(), 5000);  // no lock held: the callback may still call in
        CExclusiveLock lock(&m_lock);
        if (!m_open) return kNetContentNotSupported;
        if (m_worker) {
            if (WaitForSingleObject(m_worker.Get(), 0) == WAIT_TIMEOUT) return kNetContentBusy;
            m_worker.Reset();
        }
        m_requestPath.assign(path, length);
        InterlockedExchange(&m_cancelled, 0);
        InterlockedExchange(&m_answered, 0);
        // The worker takes the lock before it reads the request, so it waits until this returns.
        HANDLE thread = CreateThread(nullptr, 0, &CNetContentMgr::WorkerMain, this, 0, nullptr);
        if (!thread) return kNetContentFailed;
        m_worker.Reset(thread);
        return kNetContentOk;
    });
}

DWORD WINAPI CNetContentMgr::WorkerMain(void* self) {
    CNetContentMgr* mgr = static_cast<CNetContentMgr*>(self);
    KxGuard(L"CNetContentMgr::WorkerMain", [&] { mgr->RunLookup(); return 0; }, [](KxExceptionKind) { return 0; });
    return 0;
}

// The block and its bytes live during the callback only.
void CNetContentMgr::RunLookup() {
    std::wstring path, serviceTemplate;
    {
        CSharedLock lock(&m_lock);
        path = m_requestPath;
        serviceTemplate = m_serviceTemplate;
    }
    kxnet::ArtFound found = kxnet::FindArt(path, serviceTemplate, &m_cancelled);
    if (m_cancelled) return;
    NetContentResult result = {sizeof(NetContentResult), static_cast<DWORD>(found.source),
                               static_cast<DWORD>(found.bytes.size()), found.bytes.empty() ? nullptr : found.bytes.data()};
    NetContentCallback callback;
    void* context;
    {
        CSharedLock lock(&m_lock);
        callback = m_callback;
        context = m_context;
    }
    InterlockedExchange(&m_answered, 1);
    if (callback) callback(found.bytes.empty() ? kNetContentNotFound : kNetContentFound, &result, context);
}

// A callback that had begun before the stop runs to its end before this returns. Called from the
// callback itself (the client closes in it), the thread is not waited for: it ends on its own
// after the callback, and the next start or the last Release joins it.
void CNetContentMgr::StopWorker() {
    InterlockedExchange(&m_cancelled, 1);
    HANDLE thread;
    {
        CSharedLock lock(&m_lock);
        thread = m_worker.Get();
    }
    if (!thread || GetThreadId(thread) == GetCurrentThreadId()) return;
    WaitForSingleObject(thread, INFINITE);
    CExclusiveLock lock(&m_lock);
    if (m_worker.Get() == thread) m_worker.Reset();
}
