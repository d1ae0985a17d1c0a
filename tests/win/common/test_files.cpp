// Files and small texts that the Wine tests share.
#include "tests/win/common/test_files.h"

#include <shlobj.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

namespace kxtest {

std::wstring FixtureFile(const char* folder, const char* name) {
    std::wstring path = L"Z:";
    for (const char* p = folder; *p; ++p) path += *p == '/' ? L'\\' : static_cast<WCHAR>(*p);
    path += L'\\';
    for (const char* p = name; *p; ++p) path += static_cast<WCHAR>(*p);
    if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES)
        ADD_FAILURE() << name << " is missing from " << folder << ": its ctest fixture fetches it";
    return path;
}

std::vector<BYTE> ReadFileBytes(const std::wstring& path) {
    std::vector<BYTE> bytes;
    FILE* file = _wfopen(path.c_str(), L"rb");
    if (!file) return bytes;
    BYTE buffer[65536];
    for (size_t n; (n = fread(buffer, 1, sizeof buffer, file)) > 0;) bytes.insert(bytes.end(), buffer, buffer + n);
    fclose(file);
    return bytes;
}

bool WriteFileBytes(const std::wstring& path, const std::vector<BYTE>& bytes) {
    FILE* file = _wfopen(path.c_str(), L"wb");
    if (!file) return false;
    const bool ok = bytes.empty() || fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return fclose(file) == 0 && ok;
}

std::wstring TempFolder() {
    WCHAR temp[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temp);
    return temp;
}

HGLOBAL NewFileList(const std::vector<std::wstring>& files) {
    std::wstring list;
    for (const std::wstring& f : files) list += f + L'\0';
    list += L'\0';
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + list.size() * sizeof(WCHAR));
    auto* drop = static_cast<DROPFILES*>(GlobalLock(block));
    drop->pFiles = sizeof(DROPFILES);
    drop->fWide = TRUE;
    memcpy(drop + 1, list.data(), list.size() * sizeof(WCHAR));
    GlobalUnlock(block);
    return block;
}

std::string HrText(HRESULT hr) {
    char code[12];
    std::snprintf(code, sizeof code, "%08X", static_cast<unsigned>(hr));
    return code;
}

}  // namespace kxtest
