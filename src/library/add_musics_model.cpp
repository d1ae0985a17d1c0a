// The add-music dialog's logic: folder tree, virtual rows, search, choosing and the hand-back.
#include "library/add_musics_model.h"

#include <algorithm>
#include <cstring>
#include <cwchar>

#include "library/pidl.h"

namespace {

LPWSTR DupString(LPCWSTR text) {
    if (!text) return nullptr;
    const size_t bytes = (std::wcslen(text) + 1) * sizeof(WCHAR);
    void* copy = CoTaskMemAlloc(bytes);
    if (copy) std::memcpy(copy, text, bytes);
    return static_cast<LPWSTR>(copy);
}

}  // namespace

// ---- CTBItemInfo -------------------------------------------------------------------------------------

CTBItemInfo::CTBItemInfo(IKxContentFolder* parentFolder, IKxContentFolder* folder, KxPidl pidl, LPCWSTR name,
                         BOOL owned)
    : m_pParentFolder(parentFolder), m_pFolder(folder), m_pidl(pidl), m_pszName(DupString(name)), m_bOwned(owned) {}

CTBItemInfo::~CTBItemInfo() {
    ClearChildren();
    CoTaskMemFree(m_pszName);
    if (m_bOwned) {
        KxPidlFree(m_pidl);
        if (m_pFolder) m_pFolder->Release();
    }
}

void CTBItemInfo::ClearChildren() {
    std::vector<CTBItemInfo*> children;
    children.swap(m_children);
    for (CTBItemInfo* child : children) delete child;
}

HRESULT CTBItemInfo::LoadChildren(BOOL refresh) {
    if (!m_pFolder || !m_pidl) return E_INVALIDARG;
    if (refresh) {
        ClearChildren();
    } else if (!m_children.empty()) {
        return S_OK;
    }
    CKxComPtr<IKxItemEnum> items;
    HRESULT hr = m_pFolder->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, items.PutVoid());
    if (FAILED(hr)) return hr;
    if (!items) return S_FALSE;
    do {
        CKxTaskMem<KxPidl> pidl;
        ULONG fetched = 0;
        hr = items->Next(1, pidl.Put(), &fetched);
        if (hr != S_OK && hr != S_FALSE) return hr;
        if (!fetched || !pidl) continue;
        CKxTaskMemString name;
        m_pFolder->GetItemName(pidl.Get(), KX_NAME_NORMAL, name.Put());
        CKxComPtr<IKxContentFolder> folder;
        if (FAILED(m_pFolder->BindToFolder(pidl.Get(), IID_IKxContentFolder, folder.PutVoid())) || !folder) continue;
        m_children.push_back(
            new CTBItemInfo(m_pFolder, folder.Detach(), pidl.Detach(), name ? name.Get() : L" ", TRUE));
    } while (hr == S_OK);
    return m_children.empty() ? S_FALSE : S_OK;
}

BOOL CTBItemInfo::CanOpen() const {
    if (!m_pParentFolder) return FALSE;
    DWORD attributes = KX_ATTR_OPENABLE;
    KxPcPidl items[1] = {m_pidl};
    const HRESULT hr = m_pParentFolder->GetItemAttributes(1, items, &attributes);
    return SUCCEEDED(hr) && (attributes & KX_ATTR_OPENABLE) == KX_ATTR_OPENABLE;
}

// ---- CLSTTracksInfo ----------------------------------------------------------------------------------

void CLSTTracksInfo::Clear() {
    KxPidlFree(m_pidl);
    CoTaskMemFree(m_pszTitle);
    m_pidl = nullptr;
    m_pszTitle = nullptr;
    m_nTrackNumber = 0;
    m_nDuration = 0;
}

bool CLSTTracksInfo::Set(KxPcPidl pidl, LPCWSTR title, UINT trackNumber, UINT duration) {
    Clear();
    m_pidl = KxPidlCopy(pidl);
    m_pszTitle = DupString(title);
    m_nTrackNumber = trackNumber;
    m_nDuration = duration;
    return (m_pidl || !pidl) && (m_pszTitle || !title);
}

