// The add-to-playlist logic against the in-memory library: the walk of the existing targets, their
// order, the combo's edit states and what the host gets back.
#include "library/add_to_playlist_model.h"

#include "host/library/in_memory_library.h"
#include "host/library/taskmem_audit.h"
#include "library/pidl.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using kxhost::ItemId;
using kxhost::ItemKind;
using kxhost::Op;

// The combo box and OK button as the model drives them.
struct FakeControls : IAddToPlaylistControls {
    std::vector<std::wstring> lines;
    int selection = -1;
    std::wstring text;
    UINT okText = 0;
    bool okEnabled = true;

    void ResetCombo() override {
        lines.clear();
        selection = -1;
    }
    void AddComboString(LPCWSTR t) override { lines.push_back(t); }
    void SetComboSelection(int index) override {
        selection = index;
        text = (index >= 0 && index < static_cast<int>(lines.size())) ? lines[index] : L"";
    }
    int GetComboSelection() override { return selection; }
    std::wstring GetComboText() override { return text; }
    void SetComboText(LPCWSTR t) override {
        text = t;
        selection = -1;
    }
    void SetOkText(UINT id) override { okText = id; }
    void EnableOk(bool enable) override { okEnabled = enable; }

    // What the user does: pick a line, or type into the edit part.
    void Pick(CAddToPlaylistModel& m, int index) {
        SetComboSelection(index);
        m.OnSelChange(*this);
        m.OnEditChange(*this);  // the list closes
    }
    void Type(CAddToPlaylistModel& m, const std::wstring& t) {
        SetComboText(t.c_str());
        m.OnEditChange(*this);
    }
};

class AddToPlaylistModelTest : public ::testing::Test {
protected:
    void SetUp() override {
        lib = kxhost::InMemoryLibrary::Create();
        ASSERT_TRUE(kxhost::StartTaskMemAudit());
        for (const wchar_t* name : {L"beta", L"Alpha", L"alpha", L"Zeta", L"_mix"})
            playlists.push_back(lib->AddContainer(ItemKind::Playlist, name));
        slideshow = lib->AddContainer(ItemKind::Slideshow, L"Holidays");
        ASSERT_EQ(S_OK, lib->GetRootFolder(&root));
        blocksBefore = kxhost::LiveTaskMemBlocks();
    }
    void TearDown() override {
        if (root) root->Release();
        kxhost::ResetTaskMemFailures();
        EXPECT_EQ(0, lib->OutstandingReferences()) << lib->DescribeLiveObjects();
        EXPECT_EQ(blocksBefore, kxhost::LiveTaskMemBlocks()) << "CoTaskMem blocks left behind";
        kxhost::StopTaskMemAudit();
    }
    std::vector<std::wstring> Names(const CAddToPlaylistModel& m) {
        std::vector<std::wstring> names;
        for (int i = 0; i < m.m_nExisting; ++i) names.push_back(m.m_ppExisting[i]->name);
        return names;
    }

    std::shared_ptr<kxhost::InMemoryLibrary> lib;
    IKxContentFolder* root = nullptr;
    std::vector<ItemId> playlists;
    ItemId slideshow = 0;
    long blocksBefore = 0;
    FakeControls combo;
};

TEST_F(AddToPlaylistModelTest, ExistingTargetsSortByCodeUnitAndFillTheComboInOrder) {
    CAddToPlaylistModel m(CAddToPlaylistModel::ModePlaylist, root, nullptr);
    ASSERT_EQ(S_OK, m.LoadExisting(CAddToPlaylistModel::WhichPlaylists));
    // every upper-case Latin letter before '_' before every lower-case one
    const std::vector<std::wstring> sorted = {L"Alpha", L"Zeta", L"_mix", L"alpha", L"beta"};
    EXPECT_EQ(sorted, Names(m));
    m.FillCombo(combo, nullptr);
    EXPECT_EQ(sorted, combo.lines);
    EXPECT_EQ(0, combo.selection);
    EXPECT_EQ(0, m.m_nSelected);
    EXPECT_FALSE(m.m_bNewName);
    EXPECT_EQ(CAddToPlaylistModel::kStringOkExisting, combo.okText);
    EXPECT_TRUE(combo.okEnabled);
    EXPECT_EQ(3, m.FindExisting(L"alpha"));
    EXPECT_EQ(-1, m.FindExisting(L"ALPHA"));
    EXPECT_EQ(-1, m.FindExisting(nullptr));
    EXPECT_EQ(S_OK, m.m_hrResult);
}

