// The well-known folders and the shape of the tree: names, binding, enumeration end rules.
#include "tests/unit/host/library_test_support.h"

#include "library/pidl.h"

namespace kxtest {
namespace {

using kxhost::ItemId;
using kxhost::WellKnown;

std::vector<std::wstring> NamesOf(const kxhost::InMemoryLibrary& lib, const std::vector<ItemId>& ids) {
    std::vector<std::wstring> names;
    for (ItemId id : ids) names.push_back(lib.NameOf(id));
    return names;
}

struct FolderWalk : LibraryTest {};

TEST_F(FolderWalk, AllSixWellKnownFoldersWalk) {
    Ref<IKxContentFolder> root;
    ASSERT_EQ(S_OK, lib.GetRootFolder(root.Out()));
    const std::pair<LPCWSTR, const std::vector<ItemId>*> expected[] = {
        {KxFolderAlbums, &sample.albums},       {KxFolderArtists, &sample.artists},
        {KxFolderGenres, &sample.genres},       {KxFolderPlaylists, &sample.playlists},
        {KxFolderSlideshows, &sample.slideshows}};
    for (auto [name, ids] : expected) {
        WalkResult walk = WalkWellKnownFolder(root.p, name);
        EXPECT_EQ(S_OK, walk.enumStatus) << name;
        EXPECT_EQ(S_FALSE, walk.status) << name;
        EXPECT_EQ(NamesOf(lib, *ids), walk.names) << name;
    }
    // All tracks holds tracks only: no containers, S_FALSE and still an enumerator
    WalkResult all = WalkWellKnownFolder(root.p, KxFolderAllTracks);
    EXPECT_EQ(S_FALSE, all.enumStatus);
    EXPECT_TRUE(all.names.empty());
}

TEST_F(FolderWalk, LastItemWithSFalseStillCounts) {
    Ref<IKxContentFolder> root;
    ASSERT_EQ(S_OK, lib.GetRootFolder(root.Out()));
    lib.SetNextEndsWithLastItem(true);
    const long nextBefore = lib.Calls(kxhost::Op::Next);
    WalkResult walk = WalkWellKnownFolder(root.p, KxFolderGenres);
    EXPECT_EQ(NamesOf(lib, sample.genres), walk.names);
    // one call per genre: the last one already ended the walk
    EXPECT_EQ(static_cast<long>(sample.genres.size()), lib.Calls(kxhost::Op::Next) - nextBefore);
}

TEST_F(FolderWalk, NextEndRules) {
    Ref<IKxContentFolder> albums;
    ASSERT_EQ(S_OK, lib.GetFolder(lib.Folder(WellKnown::Albums), albums.Out()));
    Ref<IKxItemEnum> items;
    ASSERT_EQ(S_OK, albums->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, items.OutVoid()));
    // several at a time: all fetched gives S_OK, fewer gives S_FALSE
    KxPidl batch[64] = {};
    ULONG fetched = 99;
    ASSERT_LT(sample.albums.size(), 64u);
    EXPECT_EQ(S_OK, items->Next(2, batch, &fetched));
    EXPECT_EQ(2u, fetched);
    EXPECT_EQ(S_FALSE, items->Next(62, batch + 2, &fetched));
    EXPECT_EQ(sample.albums.size() - 2, fetched);
    for (size_t i = 0; i < sample.albums.size(); ++i) {
        EXPECT_EQ(sample.albums[i], lib.ItemOf(batch[i]));
        CoTaskMemFree(batch[i]);
    }
    // at the end: S_FALSE, nothing fetched, the slot nulled
    KxPidl after = reinterpret_cast<KxPidl>(batch);
    EXPECT_EQ(S_FALSE, items->Next(1, &after, &fetched));
    EXPECT_EQ(0u, fetched);
    EXPECT_EQ(nullptr, after);
    // bad arguments
    EXPECT_EQ(E_POINTER, items->Next(1, nullptr, &fetched));
    EXPECT_EQ(E_POINTER, items->Next(2, batch, nullptr));
}

TEST_F(FolderWalk, EmptyFolderGivesAnEnumeratorWithSFalse) {
    auto empty = kxhost::InMemoryLibrary::Create();
    Ref<IKxContentFolder> playlists;
    ASSERT_EQ(S_OK, empty->GetFolder(empty->Folder(WellKnown::Playlists), playlists.Out()));
    Ref<IKxItemEnum> items;
    EXPECT_EQ(S_FALSE, playlists->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, items.OutVoid()));
    ASSERT_TRUE(items);
    KxPidl child = nullptr;
    ULONG fetched = 5;
    EXPECT_EQ(S_FALSE, items->Next(1, &child, &fetched));
    EXPECT_EQ(0u, fetched);
    EXPECT_EQ(nullptr, child);
    Ref<IKxTrackList> tracks;
    EXPECT_EQ(S_FALSE, playlists->EnumItems(0, KX_ENUM_TRACKS, IID_IKxTrackList, tracks.OutVoid()));
    ASSERT_TRUE(tracks);
    INT count = -1;
    EXPECT_EQ(S_OK, tracks->GetCount(&count));
    EXPECT_EQ(0, count);
    items.Reset();
    tracks.Reset();
    playlists.Reset();
    EXPECT_EQ(0, empty->OutstandingReferences());
}

