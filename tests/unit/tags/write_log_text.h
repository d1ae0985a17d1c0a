// The in-memory library's write log as text for the tag tests: "track:key" per write in order,
// the track as its index in `tracks`, the key as its number or "art", and R after a removal. The
// log is cleared, so each call tells what came since the last one.
#pragma once

#include "host/library/in_memory_library.h"

#include <algorithm>
#include <string>
#include <vector>

namespace kxtest {

inline std::string TakeWritesText(kxhost::InMemoryLibrary& lib, const std::vector<kxhost::ItemId>& tracks) {
    std::string out;
    for (const kxhost::WriteRecord& w : lib.Writes()) {
        const auto track = std::find(tracks.begin(), tracks.end(), w.item) - tracks.begin();
        const bool art = IsEqualGUID(w.key.fmtid, KxPropAlbumArt.fmtid);
        out += (out.empty() ? "" : " ") + std::to_string(track) + ":" + (art ? "art" : std::to_string(w.key.pid)) +
               (w.via == kxhost::WriteRecord::Remove ? "R" : "");
    }
    lib.ClearWrites();
    return out;
}

}  // namespace kxtest
