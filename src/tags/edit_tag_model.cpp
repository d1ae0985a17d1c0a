// Life of the model and its connection to the host's library.
#include "tags/edit_tag_model.h"

#include <cwchar>


CEditTagModel::CEditTagModel(IKxContentSite* site, IKxContentFolder* folder, UINT itemCount,
                             const KxPcPidl* items)
    : m_pSite(site),
      m_pFolder(folder),
      m_itemCount(itemCount),
      m_items(items),
      m_currentIndex(0),
      m_tags(),
      m_knownValuesStale(TRUE),
      m_knownValuesReads(0),
      m_nMode(KX_EDITMODE_SEVERAL),
      m_itemPath(),
      m_hrResult(S_OK),
      m_nArtSize(0),
      m_bArtChanged(FALSE),
      m_bArtRemoved(FALSE),
      m_deleteArtOnAll(FALSE),
      m_artEditable(TRUE) {}

// The window side frees all of this when its window goes away; whatever is left goes here (the
// owners give back the rest), so a model that never had a window leaks nothing either.
CEditTagModel::~CEditTagModel() {
    FreeTrackTagValues(&m_tags);
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

    HRESULT hr = m_pFolder->GetItemObject(m_pSite, OwnerWindow(), m_itemCount, m_items, IID_IKxItemProperties,
                                          m_properties.PutVoid());
    if (FAILED(hr) || !m_properties) return FAILED(hr) ? hr : E_POINTER;

    KxPropertyKey keys[KxTagCount];
    for (int i = 0; i < KxTagCount; ++i) keys[i] = *KxTagPrefetchKeys[i];
    hr = m_properties->PrefetchProperties(KxTagCount, keys);
    if (FAILED(hr)) return hr;

    hr = m_pSite->QueryService(IID_IKxContentView, 0, 0, m_view.PutVoid());
    if (FAILED(hr) || !m_view) return FAILED(hr) ? hr : E_POINTER;

    hr = m_view->QueryInterface(IID_IKxItemCursor, m_cursor.PutVoid());
    if (FAILED(hr) || !m_cursor) return FAILED(hr) ? hr : E_POINTER;

    // The folder that resolves the well-known names is optional: without it the known-value
    // lists stay empty.
    if (FAILED(m_pFolder->QueryInterface(IID_IKxContentRoot, m_librarySource.PutVoid())) || !m_librarySource) {
        m_librarySource.Reset();  // an object handed out with a failure is still given back
        return S_OK;
    }
    if (FAILED(m_librarySource->QueryInterface(IID_IKxContentFolder, m_library.PutVoid())) || !m_library) {
        m_library.Reset();
        m_librarySource.Reset();
    }
    return S_OK;
}

void CEditTagModel::ReleaseNamespace() {
    m_currentItem.Reset();
    ReleaseInterfaces();
}

void CEditTagModel::ReleaseInterfaces() {
    m_librarySource.Reset();
    m_library.Reset();
    m_cursor.Reset();
    m_view.Reset();
    m_properties.Reset();
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
    while (shown < m_itemCount && FAILED(ReadItemTags(m_properties.Get(), m_items[shown]))) ++shown;
    if (shown == m_itemCount) {
        m_hrResult = E_POINTER;
        return m_hrResult;
    }

    if (m_itemCount >= 2) ReadItemCapabilities(m_properties.Get(), m_items, m_itemCount);

    ULONG count = 0;
    if (SUCCEEDED(m_cursor->GetCount(&count))) {
        if (!m_currentItem || m_currentIndex == -1) m_currentItem.Reset(GetSelectedItem(&m_currentIndex));
        if (static_cast<LONGLONG>(m_currentIndex) + 1 >= static_cast<LONGLONG>(count) && isLast) *isLast = TRUE;
        if (m_currentIndex == 0 && isFirst) *isFirst = TRUE;
    }

    CKxTaskMemString path;
    HRESULT hr = m_properties->GetStringProperty(m_items[shown], &KxPropFilePath, path.Put());
    if (FAILED(hr) || !CopyItemPath(path.Get())) {
        m_itemPath[0] = L'\0';
        m_nMode |= KX_EDITMODE_NO_PATH;
    }
    return S_OK;
}