TEST_F(AddToPlaylistModelTest, SlideshowModeWalksTheSlideshows) {
    CAddToPlaylistModel m(CAddToPlaylistModel::ModeSlideshow, root, nullptr);
    ASSERT_EQ(S_OK, m.LoadExisting(CAddToPlaylistModel::WhichSlideshows));
    EXPECT_EQ(std::vector<std::wstring>{L"Holidays"}, Names(m));
    KxPidl expected = lib->NewPidl(slideshow);
    EXPECT_TRUE(KxPidlEqual(expected, m.m_ppExisting[0]->pidl));
    KxPidlFree(expected);
    EXPECT_EQ(E_FAIL, m.LoadExisting(3));
    EXPECT_EQ(E_FAIL, m.m_hrResult);
}

TEST_F(AddToPlaylistModelTest, AnyFailedStepOfTheWalkIsReportedAsAnUnreachableFolder) {
    struct Case {
        Op op;
        HRESULT status;
    };
    // S_FALSE from a step that must give S_OK counts as a failure too
    for (Case c : {Case{Op::QueryContentRoot, E_NOINTERFACE}, Case{Op::QueryContentFolder, E_NOINTERFACE},
                   Case{Op::ParseName, S_FALSE}, Case{Op::ParseName, E_INVALIDARG},
                   Case{Op::BindToFolder, E_ACCESSDENIED}, Case{Op::EnumItems, E_OUTOFMEMORY}}) {
        SCOPED_TRACE(static_cast<int>(c.op));
        CAddToPlaylistModel m(CAddToPlaylistModel::ModePlaylist, root, nullptr);
        lib->FailOperation(c.op, c.status);
        EXPECT_EQ(E_POINTER, m.LoadExisting(CAddToPlaylistModel::WhichPlaylists));
        EXPECT_EQ(E_POINTER, m.m_hrResult);
        EXPECT_EQ(0, m.m_nExisting);
        lib->ResetFailures();
        // the combo is still filled from what is there: nothing, so a new name is asked for
        m.FillCombo(combo, nullptr);
        EXPECT_TRUE(combo.lines.empty());
        EXPECT_FALSE(combo.okEnabled);
    }
    CAddToPlaylistModel noFolder(CAddToPlaylistModel::ModePlaylist, nullptr, nullptr);
    EXPECT_EQ(E_POINTER, noFolder.LoadExisting(CAddToPlaylistModel::WhichPlaylists));
}

TEST_F(AddToPlaylistModelTest, TargetsWhoseNameOrFetchFailsAreLeftOut) {
    {
        CAddToPlaylistModel m(CAddToPlaylistModel::ModePlaylist, root, nullptr);
        lib->FailOperation(Op::GetItemName, E_FAIL, 2);
        ASSERT_EQ(S_OK, m.LoadExisting(CAddToPlaylistModel::WhichPlaylists));
        EXPECT_EQ(4, m.m_nExisting);
    }
    {
        // a failing Next ends the walk; what came before stays
        CAddToPlaylistModel m(CAddToPlaylistModel::ModePlaylist, root, nullptr);
        lib->FailOperation(Op::Next, E_FAIL, 3);
        ASSERT_EQ(S_OK, m.LoadExisting(CAddToPlaylistModel::WhichPlaylists));
        EXPECT_EQ(2, m.m_nExisting);
    }
    {
        // the last item may come with S_FALSE: it still counts
        lib->SetNextEndsWithLastItem(true);
        CAddToPlaylistModel m(CAddToPlaylistModel::ModePlaylist, root, nullptr);
        ASSERT_EQ(S_OK, m.LoadExisting(CAddToPlaylistModel::WhichPlaylists));
        EXPECT_EQ(5, m.m_nExisting);
    }
}

