// Previous and Next of the properties dialogs: the host's view and its cursor, the item on show
// with its index, and the buttons' states and focus after each read and step.
#pragma once

#include "kx/KxContentTree.h"
#include "base/owners.h"

// What the walk needs of a dialog's Previous and Next buttons.
class IPropertyWalkControls {
public:
    virtual void EnablePrevious(bool enable) = 0;
    virtual void EnableNext(bool enable) = 0;
    virtual void FocusPrevious() = 0;
    virtual void FocusNext() = 0;

protected:
    ~IPropertyWalkControls() = default;
};

class CPropertyViewWalk {
public:
    CPropertyViewWalk() = default;
    ~CPropertyViewWalk() { Release(); }
    CPropertyViewWalk(const CPropertyViewWalk&) = delete;
    CPropertyViewWalk& operator=(const CPropertyViewWalk&) = delete;

    // Asks the site for the view and the view for its cursor; either may stay null.
    void Connect(IKxContentSite* site);
    // Frees the item on show and releases the cursor and the view.
    void Release();

    // After a read: takes the view's current item when no item is on show yet, then sets the
    // buttons by the index: both disabled in a view of one item or less, Previous disabled with the
    // focus on Next at the first item, Next disabled with the focus on Previous at the last.
    void SetButtons(IPropertyWalkControls& controls);

    // One step back or on, up to fetching the new item; true when the item on show changed and is
    // to be read. With checkBounds a step beyond either end of the view does nothing. A failed
    // fetch keeps the item on show (its index keeps the new value) and disables the button of the
    // direction.
    bool Step(bool previous, bool checkBounds, IPropertyWalkControls& controls);

    CKxComPtr<IKxContentView> m_view;
    CKxComPtr<IKxItemCursor> m_cursor;
    KxPidl m_currentItem = nullptr;  // owned
    LONG m_currentIndex = -1;
};

// Left and Right on the focused Previous or Next button step through the view, unless Shift,
// Control, Alt or a Windows key is down.
enum class KxWalkKey { None, Previous, Next };
struct KxWalkKeyState {
    UINT virtualKey;  // of WM_KEYUP
    bool focusOnPrevious, focusOnNext;
    bool previousEnabled, nextEnabled;
    bool modifierDown;  // any of VK_LSHIFT to VK_RMENU, VK_LWIN, VK_RWIN
};
KxWalkKey KxWalkKeyOf(const KxWalkKeyState& state);
