// The module's class table: KxComResPlginPluginObj, the one class that the library creates.
#include "frame/class_table.h"
#include "frame/plugin_object.h"

const CVnClassTableRow g_VnClassTable[] = {
    {&CLSID_KxComResPlginPluginObj, &KxComResPlginPluginObj::CreateInstance, L"Commom Resource Plugin Object",
     L"CATEGORY_KxCommonResource", nullptr, nullptr},
};
const std::size_t g_cVnClassTableRows = sizeof(g_VnClassTable) / sizeof(g_VnClassTable[0]);
