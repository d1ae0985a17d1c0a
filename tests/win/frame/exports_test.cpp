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

TEST(PluginExports, UnknownClassIsNotAvailable) {
    kxtest::PluginLibrary plugin;
    const GUID other = {0x12345678, 0x1234, 0x1234, {1, 2, 3, 4, 5, 6, 7, 8}};
    void* out = reinterpret_cast<void*>(0x1);
    EXPECT_EQ(CLASS_E_CLASSNOTAVAILABLE, plugin.GetClassObject(other, IID_IClassFactory, &out));
}

}  // namespace
