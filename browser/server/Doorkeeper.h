#pragma once

#include <functional>
#include <optional>
#include <string>

#include "browser/server/HttpReply.h"
#include "browser/server/Logins.h"
#include "browser/server/PageFiles.h"
#include "browser/server/Serve.h"

namespace browser {

// Decides about each request before anything is done for it: where it comes from, who asks, what it may have.
// It knows nothing of sockets.
class Doorkeeper {
 public:
  using Replier = std::function<void(HttpReply)>;
  // Runs `work` away from the one thread of the server, then `after` on it.
  using Away = std::function<void(std::function<void()> work, std::function<void()> after)>;

  Doorkeeper(const ServeOptions& options, PageFiles page, Away away)
      : options_(options), page_(std::move(page)), away_(std::move(away)) {}

  // Answers now or, where a password is looked at, later.
  void Answer(const HttpQuestion& question, const Replier& reply);
  // Why a WebSocket is refused; nothing when it may be opened. `login` is then whose it is.
  std::optional<HttpReply> RefuseSocket(const HttpQuestion& question, Login* login);

  // Told of each cookie that signs out.
  std::function<void(const std::string& cookie)> onSignOut;

 private:
  std::optional<HttpReply> RefuseOrigin(const HttpQuestion& question, bool mustHaveOrigin) const;
  HttpReply Start(const HttpQuestion& question);
  void SignIn(const HttpQuestion& question, const Replier& reply);
  HttpReply SignOut(const HttpQuestion& question);
  HttpReply File(const HttpQuestion& question) const;
  Login* LoginOf(const HttpQuestion& question);
  HttpReply Welcome(const Login& login, const HttpQuestion& question, bool newCookie) const;

  const ServeOptions& options_;
  PageFiles page_;
  Away away_;
  Logins logins_;
  Attempts attempts_;
  int checking_ = 0;
};

}  // namespace browser
