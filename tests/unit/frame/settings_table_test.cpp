// The settings table: its sixteen rows, the search, and the music store's address opened through
// a fake shell.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/settings_table.h"

namespace {

const DWORD N = KX_SETTING_DWORD, S = KX_SETTING_STRING;

TEST(SettingsTable, HoldsTheSixteenRowsInTheOrderOfTheirIdentifiers) {
    const struct {
        const wchar_t* key;
        DWORD group, type, number, folder;
    } rows[16] = {
        {L"StartupWizardShown", 1, N, 0, 0},      {L"UpdateFileTag", 2, N, 1, 0},
        {L"MonitorFolders", 3, N, 1, 0},          {L"SkipSmallerMusicFile", 3, N, 1, 0},
        {L"SmallestMusicFile", 3, N, 100, 0},     {L"SkipSmallerPictureFile", 3, N, 1, 0},
        {L"SmallestPictureWidth", 3, N, 320, 0},  {L"SmallestPictureHeight", 3, N, 240, 0},
        {L"SkipSmallerVideoFile", 3, N, 1, 0},    {L"SmallestVideoFile", 3, N, 500, 0},
        {L"MusicImportFolder", 2, S, 0, 13},      {L"PictureImportFolder", 2, S, 0, 39},
        {L"VideoImportFolder", 2, S, 0, 14},      {L"AutoStartFileTransfer", 2, N, 1, 0},
        {L"ImportExtLib", 2, N, 1, 0},            {L"MStoreURL", 1, S, 0, 0},
    };
    ASSERT_EQ(16u, sizeof(g_kxSettings) / sizeof(g_kxSettings[0]));
    for (DWORD i = 0; i < 16; ++i) {
        const KxSettingRow& r = g_kxSettings[i];
        SCOPED_TRACE(testing::Message() << "row " << i + 1);
        EXPECT_EQ(i + 1, r.id);
        EXPECT_EQ(std::wstring(rows[i].key), r.key);
        EXPECT_EQ(rows[i].group, r.group);
        EXPECT_EQ(rows[i].type, r.type);
        EXPECT_EQ(rows[i].number, r.defaultNumber);
        EXPECT_EQ(rows[i].folder, r.defaultFolder);
        EXPECT_EQ(i == 15, r.defaultString != nullptr) << "only the store's address has a default string";
        EXPECT_EQ(&r, FindSetting(i + 1));
    }
    EXPECT_EQ(nullptr, FindSetting(0));
    EXPECT_EQ(nullptr, FindSetting(17));
    std::wstring url;
    EXPECT_EQ(S_OK, GetMusicStoreUrl(url));
    EXPECT_EQ(std::wstring(L"" KX_MUSIC_STORE_URL_FOR_TEST), url) << "the build's address is compiled in";
}

struct ShellCall {
    HWND hwnd;
    std::wstring verb, file;
    bool noParameters, noDirectory;
    INT show;
};

class RecordingShell : public IKxShellExecute {
public:
    void ShellExecuteW(HWND hwnd, LPCWSTR verb, LPCWSTR file, LPCWSTR parameters, LPCWSTR directory,
                       INT show) override {
        calls.push_back({hwnd, verb ? verb : L"(null)", file ? file : L"(null)", parameters == nullptr,
                         directory == nullptr, show});
    }
    std::vector<ShellCall> calls;
};

TEST(SettingsTable, TheStoreAddressIsReadFromTheFirstRow16AndOpenedOnlyWhenThereIsOne) {
    const KxSettingRow store = {16, L"MStoreURL", 1, S, 0, L"https://store.test/", 0};
    const KxSettingRow other = {16, L"MStoreURL", 1, S, 0, L"https://second.test/", 0};
    const KxSettingRow empty = {16, L"MStoreURL", 1, S, 0, L"", 0};
    const KxSettingRow none = {16, L"MStoreURL", 1, S, 0, nullptr, 0};
    const KxSettingRow number = {16, L"MStoreURL", 1, N, 7, nullptr, 0};
    const KxSettingRow first = {1, L"StartupWizardShown", 1, N, 0, nullptr, 0};
    const struct {
        std::vector<KxSettingRow> rows;
        HRESULT hr;
        const wchar_t* url;  // what the caller's string holds afterwards; null: untouched
    } cases[] = {
        {{first, store, other}, S_OK, L"https://store.test/"},
        {{first}, static_cast<HRESULT>(0x80070002L), nullptr},
        {{}, static_cast<HRESULT>(0x80070002L), nullptr},
        {{number, store}, static_cast<HRESULT>(0x8007000DL), nullptr},
        {{empty}, S_OK, L""},
        {{none}, S_OK, L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "rows " << c.rows.size() << " expected " << std::hex << c.hr);
        const CKxSettingsTable table(c.rows.data(), c.rows.size());
        std::wstring url = L"before";
        EXPECT_EQ(c.hr, table.GetMusicStoreUrl(url));
        EXPECT_EQ(c.url ? c.url : L"before", url);

        RecordingShell shell;
        table.OpenMusicStore(shell);
        if (c.url && *c.url) {
            ASSERT_EQ(1u, shell.calls.size());
            const ShellCall& call = shell.calls[0];
            EXPECT_EQ(nullptr, call.hwnd);
            EXPECT_EQ(L"open", call.verb);
            EXPECT_EQ(c.url, call.file);
            EXPECT_TRUE(call.noParameters && call.noDirectory);
            EXPECT_EQ(1, call.show) << "SW_SHOWNORMAL";
        } else {
            EXPECT_TRUE(shell.calls.empty()) << "no address, nothing opens";
        }
    }
}

}  // namespace
