// The content library of the demo host: the default sample library, with its picture files written
// beside the demo's pictures so that previews come from real files.
#pragma once

#include "host/library/sample_library.h"

#include <string>
#include <vector>

namespace kxdemo {

// The default sample library; picture files go to <outDir>\library.
kxhost::SampleLibrary MakeDemoLibrary(const std::wstring& outDir);

// One line per well-known folder, walked the way the dialogs walk it, and one for the tracks.
std::vector<std::wstring> DescribeLibrary(kxhost::InMemoryLibrary& library);

}  // namespace kxdemo
