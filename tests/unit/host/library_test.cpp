// The library's objects as dialogs use them: the reference audit, failure injection, the tree
// walk with its well-known names, the track filter, and the sample library's shape. (The sample
// pictures' decoding is checked under Wine, with the platform's imaging.)
#include "tests/unit/host/library_test_support.h"

#include <algorithm>
#include <functional>

namespace kxtest {
namespace {

using kxhost::ItemId;
using kxhost::Op;
using kxhost::WellKnown;

TEST(LibraryAudit, ForgottenReleasesAreSeen) {
    auto lib = kxhost::InMemoryLibrary::Create();
    IKxContentFolder* root = nullptr;
    IKxItemEnum* children = nullptr;
    IKxContentRoot* marker = nullptr;
    ASSERT_EQ(S_OK, lib->GetRootFolder(&root));
    ASSERT_EQ(S_OK, root->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, reinterpret_cast<void**>(&children)));
    ASSERT_EQ(S_OK, root->QueryInterface(IID_IKxContentRoot, reinterpret_cast<void**>(&marker)));
    EXPECT_EQ(2, lib->LiveObjects());
    EXPECT_EQ(3, lib->OutstandingReferences());
    marker->Release();
    root->Release();
    // the enumerator is "forgotten"
    EXPECT_EQ(1, lib->LiveObjects());
    EXPECT_EQ(1, lib->OutstandingReferences());
    EXPECT_NE(std::string::npos, lib->DescribeLiveObjects().find("item enumerator"));
    children->Release();
    EXPECT_EQ(0, lib->LiveObjects());
    EXPECT_TRUE(lib->DescribeLiveObjects().empty());
}

struct Injection : LibraryTest {};

TEST_F(Injection, TheNthCallFailsOnceForSomeOrFromThenOn) {
    auto parse = [&] {
        KxPidl id = reinterpret_cast<KxPidl>(this);
        HRESULT hr = root->ParseName(KxFolderGenres, KX_PARSE_WELLKNOWN, &id);
        EXPECT_TRUE(SUCCEEDED(hr) || !id) << "out pointer nulled on failure";
        if (SUCCEEDED(hr)) CoTaskMemFree(id);
        return hr;
    };
    // nth, count, then the calls: 'x' fails, '.' succeeds; after ResetFailures all succeed
    const struct {
        int nth, count;
        const char* calls;
    } cases[] = {{2, 1, ".x.."}, {1, -1, "xxxx"}, {2, -1, ".xxx"}, {1, 2, "xx.."}, {1, 0, "...."}};
    long calls = 0;
    for (const auto& c : cases) {
        lib.FailOperation(Op::ParseName, E_ACCESSDENIED, c.nth, c.count);
        for (const char* s = c.calls; *s; ++s, ++calls)
            EXPECT_EQ(*s == 'x' ? E_ACCESSDENIED : S_OK, parse()) << c.calls << " call " << s - c.calls;
        lib.ResetFailures();
        EXPECT_EQ(S_OK, parse()) << c.calls;
        ++calls;
    }
    EXPECT_EQ(calls, lib.Calls(Op::ParseName)) << "failed calls count too";
}

// What a host may do within the contract: an injected failure still hands out the interface, an
// injected S_FALSE reaches the caller with what the call made, and names come only from the folder
// that lists the item.
TEST_F(Injection, FailuresStillHandOutObjectsOtherSuccessesPassAndNamesComeFromTheParent) {
    Ref<IKxContentFolder> playlists, albums;
    ASSERT_EQ(S_OK, lib.GetFolder(lib.Folder(WellKnown::Playlists), playlists.Out()));
    ASSERT_EQ(S_OK, lib.GetFolder(lib.Folder(WellKnown::Albums), albums.Out()));
    TaskMem<KxItemIdList> playlist(lib.NewPidl(sample.playlists[0])), track(lib.NewPidl(sample.tracks[0]));
    const KxPcPidl items[] = {track.p};
    const IID& kRoot = IID_IKxContentRoot;
    const struct {
        Op op;
        HRESULT injected;
        std::function<HRESULT(void**)> call;
    } rows[] = {
        {Op::EnumItems, E_FAIL,
         [&](void** out) { return albums->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, out); }},
        {Op::GetItemObject, E_FAIL,
         [&](void** out) { return albums->GetItemObject(nullptr, nullptr, 1, items, IID_IKxItemProperties, out); }},
        {Op::BindToFolder, E_FAIL,
         [&](void** out) { return playlists->BindToFolder(playlist.p, IID_IKxContentFolder, out); }},
        {Op::QueryContentRoot, E_NOINTERFACE, [&](void** out) { return playlists->QueryInterface(kRoot, out); }},
        {Op::QueryContentRoot, S_FALSE, [&](void** out) { return playlists->QueryInterface(kRoot, out); }},
    };
    for (const auto& row : rows) {
        for (bool handOut : {true, false}) {
            lib.SetFailuresHandOut(handOut);
            lib.FailOperation(row.op, row.injected);
            Ref<IUnknown> object;
            EXPECT_EQ(row.injected, row.call(object.OutVoid())) << OpName(row.op);
            EXPECT_EQ(handOut || SUCCEEDED(row.injected), static_cast<bool>(object)) << OpName(row.op);
        }
    }
    lib.SetFailuresHandOut(true);

