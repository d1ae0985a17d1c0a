// CDlgAddToPlaylist linked into this program: the cases the interface screens out before any
// dialog runs, and what the object keeps after its run.
#include "library/win32/dlg_add_to_playlist.h"

#include <gtest/gtest.h>

#include "host/library/in_memory_library.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/framework_module.h"
#include "ui/module_state.h"

namespace kxtest {
namespace {

TEST(AddToPlaylistDialog, WithoutAFolderItClosesAtOnceWithEPointer) {
    FrameworkModule module;
    DialogDriver driver;  // no script: the dialog must close by itself
    KxPidl pidl = nullptr;
    LPWSTR name = nullptr;
    EXPECT_EQ(E_POINTER, RunAddToPlaylistDialog(1, nullptr, nullptr, L"New", &pidl, &name));
    EXPECT_FALSE(driver.timedOut());
    EXPECT_EQ(nullptr, pidl);
    EXPECT_EQ(nullptr, name);
}

TEST(AddToPlaylistDialog, DestroyFreesTheListButKeepsTheChoice) {
    FrameworkModule module;
    auto lib = kxhost::InMemoryLibrary::Create();
    const kxhost::ItemId only = lib->AddContainer(kxhost::ItemKind::Playlist, L"Only");
    IKxContentFolder* root = nullptr;
    ASSERT_EQ(S_OK, lib->GetRootFolder(&root));
    {
        CKxManageState state;
        CDlgAddToPlaylist dlg(1, root, L"Only", nullptr);
        DialogDriver driver;
        driver.Click(1039);
        EXPECT_EQ(IDOK, dlg.DoModal());
        EXPECT_EQ(nullptr, dlg.m_model.m_ppExisting);
        EXPECT_EQ(nullptr, dlg.m_model.m_pszInitialName);
        ASSERT_NE(nullptr, dlg.m_model.m_pidlChosen);
        EXPECT_EQ(only, lib->ItemOf(dlg.m_model.m_pidlChosen));
        // never handed back: the object frees it with itself
    }
    root->Release();
    EXPECT_EQ(0, lib->OutstandingReferences());
}

}  // namespace
}  // namespace kxtest
