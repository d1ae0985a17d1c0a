// The single-item tag dialog's decisions: tags to controls and back, enabling, checks and steps.
#include "tags/single_tag_model.h"
#include "base/owners.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <cwchar>

namespace {

enum : UINT { kVkLeft = 37, kVkRight = 39 };

// The four text fields with a list, in the order their lists are filled.
struct ListField {
    int id;
    KxStringList CEditTagModel::*list;
};
const ListField kListFields[] = {
    {KX_IDC_TAG_ARTIST, &CEditTagModel::m_artistList},
    {KX_IDC_TAG_ALBUM, &CEditTagModel::m_albumList},
    {KX_IDC_TAG_ARTIST2, &CEditTagModel::m_secondArtistList},
    {KX_IDC_TAG_GENRE, &CEditTagModel::m_genreList},
};

// The text fields as a record holds them, in the order they are read from the controls.
struct TextField {
    int id;
    int tag;
};
const TextField kTextFields[] = {
    {KX_IDC_TAG_TITLE, KxTagTitle}, {KX_IDC_TAG_ARTIST, KxTagArtist}, {KX_IDC_TAG_ARTIST2, KxTagArtist2},
    {KX_IDC_TAG_ALBUM, KxTagAlbum}, {KX_IDC_TAG_GENRE, KxTagGenre},   {KX_IDC_TAG_YEAR, KxTagYear},
};

bool Writable(DWORD flags) { return (flags & KX_TAGFLAG_WRITABLE) != 0; }

// Flags of a value read back from a control: 7 enabled, 3 disabled with a value, else 0.
DWORD FlagsOf(bool enabled, bool hasValue) {
    if (enabled) return KX_TAGFLAGS_WRITABLE;
    if (hasValue) return KX_TAGFLAGS_PRESENT;
    return 0;
}

}  // namespace

LONG KxParseSignedInt(const std::wstring& text) {
    const wchar_t* begin = text.c_str();
    while (*begin == L' ') ++begin;
    if (!*begin) return 0;
    wchar_t* end = nullptr;
    errno = 0;
    const long long value = std::wcstoll(begin, &end, 10);
    while (end && *end == L' ') ++end;
    if (errno != 0 || !end || *end || value < LONG_MIN || value > LONG_MAX) return 0;
    return static_cast<LONG>(value);
}

CSingleTagModel::CSingleTagModel(IEditTagControls& controls, IKxContentSite* site, IKxContentFolder* folder,
                                 UINT itemCount, const KxPcPidl* items)
    : CEditTagDialogModel(controls, site, folder, itemCount, items),
      m_bFirstShow(TRUE),
      m_prevEnabled(TRUE),
      m_nextEnabled(TRUE) {
    m_albumId = KX_IDC_TAG_ALBUM;
}

HRESULT CSingleTagModel::InitDialog() {
    BOOL isLast = FALSE;
    BOOL isFirst = FALSE;
    const HRESULT hr = InitEditTagModel(&isLast, &isFirst);
    SetStepButtons(isFirst, isLast);
    FillYearAndTrackLists(KX_IDC_TAG_YEAR, KX_IDC_TAG_TRACK);
    return hr;
}

void CSingleTagModel::OnShowWindow(bool shown) {
    if (!shown || !m_bFirstShow) return;
    SetTagsToControls(&m_tags);
    m_bFirstShow = FALSE;
}

// Brings the lists back to the names read, for the next item's value: the former item's own
// entry leaves a list kept from before (a list read anew has none), and a box already filled
// follows its list.
void CSingleTagModel::FillKnownValueLists() {
    for (size_t i = 0; i < 4; ++i) {
        const int id = kListFields[i].id;
        KxStringList& list = this->*kListFields[i].list;
        NameBox& box = m_nameBoxes[i];
        const bool readAnew = box.reads != m_knownValuesReads;
        if (!readAnew && box.inserted >= 0 && static_cast<size_t>(box.inserted) < list.size()) {
            list.erase(list.begin() + box.inserted);
            if (box.filled) m_controls.RemoveFromList(id, box.inserted);
        }
        box.inserted = -1;
        box.selected = -1;
        box.reads = m_knownValuesReads;
        // a box the user has opened shows the new names at once
        if (readAnew && box.filled && m_controls.Exists(id)) m_controls.SetList(id, list);
    }
}