CLSTTracksInfo* CLSTTracksInfo::Clone() const {
    CLSTTracksInfo* copy = new CLSTTracksInfo;
    if (!copy->Set(m_pidl, m_pszTitle, m_nTrackNumber, m_nDuration)) {
        delete copy;
        return nullptr;
    }
    return copy;
}

std::wstring FormatTrackNumber(UINT number) {
    std::wstring text = std::to_wstring(number);
    if (number <= 99 && text.size() < 2) text.insert(0, 1, L'0');
    return text;
}

std::wstring FormatDuration(UINT seconds) {
    const UINT minutes = seconds / 60, rest = seconds % 60, hours = minutes / 60;
    auto two = [](UINT v) { return (v < 10 ? L"0" : L"") + std::to_wstring(v); };
    if (hours > 0) return std::to_wstring(hours) + L":" + two(minutes % 60) + L":" + two(rest);
    return std::to_wstring(minutes) + L":" + two(rest);
}

// ---- CAddMusicsModel: opening --------------------------------------------------------------------------

CAddMusicsModel::CAddMusicsModel(ULONG_PTR reserved, IKxContentSite* site, IKxContentFolder* rootFolder,
                                 IKxTrackList* givenTracks, LPCWSTR rootName)
    : m_reserved(reserved),
      m_pSite(site),
      m_pRootFolder(rootFolder),
      m_pGivenTracks(givenTracks),
      m_pszRootName(DupString(rootName)) {}

CAddMusicsModel::~CAddMusicsModel() {
    ClearChosen();
    ClearTracks();
    delete m_pRootItem;
}

HRESULT CAddMusicsModel::Open() {
    if (!m_pSite || !m_pRootFolder) return m_hrResult = E_INVALIDARG;
    m_hrResult = m_pRootFolder->GetOwnId(m_pidlRoot.Put());
    if (FAILED(m_hrResult)) return m_hrResult;
    if (!m_pidlRoot) return m_hrResult = E_OUTOFMEMORY;
    m_pRootItem = new CTBItemInfo(m_pRootFolder, m_pRootFolder, m_pidlRoot.Get(), m_pszRootName.Get(), FALSE);
    return m_hrResult;
}

CTBItemInfo* CAddMusicsModel::Crumb(int index) {
    if (!m_pBar || index < 0 || index >= m_pBar->GetButtonCount()) return nullptr;
    return static_cast<CTBItemInfo*>(m_pBar->GetButtonData(index));
}

CTBItemInfo* CAddMusicsModel::LastCrumb() { return m_pBar ? Crumb(m_pBar->GetButtonCount() - 1) : nullptr; }

HRESULT CAddMusicsModel::InitBreadCrumb() {
    if (!m_pRootItem || !m_pRootFolder || !m_pBar) return E_INVALIDARG;
    CKxTaskMem<KxPidl> albums;
    const HRESULT hr = m_pRootFolder->ParseName(KxFolderAlbums, KX_PARSE_WELLKNOWN, albums.Put());
    if (FAILED(hr)) return m_hrResult = hr;
    // An empty path makes no crumb: a root without a name shows as one blank.
    const LPCWSTR rootName = m_pRootItem->m_pszName ? m_pRootItem->m_pszName : L" ";
    if (m_pBar->SetCrumbs(1, rootName, true)) {
        m_nCurrentCrumb = m_pBar->GetButtonCount() - 1;
        m_pBar->SetButtonData(1, m_pRootItem);
        CTBItemInfo* found = nullptr;
        if (m_pRootItem->LoadChildren(FALSE) == S_OK) {
            for (CTBItemInfo* child : m_pRootItem->m_children)
                if (KxPidlEqual(child->m_pidl, albums.Get())) found = child;
        }
        if (found) {
            const std::wstring name = found->m_pszName ? found->m_pszName : L"";
            if (m_pBar->SetCrumbs(2, name.c_str(), found->CanOpen() != FALSE)) {
                m_nCurrentCrumb = m_pBar->GetButtonCount() - 1;
                m_pBar->SetButtonData(2, found);
            }
        }
    }
    ShowFolderTracks();
    PrepareChosenList();
    return S_OK;
}

