// The multiple-item tag dialog's decisions: what is enabled, what a change ticks, what OK writes.
#include "tags/multiple_tag_model.h"
#include "base/owners.h"

#include <cstring>

namespace {

enum : int { kSbThumbPosition = 4, kSbEndScroll = 8 };

// A field, its change box and its tag. The text fields with a list come first, in the order their
// values go into a record.
struct Field {
    int box;
    int id;
    int tag;
    KxStringList CEditTagModel::*list;  // null: no list of known values
};
const Field kTextFields[] = {
    {KX_IDC_MTAG_ARTIST_CHECK, KX_IDC_MTAG_ARTIST, KxTagArtist, &CEditTagModel::m_artistList},
    {KX_IDC_MTAG_ARTIST2_CHECK, KX_IDC_MTAG_ARTIST2, KxTagArtist2, &CEditTagModel::m_secondArtistList},
    {KX_IDC_MTAG_ALBUM_CHECK, KX_IDC_MTAG_ALBUM, KxTagAlbum, &CEditTagModel::m_albumList},
    {KX_IDC_MTAG_GENRE_CHECK, KX_IDC_MTAG_GENRE, KxTagGenre, &CEditTagModel::m_genreList},
};
const Field kYear = {KX_IDC_MTAG_YEAR_CHECK, KX_IDC_MTAG_YEAR, KxTagYear, nullptr};
const Field kRating = {KX_IDC_MTAG_RATING_CHECK, KX_IDC_MTAG_RATING, KxTagRating, nullptr};

int BoxOf(int id) {
    for (const Field& f : kTextFields)
        if (f.id == id) return f.box;
    if (id == kYear.id) return kYear.box;
    return 0;
}

}  // namespace

CMultipleTagModel::CMultipleTagModel(IMultipleTagControls& controls, IKxContentSite* site, IKxContentFolder* folder,
                                     UINT itemCount, const KxPcPidl* items)
    : CEditTagDialogModel(controls, site, folder, itemCount, items), m_multiControls(controls), m_bFirstShow(TRUE) {
    m_albumId = KX_IDC_MTAG_ALBUM;
}

HRESULT CMultipleTagModel::InitDialog() {
    const HRESULT hr = InitEditTagModel(nullptr, nullptr);
    if (FAILED(hr)) return hr;
    FillYearAndTrackLists(KX_IDC_MTAG_YEAR, 0);
    FillKnownValueLists(m_artistList, m_albumList, m_secondArtistList, m_genreList);
    SetTagsToControls(&m_tags);
    // Showing the values reports no change of the combo boxes; the boxes start unticked all the same.
    for (const Field& f : kTextFields) m_multiControls.SetChecked(f.box, false);
    return S_OK;
}

void CMultipleTagModel::OnShowWindow(bool shown) {
    if (!shown || !m_bFirstShow) return;
    SetTagsToControls(&m_tags);
    m_bFirstShow = FALSE;
}

void CMultipleTagModel::FillKnownValueLists(const KxStringList& artists, const KxStringList& albums,
                                            const KxStringList& artists2, const KxStringList& genres) {
    const std::pair<int, const KxStringList*> lists[] = {{KX_IDC_MTAG_ARTIST, &artists},
                                                         {KX_IDC_MTAG_ALBUM, &albums},
                                                         {KX_IDC_MTAG_ARTIST2, &artists2},
                                                         {KX_IDC_MTAG_GENRE, &genres}};
    for (const auto& list : lists)
        for (const std::wstring& value : *list.second) m_controls.AddToList(list.first, value);
}

void CMultipleTagModel::SetTagsToControls(const _tagTrackTagValues* record) {
    if (!record) return;
    IEditTagControls& c = m_controls;
    // A field and its box are enabled when some item can take the tag; a field disabled so still
    // shows the first item's value.
    for (const Field* f : {&kTextFields[0], &kTextFields[1], &kTextFields[2], &kTextFields[3], &kYear, &kRating}) {
        const bool writable = AnyItemWritable(f->tag) != FALSE;
        c.Enable(f->box, writable);
        c.Enable(f->id, writable);
        if (f->tag == KxTagAlbum) m_artEditable = writable ? TRUE : FALSE;
    }

    const bool art = CanAcceptArtwork();
    for (int id : {KX_IDC_MTAG_ART_CHECK, KX_IDC_MTAG_BROWSE, KX_IDC_MTAG_REMOVE}) c.Enable(id, art);
    if (record->artSize > 0 && record->art) {
        c.ShowArtBytes(record->art, record->artSize);
    } else {
        c.ShowDefaultArt();
        c.Enable(KX_IDC_MTAG_REMOVE, false);
    }

    for (const Field& f : kTextFields) {
        LPCWSTR value = record->*KxTagFieldOf(f.tag).text;
        BOOL found = FALSE;
        const int index = value && *value ? FindOrInsertString(this->*f.list, value, &found) : -1;
        if (index < 0) {
            c.SetText(f.id, L"");
            continue;
        }
        if (!found) c.InsertInList(f.id, index, value);
        c.SelectInList(f.id, index);
    }

    const int year = record->year && *record->year ? KxLeadingInt(record->year) : -1;
    if (year < 0) {
        c.SetText(KX_IDC_MTAG_YEAR, L"");
    } else {
        BOOL found = FALSE;
        const int index = FindOrInsertNumber(m_yearValues, static_cast<DWORD>(year), &found);
        if (!found) c.InsertInList(KX_IDC_MTAG_YEAR, index, std::to_wstring(year));
        c.SelectInList(KX_IDC_MTAG_YEAR, index);
    }
    m_loadedYear.clear();
    c.GetText(KX_IDC_MTAG_YEAR, &m_loadedYear);

    const bool ratingShown = record->rating >= 0 && record->rating <= 5;
    c.SetSliderPos(KX_IDC_MTAG_RATING, ratingShown ? static_cast<int>(record->rating) : 0);
}