    TaskMem<WCHAR> name;
    lib.FailOperation(Op::GetItemName, S_FALSE);
    EXPECT_EQ(S_FALSE, playlists->GetItemName(playlist.p, KX_NAME_NORMAL, name.Out()));
    EXPECT_EQ(lib.NameOf(sample.playlists[0]), std::wstring(name.p));
    lib.FailOperation(Op::GetItemName, E_FAIL);
    EXPECT_EQ(E_FAIL, playlists->GetItemName(playlist.p, KX_NAME_NORMAL, name.Out()));
    EXPECT_EQ(nullptr, name.p) << "a name is no object: a failure hands out none";
    // a playlist is named by its folder only; a track by the folders that list it
    EXPECT_EQ(E_INVALIDARG, root->GetItemName(playlist.p, KX_NAME_NORMAL, name.Out()));
    EXPECT_EQ(E_INVALIDARG, playlists->GetItemName(track.p, KX_NAME_NORMAL, name.Out()));
    EXPECT_EQ(S_OK, albums->GetItemName(track.p, KX_NAME_NORMAL, name.Out()));
    EXPECT_EQ(S_OK, root->GetItemName(track.p, KX_NAME_NORMAL, name.Out()));
}

struct FolderWalk : LibraryTest {
    std::vector<std::wstring> NamesOf(const std::vector<ItemId>& ids) {
        std::vector<std::wstring> names;
        for (ItemId id : ids) names.push_back(lib.NameOf(id));
        return names;
    }
};

TEST_F(FolderWalk, TheSixNamesResolveOnTheRootAndTheirFoldersWalk) {
    const std::vector<ItemId> none;
    const struct {
        LPCWSTR name;
        WellKnown folder;
        const std::vector<ItemId>& children;
    } cases[] = {{KxFolderAlbums, WellKnown::Albums, sample.albums},
                 {KxFolderArtists, WellKnown::Artists, sample.artists},
                 {KxFolderGenres, WellKnown::Genres, sample.genres},
                 {KxFolderPlaylists, WellKnown::Playlists, sample.playlists},
                 {KxFolderSlideshows, WellKnown::Slideshows, sample.slideshows},
                 {KxFolderAllTracks, WellKnown::AllTracks, none}};
    for (const auto& c : cases) {
        TaskMem<KxItemIdList> id;
        ASSERT_EQ(S_OK, root->ParseName(c.name, KX_PARSE_WELLKNOWN, id.Out())) << c.name;
        EXPECT_EQ(lib.Folder(c.folder), lib.ItemOf(id.p)) << c.name;
        WalkResult walk = WalkWellKnownFolder(root.p, c.name);
        // All tracks holds no containers: S_FALSE, with an enumerator that ends at once
        EXPECT_EQ(c.children.empty() ? S_FALSE : S_OK, walk.enumStatus) << c.name;
        EXPECT_EQ(S_FALSE, walk.status) << c.name;
        EXPECT_EQ(NamesOf(c.children), walk.names) << c.name;
    }
    // exact names, on the root only
    const HRESULT notFound = HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
    TaskMem<KxItemIdList> id;
    Ref<IKxContentFolder> albums;
    EXPECT_EQ(notFound, root->ParseName(L"{3d4614c6-8317-4c4f-b50c-10291059ee72}", KX_PARSE_WELLKNOWN, id.Out()));
    ASSERT_EQ(S_OK, lib.GetFolder(lib.Folder(WellKnown::Albums), albums.Out()));
    EXPECT_EQ(notFound, albums->ParseName(KxFolderAlbums, KX_PARSE_WELLKNOWN, id.Out()));
    EXPECT_EQ(nullptr, id.p);
}

