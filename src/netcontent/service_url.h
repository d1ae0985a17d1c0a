// The address the content manager asks an art service for: a template from its configuration in
// which "{folder}" stands for the name of the track's folder (commonly the album) and "{file}" for
// the track's file name without its extension, both in UTF-8 and percent-encoded.
#pragma once

#include <string>

namespace kxnet {

// The address for `trackPath`, or empty when the template is no http:// or https:// address
// (compared without regard to case) or the path has no folder and file name.
std::wstring ExpandArtServiceUrl(const std::wstring& urlTemplate, const std::wstring& trackPath);

// UTF-8 of `text` (16-bit units with surrogate pairs, or whole code points where wchar_t is
// 32 bits; a lone surrogate becomes U+FFFD), every byte but A-Z a-z 0-9 - . _ ~ as %XX.
std::wstring PercentEncode(const std::wstring& text);

}  // namespace kxnet
