// The parent process: takes connections, reads requests, and hands each to the doorkeeper or, as a WebSocket,
// to the hub. One thread does all of it; only passwords are looked at on another one.
#include <csignal>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/thread_pool.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket/rfc6455.hpp>
#include <spdlog/sinks/stdout_color_sinks.h>
#include <spdlog/spdlog.h>

#include "browser/protocol/Command.h"
#include "browser/server/Doorkeeper.h"
#include "browser/server/Hub.h"
#include "browser/server/PageSocket.h"
#include "browser/server/Serve.h"
#include "platform/value/Error.h"

namespace browser {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using asio::ip::tcp;
using boost::system::error_code;

constexpr std::size_t kLargestBody = 16UL * 1024;
constexpr std::size_t kLargestHeader = 16UL * 1024;
constexpr std::chrono::seconds kSlowest{30};
constexpr std::chrono::milliseconds kTick{250};

struct House {
  Doorkeeper& door;
  Hub& hub;
};

// One connection until it ends or becomes a WebSocket.
class Connection : public std::enable_shared_from_this<Connection> {
 public:
  Connection(tcp::socket socket, House house, std::shared_ptr<void> seat)
      : stream_(std::move(socket)), house_(house), seat_(std::move(seat)) {}

  void Read() {
    parser_.emplace();
    parser_->body_limit(kLargestBody);
    parser_->header_limit(kLargestHeader);
    stream_.expires_after(kSlowest);
    http::async_read(stream_, buffer_, *parser_,
                     [self = shared_from_this()](error_code error, std::size_t) { self->OnRead(error); });
  }

 private:
  void OnRead(error_code error);
  HttpQuestion Question(const http::request<http::string_body>& request) const;
  void Reply(HttpReply reply, bool isHead, bool keepAlive);

  beast::tcp_stream stream_;
  House house_;
  std::shared_ptr<void> seat_;
  beast::flat_buffer buffer_;
  std::optional<http::request_parser<http::string_body>> parser_;
  std::shared_ptr<http::response<http::string_body>> response_;
};

void Connection::OnRead(error_code error) {
  if (error == http::error::body_limit || error == http::error::header_limit) {
    return Reply({.status = error == http::error::body_limit ? 413U : 431U,
                  .type = "application/json",
                  .text = "{\"error\":\"the request is too large\"}",
                  .headers = {}},
                 false, false);
  }
  // Whoever speaks no HTTP gets no answer.
  if (error) return;
  const http::request<http::string_body> request = parser_->release();
  const HttpQuestion question = Question(request);
  if (beast::websocket::is_upgrade(request)) {
    Login login;
    if (std::optional<HttpReply> refused = house_.door.RefuseSocket(question, &login)) {
      return Reply(std::move(*refused), false, false);
    }
    std::make_shared<PageSocket>(std::move(stream_), house_.hub, std::move(login), std::move(seat_))
        ->Accept(request);
    return;
  }
  // A password that is being looked at takes longer than a slow network.
  stream_.expires_never();
  house_.door.Answer(question, [self = shared_from_this(), isHead = request.method() == http::verb::head,
                                keepAlive = request.keep_alive()](HttpReply reply) {
    self->Reply(std::move(reply), isHead, keepAlive);
  });
}

HttpQuestion Connection::Question(const http::request<http::string_body>& request) const {
  auto header = [&](auto name) {
    const auto found = request.find(name);
    return found == request.end() ? std::string() : std::string(found->value());
  };
  error_code error;
  const tcp::endpoint remote = stream_.socket().remote_endpoint(error);
  HttpQuestion question{.method = std::string(request.method_string()),
                        .target = std::string(request.target()),
                        .host = header(http::field::host),
                        .origin = header(http::field::origin),
                        .cookie = header(http::field::cookie),
                        .token = header("X-Token"),
                        .contentType = header(http::field::content_type),
                        .forwardedProto = header("X-Forwarded-Proto"),
                        .body = request.body(),
                        .client = error ? std::string() : remote.address().to_string()};
  // A proxy on this machine tells for whom it asks; anybody else could tell anything.
  const std::string forwarded = header("X-Forwarded-For");
  if (!forwarded.empty() && IsLoopback(question.client)) {
    const std::size_t comma = forwarded.rfind(',');
    question.client = forwarded.substr(comma == std::string::npos ? 0 : comma + 1);
  }
  return question;
}

void Connection::Reply(HttpReply reply, bool isHead, bool keepAlive) {
  response_ = std::make_shared<http::response<http::string_body>>(http::int_to_status(reply.status), 11);
  for (const auto& [name, value] : StandingHeaders()) response_->set(name, value);
  response_->set(http::field::content_type, reply.type);
  response_->set(http::field::cache_control, "no-store");
  for (const auto& [name, value] : reply.headers) response_->set(name, value);
  response_->keep_alive(keepAlive);
  response_->body() = std::move(reply.text);
  response_->prepare_payload();
  if (isHead) response_->body().clear();
  stream_.expires_after(kSlowest);
  http::async_write(stream_, *response_,
                    [self = shared_from_this(), keepAlive](error_code error, std::size_t) {
                      if (error) return;
                      if (keepAlive) return self->Read();
                      error_code ignored;
                      self->stream_.socket().shutdown(tcp::socket::shutdown_send, ignored);
                    });
}

// Takes connections as long as there are seats.
class Listener {
 public:
  Listener(asio::io_context& context, const ServeOptions& options, House house)
      : acceptor_(context), options_(options), house_(house), seats_(std::make_shared<int>(0)) {
    const tcp::endpoint endpoint(asio::ip::make_address(options.listen.host), options.listen.port);
    error_code error;
    acceptor_.open(endpoint.protocol(), error);
    if (!error) acceptor_.set_option(tcp::acceptor::reuse_address(true), error);
    if (!error) acceptor_.bind(endpoint, error);
    if (!error) acceptor_.listen(asio::socket_base::max_listen_connections, error);
    if (!error) return;
    throw platform::Error(platform::ErrorNumber::kBadArgument, "browser",
                          "cannot listen at " + options.listen.host + ":" +
                              std::to_string(options.listen.port) + ": " + error.message() +
                              "; choose another address with --listen");
  }

