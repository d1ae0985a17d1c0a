// The rules of a breadcrumb bar's row of buttons, apart from the tool bar that shows them: the
// start button, one crumb per path element, the cut of the row when a path is set or a crumb is
// clicked, and the truncation callback that tells the owner before crumbs go.
#pragma once

#include <vector>

#include "kx/KxPlatform.h"

// Commands and styles of the row.
constexpr UINT kKxCrumbFirstCommand = 5000;  // the start button; crumb N has 5000 + N
constexpr UINT kKxCrumbLastCommand = 5100;   // a crumb beyond index 100 does not react to a click
constexpr BYTE kKxStartButtonStyle = 0x90;   // BTNS_AUTOSIZE | BTNS_WHOLEDROPDOWN
constexpr BYTE kKxCrumbStyle = 0x58;         // BTNS_AUTOSIZE | BTNS_SHOWTEXT | BTNS_DROPDOWN
constexpr BYTE kKxCrumbStyleNoDropDown = 0x50;
constexpr UINT kKxBreadCrumbControlId = 59392;  // the drop-down handler listens under this identifier

inline bool KxIsCrumbCommand(UINT command) { return command >= kKxCrumbFirstCommand && command <= kKxCrumbLastCommand; }

// What the row needs of the platform's tool bar. Indexes count from 0 at the start button.
class IKxCrumbButtons {
public:
    virtual ~IKxCrumbButtons() = default;
    virtual int ButtonCount() = 0;
    virtual void DeleteButton(int index) = 0;
    // The start button: no image, no text, enabled, style 0x90, command 5000.
    virtual bool AddStartButton() = 0;
    // Appends buttons with these commands in one go: no image, enabled, style 0, no text.
    virtual bool AddButtons(const std::vector<UINT>& commands) = 0;
    // Text and style of the button with this command.
    virtual void SetButtonText(UINT command, LPCWSTR text, BYTE style) = 0;
    virtual int CommandToIndex(UINT command) = 0;  // -1 for none
    virtual void AutoSize() = 0;
};

// The truncation callback: kind 0 with level -1 (all buttons go), kind 0 with a command (a crumb
// was clicked), kind 1 with an index (the buttons from there on are about to be replaced). The
// callee removes its arguments from the stack; its result is not used.
typedef int(CALLBACK* KxCrumbTruncateProc)(int kind, void* owner, int level);

class CKxCrumbRow {
public:
    explicit CKxCrumbRow(IKxCrumbButtons& buttons) : m_buttons(buttons) {}

    // Removes every button without telling the callback, adds the start button. Always 1.
    BOOL ResetCrumbs();
    // Cuts the row at firstIndex and adds one crumb per element of the path; false for a path
    // without elements, after the cut.
    bool SetCrumbPath(LPCWSTR path, int firstIndex, bool lastHasDropDown);
    // Tells the callback (kind 1), then SetCrumbPath.
    bool SetCrumbs(int firstIndex, LPCWSTR path, bool lastHasDropDown);
    // Tells the callback (kind 0, -1), then removes every button.
    void ClearCrumbs();
    // A crumb's command came from the bar: tells the callback, then removes every button behind
    // the clicked one. The index of the clicked crumb, or -1 when the command has none.
    int ClickCrumb(UINT command);

    KxCrumbTruncateProc m_pfnTruncate = nullptr;
    void* m_pTruncateOwner = nullptr;

private:
    void DeleteFrom(int index);
    void Tell(int kind, int level);

    IKxCrumbButtons& m_buttons;
};
