#include "host/library/sample_library.h"

#include "host/library/jpeg_encoder.h"
#include "host/library/picture_file.h"

#include <cstdio>

namespace kxhost {

SampleOptions DefaultSampleOptions() {
    SampleOptions o;
    o.seed = 20260101;
    o.tracks = 48;
    o.artists = 9;
    o.albums = 8;
    o.genres = 6;
    o.playlists = 3;
    o.tracksPerPlaylist = 7;
    o.slideshows = 2;
    o.pictures = 6;
    o.videos = 2;
    return o;
}

SampleOptions LargeSampleOptions() {
    SampleOptions o;
    o.seed = 7;
    o.tracks = 100000;
    o.artists = 10000;
    o.albums = 5000;
    o.genres = 500;
    o.playlists = 200;
    o.tracksPerPlaylist = 50;
    o.slideshows = 20;
    o.pictures = 400;
    o.videos = 100;
    o.artEveryNthAlbum = 10;
    o.edgeItems = false;  // the counts stay exact
    return o;
}

// Fills a library quickly: strings shared by many items (artist, album, genre names, folder paths)
// go into the pool once.
class SampleBuilder {
public:
    SampleBuilder(const SampleOptions& o, SampleLibrary& out) : o_(o), out_(out), lib_(*out.library), rng_(o.seed) {}

    void Build() {
        lib_.nodes_.reserve(lib_.nodes_.size() + o_.tracks + o_.artists + o_.albums + o_.genres + o_.playlists +
                            o_.slideshows + o_.pictures + o_.videos + 8);
        lib_.strings_.reserve(static_cast<size_t>(o_.tracks) * 4 + 1000);
        MakeContainers();
        MakeTracks();
        if (o_.edgeItems) MakeEdgeTracks();
        MakePlaylists();
        MakePictures();
        MakeVideos();
        MakeSlideshows();
        if (!out_.albums.empty()) lib_.SetView(lib_.Members(out_.albums[0]), 0);
    }

private:
    // splitmix32: small, fast and the same everywhere
    uint32_t Next() {
        uint32_t z = (rng_ += 0x9E3779B9u);
        z = (z ^ (z >> 16)) * 0x85EBCA6Bu;
        z = (z ^ (z >> 13)) * 0xC2B2AE35u;
        return z ^ (z >> 16);
    }
    uint32_t Below(uint32_t n) { return n ? Next() % n : 0; }

    std::wstring Word() {
        static const wchar_t* const syllables[] = {L"ka", L"lo", L"mi", L"ra", L"ven", L"tor", L"sil", L"an",
                                                   L"bel", L"dor", L"el", L"fin", L"gar", L"hal", L"is", L"jun",
                                                   L"mar", L"nor", L"ost", L"per", L"quin", L"ros", L"sum", L"tal",
                                                   L"ul", L"var", L"wen", L"yl", L"zor", L"cas", L"dri", L"mon"};
        std::wstring w;
        const uint32_t n = 2 + Below(2);
        for (uint32_t i = 0; i < n; ++i) w += syllables[Below(32)];
        w[0] = static_cast<wchar_t>(w[0] - 32);
        return w;
    }
    std::wstring Words(uint32_t min, uint32_t spread) {
        static const wchar_t* const common[] = {L"Night", L"River", L"Blue", L"Summer", L"Light", L"Song",
                                                L"Heart", L"Road", L"Winter", L"Gold", L"Rain", L"Morning"};
        std::wstring s;
        const uint32_t n = min + Below(spread);
        for (uint32_t i = 0; i < n; ++i) {
            if (i) s += L' ';
            s += Below(3) == 0 ? std::wstring(common[Below(12)]) : Word();
        }
        return s;
    }

