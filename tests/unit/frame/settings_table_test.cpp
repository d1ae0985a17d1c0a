// The settings table's rows, and the music store's address read and opened through a fake shell.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/settings_table.h"

namespace {

const DWORD N = KX_SETTING_DWORD, S = KX_SETTING_STRING;

TEST(SettingsTable, SixteenRowsFoundByTheirIdentifiersTheStoreAddressFromTheBuild) {
    for (DWORD id = 1; id <= 16; ++id) EXPECT_EQ(&g_kxSettings[id - 1], FindSetting(id)) << "row " << id;
    EXPECT_EQ(nullptr, FindSetting(17));
    EXPECT_STREQ(L"MStoreURL", g_kxSettings[15].key);
    std::wstring url;
    EXPECT_EQ(S_OK, GetMusicStoreUrl(url));
    EXPECT_EQ(L"" KX_MUSIC_STORE_URL_FOR_TEST, url) << "the build's address is compiled in";
}

struct RecordingShell : IKxShellExecute {
    void ShellExecuteW(HWND hwnd, LPCWSTR verb, LPCWSTR file, LPCWSTR params, LPCWSTR dir, INT show) override {
        EXPECT_TRUE(!hwnd && std::wstring(verb) == L"open" && !params && !dir && show == 1 /* SW_SHOWNORMAL */);
        opened.push_back(file);
    }
    std::vector<std::wstring> opened;
};

TEST(SettingsTable, TheStoreIsOpenedFromTheFirstRow16OnlyWhenItHasAnAddress) {
    const KxSettingRow first = {16, L"MStoreURL", 1, S, 0, L"https://a.test/", 0},
                       second = {16, L"MStoreURL", 1, S, 0, L"https://b.test/", 0},
                       empty = {16, L"MStoreURL", 1, S, 0, L"", 0}, none = {16, L"MStoreURL", 1, S, 0, nullptr, 0},
                       number = {16, L"MStoreURL", 1, N, 7, nullptr, 0}, other = {1, L"X", 1, S, 0, L"https://c/", 0};
    const struct {
        std::vector<KxSettingRow> rows;
        HRESULT hr;
        const wchar_t* url;  // the caller's string afterwards
    } cases[] = {
        {{other, first, second}, S_OK, L"https://a.test/"},
        {{other}, static_cast<HRESULT>(0x80070002L), L"kept"},
        {{number, first}, static_cast<HRESULT>(0x8007000DL), L"kept"},
        {{empty}, S_OK, L""},
        {{none}, S_OK, L""},
    };
    for (const auto& c : cases) {
        const CKxSettingsTable table(c.rows.data(), c.rows.size());
        std::wstring url = L"kept";
        EXPECT_EQ(c.hr, table.GetMusicStoreUrl(url));
        EXPECT_EQ(c.url, url);
        RecordingShell shell;
        table.OpenMusicStore(shell);
        const bool opens = c.hr == S_OK && *c.url;
        EXPECT_EQ(opens ? std::vector<std::wstring>{c.url} : std::vector<std::wstring>{}, shell.opened);
    }
}

}  // namespace
