#include "frame/vn_factory.h"

#include "base/boundary.h"
#include "frame/vn_unknown.h"

HRESULT STDMETHODCALLTYPE CVnFactory::QueryInterface(REFIID riid, void** ppv) {
    if (!ppv) return E_POINTER;
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IClassFactory)) {
        AddRef();
        *ppv = static_cast<IClassFactory*>(this);
        return S_OK;
    }
    *ppv = nullptr;
    return E_NOINTERFACE;
}

ULONG STDMETHODCALLTYPE CVnFactory::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&m_cRef)); }

ULONG STDMETHODCALLTYPE CVnFactory::Release() {
    LONG count = InterlockedDecrement(&m_cRef);
    if (count == 0) {
        delete this;
        return 0;
    }
    return static_cast<ULONG>(count);
}

HRESULT STDMETHODCALLTYPE CVnFactory::CreateInstance(IUnknown* outer, REFIID riid, void** ppv) {
    // An aggregate may only ask for the inner object's own unknown.
    if (outer && !IsEqualIID(riid, IID_IUnknown)) return CLASS_E_NOAGGREGATION;
    // Beyond the table: without a place for the result nothing is created.
    if (!ppv) return E_POINTER;

    CVnUnknown* object = nullptr;
    HRESULT hr = KxGuardStatus(L"CVnFactory::CreateInstance", [&] { return m_pRow->pfnCreate(outer, &object); });
    if (FAILED(hr)) return hr;
    if (!object) return E_OUTOFMEMORY;

    hr = KxGuardStatus(L"CVnFactory::CreateInstance", [&] {
        HRESULT started = object->Init();
        return SUCCEEDED(started) ? object->NondelegatingQueryInterface(riid, ppv) : started;
    });
    // Drops the creation reference: destroys the object after a failed Init or query.
    object->NondelegatingRelease();
    return hr;
}

HRESULT STDMETHODCALLTYPE CVnFactory::LockServer(BOOL lock) {
    if (lock)
        InterlockedIncrement(&g_cServerLocks);
    else
        InterlockedDecrement(&g_cServerLocks);
    return S_OK;
}

void* CVnFactory::operator new(std::size_t bytes, const std::nothrow_t&) noexcept { return CoTaskMemAlloc(bytes); }

// The storage of operator new above goes back to the task allocator here, and nowhere else.
void CVnFactory::operator delete(void* block) noexcept { CoTaskMemFree(block); }