  std::uint16_t Port() const { return acceptor_.local_endpoint().port(); }

  void Accept() {
    acceptor_.async_accept([this](error_code error, tcp::socket socket) {
      if (error == asio::error::operation_aborted) return;
      // The copies of a seat count the connections; one too many is closed at once.
      if (!error && static_cast<std::size_t>(seats_.use_count()) <= options_.mostConnections) {
        error_code ignored;
        socket.set_option(tcp::no_delay(true), ignored);
        std::make_shared<Connection>(std::move(socket), house_, seats_)->Read();
      }
      Accept();
    });
  }

  void Close() {
    error_code ignored;
    acceptor_.close(ignored);
  }

 private:
  tcp::acceptor acceptor_;
  const ServeOptions& options_;
  House house_;
  std::shared_ptr<int> seats_;
};

}  // namespace

void Serve(const ServeOptions& options) {
  // Standard output is for the address.
  spdlog::set_default_logger(
      std::make_shared<spdlog::logger>("stockrpt", std::make_shared<spdlog::sinks::stderr_color_sink_mt>()));
  asio::io_context context(1);
  asio::thread_pool checkers(1);
  Hub hub(context, options);
  Doorkeeper door(options, PageFiles::Read(options.page),
                  [&](std::function<void()> work, std::function<void()> after) {
                    asio::post(checkers, [&context, work = std::move(work), after = std::move(after)] {
                      try {
                        work();
                      } catch (const std::exception& error) {
                        spdlog::error("a sign-in could not be checked: {}", error.what());
                      }
                      asio::post(context, after);
                    });
                  });
  door.onSignOut = [&](const std::string& cookie) { hub.SignOut(cookie); };
  Listener listener(context, options, {.door = door, .hub = hub});
  listener.Accept();
  if (options.onListening) options.onListening(listener.Port());

  asio::steady_timer ticker(context);
  asio::signal_set signals(context, SIGINT, SIGTERM);
  auto end = [&] {
    listener.Close();
    ticker.cancel();
    hub.EndAll("shutdown");
    // What was said last may still go out.
    ticker.expires_after(kTick);
    ticker.async_wait([&](error_code) { context.stop(); });
  };
  std::function<void(error_code)> tick = [&](error_code error) {
    if (error) return;
    if (options.isOver && options.isOver()) return end();
    hub.Tick();
    ticker.expires_after(kTick);
    ticker.async_wait(tick);
  };
  tick({});
  signals.async_wait([&](error_code error, int) {
    if (!error) end();
  });
  context.run();
  checkers.join();
}

}  // namespace browser
