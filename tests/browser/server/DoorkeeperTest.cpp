// Every way in which a request is turned away, and the few in which it is not.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "browser/protocol/Json.h"
#include "browser/server/Doorkeeper.h"

namespace browser {
namespace {

using testing::HasSubstr;

class Door : public testing::Test {
 protected:
  Door() {
    options_.needsLogin = true;
    options_.checkLogin = [](const std::string& name,
                             const std::string& password) -> std::optional<SignedIn> {
      if (name == "lily" && password == "stock-taking") return SignedIn{.userId = 3, .user = "lily"};
      return std::nullopt;
    };
  }

  HttpReply Ask(const HttpQuestion& question) {
    HttpReply answer{.status = 0};
    door_.Answer(question, [&](HttpReply reply) { answer = std::move(reply); });
    return answer;
  }
  static HttpQuestion Get(const std::string& target) {
    return {.method = "GET", .target = target, .host = "127.0.0.1:8080", .client = "127.0.0.1"};
  }
  static HttpQuestion Post(const std::string& target, const std::string& body) {
    HttpQuestion question = Get(target);
    question.method = "POST";
    question.origin = "http://127.0.0.1:8080";
    question.contentType = "application/json";
    question.body = body;
    return question;
  }
  static std::string Header(const HttpReply& reply, const std::string& name) {
    for (const auto& [key, value] : reply.headers) {
      if (key == name) return value;
    }
    return {};
  }
  std::string SignedInCookie() {
    const HttpReply reply = Ask(Post("/api/login", R"({"name":"lily","password":"stock-taking"})"));
    const std::string header = Header(reply, "Set-Cookie");
    return header.substr(0, header.find(';'));
  }

  ServeOptions options_;
  Doorkeeper door_{options_, PageFiles::Read(TEST_SOURCE_DIR "/page"),
                   [](const std::function<void()>& work, const std::function<void()>& after) {
                     work();
                     after();
                   }};
};

TEST_F(Door, ServesThePageAndNothingElse) {
  for (const char* target :
       {"/", "/index.html", "/r", "/r/10414", "/r/10414?BItemNumber=01", "/r/../../etc/passwd"}) {
    const HttpReply reply = Ask(Get(target));
    EXPECT_EQ(reply.status, 200U) << target;
    EXPECT_THAT(reply.text, HasSubstr("<title>stockrpt</title>")) << target;
  }
  EXPECT_EQ(Ask(Get("/assets/app.js")).type, "text/javascript; charset=utf-8");
  for (const char* target :
       {"/../page/index.html", "/assets/../index.html", "/assets/%2e%2e/index.html", "/..%2fServeTest.cpp",
        "//index.html", "/assets", "/assets/", "/assets\\app.js", "/.git/config", "/etc/passwd",
        "/index.html/x", "index.html", "", "/api", "/api/other", "/assets/app.js%00"}) {
    EXPECT_EQ(Ask(Get(target)).status, 404U) << target;
    EXPECT_THAT(Ask(Get(target)).text, HasSubstr("没有这个地址")) << target;
  }
}

TEST_F(Door, EachAddressHasItsMethods) {
  for (const char* target : {"/", "/api/start", "/r/10414"}) {
    HttpQuestion question = Post(target, "");
    EXPECT_EQ(Ask(question).status, 405U) << target;
    question.method = "DELETE";
    EXPECT_EQ(Ask(question).status, 405U) << target;
  }
  EXPECT_EQ(Ask(Get("/api/login")).status, 405U);
  EXPECT_EQ(Ask(Get("/ws")).status, 426U);
}

TEST_F(Door, OtherSitesAreRefused) {
  HttpQuestion question = Post("/api/login", R"({"name":"lily","password":"stock-taking"})");
  question.origin = "http://evil.test";
  EXPECT_EQ(Ask(question).status, 403U);
  question.origin = "";
  EXPECT_EQ(Ask(question).status, 403U);
  question.origin = "null";
  EXPECT_EQ(Ask(question).status, 403U);
}

TEST_F(Door, WithoutALoginOnlyNamesOfThisMachineAreServed) {
  options_.needsLogin = false;
  HttpQuestion question = Get("/api/start");
  EXPECT_EQ(Ask(question).status, 200U);
  question.host = "rebound.evil.test";
  EXPECT_EQ(Ask(question).status, 403U);
  Login login;
  question = Get("/ws");
  question.host = "rebound.evil.test";
  question.origin = "http://rebound.evil.test";
  EXPECT_EQ(door_.RefuseSocket(question, &login)->status, 403U);
}

TEST_F(Door, APasswordOpens) {
  const HttpReply start = Ask(Get("/api/start"));
  EXPECT_THAT(start.text, HasSubstr(R"("login":"needed")"));
  EXPECT_THAT(start.text, HasSubstr(R"("token":"")"));
  const HttpReply reply = Ask(Post("/api/login", R"({"name":"lily","password":"stock-taking"})"));
  EXPECT_EQ(reply.status, 200U);
  EXPECT_THAT(Header(reply, "Set-Cookie"), HasSubstr("; HttpOnly; SameSite=Strict"));
  const Json json = Json::parse(reply.text);
  EXPECT_EQ(json["login"], "done");
  EXPECT_EQ(json["user"], "lily");
  EXPECT_EQ(json["token"].get<std::string>().size(), 32U);
}

TEST_F(Door, BehindTlsTheCookieIsSecure) {
  HttpQuestion question = Post("/api/login", R"({"name":"lily","password":"stock-taking"})");
  question.forwardedProto = "https";
  EXPECT_THAT(Header(Ask(question), "Set-Cookie"), HasSubstr("; Secure"));
}

TEST_F(Door, WrongLoginsAreRefusedAndThenMadeToWait) {
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(Ask(Post("/api/login", R"({"name":"lily","password":"wrong"})")).status, 401U);
  }
  const HttpReply reply = Ask(Post("/api/login", R"({"name":"lily","password":"stock-taking"})"));
  EXPECT_EQ(reply.status, 429U);
  EXPECT_EQ(Header(reply, "Retry-After"), "2");
  EXPECT_EQ(reply.text, R"({"error":"登录失败次数太多，请 2 秒后再试。"})");
}

TEST_F(Door, LoginsThatAreNoneAreRefused) {
  const std::vector<std::string> bodies = {"",
                                           "{}",
                                           "[]",
                                           R"({"name":"lily"})",
                                           R"({"name":"","password":"x"})",
                                           R"({"name":1,"password":"x"})",
                                           R"({"name":"lily","password":"x","admin":true})",
                                           R"({"name":"lily","password":")" + std::string(2000, 'x') + "\"}"};
  for (const std::string& body : bodies) EXPECT_EQ(Ask(Post("/api/login", body)).status, 400U) << body;
  HttpQuestion form = Post("/api/login", R"({"name":"lily","password":"stock-taking"})");
  form.contentType = "text/plain";
  EXPECT_EQ(Ask(form).status, 400U);
}

