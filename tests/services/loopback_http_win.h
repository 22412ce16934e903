// An HTTP server on a loopback port of its own, one thread a connection.
#pragma once

#include <winsock2.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace kestrelon::testing {

/// /echo answers the request as it came; /delay answers after a second and a half; /entities
/// answers escaped text; /drop closes without an answer; /never keeps the connection and is silent.
class LoopbackHttp {
 public:
  LoopbackHttp() {
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
    listener_ = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int size = sizeof address;
    bind(listener_, reinterpret_cast<sockaddr*>(&address), size);
    getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
    listen(listener_, 8);
    port_ = ntohs(address.sin_port);
    acceptor_ = std::thread([this] { accept_all(); });
  }
  ~LoopbackHttp() {
    stops_ = true;
    closesocket(listener_);
    acceptor_.join();
    for (std::thread& server : servers_) server.join();
    WSACleanup();
  }
  LoopbackHttp(const LoopbackHttp&) = delete;
  LoopbackHttp& operator=(const LoopbackHttp&) = delete;

  /// "127.0.0.1:port/path", without a scheme.
  std::wstring address(const wchar_t* path) const {
    return L"127.0.0.1:" + std::to_wstring(port_) + path;
  }
  int requests() const { return requests_; }

 private:
  void accept_all() {
    for (;;) {
      const SOCKET connection = accept(listener_, nullptr, nullptr);
      if (connection == INVALID_SOCKET) return;
      servers_.emplace_back([this, connection] {
        serve(connection);
        closesocket(connection);
      });
    }
  }

  // Waits for bytes without missing the end of the test; 0 at the end of either.
  int receive(SOCKET connection, char* out, int size) const {
    while (!stops_) {
      fd_set set;
      FD_ZERO(&set);
      FD_SET(connection, &set);
      timeval step{0, 50'000};
      if (select(0, &set, nullptr, nullptr, &step) > 0) return recv(connection, out, size, 0);
    }
    return 0;
  }

  bool read_request(SOCKET connection, std::string& request) const {
    char block[4096];
    for (;;) {
      const size_t end = request.find("\r\n\r\n");
      if (end != std::string::npos && request.size() >= end + 4 + body_length(request)) return true;
      const int count = receive(connection, block, sizeof block);
      if (count <= 0) return false;
      request.append(block, static_cast<size_t>(count));
    }
  }

  static size_t body_length(const std::string& request) {
    std::string lower = request;
    for (char& c : lower) c = static_cast<char>(tolower(c));
    const size_t at = lower.find("content-length: ");
    return at == std::string::npos ? 0 : static_cast<size_t>(atoi(lower.c_str() + at + 16));
  }

  void serve(SOCKET connection) {
    for (std::string request; read_request(connection, request); request.clear()) {
      ++requests_;
      if (request.find(" /drop") != std::string::npos) return;
      if (request.find(" /never") != std::string::npos) {
        char byte;
        receive(connection, &byte, 1);
        return;
      }
      if (request.find(" /delay") != std::string::npos)
        std::this_thread::sleep_for(std::chrono::milliseconds(1500));
      const std::string body = request.find(" /entities") != std::string::npos
                                   ? "&lt;b&gt;a\xC3\xA7&#227;o&amp;#65;"
                                   : request;
      if (answer_bytes(connection, request)) continue;
      const std::string answer =
          "HTTP/1.1 200 OK\r\nContent-Type: text/plain; charset=utf-8\r\n"
          "Content-Length: " +
          std::to_string(body.size()) + "\r\n\r\n" + body;
      send(connection, answer.data(), static_cast<int>(answer.size()), 0);
    }
  }

  // /latin is of the Western page, by its header; /unnamed is, but tells nothing; /gzip is packed,
  // asked for or not.
  static bool answer_bytes(SOCKET connection, const std::string& request) {
    const auto asks = [&](const char* path) { return request.find(path) != std::string::npos; };
    std::string head, body = "pre\xE7o";
    if (asks(" /latin")) {
      head = "Content-Type: text/plain; charset=iso-8859-1\r\n";
    } else if (asks(" /unnamed")) {
      head = "Content-Type: text/plain\r\n";
    } else if (asks(" /gzip")) {
      head = "Content-Type: text/plain; charset=utf-8\r\nContent-Encoding: gzip\r\n";
      const char packed[] =
          "\x1F\x8B\x08\0\0\0\0\0\0\xFF\x01\x06\0\xF9\xFFpre\xC3\xA7o\x02\x66\xA8\x9A\x06\0\0\0";
      body.assign(packed, sizeof packed - 1);
    } else {
      return false;
    }
    const std::string answer = "HTTP/1.1 200 OK\r\n" + head +
                               "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
    send(connection, answer.data(), static_cast<int>(answer.size()), 0);
    return true;
  }

  SOCKET listener_;
  unsigned port_ = 0;
  std::thread acceptor_;
  std::vector<std::thread> servers_;
  std::atomic<bool> stops_ = false;
  std::atomic<int> requests_ = 0;
};

}  // namespace kestrelon::testing
