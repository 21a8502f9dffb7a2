// The stock ledger over the session: the walk over its items, and the pages of all of them.
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/browser/server/Client.h"

namespace browser_tests {
namespace {

using testing::HasSubstr;

class Ledger : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder_ = std::filesystem::temp_directory_path() / ("stockrpt-ledger-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder_);
    const std::string command =
        TEST_BINARY_DIR "/stockrpt demo " + Book() + " --items 12 --months 3 --seed 7 --quiet";
    ASSERT_EQ(std::system(command.c_str()), 0);
  }
  static void TearDownTestSuite() { std::filesystem::remove_all(folder_); }

  static std::string Book() { return (folder_ / "demo.db").string(); }
  static void Execute(const std::string& statement) {
    const std::string command = "python3 -c \"import sqlite3; b = sqlite3.connect('" + Book() +
                                "'); b.execute('" + statement + "'); b.commit()\"";
    ASSERT_EQ(std::system(command.c_str()), 0);
  }

  static Json Open(Page& page, Json filter) {
    page.Send("openReport", {{"programmaticId", "TOVStockRpt.Rpt10402"}, {"filter", std::move(filter)}});
    Json report = page.Await("reportReady");
    page.Await("done");
    return report;
  }
  // All months of the book, a page of many rows an item.
  static Json OpenAll(Page& page) { return Open(page, {{"BDate", "2020-01-01"}, {"EDate", "2030-12-31"}}); }
  static Json Move(Page& page, const Json& report, const char* to) {
    const Json answer = page.Do("moveItem", {{"report", report["report"]}, {"to", to}});
    EXPECT_EQ(answer["type"], "done") << answer.dump();
    for (const Json& passed : page.Passed()) {
      if (passed["type"] == "reportReady") return passed["ledger"];
    }
    return nullptr;
  }
  static Json MakePages(Page& page, const Json& report, const char* answer) {
    page.Send("allPages", {{"report", report["report"]}});
    const Json question = page.Await("messageShown");
    EXPECT_EQ(question["buttons"], "okcancel");
    EXPECT_THAT(question["text"].get<std::string>(), HasSubstr("取数时间较长,确认继续操作吗?"));
    page.Send("answer", {{"message", question["message"]}, {"answer", answer}});
    return page.Await("pages");
  }

  static inline std::filesystem::path folder_;
};

Json SheetOf(const Json& report, int page, int start, int count) {
  return {{"report", report["report"]},
          {"page", page},
          {"start", start},
          {"count", count},
          {"fields", {"FTranTypeName", "FInQty", "FOutQty", "FBalQty", "FNoSuchField"}}};
}

TEST_F(Ledger, TheItemShownAndItsPlaceAreTold) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = OpenAll(page);
  EXPECT_EQ(report["ledger"]["position"], 1);
  EXPECT_EQ(report["ledger"]["count"], 12);
  EXPECT_EQ(report["ledger"]["pages"], true);
  const auto number = report["ledger"]["number"].get<std::string>();
  EXPECT_THAT(report["title"].dump(), HasSubstr("(" + number + ")"));
  const Json second = Move(page, report, "next");
  EXPECT_EQ(second["position"], 2);
  EXPECT_NE(second["number"], number);
  EXPECT_EQ(Move(page, report, "last")["position"], 12);
  EXPECT_EQ(Move(page, report, "next"), nullptr) << "past the last one nothing is told";
  EXPECT_EQ(Move(page, report, "previous")["position"], 11);
  EXPECT_EQ(Move(page, report, "first")["position"], 1);
  EXPECT_EQ(Move(page, report, "previous"), nullptr);
  page.Do("findItem", {{"report", report["report"]}, {"number", second["number"]}});
  EXPECT_EQ(page.Passed().back()["ledger"], second);
}

TEST_F(Ledger, AMissKeepsThePageAndTheWalkGoesOn) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = OpenAll(page);
  Move(page, report, "last");
  for (const char* number : {"99.99", "it's"}) {
    const Json missed = page.Do("findItem", {{"report", report["report"]}, {"number", number}});
    EXPECT_EQ(missed["code"], "failed");
    EXPECT_EQ(missed["text"], std::string("在当前物料范围内未找到代码为 [") + number + "]的物料!");
  }
  EXPECT_EQ(Move(page, report, "next"), nullptr) << "a miss is not told as a failed page";
  EXPECT_EQ(Move(page, report, "previous")["position"], 11);
}