// ---- the left list ---------------------------------------------------------------------------------------

void CAddMusicsModel::ClearTracks() {
    for (CLSTTracksInfo* record : m_tracks) delete record;
    m_tracks.clear();
}

void CAddMusicsModel::SetTrackCount() {
    if (m_pControls) m_pControls->SetTrackCount(TrackCount());
}

HRESULT CAddMusicsModel::ShowFolderTracks() {
    // The box is emptied first: the update it causes may run a search, whose rows are then
    // replaced here rather than added to.
    if (m_pControls) m_pControls->SetSearchText(L"");
    m_pTrackList.Reset();
    ClearTracks();
    if (!m_pBar || m_pBar->GetButtonCount() == 0) return E_NOTIMPL;
    CTBItemInfo* last = LastCrumb();
    if (!last) return E_POINTER;
    if (!last->m_pFolder) return E_NOINTERFACE;
    HRESULT hr = last->m_pFolder->EnumItems(0, KX_ENUM_TRACKS, IID_IKxTrackList, m_pTrackList.PutVoid());
    if (FAILED(hr)) {
        m_pTrackList.Reset();  // an object handed out with a failure is not kept
        return hr;
    }
    if (!m_pTrackList) return E_NOINTERFACE;
    INT count = 0;
    if (FAILED(m_pTrackList->GetCount(&count))) return E_NOTIMPL;
    m_tracks.assign(count > 0 ? size_t(count) : 0, nullptr);
    return S_OK;
}

HRESULT CAddMusicsModel::ReadRow(IKxContentFolder* folder, KxPcPidl pidl, BOOL withDetails, CLSTTracksInfo** record) {
    *record = nullptr;
    CKxTaskMemString title;
    LONG number = 0, duration = 0;
    if (withDetails) {
        CKxComPtr<IKxItemProperties> props;
        KxPcPidl items[1] = {pidl};
        if (FAILED(folder->GetItemObject(m_pSite, m_pControls ? m_pControls->OwnerWindow() : nullptr, 1, items,
                                         IID_IKxItemProperties, props.PutVoid())) ||
            !props)
            return S_FALSE;
        props->GetStringProperty(pidl, &KxPropTitle, title.Put());
        props->GetIntProperty(pidl, &KxPropTrackNumber, &number);
        props->GetIntProperty(pidl, &KxPropDuration, &duration);
    }
    CLSTTracksInfo* made = new CLSTTracksInfo;
    if (!made->Set(pidl, title.Get(), UINT(number), UINT(duration))) {
        delete made;
        return E_OUTOFMEMORY;
    }
    *record = made;
    return S_OK;
}

HRESULT CAddMusicsModel::LoadTrackRow(int row) {
    if (!m_pTrackList || row < 0 || row >= TrackCount() || !m_pBar || m_pBar->GetButtonCount() == 0) return E_FAIL;
    CTBItemInfo* last = LastCrumb();
    if (!last || !last->m_pFolder) return E_POINTER;
    if (m_tracks[row]) return S_OK;
    if (FAILED(m_pTrackList->MoveTo(row))) return S_OK;
    CKxTaskMem<KxPidl> pidl;
    if (FAILED(m_pTrackList->GetCurrentId(pidl.Put())) || !pidl) return S_OK;
    CLSTTracksInfo* record = nullptr;
    ReadRow(last->m_pFolder, pidl.Get(), TRUE, &record);
    m_tracks[row] = record;
    return S_OK;
}

const CLSTTracksInfo* CAddMusicsModel::TrackRow(int row) {
    if (row < 0 || row >= TrackCount()) return nullptr;
    if (!m_tracks[row] && LoadTrackRow(row) != S_OK) return nullptr;
    return m_tracks[row];
}

std::wstring CAddMusicsModel::CellText(const CLSTTracksInfo* record, int column) {
    if (!record) return std::wstring();
    switch (column) {
    case 0: return FormatTrackNumber(record->m_nTrackNumber);
    case 1: return record->m_pszTitle ? record->m_pszTitle : L"";
    case 2: return FormatDuration(record->m_nDuration);
    default: return std::wstring();
    }
}