    uint32_t Intern(const std::wstring& s) {
        lib_.strings_.push_back(s);
        return static_cast<uint32_t>(lib_.strings_.size() - 1);
    }
    // Every Put* appends one property of its kind; the value field used depends on the kind.
    InMemoryLibrary::Prop& Put(ItemId id, const KxPropertyKey& key, ValueKind kind, DWORD caps) {
        InMemoryLibrary::Prop p{};
        p.key = lib_.KeyIndex(key);
        p.kind = kind;
        p.caps = static_cast<uint8_t>(caps);
        lib_.nodes_[id].props.push_back(p);
        return lib_.nodes_[id].props.back();
    }
    void PutString(ItemId id, const KxPropertyKey& key, uint32_t pool, DWORD caps) {
        Put(id, key, ValueKind::String, caps).pool = pool;
    }
    void PutNumber(ItemId id, const KxPropertyKey& key, ValueKind kind, LONGLONG v, DWORD caps) {
        Put(id, key, kind, caps).number = v;
    }
    void PutFloat(ItemId id, const KxPropertyKey& key, float v, DWORD caps) {
        Put(id, key, ValueKind::Float, caps).real = v;
    }
    void PutBlob(ItemId id, const KxPropertyKey& key, uint32_t pool, DWORD caps) {
        Put(id, key, ValueKind::Blob, caps).pool = pool;
    }

    void MakeContainers() {
        for (int i = 0; i < o_.genres; ++i) {
            static const wchar_t* const base[] = {L"Rock", L"Jazz", L"Classical", L"Folk", L"Electronic", L"Blues",
                                                  L"Pop", L"Soul", L"Ambient", L"Country"};
            std::wstring name = i < 10 ? base[i] : Word() + L" " + base[i % 10];
            out_.genres.push_back(lib_.AddContainer(ItemKind::Genre, name));
            genreNames_.push_back(lib_.nodes_[out_.genres.back()].name);
        }
        for (int i = 0; i < o_.artists; ++i) {
            std::wstring name;
            if (Below(4) == 0) {
                name = L"The " + Word() + L"s";
            } else {
                name = Word();  // one call at a time: the order of draws is fixed
                name += L" " + Word();
            }
            out_.artists.push_back(lib_.AddContainer(ItemKind::Artist, name));
            artistNames_.push_back(lib_.nodes_[out_.artists.back()].name);
        }
        for (int i = 0; i < o_.albums; ++i) {
            out_.albums.push_back(lib_.AddContainer(ItemKind::Album, Words(1, 3)));
            const ItemId album = out_.albums.back();
            albumArtist_.push_back(o_.artists ? static_cast<uint32_t>(i % o_.artists) : 0);
            albumGenre_.push_back(o_.genres ? Below(static_cast<uint32_t>(o_.genres)) : 0);
            albumYear_.push_back(1960 + Below(66));
            const bool art = o_.artEveryNthAlbum > 0 && i % o_.artEveryNthAlbum == 0;
            uint32_t artPool = 0;
            if (art) {
                const LONG side = 24 + static_cast<LONG>(Below(4)) * 8;
                lib_.blobs_.push_back(EncodeJpeg(side, side, SamplePixels(side, side, static_cast<uint32_t>(i))));
                artPool = static_cast<uint32_t>(lib_.blobs_.size() - 1);
                PutBlob(album, KxPropAlbumArt, artPool, kReadWrite);
            }
            albumArt_.push_back(art ? artPool + 1 : 0);
            std::wstring artist = o_.artists ? lib_.strings_[artistNames_[albumArtist_.back()]] : L"Unknown";
            albumFolder_.push_back(Intern(L"D:\\Music\\" + artist + L"\\" + lib_.strings_[lib_.nodes_[album].name]));
        }
    }

    ItemId NewTrack(const std::wstring& title) {
        const ItemId id = lib_.AddItem(ItemKind::Track, L"");
        out_.tracks.push_back(id);
        PutString(id, KxPropTitle, Intern(title), kReadWrite);
        return id;
    }

