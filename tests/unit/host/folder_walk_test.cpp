// The well-known folders and the shape of the tree: names, binding, enumeration end rules.
#include "tests/unit/host/library_test_support.h"

#include "library/pidl.h"

namespace kxtest {
namespace {

using kxhost::ItemId;
using kxhost::WellKnown;

struct FolderWalk : LibraryTest {
    std::vector<std::wstring> NamesOf(const std::vector<ItemId>& ids) {
        std::vector<std::wstring> names;
        for (ItemId id : ids) names.push_back(lib.NameOf(id));
        return names;
    }
};

TEST_F(FolderWalk, EveryWellKnownFolderWalks) {
    const std::pair<LPCWSTR, const std::vector<ItemId>*> expected[] = {
        {KxFolderAlbums, &sample.albums},       {KxFolderArtists, &sample.artists},
        {KxFolderGenres, &sample.genres},       {KxFolderPlaylists, &sample.playlists},
        {KxFolderSlideshows, &sample.slideshows}};
    for (auto [name, ids] : expected) {
        WalkResult walk = WalkWellKnownFolder(root.p, name);
        EXPECT_EQ(S_OK, walk.enumStatus) << name;
        EXPECT_EQ(S_FALSE, walk.status) << name;
        EXPECT_EQ(NamesOf(*ids), walk.names) << name;
    }
    // All tracks holds tracks only: no containers, S_FALSE and still an enumerator
    WalkResult all = WalkWellKnownFolder(root.p, KxFolderAllTracks);
    EXPECT_EQ(S_FALSE, all.enumStatus);
    EXPECT_TRUE(all.names.empty());
    // a walk that starts from a child folder's root marker
    Ref<IKxContentFolder> album, again;
    Ref<IKxContentRoot> marker;
    ASSERT_EQ(S_OK, lib.GetFolder(sample.albums[1], album.Out()));
    ASSERT_EQ(S_OK, album->QueryInterface(IID_IKxContentRoot, marker.OutVoid()));
    ASSERT_EQ(S_OK, marker->QueryInterface(IID_IKxContentFolder, again.OutVoid()));
    EXPECT_EQ(NamesOf(sample.artists), WalkWellKnownFolder(again.p, KxFolderArtists).names);
    // the last item may come with S_FALSE: one Next per genre
    lib.SetNextEndsWithLastItem(true);
    const long nextBefore = lib.Calls(kxhost::Op::Next);
    EXPECT_EQ(NamesOf(sample.genres), WalkWellKnownFolder(root.p, KxFolderGenres).names);
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
    EXPECT_EQ(E_POINTER, items->Next(1, nullptr, &fetched));
    EXPECT_EQ(E_POINTER, items->Next(2, batch, nullptr));
}

TEST_F(FolderWalk, EmptyFolderGivesEnumeratorsWithSFalse) {
    auto empty = kxhost::InMemoryLibrary::Create();
    Ref<IKxContentFolder> playlists;
    ASSERT_EQ(S_OK, empty->GetFolder(empty->Folder(WellKnown::Playlists), playlists.Out()));
    Ref<IKxItemEnum> items;
    Ref<IKxTrackList> tracks;
    EXPECT_EQ(S_FALSE, playlists->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, items.OutVoid()));
    EXPECT_EQ(S_FALSE, playlists->EnumItems(0, KX_ENUM_TRACKS, IID_IKxTrackList, tracks.OutVoid()));
    INT count = -1;
    ASSERT_TRUE(items && tracks);
    EXPECT_EQ(S_OK, tracks->GetCount(&count));
    EXPECT_EQ(0, count);
    items.Reset(), tracks.Reset(), playlists.Reset();
    EXPECT_EQ(0, empty->OutstandingReferences());
}

TEST_F(FolderWalk, RootIdentifiersAndParseName) {
    TaskMem<KxItemIdList> own, albums, allTracks, id;
    ASSERT_EQ(S_OK, root->GetOwnId(own.Out()));
    EXPECT_EQ(lib.Root(), lib.ItemOf(own.p));
    // the root lists Albums bytewise as ParseName gives it; All tracks is found by name only, yet binds
    ASSERT_EQ(S_OK, root->ParseName(KxFolderAlbums, KX_PARSE_WELLKNOWN, albums.Out()));
    ASSERT_EQ(S_OK, root->ParseName(KxFolderAllTracks, KX_PARSE_WELLKNOWN, allTracks.Out()));
    Ref<IKxItemEnum> children;
    ASSERT_EQ(S_OK, root->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, children.OutVoid()));
    bool foundAlbums = false, foundAllTracks = false;
    for (HRESULT hr = S_OK; hr == S_OK;) {
        TaskMem<KxItemIdList> child;
        ULONG fetched = 0;
        hr = children->Next(1, child.Out(), &fetched);
        foundAlbums |= fetched && KxPidlEqual(child.p, albums.p);
        foundAllTracks |= fetched && KxPidlEqual(child.p, allTracks.p);
    }
    EXPECT_TRUE(foundAlbums);
    EXPECT_FALSE(foundAllTracks);
    Ref<IKxContentFolder> all;
    EXPECT_EQ(S_OK, root->BindToFolder(allTracks.p, IID_IKxContentFolder, all.OutVoid()));
    // exact names, on the root only
    const HRESULT notFound = HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
    for (LPCWSTR name : {L"{3D4614C6-8317-4C4F-B50C-10291059EE72}", L"{3d4614c6-8317-4c4f-b50c-10291059ee72}",
                         L"Albums"}) {
        EXPECT_EQ(notFound, root->ParseName(name, 8, id.Out())) << name;
        EXPECT_EQ(nullptr, id.p);
    }
    EXPECT_EQ(E_INVALIDARG, root->ParseName(KxFolderAlbums, 0, id.Out()));
    EXPECT_EQ(E_POINTER, root->ParseName(nullptr, 8, id.Out()));
    EXPECT_EQ(E_POINTER, root->ParseName(KxFolderAlbums, 8, nullptr));
    ASSERT_EQ(S_OK, lib.GetFolder(lib.Folder(WellKnown::Albums), all.Out()));
    EXPECT_EQ(notFound, all->ParseName(KxFolderAlbums, 8, id.Out()));
}