// ---- the right list: the given tracks ------------------------------------------------------------------

void CAddMusicsModel::PrepareChosenList() {
    if (!m_pGivenTracks) return;
    m_nGivenCount = 0;
    INT count = 0;
    if (FAILED(m_pGivenTracks->GetCount(&count)) || count <= 0) return;
    if (!m_pidlAlbums) {
        if (FAILED(m_pRootFolder->ParseName(KxFolderAlbums, KX_PARSE_WELLKNOWN, m_pidlAlbums.Put()))) {
            m_pidlAlbums.Reset();
            return;
        }
    }
    m_pAlbumsFolder.Reset();
    if (FAILED(m_pRootFolder->BindToFolder(m_pidlAlbums.Get(), IID_IKxContentFolder, m_pAlbumsFolder.PutVoid())) ||
        !m_pAlbumsFolder) {
        m_pidlAlbums.Reset();
        m_pAlbumsFolder.Reset();
        return;
    }
    m_nGivenCount = count;
    for (int i = 0; i < count; ++i) AppendChosen(nullptr, i);
}

HRESULT CAddMusicsModel::LoadChosenRow(int row, BOOL withDetails) {
    if (!m_pGivenTracks || row < 0 || row >= ChosenCount()) return E_FAIL;
    if (!m_pAlbumsFolder) return E_POINTER;
    if (m_chosen[row]) return S_OK;
    // The given list is asked for the track's own place there, not for the row it is on now.
    const int origin = m_chosenOrigin[row];
    if (origin < 0 || FAILED(m_pGivenTracks->MoveTo(origin))) return S_OK;
    CKxTaskMem<KxPidl> pidl;
    if (FAILED(m_pGivenTracks->GetCurrentId(pidl.Put())) || !pidl) return S_OK;
    CLSTTracksInfo* record = nullptr;
    ReadRow(m_pAlbumsFolder.Get(), pidl.Get(), withDetails, &record);
    m_chosen[row] = record;
    return S_OK;
}

const CLSTTracksInfo* CAddMusicsModel::ChosenRow(int row) {
    if (row < 0 || row >= ChosenCount()) return nullptr;
    if (!m_chosen[row] && LoadChosenRow(row, TRUE) != S_OK) return nullptr;
    return m_chosen[row];
}

void CAddMusicsModel::AppendChosen(CLSTTracksInfo* record, int origin) {
    m_chosen.push_back(record);
    m_chosenOrigin.push_back(origin);
}

void CAddMusicsModel::EraseChosen(int row) {
    delete m_chosen[row];
    m_chosen.erase(m_chosen.begin() + row);
    m_chosenOrigin.erase(m_chosenOrigin.begin() + row);
}

// ---- the bar ----------------------------------------------------------------------------------------------

std::vector<CAddMusicsMenuEntry> CAddMusicsModel::OnDropDown(int index) {
    std::vector<CAddMusicsMenuEntry> entries;
    m_nDropCrumb = index;
    CTBItemInfo* node = Crumb(index);
    if (!node) {
        if (index != 0) {
            m_nDropCrumb = -1;
        } else {
            entries.push_back({kRootEntryCommand, m_pszRootName ? m_pszRootName.Get() : L" ", m_pRootItem});
        }
        return entries;
    }
    const bool refresh = index >= 2 && index == m_pBar->GetButtonCount() - 1;
    if (node->LoadChildren(refresh ? TRUE : FALSE) != S_OK) {
        m_nDropCrumb = -1;
        return entries;
    }
    // Entries past 9000 (a folder of more than 1001 children) are shown but answer nothing.
    for (size_t p = 0; p < node->m_children.size(); ++p) {
        CTBItemInfo* child = node->m_children[p];
        if (child->m_pszName) entries.push_back({kFirstEntryCommand + UINT(p), child->m_pszName, child});
    }
    return entries;
}

