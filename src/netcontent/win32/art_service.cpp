// The art service's request through WinINet.
#include <windows.h>
#include <wininet.h>

#include "base/owners.h"
#include "netcontent/tag_pictures.h"
#include "netcontent/win32/art_search.h"

namespace kxnet {
namespace {

void CloseInternet(HINTERNET h) { InternetCloseHandle(h); }
using CInternetHandle = CKxUnique<HINTERNET, &CloseInternet>;

}  // namespace

bool FetchFromService(const std::wstring& url, const volatile LONG* cancelled, std::vector<uint8_t>* bytes) {
    wchar_t host[256] = {}, path[2048] = {};
    URL_COMPONENTSW parts = {sizeof(parts)};
    parts.lpszHostName = host;
    parts.dwHostNameLength = 256;
    parts.lpszUrlPath = path;
    parts.dwUrlPathLength = 2048;
    parts.dwExtraInfoLength = 1;  // the query stays part of the path
    if (!InternetCrackUrlW(url.c_str(), 0, 0, &parts)) return false;
    std::wstring object = path;
    if (parts.lpszExtraInfo) object.append(parts.lpszExtraInfo, parts.dwExtraInfoLength);

    const CInternetHandle session(InternetOpenW(L"KxNetContent/1.0", INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0));
    if (!session) return false;
    const CInternetHandle connection(InternetConnectW(session.Get(), host, parts.nPort, nullptr, nullptr,
                                                      INTERNET_SERVICE_HTTP, 0, 0));
    if (!connection) return false;
    DWORD flags = INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_COOKIES | INTERNET_FLAG_NO_UI |
                  INTERNET_FLAG_NO_AUTH;
    if (parts.nScheme == INTERNET_SCHEME_HTTPS) flags |= INTERNET_FLAG_SECURE;
    const CInternetHandle request(
        HttpOpenRequestW(connection.Get(), L"GET", object.c_str(), nullptr, nullptr, nullptr, flags, 0));
    if (!request) return false;
    // Bounded waits, set on the request itself: Close waits for the worker, so a silent server
    // holds it at most this long.
    DWORD timeout = 5000;
    InternetSetOptionW(request.Get(), INTERNET_OPTION_CONNECT_TIMEOUT, &timeout, sizeof(timeout));
    InternetSetOptionW(request.Get(), INTERNET_OPTION_RECEIVE_TIMEOUT, &timeout, sizeof(timeout));
    InternetSetOptionW(request.Get(), INTERNET_OPTION_SEND_TIMEOUT, &timeout, sizeof(timeout));
    if (!HttpSendRequestW(request.Get(), nullptr, 0, nullptr, 0) || *cancelled) return false;
    DWORD status = 0, length = sizeof(status);
    if (!HttpQueryInfoW(request.Get(), HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER, &status, &length, nullptr) ||
        status != 200)
        return false;
    bytes->clear();
    uint8_t chunk[16384];
    for (;;) {
        if (*cancelled) return false;
        DWORD got = 0;
        if (!InternetReadFile(request.Get(), chunk, sizeof(chunk), &got)) return false;
        if (got == 0) break;
        if (bytes->size() + got > kMaxPictureBytes) return false;
        bytes->insert(bytes->end(), chunk, chunk + got);
    }
    return !bytes->empty();
}

}  // namespace kxnet
