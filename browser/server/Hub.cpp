#include "browser/server/Hub.h"

#include <spdlog/spdlog.h>

#include "browser/server/LiveSession.h"
#include "platform/value/Error.h"

namespace browser {
namespace {

// Refuses a page and sends it off.
void TurnAway(PageLink& page, const Command& hello, const char* text) {
  page.Send(ToText(ErrorMessage("failed", text, hello.id)), {});
  page.Finish();
}

}  // namespace

Hub::Hub(boost::asio::io_context& context, const ServeOptions& options)
    : context_(context), options_(options) {}

Hub::~Hub() = default;

std::shared_ptr<LiveSession> Hub::Make(const Login& login) {
  auto session = std::make_shared<LiveSession>(context_, options_, login, NewSecret());
  session->Start();
  sessions_[session->Id()] = session;
  return session;
}

std::shared_ptr<LiveSession> Hub::Join(const std::shared_ptr<PageLink>& page, const Login& login,
                                       const Command& hello) {
  if (hello.Number("protocol") != ProtocolVersion()) {
    TurnAway(*page, hello, "页面版本已经过时，请刷新浏览器。");
    return nullptr;
  }
  try {
    if (std::shared_ptr<LiveSession> session = Named(hello, login)) {
      session->Attach(page, hello.id, true);
      return session;
    }
    if (sessions_.size() >= options_.mostSessions) {
      spdlog::warn("no more than {} sessions are served", options_.mostSessions);
      TurnAway(*page, hello, "使用的人太多，请稍后再试。");
      return nullptr;
    }
    std::shared_ptr<LiveSession> session = Make(login);
    session->Attach(page, hello.id, false);
    return session;
  } catch (const platform::Error& error) {
    spdlog::error("{}", error.Description());
    TurnAway(*page, hello, "报表程序启动不了，请稍后重试。");
    return nullptr;
  }
}

// A session is its login's; another one's is as good as none.
std::shared_ptr<LiveSession> Hub::Named(const Command& hello, const Login& login) const {
  if (!hello.Has("session")) return nullptr;
  const auto found = sessions_.find(hello.Text("session"));
  return found != sessions_.end() && found->second->Cookie() == login.cookie ? found->second : nullptr;
}

void Hub::Take(LiveSession& session, const std::string& text) { session.Take(text); }

void Hub::Lose(LiveSession& session, const PageLink& page) { session.Detach(page); }

void Hub::SignOut(const std::string& cookie) {
  std::erase_if(sessions_, [&](const auto& entry) {
    if (entry.second->Cookie() != cookie) return false;
    entry.second->End("logout");
    return true;
  });
}

void Hub::EndAll(const char* reason) {
  for (const auto& [id, session] : sessions_) session->End(reason);
  sessions_.clear();
}

void Hub::Tick() {
  const Moment now = std::chrono::steady_clock::now();
  std::erase_if(sessions_,
                [&](const auto& entry) { return entry.second->Tick(now) == LiveSession::Fate::kEnds; });
}

}  // namespace browser
