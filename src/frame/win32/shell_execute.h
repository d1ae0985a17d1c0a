// The shell's ShellExecuteW behind IKxShellExecute, for opening the music store.
#pragma once

#include "frame/settings_table.h"

IKxShellExecute& KxWin32ShellExecute();
