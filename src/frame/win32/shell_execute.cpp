#include "frame/win32/shell_execute.h"

#include <shellapi.h>

namespace {

class CWin32ShellExecute final : public IKxShellExecute {
public:
    void ShellExecuteW(HWND hwnd, LPCWSTR verb, LPCWSTR file, LPCWSTR parameters, LPCWSTR directory,
                       INT showCommand) override {
        ::ShellExecuteW(hwnd, verb, file, parameters, directory, showCommand);
    }
};

}  // namespace

IKxShellExecute& KxWin32ShellExecute() {
    static CWin32ShellExecute shell;
    return shell;
}
