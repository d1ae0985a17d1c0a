// IKxContentFolder (and IKxContentRoot on the root) of the in-memory library.
#include "host/library/library_object.h"

namespace kxhost {

namespace {

class FolderObject final : public LibraryObject, public IKxContentFolder, public IKxContentRoot {
public:
    FolderObject(const std::shared_ptr<InMemoryLibrary>& lib, ItemId folder)
        : LibraryObject(lib, "folder", folder) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        const bool isRoot = Item() == Lib().Root();
        if (IsEqualIID(riid, IID_IKxContentRoot)) {
            return Lib().Run(Op::QueryContentRoot, true, [&]() -> HRESULT {
                if (isRoot) {
                    AddRefImpl();
                    *ppv = static_cast<IKxContentRoot*>(this);
                    return S_OK;
                }
                // a child folder leads to the root
                return CreateFolderObject(LibPtr(), Lib().Root(), IID_IKxContentRoot, ppv);
            });
        }
        if (IsEqualIID(riid, IID_IKxContentFolder)) {
            auto answer = [&]() -> HRESULT {
                AddRefImpl();
                *ppv = static_cast<IKxContentFolder*>(this);
                return S_OK;
            };
            return isRoot ? Lib().Run(Op::QueryContentFolder, true, answer) : answer();
        }
        if (IsEqualIID(riid, IID_IUnknown)) {
            AddRefImpl();
            *ppv = static_cast<IKxContentFolder*>(this);
            return S_OK;
        }
        return E_NOINTERFACE;
    }
    KXHOST_IUNKNOWN_REFCOUNT

    HRESULT STDMETHODCALLTYPE EnumItems(DWORD reserved, DWORD flags, REFIID riid, void** ppv) override {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        return Lib().Run(Op::EnumItems, true, [&]() -> HRESULT {
            if (reserved != 0) return E_INVALIDARG;
            if (flags == KX_ENUM_CONTAINERS) {
                if (!IsEqualIID(riid, IID_IKxItemEnum)) return E_NOINTERFACE;
                const std::vector<ItemId>& children = Lib().Containers(Item());
                HRESULT hr = CreateItemEnum(LibPtr(), Item(), children, riid, ppv);
                return FAILED(hr) ? hr : (children.empty() ? S_FALSE : S_OK);
            }
            if (flags == KX_ENUM_TRACKS) {
                if (!IsEqualIID(riid, IID_IKxTrackList)) return E_NOINTERFACE;
                HRESULT hr = CreateTrackListObject(LibPtr(), Item(), riid, ppv);
                return FAILED(hr) ? hr : (Lib().Members(Item()).empty() ? S_FALSE : S_OK);
            }
            return E_INVALIDARG;
        });
    }