void CSingleTagModel::FillListOnDemand(int id) {
    for (size_t i = 0; i < 4; ++i) {
        NameBox& box = m_nameBoxes[i];
        if (kListFields[i].id != id || box.filled || !m_controls.Exists(id)) continue;
        const KxStringList& list = this->*kListFields[i].list;
        std::wstring shown;
        m_controls.GetText(id, &shown);
        m_controls.SetList(id, list);
        box.filled = TRUE;
        box.reads = m_knownValuesReads;
        // The item's value is selected as it would have been from the start; a text changed since
        // it was shown (it is no entry of the list) stays as it is.
        if (box.selected >= 0 && static_cast<size_t>(box.selected) < list.size() &&
            list[static_cast<size_t>(box.selected)] == shown) {
            m_controls.SelectInList(id, box.selected);
        } else {
            std::wstring now;
            m_controls.GetText(id, &now);
            if (now != shown) m_controls.SetText(id, shown);
        }
    }
}

void CSingleTagModel::SetTagsToControls(const _tagTrackTagValues* record) {
    if (!record) return;
    IEditTagControls& c = m_controls;
    FillKnownValueLists();

    c.Enable(KX_IDC_TAG_TITLE, Writable(record->titleFlags));
    c.SetText(KX_IDC_TAG_TITLE, record->title ? record->title : L"");

    for (const ListField& field : kListFields) {
        const int tag = field.id == KX_IDC_TAG_ARTIST    ? KxTagArtist
                        : field.id == KX_IDC_TAG_ALBUM   ? KxTagAlbum
                        : field.id == KX_IDC_TAG_ARTIST2 ? KxTagArtist2
                                                         : KxTagGenre;
        LPCWSTR value = record->*KxTagFieldOf(tag).text;
        if (!Writable(record->*KxTagFieldOf(tag).flags)) {
            c.Enable(field.id, false);
            c.SetText(field.id, value ? value : L"");
            continue;
        }
        c.Enable(field.id, true);
        BOOL found = FALSE;
        const int index = value && *value ? FindOrInsertString(this->*field.list, value, &found) : -1;
        if (index < 0) {
            c.SetText(field.id, L"");
            continue;
        }
        NameBox& box = m_nameBoxes[&field - kListFields];
        if (!found) box.inserted = index;
        box.selected = index;
        if (!box.filled) {
            c.SetText(field.id, value);  // the list comes when the box is first needed
            continue;
        }
        if (!found) c.InsertInList(field.id, index, value);
        c.SelectInList(field.id, index);
    }

    // A negative year or track number, and an absent track number of a writable tag, show an
    // empty field: leaving the field alone would show the former item's value, and saving would
    // write it to this one. An empty field writes no year, and no track number for an item whose
    // number was negative or absent (GetTagsFromControls).
    if (!Writable(record->yearFlags)) {
        c.Enable(KX_IDC_TAG_YEAR, false);
        c.SetText(KX_IDC_TAG_YEAR, record->year ? record->year : L"");
    } else {
        c.Enable(KX_IDC_TAG_YEAR, true);
        const int year = record->year && *record->year ? KxLeadingInt(record->year) : -1;
        if (year < 0) {
            c.SetText(KX_IDC_TAG_YEAR, L"");
        } else {
            BOOL found = FALSE;
            const int index = FindOrInsertNumber(m_yearValues, static_cast<DWORD>(year), &found);
            if (!found) c.InsertInList(KX_IDC_TAG_YEAR, index, std::to_wstring(year));
            c.SelectInList(KX_IDC_TAG_YEAR, index);
        }
    }

    if (!Writable(record->trackNumberFlags)) {
        c.Enable(KX_IDC_TAG_TRACK, false);
        c.SetText(KX_IDC_TAG_TRACK, L"");
    } else {
        c.Enable(KX_IDC_TAG_TRACK, true);
        const LONG track = record->trackNumber;
        if (track < 0) {
            c.SetText(KX_IDC_TAG_TRACK, L"");
        } else if (track == 0) {
            c.SetText(KX_IDC_TAG_TRACK, L"0");
        } else if (track <= 30) {
            c.SelectInList(KX_IDC_TAG_TRACK, static_cast<int>(track - 1));
        } else {
            BOOL found = FALSE;
            const int index = FindOrInsertNumber(m_trackValues, static_cast<DWORD>(track), &found);
            if (!found) c.InsertInList(KX_IDC_TAG_TRACK, index, std::to_wstring(track));
            c.SelectInList(KX_IDC_TAG_TRACK, index);
        }
    }

    c.Enable(KX_IDC_TAG_RATING, Writable(record->ratingFlags));
    if (record->rating >= 0 && record->rating <= 5) {
        c.SetSliderPos(KX_IDC_TAG_RATING, static_cast<int>(record->rating));
    } else {
        c.SetSliderPos(KX_IDC_TAG_RATING, 0);
        c.Enable(KX_IDC_TAG_RATING, false);
    }

    c.Enable(KX_IDC_TAG_NUMBER, Writable(record->tagInt12Flags));
    c.SetText(KX_IDC_TAG_NUMBER, std::to_wstring(record->tagInt12));

    if (Writable(record->artFlags)) {
        m_artEditable = TRUE;
        std::wstring album;
        c.Enable(KX_IDC_TAG_BROWSE, c.GetText(KX_IDC_TAG_ALBUM, &album) && !album.empty());
        c.Enable(KX_IDC_TAG_REMOVE, true);
    } else {
        m_artEditable = FALSE;
        c.Enable(KX_IDC_TAG_BROWSE, false);
        c.Enable(KX_IDC_TAG_REMOVE, false);
    }
    if (record->artSize > 0 && record->art) {
        c.ShowArtBytes(record->art, record->artSize);
    } else {
        c.ShowDefaultArt();
        c.Enable(KX_IDC_TAG_REMOVE, false);
    }
}

