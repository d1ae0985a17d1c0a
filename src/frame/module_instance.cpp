#include "frame/module_instance.h"

HINSTANCE g_hModuleInstance;
