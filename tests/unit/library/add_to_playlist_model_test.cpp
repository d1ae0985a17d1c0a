// The add-to-playlist logic against the in-memory library: the walk of the existing targets, their
// order, the combo's edit states and what the host gets back.
#include "library/add_to_playlist_model.h"

#include "host/library/in_memory_library.h"
#include "host/library/taskmem_audit.h"
#include "library/pidl.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <memory>
#include <string>
#include <vector>

namespace {

using kxhost::ItemKind;
using kxhost::Op;
typedef CAddToPlaylistModel M;

std::string Narrow(const std::wstring& s) { return std::string(s.begin(), s.end()); }
LPWSTR Dup(LPCWSTR s) {
    const size_t bytes = (std::wcslen(s) + 1) * sizeof(WCHAR);
    return static_cast<LPWSTR>(std::memcpy(CoTaskMemAlloc(bytes), s, bytes));
}

// The combo box and OK button as the model drives them, and what the user does with them.
struct FakeControls : IAddToPlaylistControls {
    std::vector<std::wstring> lines;
    int selection = -1;
    std::wstring text;
    UINT okText = 0;
    bool okEnabled = true;

    void ResetCombo() override { lines.clear(), selection = -1; }
    void AddComboString(LPCWSTR t) override { lines.push_back(t); }
    void SetComboSelection(int i) override { selection = i, text = i >= 0 && i < int(lines.size()) ? lines[i] : L""; }
    int GetComboSelection() override { return selection; }
    std::wstring GetComboText() override { return text; }
    void SetComboText(LPCWSTR t) override { text = t, selection = -1; }
    void SetOkText(UINT id) override { okText = id; }
    void EnableOk(bool enable) override { okEnabled = enable; }

    void Type(M& m, const std::wstring& t) { SetComboText(t.c_str()), m.OnEditChange(*this); }
    // The combo's selection and text, the OK button, and what the model makes of them.
    std::string State(const M& m) const {
        return std::to_string(selection) + " '" + Narrow(text) + "' " + (okText == M::kStringOkNew ? "Create" : "OK") +
               (okEnabled ? "" : "(off)") + " | " +
               (m.m_bNewName ? "new '" + Narrow(m.m_strNewName) + "'" : "existing " + std::to_string(m.m_nSelected));
    }
};

class AddToPlaylistModelTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(kxhost::StartTaskMemAudit());
        lib = kxhost::InMemoryLibrary::Create();
        for (LPCWSTR name : {L"beta", L"Alpha", L"alpha", L"Zeta", L"_mix"})
            lib->AddContainer(ItemKind::Playlist, name);
        slideshow = lib->AddContainer(ItemKind::Slideshow, L"Holidays");
        ASSERT_EQ(S_OK, lib->GetRootFolder(&root));
        blocksBefore = kxhost::LiveTaskMemBlocks();
    }
    void TearDown() override {
        if (root) root->Release();
        kxhost::ResetTaskMemFailures();
        EXPECT_EQ(0, lib->OutstandingReferences()) << lib->DescribeLiveObjects();
        EXPECT_EQ(blocksBefore, kxhost::LiveTaskMemBlocks()) << "CoTaskMem blocks left behind";
    }
    // A playlist model that has walked the library and filled the combo.
    std::unique_ptr<M> Filled(LPCWSTR initial, IKxContentFolder* folder = nullptr) {
        auto m = std::make_unique<M>(M::ModePlaylist, folder ? folder : root, initial);
        EXPECT_EQ(S_OK, m->LoadExisting(M::WhichPlaylists));
        m->FillCombo(combo, m->m_pszInitialName.Get());
        return m;
    }
    std::string Names(const M& m) {
        std::string names;
        for (int i = 0; i < m.m_nExisting; ++i)
            names += (m.m_ppExisting[i]->name ? Narrow(m.m_ppExisting[i]->name) : "-") + " ";
        return names;
    }
    // What HandBack gives: its code, then the target's name and the new name ("-" for none).
    std::string Handed(M& m) {
        KxPidl pidl = nullptr;
        LPWSTR name = nullptr;
        char code[10];
        std::snprintf(code, sizeof code, "%08X", static_cast<unsigned>(m.HandBack(&pidl, &name)));
        std::string out = code + (pidl ? " " + Narrow(lib->NameOf(lib->ItemOf(pidl))) : " -");
        out += name ? " '" + Narrow(name) + "'" : " -";
        KxPidlFree(pidl);
        CoTaskMemFree(name);
        return out;
    }

    std::shared_ptr<kxhost::InMemoryLibrary> lib;
    IKxContentFolder* root = nullptr;
    kxhost::ItemId slideshow = 0;
    long blocksBefore = 0;
    FakeControls combo;
};