void CAddMusicsModel::OnMenuEntry(CTBItemInfo* child, int menuIndex) {
    if (!child || !m_pBar || menuIndex < 0) return;
    CTBItemInfo* next = Crumb(m_nDropCrumb + 1);
    if (next && KxPidlEqual(next->m_pidl, child->m_pidl)) {
        m_nDropCrumb = -1;  // that folder is already shown
        return;
    }
    const std::wstring name = child->m_pszName ? child->m_pszName : L"";
    if (m_pBar->SetCrumbs(menuIndex + 1, name.c_str(), child->CanOpen() != FALSE)) {
        m_pBar->SetButtonData(menuIndex + 1, child);
        m_nCurrentCrumb = m_pBar->GetButtonCount() - 1;
    }
    if (m_pidlAllTracks && KxPidlEqual(m_pidlAllTracks.Get(), child->m_pidl))
        SearchAllTracks(L"", FALSE);
    else
        ShowFolderTracks();
    SetTrackCount();
}

void CAddMusicsModel::OnCrumbCommand(UINT command) {
    const int index = int(command) - 5000;
    if (index == m_nCurrentCrumb || !m_pBar) return;
    m_nCurrentCrumb = m_pBar->GetButtonCount() - 1;
    ShowFolderTracks();
    SetTrackCount();
}

int CALLBACK CAddMusicsModel::OnCrumbTruncate(int kind, void* owner, int level) {
    if (owner) static_cast<CAddMusicsModel*>(owner)->Truncate(kind, level);
    return 0;
}

void CAddMusicsModel::ClearCrumbChildren(int from) {
    // From the last crumb down: a record is emptied before the node that owns it.
    for (int i = m_pBar->GetButtonCount() - 1; i >= from; --i)
        if (CTBItemInfo* record = Crumb(i)) record->ClearChildren();
}

void CAddMusicsModel::Truncate(int kind, int level) {
    if (!m_pBar || m_pBar->GetButtonCount() <= 2) return;
    if (kind == 0 && level == -1) {
        ClearCrumbChildren(2);
    } else if (kind == 0) {
        const int index = m_pBar->CommandToIndex(UINT(level));
        if (index >= 0) ClearCrumbChildren(std::max(index, 2));
    } else if (kind == 1 && level < m_pBar->GetButtonCount()) {
        ClearCrumbChildren(std::max(level, 2));
    }
}

// ---- search ---------------------------------------------------------------------------------------------

bool CAddMusicsModel::IsAtAllTracks() {
    if (!m_pidlAllTracks || !m_pBar || m_pBar->GetButtonCount() - 1 != 2) return false;
    CTBItemInfo* crumb = Crumb(2);
    return crumb && KxPidlEqual(crumb->m_pidl, m_pidlAllTracks.Get());
}

void CAddMusicsModel::OnSearchUpdate(const std::wstring& text) {
    const bool atAllTracks = IsAtAllTracks();
    if (text.empty() && !atAllTracks) {
        m_strSearch.clear();
        return;
    }
    if (text == m_strSearch) return;
    SearchAllTracks(text.c_str(), atAllTracks ? TRUE : FALSE);
    SetTrackCount();
    m_strSearch = text;
}

