#include "tests/win/common/skin_recorder.h"

#include <cstdio>
#include <string>

#include "tests/win/common/plugin_loader.h"

namespace kxtest {

SkinRecorder::SkinRecorder(DWORD_PTR refuse) {
    wchar_t dir[MAX_PATH] = {}, file[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, dir);
    GetTempFileNameW(dir, L"khk", 0, file);  // creates the file empty
    m_log = file;
    SetEnvironmentVariableW(L"KX_HOOK_LOG", m_log.c_str());
    SetEnvironmentVariableA("KX_HOOK_REFUSE", refuse ? std::to_string(refuse).c_str() : nullptr);
    SetDllDirectoryW((ExeDir() + L"skin").c_str());
}

SkinRecorder::~SkinRecorder() {
    SetDllDirectoryW(nullptr);
    SetEnvironmentVariableW(L"KX_HOOK_LOG", nullptr);
    SetEnvironmentVariableA("KX_HOOK_REFUSE", nullptr);
    DeleteFileW(m_log.c_str());
}

std::vector<std::string> SkinRecorder::Lines() const {
    std::vector<std::string> lines;
    FILE* f = _wfopen(m_log.c_str(), L"rb");
    if (!f) return lines;
    char buffer[4096];
    while (std::fgets(buffer, sizeof(buffer), f)) {
        std::string line(buffer);
        if (!line.empty() && line.back() == '\n') line.pop_back();
        lines.push_back(line);
    }
    std::fclose(f);
    return lines;
}

std::vector<std::string> SkinRecorder::LinesStartingWith(const std::string& prefix) const {
    std::vector<std::string> out;
    for (const auto& l : Lines())
        if (l.compare(0, prefix.size(), prefix) == 0) out.push_back(l);
    return out;
}

}  // namespace kxtest
