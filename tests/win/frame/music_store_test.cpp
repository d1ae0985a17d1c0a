// OpenMusicStore against the real shell, with the store's web scheme handled for the test by a
// harmless command that writes the address it was given into a temporary file, so that no browser
// opens. The handler replaces the prefix's own (classes of the machine: Wine reads the scheme's
// class there) for the length of the test.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "frame/settings_table.h"
#include "frame/win32/shell_execute.h"

namespace {

std::wstring ReadAll(const std::wstring& path) {
    HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return L"";
    char buffer[1024];
    DWORD read = 0;
    ReadFile(file, buffer, sizeof(buffer), &read, nullptr);
    CloseHandle(file);
    return std::wstring(buffer, buffer + read);
}

TEST(MusicStore, OpensTheStoreAddressWithTheSchemesHandler) {
    std::wstring url;
    ASSERT_EQ(S_OK, GetMusicStoreUrl(url));
    const std::wstring scheme = url.substr(0, url.find(L':'));
    ASSERT_FALSE(scheme.empty() || scheme.size() == url.size()) << "the address has a scheme";
    const std::wstring key = L"Software\\Classes\\" + scheme + L"\\shell\\open\\command";
    HKEY handler = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, 0,
                                             KEY_READ | KEY_WRITE, nullptr, &handler, nullptr));
    wchar_t before[1024] = {};
    DWORD size = sizeof(before) - sizeof(wchar_t);
    const bool hadOne = RegQueryValueExW(handler, nullptr, nullptr, nullptr, reinterpret_cast<BYTE*>(before),
                                         &size) == ERROR_SUCCESS;

    wchar_t temp[MAX_PATH], out[MAX_PATH];
    ASSERT_NE(0u, GetTempPathW(MAX_PATH, temp));
    ASSERT_NE(0u, GetTempFileNameW(temp, L"kxs", 0, out));
    DeleteFileW(out);
    const std::wstring command = L"cmd.exe /c echo %1> \"" + std::wstring(out) + L"\"";
    auto setCommand = [&](const wchar_t* text) {
        RegSetValueExW(handler, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(text),
                       static_cast<DWORD>((wcslen(text) + 1) * sizeof(wchar_t)));
    };
    setCommand(command.c_str());

    OpenMusicStore(KxWin32ShellExecute());
    std::wstring written;
    for (int i = 0; i < 200 && written.find(L'\n') == std::wstring::npos; ++i) {
        Sleep(50);
        written = ReadAll(out);
    }
    if (hadOne) setCommand(before);
    else RegDeleteValueW(handler, nullptr);
    RegCloseKey(handler);
    for (int i = 0; i < 40 && !DeleteFileW(out) && GetLastError() != ERROR_FILE_NOT_FOUND; ++i) Sleep(50);
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesW(out)) << "no temporary file left";
    EXPECT_EQ(url, written.substr(0, written.find_first_of(L" \r\n")));
}

}  // namespace
