// CDlgAddToPlaylist linked into this program: a null folder, which the interface screens out
// before any dialog runs, closes the dialog by itself.
#include "library/win32/dlg_add_to_playlist.h"

#include <gtest/gtest.h>

#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/framework_module.h"

namespace kxtest {
namespace {

TEST(AddToPlaylistDialog, WithoutAFolderItClosesAtOnceWithEPointer) {
    FrameworkModule module;
    DialogDriver driver;  // no script: the dialog must close by itself
    KxPidl pidl = nullptr;
    LPWSTR name = nullptr;
    EXPECT_EQ(E_POINTER, RunAddToDialog(1, nullptr, nullptr, L"New", &pidl, &name));
    EXPECT_FALSE(driver.timedOut());
    EXPECT_TRUE(pidl == nullptr && name == nullptr);
}

}  // namespace
}  // namespace kxtest
