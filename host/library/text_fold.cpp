#include "host/library/text_fold.h"

namespace kxhost {

wchar_t FoldChar(wchar_t c) {
    if (c < 0x80) return (c >= L'A' && c <= L'Z') ? static_cast<wchar_t>(c + 32) : c;
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return static_cast<wchar_t>(c + 32);  // Latin-1 capitals
    if (c >= 0x100 && c <= 0x17F) {  // Latin Extended-A: pairs, capital first
        bool evenCapital = (c < 0x138) || (c >= 0x14A && c < 0x178);
        if (evenCapital) return (c % 2 == 0) ? static_cast<wchar_t>(c + 1) : c;
        if (c >= 0x139 && c <= 0x148) return (c % 2 == 1) ? static_cast<wchar_t>(c + 1) : c;
        if (c == 0x178) return 0xFF;
        if (c >= 0x179 && c <= 0x17E) return (c % 2 == 1) ? static_cast<wchar_t>(c + 1) : c;
        return c;
    }
    if (c >= 0x391 && c <= 0x3AB && c != 0x3A2) return static_cast<wchar_t>(c + 32);  // Greek
    if (c >= 0x410 && c <= 0x42F) return static_cast<wchar_t>(c + 32);                // Cyrillic
    if (c >= 0x400 && c <= 0x40F) return static_cast<wchar_t>(c + 80);
    return c;
}

std::wstring Fold(const std::wstring& s) {
    std::wstring out(s);
    for (wchar_t& c : out) c = FoldChar(c);
    return out;
}

bool ContainsFolded(const std::wstring& text, const std::wstring& folded) {
    if (folded.empty()) return true;
    if (text.size() < folded.size()) return false;
    const size_t last = text.size() - folded.size();
    for (size_t i = 0; i <= last; ++i) {
        size_t j = 0;
        while (j < folded.size() && FoldChar(text[i + j]) == folded[j]) ++j;
        if (j == folded.size()) return true;
    }
    return false;
}

}  // namespace kxhost
