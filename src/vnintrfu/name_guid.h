// Name-based identifiers: a GUID that a name always gives the same, built the way of RFC 4122's
// version 5 (SHA-1 of a namespace and the name). Registration gives each component category
// named by text its category identifier this way.
#pragma once

#include "kx/KxPlatform.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

// The SHA-1 digest of `size` bytes.
std::array<std::uint8_t, 20> KxSha1(const std::uint8_t* data, std::size_t size);

// The version-5 identifier of `name` (hashed as its UTF-16LE code units) in namespace `ns`.
GUID KxNameBasedGuid(const GUID& ns, const std::wstring& name);
