// What a description file (.ini) of the skin package says about one dialog, and the small .ini
// reader behind it. The keys, all optional, with what the library does when one is missing:
//
//   [Dialog]
//   Background=#RRGGBB   client area of the dialog                        (#FFFFFF)
//   Text=#RRGGBB         text of statics, check boxes and radio buttons   (#1E1E1E)
//   Font=<face>          font of the dialog and of every control          (the template's font)
//   FontSize=<points>    its size, 6 to 36                                 (8)
//   Footer=#RRGGBB       a strip behind the bottom row of push buttons     (no strip)
//   FooterLine=#RRGGBB   the line along the strip's top edge               (no line)
//
//   [Static.<control id>]  one section per static the skin treats apart
//   Color=#RRGGBB        its text colour                                  ([Dialog] Text)
//   Bold=1               its text in the bold face of the dialog's font   (0)
//   Picture=<name>       a package picture it shows until the dialog asks for another
//
// A package may also hold "Popup.ini" for the popups it shapes:
//
//   [Popup]
//   Text=#RRGGBB         text of the popup's statics, drawn over its picture (#000000)
//
// Section and key names are compared without regard to case; lines starting with ';' or '#'
// are comments. Values that do not parse are ignored, so a damaged file never fails a dialog.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kxskin {

class IniFile {
public:
    void Parse(const char* text, size_t size);
    // The value of `key` in `section`, null when absent. The last of repeated keys wins.
    const std::string* Get(const std::string& section, const std::string& key) const;
    // Names of the sections, in the order of the file.
    std::vector<std::string> Sections() const;

private:
    struct Value {
        std::string section, key, value;
    };
    std::vector<Value> m_values;
};

// "#RRGGBB" into 0x00RRGGBB; false for anything else.
bool ParseColour(const std::string& text, uint32_t* rgb);

struct StaticStyle {
    int id = 0;
    bool hasColour = false;
    uint32_t colour = 0;
    bool bold = false;
    std::string picture;
};

struct DialogSkin {
    uint32_t background = 0xFFFFFF;
    uint32_t text = 0x1E1E1E;
    std::string fontFace;  // empty: the template's font stays
    int fontSize = 8;
    bool hasFooter = false;
    uint32_t footer = 0;
    bool hasFooterLine = false;
    uint32_t footerLine = 0;
    std::vector<StaticStyle> statics;

    // The section of control `id`, null when it has none.
    const StaticStyle* Static(int id) const;
    // The text colour of control `id`.
    uint32_t TextColour(int id) const;
};

DialogSkin ReadDialogSkin(const IniFile& ini);

// The text colour of the package's popups.
uint32_t ReadPopupTextColour(const IniFile& ini);

}  // namespace kxskin
