// The non-delegating base of the plug-in's COM objects. An object answers IUnknown on its own
// (non-delegating) table; its interfaces forward their IUnknown operations to the outer unknown,
// which is the aggregating object when there is one and the object itself otherwise.
#pragma once

#include "kx/KxPlatform.h"

#include <cstddef>
#include <new>

// Number of live CVnUnknown objects of the module.
extern LONG volatile g_cLiveObjects;

struct INondelegatingUnknown {
    virtual HRESULT STDMETHODCALLTYPE NondelegatingQueryInterface(REFIID riid, void** ppv) = 0;
    virtual ULONG STDMETHODCALLTYPE NondelegatingAddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE NondelegatingRelease() = 0;
};

class CVnUnknown : public INondelegatingUnknown {
public:
    // `outer` null: the object is its own outer unknown.
    explicit CVnUnknown(IUnknown* outer);
    virtual ~CVnUnknown();
    CVnUnknown(const CVnUnknown&) = delete;
    CVnUnknown& operator=(const CVnUnknown&) = delete;

    HRESULT STDMETHODCALLTYPE NondelegatingQueryInterface(REFIID riid, void** ppv) override;
    ULONG STDMETHODCALLTYPE NondelegatingAddRef() override;
    ULONG STDMETHODCALLTYPE NondelegatingRelease() override;

    // Work of construction that can fail; the factory destroys an object whose Init failed.
    virtual HRESULT Init();
    // Runs once when the count reaches zero, before the destructor, with the object still whole.
    virtual void FinalRelease();

    // The object's own non-delegating unknown, as the IUnknown a host or an aggregate holds.
    IUnknown* NondelegatingUnknown() {
        return reinterpret_cast<IUnknown*>(static_cast<INondelegatingUnknown*>(this));
    }
    IUnknown* OuterUnknown() const { return m_pOuterUnknown; }
    bool IsAggregated() { return m_pOuterUnknown != NondelegatingUnknown(); }

    // COM objects live in task memory, so that an out-of-memory test reaches their creation too.
    static void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept;
    static void operator delete(void* block) noexcept;

protected:
    // The IUnknown operations of every interface of the object: through the outer unknown.
    HRESULT OuterQueryInterface(REFIID riid, void** ppv);
    ULONG OuterAddRef();
    ULONG OuterRelease();

    LONG volatile m_cRef;
    IUnknown* m_pOuterUnknown;
};
