// Answers the dialogs that a dialog under test opens with loops of their own (the file dialog, a
// message box): the driver's script waits while they run, so a timer of the test's thread finds
// them and answers from inside their loop.
#pragma once

#include <windows.h>

#include <string>

namespace kxtest {

// A visible dialog of the thread's other than `except`; null when there is none.
HWND FindOtherDialog(HWND except);
// Answers the next file dialog that `owner` opens: types `path` into its name field and opens
// it; an empty path cancels it.
void AnswerFileDialog(HWND owner, const std::wstring& path);
// Whether the last file dialog answered was opened with a path.
bool FileDialogAnswered();

}  // namespace kxtest