    void MakeTracks() {
        const int albums = o_.albums > 0 ? o_.albums : 1;
        std::vector<int> numberInAlbum(static_cast<size_t>(albums), 0);
        for (int i = 0; i < o_.tracks; ++i) {
            const int a = o_.albums > 0 ? (i < o_.albums ? i : static_cast<int>(Below(static_cast<uint32_t>(o_.albums))))
                                        : -1;
            const ItemId id = NewTrack(Words(1, 4));
            const int number = a >= 0 ? ++numberInAlbum[a] : i + 1;
            if (a >= 0) {
                const ItemId album = out_.albums[a];
                lib_.AddMember(album, id);
                PutString(id, KxPropAlbum, lib_.nodes_[album].name, kReadWrite);
                if (albumArt_[a]) PutBlob(id, KxPropAlbumArt, albumArt_[a] - 1, kReadWrite);
                wchar_t year[8];
                std::swprintf(year, 8, L"%u", albumYear_[a]);
                PutString(id, KxPropYear, Intern(year), kReadWrite);
            }
            if (o_.artists > 0) {
                // mostly the album's artist, sometimes a guest
                const uint32_t artist = (a >= 0 && Below(5) != 0) ? albumArtist_[a] : Below(o_.artists);
                PutString(id, KxPropArtist, artistNames_[artist], kReadWrite);
                lib_.AddMember(out_.artists[artist], id);
                if (Below(6) == 0)
                    PutString(id, KxPropArtist2, artistNames_[Below(static_cast<uint32_t>(o_.artists))], kReadWrite);
            }
            if (o_.genres > 0) {
                const uint32_t genre = a >= 0 ? albumGenre_[a] : Below(o_.genres);
                PutString(id, KxPropGenre, genreNames_[genre], kReadWrite);
                lib_.AddMember(out_.genres[genre], id);
            }
            const uint32_t seconds = 95 + Below(420);
            PutNumber(id, KxPropDuration, ValueKind::UInt32, seconds, kReadable);
            PutNumber(id, KxPropTrackNumber, ValueKind::Int32, number, kReadWrite);
            PutNumber(id, KxPropRating, ValueKind::Int32, Below(6), kReadWrite);
            if (Below(8) == 0) PutNumber(id, KxPropTagInt12, ValueKind::Int32, Below(10000000), kReadWrite);
            PutNumber(id, KxPropFileSize, ValueKind::UInt64, static_cast<LONGLONG>(seconds) * 16000 + Below(4096),
                      kReadable);
            const uint32_t folder = a >= 0 ? albumFolder_[a] : Intern(L"D:\\Music");
            PutString(id, KxPropLocation, folder, kReadable);
            wchar_t file[32];
            std::swprintf(file, 32, L"\\%02d.mp3", number);
            PutString(id, KxPropFilePath, Intern(lib_.strings_[folder] + file), kReadable);
        }
    }

    void MakeEdgeTracks() {
        const uint32_t folder = Intern(L"D:\\Music\\Edge cases");
        ItemId t = NewTrack(L"Untagged recording");
        PutString(t, KxPropFilePath, Intern(lib_.strings_[folder] + L"\\untagged.wav"), kReadable);
        out_.trackWithoutTags = t;

        t = NewTrack(L"Archive copy");
        for (const KxPropertyKey* k : {&KxPropAlbum, &KxPropArtist, &KxPropArtist2, &KxPropGenre})
            PutString(t, *k, Intern(L"Archive"), kReadable);
        PutString(t, KxPropYear, Intern(L"1999"), kReadable);
        PutNumber(t, KxPropTrackNumber, ValueKind::Int32, 1, kReadable);
        PutNumber(t, KxPropRating, ValueKind::Int32, 3, kReadable);
        PutNumber(t, KxPropTagInt12, ValueKind::Int32, 42, kReadable);
        PutString(t, KxPropLocation, folder, kReadable);
        PutString(t, KxPropFilePath, Intern(lib_.strings_[folder] + L"\\archive.mp3"), kReadable);
        lib_.nodes_[t].props[0].caps = kReadable;  // the title too
        out_.trackReadOnlyTags = t;

        t = NewTrack(L"Caf\u00e9 \u00c9l\u00e9gie \u2014 \u6771\u4eac");
        PutString(t, KxPropArtist, Intern(L"\u00c5sa S\u00f8rensen"), kReadWrite);
        PutString(t, KxPropAlbum, Intern(L"\u00dcber Stra\u00dfen"), kReadWrite);
        PutString(t, KxPropLocation, folder, kReadable);
        PutString(t, KxPropFilePath, Intern(lib_.strings_[folder] + L"\\cafe.mp3"), kReadable);
        lib_.nodes_[t].readOnly = true;
        out_.trackReadOnlyItem = t;

        std::wstring longTitle;
        while (longTitle.size() < 300) longTitle += L"Longer than any field allows ";
        longTitle.resize(300);
        t = NewTrack(longTitle);
        // its album's name holds a backslash, which a path bar splits into two crumbs
        const ItemId album = lib_.AddContainer(ItemKind::Album, L"Live \\ Unplugged");
        out_.albums.push_back(album);
        out_.albumWithBackslash = album;
        lib_.AddMember(album, t);
        PutString(t, KxPropAlbum, lib_.nodes_[album].name, kReadWrite);
        PutString(t, KxPropArtist, Intern(L"Various"), kReadWrite);
        PutNumber(t, KxPropTrackNumber, ValueKind::Int32, 99, kReadWrite);
        PutNumber(t, KxPropRating, ValueKind::Int32, 0, kReadWrite);
        PutString(t, KxPropLocation, folder, kReadable);
        PutString(t, KxPropFilePath, Intern(lib_.strings_[folder] + L"\\long.mp3"), kReadable);
        out_.trackLongTitle = t;
    }

