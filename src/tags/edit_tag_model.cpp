// Life of the model and its connection to the host's library.
#include "tags/edit_tag_model.h"

#include <cwchar>

#include "base/interface_release.h"

CEditTagModel::CEditTagModel(IKxContentSite* site, IKxContentFolder* folder, UINT itemCount,
                             const KxPcPidl* items)
    : m_pSite(site),
      m_pFolder(folder),
      m_itemCount(itemCount),
      m_items(items),
      m_properties(nullptr),
      m_view(nullptr),
      m_cursor(nullptr),
      m_librarySource(nullptr),
      m_library(nullptr),
      m_currentItem(nullptr),
      m_currentIndex(0),
      m_tags(),
      m_nMode(KX_EDITMODE_SEVERAL),
      m_itemPath(),
      m_hrResult(S_OK),
      m_pArtBytes(nullptr),
      m_nArtSize(0),
      m_bArtChanged(FALSE),
      m_bArtRemoved(FALSE),
      m_deleteArtOnAll(FALSE),
      m_artEditable(TRUE) {}

// The window side frees all of this when its window goes away; whatever is left is freed here,
// so a model that never had a window leaks nothing either.
CEditTagModel::~CEditTagModel() {
    CoTaskMemFree(m_pArtBytes);
    m_pArtBytes = nullptr;
    FreeTrackTagValues(&m_tags);
    FreeItemCapabilities();
    ReleaseNamespace();
}

void CEditTagModel::GetTagsFromControls(_tagTrackTagValues*) {}
void CEditTagModel::GetChangedTags(_tagTrackTagValues*) {}
void CEditTagModel::SetTagsToControls(const _tagTrackTagValues*) {}
void CEditTagModel::ClearShownArt() {}
HWND CEditTagModel::OwnerWindow() const { return nullptr; }

HRESULT CEditTagModel::ConnectNamespace() {
    ReleaseInterfaces();  // a second connection replaces the first
    if (!m_pFolder || !m_pSite || !m_items) return E_POINTER;

    void* object = nullptr;
    HRESULT hr = m_pFolder->GetItemObject(m_pSite, OwnerWindow(), m_itemCount, m_items, IID_IKxItemProperties,
                                          &object);
    if (FAILED(hr) || !object) return FAILED(hr) ? hr : E_POINTER;
    m_properties = static_cast<IKxItemProperties*>(object);

    KxPropertyKey keys[KxTagCount];
    for (int i = 0; i < KxTagCount; ++i) keys[i] = *KxTagPrefetchKeys[i];
    hr = m_properties->PrefetchProperties(KxTagCount, keys);
    if (FAILED(hr)) return hr;

    object = nullptr;
    hr = m_pSite->QueryService(IID_IKxContentView, 0, 0, &object);
    if (FAILED(hr) || !object) return FAILED(hr) ? hr : E_POINTER;
    m_view = static_cast<IKxContentView*>(object);

    object = nullptr;
    hr = m_view->QueryInterface(IID_IKxItemCursor, &object);
    if (FAILED(hr) || !object) return FAILED(hr) ? hr : E_POINTER;
    m_cursor = static_cast<IKxItemCursor*>(object);

    // The folder that resolves the well-known names is optional: without it the known-value
    // lists stay empty.
    object = nullptr;
    if (SUCCEEDED(m_pFolder->QueryInterface(IID_IKxContentRoot, &object)) && object) {
        m_librarySource = static_cast<IKxContentRoot*>(object);
        object = nullptr;
        if (SUCCEEDED(m_librarySource->QueryInterface(IID_IKxContentFolder, &object)) && object) {
            m_library = static_cast<IKxContentFolder*>(object);
        } else {
            KxReleaseAndNull(m_librarySource);
        }
    }
    return S_OK;
}

void CEditTagModel::ReleaseNamespace() {
    CoTaskMemFree(m_currentItem);
    m_currentItem = nullptr;
    ReleaseInterfaces();
}

void CEditTagModel::ReleaseInterfaces() {
    KxReleaseAndNull(m_librarySource);
    KxReleaseAndNull(m_library);
    KxReleaseAndNull(m_cursor);
    KxReleaseAndNull(m_view);
    KxReleaseAndNull(m_properties);
}

// A path text that does not fit m_itemPath is not cut: a shortened path would name another file,
// and the path is handed on to the online lookup. Such an item counts as one without a path.
bool CEditTagModel::CopyItemPath(LPCWSTR path) {
    if (!path) return false;
    size_t length = std::wcslen(path);
    if (length >= static_cast<size_t>(KX_ITEM_PATH_CHARS)) return false;
    std::wmemcpy(m_itemPath, path, length + 1);
    return true;
}

HRESULT CEditTagModel::InitEditTagModel(BOOL* isLast, BOOL* isFirst) {
    if (FAILED(ConnectNamespace()) || m_itemCount < 1) {
        m_hrResult = E_POINTER;
        return m_hrResult;
    }
    m_nMode = m_itemCount == 1 ? KX_EDITMODE_SINGLE : KX_EDITMODE_SEVERAL;

    // The first item that reads is the one shown.
    UINT shown = 0;
    while (shown < m_itemCount && FAILED(ReadItemTags(m_properties, m_items[shown]))) ++shown;
    if (shown == m_itemCount) {
        m_hrResult = E_POINTER;
        return m_hrResult;
    }

    if (m_itemCount >= 2) ReadItemCapabilities(m_properties, m_items, m_itemCount);

    ULONG count = 0;
    if (SUCCEEDED(m_cursor->GetCount(&count))) {
        if (!m_currentItem || m_currentIndex == -1) {
            CoTaskMemFree(m_currentItem);
            m_currentItem = GetSelectedItem(&m_currentIndex);
        }
        if (static_cast<LONGLONG>(m_currentIndex) + 1 >= static_cast<LONGLONG>(count) && isLast) *isLast = TRUE;
        if (m_currentIndex == 0 && isFirst) *isFirst = TRUE;
    }

    LPWSTR path = nullptr;
    HRESULT hr = m_properties->GetStringProperty(m_items[shown], &KxPropFilePath, &path);
    if (FAILED(hr) || !CopyItemPath(path)) {
        m_itemPath[0] = L'\0';
        m_nMode |= KX_EDITMODE_NO_PATH;
    }
    CoTaskMemFree(path);
    return S_OK;
}
