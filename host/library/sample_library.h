// Deterministic sample libraries: the same options and seed always give the same library, item for
// item, on every platform.
#pragma once

#include "host/library/in_memory_library.h"

namespace kxhost {

struct SampleOptions {
    uint32_t seed = 1;
    int tracks = 0;
    int artists = 0;
    int albums = 0;
    int genres = 0;
    int playlists = 0;
    int tracksPerPlaylist = 0;
    int slideshows = 0;
    int pictures = 0;
    int videos = 0;
    int artEveryNthAlbum = 3;  // albums 0, n, 2n... carry JPEG art on their tracks (0: none)
    // Where picture files are written ("Picture 001.jpg", every third one a .bmp). Empty: pictures
    // give their preview as a bitmap (kind 2) instead of a file.
    std::wstring pictureFolder;
    // Adds the items that test the edges: a track without most tags, one whose tags are all
    // read-only, one on a read-only item with accents and CJK in its names, one with a title of 300
    // characters on an album whose name holds a backslash ("Live \ Unplugged", the last album).
    bool edgeItems = true;
};

// The small library of the demo and the tests: 48 tracks, 9 artists, 8 albums, 6 genres,
// 3 playlists, 2 slideshows, 6 pictures, 2 videos, and the edge items (4 tracks, 1 album).
SampleOptions DefaultSampleOptions();
// 100,000 tracks, 10,000 artists, 5,000 albums, 500 genres, 200 playlists, 400 pictures, 100 videos;
// no picture files, no edge items.
SampleOptions LargeSampleOptions();

struct SampleLibrary {
    std::shared_ptr<InMemoryLibrary> library;
    std::vector<ItemId> tracks, artists, albums, genres, playlists, slideshows, pictures, videos;
    // Edge items (0 without edgeItems).
    ItemId trackWithoutTags = 0;  // only a title and a path
    ItemId trackReadOnlyTags = 0;  // every tag readable, none writable
    ItemId trackReadOnlyItem = 0;  // tags writable by their bits, but the item refuses every write
    ItemId trackLongTitle = 0;     // a title of 300 characters
    ItemId albumWithBackslash = 0;  // holds trackLongTitle
};

SampleLibrary BuildSampleLibrary(const SampleOptions& options);

}  // namespace kxhost
