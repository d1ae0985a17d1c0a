// Case folding for the track filter: the same answer on every platform, whatever the C library's
// locale. Folds ASCII, Latin-1, Latin Extended-A pairs, Greek and Cyrillic capitals.
#pragma once

#include <string>

namespace kxhost {

wchar_t FoldChar(wchar_t c);
std::wstring Fold(const std::wstring& s);
// Whether `folded` (already folded) occurs in `text`, ignoring case.
bool ContainsFolded(const std::wstring& text, const std::wstring& folded);

}  // namespace kxhost