TEST_F(AddToPlaylistModelTest, TargetsAreSortedByCodeUnitAndFoundByExactName) {
    auto m = Filled(nullptr);
    EXPECT_EQ("Alpha Zeta _mix alpha beta ", Names(*m));  // upper case, then '_', then lower case
    EXPECT_EQ((std::vector<std::wstring>{L"Alpha", L"Zeta", L"_mix", L"alpha", L"beta"}), combo.lines);
    EXPECT_EQ(3, m->FindExisting(L"alpha"));
    EXPECT_EQ(-1, m->FindExisting(L"ALPHA"));
    EXPECT_EQ(-1, m->FindExisting(nullptr));
    // names the host gave as null come first and show as empty lines, so line I stays target I
    __tagExistedItemsPidl* records[] = {new __tagExistedItemsPidl{nullptr, Dup(L"b")},
                                        new __tagExistedItemsPidl{lib->NewPidl(slideshow), nullptr},
                                        new __tagExistedItemsPidl{nullptr, Dup(L"B")}};
    m->StoreSorted(records, 3);
    EXPECT_EQ("- B b ", Names(*m));
    m->FillCombo(combo, nullptr);
    EXPECT_EQ((std::vector<std::wstring>{L"", L"B", L"b"}), combo.lines);

    M shows(M::ModeSlideshow, root, nullptr);
    ASSERT_EQ(S_OK, shows.LoadExisting(M::WhichSlideshows));
    EXPECT_EQ("Holidays ", Names(shows));
    EXPECT_EQ(slideshow, lib->ItemOf(shows.m_ppExisting[0]->pidl));
    EXPECT_EQ(E_FAIL, shows.LoadExisting(3));
}

TEST_F(AddToPlaylistModelTest, AFailedStepOfTheWalkIsAnUnreachableFolderWhateverTheHostSaid) {
    // a target whose name fails, or comes with another success than S_OK, is left out; a failing
    // Next ends the walk with what came before (a failed bind or listing: under Wine)
    struct Case { Op op; HRESULT status; int nth; HRESULT result; const char* names; };
    for (Case c : {Case{Op::QueryContentRoot, E_NOINTERFACE, 1, E_POINTER, ""},
                   {Op::QueryContentFolder, E_NOINTERFACE, 1, E_POINTER, ""},
                   {Op::ParseName, S_FALSE, 1, E_POINTER, ""}, {Op::ParseName, E_INVALIDARG, 1, E_POINTER, ""},
                   {Op::QueryContentRoot, S_FALSE, 1, E_POINTER, ""},
                   {Op::GetItemName, E_FAIL, 2, S_OK, "Zeta _mix alpha beta "},
                   {Op::GetItemName, S_FALSE, 2, S_OK, "Zeta _mix alpha beta "},
                   {Op::Next, E_FAIL, 3, S_OK, "Alpha beta "}}) {
        M m(M::ModePlaylist, root, nullptr);
        lib->FailOperation(c.op, c.status, c.nth);
        EXPECT_EQ(c.result, m.LoadExisting(M::WhichPlaylists)) << static_cast<int>(c.op);
        EXPECT_EQ(c.result, m.m_hrResult);
        EXPECT_EQ(c.names, Names(m));
        lib->ResetFailures();
    }
    EXPECT_EQ(E_POINTER, M(M::ModePlaylist, nullptr, nullptr).LoadExisting(M::WhichPlaylists));
    lib->SetNextEndsWithLastItem(true);  // the last target may come with S_FALSE
    EXPECT_EQ("Alpha Zeta _mix alpha beta ", Names(*Filled(nullptr)));
}

TEST_F(AddToPlaylistModelTest, FillComboSelectsTheFirstTargetOrAnExactInitialNameElseAsksForANewOne) {
    auto empty = kxhost::InMemoryLibrary::Create();
    IKxContentFolder* emptyRoot = nullptr;
    ASSERT_EQ(S_OK, empty->GetRootFolder(&emptyRoot));
    struct Case { LPCWSTR initial; bool noTargets; const char* state; bool okCloses; const char* handed; };
    for (Case c : {Case{nullptr, false, "0 'Alpha' OK | existing 0", true, "00000000 Alpha -"},
                   {L"", false, "0 'Alpha' OK | existing 0", true, "00000000 Alpha -"},
                   {L"", true, "-1 '' Create(off) | new ''", false, "80004005 - -"},
                   {L"First", true, "-1 'First' Create | new 'First'", true, "00000000 - 'First'"}}) {
        auto m = Filled(c.initial, c.noTargets ? emptyRoot : nullptr);
        EXPECT_EQ(c.state, combo.State(*m)) << c.handed;
        EXPECT_EQ(c.okCloses, m->OnOK(combo)) << c.handed;
        EXPECT_EQ(c.handed, Handed(*m));
    }
    emptyRoot->Release();
    EXPECT_EQ(0, empty->OutstandingReferences());
}

// (Typing, emptying and picking, and an initial name in other case, are driven through the dialog
// under Wine.)
TEST_F(AddToPlaylistModelTest, EditStatesFollowTheComboAndOkTakesTheTargetOutOfTheList) {
    auto m = Filled(nullptr);
    combo.Type(*m, L"");  // neither state: OK disabled, and Return does nothing
    EXPECT_FALSE(m->OnOK(combo));
    combo.Type(*m, L"alpha");  // an existing name typed exactly: existing, without a list selection
    EXPECT_EQ("-1 'alpha' OK | existing 3", combo.State(*m));
    ASSERT_TRUE(m->OnOK(combo));
    EXPECT_EQ(nullptr, m->m_ppExisting[3]);
    EXPECT_EQ("00000000 alpha -", Handed(*m));
    EXPECT_EQ("00000000 - -", Handed(*m));  // handed over once; then success with nothing in it
    EXPECT_EQ(E_FAIL, m->m_hrResult);

    combo.Type(*m, L"Road trip");
    ASSERT_TRUE(m->OnOK(combo));
    kxhost::FailTaskMemAllocations(1);
    EXPECT_EQ("8007000E - -", Handed(*m));
    EXPECT_EQ(E_OUTOFMEMORY, m->m_hrResult);
}

}  // namespace