    HRESULT STDMETHODCALLTYPE GetItemAttributes(UINT count, const KxPcPidl* items, DWORD* attributes) override {
        return Lib().Run(Op::GetItemAttributes, false, [&]() -> HRESULT {
            if (!items || !attributes) return E_POINTER;
            if (count == 0) return E_INVALIDARG;
            DWORD common = 0xFFFFFFFFu;
            for (UINT i = 0; i < count; ++i) {
                const InMemoryLibrary::Node* n = Lib().Find(items[i]);
                if (!n) return E_INVALIDARG;
                common &= Lib().AttributesOf(Lib().IdOfNode(n));
            }
            *attributes &= common;
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE Reserved1() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetItemName(KxPcPidl item, DWORD, LPWSTR* ppszName) override {
        if (!ppszName) return E_POINTER;
        *ppszName = nullptr;
        return Lib().Run(Op::GetItemName, false, [&]() -> HRESULT {
            const InMemoryLibrary::Node* n = Lib().Find(item);
            if (!n || !Lib().IsChildOf(Item(), Lib().IdOfNode(n))) return E_INVALIDARG;
            *ppszName = TaskMemString(Lib().NameOf(Lib().IdOfNode(n)).c_str());
            return *ppszName ? S_OK : E_OUTOFMEMORY;
        });
    }

    HRESULT STDMETHODCALLTYPE GetItemObject(IKxContentSite* site, HWND owner, UINT count, const KxPcPidl* items,
                                            REFIID riid, void** ppv) override {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        return Lib().Run(Op::GetItemObject, true, [&]() -> HRESULT {
            if (!items) return E_POINTER;
            if (count == 0) return E_INVALIDARG;
            std::vector<ItemId> ids;
            ids.reserve(count);
            for (UINT i = 0; i < count; ++i) {
                const InMemoryLibrary::Node* n = Lib().Find(items[i]);
                if (!n) return E_INVALIDARG;
                ids.push_back(Lib().IdOfNode(n));
            }
            Lib().NoteItemObjectCall({site, owner, ids, riid});
            if (IsEqualIID(riid, IID_IKxItemProperties))
                return CreatePropertiesObject(LibPtr(), std::move(ids), riid, ppv);
            if (IsEqualIID(riid, IID_IKxItemPreview)) {
                if (count != 1) return E_INVALIDARG;
                ItemKind kind = Lib().KindOf(ids[0]);
                if ((kind != ItemKind::Picture && kind != ItemKind::Video) || !Lib().PreviewOf(ids[0]))
                    return E_NOINTERFACE;
                return CreatePreviewObject(LibPtr(), ids[0], riid, ppv);
            }
            return E_NOINTERFACE;
        });
    }

    HRESULT STDMETHODCALLTYPE BindToFolder(KxPcPidl item, REFIID riid, void** ppv) override {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        return Lib().Run(Op::BindToFolder, true, [&]() -> HRESULT {
            const InMemoryLibrary::Node* n = Lib().Find(item);
            if (!n) return E_INVALIDARG;
            ItemId child = Lib().IdOfNode(n);
            if (Lib().NodeAt(child).parent != Item() || Lib().AttributesOf(child) == 0) return E_INVALIDARG;
            if (!IsEqualIID(riid, IID_IKxContentFolder)) return E_NOINTERFACE;
            return CreateFolderObject(LibPtr(), child, riid, ppv);
        });
    }

    HRESULT STDMETHODCALLTYPE Reserved2() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved3() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE ParseName(LPCWSTR name, DWORD flags, KxPidl* ppidl) override {
        if (!ppidl) return E_POINTER;
        *ppidl = nullptr;
        return Lib().Run(Op::ParseName, false, [&]() -> HRESULT {
            if (!name) return E_POINTER;
            if (flags != KX_PARSE_WELLKNOWN) return E_INVALIDARG;
            if (Item() == Lib().Root()) {
                for (int i = 0; i < kWellKnownCount; ++i) {
                    const WellKnown folder = static_cast<WellKnown>(i);
                    if (std::wstring(name) == WellKnownName(folder)) {
                        *ppidl = Lib().NewPidl(Lib().Folder(folder));
                        return *ppidl ? S_OK : E_OUTOFMEMORY;
                    }
                }
            }
            return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
        });
    }

    HRESULT STDMETHODCALLTYPE GetOwnId(KxPidl* ppidl) override {
        if (!ppidl) return E_POINTER;
        *ppidl = nullptr;
        return Lib().Run(Op::GetOwnId, false, [&]() -> HRESULT {
            *ppidl = Lib().NewPidl(Item());
            return *ppidl ? S_OK : E_OUTOFMEMORY;
        });
    }
};

}  // namespace

HRESULT CreateFolderObject(const std::shared_ptr<InMemoryLibrary>& lib, ItemId folder, REFIID riid, void** ppv) {
    auto* object = new FolderObject(lib, folder);
    if (IsEqualIID(riid, IID_IKxContentRoot))
        *ppv = static_cast<IKxContentRoot*>(object);
    else
        *ppv = static_cast<IKxContentFolder*>(object);
    return S_OK;
}

}  // namespace kxhost
