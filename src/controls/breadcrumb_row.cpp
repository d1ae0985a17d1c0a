// The row of a breadcrumb bar: what the buttons become when a path is set, cleared or clicked.
#include "controls/breadcrumb_row.h"

#include "controls/breadcrumb_path.h"

void CKxCrumbRow::DeleteFrom(int index) {
    for (int i = m_buttons.ButtonCount() - 1; i >= index && i >= 0; --i) m_buttons.DeleteButton(i);
}

void CKxCrumbRow::Tell(int kind, int level) {
    if (m_pfnTruncate) m_pfnTruncate(kind, m_pTruncateOwner, level);
}

BOOL CKxCrumbRow::ResetCrumbs() {
    DeleteFrom(0);
    m_buttons.AddStartButton();
    SetCrumbPath(L"", 1, false);
    m_buttons.AutoSize();
    return TRUE;
}

bool CKxCrumbRow::SetCrumbPath(LPCWSTR path, int firstIndex, bool lastHasDropDown) {
    if (firstIndex < 0) firstIndex = 0;
    DeleteFrom(firstIndex);
    const std::vector<std::wstring> names = KxSplitCrumbPath(path);
    if (names.empty()) return false;
    std::vector<UINT> commands;
    for (size_t k = 0; k < names.size(); ++k) commands.push_back(kKxCrumbFirstCommand + firstIndex + UINT(k));
    if (!m_buttons.AddButtons(commands)) return false;
    for (size_t k = 0; k < names.size(); ++k) {
        const bool last = k + 1 == names.size();
        m_buttons.SetButtonText(commands[k], names[k].c_str(),
                                last && !lastHasDropDown ? kKxCrumbStyleNoDropDown : kKxCrumbStyle);
    }
    m_buttons.AutoSize();
    return true;
}

bool CKxCrumbRow::SetCrumbs(int firstIndex, LPCWSTR path, bool lastHasDropDown) {
    Tell(1, firstIndex);
    return SetCrumbPath(path, firstIndex, lastHasDropDown);
}

void CKxCrumbRow::ClearCrumbs() {
    Tell(0, -1);
    DeleteFrom(0);
}

int CKxCrumbRow::ClickCrumb(UINT command) {
    Tell(0, int(command));
    const int index = m_buttons.CommandToIndex(command);
    if (index >= 0) DeleteFrom(index + 1);
    return index;
}
