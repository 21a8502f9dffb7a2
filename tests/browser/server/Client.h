#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "browser/protocol/Json.h"

namespace browser_tests {

using browser::Json;

// A running `stockrpt serve` on a free port; ended with this object.
class Served {
 public:
  // Arguments after `serve`; the page and the address are given.
  explicit Served(const std::vector<std::string>& arguments);
  Served(const Served&) = delete;
  Served& operator=(const Served&) = delete;
  Served(Served&&) = delete;
  Served& operator=(Served&&) = delete;
  ~Served();

  std::uint16_t Port() const { return port_; }
  // The processes of its sessions.
  std::vector<int> Workers() const;

 private:
  int process_ = -1;
  std::uint16_t port_ = 0;
};

struct HttpAnswer {
  unsigned status = 0;
  std::string body;
  std::string cookie;  // the pair to send back
};

// Sends bytes as they are and reads what comes back until the other side ends.
std::string SendRaw(std::uint16_t port, const std::string& bytes);
HttpAnswer Ask(std::uint16_t port, const std::string& method, const std::string& target,
               const std::string& body = {}, const std::string& cookie = {});

// A page without a page: a WebSocket that speaks the protocol.
class Page {
 public:
  struct Opening {
    std::string cookie;
    std::string origin;  // empty: the right one
    std::string session;
    std::string token;
  };

  // Gets cookie and token, connects and says hello.
  explicit Page(std::uint16_t port);
  Page(std::uint16_t port, const Opening& opening);
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;
  Page(Page&&) = delete;
  Page& operator=(Page&&) = delete;
  ~Page();

  bool IsOpen() const;
  // The HTTP status with which the WebSocket was refused, 101 when it was not.
  unsigned Status() const;
  const Opening& How() const { return opening_; }
  std::string Session() const { return session_; }

  void SendText(const std::string& text);
  // Sends a command and answers its number.
  int Send(const std::string& type, Json fields = Json::object());
  // The next message; a message of type "closed" once the connection has ended, "silence" after ten seconds.
  Json Next();
  // Reads on until a message of this type comes, or the end.
  Json Await(const std::string& type);
  // Sends and reads on until the answer; what came before it is in Passed.
  Json Do(const std::string& type, Json fields = Json::object());
  const std::vector<Json>& Passed() const { return passed_; }
  // Goes without a word.
  void Drop();

 private:
  class Socket;

  std::unique_ptr<Socket> socket_;
  Opening opening_;
  std::string session_;
  std::vector<Json> passed_;
  int lastId_ = 0;
};

}  // namespace browser_tests
