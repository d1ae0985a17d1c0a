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

// The record is a plain structure shared with the dialogs and filled field by field through the
// tag table: this is its one clean-up, so its blocks are given back here by hand.
void CEditTagModel::FreeTrackTagValues(_tagTrackTagValues* record) {
    if (!record) return;
    for (int tag = 0; tag < KxTagCount; ++tag) {
        const KxTagField& field = KxTagFieldOf(tag);
        if (field.text) KxTaskMemFree(record->*field.text);
    }
    KxTaskMemFree(record->art);
    std::memset(record, 0, sizeof(*record));
}

HRESULT CEditTagModel::ReadItemTags(IKxItemProperties* properties, KxPcPidl item) {
    m_itemPath[0] = L'\0';
    if (!properties || !item) return E_POINTER;

    FreeTrackTagValues(&m_tags);
    m_tags.trackNumber = -1;  // absent

    // The lists are read for the first item and kept for the next ones: while the dialog runs,
    // the host waits in the call that opened it, so the library's folders change only by what
    // the dialog itself writes, and a write of a name marks them stale. Reading them anew for
    // every step would cost the walk of all the library's names each time. A list that can't be
    // read stays empty.
    if (m_knownValuesStale) {
        m_artistList.clear();
        m_albumList.clear();
        m_secondArtistList.clear();
        m_genreList.clear();
        ReadKnownValues(KxFolderAlbums, m_albumList);
        ReadKnownValues(KxFolderArtists, m_artistList);
        ReadKnownValues(KxFolderArtists, m_secondArtistList);
        ReadKnownValues(KxFolderGenres, m_genreList);
        m_knownValuesStale = FALSE;
        ++m_knownValuesReads;
    }

    bool artRead = false;
    for (int tag = 0; tag < KxTagCount; ++tag) {
        const KxTagField& field = KxTagFieldOf(tag);
        DWORD propertyFlags = 0;
        if (FAILED(properties->GetPropertyInfo(item, field.key, &propertyFlags, nullptr))) continue;
        m_tags.*field.flags = ValueFlags(propertyFlags);

        switch (field.kind) {
            case KxTagKindString: {
                CKxTaskMemString text;
                if (SUCCEEDED(properties->GetStringProperty(item, field.key, text.Put())))
                    m_tags.*field.text = text.Detach();
                break;
            }
            case KxTagKindNumber: {
                LONG value = 0;
                if (SUCCEEDED(properties->GetIntProperty(item, field.key, &value))) m_tags.*field.number = value;
                break;
            }
            case KxTagKindBytes: {
                DWORD word = 0;
                CKxTaskMem<BYTE*> data;
                ULONG size = 0;
                // A read that succeeds without bytes counts as no art.
                if (SUCCEEDED(properties->GetBlobProperty(item, field.key, &word, data.Put(), &size)) && data &&
                    size > 0) {
                    m_tags.art = data.Detach();
                    m_tags.artSize = size;
                    artRead = true;
                }
                break;
            }
        }
    }
    if (!artRead) m_bArtRemoved = TRUE;

    if (!(m_nMode & (KX_EDITMODE_SEVERAL | KX_EDITMODE_NO_PATH))) {
        CKxTaskMemString location;
        if (SUCCEEDED(properties->GetStringProperty(item, &KxPropLocation, location.Put()))) {
            CKxTaskMemString path;
            if (SUCCEEDED(properties->GetStringProperty(item, &KxPropFilePath, path.Put()))) CopyItemPath(path.Get());
        }
    }
    return S_OK;
}

HRESULT CEditTagModel::LoadItemTags(KxPcPidl item) {
    if (!item || !m_pFolder) return E_POINTER;
    CKxComPtr<IKxItemProperties> properties;
    if (!ItemProperties(item, properties)) return E_POINTER;
    return ReadItemTags(properties.Get(), item);
}

bool CEditTagModel::ItemProperties(KxPcPidl item, CKxComPtr<IKxItemProperties>& properties) {
    const HRESULT hr = m_pFolder->GetItemObject(m_pSite, OwnerWindow(), 1, &item, IID_IKxItemProperties,
                                                properties.PutVoid());
    return SUCCEEDED(hr) && properties;
}

HRESULT CEditTagModel::ReadKnownValues(LPCWSTR folderName, KxStringList& list) {
    if (!m_library) return E_POINTER;

    CKxTaskMem<KxPidl> id;
    HRESULT hr = m_library->ParseName(folderName, KX_PARSE_WELLKNOWN, id.Put());
    if (hr != S_OK || !id) return E_FAIL;
    CKxComPtr<IKxContentFolder> folder;
    hr = m_library->BindToFolder(id.Get(), IID_IKxContentFolder, folder.PutVoid());
    if (FAILED(hr) || !folder) return E_FAIL;
    CKxComPtr<IKxItemEnum> items;
    hr = folder->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, items.PutVoid());
    if (FAILED(hr) || !items) return E_FAIL;

    list.clear();
    do {
        CKxTaskMem<KxPidl> child;
        ULONG fetched = 0;
        hr = items->Next(1, child.Put(), &fetched);
        if ((hr == S_OK || hr == S_FALSE) && fetched != 0 && child) {
            CKxTaskMemString name;
            // The folder that listed the child names it; a name handed back as null is no value
            // to offer.
            if (SUCCEEDED(folder->GetItemName(child.Get(), KX_NAME_NORMAL, name.Put())) && name)
                list.emplace_back(name.Get());
        }
    } while (hr == S_OK);

    SortStrings(list);
    return S_OK;
}

void CEditTagModel::FreeItemCapabilities() { m_itemCapabilities.clear(); }

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
        m_itemCapabilities.emplace_back(record);  // room was reserved: this does not throw
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
    for (const CKxTaskMem<_tagTrackTagAttribute*>& record : m_itemCapabilities) {
        if (record.Get()->tags[tag] & KX_TAGFLAG_WRITABLE) return TRUE;
    }
    return FALSE;
}
