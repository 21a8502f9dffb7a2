#pragma once

#include <deque>
#include <memory>
#include <string>

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/websocket/stream.hpp>

#include "browser/server/Hub.h"
#include "browser/server/LiveSession.h"

namespace browser {

// The WebSocket of one page. It takes the page's hello, joins it with a session, and from then on passes
// messages on. Messages go out one after the other and whole.
class PageSocket final : public PageLink, public std::enable_shared_from_this<PageSocket> {
 public:
  using Request = boost::beast::http::request<boost::beast::http::string_body>;

  PageSocket(boost::beast::tcp_stream stream, Hub& hub, Login login, std::shared_ptr<void> seat);

  void Accept(const Request& request);
  void Send(std::string text, std::function<void()> sent) override;
  void Finish() override;

 private:
  struct Outgoing {
    std::string text;
    std::function<void()> sent;
  };

  void Read();
  void TakeHello(const std::string& text);
  void WriteNext();
  void Gone();

  boost::beast::websocket::stream<boost::beast::tcp_stream> socket_;
  Hub& hub_;
  Login login_;
  std::shared_ptr<void> seat_;  // counts the connection while it lives
  std::shared_ptr<LiveSession> session_;
  boost::beast::flat_buffer buffer_;
  std::deque<Outgoing> outgoing_;
  bool finishing_ = false;
  bool gone_ = false;
};

}  // namespace browser
