// The recording skinning library (tests/win/skin_double) made reachable for one test: its folder joins
// the library search path and its log goes to a fresh temporary file. Without a SkinRecorder the
// library is not found, as on a machine without the skin.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kxtest {

class SkinRecorder {
public:
    // `refuse`: one operation the library answers with 0 (0: none).
    explicit SkinRecorder(DWORD_PTR refuse = 0);
    ~SkinRecorder();
    SkinRecorder(const SkinRecorder&) = delete;
    SkinRecorder& operator=(const SkinRecorder&) = delete;

    // Every line the library wrote so far: "load", "free", "call op=... ", "static id=...".
    std::vector<std::string> Lines() const;
    // The lines that begin with `prefix`.
    std::vector<std::string> LinesStartingWith(const std::string& prefix) const;

private:
    std::wstring m_log;
};

}  // namespace kxtest