TEST_F(FolderWalk, RootShapeAndIdentifiers) {
    Ref<IKxContentFolder> root;
    ASSERT_EQ(S_OK, lib.GetRootFolder(root.Out()));
    Ref<IKxContentRoot> marker;
    ASSERT_EQ(S_OK, root->QueryInterface(IID_IKxContentRoot, marker.OutVoid()));
    Ref<IKxContentFolder> again;
    ASSERT_EQ(S_OK, marker->QueryInterface(IID_IKxContentFolder, again.OutVoid()));

    TaskMem<KxItemIdList> own;
    ASSERT_EQ(S_OK, again->GetOwnId(own.Out()));
    EXPECT_EQ(lib.Root(), lib.ItemOf(own.p));

    // the Albums child that the root lists is bytewise the identifier that ParseName gives
    TaskMem<KxItemIdList> parsed;
    ASSERT_EQ(S_OK, root->ParseName(KxFolderAlbums, KX_PARSE_WELLKNOWN, parsed.Out()));
    Ref<IKxItemEnum> children;
    ASSERT_EQ(S_OK, root->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, children.OutVoid()));
    bool foundAlbums = false, foundAllTracks = false;
    TaskMem<KxItemIdList> allTracks;
    ASSERT_EQ(S_OK, root->ParseName(KxFolderAllTracks, KX_PARSE_WELLKNOWN, allTracks.Out()));
    for (;;) {
        TaskMem<KxItemIdList> child;
        ULONG fetched = 0;
        HRESULT hr = children->Next(1, child.Out(), &fetched);
        if (fetched) {
            foundAlbums |= KxPidlEqual(child.p, parsed.p);
            foundAllTracks |= KxPidlEqual(child.p, allTracks.p);
        }
        if (hr != S_OK) break;
    }
    EXPECT_TRUE(foundAlbums);
    EXPECT_FALSE(foundAllTracks) << "All tracks is found by name only";
    // and it binds
    Ref<IKxContentFolder> all;
    EXPECT_EQ(S_OK, root->BindToFolder(allTracks.p, IID_IKxContentFolder, all.OutVoid()));
}