HRESULT CAddMusicsModel::SearchAllTracks(LPCWSTR text, BOOL stayInPlace) {
    if (!m_pRootFolder) return E_NOINTERFACE;
    if (!m_pidlAllTracks && stayInPlace) return E_INVALIDARG;
    if (!m_pBar || m_pBar->GetButtonCount() <= 1) return E_NOTIMPL;
    if (!Crumb(1) || !m_pRootItem) return E_POINTER;
    size_t position = 0;
    if (!m_pidlAllTracks) {
        HRESULT hr = m_pRootFolder->ParseName(KxFolderAllTracks, KX_PARSE_WELLKNOWN, m_pidlAllTracks.Put());
        if (hr != S_OK) {
            m_pidlAllTracks.Reset();
            return hr;
        }
        if (!m_pidlAllTracks) return S_OK;
        CKxComPtr<IKxContentFolder> folder;
        hr = m_pRootFolder->BindToFolder(m_pidlAllTracks.Get(), IID_IKxContentFolder, folder.PutVoid());
        if (hr != S_OK || !folder) {
            m_pidlAllTracks.Reset();  // resolved again on the next search
            return hr;
        }
        CKxTaskMemString name;
        m_pRootFolder->GetItemName(m_pidlAllTracks.Get(), KX_NAME_NORMAL, name.Put());
        KxPidl copy = KxPidlCopy(m_pidlAllTracks.Get());
        if (!copy) {
            m_pidlAllTracks.Reset();
            return E_FAIL;
        }
        m_pRootItem->m_children.push_back(
            new CTBItemInfo(m_pRootFolder, folder.Detach(), copy, name ? name.Get() : L"", TRUE));
        position = m_pRootItem->m_children.size() - 1;
    } else {
        auto& children = m_pRootItem->m_children;
        auto it = std::find_if(children.begin(), children.end(),
                               [&](CTBItemInfo* c) { return KxPidlEqual(c->m_pidl, m_pidlAllTracks.Get()); });
        if (it == children.end()) return E_NOTIMPL;
        position = size_t(it - children.begin());
    }
    if (!stayInPlace) {
        CTBItemInfo* child = m_pRootItem->m_children[position];
        if (!child->m_pFolder) return E_POINTER;
        m_pTrackList.Reset();
        // The rows of the former list go with it, so no row can be read from the wrong list.
        ClearTracks();
        const HRESULT hr =
            child->m_pFolder->EnumItems(0, KX_ENUM_TRACKS, IID_IKxTrackList, m_pTrackList.PutVoid());
        if (FAILED(hr) || !m_pTrackList) {
            m_pTrackList.Reset();
            return FAILED(hr) ? hr : E_NOINTERFACE;
        }
        const std::wstring name = child->m_pszName ? child->m_pszName : L"";
        if (m_pBar->SetCrumbs(2, name.c_str(), false)) {
            m_pBar->SetButtonData(2, child);
            m_nCurrentCrumb = m_pBar->GetButtonCount() - 1;
        }
    }
    if (!m_pTrackList) return E_NOINTERFACE;
    ClearTracks();
    m_pTrackList->Reset();
    CKxComPtr<IKxTrackFilter> filter;
    if (FAILED(m_pTrackList->QueryInterface(IID_IKxTrackFilter, filter.PutVoid())) || !filter) return E_NOINTERFACE;
    HRESULT hr = filter->SetFilterText(text ? text : L"");
    if (hr != S_OK) return hr;
    INT count = 0;
    if (FAILED(m_pTrackList->GetCount(&count))) return E_NOTIMPL;
    m_tracks.assign(count > 0 ? size_t(count) : 0, nullptr);
    return S_OK;
}

// ---- choosing ------------------------------------------------------------------------------------------

void CAddMusicsModel::AddTrack(int row) {
    if (row < 0 || row >= TrackCount() || !m_tracks[row]) return;
    CLSTTracksInfo* copy = m_tracks[row]->Clone();
    if (!copy) return;
    AppendChosen(copy, -1);
    const int added = ChosenCount() - 1;
    if (!m_pControls) return;
    m_pControls->SetChosenCount(ChosenCount());
    m_pControls->EnsureChosenVisible(added);
    m_pControls->SelectChosenRows(added, 1);  // the new row alone is selected
}

void CAddMusicsModel::AddSelectedTracks() {
    if (!m_pControls) return;
    const int first = ChosenCount();
    for (int row : m_pControls->SelectedTracks()) {
        if (row < 0 || row >= TrackCount() || !m_tracks[row]) continue;  // rows never drawn are passed over
        if (CLSTTracksInfo* copy = m_tracks[row]->Clone()) AppendChosen(copy, -1);
    }
    m_pControls->SetChosenCount(ChosenCount());
    m_pControls->SelectChosenRows(first, ChosenCount() - first);
    if (ChosenCount() > first) m_pControls->EnsureChosenVisible(first);
}

void CAddMusicsModel::RemoveChosen(int row) {
    if (row < 0 || row >= ChosenCount()) return;
    EraseChosen(row);
    if (m_pControls) m_pControls->SetChosenCount(ChosenCount());
}