    void MakePlaylists() {
        for (int i = 0; i < o_.playlists; ++i) {
            const ItemId p = lib_.AddContainer(ItemKind::Playlist, i == 0 ? std::wstring(L"Favourites") : Words(1, 3));
            out_.playlists.push_back(p);
            for (int k = 0; k < o_.tracksPerPlaylist && !out_.tracks.empty(); ++k)
                lib_.AddMember(p, out_.tracks[Below(static_cast<uint32_t>(out_.tracks.size()))]);
        }
    }

    void MakePictures() {
        static const wchar_t* const makers[] = {L"Lumetra", L"Optiva", L"Camerix"};
        for (int i = 0; i < o_.pictures; ++i) {
            wchar_t name[40];
            std::swprintf(name, 40, L"Picture %03d", i + 1);
            const ItemId id = lib_.AddItem(ItemKind::Picture, name);
            out_.pictures.push_back(id);
            const LONG w = 64 + static_cast<LONG>(Below(4)) * 16, h = 48 + static_cast<LONG>(Below(3)) * 16;
            PreviewPicture picture;
            std::vector<DWORD> pixels = SamplePixels(w, h, static_cast<uint32_t>(i + 11));
            std::wstring path;
            if (!o_.pictureFolder.empty()) {
                // mostly JPEG, every third a BMP
                const bool bmp = i % 3 == 2;
                path = o_.pictureFolder + L"/" + name + (bmp ? L".bmp" : L".jpg");
                if (!WriteBytesToFile(path, bmp ? EncodeBmp(w, h, pixels) : EncodeJpeg(w, h, pixels))) path.clear();
            }
            if (!path.empty()) {
                picture.path = path;
            } else {
                picture.width = w;
                picture.height = h;
                picture.pixels = std::move(pixels);
            }
            lib_.SetPreview(id, std::move(picture));

            const DWORD r = kReadable;
            PutString(id, KxPropTitle, Intern(name), kReadWrite);
            PutNumber(id, KxPropFileSize, ValueKind::UInt64, 54 + static_cast<LONGLONG>(w) * h * 3, r);
            PutString(id, KxPropLocation, Intern(path.empty() ? std::wstring(L"D:\\Pictures") : o_.pictureFolder), r);
            PutString(id, KxPropFilePath, Intern(path.empty() ? std::wstring(L"D:\\Pictures\\") + name : path), r);
            if (o_.edgeItems && i == o_.pictures - 1 && i > 0) continue;  // the last has no camera values
            PutString(id, KxPropImage1, Intern(makers[Below(3)]), r);
            PutString(id, KxPropImage2, Intern(L"Model " + Word()), r);
            static const DWORD exposures[] = {30, 60, 125, 250, 500, 1000};
            PutNumber(id, KxPropImage3, ValueKind::Rational, static_cast<LONGLONG>(KxMakeRational(1, exposures[Below(6)])), r);
            static const float apertures[] = {1.8f, 2.8f, 4.0f, 5.66f, 8.0f, 11.0f};
            PutFloat(id, KxPropImage4, apertures[Below(6)], r);
            PutNumber(id, KxPropImage5, ValueKind::Rational, static_cast<LONGLONG>(KxMakeRational(18 + Below(180), 1)), r);
            static const DWORD biasNumerators[] = {0, 1, 2, 3};
            PutNumber(id, KxPropImage6, ValueKind::Rational,
                      static_cast<LONGLONG>(KxMakeRational(biasNumerators[Below(4)], 3)), r);
            PutNumber(id, KxPropImage7, ValueKind::Int32, Below(2), r);
            PutNumber(id, KxPropImage8, ValueKind::Int32, 1 + (i % 8), r);
            PutNumber(id, KxPropImage9, ValueKind::Int32, w, r);
            PutNumber(id, KxPropImage10, ValueKind::Int32, h, r);
            wchar_t taken[24];
            uint32_t parts[6];
            static const uint32_t ranges[6][2] = {{10, 16}, {1, 12}, {1, 28}, {0, 10}, {0, 60}, {0, 60}};
            for (int k = 0; k < 6; ++k) parts[k] = ranges[k][0] + Below(ranges[k][1]);
            std::swprintf(taken, 24, L"20%02u:%02u:%02u 1%u:%02u:%02u", parts[0], parts[1], parts[2], parts[3], parts[4],
                          parts[5]);
            PutString(id, KxPropImage11, Intern(taken), r);
            PutString(id, KxPropImage12, Intern(Words(1, 3)), r);
            PutString(id, KxPropImage13, Intern(L"Sample picture " + std::to_wstring(i + 1)), r);
            PutNumber(id, KxPropImage14, ValueKind::Int32, 0, r);
            PutNumber(id, KxPropImage15, ValueKind::Int32, Below(9), r);
            static const LONG isos[] = {100, 200, 400, 800, 1600, 3200};
            PutNumber(id, KxPropImage16, ValueKind::Int32, isos[Below(6)], r);
            PutNumber(id, KxPropImage17, ValueKind::Rational, static_cast<LONGLONG>(KxMakeRational(10 + Below(30), 10)), r);
            PutNumber(id, KxPropImage18, ValueKind::Int32, Below(4) == 0 ? 65535 : 1, r);
        }
    }

