// The shared helpers of loopback_server.h.
#include "tests/win/netcontent/loopback_server.h"

#include <ws2tcpip.h>

#include "tests/win/common/plugin_loader.h"

namespace kxtest {

LoopbackServer::LoopbackServer(std::string body)
    : m_body(std::move(body)), m_answer(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      m_received(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
    m_listener = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int length = sizeof(address);
    if (bind(m_listener, reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0 && listen(m_listener, 1) == 0 &&
        getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &length) == 0)
        m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { Serve(); });
}

LoopbackServer::~LoopbackServer() {
    Answer();
    closesocket(m_listener);  // ends an accept that is still waiting
    m_thread.join();
    CloseHandle(m_answer);
    CloseHandle(m_received);
    WSACleanup();
}

void LoopbackServer::Serve() {
    const SOCKET client = accept(m_listener, nullptr, nullptr);
    if (client == INVALID_SOCKET) return;
    std::string request;
    char chunk[1024];
    while (request.find("\r\n\r\n") == std::string::npos) {
        const int got = recv(client, chunk, sizeof(chunk), 0);
        if (got <= 0) break;
        request.append(chunk, got);
    }
    m_requestLine = request.substr(0, request.find("\r\n"));
    SetEvent(m_received);
    WaitForSingleObject(m_answer, INFINITE);
    const std::string answer = "HTTP/1.0 200 OK\r\nContent-Type: image/png\r\nContent-Length: " +
                               std::to_string(m_body.size()) + "\r\nConnection: close\r\n\r\n" + m_body;
    send(client, answer.data(), static_cast<int>(answer.size()), 0);
    shutdown(client, SD_SEND);
    closesocket(client);
}

ScopedArtService::ScopedArtService(unsigned short port, const std::wstring& path) {
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\KxNetContent", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    const std::wstring url = L"http://127.0.0.1:" + std::to_wstring(port) + path;
    RegSetValueExW(key, L"ArtServiceUrl", 0, REG_SZ, reinterpret_cast<const BYTE*>(url.c_str()),
                   DWORD((url.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
}

ScopedArtService::~ScopedArtService() { RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\KxNetContent"); }


}  // namespace kxtest