TEST_F(FolderWalk, EnumerationsEndWithSFalse) {
    // when told, the last item comes with S_FALSE: one Next per genre, none lost
    lib.SetNextEndsWithLastItem(true);
    EXPECT_EQ(NamesOf(sample.genres), WalkWellKnownFolder(root.p, KxFolderGenres).names);
    EXPECT_EQ(static_cast<long>(sample.genres.size()), lib.Calls(Op::Next));
    // an empty track list answers S_FALSE with an object too
    Ref<IKxContentFolder> playlists;
    Ref<IKxTrackList> tracks;
    INT count = -1;
    ASSERT_EQ(S_OK, lib.GetFolder(lib.Folder(WellKnown::Playlists), playlists.Out()));
    EXPECT_EQ(S_FALSE, playlists->EnumItems(0, KX_ENUM_TRACKS, IID_IKxTrackList, tracks.OutVoid()));
    ASSERT_TRUE(tracks);
    EXPECT_EQ(S_OK, tracks->GetCount(&count));
    EXPECT_EQ(0, count);
}

TEST_F(FolderWalk, TrackFilterMatchesTitleArtistOrAlbumIgnoringCase) {
    Ref<IKxTrackList> list;
    Ref<IKxTrackFilter> filter;
    ASSERT_EQ(S_OK, root->EnumItems(0, KX_ENUM_TRACKS, IID_IKxTrackList, list.OutVoid()));
    ASSERT_EQ(S_OK, list->QueryInterface(IID_IKxTrackFilter, filter.OutVoid()));
    auto shown = [&] {  // by MoveTo and GetCurrentId
        std::vector<ItemId> ids;
        INT count = 0;
        EXPECT_EQ(S_OK, list->GetCount(&count));
        for (INT i = 0; i < count; ++i) {
            TaskMem<KxItemIdList> id;
            EXPECT_EQ(S_OK, list->MoveTo(i));
            EXPECT_EQ(S_OK, list->GetCurrentId(id.Out()));
            ids.push_back(lib.ItemOf(id.p));
        }
        return ids;
    };
    // the inside of a value in upper case keeps the track, and not every track; a genre is not searched
    const ItemId t = sample.tracks[5];
    for (const KxPropertyKey* key : {&KxPropTitle, &KxPropArtist, &KxPropAlbum, &KxPropGenre}) {
        std::wstring text = lib.Value(t, *key)->text;
        for (wchar_t& ch : text) ch = static_cast<wchar_t>(towupper(ch));
        ASSERT_EQ(S_OK, filter->SetFilterText(text.substr(1, text.size() - 2).c_str()));
        const std::vector<ItemId> ids = shown();
        EXPECT_LT(ids.size(), sample.tracks.size()) << key->pid;
        EXPECT_EQ(key != &KxPropGenre, std::count(ids.begin(), ids.end(), t) == 1) << key->pid;
    }
    ASSERT_EQ(S_OK, filter->SetFilterText(L""));
    EXPECT_EQ(sample.tracks, shown());
}

TEST(SampleLibrary, SameSeedSameLibraryOfTheRightShape) {
    const kxhost::SampleOptions options = kxhost::DefaultSampleOptions();
    auto a = kxhost::BuildSampleLibrary(options), b = kxhost::BuildSampleLibrary(options);
    for (size_t i = 0; i < a.tracks.size(); ++i)
        for (const KxPropertyKey* key : {&KxPropTitle, &KxPropArtist, &KxPropAlbum, &KxPropDuration, &KxPropAlbumArt})
            EXPECT_EQ(a.library->Value(a.tracks[i], *key), b.library->Value(b.tracks[i], *key)) << i;
    // each album's tracks carry its name, and its art on every third album; the edge items (tags and
    // capabilities are in the property tests)
    for (size_t album = 0; album < a.albums.size(); ++album)
        for (ItemId t : a.library->Members(a.albums[album])) {
            EXPECT_EQ(a.library->NameOf(a.albums[album]), a.library->Value(t, KxPropAlbum)->text);
            EXPECT_EQ(album % 3 == 0, a.library->Value(t, KxPropAlbumArt).has_value()) << album;
        }
    EXPECT_EQ(300u, a.library->NameOf(a.trackLongTitle).size());
    EXPECT_EQ(std::vector<ItemId>{a.trackLongTitle}, a.library->Members(a.albumWithBackslash));
    EXPECT_EQ(L"Live \\ Unplugged", a.library->NameOf(a.albumWithBackslash));
}

}  // namespace
}  // namespace kxtest
