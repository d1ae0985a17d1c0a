// The wide printf family with the Windows reading of the format, for builds off Windows.
// In a wide format Windows takes %s, %c and %ws as wide and %S, %hs, %hc as narrow, and knows the
// I64/I32 size prefixes; glibc reads %s as narrow. These functions accept the Windows spellings
// and behave like the msvcrt functions of the same name.
#pragma once

#ifdef _WIN32
#error "wformat.h is for non-Windows builds"
#endif

#include <cstdarg>
#include <cstddef>

// Writes at most `count` characters; a terminator follows only if there is room for it within
// `count`. Returns the number of characters written, or -1 when the output did not fit (the
// buffer then holds its first `count` characters) or the format could not be produced.
int _vsnwprintf(wchar_t* buffer, size_t count, const wchar_t* format, va_list args);
int _snwprintf(wchar_t* buffer, size_t count, const wchar_t* format, ...);

// The "secure" form: writes at most `count` characters and always a terminator within
// `sizeOfBuffer` (count must be below sizeOfBuffer). Returns -1 when the text was cut.
int _vsnwprintf_s(wchar_t* buffer, size_t sizeOfBuffer, size_t count, const wchar_t* format, va_list args);
int _snwprintf_s(wchar_t* buffer, size_t sizeOfBuffer, size_t count, const wchar_t* format, ...);

namespace kxcompat {
// The glibc spelling of a Windows wide format (exposed for tests).
void TranslateWideFormat(const wchar_t* windowsFormat, wchar_t* out, size_t outCount);
}  // namespace kxcompat