TEST_F(AddToPlaylistModelTest, NoTargetsAndNoInitialNameAsksForANewNameWithOkDisabled) {
    auto empty = kxhost::InMemoryLibrary::Create();
    IKxContentFolder* emptyRoot = nullptr;
    ASSERT_EQ(S_OK, empty->GetRootFolder(&emptyRoot));
    {
        CAddToPlaylistModel m(CAddToPlaylistModel::ModePlaylist, emptyRoot, L"");
        ASSERT_EQ(S_OK, m.LoadExisting(CAddToPlaylistModel::WhichPlaylists));
        m.FillCombo(combo, m.m_pszInitialName);
        EXPECT_TRUE(combo.lines.empty());
        EXPECT_EQ(L"", combo.text);
        EXPECT_TRUE(m.m_bNewName);
        EXPECT_EQ(-1, m.m_nSelected);
        EXPECT_EQ(CAddToPlaylistModel::kStringOkNew, combo.okText);
        EXPECT_FALSE(combo.okEnabled);
        EXPECT_FALSE(m.OnOK(combo));  // the dialog stays open
    }
    emptyRoot->Release();
    EXPECT_EQ(0, empty->OutstandingReferences());
}

TEST_F(AddToPlaylistModelTest, InitialNameSelectsOnlyAnExactMatch) {
    CAddToPlaylistModel exact(CAddToPlaylistModel::ModePlaylist, root, L"beta");
    ASSERT_EQ(S_OK, exact.LoadExisting(CAddToPlaylistModel::WhichPlaylists));
    exact.FillCombo(combo, exact.m_pszInitialName);
    EXPECT_EQ(4, combo.selection);
    EXPECT_FALSE(exact.m_bNewName);
    EXPECT_EQ(CAddToPlaylistModel::kStringOkExisting, combo.okText);

    CAddToPlaylistModel byCase(CAddToPlaylistModel::ModePlaylist, root, L"BETA");
    ASSERT_EQ(S_OK, byCase.LoadExisting(CAddToPlaylistModel::WhichPlaylists));
    byCase.FillCombo(combo, byCase.m_pszInitialName);
    EXPECT_TRUE(byCase.m_bNewName);
    EXPECT_EQ(-1, byCase.m_nSelected);
    EXPECT_EQ(L"BETA", combo.text);
    EXPECT_EQ(L"BETA", byCase.m_strNewName);
    EXPECT_EQ(CAddToPlaylistModel::kStringOkNew, combo.okText);
    EXPECT_TRUE(combo.okEnabled);
}

TEST_F(AddToPlaylistModelTest, EditStatesFollowTheTextOfTheCombo) {
    CAddToPlaylistModel m(CAddToPlaylistModel::ModePlaylist, root, nullptr);
    ASSERT_EQ(S_OK, m.LoadExisting(CAddToPlaylistModel::WhichPlaylists));
    m.FillCombo(combo, nullptr);

    combo.Type(m, L"New list");
    EXPECT_TRUE(m.m_bNewName);
    EXPECT_EQ(-1, m.m_nSelected);
    EXPECT_EQ(CAddToPlaylistModel::kStringOkNew, combo.okText);
    EXPECT_TRUE(combo.okEnabled);

    combo.Type(m, L"");  // neither state: OK disabled
    EXPECT_FALSE(m.m_bNewName);
    EXPECT_EQ(-1, m.m_nSelected);
    EXPECT_FALSE(combo.okEnabled);

    // picking changes the button's text at once and enables it when the list closes
    combo.SetComboSelection(1);
    m.OnSelChange(combo);
    EXPECT_EQ(CAddToPlaylistModel::kStringOkExisting, combo.okText);
    EXPECT_FALSE(combo.okEnabled);
    m.OnEditChange(combo);
    EXPECT_TRUE(combo.okEnabled);
    EXPECT_EQ(1, m.m_nSelected);

    // typing an existing name exactly: existing, without a list selection
    combo.Type(m, L"Zeta");
    EXPECT_FALSE(m.m_bNewName);
    EXPECT_EQ(1, m.m_nSelected);
    EXPECT_TRUE(m.m_strNewName.empty());
    EXPECT_EQ(-1, combo.selection);
    EXPECT_EQ(CAddToPlaylistModel::kStringOkExisting, combo.okText);
}

