// Writing back: one item by comparison with what was read, or the ticked values to all items.
#include "tags/edit_tag_model.h"
#include "base/owners.h"

#include <cstring>
#include <cwchar>

namespace {

// The outcome of a run of writes: success if any write succeeded, else the last failure, else
// "nothing written".
class WriteOutcome {
public:
    void Add(HRESULT hr) {
        if (SUCCEEDED(hr)) {
            m_anySucceeded = true;
        } else {
            m_lastFailure = hr;
        }
    }
    HRESULT Result() const {
        if (m_anySucceeded) return S_OK;
        return m_lastFailure != S_OK ? m_lastFailure : E_NOTIMPL;
    }

private:
    bool m_anySucceeded = false;
    HRESULT m_lastFailure = S_OK;
};

bool TextDiffers(LPCWSTR newText, LPCWSTR oldText) {
    return newText && (!oldText || std::wcscmp(newText, oldText) != 0);
}

}  // namespace

HRESULT CEditTagModel::WriteItemTags(KxPcPidl item) {
    if (!item || !m_pFolder) return E_POINTER;
    CKxComPtr<IKxItemProperties> properties;
    if (!ItemProperties(item, properties)) return E_POINTER;

    _tagTrackTagValues changed = {};
    GetTagsFromControls(&changed);

    WriteOutcome outcome;
    for (int tag = 0; tag < KxTagCount; ++tag) {
        const KxTagField& field = KxTagFieldOf(tag);
        if ((changed.*field.flags & KX_TAGFLAGS_WRITE_NEEDS) != KX_TAGFLAGS_WRITE_NEEDS) continue;
        switch (tag) {
            case KxTagTrackNumber:
            case KxTagRating: {
                LONG value = changed.*field.number;
                LONG old = m_tags.*field.number;
                if (value != -1 && (old == -1 || old != value))
                    outcome.Add(properties->SetIntProperty(1, &item, field.key, value));
                break;
            }
            case KxTagTagInt12:
                if (changed.tagInt12 != m_tags.tagInt12)
                    outcome.Add(properties->SetIntProperty(1, &item, field.key, changed.tagInt12));
                break;
            case KxTagArt:
                if (m_bArtChanged)
                    outcome.Add(properties->SetBlobProperty(1, &item, field.key, 0, changed.art, changed.artSize));
                break;
            default:
                if (TextDiffers(changed.*field.text, m_tags.*field.text)) {
                    outcome.Add(properties->SetStringProperty(1, &item, field.key, changed.*field.text));
                    // A new or changed name may change what the library lists (even a write that
                    // failed may have done part of its work): the next item reads the lists anew.
                    if (tag != KxTagTitle && tag != KxTagYear) m_knownValuesStale = TRUE;
                }
                break;
        }
    }

    // Removal also runs for an item that simply had no art.
    if (m_bArtRemoved && m_properties) {
        outcome.Add(m_properties->RemoveProperties(1, &item, 1, &KxPropAlbumArt));
        m_bArtRemoved = FALSE;
    }

    m_bArtChanged = FALSE;
    FreeTrackTagValues(&changed);
    return outcome.Result();
}

HRESULT CEditTagModel::WriteAllItems() {
    if (!m_properties) return E_POINTER;

    _tagTrackTagValues changed = {};
    GetChangedTags(&changed);

    KxPropertyKey keys[6];
    PROPVARIANT values[6];
    ULONG pairs = 0;
    struct TextPair {
        int tag;
        LPWSTR _tagTrackTagValues::*text;
    };
    static const TextPair kTexts[] = {
        {KxTagArtist, &_tagTrackTagValues::artist}, {KxTagArtist2, &_tagTrackTagValues::artist2},
        {KxTagAlbum, &_tagTrackTagValues::album},   {KxTagGenre, &_tagTrackTagValues::genre},
        {KxTagYear, &_tagTrackTagValues::year},
    };
    for (const TextPair& pair : kTexts) {
        LPCWSTR text = changed.*pair.text;
        if (!text || !AnyItemWritable(pair.tag)) continue;
        LPWSTR copy = KxTaskMemCopy(text);
        if (!copy) continue;  // without memory the value is left out, the others still go
        keys[pairs] = *KxTagFieldOf(pair.tag).key;
        PropVariantInit(&values[pairs]);
        values[pairs].vt = VT_LPWSTR;
        values[pairs].pwszVal = copy;
        ++pairs;
    }
    if (changed.rating != -1 && AnyItemWritable(KxTagRating)) {
        keys[pairs] = KxPropRating;
        PropVariantInit(&values[pairs]);
        values[pairs].vt = VT_UI4;
        values[pairs].ulVal = static_cast<ULONG>(changed.rating);
        ++pairs;
    }

    m_properties->SetProperties(m_itemCount, m_items, pairs, keys, values);
    for (ULONG i = 0; i < pairs; ++i) PropVariantClear(&values[i]);

    if (m_deleteArtOnAll) {
        m_properties->RemoveProperties(m_itemCount, m_items, 1, &KxPropAlbumArt);
        m_bArtRemoved = FALSE;
        m_deleteArtOnAll = FALSE;
    } else if ((changed.artFlags & KX_TAGFLAG_WRITABLE) && changed.art && changed.artSize > 0) {
        m_properties->SetBlobProperty(m_itemCount, m_items, &KxPropAlbumArt, 0, changed.art, changed.artSize);
    }

    FreeTrackTagValues(&changed);
    return S_OK;
}

HRESULT CEditTagModel::SaveCurrentItem() {
    if (!m_currentItem) m_currentItem.Reset(GetSelectedItem(&m_currentIndex));
    if (!m_currentItem) {
        m_currentIndex = -1;
        return E_POINTER;
    }
    return WriteItemTags(m_currentItem.Get());
}
