#include "library/add_to_playlist_model.h"

#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <vector>

#include "base/interface_release.h"

namespace {

LPWSTR CopyString(LPCWSTR text) {
    if (!text) return nullptr;
    size_t n = std::wcslen(text) + 1;
    auto* copy = static_cast<LPWSTR>(CoTaskMemAlloc(n * sizeof(WCHAR)));
    if (copy) std::wmemcpy(copy, text, n);
    return copy;
}

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

}  // namespace

void FreeExistedItem(__tagExistedItemsPidl* record) {
    if (!record) return;
    CoTaskMemFree(record->pidl);
    CoTaskMemFree(record->name);
    delete record;
}

CAddToPlaylistModel::CAddToPlaylistModel(int mode, IKxContentFolder* folder, LPCWSTR initialName)
    : m_nMode(mode),
      m_pFolder(folder),
      m_pidlChosen(nullptr),
      m_hrResult(S_OK),
      m_pszInitialName(CopyString(initialName)),
      m_ppExisting(nullptr),
      m_nExisting(0),
      m_nSelected(-1),
      m_bNewName(FALSE) {}

CAddToPlaylistModel::~CAddToPlaylistModel() {
    FreeExisting();
    CoTaskMemFree(m_pszInitialName);
    // A target chosen but never handed back (the caller did not ask) is not leaked.
    CoTaskMemFree(m_pidlChosen);
}

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

    IKxContentRoot* root = nullptr;
    IKxContentFolder* rootFolder = nullptr;
    IKxContentFolder* targets = nullptr;
    IKxItemEnum* items = nullptr;
    KxPidl folderId = nullptr;
    HRESULT hrEnum = E_FAIL;
    std::vector<__tagExistedItemsPidl*> found;
    bool ok = false;

    // Whatever the host answered, a failed step is reported as "cannot reach the folders".
    do {
        if (!m_pFolder) break;
        if (m_pFolder->QueryInterface(IID_IKxContentRoot, reinterpret_cast<void**>(&root)) != S_OK || !root) break;
        if (root->QueryInterface(IID_IKxContentFolder, reinterpret_cast<void**>(&rootFolder)) != S_OK ||
            !rootFolder)
            break;
        if (rootFolder->ParseName(folderName, KX_PARSE_WELLKNOWN, &folderId) != S_OK || !folderId) break;
        if (rootFolder->BindToFolder(folderId, IID_IKxContentFolder, reinterpret_cast<void**>(&targets)) != S_OK ||
            !targets)
            break;
        hrEnum = targets->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, reinterpret_cast<void**>(&items));
        if ((hrEnum != S_OK && hrEnum != S_FALSE) || !items) break;
        ok = true;
    } while (false);

    if (ok) {
        FreeExisting();
        if (hrEnum == S_OK) {
            HRESULT hrNext;
            do {
                auto* record = new __tagExistedItemsPidl{nullptr, nullptr};
                ULONG fetched = 0;
                hrNext = items->Next(1, &record->pidl, &fetched);
                if ((hrNext == S_OK || hrNext == S_FALSE) && fetched != 0 &&
                    targets->GetItemName(record->pidl, KX_NAME_NORMAL, &record->name) == S_OK) {
                    found.push_back(record);
                } else {
                    FreeExistedItem(record);
                }
            } while (hrNext == S_OK);
            StoreSorted(found.data(), static_cast<int>(found.size()));
        }
    }

    CoTaskMemFree(folderId);
    KxReleaseAndNull(items);
    KxReleaseAndNull(targets);
    KxReleaseAndNull(rootFolder);
    KxReleaseAndNull(root);
    if (!ok) return m_hrResult = E_POINTER;
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
    CoTaskMemFree(m_pidlChosen);
    m_pidlChosen = record->pidl;
    record->pidl = nullptr;
    FreeExistedItem(record);
    return true;
}

HRESULT CAddToPlaylistModel::HandBack(KxPidl* pidl, LPWSTR* name) {
    if (m_bNewName) {
        if (m_strNewName.empty()) return m_hrResult = E_FAIL;
        LPWSTR copy = CopyString(m_strNewName.c_str());
        if (!copy) return m_hrResult = E_OUTOFMEMORY;
        *name = copy;
        return m_hrResult = S_OK;
    }
    *pidl = m_pidlChosen;
    m_pidlChosen = nullptr;
    m_hrResult = *pidl ? S_OK : E_FAIL;
    return S_OK;
}
