// The short size text of a byte count ("532 bytes", "1.30 KB", "22.9 KB", "2.28 MB"), as the
// system's StrFormatByteSizeW writes it in English with "." as the decimal separator: for builds
// that have no such function. The Win32 dialogs call the system's own, which also follows the
// user's locale; a Wine test holds the two side by side.
#pragma once

#include "kx/KxPlatform.h"

#include <string>

// Below 1024 bytes: "%d bytes" of the count's low 32 bits, so a count above 2^63 (negative as the
// signed value the function takes) shows as a negative number, as the system's does. From 1024
// on: three significant digits of KB, MB, GB, TB, PB or EB (two, one or no decimals), switching
// to the next unit at 1000 of the current one. Undisplayed digits are cut, never rounded.
// Writes at most cchBuffer - 1 characters and a terminator; a null buffer or a size of 0 writes
// nothing. Returns the buffer.
LPWSTR KxFormatByteSize(LONGLONG bytes, LPWSTR buffer, UINT cchBuffer);
std::wstring KxByteSizeText(LONGLONG bytes);
