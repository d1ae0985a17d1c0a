// IKxContentSite of the in-memory library, and the view it serves: IKxContentView with
// IKxItemCursor over the items set with SetView.
#include "host/library/library_object.h"

namespace kxhost {

namespace {

class ViewObject final : public LibraryObject, public IKxContentView, public IKxItemCursor {
public:
    explicit ViewObject(const std::shared_ptr<InMemoryLibrary>& lib)
        : LibraryObject(lib, "view", 0), items_(lib->ViewItems()), current_(lib->ViewCurrent()) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        if (IsEqualIID(riid, IID_IKxItemCursor)) {
            return Lib().Run(Op::QueryItemCursor, true, [&]() -> HRESULT {
                AddRefImpl();
                *ppv = static_cast<IKxItemCursor*>(this);
                return S_OK;
            });
        }
        if (IsEqualIID(riid, IID_IKxContentView) || IsEqualIID(riid, IID_IUnknown)) {
            AddRefImpl();
            *ppv = static_cast<IKxContentView*>(this);
            return S_OK;
        }
        return E_NOINTERFACE;
    }
    KXHOST_IUNKNOWN_REFCOUNT

    HRESULT STDMETHODCALLTYPE GetCount(ULONG* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return Lib().Run(Op::CursorGetCount, false, [&]() -> HRESULT {
            *count = static_cast<ULONG>(items_.size());
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE Reserved1() override { return E_NOTIMPL; }

    // The one current item; S_FALSE with nothing fetched when the view has none.
    HRESULT STDMETHODCALLTYPE GetCurrentItems(ULONG count, KxCursorItem* items, ULONG* fetched) override {
        if (fetched) *fetched = 0;
        if (items)
            for (ULONG i = 0; i < count; ++i) items[i] = KxCursorItem{-1, nullptr};
        return Lib().Run(Op::CursorGetCurrentItems, false, [&]() -> HRESULT {
            if (!items || !fetched) return E_POINTER;
            if (count == 0) return E_INVALIDARG;
            if (current_ < 0 || static_cast<size_t>(current_) >= items_.size()) return S_FALSE;
            KxPidl pidl = Lib().NewPidl(items_[current_]);
            if (!pidl) return E_OUTOFMEMORY;
            items[0] = KxCursorItem{current_, pidl};
            *fetched = 1;
            return count == 1 ? S_OK : S_FALSE;
        });
    }

    HRESULT STDMETHODCALLTYPE Reserved2() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved3() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetItemAt(LONG index, KxPidl* ppidl) override {
        if (!ppidl) return E_POINTER;
        *ppidl = nullptr;
        return Lib().Run(Op::CursorGetItemAt, false, [&]() -> HRESULT {
            if (index < 0 || static_cast<size_t>(index) >= items_.size()) return E_INVALIDARG;
            *ppidl = Lib().NewPidl(items_[index]);
            return *ppidl ? S_OK : E_OUTOFMEMORY;
        });
    }

private:
    std::vector<ItemId> items_;
    LONG current_;
};

class SiteObject final : public LibraryObject, public IKxContentSite {
public:
    explicit SiteObject(const std::shared_ptr<InMemoryLibrary>& lib) : LibraryObject(lib, "site", 0) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        if (!IsEqualIID(riid, IID_IUnknown)) return E_NOINTERFACE;  // the site has no identifier of its own
        AddRefImpl();
        *ppv = static_cast<IKxContentSite*>(this);
        return S_OK;
    }
    KXHOST_IUNKNOWN_REFCOUNT

    HRESULT STDMETHODCALLTYPE Reserved1() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved2() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved3() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved4() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE QueryService(REFIID riid, DWORD, DWORD, void** ppv) override {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        return Lib().Run(Op::QueryService, true, [&]() -> HRESULT {
            if (!IsEqualIID(riid, IID_IKxContentView)) return E_NOINTERFACE;
            return CreateViewObject(LibPtr(), riid, ppv);
        });
    }
};

}  // namespace

HRESULT CreateSiteObject(const std::shared_ptr<InMemoryLibrary>& lib, REFIID, void** ppv) {
    *ppv = static_cast<IKxContentSite*>(new SiteObject(lib));
    return S_OK;
}

HRESULT CreateViewObject(const std::shared_ptr<InMemoryLibrary>& lib, REFIID, void** ppv) {
    *ppv = static_cast<IKxContentView*>(new ViewObject(lib));
    return S_OK;
}

}  // namespace kxhost
