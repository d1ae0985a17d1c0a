// The host's side of a dialog test through the plug-in.
#include "tests/win/common/plugin_dialog_test.h"

namespace kxtest {

void PluginDialogTest::OpenHost() {
    ASSERT_EQ(S_OK, lib->GetRootFolder(&root));
    ASSERT_EQ(S_OK, lib->CreateSite(&site));
    ASSERT_EQ(S_OK, plugin.Create(&resource));
}

void PluginDialogTest::TearDown() {
    EXPECT_EQ("", Leftovers(before));
    if (resource) resource->Release();
    if (site) site->Release();
    if (root) root->Release();
    EXPECT_EQ(0, lib->OutstandingReferences()) << lib->DescribeLiveObjects();
}

}  // namespace kxtest
