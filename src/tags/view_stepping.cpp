// Finding the shown item in the host's view and stepping to its neighbours.
#include "tags/edit_tag_model.h"

KxPidl CEditTagModel::GetSelectedItem(LONG* index) {
    if (!m_cursor) return nullptr;
    KxCursorItem current = {0, nullptr};
    ULONG fetched = 0;
    HRESULT hr = m_cursor->GetCurrentItems(1, &current, &fetched);
    CKxTaskMem<KxPidl> pidl(current.pidl);
    // A success that fetched nothing means the view has no current item.
    if (FAILED(hr) || fetched == 0) return nullptr;
    if (index) *index = current.index;
    return pidl.Detach();
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
        m_currentItem.Reset(GetSelectedItem(&m_currentIndex));
        if (!m_currentItem) {
            *isFirst = TRUE;
            *isLast = TRUE;
            return E_FAIL;
        }
    }

    // Moving saves the shown item; a later Cancel does not undo that.
    WriteItemTags(m_currentItem.Get());

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

    CKxTaskMem<KxPidl> next;
    HRESULT hr = m_cursor->GetItemAt(m_currentIndex, next.Put());
    if (SUCCEEDED(hr) && !next) hr = E_FAIL;  // no identifier is no item
    if (FAILED(hr)) {
        if (forward) {
            *isLast = TRUE;
        } else {
            *isFirst = TRUE;
        }
        return hr;
    }

    m_currentItem = std::move(next);
    ClearShownArt();
    LoadItemTags(m_currentItem.Get());
    SetTagsToControls(&m_tags);
    return S_OK;
}
