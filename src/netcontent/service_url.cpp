// The art service's address of service_url.h.
#include "netcontent/service_url.h"

#include <cstdint>
#include <string>

namespace kxnet {
namespace {

void AppendUtf8(uint32_t cp, std::string* out) {
    if (cp < 0x80) {
        out->push_back(char(cp));
    } else if (cp < 0x800) {
        out->push_back(char(0xC0 | (cp >> 6)));
        out->push_back(char(0x80 | (cp & 0x3F)));
    } else if (cp < 0x10000) {
        out->push_back(char(0xE0 | (cp >> 12)));
        out->push_back(char(0x80 | ((cp >> 6) & 0x3F)));
        out->push_back(char(0x80 | (cp & 0x3F)));
    } else {
        out->push_back(char(0xF0 | (cp >> 18)));
        out->push_back(char(0x80 | ((cp >> 12) & 0x3F)));
        out->push_back(char(0x80 | ((cp >> 6) & 0x3F)));
        out->push_back(char(0x80 | (cp & 0x3F)));
    }
}

bool StartsWithNoCase(const std::wstring& text, const wchar_t* prefix) {
    for (size_t i = 0; prefix[i]; ++i) {
        if (i >= text.size()) return false;
        const wchar_t c = (text[i] >= L'A' && text[i] <= L'Z') ? wchar_t(text[i] + 32) : text[i];
        if (c != prefix[i]) return false;
    }
    return true;
}

void ReplaceAll(std::wstring* text, const std::wstring& name, const std::wstring& value) {
    for (size_t at = text->find(name); at != std::wstring::npos; at = text->find(name, at + value.size()))
        text->replace(at, name.size(), value);
}

}  // namespace

std::wstring PercentEncode(const std::wstring& text) {
    std::string utf8;
    for (size_t i = 0; i < text.size(); ++i) {
        uint32_t cp = static_cast<uint32_t>(text[i]);
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (static_cast<uint32_t>(text[i + 1]) - 0xDC00);
            ++i;
        } else if ((cp >= 0xD800 && cp <= 0xDFFF) || cp > 0x10FFFF) {
            cp = 0xFFFD;
        }
        AppendUtf8(cp, &utf8);
    }
    static const char kHex[] = "0123456789ABCDEF";
    std::wstring out;
    for (unsigned char c : utf8) {
        if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
            c == '_' || c == '~') {
            out.push_back(wchar_t(c));
        } else {
            out.push_back(L'%');
            out.push_back(wchar_t(kHex[c >> 4]));
            out.push_back(wchar_t(kHex[c & 15]));
        }
    }
    return out;
}

std::wstring ExpandArtServiceUrl(const std::wstring& urlTemplate, const std::wstring& trackPath) {
    if (!StartsWithNoCase(urlTemplate, L"http://") && !StartsWithNoCase(urlTemplate, L"https://")) return {};
    const size_t slash = trackPath.find_last_of(L"\\/");
    if (slash == std::wstring::npos || slash + 1 == trackPath.size()) return {};
    std::wstring file = trackPath.substr(slash + 1);
    const size_t dot = file.rfind(L'.');
    if (dot != std::wstring::npos && dot > 0) file.resize(dot);
    const size_t folderStart = trackPath.find_last_of(L"\\/", slash == 0 ? std::wstring::npos : slash - 1);
    std::wstring folder = trackPath.substr(folderStart == std::wstring::npos ? 0 : folderStart + 1,
                                           slash - (folderStart == std::wstring::npos ? 0 : folderStart + 1));
    if (folder.size() == 2 && folder[1] == L':') folder.clear();  // a track in a drive's root has no folder name
    std::wstring url = urlTemplate;
    ReplaceAll(&url, L"{folder}", PercentEncode(folder));
    ReplaceAll(&url, L"{file}", PercentEncode(file));
    return url;
}

}  // namespace kxnet
