// The content manager object: INetContentMgr to start and stop it, INetContentLookup to ask for a
// track's art. One lookup runs at a time, on a worker thread of the object's own; its answer goes
// to the client's callback from that thread.
#pragma once

#include <windows.h>

#include <string>

#include "frame/vn_unknown.h"
#include "netcontent/net_content_mgr.h"
#include "netcontent/win32/file_source.h"

class CNetContentMgr : public CVnUnknown, public INetContentMgr, public INetContentLookup {
public:
    static HRESULT CreateInstance(IUnknown* outer, CVnUnknown** out);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override { return OuterQueryInterface(riid, ppv); }
    ULONG STDMETHODCALLTYPE AddRef() override { return OuterAddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return OuterRelease(); }
    HRESULT STDMETHODCALLTYPE NondelegatingQueryInterface(REFIID riid, void** ppv) override;
    void FinalRelease() override;

    // INetContentMgr
    LONG STDMETHODCALLTYPE Initialize(const NetContentStartRecord* record) override;
    LONG STDMETHODCALLTYPE Terminate() override;
    LONG STDMETHODCALLTYPE SetCallback(NetContentCallback callback, void* context) override;
    LONG STDMETHODCALLTYPE Open(const GUID* channel, const GUID* channelAgain, HWND window) override;
    LONG STDMETHODCALLTYPE Close() override;
    LONG STDMETHODCALLTYPE GetPendingFlag(LONG* pending) override;
    LONG STDMETHODCALLTYPE ResolvePending(LONG_PTR zero) override;

    // INetContentLookup
    DWORD STDMETHODCALLTYPE GetCapabilities() override;
    LONG STDMETHODCALLTYPE RequestArtwork(LONG kind, LONG variant, LPCWSTR path, LONG_PTR a4, LONG_PTR a5, LONG a6,
                                          LONG_PTR a7, LONG_PTR a8, LONG_PTR a9, LONG_PTR a10, LONG_PTR a11) override;

    // The unused slots of both tables (one body serves the slot of the same name in each).
#define KX_UNUSED_SLOT(n) \
    LONG STDMETHODCALLTYPE Unused##n() override { return kNetContentNotSupported; }
    KX_UNUSED_SLOT(3) KX_UNUSED_SLOT(4) KX_UNUSED_SLOT(5) KX_UNUSED_SLOT(6) KX_UNUSED_SLOT(7) KX_UNUSED_SLOT(8)
    KX_UNUSED_SLOT(9) KX_UNUSED_SLOT(10) KX_UNUSED_SLOT(11) KX_UNUSED_SLOT(12) KX_UNUSED_SLOT(13)
    KX_UNUSED_SLOT(14) KX_UNUSED_SLOT(15) KX_UNUSED_SLOT(16) KX_UNUSED_SLOT(17) KX_UNUSED_SLOT(18)
    KX_UNUSED_SLOT(19) KX_UNUSED_SLOT(20) KX_UNUSED_SLOT(21) KX_UNUSED_SLOT(22) KX_UNUSED_SLOT(23)
    KX_UNUSED_SLOT(24) KX_UNUSED_SLOT(25) KX_UNUSED_SLOT(26) KX_UNUSED_SLOT(27) KX_UNUSED_SLOT(28)
    KX_UNUSED_SLOT(29) KX_UNUSED_SLOT(30) KX_UNUSED_SLOT(31) KX_UNUSED_SLOT(32)
#undef KX_UNUSED_SLOT

private:
    explicit CNetContentMgr(IUnknown* outer) : CVnUnknown(outer) {}
    ~CNetContentMgr() override = default;

    static DWORD WINAPI WorkerMain(void* self);
    void RunLookup();
    // Stops a running lookup and waits for its thread: no callback comes after this returns.
    void StopWorker();

    // Operations come from the client's thread; the worker reads only what RequestArtwork set
    // before it started it, and m_cancelled.
    SRWLOCK m_lock = SRWLOCK_INIT;
    bool m_initialized = false;
    bool m_open = false;
    NetContentCallback m_callback = nullptr;
    void* m_context = nullptr;
    std::wstring m_serviceTemplate;
    std::wstring m_requestPath;
    kxnet::CFileHandle m_worker;  // the thread of the last lookup, until it is joined
    volatile LONG m_cancelled = 0;
    volatile LONG m_answered = 0;  // the last lookup has called back: it is over for its client
};
