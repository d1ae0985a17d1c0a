// The add-music logic against the in-memory library: the bar's walk, rows fetched only when drawn,
// the search, choosing, removing and moving, and the identifiers handed back in the order shown.
#include "library/add_musics_model.h"

#include "tests/unit/controls/crumb_buttons_fake.h"
#include "host/library/in_memory_library.h"
#include "host/library/sample_library.h"
#include "host/library/taskmem_audit.h"
#include "library/drag_insert_position.h"
#include "library/pidl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

using kxhost::ItemId;
using kxhost::Op;
typedef CAddMusicsModel M;

// The bar: the real row over buttons in memory.
struct FakeBar : IAddMusicsBar {
    FakeCrumbButtons buttons;
    CKxCrumbRow row{buttons};
    int GetButtonCount() override { return buttons.ButtonCount(); }
    int CommandToIndex(UINT command) override { return buttons.CommandToIndex(command); }
    void* GetButtonData(int i) override { return i >= 0 && i < GetButtonCount() ? buttons.buttons[i].data : nullptr; }
    void SetButtonData(int i, void* d) override {
        if (i >= 0 && i < GetButtonCount()) buttons.buttons[i].data = d;
    }
    bool SetCrumbs(int first, LPCWSTR path, bool dropDown) override { return row.SetCrumbs(first, path, dropDown); }
};

struct FakeControls : IAddMusicsControls {
    M* model = nullptr;
    std::wstring search;
    int trackCount = -1, chosenCount = -1, visible = -1;
    std::vector<int> selectedTracks, selectedChosen;
    HWND OwnerWindow() override { return nullptr; }
    // The edit control tells its parent of every change, also of one made by the program.
    void SetSearchText(LPCWSTR t) override {
        search = t;
        if (model) model->OnSearchUpdate(search);
    }
    void SetTrackCount(int n) override { trackCount = n; }
    void SetChosenCount(int n) override { chosenCount = n; }
    std::vector<int> SelectedTracks() override { return selectedTracks; }
    std::vector<int> SelectedChosen() override { return selectedChosen; }
    void SelectChosenRows(int first, int count) override {
        selectedChosen.clear();
        for (int i = 0; i < count; ++i) selectedChosen.push_back(first + i);
    }
    void EnsureChosenVisible(int row) override { visible = row; }
};

class AddMusicsModelTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(kxhost::StartTaskMemAudit());
        blocksBefore = kxhost::LiveTaskMemBlocks();
        sample = kxhost::BuildSampleLibrary(kxhost::DefaultSampleOptions());
        lib = sample.library.get();
        ASSERT_EQ(S_OK, lib->GetRootFolder(&root));
        ASSERT_EQ(S_OK, lib->CreateSite(&site));
    }
    void TearDown() override {
        model.reset();
        if (given) given->Release();
        site->Release();
        root->Release();
        kxhost::ResetTaskMemFailures();
        EXPECT_EQ(0, lib->OutstandingReferences()) << lib->DescribeLiveObjects();
        sample = {};
        EXPECT_EQ(blocksBefore, kxhost::LiveTaskMemBlocks()) << "CoTaskMem blocks left behind";
    }
    // Opens the model as the dialog does: the bar emptied and reset, the callback set.
    void Open(IKxTrackList* givenList = nullptr) {
        model = std::make_unique<M>(0, site, root, givenList, L"Music");
        controls.model = model.get();
        model->Attach(&bar, &controls);
        ASSERT_EQ(S_OK, model->Open());
        bar.row.ClearCrumbs();
        bar.row.m_pfnTruncate = &M::OnCrumbTruncate;
        bar.row.m_pTruncateOwner = model.get();
        bar.row.ResetCrumbs();
        ASSERT_EQ(S_OK, model->InitBreadCrumb());
    }
    // Opens the drop-down of crumb `index` and picks the entry named `name`.
    void Pick(int index, const std::wstring& name) {
        for (const CAddMusicsMenuEntry& e : model->OnDropDown(index))
            if (e.text == name) return model->OnMenuEntry(e.data, index);
        ADD_FAILURE() << "no entry " << std::string(name.begin(), name.end());
    }
    // The identifiers handed back, as the library's items, after OK.
    std::vector<ItemId> HandBack() {
        model->PrepareHandOver();
        INT count = -1;
        KxPidl* items = nullptr;
        EXPECT_EQ(S_OK, model->HandOverChosen(&count, &items));
        std::vector<ItemId> ids;
        for (INT i = 0; i < count; ++i) ids.push_back(lib->ItemOf(items[i])), KxPidlFree(items[i]);
        CoTaskMemFree(items);
        return ids;
    }
    ItemId TrackAt(int row) { return lib->ItemOf(model->TrackRow(row)->m_pidl); }

    long blocksBefore = 0;
    kxhost::SampleLibrary sample;
    kxhost::InMemoryLibrary* lib = nullptr;
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;
    IKxTrackList* given = nullptr;
    FakeBar bar;
    FakeControls controls;
    std::unique_ptr<M> model;
};

