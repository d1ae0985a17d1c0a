#include "imaging/win32/property_texts.h"

#include <shlwapi.h>

#include "ui/resource_string.h"

std::wstring CKxPropertyTexts::LoadText(UINT id) { return KxLoadResourceString(id); }

std::wstring CKxPropertyTexts::FormatByteSize(ULONGLONG bytes) {
    WCHAR text[260] = {};
    if (!StrFormatByteSizeW(static_cast<LONGLONG>(bytes), text, 260)) return std::wstring();
    return text;
}
