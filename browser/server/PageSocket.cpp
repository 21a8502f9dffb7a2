#include "browser/server/PageSocket.h"

#include <boost/asio/buffer.hpp>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/websocket/rfc6455.hpp>

namespace browser {
namespace {

namespace beast = boost::beast;
namespace websocket = boost::beast::websocket;
using boost::system::error_code;

}  // namespace

PageSocket::PageSocket(beast::tcp_stream stream, Hub& hub, Login login, std::shared_ptr<void> seat)
    : socket_(std::move(stream)), hub_(hub), login_(std::move(login)), seat_(std::move(seat)) {}

void PageSocket::Accept(const Request& request) {
  beast::get_lowest_layer(socket_).expires_never();
  websocket::stream_base::timeout timeout =
      websocket::stream_base::timeout::suggested(beast::role_type::server);
  // A connection that died without a word is noticed by pings.
  timeout.idle_timeout = std::chrono::seconds(60);
  timeout.keep_alive_pings = true;
  socket_.set_option(timeout);
  socket_.read_message_max(kLargestCommand);
  // Blocks of rows go out as one frame each; splitting them costs more than it helps.
  socket_.auto_fragment(false);
  socket_.text(true);
  socket_.async_accept(request, [self = shared_from_this()](error_code error) {
    if (error) return self->Gone();
    self->Read();
  });
}

void PageSocket::Read() {
  socket_.async_read(buffer_, [self = shared_from_this()](error_code error, std::size_t) {
    if (error) return self->Gone();
    const std::string text = beast::buffers_to_string(self->buffer_.data());
    self->buffer_.consume(self->buffer_.size());
    if (self->finishing_) return self->Read();
    if (self->session_) {
      Hub::Take(*self->session_, text);
    } else {
      self->TakeHello(text);
    }
    self->Read();
  });
}

void PageSocket::TakeHello(const std::string& text) {
  try {
    const Command hello = ReadCommand(text);
    if (hello.when == When::kFirst && AreSame(hello.Text("token"), login_.token)) {
      session_ = hub_.Join(shared_from_this(), login_, hello);
      return;
    }
    const bool isHello = hello.when == When::kFirst;
    Send(ToText(ErrorMessage(isHello ? "refused" : "state",
                             isHello ? "the token is not valid" : "the first message must be hello",
                             hello.id)),
         {});
  } catch (const RefusedMessage& refused) {
    Send(ToText(ErrorMessage(refused.Code(), refused.what(), refused.Id())), {});
  }
  Finish();
}

void PageSocket::Send(std::string text, std::function<void()> sent) {
  if (gone_ || finishing_) {
    if (sent) sent();
    return;
  }
  outgoing_.push_back({.text = std::move(text), .sent = std::move(sent)});
  if (outgoing_.size() == 1) WriteNext();
}

void PageSocket::WriteNext() {
  socket_.async_write(boost::asio::buffer(outgoing_.front().text),
                      [self = shared_from_this()](error_code error, std::size_t) {
                        const std::function<void()> sent = std::move(self->outgoing_.front().sent);
                        self->outgoing_.pop_front();
                        if (error) {
                          self->Gone();
                        } else if (!self->outgoing_.empty()) {
                          self->WriteNext();
                        } else if (self->finishing_) {
                          self->socket_.async_close(websocket::close_code::normal, [self](error_code) {});
                        }
                        if (sent) sent();
                      });
}

void PageSocket::Finish() {
  if (gone_ || finishing_) return;
  finishing_ = true;
  session_.reset();
  if (outgoing_.empty()) {
    socket_.async_close(websocket::close_code::normal, [self = shared_from_this()](error_code) {});
  }
}

void PageSocket::Gone() {
  if (gone_) return;
  gone_ = true;
  // What still waits will not go; those who wait for it go on.
  std::deque<Outgoing> left;
  if (outgoing_.size() > 1) {
    left.assign(std::make_move_iterator(outgoing_.begin() + 1), std::make_move_iterator(outgoing_.end()));
    outgoing_.resize(1);
  }
  if (const std::shared_ptr<LiveSession> session = std::move(session_)) Hub::Lose(*session, *this);
  for (Outgoing& waiting : left) {
    if (waiting.sent) waiting.sent();
  }
}

}  // namespace browser
