// The picture files beside a track that count as its art: "cover", "folder" or "front" with a
// common picture extension, in the track's own folder.
#pragma once

#include <string>
#include <vector>

namespace kxnet {

// Full paths of the candidates for `trackPath`, in the order they are tried: the names in the
// order cover, folder, front, each with .jpg, .jpeg, .png, .bmp, .gif. Names are not varied in
// case: the platform's file names ignore it. A path without a folder (no '\' or '/') has none,
// since the lookup never guesses a current folder.
std::vector<std::wstring> SidePictureCandidates(const std::wstring& trackPath);

}  // namespace kxnet