    void MakeVideos() {
        static const LONG sizes[][2] = {{1920, 1080}, {1280, 720}, {640, 480}, {3840, 2160}};
        for (int i = 0; i < o_.videos; ++i) {
            wchar_t name[40];
            std::swprintf(name, 40, L"Video %03d", i + 1);
            const ItemId id = lib_.AddItem(ItemKind::Video, name);
            out_.videos.push_back(id);
            PreviewPicture frame;
            frame.width = 160;
            frame.height = 90;
            frame.pixels = SamplePixels(160, 90, static_cast<uint32_t>(i + 101));
            lib_.SetPreview(id, std::move(frame));
            const LONG* size = sizes[Below(4)];
            const uint32_t seconds = 5 + Below(3600);
            PutString(id, KxPropTitle, Intern(name), kReadWrite);
            PutNumber(id, KxPropVideo14, ValueKind::Int32, size[0], kReadable);
            PutNumber(id, KxPropVideo15, ValueKind::Int32, size[1], kReadable);
            PutNumber(id, KxPropDuration, ValueKind::UInt32, seconds, kReadable);
            PutNumber(id, KxPropFileSize, ValueKind::UInt64, static_cast<LONGLONG>(seconds) * 1000000, kReadable);
            PutString(id, KxPropLocation, Intern(L"D:\\Videos"), kReadable);
            PutString(id, KxPropFilePath, Intern(std::wstring(L"D:\\Videos\\") + name + L".mp4"), kReadable);
        }
    }

    void MakeSlideshows() {
        for (int i = 0; i < o_.slideshows; ++i) {
            const ItemId s = lib_.AddContainer(ItemKind::Slideshow, i == 0 ? std::wstring(L"Holiday") : Words(1, 2));
            out_.slideshows.push_back(s);
            for (size_t k = static_cast<size_t>(i); k < out_.pictures.size(); k += 2) lib_.AddMember(s, out_.pictures[k]);
            if (static_cast<size_t>(i) < out_.videos.size()) lib_.AddMember(s, out_.videos[i]);
        }
    }

    const SampleOptions& o_;
    SampleLibrary& out_;
    InMemoryLibrary& lib_;
    uint32_t rng_;
    std::vector<uint32_t> genreNames_, artistNames_, albumArtist_, albumGenre_, albumYear_, albumArt_, albumFolder_;
};

SampleLibrary BuildSampleLibrary(const SampleOptions& options) {
    SampleLibrary out;
    out.library = InMemoryLibrary::Create();
    SampleBuilder(options, out).Build();
    return out;
}

}  // namespace kxhost
