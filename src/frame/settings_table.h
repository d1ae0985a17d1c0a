// The table of the media library's settings: sixteen names with their groups, value types and
// defaults. The plug-in reads one row of it, the music store's web address, which the tag dialogs
// open in the user's browser.
#pragma once

#include <string>

#include "kx/KxPlatform.h"

// Value types of a row, as the registry numbers them.
enum : DWORD { KX_SETTING_STRING = 1 /* REG_SZ */, KX_SETTING_DWORD = 4 /* REG_DWORD */ };

// Shell folders that give the defaults of the import folders (CSIDL_...).
enum : DWORD { KX_CSIDL_MYMUSIC = 13, KX_CSIDL_MYVIDEO = 14, KX_CSIDL_MYPICTURES = 39 };

enum : DWORD { KX_SETTING_MSTOREURL = 16 };

// One row: seven machine words.
struct KxSettingRow {
    DWORD id;                // 1 to 16, the row's place in the table
    LPCWSTR key;             // the setting's name
    DWORD group;             // 1, 2 or 3
    DWORD type;              // KX_SETTING_DWORD or KX_SETTING_STRING
    DWORD defaultNumber;     // the default of a number row; 0 in string rows
    LPCWSTR defaultString;   // the default of a string row, or null
    DWORD defaultFolder;     // a shell folder that gives the default of a folder row, else 0
};
#if defined(_WIN32) && !defined(_WIN64)
static_assert(sizeof(KxSettingRow) == 7 * 4, "a row is seven 32-bit words");
#endif

extern const KxSettingRow g_kxSettings[16];

// What OpenMusicStore needs of the shell.
class IKxShellExecute {
public:
    // ShellExecuteW; the result says nothing the caller looks at.
    virtual void ShellExecuteW(HWND hwnd, LPCWSTR verb, LPCWSTR file, LPCWSTR parameters, LPCWSTR directory,
                               INT showCommand) = 0;

protected:
    ~IKxShellExecute() = default;
};

// A table of settings to search: the constant table, or another for tests.
class CKxSettingsTable {
public:
    CKxSettingsTable() : CKxSettingsTable(g_kxSettings, 16) {}
    CKxSettingsTable(const KxSettingRow* rows, size_t count) : m_rows(rows), m_count(count) {}

    // The first row with this identifier, or null.
    const KxSettingRow* FindSetting(DWORD id) const;
    // 0x80070002 without row 16, 0x8007000d when it is not a string row, else 0 with its default.
    HRESULT GetMusicStoreUrl(std::wstring& out) const;
    // Opens the store's address in the browser; nothing when there is no address.
    void OpenMusicStore(IKxShellExecute& shell) const;

private:
    const KxSettingRow* m_rows;
    size_t m_count;
};

// The same on the constant table.
const KxSettingRow* FindSetting(DWORD id);
HRESULT GetMusicStoreUrl(std::wstring& out);
void OpenMusicStore(IKxShellExecute& shell);
