// The sample libraries: deterministic, with the shape and the edge items tests rely on.
#include "tests/unit/host/library_test_support.h"

#include <map>

namespace kxtest {
namespace {

using kxhost::ItemId;
using kxhost::ItemKind;

std::vector<std::wstring> AllNames(const kxhost::SampleLibrary& s) {
    std::vector<std::wstring> names;
    for (const auto* list : {&s.tracks, &s.albums, &s.artists, &s.genres, &s.playlists})
        for (ItemId id : *list) names.push_back(s.library->NameOf(id));
    return names;
}

TEST(SampleLibrary, SameSeedSameLibrary) {
    auto a = kxhost::BuildSampleLibrary(kxhost::DefaultSampleOptions());
    auto b = kxhost::BuildSampleLibrary(kxhost::DefaultSampleOptions());
    EXPECT_EQ(AllNames(a), AllNames(b));
    for (size_t i = 0; i < a.tracks.size(); ++i)
        for (const KxPropertyKey* key : {&KxPropArtist, &KxPropRating, &KxPropDuration, &KxPropAlbumArt})
            EXPECT_EQ(a.library->Value(a.tracks[i], *key), b.library->Value(b.tracks[i], *key)) << i;
    kxhost::SampleOptions other = kxhost::DefaultSampleOptions();
    other.seed += 1;
    EXPECT_NE(AllNames(a), AllNames(kxhost::BuildSampleLibrary(other)));
}

TEST(SampleLibrary, ContainersAgreeWithTheTags) {
    auto s = kxhost::BuildSampleLibrary(kxhost::DefaultSampleOptions());
    auto& lib = *s.library;
    EXPECT_EQ(s.tracks, lib.Members(lib.Folder(kxhost::WellKnown::AllTracks)));
    // every track of an album or artist carries its name; art on every third album, the same for all its tracks
    std::map<ItemId, int> seen;
    for (size_t a = 0; a < s.albums.size(); ++a)
        for (ItemId t : lib.Members(s.albums[a])) {
            ++seen[t];
            EXPECT_EQ(lib.NameOf(s.albums[a]), lib.Value(t, KxPropAlbum)->text);
            auto art = lib.Value(t, KxPropAlbumArt);
            EXPECT_EQ(a % 3 == 0, art.has_value()) << a;
            EXPECT_TRUE(!art || lib.Value(s.albums[a], KxPropAlbumArt)->bytes == art->bytes) << a;
        }
    for (ItemId a : s.artists)
        for (ItemId t : lib.Members(a)) EXPECT_EQ(lib.NameOf(a), lib.Value(t, KxPropArtist)->text);
    for (size_t i = 0; i < 48; ++i) EXPECT_EQ(1, seen[s.tracks[i]]) << "regular track " << i << " in one album";
    for (ItemId show : s.slideshows)
        for (ItemId m : lib.Members(show))
            EXPECT_TRUE(lib.KindOf(m) == ItemKind::Picture || lib.KindOf(m) == ItemKind::Video);
}

TEST(SampleLibrary, EdgeItems) {
    auto s = kxhost::BuildSampleLibrary(kxhost::DefaultSampleOptions());
    auto& lib = *s.library;
    EXPECT_FALSE(lib.Value(s.trackWithoutTags, KxPropArtist));
    EXPECT_TRUE(lib.Value(s.trackWithoutTags, KxPropFilePath));
    EXPECT_EQ(kxhost::kReadable, lib.Capabilities(s.trackReadOnlyTags, KxPropTitle));
    EXPECT_EQ(300u, lib.NameOf(s.trackLongTitle).size());
    EXPECT_EQ(L"Live \\ Unplugged", lib.NameOf(s.albumWithBackslash));
    EXPECT_EQ(std::vector<ItemId>{s.trackLongTitle}, lib.Members(s.albumWithBackslash));
    // the last picture has no camera values, the others have them
    for (size_t p = 0; p < s.pictures.size(); ++p)
        for (const KxPropertyKey* key : {&KxPropImage1, &KxPropImage8, &KxPropImage18})
            EXPECT_EQ(p + 1 < s.pictures.size(), lib.Value(s.pictures[p], *key).has_value()) << p;
}

TEST(SampleLibrary, BuildersIgnoreIdsThatAreNoItems) {
    auto lib = kxhost::InMemoryLibrary::Create();
    const ItemId bogus = 12345;
    ASSERT_FALSE(lib->Valid(bogus));
    lib->SetString(bogus, KxPropTitle, L"x");
    lib->SetReadOnly(bogus, true);
    lib->AddMember(lib->Folder(kxhost::WellKnown::Playlists), bogus);
    lib->SetPreview(0, kxhost::PreviewPicture());
    EXPECT_FALSE(lib->Value(bogus, KxPropTitle));
    EXPECT_TRUE(lib->Members(lib->Folder(kxhost::WellKnown::Playlists)).empty());
    EXPECT_EQ(nullptr, lib->PreviewOf(0));
    const ItemId album = lib->AddContainer(ItemKind::Album, L"Orphan", bogus);
    EXPECT_EQ(std::vector<ItemId>{album}, lib->Containers(lib->Folder(kxhost::WellKnown::Albums)));
}

}  // namespace
}  // namespace kxtest