void CAddMusicsModel::RemoveChosenTracks() {
    if (!m_pControls) return;
    std::vector<int> rows = m_pControls->SelectedChosen();
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    for (auto it = rows.rbegin(); it != rows.rend(); ++it)
        if (*it >= 0 && *it < ChosenCount()) EraseChosen(*it);
    m_pControls->SelectChosenRows(0, 0);
    m_pControls->SetChosenCount(ChosenCount());
}

int CAddMusicsModel::MoveChosenTracks(int position) {
    if (position < 0 || position > ChosenCount() || !m_pControls) return -1;
    std::vector<int> rows = m_pControls->SelectedChosen();
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    rows.erase(std::remove_if(rows.begin(), rows.end(), [&](int r) { return r < 0 || r >= ChosenCount(); }),
               rows.end());
    const int before = int(std::count_if(rows.begin(), rows.end(), [&](int r) { return r < position; }));
    int target = std::max(position - before, 0);
    // Taken out from the last to the first, put back in their former order: the moved block keeps
    // the order the user saw.
    std::vector<CLSTTracksInfo*> records;
    std::vector<int> origins;
    for (auto it = rows.rbegin(); it != rows.rend(); ++it) {
        records.insert(records.begin(), m_chosen[*it]);
        origins.insert(origins.begin(), m_chosenOrigin[*it]);
        m_chosen.erase(m_chosen.begin() + *it);
        m_chosenOrigin.erase(m_chosenOrigin.begin() + *it);
    }
    if (target > ChosenCount()) target = ChosenCount();
    m_chosen.insert(m_chosen.begin() + target, records.begin(), records.end());
    m_chosenOrigin.insert(m_chosenOrigin.begin() + target, origins.begin(), origins.end());
    m_pControls->SetChosenCount(ChosenCount());
    m_pControls->SelectChosenRows(target, int(records.size()));
    return target;
}

// ---- the end ------------------------------------------------------------------------------------------

void CAddMusicsModel::PrepareHandOver() {
    // Every null slot is a given track not drawn yet, wherever it stands now after removals and
    // moves: all of them are fetched, by their place in the given list.
    for (int row = 0; row < ChosenCount(); ++row)
        if (!m_chosen[row]) LoadChosenRow(row, FALSE);
    for (int row = ChosenCount() - 1; row >= 0; --row)
        if (!m_chosen[row]) EraseChosen(row);
}

void CAddMusicsModel::ClearChosen() {
    for (CLSTTracksInfo* record : m_chosen) delete record;
    m_chosen.clear();
    m_chosenOrigin.clear();
}

void CAddMusicsModel::Destroy() {
    m_pidlAllTracks.Reset();
    m_pTrackList.Reset();
    m_pidlAlbums.Reset();
    m_pAlbumsFolder.Reset();
    ClearTracks();
    m_pszRootName.Reset();
    m_pidlRoot.Reset();
    // The caller has cleared the bar by now; the crumbs' records die with the root.
    delete m_pRootItem;
    m_pRootItem = nullptr;
}

HRESULT CAddMusicsModel::HandOverChosen(INT* count, KxPidl** array) {
    if (array) *array = nullptr;
    if (!count || !array) return m_hrResult = E_INVALIDARG;
    *count = ChosenCount();
    if (m_chosen.empty()) return m_hrResult = S_OK;
    KxPidl* items = static_cast<KxPidl*>(CoTaskMemAlloc(m_chosen.size() * sizeof(KxPidl)));
    if (!items) {
        *count = 0;
        return m_hrResult = E_OUTOFMEMORY;
    }
    // A copy that cannot be made fails the whole hand-back: the host never gets a list with holes.
    for (size_t i = 0; i < m_chosen.size(); ++i) {
        items[i] = m_chosen[i] ? KxPidlCopy(m_chosen[i]->m_pidl) : nullptr;
        if (m_chosen[i] && m_chosen[i]->m_pidl && !items[i]) {
            for (size_t j = 0; j < i; ++j) KxPidlFree(items[j]);
            CoTaskMemFree(items);
            *count = 0;
            return m_hrResult = E_OUTOFMEMORY;
        }
    }
    *array = items;
    return m_hrResult = S_OK;
}
