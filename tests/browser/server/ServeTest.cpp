// `stockrpt serve` as a page meets it: the built program on a demo book.
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "browser/protocol/Command.h"
#include "tests/browser/server/Client.h"

namespace browser_tests {
namespace {

using testing::HasSubstr;

constexpr const char* kReport = "TOVStockRpt.Rpt10414";

class Serve : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder_ = std::filesystem::temp_directory_path() / ("stockrpt-serve-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder_);
    ASSERT_EQ(Run("demo " + Book() + " --items 40 --months 3 --quiet"), 0);
  }
  static void TearDownTestSuite() { std::filesystem::remove_all(folder_); }

  static std::string Book() { return (folder_ / "demo.db").string(); }
  // The exit status of the program.
  static int Run(const std::string& arguments) {
    const int ended = std::system((TEST_BINARY_DIR "/stockrpt " + arguments).c_str());
    return WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
  }
  static Json OpenAndConfirm(Page& page) {
    page.Send("openReport", {{"programmaticId", kReport}});
    const Json form = page.Await("formOpened");
    page.Send("click", {{"form", form["form"]}, {"control", "cmdOK"}});
    return page.Await("reportReady");
  }
  static Json Rows(Page& page, const Json& report, int start, int count) {
    return page.Do("fetchRows", {{"report", report["report"]},
                                 {"start", start},
                                 {"count", count},
                                 {"fields", {"FItemNumber", "FItemName", "FQty", "FNoSuchField"}}});
  }

  static inline std::filesystem::path folder_;
};

TEST_F(Serve, AWholeSessionOfTheOverAndShortReport) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json reports = page.Do("listReports");
  EXPECT_THAT(reports.dump(),
              HasSubstr("\"number\":\"10414\",\"name\":\"商品超储短缺表\",\"available\":true"));

  const int opening = page.Send("openReport", {{"programmaticId", kReport}});
  const Json form = page.Await("formOpened");
  EXPECT_EQ(form["name"], "frmFirter10414");
  EXPECT_EQ(form["caption"], "过滤");
  EXPECT_EQ(form["focus"], "txtItem(0)");
  EXPECT_EQ(form["filter"]["buttons"], false);
  for (const Json& control : form["controls"]) {
    if (control["control"] != "cboSort") continue;
    EXPECT_EQ(control["items"][1]["text"], "最高库存");
  }

  EXPECT_EQ(page.Do("setValue", {{"form", form["form"]}, {"control", "txtItem(0)"}, {"value", "0"}})["type"],
            "done");
  ASSERT_EQ(page.Passed().size(), 1U);
  EXPECT_EQ(page.Passed()[0]["controls"].dump(), R"*([{"control":"txtItem(0)","value":"0"}])*");
  EXPECT_EQ(page.Do("listReports")["type"], "reports");
  EXPECT_EQ(page.Do("openReport", {{"programmaticId", kReport}})["code"], "state");

  page.Send("click", {{"form", form["form"]}, {"control", "cmdOK"}});
  const Json report = page.Await("reportReady");
  std::string passed;
  for (const Json& message : page.Passed()) passed += message["type"].get<std::string>() + " ";
  EXPECT_THAT(passed, HasSubstr("done formClosed progressShown "));
  EXPECT_THAT(passed, HasSubstr("progressClosed "));
  EXPECT_EQ(page.Next()["re"], opening);
  EXPECT_EQ(report["title"][0]["caption"], "商品代码从[0]到[]");
  EXPECT_EQ(report["columns"][0]["caption"], "商品代码$");
  EXPECT_EQ(report["columns"][0]["fieldType"], "text");
  EXPECT_EQ(report["filter"]["BItemNumber"], "0");
  const int count = report["rowCount"].get<int>();
  ASSERT_GT(count, 3);

  const Json rows = Rows(page, report, 1, 2);
  ASSERT_EQ(rows["values"].size(), 2U);
  EXPECT_TRUE(rows["values"][0][0].is_string());
  EXPECT_TRUE(rows["values"][0][2].is_number());
  EXPECT_TRUE(rows["values"][0][3].is_null());
  EXPECT_EQ(Rows(page, report, count, 500)["values"].size(), 0U);

