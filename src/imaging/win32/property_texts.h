// The properties dialogs' texts on Windows: strings of the resource library in force and the
// system's own short size text, which follows the user's locale.
#pragma once

#include "imaging/property_format.h"

class CKxPropertyTexts : public IKxPropertyTextSource {
public:
    std::wstring LoadText(UINT id) override;
    std::wstring FormatByteSize(ULONGLONG bytes) override;
};
