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
    const CInternetHandle session(InternetOpenW(L"KxNetContent/1.0", INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0));
    if (!session) return false;
    // Bounded waits: Close waits for the worker, so a silent server must not hold it long.
    DWORD timeout = 5000;
    InternetSetOptionW(session.Get(), INTERNET_OPTION_CONNECT_TIMEOUT, &timeout, sizeof(timeout));
    InternetSetOptionW(session.Get(), INTERNET_OPTION_RECEIVE_TIMEOUT, &timeout, sizeof(timeout));
    InternetSetOptionW(session.Get(), INTERNET_OPTION_SEND_TIMEOUT, &timeout, sizeof(timeout));
    const DWORD flags = INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_COOKIES |
                        INTERNET_FLAG_NO_UI | INTERNET_FLAG_NO_AUTH;
    const CInternetHandle request(InternetOpenUrlW(session.Get(), url.c_str(), nullptr, 0, flags, 0));
    if (!request || *cancelled) return false;
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