TEST_F(FolderWalk, ParseNameTakesTheExactNamesOnTheRootOnly) {
    Ref<IKxContentFolder> root;
    ASSERT_EQ(S_OK, lib.GetRootFolder(root.Out()));
    for (int i = 0; i < kxhost::kWellKnownCount; ++i) {
        TaskMem<KxItemIdList> id;
        ASSERT_EQ(S_OK, root->ParseName(kxhost::WellKnownName(static_cast<WellKnown>(i)), 8, id.Out()));
        EXPECT_EQ(lib.Folder(static_cast<WellKnown>(i)), lib.ItemOf(id.p));
    }
    TaskMem<KxItemIdList> id;
    const HRESULT notFound = HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(notFound, root->ParseName(L"{3D4614C6-8317-4C4F-B50C-10291059EE72}", 8, id.Out()));  // case
    EXPECT_EQ(nullptr, id.p);
    EXPECT_EQ(notFound, root->ParseName(L"{3d4614c6-8317-4c4f-b50c-10291059ee72}", 8, id.Out()));
    EXPECT_EQ(notFound, root->ParseName(L"Albums", 8, id.Out()));
    EXPECT_EQ(E_INVALIDARG, root->ParseName(KxFolderAlbums, 0, id.Out()));
    EXPECT_EQ(E_POINTER, root->ParseName(nullptr, 8, id.Out()));
    EXPECT_EQ(E_POINTER, root->ParseName(KxFolderAlbums, 8, nullptr));
    Ref<IKxContentFolder> albums;
    ASSERT_EQ(S_OK, lib.GetFolder(lib.Folder(WellKnown::Albums), albums.Out()));
    EXPECT_EQ(notFound, albums->ParseName(KxFolderAlbums, 8, id.Out()));
    EXPECT_EQ(nullptr, id.p);
}

TEST_F(FolderWalk, ChildFolderLeadsToTheRoot) {
    Ref<IKxContentFolder> album;
    ASSERT_EQ(S_OK, lib.GetFolder(sample.albums[1], album.Out()));
    Ref<IKxContentRoot> marker;
    ASSERT_EQ(S_OK, album->QueryInterface(IID_IKxContentRoot, marker.OutVoid()));
    Ref<IKxContentFolder> root;
    ASSERT_EQ(S_OK, marker->QueryInterface(IID_IKxContentFolder, root.OutVoid()));
    WalkResult walk = WalkWellKnownFolder(root.p, KxFolderArtists);
    EXPECT_EQ(sample.artists.size(), walk.names.size());
}

TEST_F(FolderWalk, BindToFolderOpensOnlyOwnChildContainers) {
    Ref<IKxContentFolder> albums;
    ASSERT_EQ(S_OK, lib.GetFolder(lib.Folder(WellKnown::Albums), albums.Out()));
    Ref<IKxContentFolder> child;
    TaskMem<KxItemIdList> album, artist, track;
    *album.Out() = Pidl(sample.albums[0]);
    *artist.Out() = Pidl(sample.artists[0]);
    *track.Out() = Pidl(sample.tracks[0]);
    EXPECT_EQ(S_OK, albums->BindToFolder(album.p, IID_IKxContentFolder, child.OutVoid()));
    EXPECT_EQ(E_NOINTERFACE, albums->BindToFolder(album.p, IID_IKxItemEnum, child.OutVoid()));
    EXPECT_EQ(nullptr, child.p);
    EXPECT_EQ(E_INVALIDARG, albums->BindToFolder(artist.p, IID_IKxContentFolder, child.OutVoid()));
    EXPECT_EQ(E_INVALIDARG, albums->BindToFolder(track.p, IID_IKxContentFolder, child.OutVoid()));
    EXPECT_EQ(E_INVALIDARG, albums->BindToFolder(nullptr, IID_IKxContentFolder, child.OutVoid()));
    EXPECT_EQ(E_POINTER, albums->BindToFolder(album.p, IID_IKxContentFolder, nullptr));
    // an identifier of another library is refused, though its bytes look alike
    auto other = kxhost::InMemoryLibrary::Create();
    TaskMem<KxItemIdList> foreign;
    *foreign.Out() = other->NewPidl(sample.albums[0]);
    EXPECT_EQ(0u, lib.ItemOf(foreign.p));
    EXPECT_EQ(E_INVALIDARG, albums->BindToFolder(foreign.p, IID_IKxContentFolder, child.OutVoid()));
}

