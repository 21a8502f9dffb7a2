#include "tests/browser/server/Client.h"

#include <array>
#include <csignal>
#include <fstream>
#include <stdexcept>

#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket/stream.hpp>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace browser_tests {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using asio::ip::tcp;
using boost::system::error_code;

namespace {

tcp::endpoint Local(std::uint16_t port) { return {asio::ip::make_address("127.0.0.1"), port}; }

std::string HostOf(std::uint16_t port) { return "127.0.0.1:" + std::to_string(port); }

}  // namespace

Served::Served(const std::vector<std::string>& arguments) {
  std::vector<std::string> words = {TEST_BINARY_DIR "/stockrpt", "serve", "--listen", "127.0.0.1:0", "--page",
                                    TEST_SOURCE_DIR "/page"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
  posix_spawn_file_actions_t actions{};
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_addclosefrom_np(&actions, 3);
  const int error = posix_spawn(&process_, pointers[0], &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  if (error != 0) throw std::runtime_error("stockrpt cannot be started");
  std::string line;
  for (char character = 0; read(ends[0], &character, 1) == 1 && character != '\n';) line += character;
  close(ends[0]);
  const std::size_t colon = line.rfind(':');
  if (colon == std::string::npos) throw std::runtime_error("stockrpt serve did not start");
  port_ = static_cast<std::uint16_t>(std::stoi(line.substr(colon + 1)));
}

Served::~Served() {
  kill(process_, SIGTERM);
  waitpid(process_, nullptr, 0);
}

std::vector<int> Served::Workers() const {
  const std::string number = std::to_string(process_);
  std::ifstream children("/proc/" + number + "/task/" + number + "/children");
  std::vector<int> workers;
  for (int worker = 0; children >> worker;) workers.push_back(worker);
  return workers;
}

std::string SendRaw(std::uint16_t port, const std::string& bytes) {
  asio::io_context context;
  tcp::socket socket(context);
  socket.connect(Local(port));
  error_code error;
  asio::write(socket, asio::buffer(bytes), error);
  std::string answer;
  asio::read(socket, asio::dynamic_buffer(answer), error);
  return answer;
}

HttpAnswer Ask(std::uint16_t port, const std::string& method, const std::string& target,
               const std::string& body, const std::string& cookie) {
  asio::io_context context;
  tcp::socket socket(context);
  socket.connect(Local(port));
  http::request<http::string_body> request(http::string_to_verb(method), target, 11);
  request.set(http::field::host, HostOf(port));
  if (method == "POST") request.set(http::field::origin, "http://" + HostOf(port));
  if (!cookie.empty()) request.set(http::field::cookie, cookie);
  request.set(http::field::content_type, "application/json");
  request.body() = body;
  request.prepare_payload();
  http::write(socket, request);
  beast::flat_buffer buffer;
  http::response<http::string_body> response;
  http::read(socket, buffer, response);
  const std::string header(response[http::field::set_cookie]);
  return {
      .status = response.result_int(), .body = response.body(), .cookie = header.substr(0, header.find(';'))};
}

class Page::Socket {
 public:
  Socket(std::uint16_t port, const Opening& opening) : stream_(context_) {
    beast::get_lowest_layer(stream_).connect(Local(port));
    const std::string origin = opening.origin.empty() ? "http://" + HostOf(port) : opening.origin;
    stream_.set_option(beast::websocket::stream_base::decorator([&](auto& request) {
      request.set(http::field::origin, origin);
      if (!opening.cookie.empty()) request.set(http::field::cookie, opening.cookie);
    }));
    stream_.read_message_max(64UL * 1024 * 1024);
    beast::websocket::response_type response;
    error_code error;
    stream_.handshake(response, HostOf(port), "/ws", error);
    status_ = response.result_int();
    open_ = !error;
  }

  unsigned Status() const { return status_; }
  bool IsOpen() const { return open_; }

  void Send(const std::string& text) {
    error_code error;
    stream_.write(asio::buffer(text), error);
    if (error) open_ = false;
  }

  Json Read() {
    if (!open_) return {{"type", "closed"}};
    beast::flat_buffer buffer;
    bool done = false;
    stream_.async_read(buffer, [&](error_code error, std::size_t) {
      done = true;
      if (error) open_ = false;
    });
    context_.restart();
    context_.run_for(std::chrono::seconds(10));
    if (!done) {
      Drop();
      context_.run();
      return {{"type", "silence"}};
    }
    if (!open_) return {{"type", "closed"}};
    return Json::parse(beast::buffers_to_string(buffer.data()));
  }

  void Drop() {
    beast::get_lowest_layer(stream_).close();
    open_ = false;
  }

 private:
  asio::io_context context_;
  beast::websocket::stream<beast::tcp_stream> stream_;
  unsigned status_ = 0;
  bool open_ = false;
};

Page::Page(std::uint16_t port)
    : Page(port, [&] {
        const HttpAnswer start = Ask(port, "GET", "/api/start");
        return Opening{.cookie = start.cookie,
                       .origin = {},
                       .session = {},
                       .token = Json::parse(start.body)["token"].get<std::string>()};
      }()) {}

Page::Page(std::uint16_t port, const Opening& opening)
    : socket_(std::make_unique<Socket>(port, opening)), opening_(opening) {
  if (!IsOpen()) return;
  Json hello = {{"token", opening.token}, {"protocol", 1}};
  if (!opening.session.empty()) hello["session"] = opening.session;
  const Json welcome = Do("hello", hello);
  if (welcome["type"] == "welcome") session_ = welcome["session"].get<std::string>();
}

Page::~Page() = default;

bool Page::IsOpen() const { return socket_->IsOpen(); }
unsigned Page::Status() const { return socket_->Status(); }
void Page::SendText(const std::string& text) { socket_->Send(text); }
void Page::Drop() { socket_->Drop(); }

int Page::Send(const std::string& type, Json fields) {
  fields["type"] = type;
  fields["id"] = ++lastId_;
  SendText(browser::Json(fields).dump());
  return lastId_;
}

Json Page::Next() { return socket_->Read(); }

Json Page::Await(const std::string& type) {
  passed_.clear();
  while (true) {
    Json message = Next();
    if (message["type"] == type || message["type"] == "closed" || message["type"] == "silence")
      return message;
    passed_.push_back(std::move(message));
  }
}

Json Page::Do(const std::string& type, Json fields) {
  const int id = Send(type, std::move(fields));
  passed_.clear();
  while (true) {
    Json message = Next();
    if (message.value("re", 0) == id || message["type"] == "closed" || message["type"] == "silence") {
      return message;
    }
    passed_.push_back(std::move(message));
  }
}

}  // namespace browser_tests
