// The sample libraries: deterministic, with the shape and the edge items tests rely on.
#include "tests/unit/host/library_test_support.h"

#include <numeric>

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

TEST(SampleLibrary, DefaultShape) {
    auto s = kxhost::BuildSampleLibrary(kxhost::DefaultSampleOptions());
    auto& lib = *s.library;
    EXPECT_EQ(48u + 4u, s.tracks.size());
    EXPECT_EQ(9u, s.artists.size());
    EXPECT_EQ(8u + 1u, s.albums.size());
    EXPECT_EQ(6u, s.genres.size());
    EXPECT_EQ(3u, s.playlists.size());
    EXPECT_EQ(2u, s.slideshows.size());
    EXPECT_EQ(6u, s.pictures.size());
    EXPECT_EQ(2u, s.videos.size());
    EXPECT_EQ(s.tracks, lib.Members(lib.Folder(kxhost::WellKnown::AllTracks)));
    // every regular track is in exactly one album, artist and genre, and agrees with its tags
    for (size_t i = 0; i < 48; ++i) {
        const ItemId t = s.tracks[i];
        int albums = 0;
        for (ItemId a : s.albums)
            for (ItemId m : lib.Members(a))
                if (m == t) {
                    ++albums;
                    EXPECT_EQ(lib.NameOf(a), lib.Value(t, KxPropAlbum)->text);
                }
        EXPECT_EQ(1, albums) << i;
        int artists = 0;
        for (ItemId a : s.artists)
            for (ItemId m : lib.Members(a))
                if (m == t) {
                    ++artists;
                    EXPECT_EQ(lib.NameOf(a), lib.Value(t, KxPropArtist)->text);
                }
        EXPECT_EQ(1, artists) << i;
        auto rating = lib.Value(t, KxPropRating);
        ASSERT_TRUE(rating);
        EXPECT_LE(0, rating->number);
        EXPECT_GE(5, rating->number);
    }
    // art on every third album: all its tracks carry the same picture bytes
    for (size_t a = 0; a < s.albums.size(); ++a) {
        for (ItemId t : lib.Members(s.albums[a])) {
            auto art = lib.Value(t, KxPropAlbumArt);
            EXPECT_EQ(a % 3 == 0, art.has_value()) << a;
            if (art) {
                EXPECT_EQ(lib.Value(s.albums[a], KxPropAlbumArt)->bytes, art->bytes);
            }
        }
    }
    // slideshows hold pictures and videos only
    for (ItemId show : s.slideshows)
        for (ItemId m : lib.Members(show))
            EXPECT_TRUE(lib.KindOf(m) == ItemKind::Picture || lib.KindOf(m) == ItemKind::Video);
    // videos carry width, height and duration
    for (ItemId v : s.videos) {
        EXPECT_GT(lib.Value(v, KxPropVideo14)->number, 0);
        EXPECT_GT(lib.Value(v, KxPropVideo15)->number, 0);
        EXPECT_EQ(kxhost::ValueKind::UInt32, lib.Value(v, KxPropDuration)->kind);
    }
}

TEST(SampleLibrary, EdgeItems) {
    auto s = kxhost::BuildSampleLibrary(kxhost::DefaultSampleOptions());
    auto& lib = *s.library;
    EXPECT_FALSE(lib.Value(s.trackWithoutTags, KxPropArtist));
    EXPECT_FALSE(lib.Value(s.trackWithoutTags, KxPropAlbumArt));
    EXPECT_TRUE(lib.Value(s.trackWithoutTags, KxPropFilePath));
    for (const KxPropertyKey* key : {&KxPropTitle, &KxPropArtist, &KxPropYear, &KxPropRating})
        EXPECT_EQ(kxhost::kReadable, lib.Capabilities(s.trackReadOnlyTags, *key));
    EXPECT_EQ(300u, lib.NameOf(s.trackLongTitle).size());
    EXPECT_EQ(s.albums.back(), s.albumWithBackslash);
    EXPECT_EQ(L"Live \\ Unplugged", lib.NameOf(s.albumWithBackslash));
    EXPECT_EQ(std::vector<ItemId>{s.trackLongTitle}, lib.Members(s.albumWithBackslash));
    // the last picture has no camera values, the others have all eighteen image keys
    const KxPropertyKey image[] = {KxPropImage1,  KxPropImage2,  KxPropImage3,  KxPropImage4,  KxPropImage5,
                                   KxPropImage6,  KxPropImage7,  KxPropImage8,  KxPropImage9,  KxPropImage10,
                                   KxPropImage11, KxPropImage12, KxPropImage13, KxPropImage14, KxPropImage15,
                                   KxPropImage16, KxPropImage17, KxPropImage18};
    for (size_t p = 0; p < s.pictures.size(); ++p)
        for (const KxPropertyKey& key : image)
            EXPECT_EQ(p + 1 < s.pictures.size(), lib.Value(s.pictures[p], key).has_value()) << p;
    auto orientation = lib.Value(s.pictures[0], KxPropImage8);
    EXPECT_GE(orientation->number, 1);
    EXPECT_LE(orientation->number, 8);
    EXPECT_EQ(kxhost::ValueKind::Float, lib.Value(s.pictures[0], KxPropImage4)->kind);
    EXPECT_EQ(kxhost::ValueKind::Rational, lib.Value(s.pictures[0], KxPropImage3)->kind);
}

TEST(SampleLibrary, BuildersIgnoreIdsThatAreNoItems) {
    auto lib = kxhost::InMemoryLibrary::Create();
    const ItemId bogus = 12345;
    ASSERT_FALSE(lib->Valid(bogus));
    ASSERT_FALSE(lib->Valid(0));
    lib->SetString(bogus, KxPropTitle, L"x");
    lib->SetReadOnly(bogus, true);
    lib->AddMember(lib->Folder(kxhost::WellKnown::Playlists), bogus);
    lib->SetPreview(0, kxhost::PreviewPicture());
    EXPECT_FALSE(lib->Value(bogus, KxPropTitle));
    EXPECT_TRUE(lib->Members(lib->Folder(kxhost::WellKnown::Playlists)).empty());
    EXPECT_EQ(L"", lib->NameOf(bogus));
    EXPECT_EQ(nullptr, lib->PreviewOf(0));
    const ItemId album = lib->AddContainer(ItemKind::Album, L"Orphan", bogus);
    EXPECT_EQ(std::vector<ItemId>{album}, lib->Containers(lib->Folder(kxhost::WellKnown::Albums)));
}

TEST(SampleLibrary, LargeShape) {
    auto s = kxhost::BuildSampleLibrary(kxhost::LargeSampleOptions());
    auto& lib = *s.library;
    EXPECT_EQ(100000u, s.tracks.size());
    EXPECT_EQ(0u, s.trackWithoutTags);
    EXPECT_EQ(10000u, s.artists.size());
    EXPECT_EQ(5000u, s.albums.size());
    EXPECT_EQ(500u, s.genres.size());
    size_t inAlbums = 0, inGenres = 0;
    for (ItemId a : s.albums) {
        EXPECT_FALSE(lib.Members(a).empty());
        inAlbums += lib.Members(a).size();
    }
    for (ItemId g : s.genres) inGenres += lib.Members(g).size();
    EXPECT_EQ(100000u, inAlbums);
    EXPECT_EQ(100000u, inGenres);
}

}  // namespace
}  // namespace kxtest
