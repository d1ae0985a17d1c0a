// Reading an item's ten tags, the known values of the text fields, and what several items allow.
#include "tags/edit_tag_model.h"

#include <cstring>
#include <new>

namespace {

// The value word of a tag as read: 3 when there, plus 4 when the library lets it be written.
DWORD ValueFlags(DWORD propertyFlags) {
    DWORD flags = KX_TAGFLAGS_PRESENT;
    if (propertyFlags & KX_PROPINFO_WRITE) flags |= KX_TAGFLAG_WRITABLE;
    return flags;
}

// The capability word of a tag of one of several items.
DWORD CapabilityWord(DWORD propertyFlags) {
    DWORD word = KX_TAGFLAG_PRESENT;
    if (propertyFlags & KX_PROPINFO_READ) word |= KX_TAGFLAG_READ;
    if (propertyFlags & KX_PROPINFO_WRITE) word |= KX_TAGFLAG_WRITABLE;
    return word;
}

}  // namespace

void CEditTagModel::FreeTrackTagValues(_tagTrackTagValues* record) {
    if (!record) return;
    for (int tag = 0; tag < KxTagCount; ++tag) {
        const KxTagField& field = KxTagFieldOf(tag);
        if (field.text) CoTaskMemFree(record->*field.text);
    }
    CoTaskMemFree(record->art);
    std::memset(record, 0, sizeof(*record));
}

HRESULT CEditTagModel::ReadItemTags(IKxItemProperties* properties, KxPcPidl item) {
    m_itemPath[0] = L'\0';
    if (!properties || !item) return E_POINTER;

    FreeTrackTagValues(&m_tags);
    m_tags.trackNumber = -1;  // absent
    m_artistList.clear();
    m_albumList.clear();
    m_secondArtistList.clear();
    m_genreList.clear();

    // The lists are read anew for every item; a list that can't be read stays empty.
    ReadKnownValues(KxFolderAlbums, m_albumList);
    ReadKnownValues(KxFolderArtists, m_artistList);
    ReadKnownValues(KxFolderArtists, m_secondArtistList);
    ReadKnownValues(KxFolderGenres, m_genreList);

    bool artRead = false;
    for (int tag = 0; tag < KxTagCount; ++tag) {
        const KxTagField& field = KxTagFieldOf(tag);
        DWORD propertyFlags = 0;
        if (FAILED(properties->GetPropertyInfo(item, field.key, &propertyFlags, nullptr))) continue;
        m_tags.*field.flags = ValueFlags(propertyFlags);

        switch (field.kind) {
            case KxTagKindString: {
                LPWSTR text = nullptr;
                if (SUCCEEDED(properties->GetStringProperty(item, field.key, &text))) {
                    m_tags.*field.text = text;
                } else {
                    CoTaskMemFree(text);
                }
                break;
            }
            case KxTagKindNumber: {
                LONG value = 0;
                if (SUCCEEDED(properties->GetIntProperty(item, field.key, &value))) m_tags.*field.number = value;
                break;
            }
            case KxTagKindBytes: {
                DWORD word = 0;
                BYTE* data = nullptr;
                ULONG size = 0;
                // A read that succeeds without bytes counts as no art.
                if (SUCCEEDED(properties->GetBlobProperty(item, field.key, &word, &data, &size)) && data &&
                    size > 0) {
                    m_tags.art = data;
                    m_tags.artSize = size;
                    artRead = true;
                } else {
                    CoTaskMemFree(data);
                }
                break;
            }
        }
    }
    if (!artRead) m_bArtRemoved = TRUE;

    if (!(m_nMode & (KX_EDITMODE_SEVERAL | KX_EDITMODE_NO_PATH))) {
        LPWSTR location = nullptr;
        if (SUCCEEDED(properties->GetStringProperty(item, &KxPropLocation, &location))) {
            LPWSTR path = nullptr;
            if (SUCCEEDED(properties->GetStringProperty(item, &KxPropFilePath, &path))) CopyItemPath(path);
            CoTaskMemFree(path);
        }
        CoTaskMemFree(location);
    }
    return S_OK;
}

