// Finding the shown item in the host's view and stepping to its neighbours.
#include "tags/edit_tag_model.h"

KxPidl CEditTagModel::GetSelectedItem(LONG* index) {
    if (!m_cursor) return nullptr;
    KxCursorItem current = {0, nullptr};
    ULONG fetched = 0;
    HRESULT hr = m_cursor->GetCurrentItems(1, &current, &fetched);
    // A success that fetched nothing means the view has no current item.
    if (FAILED(hr) || fetched == 0) {
        CoTaskMemFree(current.pidl);
        return nullptr;
    }
    if (index) *index = current.index;
    return current.pidl;
}

HRESULT CEditTagModel::MoveToItem(BOOL* isFirst, BOOL* isLast, BOOL forward) {
    BOOL ignoredFirst = FALSE;
    BOOL ignoredLast = FALSE;
    if (!isFirst) isFirst = &ignoredFirst;
    if (!isLast) isLast = &ignoredLast;
    *isFirst = FALSE;
    *isLast = FALSE;
    if (!m_cursor) return E_POINTER;

    if (!m_currentItem) {
        m_currentItem = GetSelectedItem(&m_currentIndex);
        if (!m_currentItem) {
            *isFirst = TRUE;
            *isLast = TRUE;
            return E_FAIL;
        }
    }

    // Moving saves the shown item; a later Cancel does not undo that.
    WriteItemTags(m_currentItem);

    const LONG from = m_currentIndex;
    m_currentIndex += forward ? 1 : -1;

    ULONG count = 0;
    if (SUCCEEDED(m_cursor->GetCount(&count))) {
        const LONGLONG next = static_cast<LONGLONG>(m_currentIndex) + 1;
        if (next >= static_cast<LONGLONG>(count)) *isLast = TRUE;
        if (m_currentIndex <= 0) *isFirst = TRUE;
        if ((forward && next > static_cast<LONGLONG>(count)) || (!forward && m_currentIndex < 0)) {
            // The shown item stays, so its index stays too: a later step starts from it.
            m_currentIndex = from;
            return E_NOTIMPL;
        }
    }

    KxPidl previous = m_currentItem;
    m_currentItem = nullptr;
    HRESULT hr = m_cursor->GetItemAt(m_currentIndex, &m_currentItem);
    if (SUCCEEDED(hr) && !m_currentItem) hr = E_FAIL;  // no identifier is no item
    if (FAILED(hr)) {
        CoTaskMemFree(m_currentItem);
        m_currentItem = previous;
        if (forward) {
            *isLast = TRUE;
        } else {
            *isFirst = TRUE;
        }
        return hr;
    }

    CoTaskMemFree(previous);
    ClearShownArt();
    LoadItemTags(m_currentItem);
    SetTagsToControls(&m_tags);
    return S_OK;
}