TEST_F(FolderWalk, AttributesTellWhatOpensFurther) {
    Ref<IKxContentFolder> root;
    ASSERT_EQ(S_OK, lib.GetRootFolder(root.Out()));
    auto attributes = [&](std::vector<ItemId> ids) {
        std::vector<KxPidl> pidls;
        for (ItemId id : ids) pidls.push_back(Pidl(id));
        DWORD word = KX_ATTR_OPENABLE;
        HRESULT hr = root->GetItemAttributes(static_cast<UINT>(pidls.size()),
                                             const_cast<const KxPcPidl*>(pidls.data()), &word);
        for (KxPidl p : pidls) CoTaskMemFree(p);
        return SUCCEEDED(hr) ? word : 0xDEADu;
    };
    EXPECT_EQ(7u, attributes({lib.Folder(WellKnown::Albums)}));
    EXPECT_EQ(7u, attributes({lib.Folder(WellKnown::Playlists)}));
    EXPECT_EQ(3u, attributes({lib.Folder(WellKnown::AllTracks)}));
    EXPECT_EQ(3u, attributes({sample.albums[0]}));
    EXPECT_EQ(0u, attributes({sample.tracks[0]}));
    EXPECT_EQ(3u, attributes({lib.Folder(WellKnown::Genres), sample.genres[0]}));  // what all keep
    DWORD word = 7;
    KxPcPidl none = nullptr;
    EXPECT_EQ(E_INVALIDARG, root->GetItemAttributes(0, &none, &word));
    EXPECT_EQ(E_POINTER, root->GetItemAttributes(1, nullptr, &word));
    EXPECT_EQ(E_INVALIDARG, root->GetItemAttributes(1, &none, &word));
    EXPECT_EQ(E_POINTER, root->GetItemAttributes(1, &none, nullptr));
}

TEST_F(FolderWalk, ReservedSlotsAnswerNotImplemented) {
    Ref<IKxContentFolder> root;
    ASSERT_EQ(S_OK, lib.GetRootFolder(root.Out()));
    EXPECT_EQ(E_NOTIMPL, root->Reserved1());
    EXPECT_EQ(E_NOTIMPL, root->Reserved2());
    EXPECT_EQ(E_NOTIMPL, root->Reserved3());
    Ref<IKxTrackList> tracks;
    ASSERT_EQ(S_OK, root->EnumItems(0, KX_ENUM_TRACKS, IID_IKxTrackList, tracks.OutVoid()));
    EXPECT_EQ(E_NOTIMPL, tracks->Reserved1());
    EXPECT_EQ(E_NOTIMPL, tracks->Reserved9());
    EXPECT_EQ(E_INVALIDARG, root->EnumItems(0, 2, IID_IKxItemEnum, tracks.OutVoid()));
    EXPECT_EQ(E_NOINTERFACE, root->EnumItems(0, KX_ENUM_TRACKS, IID_IKxItemEnum, tracks.OutVoid()));
    EXPECT_EQ(E_INVALIDARG, root->EnumItems(1, KX_ENUM_CONTAINERS, IID_IKxItemEnum, tracks.OutVoid()));
    EXPECT_EQ(E_POINTER, root->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, nullptr));
}

struct LargeLibraryWalk : LibraryTest {
    LargeLibraryWalk() : LibraryTest(kxhost::LargeSampleOptions()) {}
};

TEST_F(LargeLibraryWalk, AllSixFoldersWalk) {
    Ref<IKxContentFolder> root;
    ASSERT_EQ(S_OK, lib.GetRootFolder(root.Out()));
    EXPECT_EQ(5000u, WalkWellKnownFolder(root.p, KxFolderAlbums).names.size());
    EXPECT_EQ(10000u, WalkWellKnownFolder(root.p, KxFolderArtists).names.size());
    EXPECT_EQ(500u, WalkWellKnownFolder(root.p, KxFolderGenres).names.size());
    EXPECT_EQ(sample.playlists.size(), WalkWellKnownFolder(root.p, KxFolderPlaylists).names.size());
    EXPECT_EQ(sample.slideshows.size(), WalkWellKnownFolder(root.p, KxFolderSlideshows).names.size());
    WalkResult all = WalkWellKnownFolder(root.p, KxFolderAllTracks);
    EXPECT_EQ(S_FALSE, all.enumStatus);
    Ref<IKxTrackList> tracks;
    ASSERT_EQ(S_OK, root->EnumItems(0, KX_ENUM_TRACKS, IID_IKxTrackList, tracks.OutVoid()));
    INT count = 0;
    ASSERT_EQ(S_OK, tracks->GetCount(&count));
    EXPECT_EQ(static_cast<INT>(sample.tracks.size()), count);
}

}  // namespace
}  // namespace kxtest