TEST_F(Ledger, WithoutItemsThePageIsEmpty) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = Open(page, {{"BItemNumber", "zz"}});
  EXPECT_EQ(report["rowCount"], 0);
  EXPECT_EQ(report["ledger"]["position"], 0);
  EXPECT_EQ(report["ledger"]["count"], 0);
  EXPECT_EQ(report["title"].size(), 2U);
  for (const char* to : {"first", "previous", "next", "last"}) {
    EXPECT_EQ(Move(page, report, to), nullptr) << to;
  }
  const Json refused = page.Do("allPages", {{"report", report["report"]}});
  EXPECT_EQ(refused["code"], "failed");
  EXPECT_EQ(refused["text"], "没有符合条件的物料。");
}

TEST_F(Ledger, AllPagesAreReadSheetBySheet) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = OpenAll(page);
  const Json pages = MakePages(page, report, "ok");
  EXPECT_EQ(pages["outcome"], "ready");
  ASSERT_EQ(pages["ends"].size(), 12U);
  const int first = pages["ends"][0].get<int>();
  ASSERT_GT(first, 12);
  const Json head = page.Do("fetchSheet", SheetOf(report, 0, 0, 10));
  EXPECT_EQ(head["type"], "sheet") << head.dump();
  EXPECT_EQ(head["brought"], nullptr);
  EXPECT_EQ(head["values"].size(), 10U);
  EXPECT_EQ(head["values"][0][0], "期初结存");
  EXPECT_EQ(head["values"][0][4], nullptr);
  EXPECT_EQ(head["title"].size(), 7U);
  EXPECT_EQ(head["summary"][0], 0);
  const Json rest = page.Do("fetchSheet", SheetOf(report, 0, 10, 500));
  EXPECT_EQ(rest["brought"], head["carried"]) << "what a sheet hands on is what the next one begins with";
  EXPECT_EQ(rest["carried"], nullptr);
  EXPECT_EQ(rest["values"].size(), static_cast<std::size_t>(first - 10));
  const Json found =
      page.Do("findPage",
              {{"report", report["report"]}, {"text", Move(page, report, "last")["number"]}, {"start", 0}});
  EXPECT_EQ(found["page"], 11) << "walking on leaves the pages";
  EXPECT_EQ(page.Do("findPage", {{"report", report["report"]}, {"text", "zz"}, {"start", 3}})["page"], -1);
  page.Do("refresh", {{"report", report["report"]}});
  EXPECT_EQ(page.Do("fetchSheet", SheetOf(report, 0, 0, 10))["code"], "failed") << "fetched anew";
}

TEST_F(Ledger, AllPagesAreWrittenAsAFile) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = OpenAll(page);
  const auto wish = [&](const char* format, Json fields) {
    return Json{{"report", report["report"]}, {"format", format}, {"fields", std::move(fields)}};
  };
  EXPECT_EQ(page.Do("exportPages", wish("pdf", {"FDate"}))["code"], "failed") << "before they were made";
  MakePages(page, report, "ok");
  for (const char* format : {"pdf", "xlsx"}) {
    const Json written =
        page.Do("exportPages", wish(format, {"FDate", "FTranTypeName", "FInQty", "FBalQty"}));
    ASSERT_EQ(written["type"], "exported") << written.dump();
    EXPECT_EQ(page.Passed().front()["type"], "exportProgress");
    const Json part = page.Do("readExport", {{"export", written["export"]}, {"start", 0}});
    const std::string head = part["data"].get<std::string>().substr(0, 4);
    EXPECT_EQ(head, std::string(format) == "pdf" ? "JVBE" : "UEsD") << format;
  }
  EXPECT_EQ(page.Do("exportPages", wish("pdf", Json::array()))["code"], "fields");
  EXPECT_EQ(page.Do("exportPages", wish("pdf", {"FNoSuchField"}))["code"], "failed");
  Json paper = wish("pdf", {"FDate"});
  paper["paper"] = "A99";
  EXPECT_EQ(page.Do("exportPages", paper)["code"], "fields");
  // While a file is written, what reads is served, and the writing can be ended.
  page.Send("exportPages", wish("pdf", {"FDate", "FTranTypeName"}));
  page.Send("fetchSheet", SheetOf(report, 3, 0, 5));
  page.Send("cancelExport");
  EXPECT_EQ(page.Await("sheet")["page"], 3);
  EXPECT_EQ(page.Await("exported")["export"], 0);
}

