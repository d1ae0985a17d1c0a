// Track lists: positions, identifiers, and the text filter.
#include "tests/unit/host/library_test_support.h"

#include "host/library/text_fold.h"

#include <algorithm>

namespace kxtest {
namespace {

using kxhost::ItemId;
using kxhost::WellKnown;

struct TrackList : LibraryTest {
    Ref<IKxTrackList> list;
    void Open(ItemId folder) {
        Ref<IKxContentFolder> f;
        ASSERT_EQ(S_OK, lib.GetFolder(folder, f.Out()));
        ASSERT_EQ(S_OK, f->EnumItems(0, KX_ENUM_TRACKS, IID_IKxTrackList, list.OutVoid()));
    }
    void TearDown() override {
        list.Reset();
        LibraryTest::TearDown();
    }
    // Every identifier the list shows, by MoveTo and GetCurrentId.
    std::vector<ItemId> Shown() {
        std::vector<ItemId> ids;
        INT count = 0;
        EXPECT_EQ(S_OK, list->GetCount(&count));
        for (INT i = 0; i < count; ++i) {
            EXPECT_EQ(S_OK, list->MoveTo(i));
            TaskMem<KxItemIdList> id;
            EXPECT_EQ(S_OK, list->GetCurrentId(id.Out()));
            ids.push_back(lib.ItemOf(id.p));
        }
        return ids;
    }
};

TEST_F(TrackList, AnAlbumListsItsTracksInOrder) {
    Open(sample.albums[2]);
    ASSERT_FALSE(lib.Members(sample.albums[2]).empty());
    EXPECT_EQ(lib.Members(sample.albums[2]), Shown());
    INT count = 0;
    list->GetCount(&count);
    EXPECT_EQ(E_INVALIDARG, list->MoveTo(-1));
    EXPECT_EQ(E_INVALIDARG, list->MoveTo(count));
    EXPECT_EQ(E_POINTER, list->GetCurrentId(nullptr));
    EXPECT_EQ(E_POINTER, list->GetCount(nullptr));
}

TEST_F(TrackList, FilterMatchesTitleArtistOrAlbumIgnoringCase) {
    Open(lib.Folder(WellKnown::AllTracks));
    Ref<IKxTrackFilter> filter;
    ASSERT_EQ(S_OK, list->QueryInterface(IID_IKxTrackFilter, filter.OutVoid()));
    EXPECT_EQ(sample.tracks, Shown());
    // an artist's name in upper case keeps all that artist's tracks, not everything
    std::wstring upper = lib.NameOf(sample.artists[0]);
    for (wchar_t& c : upper) c = static_cast<wchar_t>(towupper(c));
    ASSERT_EQ(S_OK, filter->SetFilterText(upper.c_str()));
    const std::vector<ItemId> shown = Shown();
    EXPECT_LT(shown.size(), sample.tracks.size());
    for (ItemId t : lib.Members(sample.artists[0]))
        EXPECT_NE(shown.end(), std::find(shown.begin(), shown.end(), t)) << t;
    // accents fold too; a genre is not searched
    ASSERT_EQ(S_OK, filter->SetFilterText(L"\u00c9L\u00c9GIE"));
    EXPECT_EQ(std::vector<ItemId>{sample.trackReadOnlyItem}, Shown());
    ASSERT_EQ(S_OK, filter->SetFilterText(lib.NameOf(sample.genres[0]).c_str()));
    EXPECT_LT(Shown().size(), lib.Members(sample.genres[0]).size());
    ASSERT_EQ(S_OK, filter->SetFilterText(L"no such text anywhere"));
    EXPECT_TRUE(Shown().empty());
    TaskMem<KxItemIdList> none;
    EXPECT_EQ(E_FAIL, list->GetCurrentId(none.Out()));
    // empty text, and Reset, show all again
    ASSERT_EQ(S_OK, filter->SetFilterText(L""));
    EXPECT_EQ(sample.tracks, Shown());
    ASSERT_EQ(S_OK, filter->SetFilterText(L"zzzz"));
    ASSERT_EQ(S_OK, list->Reset());
    EXPECT_EQ(sample.tracks, Shown());
    EXPECT_EQ(S_OK, filter->SetFilterText(nullptr));
}

TEST(TextFold, FoldsTheScriptsOfTheSampleNames) {
    const std::pair<LPCWSTR, LPCWSTR> cases[] = {
        {L"ABC xYz 09", L"abc xyz 09"},
        {L"\u00c9L\u00c9GIE \u00c5\u00d8\u00de", L"\u00e9l\u00e9gie \u00e5\u00f8\u00fe"},
        {L"\u00d7\u00f7", L"\u00d7\u00f7"},  // signs are not letters
        {L"\u0104\u0141\u017b\u0178", L"\u0105\u0142\u017c\u00ff"},
        {L"\u041c\u0418\u0420 \u0401 \u03a9", L"\u043c\u0438\u0440 \u0451 \u03c9"},
        {L"\u6771\u4eac", L"\u6771\u4eac"}};
    for (auto [in, out] : cases) EXPECT_EQ(out, kxhost::Fold(in));
    EXPECT_TRUE(kxhost::ContainsFolded(L"Caf\u00c9", L"\u00e9"));
    EXPECT_TRUE(kxhost::ContainsFolded(L"anything", L""));
    EXPECT_FALSE(kxhost::ContainsFolded(L"ab", L"abc"));
}

}  // namespace
}  // namespace kxtest