TEST_F(AddToPlaylistModelTest, ChosenTargetIsHandedBackAloneWithItsOwnership) {
    KxPidl pidl = nullptr;
    LPWSTR name = nullptr;
    {
        CAddToPlaylistModel m(CAddToPlaylistModel::ModePlaylist, root, nullptr);
        ASSERT_EQ(S_OK, m.LoadExisting(CAddToPlaylistModel::WhichPlaylists));
        m.FillCombo(combo, nullptr);
        combo.Pick(m, 4);  // "beta"
        ASSERT_TRUE(m.OnOK(combo));
        EXPECT_EQ(S_OK, m.HandBack(&pidl, &name));
        EXPECT_EQ(S_OK, m.m_hrResult);
    }  // the rest of the list is freed with the model
    EXPECT_EQ(nullptr, name);
    ASSERT_NE(nullptr, pidl);
    EXPECT_EQ(playlists[0], lib->ItemOf(pidl));
    KxPidlFree(pidl);
}

TEST_F(AddToPlaylistModelTest, NewNameIsHandedBackAloneFromTaskMemory) {
    KxPidl pidl = nullptr;
    LPWSTR name = nullptr;
    CAddToPlaylistModel m(CAddToPlaylistModel::ModePlaylist, root, nullptr);
    ASSERT_EQ(S_OK, m.LoadExisting(CAddToPlaylistModel::WhichPlaylists));
    m.FillCombo(combo, nullptr);
    combo.Type(m, L"Road trip");
    ASSERT_TRUE(m.OnOK(combo));
    EXPECT_EQ(S_OK, m.HandBack(&pidl, &name));
    EXPECT_EQ(nullptr, pidl);
    ASSERT_NE(nullptr, name);
    EXPECT_STREQ(L"Road trip", name);
    CoTaskMemFree(name);
}

TEST_F(AddToPlaylistModelTest, HandBackFailures) {
    KxPidl pidl = nullptr;
    LPWSTR name = nullptr;
    {
        CAddToPlaylistModel m(CAddToPlaylistModel::ModePlaylist, root, L"Fresh");
        m.m_bNewName = TRUE;
        m.m_strNewName = L"Fresh";
        kxhost::FailTaskMemAllocations(1);
        EXPECT_EQ(E_OUTOFMEMORY, m.HandBack(&pidl, &name));
        EXPECT_EQ(E_OUTOFMEMORY, m.m_hrResult);
        EXPECT_EQ(nullptr, name);
    }
    {
        CAddToPlaylistModel m(CAddToPlaylistModel::ModePlaylist, root, nullptr);
        m.m_bNewName = TRUE;
        EXPECT_EQ(E_FAIL, m.HandBack(&pidl, &name));
    }
    {
        // nothing chosen and no name: success with nothing in it, the failure kept in m_hrResult
        CAddToPlaylistModel m(CAddToPlaylistModel::ModePlaylist, root, nullptr);
        EXPECT_EQ(S_OK, m.HandBack(&pidl, &name));
        EXPECT_EQ(E_FAIL, m.m_hrResult);
        EXPECT_EQ(nullptr, pidl);
    }
}

}  // namespace
