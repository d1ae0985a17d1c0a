// Path parts by the shell's rules.
#include "imaging/path_parts.h"

const WCHAR* KxPathFindFileName(const WCHAR* path) {
    if (!path) return nullptr;
    const WCHAR* name = path;
    for (const WCHAR* p = path; *p; ++p) {
        if ((*p == L'\\' || *p == L'/' || *p == L':') && p[1] && p[1] != L'\\' && p[1] != L'/') name = p + 1;
    }
    return name;
}

const WCHAR* KxPathFindExtension(const WCHAR* path) {
    if (!path) return nullptr;
    const WCHAR* dot = nullptr;
    const WCHAR* p = path;
    // The shell itself resets only at '\' and space; '/' is taken as a separator too, so that a
    // dot in a folder name never reads as the file's extension.
    for (; *p; ++p) {
        if (*p == L'\\' || *p == L'/' || *p == L' ')
            dot = nullptr;
        else if (*p == L'.')
            dot = p;
    }
    return dot ? dot : p;
}
