#include "ui/resource_string.h"

#include "ui/module_state.h"

std::wstring KxLoadResourceString(UINT id) {
    const wchar_t* text = nullptr;
    int n = LoadStringW(KxGetResourceHandle(), id, reinterpret_cast<LPWSTR>(&text), 0);
    return n > 0 && text ? std::wstring(text, static_cast<size_t>(n)) : std::wstring();
}
