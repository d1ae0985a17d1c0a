// The path splitting of the breadcrumb bars.
#include "controls/breadcrumb_path.h"

std::wstring KxBoundedCrumbPath(LPCWSTR path) {
    std::wstring bounded;
    if (!path) return bounded;
    for (size_t i = 0; i + 1 < kKxCrumbPathBuffer && path[i]; ++i) bounded.push_back(path[i]);
    return bounded;
}

std::vector<std::wstring> KxSplitCrumbPath(LPCWSTR path) {
    std::vector<std::wstring> names;
    std::wstring current;
    for (WCHAR c : KxBoundedCrumbPath(path)) {
        if (c != L'\\') {
            current.push_back(c);
        } else if (!current.empty()) {
            names.push_back(current);
            current.clear();
        }
    }
    if (!current.empty()) names.push_back(current);
    return names;
}