void CSingleTagModel::GetTagsFromControls(_tagTrackTagValues* record) {
    if (!record) return;
    IEditTagControls& c = m_controls;
    for (const TextField& field : kTextFields) {
        std::wstring text;
        c.GetText(field.id, &text);
        const KxTagField& f = KxTagFieldOf(field.tag);
        if (!text.empty()) record->*f.text = KxTaskMemCopy(text.c_str(), text.size());
        record->*f.flags = FlagsOf(c.IsEnabled(field.id), !text.empty());
    }

    std::wstring track;
    c.GetText(KX_IDC_TAG_TRACK, &track);
    if (!track.empty()) {
        record->trackNumber = KxLeadingInt(track);
    } else if (m_tags.trackNumber < 0) {
        record->trackNumber = -1;  // an empty field where no number stood writes nothing
    }
    record->trackNumberFlags = FlagsOf(c.IsEnabled(KX_IDC_TAG_TRACK), !track.empty());

    const int pos = c.GetSliderPos(KX_IDC_TAG_RATING);
    record->rating = pos >= 0 && pos <= 5 ? pos : 0;
    record->ratingFlags = FlagsOf(c.IsEnabled(KX_IDC_TAG_RATING), true);

    std::wstring number;
    c.GetText(KX_IDC_TAG_NUMBER, &number);
    record->tagInt12 = KxParseSignedInt(number);
    record->tagInt12Flags = FlagsOf(c.IsEnabled(KX_IDC_TAG_NUMBER), true);

    if (m_bArtChanged && m_nArtSize > 0 && m_pArtBytes) {
        record->art = static_cast<BYTE*>(CoTaskMemAlloc(m_nArtSize));
        if (record->art) {
            std::memcpy(record->art, m_pArtBytes.Get(), m_nArtSize);
            record->artSize = m_nArtSize;
            record->artFlags = KX_TAGFLAGS_WRITABLE;
        }
    }
}

void CSingleTagModel::ClearShownArt() {
    m_pArtBytes.Reset();
    m_nArtSize = 0;
    m_bArtChanged = FALSE;
}

void CSingleTagModel::OnFieldChanged(int id) {
    switch (id) {
        case KX_IDC_TAG_TITLE:
        case KX_IDC_TAG_ARTIST:
        case KX_IDC_TAG_ARTIST2:
        case KX_IDC_TAG_GENRE:
            if (m_checkLength) CheckLength(id, m_restoreOverflow);
            m_restoreOverflow = FALSE;
            m_checkLength = TRUE;
            break;
        case KX_IDC_TAG_YEAR:
        case KX_IDC_TAG_TRACK:
        case KX_IDC_TAG_NUMBER: {
            std::wstring text;
            if (m_checkLength && m_controls.GetText(id, &text) && text.size() > static_cast<size_t>(KX_TAG_MAX_TEXT)) {
                CheckLength(id, m_restoreOverflow);
                m_restoreOverflow = FALSE;
                break;
            }
            m_checkLength = TRUE;
            HideDigitWarning(id);
            break;
        }
        case KX_IDC_TAG_ALBUM: {
            // Art belongs to an album: emptying the album takes the art away.
            std::wstring album;
            m_controls.GetText(id, &album);
            if (album.empty()) {
                if (m_controls.IsEnabled(id)) OnRemoveArt();
                m_controls.Enable(KX_IDC_TAG_BROWSE, false);
            } else {
                m_controls.Enable(KX_IDC_TAG_BROWSE, m_artEditable != FALSE);
            }
            CheckLength(id, m_restoreOverflow);
            m_restoreOverflow = FALSE;
            break;
        }
        default:
            break;
    }
}

