#include "library/add_to_playlist_model.h"
#include "base/owners.h"

#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <memory>
#include <vector>


namespace {

// wcscmp order, a null name before any name, two nulls equal.
int CompareNames(LPCWSTR a, LPCWSTR b) {
    if (!a || !b) return (a ? 1 : 0) - (b ? 1 : 0);
    return std::wcscmp(a, b);
}

int CompareRecords(const void* a, const void* b) {
    auto* ra = *static_cast<__tagExistedItemsPidl* const*>(a);
    auto* rb = *static_cast<__tagExistedItemsPidl* const*>(b);
    return CompareNames(ra->name, rb->name);
}

int CompareKeyToRecord(const void* key, const void* element) {
    auto* record = *static_cast<__tagExistedItemsPidl* const*>(element);
    return CompareNames(static_cast<LPCWSTR>(key), record ? record->name : nullptr);
}

struct ExistedItemDeleter {
    void operator()(__tagExistedItemsPidl* record) const { FreeExistedItem(record); }
};
typedef std::unique_ptr<__tagExistedItemsPidl, ExistedItemDeleter> ExistedItemOwner;

}  // namespace

// The record is a plain structure that the list shares with the dialog: this is its one owner's
// clean-up, so its two blocks are given back here by hand.
void FreeExistedItem(__tagExistedItemsPidl* record) {
    if (!record) return;
    KxTaskMemFree(record->pidl);
    KxTaskMemFree(record->name);
    delete record;
}

CAddToPlaylistModel::CAddToPlaylistModel(int mode, IKxContentFolder* folder, LPCWSTR initialName)
    : m_nMode(mode),
      m_pFolder(folder),
      m_hrResult(S_OK),
      m_pszInitialName(KxTaskMemCopy(initialName)),
      m_ppExisting(nullptr),
      m_nExisting(0),
      m_nSelected(-1),
      m_bNewName(FALSE) {}

// A target chosen but never handed back (the caller did not ask) goes with m_pidlChosen.
CAddToPlaylistModel::~CAddToPlaylistModel() { FreeExisting(); }

LPCWSTR CAddToPlaylistModel::FolderName() const {
    return m_nMode == ModePlaylist ? KxFolderPlaylists : KxFolderSlideshows;
}

void CAddToPlaylistModel::FreeExisting() {
    for (int i = 0; i < m_nExisting; ++i) FreeExistedItem(m_ppExisting ? m_ppExisting[i] : nullptr);
    delete[] m_ppExisting;
    m_ppExisting = nullptr;
    m_nExisting = 0;
}

HRESULT CAddToPlaylistModel::LoadExisting(int which) {
    LPCWSTR folderName = nullptr;
    if (which == WhichPlaylists) folderName = KxFolderPlaylists;
    else if (which == WhichSlideshows) folderName = KxFolderSlideshows;
    else return m_hrResult = E_FAIL;

    CKxComPtr<IKxContentRoot> root;
    CKxComPtr<IKxContentFolder> rootFolder;
    CKxComPtr<IKxContentFolder> targets;
    CKxComPtr<IKxItemEnum> items;
    CKxTaskMem<KxPidl> folderId;

    // Whatever the host answered, a failed step is reported as "cannot reach the folders".
    const HRESULT unreachable = E_POINTER;
    if (!m_pFolder) return m_hrResult = unreachable;
    if (m_pFolder->QueryInterface(IID_IKxContentRoot, root.PutVoid()) != S_OK || !root) return m_hrResult = unreachable;
    if (root->QueryInterface(IID_IKxContentFolder, rootFolder.PutVoid()) != S_OK || !rootFolder)
        return m_hrResult = unreachable;
    if (rootFolder->ParseName(folderName, KX_PARSE_WELLKNOWN, folderId.Put()) != S_OK || !folderId)
        return m_hrResult = unreachable;
    if (rootFolder->BindToFolder(folderId.Get(), IID_IKxContentFolder, targets.PutVoid()) != S_OK || !targets)
        return m_hrResult = unreachable;
    const HRESULT hrEnum = targets->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, items.PutVoid());
    if ((hrEnum != S_OK && hrEnum != S_FALSE) || !items) return m_hrResult = unreachable;

    FreeExisting();
    if (hrEnum != S_OK) return S_OK;  // S_FALSE: the folder has nothing to list
    std::vector<ExistedItemOwner> found;
    HRESULT hrNext;
    do {
        CKxTaskMem<KxPidl> pidl;
        CKxTaskMemString name;
        ULONG fetched = 0;
        hrNext = items->Next(1, pidl.Put(), &fetched);
        // Only S_OK names a target: another success is no name.
        if ((hrNext == S_OK || hrNext == S_FALSE) && fetched != 0 &&
            targets->GetItemName(pidl.Get(), KX_NAME_NORMAL, name.Put()) == S_OK) {
            ExistedItemOwner record(new __tagExistedItemsPidl{pidl.Get(), name.Get()});
            pidl.Detach();
            name.Detach();
            found.push_back(std::move(record));
        }
    } while (hrNext == S_OK);
    std::vector<__tagExistedItemsPidl*> records;
    records.reserve(found.size());
    for (const ExistedItemOwner& record : found) records.push_back(record.get());
    StoreSorted(records.data(), static_cast<int>(records.size()));
    for (ExistedItemOwner& record : found) record.release();  // the list has them now
    return S_OK;
}

