// IKxTrackList and IKxTrackFilter of the in-memory library: the tracks of a container, filtered by
// a case-insensitive text on title, artist or album.
#include "host/library/library_object.h"
#include "host/library/text_fold.h"

namespace kxhost {

namespace {

class TrackListObject final : public LibraryObject, public IKxTrackList, public IKxTrackFilter {
public:
    TrackListObject(const std::shared_ptr<InMemoryLibrary>& lib, ItemId container)
        : LibraryObject(lib, "track list", container), all_(lib->Members(container)), shown_(all_) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        if (IsEqualIID(riid, IID_IKxTrackFilter)) {
            return Lib().Run(Op::QueryTrackFilter, true, [&]() -> HRESULT {
                AddRefImpl();
                *ppv = static_cast<IKxTrackFilter*>(this);
                return S_OK;
            });
        }
        if (IsEqualIID(riid, IID_IKxTrackList) || IsEqualIID(riid, IID_IUnknown)) {
            AddRefImpl();
            *ppv = static_cast<IKxTrackList*>(this);
            return S_OK;
        }
        return E_NOINTERFACE;
    }
    KXHOST_IUNKNOWN_REFCOUNT

    HRESULT STDMETHODCALLTYPE Reserved1() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved2() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved3() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved4() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetCount(INT* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return Lib().Run(Op::TrackGetCount, false, [&]() -> HRESULT {
            *count = static_cast<INT>(shown_.size());
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE MoveTo(INT index) override {
        return Lib().Run(Op::TrackMoveTo, false, [&]() -> HRESULT {
            if (index < 0 || static_cast<size_t>(index) >= shown_.size()) return E_INVALIDARG;
            position_ = static_cast<size_t>(index);
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE Reserved5() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved6() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved7() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved8() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved9() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetCurrentId(KxPidl* ppidl) override {
        if (!ppidl) return E_POINTER;
        *ppidl = nullptr;
        return Lib().Run(Op::TrackGetCurrentId, false, [&]() -> HRESULT {
            if (position_ >= shown_.size()) return E_FAIL;
            *ppidl = Lib().NewPidl(shown_[position_]);
            return *ppidl ? S_OK : E_OUTOFMEMORY;
        });
    }

    HRESULT STDMETHODCALLTYPE Reset() override {
        return Lib().Run(Op::TrackReset, false, [&]() -> HRESULT {
            shown_ = all_;
            position_ = 0;
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE SetFilterText(LPCWSTR text) override {
        return Lib().Run(Op::SetFilterText, false, [&]() -> HRESULT {
            const std::wstring folded = Fold(text ? text : L"");
            shown_.clear();
            for (ItemId id : all_)
                if (Lib().Matches(id, folded)) shown_.push_back(id);
            position_ = 0;
            return S_OK;
        });
    }

private:
    std::vector<ItemId> all_;
    std::vector<ItemId> shown_;
    size_t position_ = 0;
};

}  // namespace

HRESULT CreateTrackListObject(const std::shared_ptr<InMemoryLibrary>& lib, ItemId folder, REFIID, void** ppv) {
    *ppv = static_cast<IKxTrackList*>(new TrackListObject(lib, folder));
    return S_OK;
}

}  // namespace kxhost