TEST_F(AddMusicsModelTest, OpensOnAlbumsAndFetchesOnlyDrawnRowsOnce) {
    Open();
    EXPECT_EQ("5000| 5001:Music 5002:Albums", bar.buttons.Row());
    EXPECT_EQ(2, model->m_nCurrentCrumb);
    EXPECT_EQ(lib->Members(lib->Folder(kxhost::WellKnown::Albums)).size(), size_t(model->TrackCount()));
    EXPECT_EQ(0, lib->Calls(Op::GetItemObject));
    const ItemId track = lib->Members(lib->Folder(kxhost::WellKnown::Albums))[5];
    for (int pass = 0; pass < 2; ++pass) {
        const CLSTTracksInfo* r = model->TrackRow(5);
        ASSERT_TRUE(r);
        EXPECT_EQ(track, lib->ItemOf(r->m_pidl));
        EXPECT_EQ(lib->Value(track, KxPropTitle)->text, M::CellText(r, 1));
    }
    EXPECT_EQ(1, lib->Calls(Op::GetItemObject)) << "a row is read once";
    EXPECT_FALSE(model->TrackRow(model->TrackCount()));
}

TEST_F(AddMusicsModelTest, WalksTheBarByItsDropDownsAndClicks) {
    Open();
    const ItemId album = sample.albums[1];
    Pick(2, lib->NameOf(album));
    EXPECT_EQ(3 + 1, bar.GetButtonCount());
    EXPECT_EQ(lib->Members(album).size(), size_t(controls.trackCount));
    const long listed = lib->Calls(Op::EnumItems);
    Pick(2, lib->NameOf(album));  // already the next crumb: nothing changes
    EXPECT_EQ(listed, lib->Calls(Op::EnumItems));
    EXPECT_EQ(-1, model->m_nDropCrumb);

    // A name with a backslash makes two crumbs; the last has no record, so no tracks show.
    Pick(2, L"Live \\ Unplugged");
    EXPECT_EQ("5000| 5001:Music 5002:Albums 5003:Live  5004: Unplugged~", bar.buttons.Row());
    EXPECT_EQ(E_POINTER, model->ShowFolderTracks());
    EXPECT_EQ(0, model->TrackCount());

    bar.row.ClickCrumb(5002);
    model->OnCrumbCommand(5002);
    EXPECT_EQ(3, bar.GetButtonCount());
    EXPECT_EQ(lib->Members(lib->Folder(kxhost::WellKnown::Albums)).size(), size_t(controls.trackCount));

    std::vector<CAddMusicsMenuEntry> start = model->OnDropDown(0);
    ASSERT_EQ(1u, start.size());
    EXPECT_EQ(M::kRootEntryCommand, start[0].command);
    EXPECT_TRUE(model->OnDropDown(3).empty());
    EXPECT_EQ(-1, model->m_nDropCrumb);
}

TEST_F(AddMusicsModelTest, EntriesPastTheLastCommandOfAFolderWithManyChildren) {
    for (int i = 0; i < 1003; ++i) lib->AddContainer(kxhost::ItemKind::Genre, L"G" + std::to_wstring(i));
    Open();
    Pick(1, lib->NameOf(lib->Folder(kxhost::WellKnown::Genres)));
    std::vector<CAddMusicsMenuEntry> entries = model->OnDropDown(2);
    ASSERT_GT(entries.size(), 1001u);
    EXPECT_EQ(M::kLastEntryCommand, entries[1000].command);
    EXPECT_GT(entries.back().command, M::kLastEntryCommand);
}