  const Json first = Rows(page, report, 0, 1)["values"][0][0];
  page.Do("setView",
          {{"report", report["report"]}, {"sort", {{{"field", "FItemNumber"}, {"descending", true}}}}});
  EXPECT_EQ(Rows(page, report, count - 1, 1)["values"][0][0], first);
  const Json narrowed = page.Do(
      "setView",
      {{"report", report["report"]}, {"sort", Json::array()}, {"text", first}, {"fields", {"FItemNumber"}}});
  EXPECT_EQ(narrowed["rowCount"], 1);
  const Json why = page.Do("explain", {{"report", report["report"]}, {"row", 0}, {"field", "FQty"}});
  EXPECT_EQ(why["key"]["FItemNumber"], first);
  EXPECT_EQ(why["filter"][0], "商品代码从[0]到[]");
  EXPECT_EQ(page.Do("closeReport", {{"report", report["report"]}})["type"], "done");
  EXPECT_EQ(Rows(page, report, 0, 1)["code"], "failed");
}

TEST_F(Serve, ACancelledDialogLeavesNoReport) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  page.Send("openReport", {{"programmaticId", kReport}});
  const Json form = page.Await("formOpened");
  page.Send("closeForm", {{"form", form["form"]}});
  const Json failed = page.Await("reportFailed");
  EXPECT_EQ(failed["cancelled"], true);
  EXPECT_EQ(failed["opened"], false);
  EXPECT_EQ(page.Next()["type"], "done");
}

TEST_F(Serve, AnAddressOpensAReportWithoutItsDialog) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  EXPECT_EQ(page.Do("openReport", {{"programmaticId", kReport}, {"filter", {{"BItemNumber", "01"}}}})["type"],
            "done");
  std::string passed;
  for (const Json& message : page.Passed()) passed += message.dump();
  EXPECT_THAT(passed, HasSubstr("商品代码从[01]到[]"));
  EXPECT_THAT(passed, testing::Not(HasSubstr("formOpened")));
  page.Do("openReport", {{"programmaticId", kReport}, {"filter", {{"NoSuchKey", "1"}}}});
  ASSERT_FALSE(page.Passed().empty());
  EXPECT_THAT(page.Passed().back().dump(), HasSubstr("没有这个过滤条件：NoSuchKey"));
  page.Do("openReport", {{"programmaticId", kReport}, {"filter", {{"cboSort", "99"}}}});
  ASSERT_FALSE(page.Passed().empty());
  EXPECT_THAT(page.Passed().back().dump(), HasSubstr("地址里的过滤条件 cboSort=99 用不上。"));
}

TEST_F(Serve, ALookupFillsAField) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  page.Send("openReport", {{"programmaticId", kReport}});
  const Json form = page.Await("formOpened");
  const int pressing =
      page.Send("pressKey", {{"form", form["form"]}, {"control", "txtItem(0)"}, {"key", "F7"}});
  const Json lookup = page.Await("formOpened");
  EXPECT_EQ(lookup["name"], "frmLookup");
  EXPECT_EQ(page.Do("setValue", {{"form", form["form"]}, {"control", "txtItem(0)"}, {"value", "x"}})["code"],
            "state");
  const Json rows = page.Do("queryLookup", {{"dataType", 4}, {"text", ""}, {"limit", 1}});
  const std::string number = rows["rows"][0]["number"].get<std::string>();
  page.Do("setValue", {{"form", lookup["form"]}, {"control", "txtSearch"}, {"value", number}});
  page.Send("click", {{"form", lookup["form"]}, {"control", "cmdOK"}});
  const Json changed = page.Await("formChanged");
  EXPECT_THAT(changed.dump(), HasSubstr("\"txtItem(0)\",\"value\":\"" + number + "\""));
  EXPECT_EQ(page.Next()["re"], pressing);
}

