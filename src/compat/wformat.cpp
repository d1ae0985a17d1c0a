#include "compat/wformat.h"

#include <cwchar>
#include <string>
#include <vector>

namespace {

bool IsFlagOrWidth(wchar_t c) {
    return c == L'-' || c == L'+' || c == L' ' || c == L'#' || c == L'0' || (c >= L'1' && c <= L'9') ||
           c == L'.' || c == L'*';
}

std::wstring Translate(const wchar_t* f) {
    std::wstring out;
    while (*f) {
        if (*f != L'%') {
            out += *f++;
            continue;
        }
        out += *f++;
        if (*f == L'%') {
            out += *f++;
            continue;
        }
        while (*f && IsFlagOrWidth(*f)) out += *f++;
        // size prefix, Windows spellings first
        enum { None, Narrow, Wide, Other } size = None;
        std::wstring sizeText;
        if (f[0] == L'I' && f[1] == L'6' && f[2] == L'4') {
            sizeText = L"ll";
            size = Other;
            f += 3;
        } else if (f[0] == L'I' && f[1] == L'3' && f[2] == L'2') {
            size = Other;
            f += 3;
        } else if (*f == L'I') {  // pointer-sized integer
            sizeText = L"z";
            size = Other;
            ++f;
        } else if (*f == L'h' && f[1] != L'h') {
            size = Narrow;
            sizeText = L"h";
            ++f;
        } else if (*f == L'w') {
            size = Wide;
            ++f;
        } else if (*f == L'l' && f[1] != L'l') {
            size = Wide;
            sizeText = L"l";
            ++f;
        } else {
            while (*f == L'h' || *f == L'l' || *f == L'j' || *f == L'z' || *f == L't' || *f == L'L') {
                sizeText += *f++;
                size = Other;
            }
        }
        wchar_t conv = *f;
        if (!conv) break;
        ++f;
        switch (conv) {
            case L's':
            case L'c':
                out += (size == Narrow) ? L"" : L"l";
                out += conv;
                break;
            case L'S':
            case L'C':
                out += (size == Wide) ? L"l" : L"";
                out += static_cast<wchar_t>(conv == L'S' ? L's' : L'c');
                break;
            default:
                out += sizeText;
                out += conv;
                break;
        }
    }
    return out;
}

// Formats the whole text; returns false if the format cannot be produced.
bool FormatAll(std::vector<wchar_t>& text, int& length, const wchar_t* format, va_list args) {
    std::wstring f = Translate(format);
    size_t cap = 512;
    for (;;) {
        text.assign(cap, L'\0');
        va_list copy;
        va_copy(copy, args);
        int n = std::vswprintf(text.data(), cap, f.c_str(), copy);
        va_end(copy);
        if (n >= 0) {
            length = n;
            return true;
        }
        if (cap >= (1u << 24)) return false;  // an encoding error, not a lack of room
        cap *= 4;
    }
}

}  // namespace

namespace kxcompat {
void TranslateWideFormat(const wchar_t* windowsFormat, wchar_t* out, size_t outCount) {
    std::wstring t = Translate(windowsFormat);
    if (!outCount) return;
    size_t n = t.size() < outCount - 1 ? t.size() : outCount - 1;
    t.copy(out, n);
    out[n] = L'\0';
}
}  // namespace kxcompat

int _vsnwprintf(wchar_t* buffer, size_t count, const wchar_t* format, va_list args) {
    std::vector<wchar_t> text;
    int n = 0;
    if (!FormatAll(text, n, format, args)) return -1;
    size_t len = static_cast<size_t>(n);
    if (len > count) {
        std::wmemcpy(buffer, text.data(), count);
        return -1;
    }
    std::wmemcpy(buffer, text.data(), len);
    if (len < count) buffer[len] = L'\0';
    return n;
}

int _snwprintf(wchar_t* buffer, size_t count, const wchar_t* format, ...) {
    va_list args;
    va_start(args, format);
    int n = _vsnwprintf(buffer, count, format, args);
    va_end(args);
    return n;
}

int _vsnwprintf_s(wchar_t* buffer, size_t sizeOfBuffer, size_t count, const wchar_t* format, va_list args) {
    if (!buffer || sizeOfBuffer == 0) return -1;
    size_t limit = count < sizeOfBuffer ? count : sizeOfBuffer - 1;
    int n = _vsnwprintf(buffer, limit, format, args);
    if (n < 0) {
        buffer[limit] = L'\0';
        return -1;
    }
    buffer[n] = L'\0';
    return n;
}

int _snwprintf_s(wchar_t* buffer, size_t sizeOfBuffer, size_t count, const wchar_t* format, ...) {
    va_list args;
    va_start(args, format);
    int n = _vsnwprintf_s(buffer, sizeOfBuffer, count, format, args);
    va_end(args);
    return n;
}
