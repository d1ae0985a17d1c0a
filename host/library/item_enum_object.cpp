// IKxItemEnum of the in-memory library: a forward enumerator over a snapshot of identifiers.
#include "host/library/library_object.h"

namespace kxhost {

namespace {

class ItemEnumObject final : public LibraryObject, public IKxItemEnum {
public:
    ItemEnumObject(const std::shared_ptr<InMemoryLibrary>& lib, ItemId folder, std::vector<ItemId> items)
        : LibraryObject(lib, "item enumerator", folder), items_(std::move(items)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        if (!IsEqualIID(riid, IID_IKxItemEnum) && !IsEqualIID(riid, IID_IUnknown)) return E_NOINTERFACE;
        AddRefImpl();
        *ppv = static_cast<IKxItemEnum*>(this);
        return S_OK;
    }
    KXHOST_IUNKNOWN_REFCOUNT

    // S_OK while items may follow; S_FALSE once fewer than `count` were left. With
    // SetNextEndsWithLastItem the call that hands out the last item already answers S_FALSE.
    HRESULT STDMETHODCALLTYPE Next(ULONG count, KxPidl* items, ULONG* fetched) override {
        if (fetched) *fetched = 0;
        if (!items) return E_POINTER;
        for (ULONG i = 0; i < count; ++i) items[i] = nullptr;
        return Lib().Run(Op::Next, false, [&]() -> HRESULT {
            if (count == 0) return E_INVALIDARG;
            if (count > 1 && !fetched) return E_POINTER;
            ULONG n = 0;
            while (n < count && position_ < items_.size()) {
                items[n] = Lib().NewPidl(items_[position_]);
                if (!items[n]) {
                    for (ULONG i = 0; i < n; ++i) {
                        CoTaskMemFree(items[i]);
                        items[i] = nullptr;
                    }
                    position_ -= n;
                    return E_OUTOFMEMORY;
                }
                ++n;
                ++position_;
            }
            if (fetched) *fetched = n;
            if (n < count) return S_FALSE;
            if (Lib().NextEndsWithLastItem() && position_ == items_.size()) return S_FALSE;
            return S_OK;
        });
    }

private:
    std::vector<ItemId> items_;
    size_t position_ = 0;
};

}  // namespace

HRESULT CreateItemEnum(const std::shared_ptr<InMemoryLibrary>& lib, ItemId folder, std::vector<ItemId> items,
                       REFIID, void** ppv) {
    *ppv = static_cast<IKxItemEnum*>(new ItemEnumObject(lib, folder, std::move(items)));
    return S_OK;
}

}  // namespace kxhost