TEST_F(AddMusicsModelTest, SearchJumpsToAllTracksAndClearingStaysThere) {
    Open();
    Pick(2, lib->NameOf(sample.albums[0]));
    controls.SetSearchText(L"a");
    ASSERT_TRUE(model->IsAtAllTracks());
    EXPECT_EQ(3, bar.GetButtonCount());
    const int filtered = model->TrackCount();
    EXPECT_GT(filtered, 0);
    EXPECT_LT(size_t(filtered), lib->Members(lib->Folder(kxhost::WellKnown::AllTracks)).size());
    bool listed = false;  // All tracks is now one of the root's children
    for (const auto& e : model->OnDropDown(1)) listed |= e.data->m_pidl && KxPidlEqual(e.data->m_pidl, model->m_pidlAllTracks.Get());
    EXPECT_TRUE(listed);

    controls.SetSearchText(L"");
    EXPECT_TRUE(model->IsAtAllTracks());
    EXPECT_EQ(lib->Members(lib->Folder(kxhost::WellKnown::AllTracks)).size(), size_t(model->TrackCount()));
    Pick(1, lib->NameOf(lib->Folder(kxhost::WellKnown::Albums)));
    const int albums = model->TrackCount();
    controls.SetSearchText(L"");  // clearing elsewhere does nothing
    EXPECT_EQ(albums, model->TrackCount());
}

TEST_F(AddMusicsModelTest, ChosenTracksComeBackExactlyAsShown) {
    const ItemId playlist = sample.playlists[0];
    ASSERT_EQ(S_OK, lib->CreateTrackList(playlist, &given));
    const std::vector<ItemId> g = lib->Members(playlist);
    ASSERT_GE(g.size(), 3u);
    Open(given);
    ASSERT_EQ(int(g.size()), model->ChosenCount());
    EXPECT_EQ(0, lib->Calls(Op::GetItemObject));

    // Add rows 0 and 2 (drawn) and 1 (never drawn, passed over), then row 0 again by double click.
    model->TrackRow(0), model->TrackRow(2);
    controls.selectedTracks = {0, 1, 2};
    model->AddSelectedTracks();
    model->AddTrack(0);
    const int n = int(g.size());
    EXPECT_EQ(n + 3, controls.chosenCount);
    EXPECT_EQ((std::vector<int>{n + 2}), controls.selectedChosen);

    // Undrawn given rows are removed and moved: each null slot stays tied to its own track.
    controls.selectedChosen = {0};
    model->RemoveChosenTracks();
    controls.selectedChosen = {0, n - 1};  // g[1] (never drawn) and the first added track, to the end
    EXPECT_EQ(-1, model->MoveChosenTracks(model->ChosenCount() + 1));
    EXPECT_EQ(model->ChosenCount() - 2, model->MoveChosenTracks(model->ChosenCount()));
    std::vector<ItemId> expected(g.begin() + 2, g.end());
    expected.push_back(TrackAt(2));
    expected.push_back(TrackAt(0));
    expected.push_back(g[1]);
    expected.push_back(TrackAt(0));
    EXPECT_EQ(expected, HandBack());
}

TEST_F(AddMusicsModelTest, HandBackEdges) {
    Open();
    EXPECT_EQ(std::vector<ItemId>{}, HandBack());
    INT count = -1;
    KxPidl* items = reinterpret_cast<KxPidl*>(this);
    EXPECT_EQ(S_OK, model->HandOverChosen(&count, &items));
    EXPECT_EQ(0, count);
    EXPECT_EQ(nullptr, items);
    EXPECT_EQ(E_INVALIDARG, model->HandOverChosen(nullptr, &items));

    model->TrackRow(0);
    model->AddTrack(0);
    kxhost::FailTaskMemAllocations(1);
    EXPECT_EQ(E_OUTOFMEMORY, model->HandOverChosen(&count, &items));
    EXPECT_EQ(nullptr, items);
    model->ClearChosen();
    EXPECT_EQ(std::vector<ItemId>{}, HandBack());
}

