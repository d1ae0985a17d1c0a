// A text source for the formatting tests: string n reads "[n]", so every expected text shows
// which string was used; sizes come from the portable byte-size text.
#pragma once

#include "imaging/byte_size_text.h"
#include "imaging/property_format.h"

#include <string>

namespace kxtest {

class FakePropertyTexts : public IKxPropertyTextSource {
public:
    std::wstring LoadText(UINT id) override { return L"[" + std::to_wstring(id) + L"]"; }
    std::wstring FormatByteSize(ULONGLONG bytes) override { return KxByteSizeText(static_cast<LONGLONG>(bytes)); }
};

}  // namespace kxtest