HRESULT CEditTagModel::LoadItemTags(KxPcPidl item) {
    if (!item || !m_pFolder) return E_POINTER;
    void* object = nullptr;
    HRESULT hr = m_pFolder->GetItemObject(m_pSite, OwnerWindow(), 1, &item, IID_IKxItemProperties, &object);
    if (FAILED(hr) || !object) return E_POINTER;
    IKxItemProperties* properties = static_cast<IKxItemProperties*>(object);
    hr = ReadItemTags(properties, item);
    properties->Release();
    return hr;
}

HRESULT CEditTagModel::ReadKnownValues(LPCWSTR folderName, KxStringList& list) {
    if (!m_library) return E_POINTER;

    KxPidl id = nullptr;
    HRESULT hr = m_library->ParseName(folderName, KX_PARSE_WELLKNOWN, &id);
    if (hr != S_OK || !id) {
        CoTaskMemFree(id);
        return E_FAIL;
    }
    void* object = nullptr;
    hr = m_library->BindToFolder(id, IID_IKxContentFolder, &object);
    if (FAILED(hr) || !object) {
        CoTaskMemFree(id);
        return E_FAIL;
    }
    IKxContentFolder* folder = static_cast<IKxContentFolder*>(object);
    object = nullptr;
    hr = folder->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, &object);
    if (FAILED(hr) || !object) {
        folder->Release();
        CoTaskMemFree(id);
        return E_FAIL;
    }
    IKxItemEnum* items = static_cast<IKxItemEnum*>(object);

    list.clear();
    do {
        KxPidl child = nullptr;
        ULONG fetched = 0;
        hr = items->Next(1, &child, &fetched);
        if ((hr == S_OK || hr == S_FALSE) && fetched != 0 && child) {
            LPWSTR name = nullptr;
            // A name handed back as null is no value to offer.
            if (SUCCEEDED(folder->GetItemName(child, KX_NAME_NORMAL, &name)) && name) list.emplace_back(name);
            CoTaskMemFree(name);
        }
        CoTaskMemFree(child);
    } while (hr == S_OK);

    SortStrings(list);
    items->Release();
    folder->Release();
    CoTaskMemFree(id);
    return S_OK;
}

void CEditTagModel::FreeItemCapabilities() {
    for (_tagTrackTagAttribute* record : m_itemCapabilities) CoTaskMemFree(record);
    m_itemCapabilities.clear();
}

HRESULT CEditTagModel::ReadItemCapabilities(IKxItemProperties* properties, const KxPcPidl* items, UINT count) {
    if (!properties || !items || count == 0) return E_POINTER;
    FreeItemCapabilities();
    try {
        m_itemCapabilities.reserve(count);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    for (UINT i = 0; i < count; ++i) {
        auto* record = static_cast<_tagTrackTagAttribute*>(CoTaskMemAlloc(sizeof(_tagTrackTagAttribute)));
        if (!record) {
            // Without the whole set nothing counts as writable.
            FreeItemCapabilities();
            return E_OUTOFMEMORY;
        }
        m_itemCapabilities.push_back(record);
        for (int tag = 0; tag < KxTagCount; ++tag) {
            DWORD propertyFlags = 0;
            HRESULT hr = properties->GetPropertyInfo(items[i], KxTagFieldOf(tag).key, &propertyFlags, nullptr);
            record->tags[tag] = FAILED(hr) ? 0 : CapabilityWord(propertyFlags);
        }
    }
    return S_OK;
}

BOOL CEditTagModel::AnyItemWritable(int tag) const {
    if (tag < 0 || tag >= KxTagCount) return FALSE;
    for (const _tagTrackTagAttribute* record : m_itemCapabilities) {
        if (record->tags[tag] & KX_TAGFLAG_WRITABLE) return TRUE;
    }
    return FALSE;
}