TEST_F(Door, ASocketNeedsCookieAndOrigin) {
  HttpQuestion question = Get("/ws");
  question.origin = "http://127.0.0.1:8080";
  Login login;
  EXPECT_EQ(door_.RefuseSocket(question, &login)->status, 401U);
  question.cookie = "stockrpt=0123456789abcdef0123456789abcdef";
  EXPECT_EQ(door_.RefuseSocket(question, &login)->status, 401U);
  question.cookie = "other=1; " + SignedInCookie();
  EXPECT_FALSE(door_.RefuseSocket(question, &login).has_value());
  EXPECT_EQ(login.user, "lily");
  question.target = "/ws/";
  EXPECT_EQ(door_.RefuseSocket(question, &login)->status, 404U);
  question.target = "/ws";
  question.origin = "http://evil.test";
  EXPECT_EQ(door_.RefuseSocket(question, &login)->status, 403U);
  question.origin = "";
  EXPECT_EQ(door_.RefuseSocket(question, &login)->status, 403U);
}

TEST_F(Door, SigningOutNeedsTheToken) {
  std::string out;
  door_.onSignOut = [&](const std::string& cookie) { out = cookie; };
  const HttpReply in = Ask(Post("/api/login", R"({"name":"lily","password":"stock-taking"})"));
  const std::string header = Header(in, "Set-Cookie");
  HttpQuestion question = Post("/api/logout", "");
  EXPECT_EQ(Ask(question).status, 401U);
  question.cookie = header.substr(0, header.find(';'));
  question.token = "wrong";
  EXPECT_EQ(Ask(question).status, 403U);
  EXPECT_EQ(out, "");
  question.token = Json::parse(in.text)["token"].get<std::string>();
  EXPECT_EQ(Ask(question).status, 200U);
  EXPECT_EQ("stockrpt=" + out, question.cookie);
  EXPECT_EQ(Ask(question).status, 401U);
}

TEST_F(Door, EveryAnswerForbidsForeignScripts) {
  std::string policy;
  for (const auto& [name, value] : StandingHeaders()) {
    if (name == "Content-Security-Policy") policy = value;
  }
  EXPECT_THAT(policy, HasSubstr("script-src 'self';"));
  EXPECT_THAT(policy, HasSubstr("frame-ancestors 'none'"));
}

}  // namespace
}  // namespace browser
