// IKxItemProperties of the in-memory library: reads and writes the properties of items, with a
// capability word per property and per item.
#include "host/library/library_object.h"

#include <cstring>

namespace kxhost {

namespace {

bool IsNumber32(ValueKind k) { return k == ValueKind::Int32 || k == ValueKind::UInt32; }

class PropertiesObject final : public LibraryObject, public IKxItemProperties {
public:
    // Made for a set of items (the first one names it in the audit), it answers for any item.
    PropertiesObject(const std::shared_ptr<InMemoryLibrary>& lib, ItemId first)
        : LibraryObject(lib, "item properties", first) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        if (!IsEqualIID(riid, IID_IKxItemProperties) && !IsEqualIID(riid, IID_IUnknown)) return E_NOINTERFACE;
        AddRefImpl();
        *ppv = static_cast<IKxItemProperties*>(this);
        return S_OK;
    }
    KXHOST_IUNKNOWN_REFCOUNT

    HRESULT STDMETHODCALLTYPE PrefetchProperties(ULONG keyCount, const KxPropertyKey* keys) override {
        return Lib().Run(Op::PrefetchProperties, false, [&]() -> HRESULT {
            if (keyCount && !keys) return E_POINTER;
            Lib().NotePrefetch(keys, keyCount);
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE Reserved1() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetPropertyInfo(KxPcPidl item, const KxPropertyKey* key, DWORD* flags, void*) override {
        if (flags) *flags = 0;
        return Lib().Run(Op::GetPropertyInfo, false, [&]() -> HRESULT {
            if (!key || !flags) return E_POINTER;
            const InMemoryLibrary::Prop* p = nullptr;
            HRESULT hr = Lookup(item, key, &p);
            if (FAILED(hr)) return hr;
            *flags = p->caps;
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE Reserved2() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved3() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved4() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetStringProperty(KxPcPidl item, const KxPropertyKey* key, LPWSTR* value) override {
        if (value) *value = nullptr;
        return Lib().Run(Op::GetStringProperty, false, [&]() -> HRESULT {
            if (!key || !value) return E_POINTER;
            const InMemoryLibrary::Prop* p = nullptr;
            HRESULT hr = ReadableLookup(item, key, &p);
            if (FAILED(hr)) return hr;
            if (p->kind != ValueKind::String) return DISP_E_TYPEMISMATCH;
            *value = TaskMemString(Lib().Text(p->pool));
            return *value ? S_OK : E_OUTOFMEMORY;
        });
    }

    HRESULT STDMETHODCALLTYPE SetStringProperty(UINT count, const KxPcPidl* items, const KxPropertyKey* key,
                                                LPCWSTR value) override {
        return Lib().Run(Op::SetStringProperty, false, [&]() -> HRESULT {
            if (!key || !value) return E_POINTER;
            return WriteAll(count, items, *key, PropertyValue::String(value), WriteRecord::String);
        });
    }

    HRESULT STDMETHODCALLTYPE GetIntProperty(KxPcPidl item, const KxPropertyKey* key, LONG* value) override {
        if (value) *value = 0;
        return Lib().Run(Op::GetIntProperty, false, [&]() -> HRESULT {
            if (!key || !value) return E_POINTER;
            const InMemoryLibrary::Prop* p = nullptr;
            HRESULT hr = ReadableLookup(item, key, &p);
            if (FAILED(hr)) return hr;
            if (!IsNumber32(p->kind)) return DISP_E_TYPEMISMATCH;
            *value = static_cast<LONG>(p->number);
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE SetIntProperty(UINT count, const KxPcPidl* items, const KxPropertyKey* key,
                                             LONG value) override {
        return Lib().Run(Op::SetIntProperty, false, [&]() -> HRESULT {
            if (!key) return E_POINTER;
            return WriteAll(count, items, *key, PropertyValue::Int(value), WriteRecord::Int);
        });
    }

    HRESULT STDMETHODCALLTYPE Reserved5() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved6() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved7() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved8() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved9() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved10() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved11() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved12() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved13() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved14() override { return E_NOTIMPL; }

    // The word is always 0 here; a blob of no bytes comes back as null and 0.
    HRESULT STDMETHODCALLTYPE GetBlobProperty(KxPcPidl item, const KxPropertyKey* key, DWORD* word, BYTE** data,
                                              ULONG* size) override {
        if (word) *word = 0;
        if (data) *data = nullptr;
        if (size) *size = 0;
        return Lib().Run(Op::GetBlobProperty, false, [&]() -> HRESULT {
            if (!key || !data || !size) return E_POINTER;
            const InMemoryLibrary::Prop* p = nullptr;
            HRESULT hr = ReadableLookup(item, key, &p);
            if (FAILED(hr)) return hr;
            if (p->kind != ValueKind::Blob) return DISP_E_TYPEMISMATCH;
            const std::vector<BYTE>& bytes = Lib().BytesAt(p->pool);
            if (bytes.empty()) return S_OK;
            *data = static_cast<BYTE*>(CoTaskMemAlloc(bytes.size()));
            if (!*data) return E_OUTOFMEMORY;
            std::memcpy(*data, bytes.data(), bytes.size());
            *size = static_cast<ULONG>(bytes.size());
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE SetBlobProperty(UINT count, const KxPcPidl* items, const KxPropertyKey* key, DWORD,
                                              const BYTE* data, ULONG size) override {
        return Lib().Run(Op::SetBlobProperty, false, [&]() -> HRESULT {
            if (!key || (size && !data)) return E_POINTER;
            return WriteAll(count, items, *key, PropertyValue::Blob(std::vector<BYTE>(data, data + size)),
                            WriteRecord::Blob);
        });
    }

    HRESULT STDMETHODCALLTYPE GetProperties(KxPcPidl item, ULONG keyCount, const KxPropertyKey* keys,
                                            PROPVARIANT* values) override {
        return Lib().Run(Op::GetProperties, false, [&]() -> HRESULT {
            if (keyCount == 0) return E_INVALIDARG;
            if (!keys || !values) return E_POINTER;
            const InMemoryLibrary::Node* n = Lib().Find(item);
            if (!n) return E_INVALIDARG;
            const ItemId id = Lib().IdOfNode(n);
            bool allThere = true;
            for (ULONG k = 0; k < keyCount; ++k) {
                const InMemoryLibrary::Prop* p = Lib().FindProp(id, keys[k]);
                if (!p || !(p->caps & kReadable)) {
                    allThere = false;
                    continue;
                }
                if (FAILED(Lib().ToVariant(*p, &values[k]))) {
                    for (ULONG i = 0; i < k; ++i) PropVariantClear(&values[i]);
                    return E_OUTOFMEMORY;
                }
            }
            return allThere ? S_OK : S_FALSE;
        });
    }

    HRESULT STDMETHODCALLTYPE SetProperties(UINT count, const KxPcPidl* items, ULONG keyCount,
                                            const KxPropertyKey* keys, const PROPVARIANT* values) override {
        return Lib().Run(Op::SetProperties, false, [&]() -> HRESULT {
            if (keyCount == 0) return E_INVALIDARG;
            if (!keys || !values) return E_POINTER;
            std::vector<PropertyValue> converted;
            converted.reserve(keyCount);
            for (ULONG k = 0; k < keyCount; ++k) {
                PropertyValue v;
                HRESULT hr = FromVariant(values[k], &v);
                if (FAILED(hr)) return hr;
                hr = Lib().CanWrite(count, items, keys[k], v.kind);
                if (FAILED(hr)) return hr;
                converted.push_back(std::move(v));
            }
            for (UINT i = 0; i < count; ++i)
                for (ULONG k = 0; k < keyCount; ++k)
                    Lib().Write(Lib().ItemOf(items[i]), keys[k], converted[k], WriteRecord::Properties);
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE RemoveProperties(UINT count, const KxPcPidl* items, ULONG keyCount,
                                               const KxPropertyKey* keys) override {
        return Lib().Run(Op::RemoveProperties, false, [&]() -> HRESULT {
            return Lib().Remove(count, items, keyCount, keys);
        });
    }

private:
    HRESULT Lookup(KxPcPidl item, const KxPropertyKey* key, const InMemoryLibrary::Prop** prop) const {
        const InMemoryLibrary::Node* n = Lib().Find(item);
        if (!n) return E_INVALIDARG;
        *prop = Lib().FindProp(Lib().IdOfNode(n), *key);
        return *prop ? S_OK : KX_E_PROPERTY_NOT_FOUND;
    }
    HRESULT ReadableLookup(KxPcPidl item, const KxPropertyKey* key, const InMemoryLibrary::Prop** prop) const {
        HRESULT hr = Lookup(item, key, prop);
        if (SUCCEEDED(hr) && !((*prop)->caps & kReadable)) return E_ACCESSDENIED;
        return hr;
    }

    static HRESULT FromVariant(const PROPVARIANT& pv, PropertyValue* v) {
        switch (pv.vt) {
            case VT_LPWSTR:
                if (!pv.pwszVal) return E_POINTER;
                *v = PropertyValue::String(pv.pwszVal);
                return S_OK;
            case VT_I4: *v = PropertyValue::Int(pv.lVal); return S_OK;
            case VT_UI4: *v = PropertyValue::UInt(pv.ulVal); return S_OK;
            case VT_UI8: *v = PropertyValue::Size(pv.uhVal.QuadPart); return S_OK;
            case VT_R4: *v = PropertyValue::Float(pv.fltVal); return S_OK;
            case VT_BLOB:
                if (pv.blob.cbSize && !pv.blob.pBlobData) return E_POINTER;
                *v = PropertyValue::Blob(
                    std::vector<BYTE>(pv.blob.pBlobData, pv.blob.pBlobData + pv.blob.cbSize));
                return S_OK;
            default: return DISP_E_TYPEMISMATCH;
        }
    }

    HRESULT WriteAll(UINT count, const KxPcPidl* items, const KxPropertyKey& key, const PropertyValue& value,
                     WriteRecord::Kind via) {
        HRESULT hr = Lib().CanWrite(count, items, key, value.kind);
        if (FAILED(hr)) return hr;
        for (UINT i = 0; i < count; ++i) Lib().Write(Lib().ItemOf(items[i]), key, value, via);
        return S_OK;
    }
};

}  // namespace

HRESULT CreatePropertiesObject(const std::shared_ptr<InMemoryLibrary>& lib, std::vector<ItemId> items, REFIID,
                               void** ppv) {
    *ppv = static_cast<IKxItemProperties*>(new PropertiesObject(lib, items.empty() ? 0 : items[0]));
    return S_OK;
}

}  // namespace kxhost
