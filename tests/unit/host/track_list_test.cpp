// Track lists: positions, identifiers, and the text filter.
#include "tests/unit/host/library_test_support.h"

#include "host/library/text_fold.h"

namespace kxtest {
namespace {

using kxhost::ItemId;
using kxhost::WellKnown;

struct TrackList : LibraryTest {
    // Every identifier the list shows, by MoveTo and GetCurrentId.
    std::vector<ItemId> Shown(IKxTrackList* list) {
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
    Ref<IKxContentFolder> albums;
    ASSERT_EQ(S_OK, lib.GetFolder(lib.Folder(WellKnown::Albums), albums.Out()));
    TaskMem<KxItemIdList> albumId;
    *albumId.Out() = Pidl(sample.albums[2]);
    Ref<IKxContentFolder> album;
    ASSERT_EQ(S_OK, albums->BindToFolder(albumId.p, IID_IKxContentFolder, album.OutVoid()));
    Ref<IKxTrackList> list;
    ASSERT_EQ(S_OK, album->EnumItems(0, KX_ENUM_TRACKS, IID_IKxTrackList, list.OutVoid()));
    EXPECT_EQ(lib.Members(sample.albums[2]), Shown(list.p));
    ASSERT_FALSE(lib.Members(sample.albums[2]).empty());
    for (ItemId t : lib.Members(sample.albums[2]))
        EXPECT_EQ(lib.Value(t, KxPropAlbum)->text, lib.NameOf(sample.albums[2]));
    INT count = 0;
    list->GetCount(&count);
    EXPECT_EQ(E_INVALIDARG, list->MoveTo(-1));
    EXPECT_EQ(E_INVALIDARG, list->MoveTo(count));
    EXPECT_EQ(E_POINTER, list->GetCurrentId(nullptr));
    EXPECT_EQ(E_POINTER, list->GetCount(nullptr));
}

TEST_F(TrackList, FilterMatchesTitleArtistOrAlbumIgnoringCase) {
    Ref<IKxContentFolder> root;
    ASSERT_EQ(S_OK, lib.GetRootFolder(root.Out()));
    TaskMem<KxItemIdList> allId;
    ASSERT_EQ(S_OK, root->ParseName(KxFolderAllTracks, 8, allId.Out()));
    Ref<IKxContentFolder> all;
    ASSERT_EQ(S_OK, root->BindToFolder(allId.p, IID_IKxContentFolder, all.OutVoid()));
    Ref<IKxTrackList> list;
    ASSERT_EQ(S_OK, all->EnumItems(0, KX_ENUM_TRACKS, IID_IKxTrackList, list.OutVoid()));
    Ref<IKxTrackFilter> filter;
    ASSERT_EQ(S_OK, list->QueryInterface(IID_IKxTrackFilter, filter.OutVoid()));
    const std::vector<ItemId> everything = Shown(list.p);
    EXPECT_EQ(sample.tracks, everything);

    // an artist's name in upper case: every track of that artist and nothing else
    const std::wstring artist = lib.NameOf(sample.artists[0]);
    std::wstring upper = artist;
    for (wchar_t& c : upper) c = static_cast<wchar_t>(towupper(c));
    ASSERT_EQ(S_OK, list->Reset());
    ASSERT_EQ(S_OK, filter->SetFilterText(upper.c_str()));
    std::vector<ItemId> expected;
    const std::wstring folded = kxhost::Fold(artist);
    for (ItemId t : sample.tracks) {
        bool hit = false;
        for (const KxPropertyKey* key : {&KxPropTitle, &KxPropArtist, &KxPropAlbum}) {
            auto v = lib.Value(t, *key);
            hit |= v && kxhost::Fold(v->text).find(folded) != std::wstring::npos;
        }
        if (hit) expected.push_back(t);
    }
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(expected, Shown(list.p));

    // accents fold too; a genre is not searched
    ASSERT_EQ(S_OK, filter->SetFilterText(L"\u00c9L\u00c9GIE"));
    EXPECT_EQ(std::vector<ItemId>{sample.trackReadOnlyItem}, Shown(list.p));
    ASSERT_EQ(S_OK, filter->SetFilterText(L"Jazz"));
    for (ItemId t : Shown(list.p)) {
        bool inText = false;
        for (const KxPropertyKey* key : {&KxPropTitle, &KxPropArtist, &KxPropAlbum})
            if (auto v = lib.Value(t, *key)) inText |= kxhost::Fold(v->text).find(L"jazz") != std::wstring::npos;
        EXPECT_TRUE(inText);
    }
    ASSERT_EQ(S_OK, filter->SetFilterText(L"no such text anywhere"));
    INT count = -1;
    EXPECT_EQ(S_OK, list->GetCount(&count));
    EXPECT_EQ(0, count);
    TaskMem<KxItemIdList> none;
    EXPECT_EQ(E_FAIL, list->GetCurrentId(none.Out()));
    // empty text, and Reset, show all again
    ASSERT_EQ(S_OK, filter->SetFilterText(L""));
    EXPECT_EQ(everything, Shown(list.p));
    ASSERT_EQ(S_OK, filter->SetFilterText(L"zzzz"));
    ASSERT_EQ(S_OK, list->Reset());
    EXPECT_EQ(everything.size(), Shown(list.p).size());
    EXPECT_EQ(S_OK, filter->SetFilterText(nullptr));
    EXPECT_EQ(E_NOTIMPL, filter->Reserved1());
}

TEST(TextFold, FoldsTheScriptsOfTheSampleNames) {
    EXPECT_EQ(L"abc xyz 09", kxhost::Fold(L"ABC xYz 09"));
    EXPECT_EQ(L"\u00e9l\u00e9gie \u00e5\u00f8\u00fe", kxhost::Fold(L"\u00c9L\u00c9GIE \u00c5\u00d8\u00de"));
    EXPECT_EQ(L"\u00d7\u00f7", kxhost::Fold(L"\u00d7\u00f7")) << "signs are not letters";
    EXPECT_EQ(L"\u0105\u0142\u017c\u00ff", kxhost::Fold(L"\u0104\u0141\u017b\u0178"));
    EXPECT_EQ(L"\u043c\u0438\u0440 \u0451 \u03c9", kxhost::Fold(L"\u041c\u0418\u0420 \u0401 \u03a9"));
    EXPECT_EQ(L"\u6771\u4eac", kxhost::Fold(L"\u6771\u4eac"));
    EXPECT_TRUE(kxhost::ContainsFolded(L"Caf\u00c9", L"\u00e9"));
    EXPECT_TRUE(kxhost::ContainsFolded(L"anything", L""));
    EXPECT_FALSE(kxhost::ContainsFolded(L"ab", L"abc"));
}

}  // namespace
}  // namespace kxtest
