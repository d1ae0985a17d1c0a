// The host's side of a dialog test through KxComResPlgin.dll: an in-memory library with its root
// folder and site, the plug-in's object, and the audit that every such test ends with.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "host/library/in_memory_library.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/plugin_loader.h"

namespace kxtest {

class PluginDialogTest : public ::testing::Test {
protected:
    // The CoTaskMem audit runs from before the fixture builds its library.
    PluginDialogTest() { WatchTaskMemory(); }
    // Opens the library's root folder and site and creates the plug-in's object. A fixture fills
    // `lib` first, and sets `before` once its warm-up ran.
    void OpenHost();
    // Nothing left behind since `before`; then all released, and no reference left on the library.
    void TearDown() override;

    std::shared_ptr<kxhost::InMemoryLibrary> lib = kxhost::InMemoryLibrary::Create();
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;
    PluginLibrary plugin;
    IKxCommonResource* resource = nullptr;
    ResourceCounts before{};
};

}  // namespace kxtest
