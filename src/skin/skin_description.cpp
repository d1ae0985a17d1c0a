#include "skin/skin_description.h"

#include <cstdlib>

namespace kxskin {

namespace {

std::string Trim(const std::string& s) {
    size_t b = 0, e = s.size();
    while (b < e && (s[b] == ' ' || s[b] == '\t' || s[b] == '\r')) ++b;
    while (e > b && (s[e - 1] == ' ' || s[e - 1] == '\t' || s[e - 1] == '\r')) --e;
    return s.substr(b, e - b);
}

bool SameText(const std::string& a, const std::string& b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        char x = a[i], y = b[i];
        if (x >= 'A' && x <= 'Z') x = static_cast<char>(x - 'A' + 'a');
        if (y >= 'A' && y <= 'Z') y = static_cast<char>(y - 'A' + 'a');
        if (x != y) return false;
    }
    return true;
}

// A whole decimal number in [low, high].
bool ParseInt(const std::string& text, int low, int high, int* out) {
    if (text.empty() || text.size() > 9) return false;
    int v = 0;
    for (char c : text) {
        if (c < '0' || c > '9') return false;
        v = v * 10 + (c - '0');
    }
    if (v < low || v > high) return false;
    *out = v;
    return true;
}

const char kStaticPrefix[] = "Static.";

}  // namespace

void IniFile::Parse(const char* text, size_t size) {
    m_values.clear();
    std::string section;
    size_t at = 0;
    // a UTF-8 byte order mark is allowed before the first line
    if (size >= 3 && static_cast<unsigned char>(text[0]) == 0xEF && static_cast<unsigned char>(text[1]) == 0xBB &&
        static_cast<unsigned char>(text[2]) == 0xBF)
        at = 3;
    while (at < size) {
        size_t end = at;
        while (end < size && text[end] != '\n') ++end;
        const std::string line = Trim(std::string(text + at, end - at));
        at = end + 1;
        if (line.empty() || line[0] == ';' || line[0] == '#') continue;
        if (line[0] == '[') {
            const size_t close = line.find(']');
            section = close == std::string::npos ? std::string() : Trim(line.substr(1, close - 1));
            continue;
        }
        const size_t eq = line.find('=');
        if (eq == std::string::npos || section.empty()) continue;
        m_values.push_back(Value{section, Trim(line.substr(0, eq)), Trim(line.substr(eq + 1))});
    }
}

const std::string* IniFile::Get(const std::string& section, const std::string& key) const {
    const std::string* found = nullptr;
    for (const Value& v : m_values)
        if (SameText(v.section, section) && SameText(v.key, key)) found = &v.value;
    return found;
}

std::vector<std::string> IniFile::Sections() const {
    std::vector<std::string> out;
    for (const Value& v : m_values) {
        bool seen = false;
        for (const std::string& s : out) seen = seen || SameText(s, v.section);
        if (!seen) out.push_back(v.section);
    }
    return out;
}

bool ParseColour(const std::string& text, uint32_t* rgb) {
    if (text.size() != 7 || text[0] != '#') return false;
    uint32_t v = 0;
    for (size_t i = 1; i < 7; ++i) {
        const char c = text[i];
        int digit;
        if (c >= '0' && c <= '9') digit = c - '0';
        else if (c >= 'a' && c <= 'f') digit = c - 'a' + 10;
        else if (c >= 'A' && c <= 'F') digit = c - 'A' + 10;
        else return false;
        v = (v << 4) | static_cast<uint32_t>(digit);
    }
    *rgb = v;
    return true;
}

const StaticStyle* DialogSkin::Static(int id) const {
    for (const StaticStyle& s : statics)
        if (s.id == id) return &s;
    return nullptr;
}

uint32_t DialogSkin::TextColour(int id) const {
    const StaticStyle* s = Static(id);
    return s && s->hasColour ? s->colour : text;
}

DialogSkin ReadDialogSkin(const IniFile& ini) {
    DialogSkin skin;
    if (const std::string* v = ini.Get("Dialog", "Background")) ParseColour(*v, &skin.background);
    if (const std::string* v = ini.Get("Dialog", "Text")) ParseColour(*v, &skin.text);
    if (const std::string* v = ini.Get("Dialog", "Font")) skin.fontFace = v->substr(0, 31);  // LOGFONT's limit
    if (const std::string* v = ini.Get("Dialog", "FontSize")) ParseInt(*v, 6, 36, &skin.fontSize);
    if (const std::string* v = ini.Get("Dialog", "Footer")) skin.hasFooter = ParseColour(*v, &skin.footer);
    if (const std::string* v = ini.Get("Dialog", "FooterLine"))
        skin.hasFooterLine = ParseColour(*v, &skin.footerLine);

    const size_t prefix = sizeof(kStaticPrefix) - 1;
    for (const std::string& section : ini.Sections()) {
        StaticStyle style;
        if (section.size() <= prefix || !SameText(section.substr(0, prefix), kStaticPrefix) ||
            !ParseInt(section.substr(prefix), 0, 0xFFFF, &style.id) || skin.Static(style.id))
            continue;
        if (const std::string* v = ini.Get(section, "Color")) style.hasColour = ParseColour(*v, &style.colour);
        if (const std::string* v = ini.Get(section, "Picture")) style.picture = *v;
        if (const std::string* v = ini.Get(section, "Bold")) style.bold = *v == "1";
        skin.statics.push_back(style);
    }
    return skin;
}

uint32_t ReadPopupTextColour(const IniFile& ini) {
    uint32_t colour = 0;
    if (const std::string* v = ini.Get("Popup", "Text")) ParseColour(*v, &colour);
    return colour;
}

}  // namespace kxskin
