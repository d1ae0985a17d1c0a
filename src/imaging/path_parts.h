// The shell's rules for the parts of a path, portable: where the file name starts, where the
// extension starts.
#pragma once

#include "kx/KxPlatform.h"

// After the last '\', '/' or ':' that is followed by more than a separator; the whole path when
// there is none. Null gives null.
const WCHAR* KxPathFindFileName(const WCHAR* path);
// The last '.' of the file name, or the terminator when the name has none. A '\', '/' or space
// after a dot ends that extension (the shell reads "a.b c" as having none). Null gives null.
const WCHAR* KxPathFindExtension(const WCHAR* path);
