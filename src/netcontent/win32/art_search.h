// The search the content manager runs for one track, on its worker thread: a picture beside the
// track, then the picture in the track's own tags, then the configured art service.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "netcontent/net_content_mgr.h"

namespace kxnet {

// Where the configuration lies: HKEY_CURRENT_USER first, then HKEY_LOCAL_MACHINE, key
// "Software\KxNetContent", REG_SZ value "ArtServiceUrl" (see service_url.h for the template).
constexpr wchar_t kConfigKey[] = L"Software\\KxNetContent";
constexpr wchar_t kArtServiceValue[] = L"ArtServiceUrl";

// The configured template, empty when none is configured.
std::wstring ReadArtServiceTemplate();

struct ArtFound {
    NetContentSource source = kSourceNone;
    std::vector<uint8_t> bytes;
};

// The art of `trackPath`. `cancelled` is polled between the steps and while the service answers;
// once it is not 0 the search gives up and answers nothing.
ArtFound FindArt(const std::wstring& trackPath, const std::wstring& serviceTemplate, const volatile LONG* cancelled);

// The body of an HTTP 200 answer for `url` (WinINet, no cache, no cookies, no user interface,
// 5-second time-outs), at most kMaxPictureBytes; false for any other answer or a cancel.
bool FetchFromService(const std::wstring& url, const volatile LONG* cancelled, std::vector<uint8_t>* bytes);

}  // namespace kxnet
