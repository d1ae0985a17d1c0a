// Splitting a breadcrumb path into the names of its crumbs. A path is at most 259 characters: it is
// copied into a buffer of 260 wide characters first, and a longer path is cut there, so a crumb
// never holds more than the buffer held.
#pragma once

#include <string>
#include <vector>

#include "kx/KxPlatform.h"

// Characters of the splitting buffer, terminator included.
constexpr size_t kKxCrumbPathBuffer = 260;

// The path's first 259 characters (all of a shorter one); null copies as the empty path.
std::wstring KxBoundedCrumbPath(LPCWSTR path);

// The names between backslashes of the bounded path. Runs of backslashes and backslashes at either
// end make no empty name, so a name that itself holds a backslash becomes several crumbs.
std::vector<std::wstring> KxSplitCrumbPath(LPCWSTR path);