TEST_F(AddMusicsModelTest, UndrawnGivenTracksAreHandedBackWithoutReadingThem) {
    ASSERT_EQ(S_OK, lib->CreateTrackList(sample.playlists[1], &given));
    Open(given);
    const long reads = lib->Calls(Op::GetItemObject);
    EXPECT_EQ(lib->Members(sample.playlists[1]), HandBack());
    EXPECT_EQ(reads, lib->Calls(Op::GetItemObject));
}

TEST_F(AddMusicsModelTest, StartFailures) {
    model = std::make_unique<M>(0, nullptr, root, nullptr, nullptr);
    EXPECT_EQ(E_INVALIDARG, model->Open());
    lib->FailOperation(Op::GetOwnId, E_ACCESSDENIED);
    model = std::make_unique<M>(0, site, root, nullptr, nullptr);
    EXPECT_EQ(E_ACCESSDENIED, model->Open());
    lib->FailOperation(Op::ParseName, E_FAIL);
    model = std::make_unique<M>(0, site, root, nullptr, nullptr);
    model->Attach(&bar, &controls);
    ASSERT_EQ(S_OK, model->Open());
    bar.row.ResetCrumbs();
    EXPECT_EQ(E_FAIL, model->InitBreadCrumb());
    EXPECT_EQ(E_FAIL, model->m_hrResult);
}

TEST_F(AddMusicsModelTest, AFolderOfManyTracksCostsOnlyTheRowsDrawn) {
    const ItemId album = lib->AddContainer(kxhost::ItemKind::Album, L"Big");
    for (int i = 0; i < 100000; ++i) lib->AddMember(album, lib->AddItem(kxhost::ItemKind::Track, L"t"));
    Open();
    Pick(2, L"Big");
    ASSERT_EQ(100000, controls.trackCount);
    const long reads = lib->Calls(Op::GetItemObject), moves = lib->Calls(Op::TrackMoveTo);
    EXPECT_EQ(0, reads) << "opening a folder reads no row";
    for (int row = 99990; row < 100000; ++row) model->TrackRow(row);  // scrolled to the end
    EXPECT_EQ(10, lib->Calls(Op::GetItemObject) - reads);
    EXPECT_EQ(10, lib->Calls(Op::TrackMoveTo) - moves);
}

TEST(TrackText, NumbersAndDurations) {
    struct Case {
        UINT value;
        LPCWSTR number, duration;
    } cases[] = {{0, L"00", L"0:00"},    {7, L"07", L"0:07"},       {59, L"59", L"0:59"},
                 {99, L"99", L"1:39"},   {100, L"100", L"1:40"},    {3599, L"3599", L"59:59"},
                 {3600, L"3600", L"1:00:00"}, {3700, L"3700", L"1:01:40"}, {0xFFFFFFFFu, L"4294967295", L"1193046:28:15"}};
    for (const Case& c : cases) {
        EXPECT_EQ(c.number, FormatTrackNumber(c.value)) << c.value;
        EXPECT_EQ(c.duration, FormatDuration(c.value)) << c.value;
    }
}

// Rows 20 pixels high from y 0, the client's top at 0.
struct Rows : IKxRowGeometry {
    int count;
    explicit Rows(int n) : count(n) {}
    int HitRow(POINT p) override { return p.y >= 0 && p.y < 20 * count ? p.y / 20 : -1; }
    bool RowBounds(int row, RECT* r) override {
        if (row < 0 || row >= count) return false;
        *r = {0, 20 * row, 100, 20 * row + 20};
        return true;
    }
    RECT ClientRect() override { return {0, 0, 100, 300}; }
    int RowCount() override { return count; }
};

TEST(InsertPosition, HalvesOfRowsAndEmptySpace) {
    struct Case {
        int rows;
        LONG y;
        int position;
    } cases[] = {{3, 0, 0},   {3, 10, 0},   {3, 11, 1},  {3, 59, 3}, {3, 45, 2},
                 {3, 200, 3}, {3, -15, 0},  {3, -25, 3}, {0, 100, 0}};
    for (const Case& c : cases) {
        Rows rows(c.rows);
        EXPECT_EQ(c.position, KxInsertPosition(rows, POINT{5, c.y})) << c.rows << " rows, y " << c.y;
    }
}

}  // namespace
