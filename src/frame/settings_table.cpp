#include "frame/settings_table.h"

// The store's address comes from the build (the cache variable KX_MUSIC_STORE_URL).
#ifndef KX_MUSIC_STORE_URL
#error "KX_MUSIC_STORE_URL is set by the build"
#endif

const KxSettingRow g_kxSettings[16] = {
    {1, L"StartupWizardShown", 1, KX_SETTING_DWORD, 0, nullptr, 0},
    {2, L"UpdateFileTag", 2, KX_SETTING_DWORD, 1, nullptr, 0},
    {3, L"MonitorFolders", 3, KX_SETTING_DWORD, 1, nullptr, 0},
    {4, L"SkipSmallerMusicFile", 3, KX_SETTING_DWORD, 1, nullptr, 0},
    {5, L"SmallestMusicFile", 3, KX_SETTING_DWORD, 100, nullptr, 0},
    {6, L"SkipSmallerPictureFile", 3, KX_SETTING_DWORD, 1, nullptr, 0},
    {7, L"SmallestPictureWidth", 3, KX_SETTING_DWORD, 320, nullptr, 0},
    {8, L"SmallestPictureHeight", 3, KX_SETTING_DWORD, 240, nullptr, 0},
    {9, L"SkipSmallerVideoFile", 3, KX_SETTING_DWORD, 1, nullptr, 0},
    {10, L"SmallestVideoFile", 3, KX_SETTING_DWORD, 500, nullptr, 0},
    {11, L"MusicImportFolder", 2, KX_SETTING_STRING, 0, nullptr, KX_CSIDL_MYMUSIC},
    {12, L"PictureImportFolder", 2, KX_SETTING_STRING, 0, nullptr, KX_CSIDL_MYPICTURES},
    {13, L"VideoImportFolder", 2, KX_SETTING_STRING, 0, nullptr, KX_CSIDL_MYVIDEO},
    {14, L"AutoStartFileTransfer", 2, KX_SETTING_DWORD, 1, nullptr, 0},
    {15, L"ImportExtLib", 2, KX_SETTING_DWORD, 1, nullptr, 0},
    {16, L"MStoreURL", 1, KX_SETTING_STRING, 0, L"" KX_MUSIC_STORE_URL, 0},
};

const KxSettingRow* CKxSettingsTable::FindSetting(DWORD id) const {
    for (size_t i = 0; i < m_count; ++i) {
        if (m_rows[i].id == id) return &m_rows[i];
    }
    return nullptr;
}

HRESULT CKxSettingsTable::GetMusicStoreUrl(std::wstring& out) const {
    const KxSettingRow* row = FindSetting(KX_SETTING_MSTOREURL);
    if (!row) return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
    if (row->type != KX_SETTING_STRING) return HRESULT_FROM_WIN32(13L /* ERROR_INVALID_DATA */);
    // a string row without a default reads as the empty address
    out = row->defaultString ? row->defaultString : L"";
    return S_OK;
}

void CKxSettingsTable::OpenMusicStore(IKxShellExecute& shell) const {
    std::wstring address;
    GetMusicStoreUrl(address);  // a failure leaves the address empty
    if (address.empty()) return;
    shell.ShellExecuteW(nullptr, L"open", address.c_str(), nullptr, nullptr, 1 /* SW_SHOWNORMAL */);
}

const KxSettingRow* FindSetting(DWORD id) { return CKxSettingsTable().FindSetting(id); }
HRESULT GetMusicStoreUrl(std::wstring& out) { return CKxSettingsTable().GetMusicStoreUrl(out); }
void OpenMusicStore(IKxShellExecute& shell) { CKxSettingsTable().OpenMusicStore(shell); }