CSingleTagModel::OkOutcome CSingleTagModel::OnOK() {
    if (CheckLength(KX_IDC_TAG_TITLE, FALSE) < 1) return OkOutcome::Stay;
    for (int id : {KX_IDC_TAG_ARTIST, KX_IDC_TAG_ARTIST2, KX_IDC_TAG_ALBUM, KX_IDC_TAG_GENRE})
        if (CheckLength(id, m_restoreOverflow) < 1) return OkOutcome::Stay;
    if (!CheckDigits(KX_IDC_TAG_YEAR, false) || !CheckDigits(KX_IDC_TAG_TRACK, false) ||
        !CheckDigits(KX_IDC_TAG_NUMBER, true))
        return OkOutcome::Stay;
    if (CheckLength(KX_IDC_TAG_NUMBER, m_restoreOverflow) < 1) return OkOutcome::Stay;
    m_hrResult = SaveCurrentItem();
    return OkOutcome::Close;
}

void CSingleTagModel::SetStepButtons(BOOL isFirst, BOOL isLast) {
    IEditTagControls& c = m_controls;
    if (isFirst && isLast) {
        c.Enable(KX_IDC_TAG_PREV, false);
        c.Enable(KX_IDC_TAG_NEXT, false);
    } else if (isFirst) {
        // The focus doesn't stay on a disabled button.
        c.Enable(KX_IDC_TAG_NEXT, true);
        c.Focus(KX_IDC_TAG_NEXT);
        c.Enable(KX_IDC_TAG_PREV, false);
    } else if (isLast) {
        c.Enable(KX_IDC_TAG_PREV, true);
        c.Focus(KX_IDC_TAG_PREV);
        c.Enable(KX_IDC_TAG_NEXT, false);
    } else {
        c.Enable(KX_IDC_TAG_PREV, true);
        c.Enable(KX_IDC_TAG_NEXT, true);
    }
    m_prevEnabled = !isFirst;
    m_nextEnabled = !isLast;
}

HRESULT CSingleTagModel::Step(bool forward) {
    if (!CheckDigits(KX_IDC_TAG_YEAR, false) || !CheckDigits(KX_IDC_TAG_TRACK, false) ||
        !CheckDigits(KX_IDC_TAG_NUMBER, true))
        return S_FALSE;
    m_controls.Enable(KX_IDC_TAG_REMOVE, true);
    BOOL isFirst = FALSE;
    BOOL isLast = FALSE;
    const HRESULT hr = MoveToItem(&isFirst, &isLast, forward ? TRUE : FALSE);
    SetStepButtons(isFirst, isLast);
    if (FAILED(hr)) m_controls.ShowMessage(KX_IDS_TAG_STEP_FAILED, KX_IDS_TAG_STEP_FAILED_CAPTION);
    return hr;
}

bool CSingleTagModel::OnStepKey(UINT vk, bool modifierDown) {
    if (modifierDown || (vk != kVkLeft && vk != kVkRight)) return false;
    const int focus = m_controls.FocusedControl();
    if (focus != KX_IDC_TAG_PREV && focus != KX_IDC_TAG_NEXT) return false;
    const int button = vk == kVkLeft ? KX_IDC_TAG_PREV : KX_IDC_TAG_NEXT;
    if (!m_controls.IsEnabled(button)) return false;
    if (focus != button) m_controls.Focus(button);
    Step(vk == kVkRight);
    return true;
}

void CSingleTagModel::OnArtChanged() { m_controls.Enable(KX_IDC_TAG_REMOVE, true); }

void CSingleTagModel::OnRemoveArt() {
    if (RemoveArt()) m_controls.Enable(KX_IDC_TAG_REMOVE, false);
}
