#include "browser/server/Doorkeeper.h"

#include <spdlog/spdlog.h>

#include "browser/protocol/Command.h"

namespace browser {
namespace {

constexpr std::string_view kCookie = "stockrpt";
// Checking a password takes memory and time on purpose; more at once are turned away.
constexpr int kMostChecking = 8;

Moment Now() { return std::chrono::steady_clock::now(); }

HttpReply Refusal(unsigned status, std::string_view text) {
  Json json = Json::object();
  json["error"] = std::string(text);
  return {.status = status, .type = "application/json", .text = ToText(json), .headers = {}};
}

HttpReply TooMany(std::chrono::seconds wait) {
  HttpReply reply = Refusal(429, "登录失败次数太多，请 " + std::to_string(wait.count()) + " 秒后再试。");
  reply.headers.emplace_back("Retry-After", std::to_string(wait.count()));
  return reply;
}

std::string CookieHeader(const std::string& value, const HttpQuestion& question) {
  std::string header = std::string(kCookie) + "=" + value + "; Path=/; HttpOnly; SameSite=Strict";
  if (value.empty()) header += "; Max-Age=0";
  if (question.forwardedProto == "https") header += "; Secure";
  return header;
}

struct Credentials {
  std::string name;
  std::string password;
};

std::optional<Credentials> ReadCredentials(const std::string& body) {
  const Json json = Json::parse(body, nullptr, false);
  if (!json.is_object() || json.size() != 2) return std::nullopt;
  for (const char* key : {"name", "password"}) {
    if (!json.contains(key) || !json[key].is_string()) return std::nullopt;
  }
  Credentials read{.name = json["name"].get<std::string>(), .password = json["password"].get<std::string>()};
  constexpr std::size_t kLongest = 1000;
  if (read.name.empty() || read.name.size() > kLongest || read.password.size() > kLongest)
    return std::nullopt;
  return read;
}

}  // namespace

// Without a login whoever reaches this port is served, so a page of another site must not reach it through a
// name of its own that it lets mean this machine.
std::optional<HttpReply> Doorkeeper::RefuseOrigin(const HttpQuestion& question, bool mustHaveOrigin) const {
  if (!options_.needsLogin && !NamesLoopback(question.host)) {
    return Refusal(403, "this server is for this machine only; use http://127.0.0.1 or http://localhost");
  }
  if (question.origin.empty() ? mustHaveOrigin : !IsSameOrigin(question.origin, question.host)) {
    return Refusal(403, "the request comes from another site");
  }
  return std::nullopt;
}

Login* Doorkeeper::LoginOf(const HttpQuestion& question) {
  const std::string cookie = CookieValue(question.cookie, kCookie);
  return cookie.empty() ? nullptr : logins_.Find(cookie, Now());
}

void Doorkeeper::Answer(const HttpQuestion& question, const Replier& reply) {
  const std::string path = question.target.substr(0, question.target.find('?'));
  const bool isPost = question.method == "POST";
  const bool isGet = question.method == "GET" || question.method == "HEAD";
  if (std::optional<HttpReply> refused = RefuseOrigin(question, isPost)) return reply(*refused);
  if (path == "/api/login" && isPost) return SignIn(question, reply);
  if (path == "/api/logout" && isPost) return reply(SignOut(question));
  if (path == "/api/start" && isGet) return reply(Start(question));
  if (path == "/api/start" || path == "/api/login" || path == "/api/logout" || !isGet) {
    return reply(Refusal(405, "this address is not for " + question.method));
  }
  if (path == "/ws") return reply(Refusal(426, "this address is for WebSockets"));
  return reply(File(question));
}

HttpReply Doorkeeper::Welcome(const Login& login, const HttpQuestion& question, bool newCookie) const {
  Json json = Json::object();
  json["protocol"] = ProtocolVersion();
  json["login"] = options_.needsLogin ? "done" : "none";
  json["user"] = login.user;
  json["token"] = login.token;
  HttpReply reply{.status = 200, .type = "application/json", .text = ToText(json), .headers = {}};
  if (newCookie) reply.headers.emplace_back("Set-Cookie", CookieHeader(login.cookie, question));
  return reply;
}

HttpReply Doorkeeper::Start(const HttpQuestion& question) {
  if (const Login* login = LoginOf(question)) return Welcome(*login, question, false);
  if (!options_.needsLogin) {
    return Welcome(logins_.Add(options_.anonymous.user, options_.anonymous.userId, Now()), question, true);
  }
  Json json = Json::object();
  json["protocol"] = ProtocolVersion();
  json["login"] = "needed";
  json["user"] = "";
  json["token"] = "";
  return {.status = 200, .type = "application/json", .text = ToText(json), .headers = {}};
}

void Doorkeeper::SignIn(const HttpQuestion& question, const Replier& reply) {
  if (!options_.needsLogin) return reply(Refusal(400, "this server needs no login"));
  const std::optional<Credentials> given =
      question.contentType.starts_with("application/json") ? ReadCredentials(question.body) : std::nullopt;
  if (!given) return reply(Refusal(400, "登录请求的格式不对。"));
  const std::string byName = "name " + given->name;
  const std::string byClient = "from " + question.client;
  const auto wait = std::max(attempts_.WaitFor(byName, Now()), attempts_.WaitFor(byClient, Now()));
  if (wait.count() > 0) return reply(TooMany(wait));
  if (checking_ >= kMostChecking) return reply(Refusal(503, "现在登录的人太多，请稍后再试。"));
  ++checking_;
  auto found = std::make_shared<std::optional<SignedIn>>();
  away_([this, given, found] { *found = options_.checkLogin(given->name, given->password); },
        [this, found, reply, question, byName, byClient] {
          --checking_;
          if (!*found) {
            attempts_.Failed(byName, Now());
            attempts_.Failed(byClient, Now());
            spdlog::warn("a sign-in from {} failed", question.client);
            return reply(Refusal(401, "用户名或密码不对。"));
          }
          attempts_.Succeeded(byName);
          attempts_.Succeeded(byClient);
          // A cookie from before the sign-in is worth nothing afterwards.
          logins_.Remove(CookieValue(question.cookie, kCookie));
          spdlog::info("user {} signed in from {}", (*found)->userId, question.client);
          reply(Welcome(logins_.Add((*found)->user, (*found)->userId, Now()), question, true));
        });
}

HttpReply Doorkeeper::SignOut(const HttpQuestion& question) {
  const Login* login = LoginOf(question);
  if (login == nullptr) return Refusal(401, "请先登录。");
  if (!AreSame(login->token, question.token)) return Refusal(403, "the request has no valid token");
  const std::string cookie = login->cookie;
  if (onSignOut) onSignOut(cookie);
  logins_.Remove(cookie);
  HttpReply reply{.status = 200, .type = "application/json", .text = "{}", .headers = {}};
  reply.headers.emplace_back("Set-Cookie", CookieHeader("", question));
  return reply;
}

HttpReply Doorkeeper::File(const HttpQuestion& question) const {
  const PageFile* file = page_.Find(question.target);
  if (file == nullptr) {
    // Whoever sees this has typed the address.
    return {.status = 404,
            .type = "text/plain; charset=utf-8",
            .text = "没有这个地址。请打开首页（/），从列表里选择报表。\n",
            .headers = {}};
  }
  HttpReply reply{.status = 200, .type = file->type, .text = file->text, .headers = {}};
  reply.headers.emplace_back("Cache-Control",
                             file->keeps ? "public, max-age=31536000, immutable" : "no-cache");
  return reply;
}

std::optional<HttpReply> Doorkeeper::RefuseSocket(const HttpQuestion& question, Login* login) {
  if (std::optional<HttpReply> refused = RefuseOrigin(question, true)) return refused;
  if (question.target != "/ws") return Refusal(404, "there is nothing at this address");
  const Login* found = LoginOf(question);
  if (found == nullptr) return Refusal(401, "请先登录。");
  *login = *found;
  return std::nullopt;
}

}  // namespace browser