void CAddToPlaylistModel::StoreSorted(__tagExistedItemsPidl** records, int count) {
    FreeExisting();
    m_nExisting = count > 0 ? count : 0;
    if (m_nExisting == 0) return;
    m_ppExisting = new __tagExistedItemsPidl*[m_nExisting];
    std::memcpy(m_ppExisting, records, sizeof(*records) * m_nExisting);
    std::qsort(m_ppExisting, m_nExisting, sizeof(*m_ppExisting), CompareRecords);
}

int CAddToPlaylistModel::FindExisting(LPCWSTR text) const {
    if (!text || !m_ppExisting) return -1;
    void* hit = std::bsearch(text, m_ppExisting, m_nExisting, sizeof(*m_ppExisting), CompareKeyToRecord);
    if (!hit) return -1;
    return static_cast<int>(static_cast<__tagExistedItemsPidl**>(hit) - m_ppExisting);
}

void CAddToPlaylistModel::FillCombo(IAddToPlaylistControls& controls, LPCWSTR initial) {
    controls.ResetCombo();
    // Index I of the combo must be index I of the list: a target whose name the host gave as
    // null shows as an empty line rather than being left out.
    for (int i = 0; i < m_nExisting; ++i) {
        if (!m_ppExisting[i]) continue;
        controls.AddComboString(m_ppExisting[i]->name ? m_ppExisting[i]->name : L"");
    }
    if (initial && *initial) {
        int index = FindExisting(initial);
        if (IsValidIndex(index)) {
            m_bNewName = FALSE;
            m_nSelected = index;
            controls.SetComboSelection(index);
            m_strNewName.clear();
        } else {
            m_bNewName = TRUE;
            m_nSelected = -1;
            m_strNewName = initial;
            controls.SetComboText(initial);
        }
    } else {
        m_strNewName.clear();
        if (m_nExisting > 0) {
            controls.SetComboSelection(0);
            m_nSelected = 0;
            m_bNewName = FALSE;
        } else {
            controls.SetComboText(L"");
            m_bNewName = TRUE;
            m_nSelected = -1;
        }
    }
    controls.SetOkText(m_bNewName ? kStringOkNew : kStringOkExisting);
    controls.EnableOk(!(m_bNewName && m_strNewName.empty()));
}

void CAddToPlaylistModel::OnSelChange(IAddToPlaylistControls& controls) {
    m_bNewName = FALSE;
    m_strNewName.clear();
    m_nSelected = controls.GetComboSelection();
    controls.SetOkText(kStringOkExisting);
}

void CAddToPlaylistModel::OnEditChange(IAddToPlaylistControls& controls) {
    m_strNewName = controls.GetComboText();
    if (m_strNewName.empty()) {
        m_bNewName = FALSE;
        m_nSelected = -1;
        controls.EnableOk(false);
        return;
    }
    int index = FindExisting(m_strNewName.c_str());
    m_bNewName = IsValidIndex(index) ? FALSE : TRUE;
    controls.EnableOk(true);
    if (m_bNewName) {
        controls.SetOkText(kStringOkNew);
        m_nSelected = -1;
    } else {
        controls.SetOkText(kStringOkExisting);
        m_nSelected = index;
        m_strNewName.clear();
    }
}

bool CAddToPlaylistModel::OnOK(IAddToPlaylistControls& controls) {
    if (m_bNewName) {
        m_strNewName = controls.GetComboText();
        return !m_strNewName.empty();
    }
    if (!IsValidIndex(m_nSelected) || !m_ppExisting[m_nSelected]) return false;
    // The record leaves the list: its identifier becomes the choice, its name is freed.
    __tagExistedItemsPidl* record = m_ppExisting[m_nSelected];
    m_ppExisting[m_nSelected] = nullptr;
    m_pidlChosen.Reset(record->pidl);
    record->pidl = nullptr;
    FreeExistedItem(record);
    return true;
}

HRESULT CAddToPlaylistModel::HandBack(KxPidl* pidl, LPWSTR* name) {
    if (m_bNewName) {
        if (m_strNewName.empty()) return m_hrResult = E_FAIL;
        LPWSTR copy = KxTaskMemCopy(m_strNewName.c_str());
        if (!copy) return m_hrResult = E_OUTOFMEMORY;
        *name = copy;
        return m_hrResult = S_OK;
    }
    *pidl = m_pidlChosen.Detach();
    m_hrResult = *pidl ? S_OK : E_FAIL;
    return S_OK;
}