void CMultipleTagModel::GetChangedTags(_tagTrackTagValues* record) {
    if (!record) return;
    *record = _tagTrackTagValues{};
    IMultipleTagControls& c = m_multiControls;
    // An empty field writes nothing even when ticked: a tag is never cleared here.
    for (const Field* f : {&kTextFields[0], &kTextFields[1], &kTextFields[2], &kTextFields[3], &kYear}) {
        std::wstring text;
        if (!c.IsChecked(f->box) || !c.GetText(f->id, &text) || text.empty()) continue;
        const KxTagField& field = KxTagFieldOf(f->tag);
        record->*field.text = KxTaskMemCopy(text.c_str(), text.size());
        if (record->*field.text) record->*field.flags = KX_TAGFLAGS_WRITABLE;
    }

    record->rating = -1;  // no change
    if (c.IsChecked(kRating.box)) {
        const int pos = c.GetSliderPos(kRating.id);
        record->rating = pos >= 0 && pos <= 5 ? pos : 0;
        record->ratingFlags = KX_TAGFLAGS_WRITABLE;
    }

    if (!c.IsChecked(KX_IDC_MTAG_ART_CHECK)) return;
    // New art, else the first item's art as read: a ticked box with the art unchanged gives the
    // first item's art to all of them.
    const BYTE* bytes = nullptr;
    ULONG size = 0;
    if (m_nArtSize > 0 && m_pArtBytes) {
        bytes = m_pArtBytes.Get();
        size = m_nArtSize;
    } else if (m_tags.art && m_tags.artSize != 0) {
        bytes = m_tags.art;
        size = m_tags.artSize;
    }
    if (!bytes) return;
    record->art = static_cast<BYTE*>(CoTaskMemAlloc(size));
    if (!record->art) return;
    std::memcpy(record->art, bytes, size);
    record->artSize = size;
    record->artFlags = KX_TAGFLAGS_WRITABLE;
}

void CMultipleTagModel::OnArtChanged() {
    Tick(KX_IDC_MTAG_ART_CHECK);
    m_controls.Enable(KX_IDC_MTAG_REMOVE, true);
}

void CMultipleTagModel::CheckTypedText(int id) {
    if (m_checkLength) {
        CheckLength(id, m_restoreOverflow);
        m_restoreOverflow = FALSE;
    }
    m_checkLength = TRUE;
}

// Art belongs to an album: emptying the album takes the art out of all items (the box may be
// ticked already, so the removal still goes out on OK), and a filled album brings back the art
// actions where some item's album can be written.
void CMultipleTagModel::ApplyAlbumRule() {
    std::wstring album;
    m_controls.GetText(KX_IDC_MTAG_ALBUM, &album);
    if (album.empty()) {
        if (m_controls.Exists(KX_IDC_MTAG_REMOVE) && m_controls.IsEnabled(KX_IDC_MTAG_REMOVE)) OnRemoveArt();
        m_controls.Enable(KX_IDC_MTAG_BROWSE, false);
        m_controls.Enable(KX_IDC_MTAG_ART_CHECK, false);
    } else {
        m_controls.Enable(KX_IDC_MTAG_BROWSE, m_artEditable != FALSE);
        m_controls.Enable(KX_IDC_MTAG_ART_CHECK, m_artEditable != FALSE);
    }
}

void CMultipleTagModel::OnFieldChanged(int id) {
    const int box = BoxOf(id);
    if (!box) return;
    if (id == KX_IDC_MTAG_ALBUM) ApplyAlbumRule();
    CheckTypedText(id);
    if (id == KX_IDC_MTAG_YEAR) HideDigitWarning(id);
    Tick(box);
}

void CMultipleTagModel::OnSelectionChanged(int id) {
    const int box = BoxOf(id);
    if (!box) return;
    Tick(box);
    if (id != KX_IDC_MTAG_ALBUM) return;
    // The list's choice is not in the edit part yet: put it there so the art controls follow it now.
    std::wstring chosen;
    if (!m_multiControls.GetSelectedText(id, &chosen) || chosen.empty()) return;
    m_controls.SetText(id, chosen);
    OnFieldChanged(id);
}

void CMultipleTagModel::OnRatingScroll(int code) {
    if (code == kSbThumbPosition || code == kSbEndScroll) Tick(kRating.box);
}

void CMultipleTagModel::OnArtTaken() {
    m_controls.Enable(KX_IDC_MTAG_REMOVE, true);
    Tick(KX_IDC_MTAG_ART_CHECK);
}

bool CMultipleTagModel::OnRemoveArt() {
    if (!RemoveArt()) return false;
    m_controls.Enable(KX_IDC_MTAG_REMOVE, false);
    Tick(KX_IDC_MTAG_ART_CHECK);
    return true;
}

CMultipleTagModel::OkOutcome CMultipleTagModel::OnOK() {
    for (const Field& f : kTextFields)
        if (CheckLength(f.id, m_restoreOverflow) < 1) return OkOutcome::Stay;
    // A year that was empty when the tags were shown is not checked for digits.
    if (!m_loadedYear.empty() && !CheckDigits(KX_IDC_MTAG_YEAR, false)) return OkOutcome::Stay;
    if (m_multiControls.IsChecked(KX_IDC_MTAG_ART_CHECK)) {
        const bool itemArt = m_tags.art && m_tags.artSize > 0;
        if (m_bArtRemoved || (!itemArt && !m_pArtBytes)) m_deleteArtOnAll = TRUE;
    }
    // What the library answers is not the dialog's to report: the host sees success.
    m_hrResult = WriteAllItems();
    return OkOutcome::Close;
}
