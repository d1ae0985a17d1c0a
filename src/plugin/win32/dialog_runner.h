// The dialogs of IKxCommonResource on Win32: the runner that hands each operation to the feature
// folder that owns it (each feature's win32/run_*.cpp). An operation whose dialog does not exist yet
// answers 0x80004001 there.
#pragma once

#include "frame/plugin_platform.h"

// The process-wide runner that the library's load installs.
IKxDialogRunner& KxWin32DialogRunner();
