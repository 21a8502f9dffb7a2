#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "browser/protocol/Command.h"
#include "browser/server/Logins.h"
#include "browser/server/Serve.h"

namespace boost::asio {
class io_context;
}

namespace browser {

class LiveSession;

// The page's end of a session, a WebSocket in life. Held by its session while they are together.
class PageLink {
 public:
  PageLink() = default;
  PageLink(const PageLink&) = delete;
  PageLink& operator=(const PageLink&) = delete;
  PageLink(PageLink&&) = delete;
  PageLink& operator=(PageLink&&) = delete;
  virtual ~PageLink() = default;

  // Sends a message after those before it; `sent` is called when it has gone, or cannot go any more.
  virtual void Send(std::string text, std::function<void()> sent) = 0;
  // Closes the connection once all has been sent.
  virtual void Finish() = 0;
};

// The sessions of this process. Each has a worker, and a page while one is connected. Everything runs on the
// one thread of the io context. What passes between a page and its worker is not looked into on the way back,
// and only checked on the way there.
class Hub {
 public:
  Hub(boost::asio::io_context& context, const ServeOptions& options);
  Hub(const Hub&) = delete;
  Hub& operator=(const Hub&) = delete;
  Hub(Hub&&) = delete;
  Hub& operator=(Hub&&) = delete;
  ~Hub();

  // Brings a page that has said hello together with the session that it names, or with a new one. Null, after
  // the page has been told, when no session can be had.
  std::shared_ptr<LiveSession> Join(const std::shared_ptr<PageLink>& page, const Login& login,
                                    const Command& hello);
  // A message of the page, as it came.
  static void Take(LiveSession& session, const std::string& text);
  // The page has gone; the session waits for it.
  static void Lose(LiveSession& session, const PageLink& page);
  // Ends the sessions of a login.
  void SignOut(const std::string& cookie);
  void EndAll(const char* reason);
  // Looks after idle, lost and hanging sessions; to be called every second or oftener.
  void Tick();

  std::size_t Count() const { return sessions_.size(); }

 private:
  std::shared_ptr<LiveSession> Make(const Login& login);
  std::shared_ptr<LiveSession> Named(const Command& hello, const Login& login) const;

  boost::asio::io_context& context_;
  const ServeOptions& options_;
  std::map<std::string, std::shared_ptr<LiveSession>> sessions_;
};

}  // namespace browser
