// What the content manager's Wine tests share: a one-shot HTTP server on the loopback address
// (it accepts one connection, keeps the request line, waits until the test lets it answer, and
// answers 200 with the given body) and the art service configured for it while a test runs.
#pragma once

#include <winsock2.h>
#include <windows.h>

#include <string>
#include <thread>

namespace kxtest {

class LoopbackServer {
public:
    explicit LoopbackServer(std::string body);
    ~LoopbackServer();  // answers if it has not yet, and joins its thread
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    unsigned short Port() const { return m_port; }
    // Lets the server answer the request it holds (or the next one).
    void Answer() { SetEvent(m_answer); }
    // The request line it received ("GET /path HTTP/1.1"), once the request has come in.
    bool WaitForRequest(DWORD ms) { return WaitForSingleObject(m_received, ms) == WAIT_OBJECT_0; }
    std::string RequestLine() const { return m_requestLine; }

private:
    void Serve();

    std::string m_body;
    SOCKET m_listener = INVALID_SOCKET;
    unsigned short m_port = 0;
    HANDLE m_answer;
    HANDLE m_received;
    std::string m_requestLine;
    std::thread m_thread;
};

// The component's art service in the user's configuration for the object's life: the template
// "http://127.0.0.1:<port><path>".
class ScopedArtService {
public:
    ScopedArtService(unsigned short port, const std::wstring& path);
    ~ScopedArtService();
    ScopedArtService(const ScopedArtService&) = delete;
    ScopedArtService& operator=(const ScopedArtService&) = delete;
};


}  // namespace kxtest
