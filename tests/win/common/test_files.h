// Files and small texts that the Wine tests share: a fetched fixture file's Wine path, a file's
// bytes, a CF_HDROP file list, and a status code as text.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kxtest {

// `name` in the Linux folder `folder` as Wine sees it (Z:); fails the test when it is missing.
std::wstring FixtureFile(const char* folder, const char* name);
std::vector<BYTE> ReadFileBytes(const std::wstring& path);
bool WriteFileBytes(const std::wstring& path, const std::vector<BYTE>& bytes);
// The process's temp folder, with its closing backslash.
std::wstring TempFolder();
// A CF_HDROP block (DROPFILES and the wide names) in movable global memory, the caller's.
HGLOBAL NewFileList(const std::vector<std::wstring>& files);
// A status code as 8 hex digits.
std::string HrText(HRESULT hr);

}  // namespace kxtest
