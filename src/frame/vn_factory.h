// The class object of one row of the class table.
#pragma once

#include "frame/class_table.h"

#include <cstddef>
#include <new>

class CVnFactory : public IClassFactory {
public:
    explicit CVnFactory(const CVnClassTableRow* row) : m_cRef(1), m_pRow(row) {}
    virtual ~CVnFactory() = default;
    CVnFactory(const CVnFactory&) = delete;
    CVnFactory& operator=(const CVnFactory&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID riid, void** ppv) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

    static void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept;
    static void operator delete(void* block) noexcept;

private:
    LONG volatile m_cRef;
    const CVnClassTableRow* m_pRow;
};