TEST_F(Serve, SchemesAreKeptAndTheLastValuesComeBack) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  page.Send("openReport", {{"programmaticId", kReport}});
  Json form = page.Await("formOpened");
  auto act = [&](const char* action, const char* scheme, const char* to = nullptr) {
    Json fields = {{"form", form["form"]}, {"action", action}, {"scheme", scheme}};
    if (to != nullptr) fields["to"] = to;
    return page.Do("schemeAction", fields);
  };
  auto set = [&](const char* value) {
    page.Do("setValue", {{"form", form["form"]}, {"control", "txtItem(0)"}, {"value", value}});
  };
  set("01");
  EXPECT_EQ(act("save", "五金")["type"], "done");
  EXPECT_EQ(page.Passed().back()["filter"]["schemes"].dump(), "[\"五金\"]");
  set("02");
  EXPECT_EQ(act("load", "五金")["type"], "done");
  EXPECT_THAT(page.Passed().back().dump(), HasSubstr("\"txtItem(0)\",\"value\":\"01\""));
  EXPECT_EQ(act("rename", "五金", "食品")["type"], "done");
  EXPECT_EQ(act("load", "五金")["code"], "refused");
  EXPECT_EQ(act("save", "*last")["code"], "refused");
  EXPECT_EQ(act("save", "")["code"], "refused");
  set("03");
  page.Send("click", {{"form", form["form"]}, {"control", "cmdOK"}});
  page.Await("reportReady");
  page.Next();

  page.Send("openReport", {{"programmaticId", kReport}});
  form = page.Await("formOpened");
  EXPECT_THAT(form["controls"].dump(), HasSubstr("\"tag\":\"BItemNumber\",\"value\":\"03\""));
  EXPECT_EQ(act("setStandard", "食品")["type"], "done");
  page.Send("closeForm", {{"form", form["form"]}});
  page.Await("reportFailed");
  page.Next();
  page.Send("openReport", {{"programmaticId", kReport}});
  form = page.Await("formOpened");
  EXPECT_THAT(form["controls"].dump(), HasSubstr("\"tag\":\"BItemNumber\",\"value\":\"01\""));
  EXPECT_EQ(form["filter"]["current"], "食品");
  EXPECT_EQ(act("delete", "食品")["type"], "done");
  EXPECT_EQ(page.Passed().back()["filter"]["schemes"].dump(), "[]");
}

TEST_F(Serve, PreferencesAreKept) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  EXPECT_TRUE(page.Do("getPreference", {{"key", "columns/10414"}})["value"].is_null());
  page.Do("setPreference", {{"key", "columns/10414"}, {"value", {{"FQty", 120}}}});
  EXPECT_EQ(page.Do("getPreference", {{"key", "columns/10414"}})["value"]["FQty"], 120);
  EXPECT_EQ(page.Do("setPreference", {{"key", "big"}, {"value", std::string(70000, 'x')}})["code"], "fields");
  page.Do("setPreference", {{"key", "columns/10414"}, {"value", nullptr}});
  EXPECT_TRUE(page.Do("getPreference", {{"key", "columns/10414"}})["value"].is_null());
}

TEST_F(Serve, WrongMessagesAreAnsweredAndHarmNothing) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  struct Wrong {
    std::string text;
    std::string code;
  };
  const std::vector<Wrong> cases = {
      {"no json", "malformed"},
      {"{\"type\":\"shutDown\",\"id\":1000}", "unknown"},
      {"{\"type\":\"refresh\",\"id\":1000}", "fields"},
      {"{\"type\":\"refresh\",\"id\":1000,\"report\":99}", "failed"},
      {"{\"type\":\"hello\",\"id\":1000,\"token\":\"x\",\"protocol\":1}", "state"},
      {"{\"type\":\"click\",\"id\":1000,\"form\":1,\"control\":\"cmdOK\"}", "state"},
      {"{\"type\":\"answer\",\"id\":1000,\"message\":1,\"answer\":\"ok\"}", "state"},
      {"{\"type\":\"openReport\",\"id\":1000,\"programmaticId\":\"TOVMStockRpt.Data10414\"}", "failed"},
      {"{\"type\":\"openReport\",\"id\":1000,\"programmaticId\":\"TOVEBCGLView.GLData\"}", "failed"},
  };
  for (const Wrong& one : cases) {
    page.SendText(one.text);
    const Json answer = page.Next();
    EXPECT_EQ(answer["type"], "error") << one.text;
    EXPECT_EQ(answer.value("code", ""), one.code) << one.text;
  }
  const Json report = OpenAndConfirm(page);
  for (const int count : {0, 501, -1}) EXPECT_EQ(Rows(page, report, 0, count)["code"], "fields") << count;
  EXPECT_EQ(Rows(page, report, -1, 10)["code"], "fields");
  EXPECT_EQ(Rows(page, report, 0, 1)["type"], "rows");
}

