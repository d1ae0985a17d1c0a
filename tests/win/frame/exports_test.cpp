// The plug-in loaded by path under Wine, through its exports.
#include <windows.h>

#include <gtest/gtest.h>

#include "tests/win/common/plugin_loader.h"

namespace {

TEST(PluginExports, LoadsFromItsFolderAndExportsTheFourEntryPoints) {
    kxtest::PluginLibrary plugin;
    ASSERT_NE(nullptr, plugin.module()) << "KxComResPlgin.dll not found beside the test";
    for (const char* name : {"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"})
        EXPECT_NE(nullptr, reinterpret_cast<void*>(GetProcAddress(plugin.module(), name))) << name;
}

}  // namespace
