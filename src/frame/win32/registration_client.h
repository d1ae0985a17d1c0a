// The registration library VnIntrfu.dll, bound at run time by name so that the plug-in loads and
// runs without it; registration then fails with 0x80004005.
#pragma once

#include "frame/class_table.h"

HRESULT KxRegisterWithVnIntrfu(HINSTANCE instance);
HRESULT KxUnregisterWithVnIntrfu();
