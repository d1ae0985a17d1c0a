#include "tests/win/common/skin_recorder.h"


#include "tests/win/common/plugin_loader.h"

namespace kxtest {

SkinRecorder::SkinRecorder(const std::string& refuse) {
    wchar_t dir[MAX_PATH] = {}, file[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, dir);
    GetTempFileNameW(dir, L"khk", 0, file);
    m_log = file;
    Clear();
    SetEnvironmentVariableW(L"KX_HOOK_LOG", m_log.c_str());
    SetEnvironmentVariableA("KX_HOOK_REFUSE", refuse.empty() ? nullptr : refuse.c_str());
    SetDllDirectoryW((ExeDir() + L"skin").c_str());
}

SkinRecorder::~SkinRecorder() {
    SetDllDirectoryW(nullptr);
    SetEnvironmentVariableW(L"KX_HOOK_LOG", nullptr);
    SetEnvironmentVariableA("KX_HOOK_REFUSE", nullptr);
    DeleteFileW(m_log.c_str());
}

void SkinRecorder::Clear() const {
    HANDLE f = CreateFileW(m_log.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (f != INVALID_HANDLE_VALUE) CloseHandle(f);
}

std::vector<std::string> SkinRecorder::Lines() const {
    std::vector<std::string> lines;
    HANDLE f = CreateFileW(m_log.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    if (f == INVALID_HANDLE_VALUE) return lines;
    std::string all;
    char buffer[4096];
    DWORD read = 0;
    while (ReadFile(f, buffer, sizeof(buffer), &read, nullptr) && read > 0) all.append(buffer, read);
    CloseHandle(f);
    size_t start = 0;
    while (start < all.size()) {
        size_t end = all.find('\n', start);
        if (end == std::string::npos) end = all.size();
        lines.push_back(all.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::vector<std::string> SkinRecorder::LinesStartingWith(const std::string& prefix) const {
    std::vector<std::string> out;
    for (const auto& l : Lines())
        if (l.compare(0, prefix.size(), prefix) == 0) out.push_back(l);
    return out;
}

}  // namespace kxtest
