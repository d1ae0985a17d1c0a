// The name rule of side_picture.h.
#include "netcontent/side_picture.h"

namespace kxnet {

std::vector<std::wstring> SidePictureCandidates(const std::wstring& trackPath) {
    static const wchar_t* const kNames[] = {L"cover", L"folder", L"front"};
    static const wchar_t* const kExtensions[] = {L".jpg", L".jpeg", L".png", L".bmp", L".gif"};
    std::vector<std::wstring> out;
    const size_t slash = trackPath.find_last_of(L"\\/");
    if (slash == std::wstring::npos || slash + 1 == trackPath.size()) return out;  // no folder, or no file name
    const std::wstring folder = trackPath.substr(0, slash + 1);
    for (const wchar_t* name : kNames)
        for (const wchar_t* extension : kExtensions) out.push_back(folder + name + extension);
    return out;
}

}  // namespace kxnet