TEST_F(FolderWalk, BindToFolderOpensOnlyOwnChildContainers) {
    Ref<IKxContentFolder> albums, child;
    ASSERT_EQ(S_OK, lib.GetFolder(lib.Folder(WellKnown::Albums), albums.Out()));
    auto other = kxhost::InMemoryLibrary::Create();
    TaskMem<KxItemIdList> album(Pidl(sample.albums[0])), artist(Pidl(sample.artists[0])),
        track(Pidl(sample.tracks[0])),
        foreign(other->NewPidl(sample.albums[0]));  // another library's, though the bytes look alike
    EXPECT_EQ(S_OK, albums->BindToFolder(album.p, IID_IKxContentFolder, child.OutVoid()));
    EXPECT_EQ(E_NOINTERFACE, albums->BindToFolder(album.p, IID_IKxItemEnum, child.OutVoid()));
    EXPECT_EQ(nullptr, child.p);
    for (KxPcPidl refused : {KxPcPidl(artist.p), KxPcPidl(track.p), KxPcPidl(nullptr), KxPcPidl(foreign.p)})
        EXPECT_EQ(E_INVALIDARG, albums->BindToFolder(refused, IID_IKxContentFolder, child.OutVoid()));
    EXPECT_EQ(E_POINTER, albums->BindToFolder(album.p, IID_IKxContentFolder, nullptr));
}

TEST_F(FolderWalk, AttributesTellWhatOpensFurther) {
    auto attributes = [&](std::vector<ItemId> ids) {
        std::vector<KxPidl> pidls;
        for (ItemId id : ids) pidls.push_back(Pidl(id));
        DWORD word = KX_ATTR_OPENABLE;
        HRESULT hr = root->GetItemAttributes(static_cast<UINT>(pidls.size()),
                                             const_cast<const KxPcPidl*>(pidls.data()), &word);
        for (KxPidl p : pidls) CoTaskMemFree(p);
        return SUCCEEDED(hr) ? word : 0xDEADu;
    };
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

TEST_F(FolderWalk, EnumItemsArgumentsAndReservedSlots) {
    EXPECT_EQ(E_NOTIMPL, root->Reserved2());
    Ref<IKxTrackList> tracks;
    ASSERT_EQ(S_OK, root->EnumItems(0, KX_ENUM_TRACKS, IID_IKxTrackList, tracks.OutVoid()));
    EXPECT_EQ(E_NOTIMPL, tracks->Reserved9());
    EXPECT_EQ(E_INVALIDARG, root->EnumItems(0, 2, IID_IKxItemEnum, tracks.OutVoid()));
    EXPECT_EQ(E_NOINTERFACE, root->EnumItems(0, KX_ENUM_TRACKS, IID_IKxItemEnum, tracks.OutVoid()));
    EXPECT_EQ(E_INVALIDARG, root->EnumItems(1, KX_ENUM_CONTAINERS, IID_IKxItemEnum, tracks.OutVoid()));
    EXPECT_EQ(E_POINTER, root->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, nullptr));
}

struct LargeLibraryWalk : LibraryTest {
    LargeLibraryWalk() : LibraryTest(kxhost::LargeSampleOptions()) {}
};

TEST_F(LargeLibraryWalk, EveryFolderWalksToTheEnd) {
    EXPECT_EQ(5000u, WalkWellKnownFolder(root.p, KxFolderAlbums).names.size());
    EXPECT_EQ(10000u, WalkWellKnownFolder(root.p, KxFolderArtists).names.size());
    EXPECT_EQ(500u, WalkWellKnownFolder(root.p, KxFolderGenres).names.size());
    Ref<IKxTrackList> tracks;
    ASSERT_EQ(S_OK, root->EnumItems(0, KX_ENUM_TRACKS, IID_IKxTrackList, tracks.OutVoid()));
    INT count = 0;
    ASSERT_EQ(S_OK, tracks->GetCount(&count));
    EXPECT_EQ(100000, count);
}

}  // namespace
}  // namespace kxtest
