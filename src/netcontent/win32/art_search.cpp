// The three steps of the art search and the configuration they read.
#include "netcontent/win32/art_search.h"

#include "base/owners.h"
#include "netcontent/side_picture.h"
#include "netcontent/service_url.h"
#include "netcontent/tag_pictures.h"
#include "netcontent/win32/file_source.h"

namespace kxnet {
namespace {

void CloseKey(HKEY key) { RegCloseKey(key); }
using CRegKey = CKxUnique<HKEY, &CloseKey>;

bool ReadString(HKEY root, std::wstring* out) {
    wchar_t text[2048];
    DWORD bytes = sizeof(text) - sizeof(wchar_t);
    DWORD type = 0;
    CRegKey key;
    if (RegOpenKeyExW(root, kConfigKey, 0, KEY_READ, key.Put()) != ERROR_SUCCESS) return false;
    const LONG result =
        RegQueryValueExW(key.Get(), kArtServiceValue, nullptr, &type, reinterpret_cast<BYTE*>(text), &bytes);
    if (result != ERROR_SUCCESS || type != REG_SZ) return false;
    text[bytes / sizeof(wchar_t)] = 0;  // a stored value need not carry its end mark
    out->assign(text);
    return !out->empty();
}

}  // namespace

std::wstring ReadArtServiceTemplate() {
    std::wstring value;
    if (ReadString(HKEY_CURRENT_USER, &value) || ReadString(HKEY_LOCAL_MACHINE, &value)) return value;
    return {};
}

ArtFound FindArt(const std::wstring& trackPath, const std::wstring& serviceTemplate, const volatile LONG* cancelled) {
    ArtFound found;
    for (const std::wstring& candidate : SidePictureCandidates(trackPath)) {
        if (*cancelled) return {};
        if (ReadWholeFile(candidate, kMaxPictureBytes, &found.bytes)) {
            found.source = kSourceBeside;
            return found;
        }
    }
    if (*cancelled) return {};
    const FileSource track(trackPath);
    if (track.Ok() && ReadEmbeddedPicture(track, &found.bytes)) {
        found.source = kSourceEmbedded;
        return found;
    }
    const std::wstring url = serviceTemplate.empty() ? std::wstring() : ExpandArtServiceUrl(serviceTemplate, trackPath);
    if (!url.empty() && !*cancelled && FetchFromService(url, cancelled, &found.bytes)) {
        found.source = kSourceService;
        return found;
    }
    return {};
}

}  // namespace kxnet