TEST_F(Serve, AMessageThatIsTooLargeEndsTheConnectionOnly) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  page.SendText(std::string(browser::kLargestCommand + 1, ' '));
  EXPECT_EQ(page.Next()["type"], "closed");
  Page::Opening again = page.How();
  again.session = page.Session();
  const Page back(served.Port(), again);
  EXPECT_EQ(back.Session(), page.Session());
}

TEST_F(Serve, SocketsWithoutCookieOriginOrTokenAreRefused) {
  const Served served({"--book", Book()});
  const Page good(served.Port());
  Page::Opening opening = good.How();
  opening.cookie = "stockrpt=0123456789abcdef0123456789abcdef";
  EXPECT_EQ(Page(served.Port(), opening).Status(), 401U);
  opening.cookie = "";
  EXPECT_EQ(Page(served.Port(), opening).Status(), 401U);
  opening = good.How();
  opening.origin = "http://evil.test";
  EXPECT_EQ(Page(served.Port(), opening).Status(), 403U);
  opening = good.How();
  opening.token = std::string(32, '0');
  const Page noToken(served.Port(), opening);
  EXPECT_EQ(noToken.Status(), 101U);
  EXPECT_EQ(noToken.Session(), "");
  opening = Page(served.Port()).How();
  opening.session = good.Session();
  const Page stranger(served.Port(), opening);
  EXPECT_NE(stranger.Session(), good.Session());
  EXPECT_NE(stranger.Session(), "");
}

TEST_F(Serve, RawNonsenseAndLargeRequestsAreTurnedAway) {
  const Served served({"--book", Book()});
  EXPECT_EQ(SendRaw(served.Port(), "\x16\x03\x01 nonsense\r\n\r\n"), "");
  EXPECT_THAT(SendRaw(served.Port(),
                      "GET / HTTP/1.1\r\nHost: 127.0.0.1\r\nX: " + std::string(20000, 'x') + "\r\n\r\n"),
              HasSubstr(" 431 "));
  EXPECT_THAT(
      SendRaw(served.Port(), "POST /api/login HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Length: 20000\r\n\r\n" +
                                 std::string(20000, 'x')),
      HasSubstr(" 413 "));
  EXPECT_THAT(SendRaw(served.Port(), "GET /../../etc/passwd HTTP/1.0\r\nHost: 127.0.0.1\r\n\r\n"),
              HasSubstr(" 404 "));
  EXPECT_THAT(SendRaw(served.Port(), "GET / HTTP/1.0\r\nHost: rebound.test\r\n\r\n"), HasSubstr(" 403 "));
  EXPECT_EQ(Ask(served.Port(), "GET", "/r/10414").status, 200U);
}

TEST_F(Serve, AKilledWorkerIsToldToItsOwnPageOnly) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const std::vector<int> workers = served.Workers();
  ASSERT_EQ(workers.size(), 1U);
  Page other(served.Port());
  OpenAndConfirm(page);
  kill(workers[0], SIGKILL);
  EXPECT_EQ(page.Await("workerFailed")["state"], "crashed");
  EXPECT_EQ(page.Do("listReports")["code"], "failed");
  EXPECT_EQ(other.Do("listReports")["type"], "reports");
  EXPECT_EQ(page.Do("restart")["type"], "welcome");
  EXPECT_EQ(OpenAndConfirm(page)["type"], "reportReady");
}

TEST_F(Serve, APageThatComesBackFindsItsFormAndItsReports) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = OpenAndConfirm(page);
  page.Next();
  page.Send("showFilter", {{"report", report["report"]}});
  const Json form = page.Await("formOpened");
  page.Do("setValue", {{"form", form["form"]}, {"control", "txtItem(1)"}, {"value", "09"}});
  Page::Opening again = page.How();
  again.session = page.Session();
  page.Drop();

  Page back(served.Port(), again);
  EXPECT_EQ(back.Session(), page.Session());
  const Json found = back.Await("formOpened");
  ASSERT_FALSE(back.Passed().empty());
  EXPECT_EQ(back.Passed()[0]["type"], "reportReady");
  EXPECT_EQ(found["form"], form["form"]);
  EXPECT_THAT(found["controls"].dump(), HasSubstr("\"tag\":\"EItemNumber\",\"value\":\"09\""));
  back.Send("click", {{"form", found["form"]}, {"control", "cmdOK"}});
  EXPECT_THAT(back.Await("reportReady")["title"][0]["caption"].get<std::string>(), HasSubstr("]到[09]"));
}

