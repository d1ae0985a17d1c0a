#include "imaging/win32/property_texts.h"

#include <shlwapi.h>

#include "ui/module_state.h"

std::wstring CKxPropertyTexts::LoadText(UINT id) {
    const wchar_t* text = nullptr;
    const int n = LoadStringW(KxGetResourceHandle(), id, reinterpret_cast<LPWSTR>(&text), 0);
    return n > 0 && text ? std::wstring(text, static_cast<size_t>(n)) : std::wstring();
}

std::wstring CKxPropertyTexts::FormatByteSize(ULONGLONG bytes) {
    WCHAR text[260] = {};
    if (!StrFormatByteSizeW(static_cast<LONGLONG>(bytes), text, 260)) return std::wstring();
    return text;
}
