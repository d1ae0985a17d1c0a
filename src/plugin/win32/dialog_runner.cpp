#include "plugin/win32/dialog_runner.h"

IKxDialogRunner& KxWin32DialogRunner() {
    static CKxDialogRunner runner;
    return runner;
}