TEST_F(Ledger, ADeclinedOrCancelledOutputLeavesThePage) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = OpenAll(page);
  const Json declined = MakePages(page, report, "cancel");
  EXPECT_EQ(declined["outcome"], "declined");
  EXPECT_TRUE(declined["ends"].empty());
  page.Send("allPages", {{"report", report["report"]}});
  const Json question = page.Await("messageShown");
  // Comes in while the pages are made, behind the answer.
  page.Send("answer", {{"message", question["message"]}, {"answer", "ok"}});
  page.Send("cancelProgress", {{"progress", question["message"].get<int>() - 1}});
  EXPECT_EQ(page.Await("pages")["outcome"], "cancelled");
  EXPECT_EQ(page.Do("fetchSheet", SheetOf(report, 0, 0, 1))["code"], "failed");
  EXPECT_EQ(Move(page, report, "next")["position"], 2);
  EXPECT_EQ(MakePages(page, report, "ok")["outcome"], "ready") << "the next run is clean";
}

TEST_F(Ledger, WhatIsWronglyAskedForIsRefused) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = OpenAll(page);
  EXPECT_EQ(page.Do("fetchSheet", SheetOf(report, 0, 0, 1))["code"], "failed") << "before they were made";
  MakePages(page, report, "ok");
  struct Case {
    const char* name;
    Json command;
    const char* code;
  };
  const std::vector<Case> cases = {
      {"a page past the last", SheetOf(report, 12, 0, 1), "failed"},
      {"a page before the first", SheetOf(report, -1, 0, 1), "fields"},
      {"rows before the first", SheetOf(report, 0, -1, 1), "fields"},
      {"no rows", SheetOf(report, 0, 0, 0), "fields"},
      {"too many rows", SheetOf(report, 0, 0, 501), "fields"},
      {"a report that is not open", SheetOf({{"report", 99}}, 0, 0, 1), "failed"},
  };
  for (const Case& one : cases) EXPECT_EQ(page.Do("fetchSheet", one.command)["code"], one.code) << one.name;
  EXPECT_EQ(page.Do("fetchSheet", SheetOf(report, 0, 100'000, 1))["values"].size(), 0U);
  page.Send("openReport", {{"programmaticId", "TOVStockRpt.Rpt10414"}, {"filter", Json::object()}});
  const Json other = page.Await("reportReady");
  page.Await("done");
  for (const char* command : {"moveItem", "findItem", "allPages"}) {
    Json fields = {{"report", other["report"]}};
    if (std::string(command) == "moveItem") fields["to"] = "next";
    if (std::string(command) == "findItem") fields["number"] = "01";
    const Json refused = page.Do(command, fields);
    EXPECT_EQ(refused["text"], "这个报表不是逐个商品查看的。") << command;
  }
}

TEST_F(Ledger, DataThatFailIsToldAndTheNextRunIsClean) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = OpenAll(page);
  Execute("ALTER TABLE movement RENAME TO movement_gone");
  page.Send("moveItem", {{"report", report["report"]}, {"to", "next"}});
  const Json failed = page.Await("reportFailed");
  EXPECT_FALSE(failed["error"].get<std::string>().empty());
  EXPECT_EQ(failed["opened"], true);
  page.Await("done");
  page.Send("allPages", {{"report", report["report"]}});
  const Json question = page.Await("messageShown");
  page.Send("answer", {{"message", question["message"]}, {"answer", "ok"}});
  EXPECT_EQ(page.Await("error")["code"], "failed");
  Execute("ALTER TABLE movement_gone RENAME TO movement");
  EXPECT_EQ(MakePages(page, report, "ok")["ends"].size(), 12U);
  EXPECT_EQ(Move(page, report, "previous")["position"], 1);
}

}  // namespace
}  // namespace browser_tests
