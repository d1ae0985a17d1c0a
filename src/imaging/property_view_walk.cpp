// Previous and Next through the host's view.
#include "imaging/property_view_walk.h"


namespace {
const UINT kVirtualKeyLeft = 0x25, kVirtualKeyRight = 0x27;
}

void CPropertyViewWalk::Connect(IKxContentSite* site) {
    Release();
    if (!site || FAILED(site->QueryService(IID_IKxContentView, 0, 0, m_view.PutVoid())) || !m_view) {
        m_view.Reset();
        return;
    }
    if (FAILED(m_view->QueryInterface(IID_IKxItemCursor, m_cursor.PutVoid()))) m_cursor.Reset();
}

void CPropertyViewWalk::Release() {
    CoTaskMemFree(m_currentItem);
    m_currentItem = nullptr;
    m_cursor.Reset();
    m_view.Reset();
}

void CPropertyViewWalk::SetButtons(IPropertyWalkControls& controls) {
    if (!m_currentItem) {
        if (!m_view) return;
        if (m_cursor) {
            KxCursorItem current = {-1, nullptr};
            ULONG fetched = 0;
            const HRESULT hr = m_cursor->GetCurrentItems(1, &current, &fetched);
            // A success that fetched no item means the view has no current item: a failure here.
            if (FAILED(hr) || fetched == 0 || !current.pidl) {
                CoTaskMemFree(current.pidl);
                controls.EnablePrevious(false);
                controls.EnableNext(false);
                return;
            }
            m_currentItem = current.pidl;
            m_currentIndex = current.index;
        }
    }
    if (!m_view || !m_cursor) return;

    ULONG count = 0;
    // A view that cannot be counted cannot be walked: it counts as empty.
    if (FAILED(m_cursor->GetCount(&count))) count = 0;
    if (count <= 1) {
        controls.EnablePrevious(false);
        controls.EnableNext(false);
        return;
    }
    if (m_currentIndex == 0) {
        controls.EnablePrevious(false);
        controls.FocusNext();
    } else {
        controls.EnablePrevious(true);
    }
    if (static_cast<LONGLONG>(m_currentIndex) >= static_cast<LONGLONG>(count) - 1) {
        controls.EnableNext(false);
        controls.FocusPrevious();
    } else {
        controls.EnableNext(true);
    }
}

bool CPropertyViewWalk::Step(bool previous, bool checkBounds, IPropertyWalkControls& controls) {
    if (!m_view || !m_cursor || !m_currentItem) return false;
    ULONG count = 0;
    if (FAILED(m_cursor->GetCount(&count))) count = 0;
    const LONGLONG last = static_cast<LONGLONG>(count) - 1;
    if (checkBounds && ((previous && m_currentIndex == 0) || (!previous && count > 0 && m_currentIndex >= last)))
        return false;

    m_currentIndex += previous ? -1 : 1;
    if (previous) {
        if (m_currentIndex == 0) {
            controls.EnablePrevious(false);
            controls.FocusNext();
        } else {
            controls.EnablePrevious(true);
            controls.FocusPrevious();
        }
    } else {
        if (m_currentIndex >= last) {
            controls.EnableNext(false);
            controls.FocusPrevious();
        } else {
            controls.EnableNext(true);
            controls.FocusNext();
        }
    }

    KxPidl shown = m_currentItem;
    m_currentItem = nullptr;
    const HRESULT hr = m_cursor->GetItemAt(m_currentIndex, &m_currentItem);
    if (FAILED(hr) || !m_currentItem) {  // no identifier is no item
        CoTaskMemFree(m_currentItem);
        m_currentItem = shown;
        if (previous) {
            controls.EnablePrevious(false);
        } else {
            controls.EnableNext(false);
        }
        return false;
    }
    CoTaskMemFree(shown);
    return true;
}

KxWalkKey KxWalkKeyOf(const KxWalkKeyState& state) {
    if (state.modifierDown || !(state.focusOnPrevious || state.focusOnNext)) return KxWalkKey::None;
    if (state.virtualKey == kVirtualKeyLeft && state.previousEnabled) return KxWalkKey::Previous;
    if (state.virtualKey == kVirtualKeyRight && state.nextEnabled) return KxWalkKey::Next;
    return KxWalkKey::None;
}
