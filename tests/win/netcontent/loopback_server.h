// A one-shot HTTP server on the loopback address for the art service's tests: it accepts one
// connection, keeps the request line, waits until the test lets it answer, and answers 200 with
// the given body.
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

}  // namespace kxtest
