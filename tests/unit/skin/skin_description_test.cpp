// Description files as the library reads them: the keys it knows, their defaults, and values that
// do not parse (ignored, never failing the dialog).
#include <gtest/gtest.h>

#include <string>

#include "skin/skin_description.h"

namespace {

kxskin::DialogSkin Read(const std::string& text) {
    kxskin::IniFile ini;
    ini.Parse(text.data(), text.size());
    return kxskin::ReadDialogSkin(ini);
}

TEST(SkinDescription, ReadsTheDialogAndItsStatics) {
    const kxskin::DialogSkin skin = Read(
        "\xEF\xBB\xBF; message box\r\n[dialog]\r\nBackground = #F0F4FA\r\nTEXT=#102030\r\nFont=Tahoma\r\n"
        "FontSize=9\r\nFooter=#E0E0E0\r\nFooterLine=#c0c0c0\r\n\r\n[Static.1070]\r\nColor=#003399\r\nBold=1\r\n"
        "[Static.1045]\r\nPicture=Question Mark.png\r\n# trailing comment\r\n");
    EXPECT_EQ(0xF0F4FAu, skin.background);
    EXPECT_EQ(0x102030u, skin.text);
    EXPECT_EQ("Tahoma", skin.fontFace);
    EXPECT_EQ(9, skin.fontSize);
    EXPECT_TRUE(skin.hasFooter);
    EXPECT_EQ(0xE0E0E0u, skin.footer);
    EXPECT_EQ(0xC0C0C0u, skin.footerLine);
    ASSERT_EQ(2u, skin.statics.size());
    EXPECT_EQ(0x003399u, skin.TextColour(1070));
    EXPECT_EQ(0x102030u, skin.TextColour(1045));
    EXPECT_EQ(0x102030u, skin.TextColour(9999));
    ASSERT_NE(nullptr, skin.Static(1045));
    EXPECT_EQ("Question Mark.png", skin.Static(1045)->picture);
    EXPECT_TRUE(skin.Static(1070)->bold);
    EXPECT_FALSE(skin.Static(1045)->bold);
}

TEST(SkinDescription, BadValuesKeepTheDefaults) {
    const struct { const char* text; } cases[] = {
        {""},
        {"Background=#000000\n"},  // outside any section
        {"[Dialog]\nBackground=000000\nText=#12345\nFontSize=99\nFooter=red\n"},
        {"[Dialog]\nBackground=#GG0000\nFontSize=-3\nFontSize=8x\n[Static.x]\nColor=#000000\n[Static.70000]\n"},
        {"[Dialog\nBackground=#000000\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const kxskin::DialogSkin skin = Read(c.text);
        EXPECT_EQ(0xFFFFFFu, skin.background);
        EXPECT_EQ(0x1E1E1Eu, skin.text);
        EXPECT_EQ(8, skin.fontSize);
        EXPECT_FALSE(skin.hasFooter);
        EXPECT_TRUE(skin.fontFace.empty());
        EXPECT_TRUE(skin.statics.empty());
    }
}

TEST(SkinDescription, PopupTextColour) {
    kxskin::IniFile ini;
    const std::string text = "[Popup]\nText=#202428\n";
    ini.Parse(text.data(), text.size());
    EXPECT_EQ(0x202428u, kxskin::ReadPopupTextColour(ini));
    ini.Parse("", 0);
    EXPECT_EQ(0u, kxskin::ReadPopupTextColour(ini));
}

}  // namespace