TEST_F(Serve, ASecondPageTakesASessionOver) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  Page::Opening again = page.How();
  again.session = page.Session();
  Page second(served.Port(), again);
  EXPECT_EQ(second.Session(), page.Session());
  EXPECT_EQ(page.Next()["reason"], "replaced");
  EXPECT_EQ(page.Next()["type"], "closed");
  EXPECT_EQ(second.Do("ping")["type"], "done");
}

TEST_F(Serve, WithPasswordsALoginIsNeeded) {
  const std::string book = (folder_ / "locked.db").string();
  std::filesystem::copy_file(Book(), book);
  EXPECT_EQ(Run("serve --book " + book + " --listen 0.0.0.0:0 --page " TEST_SOURCE_DIR "/page 2>/dev/null"),
            2);
  ASSERT_EQ(Run("user add " + book + " lily >/dev/null 2>&1 </dev/null"), 2);
  ASSERT_EQ(std::system(("echo warm-stock-taking-2026 | " TEST_BINARY_DIR "/stockrpt user add " + book +
                         " lily >/dev/null 2>&1")
                            .c_str()),
            0);
  EXPECT_EQ(Run("serve --book " + book + " --listen 0.0.0.0:0 --user lily 2>/dev/null"), 2);
  const Served served({"--book", book});
  const HttpAnswer start = Ask(served.Port(), "GET", "/api/start");
  EXPECT_THAT(start.body, HasSubstr("\"login\":\"needed\""));
  EXPECT_EQ(start.cookie, "");
  EXPECT_EQ(Ask(served.Port(), "POST", "/api/login", "{\"name\":\"lily\",\"password\":\"wrong\"}").status,
            401U);
  const HttpAnswer in =
      Ask(served.Port(), "POST", "/api/login", "{\"name\":\"lily\",\"password\":\"warm-stock-taking-2026\"}");
  ASSERT_EQ(in.status, 200U);
  Page page(served.Port(), {.cookie = in.cookie,
                            .origin = {},
                            .session = {},
                            .token = Json::parse(in.body)["token"].get<std::string>()});
  EXPECT_EQ(page.Do("listReports")["type"], "reports");
}

TEST_F(Serve, RefusesToStartWithoutAPageABookOrAnAddress) {
  EXPECT_EQ(Run("serve --book " + Book() + " --page " + folder_.string() + " 2>/dev/null"), 2);
  EXPECT_EQ(Run("serve --book " + Book() + ".none --page " TEST_SOURCE_DIR "/page 2>/dev/null"), 2);
  EXPECT_EQ(
      Run("serve --book " + Book() + " --listen localhost:80 --page " TEST_SOURCE_DIR "/page 2>/dev/null"),
      2);
  EXPECT_EQ(Run("serve --book " + Book() + " --user nobody --page " TEST_SOURCE_DIR "/page 2>/dev/null"), 2);
}

TEST_F(Serve, ManySessionsReadSideBySide) {
  constexpr int kSessions = 20;
  const Served served({"--book", Book(), "--sessions", std::to_string(kSessions)});
  std::vector<std::unique_ptr<Page>> pages;
  for (int i = 0; i < kSessions; ++i) pages.push_back(std::make_unique<Page>(served.Port()));
  EXPECT_EQ(served.Workers().size(), static_cast<std::size_t>(kSessions));
  EXPECT_EQ(Page(served.Port()).Session(), "");
  std::string first;
  for (const auto& page : pages) {
    const Json report = OpenAndConfirm(*page);
    page->Next();
    const std::string rows = Rows(*page, report, 0, 500)["values"].dump();
    if (first.empty()) first = rows;
    EXPECT_EQ(rows, first);
  }
}

}  // namespace
}  // namespace browser_tests
