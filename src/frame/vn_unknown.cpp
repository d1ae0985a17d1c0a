#include "frame/vn_unknown.h"

LONG volatile g_cLiveObjects;

CVnUnknown::CVnUnknown(IUnknown* outer) : m_cRef(1), m_pOuterUnknown(outer ? outer : NondelegatingUnknown()) {
    InterlockedIncrement(&g_cLiveObjects);
}

CVnUnknown::~CVnUnknown() { InterlockedDecrement(&g_cLiveObjects); }

HRESULT STDMETHODCALLTYPE CVnUnknown::NondelegatingQueryInterface(REFIID riid, void** ppv) {
    if (!ppv) return E_POINTER;
    if (IsEqualIID(riid, IID_IUnknown)) {
        *ppv = static_cast<INondelegatingUnknown*>(this);
        NondelegatingAddRef();
        return S_OK;
    }
    *ppv = nullptr;
    return E_NOINTERFACE;
}

ULONG STDMETHODCALLTYPE CVnUnknown::NondelegatingAddRef() {
    return static_cast<ULONG>(InterlockedIncrement(&m_cRef));
}

ULONG STDMETHODCALLTYPE CVnUnknown::NondelegatingRelease() {
    LONG count = InterlockedDecrement(&m_cRef);
    if (count != 0) return static_cast<ULONG>(count);
    FinalRelease();
    delete this;
    return 0;
}

HRESULT CVnUnknown::Init() { return S_OK; }

void CVnUnknown::FinalRelease() { InterlockedExchange(&m_cRef, 1); }

void* CVnUnknown::operator new(std::size_t bytes, const std::nothrow_t&) noexcept { return CoTaskMemAlloc(bytes); }

// The storage of operator new above goes back to the task allocator here, and nowhere else.
void CVnUnknown::operator delete(void* block) noexcept { CoTaskMemFree(block); }

// Without an aggregate the outer unknown is this object's own non-delegating table, which has
// the IUnknown layout; it is called by its own names here rather than through a cast table.
HRESULT CVnUnknown::OuterQueryInterface(REFIID riid, void** ppv) {
    if (!IsAggregated()) return NondelegatingQueryInterface(riid, ppv);
    return m_pOuterUnknown->QueryInterface(riid, ppv);
}

ULONG CVnUnknown::OuterAddRef() {
    if (!IsAggregated()) return NondelegatingAddRef();
    return m_pOuterUnknown->AddRef();
}

// Forwards the caller's own Release to the aggregate: a reference count, not one of ours to own.
ULONG CVnUnknown::OuterRelease() {
    if (!IsAggregated()) return NondelegatingRelease();
    return m_pOuterUnknown->Release();
}
