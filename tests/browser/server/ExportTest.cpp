// Files of a report over the session: what the page shows is what they hold.
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/browser/server/Client.h"

namespace browser_tests {
namespace {

using testing::HasSubstr;
using testing::Not;

class Export : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder_ = std::filesystem::temp_directory_path() / ("stockrpt-export-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder_);
    const std::string command = TEST_BINARY_DIR "/stockrpt demo " + Book() + " --items 40 --months 3 --quiet";
    ASSERT_EQ(std::system(command.c_str()), 0);
  }
  static void TearDownTestSuite() { std::filesystem::remove_all(folder_); }

  static std::string Book() { return (folder_ / "demo.db").string(); }

  static Json Open(Page& page) {
    page.Send("openReport", {{"programmaticId", "TOVStockRpt.Rpt10414"}, {"filter", Json::object()}});
    const Json report = page.Await("reportReady");
    page.Next();
    return report;
  }

  // The whole file, part by part.
  static std::string Fetch(Page& page, const Json& exported) {
    std::string bytes;
    for (bool more = true; more;) {
      const Json part = page.Do("readExport", {{"export", exported["export"]}, {"start", bytes.size()}});
      EXPECT_EQ(part["type"], "exportPart") << part.dump();
      if (part["type"] != "exportPart") break;
      bytes += Decoded(part["data"].get<std::string>());
      more = part["more"].get<bool>();
    }
    return bytes;
  }

  static std::string Decoded(const std::string& text) {
    static const std::string kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    unsigned held = 0;
    int bits = 0;
    for (const char character : text) {
      if (character == '=') break;
      held = (held << 6U) | static_cast<unsigned>(kDigits.find(character));
      bits += 6;
      if (bits < 8) continue;
      bits -= 8;
      bytes += static_cast<char>((held >> static_cast<unsigned>(bits)) & 0xFFU);
    }
    return bytes;
  }

  // What stands on the pages.
  static std::string TextOf(const std::string& pages) {
    const std::string path = (folder_ / "pages.pdf").string();
    std::ofstream(path, std::ios::binary) << pages;
    return Told("pdftotext -layout " + path + " -");
  }

  static std::string Told(const std::string& command) {
    FILE* pipe = popen(command.c_str(), "r");
    std::string text;
    std::array<char, 4096> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
      text.append(buffer.data(), count);
    }
    EXPECT_EQ(pclose(pipe), 0);
    return text;
  }

  // The only sheet of a workbook, as it stands in the archive.
  static std::string SheetOf(const std::string& workbook) {
    const std::string path = (folder_ / "book.xlsx").string();
    std::ofstream(path, std::ios::binary) << workbook;
    return Told("python3 -c \"import zipfile,sys; sys.stdout.write(zipfile.ZipFile('" + path +
                "').read('xl/worksheets/sheet1.xml').decode())\"");
  }

  static inline std::filesystem::path folder_;
};

Json Wish(const Json& report, const char* format, Json fields, const Json& more = Json::object()) {
  Json wish = {{"report", report["report"]}, {"format", format}, {"fields", std::move(fields)}};
  wish.update(more);
  return wish;
}

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
  return count;
}

TEST_F(Export, AWorkbookHoldsTheColumnsAndRowsOfTheView) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = Open(page);
  page.Do("setView",
          {{"report", report["report"]}, {"sort", {{{"field", "FItemNumber"}, {"descending", true}}}}});
  const Json last = page.Do("fetchRows", {{"report", report["report"]},
                                          {"start", 0},
                                          {"count", 1},
                                          {"fields", {"FItemNumber"}}})["values"][0][0];
  const Json exported = page.Do("exportReport", Wish(report, "xlsx", {"FQty", "FItemNumber"}));
  ASSERT_EQ(exported["type"], "exported");
  ASSERT_FALSE(page.Passed().empty());
  EXPECT_EQ(page.Passed()[0]["type"], "exportProgress");
  EXPECT_EQ(page.Passed()[0]["all"], report["rowCount"]);
  const std::string workbook = Fetch(page, exported);
  EXPECT_EQ(workbook.size(), exported["size"].get<std::size_t>());
  EXPECT_EQ(workbook.substr(0, 4), "PK\x03\x04");
  const std::string sheet = SheetOf(workbook);
  // The name, the title lines and the heading stand over the rows.
  const std::size_t above = 1 + report["title"].size() + 1;
  EXPECT_EQ(CountOf(sheet, "<row "), above + report["rowCount"].get<std::size_t>());
  EXPECT_THAT(sheet, HasSubstr("<t>商品超储短缺表</t>"));
  EXPECT_LT(sheet.find("<t>结存数量</t>"), sheet.find("<t>商品代码</t>"));
  EXPECT_THAT(sheet, Not(HasSubstr("<t>商品名称</t>")));
  EXPECT_THAT(sheet, HasSubstr("<c r=\"B" + std::to_string(above + 1) + "\""));
  const std::size_t first = sheet.find("<row r=\"" + std::to_string(above + 1) + "\"");
  EXPECT_THAT(sheet.substr(first, sheet.find("</row>", first) - first),
              HasSubstr("<t>" + last.get<std::string>() + "</t>"));
}

TEST_F(Export, PagesAreAPdf) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = Open(page);
  const std::string pages =
      Fetch(page, page.Do("exportReport", Wish(report, "pdf", {"FItemNumber", "FItemName", "FQty"})));
  EXPECT_EQ(pages.substr(0, 5), "%PDF-");
  EXPECT_NE(pages.rfind("%%EOF"), std::string::npos);
}

TEST_F(Export, ValuesAloneAreALineEach) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = Open(page);
  const std::string lines =
      Fetch(page, page.Do("exportReport", Wish(report, "csv", {"FItemNumber", "FQty"})));
  EXPECT_THAT(lines, testing::StartsWith("\xEF\xBB\xBF商品代码,结存数量\r\n"));
  EXPECT_EQ(CountOf(lines, "\r\n"), report["rowCount"].get<std::size_t>() + 1);
}

TEST_F(Export, PagesAreOnThePaperThatIsAskedFor) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = Open(page);
  const std::string pages =
      Fetch(page, page.Do("exportReport", Wish(report, "pdf", {"FItemNumber", "FQty"},
                                               {{"paper", "Letter"}, {"orientation", "landscape"}})));
  EXPECT_THAT(pages, HasSubstr("/MediaBox [ 0 0 792 612 ]"));
}

TEST_F(Export, AQuickFilterCountsToo) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = Open(page);
  const Json number = page.Do("fetchRows", {{"report", report["report"]},
                                            {"start", 2},
                                            {"count", 1},
                                            {"fields", {"FItemNumber"}}})["values"][0][0];
  page.Do(
      "setView",
      {{"report", report["report"]}, {"sort", Json::array()}, {"text", number}, {"fields", {"FItemNumber"}}});
  const std::string sheet =
      SheetOf(Fetch(page, page.Do("exportReport", Wish(report, "xlsx", {"FItemNumber"}))));
  EXPECT_EQ(CountOf(sheet, "<row "), 1 + report["title"].size() + 1 + 1);
  EXPECT_THAT(sheet, HasSubstr("<t>" + number.get<std::string>() + "</t>"));
}

TEST_F(Export, IsCancelledWhileItIsWritten) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = Open(page);
  // Both commands wait for the worker before it goes on.
  const int worker = served.Workers().at(0);
  kill(worker, SIGSTOP);
  const int exporting = page.Send("exportReport", Wish(report, "pdf", {"FItemNumber"}));
  page.Send("cancelExport");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(page.Do("ping")["type"], "done");
  kill(worker, SIGCONT);
  const Json exported = page.Await("exported");
  EXPECT_EQ(exported["re"], exporting);
  EXPECT_EQ(exported["export"], 0);
  EXPECT_EQ(page.Do("readExport", {{"export", 1}, {"start", 0}})["code"], "failed");
  EXPECT_GT(page.Do("exportReport", Wish(report, "xlsx", {"FItemNumber"}))["size"], 0);
}

// The process that writes a file for this session, made to wait until it is told to go on.
class HeldWriter {
 public:
  explicit HeldWriter(int worker) {
    const std::string number = std::to_string(worker);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (process_ == 0 && std::chrono::steady_clock::now() < end) {
      std::ifstream("/proc/" + number + "/task/" + number + "/children") >> process_;
    }
    if (process_ > 0) kill(process_, SIGSTOP);
  }
  bool Stands() const { return process_ > 0 && Becomes("T"); }
  bool IsGone() const { return Becomes("Z"); }
  void GoOn() const { kill(process_, SIGCONT); }

 private:
  // As the system names its state; a process that nobody waits for any more is as good as dead.
  bool Becomes(const std::string& wanted) const {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (std::chrono::steady_clock::now() < end) {
      std::ifstream stat("/proc/" + std::to_string(process_) + "/stat");
      std::string number;
      std::string name;
      std::string state = "Z";
      stat >> number >> name >> state;
      if (state == wanted) return true;
    }
    return false;
  }

  int process_ = 0;
};

TEST_F(Export, TheSessionGoesOnMeanwhileAndTheFileHoldsWhatWasSeen) {
  struct Case {
    const char* name;
    std::function<void(Page& page, const Json& report)> change;
  };
  const std::vector<Case> cases = {
      {"sorted anew",
       [](Page& page, const Json& report) {
         const Json sort = {{{"field", "FItemNumber"}, {"descending", true}}};
         EXPECT_EQ(page.Do("setView", {{"report", report["report"]}, {"sort", sort}})["type"], "view");
       }},
      {"fetched anew",
       [](Page& page, const Json& report) {
         EXPECT_EQ(page.Do("refresh", {{"report", report["report"]}})["type"], "done");
       }},
      {"closed",
       [](Page& page, const Json& report) {
         EXPECT_EQ(page.Do("closeReport", {{"report", report["report"]}})["type"], "done");
       }},
      {"in a dialog",
       [](Page& page, const Json& report) {
         page.Send("showFilter", {{"report", report["report"]}});
         const Json form = page.Await("formOpened");
         EXPECT_EQ(page.Do("closeForm", {{"form", form["form"]}})["type"], "done");
       }},
  };
  const Served served({"--book", Book()});
  Page page(served.Port());
  const int worker = served.Workers().at(0);
  const Json wanted = Open(page);
  const std::string seen =
      TextOf(Fetch(page, page.Do("exportReport", Wish(wanted, "pdf", {"FItemNumber", "FQty"}))));
  for (const Case& one : cases) {
    const Json report = Open(page);
    const int exporting = page.Send("exportReport", Wish(report, "pdf", {"FItemNumber", "FQty"}));
    const HeldWriter writer(worker);
    ASSERT_TRUE(writer.Stands()) << one.name;
    one.change(page, report);
    EXPECT_TRUE(writer.Stands()) << one.name;
    writer.GoOn();
    const Json exported = page.Await("exported");
    EXPECT_EQ(exported["re"], exporting) << one.name;
    EXPECT_EQ(TextOf(Fetch(page, exported)), seen) << one.name;
  }
}

TEST_F(Export, OnlyOneFileIsWrittenAtATime) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = Open(page);
  page.Send("exportReport", Wish(report, "pdf", {"FItemNumber"}));
  const HeldWriter writer(served.Workers().at(0));
  ASSERT_TRUE(writer.Stands());
  const Json second = page.Do("exportReport", Wish(report, "xlsx", {"FQty"}));
  EXPECT_EQ(second.value("code", ""), "failed");
  EXPECT_THAT(second.value("text", ""), HasSubstr("另一个文件正在导出"));
  writer.GoOn();
  EXPECT_GT(page.Await("exported")["export"], 0);
}

TEST_F(Export, ACancelledFileIsNotWrittenOn) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = Open(page);
  page.Send("exportReport", Wish(report, "pdf", {"FItemNumber"}));
  const HeldWriter writer(served.Workers().at(0));
  ASSERT_TRUE(writer.Stands());
  EXPECT_EQ(page.Do("cancelExport")["type"], "done");
  ASSERT_FALSE(page.Passed().empty());
  EXPECT_EQ(page.Passed().back()["type"], "exported");
  EXPECT_EQ(page.Passed().back()["export"], 0);
  EXPECT_TRUE(writer.IsGone());
}

TEST_F(Export, AWriterThatDiesIsTold) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = Open(page);
  const int exporting = page.Send("exportReport", Wish(report, "pdf", {"FItemNumber"}));
  int writer = 0;
  const int worker = served.Workers().at(0);
  const std::string number = std::to_string(worker);
  for (int i = 0; i < 100'000 && writer == 0; ++i) {
    std::ifstream("/proc/" + number + "/task/" + number + "/children") >> writer;
  }
  ASSERT_GT(writer, 0);
  kill(writer, SIGKILL);
  const Json failed = page.Await("error");
  EXPECT_EQ(failed["re"], exporting);
  EXPECT_EQ(failed["code"], "failed");
  EXPECT_GT(page.Do("exportReport", Wish(report, "xlsx", {"FQty"}))["size"], 0);
}

TEST_F(Export, AnEndedSessionEndsItsWriter) {
  std::optional<HeldWriter> writer;
  {
    const Served served({"--book", Book()});
    Page page(served.Port());
    const Json report = Open(page);
    page.Send("exportReport", Wish(report, "pdf", {"FItemNumber"}));
    writer.emplace(served.Workers().at(0));
    ASSERT_TRUE(writer->Stands());
    kill(served.Workers().at(0), SIGKILL);
    EXPECT_TRUE(writer->IsGone());
  }
}

TEST_F(Export, OneFileIsHeldUntilItIsReadOrDropped) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = Open(page);
  const Json first = page.Do("exportReport", Wish(report, "xlsx", {"FItemNumber"}));
  const Json second = page.Do("exportReport", Wish(report, "xlsx", {"FQty"}));
  const auto read = [&](const Json& exported, int start) {
    return page.Do("readExport", {{"export", exported["export"]}, {"start", start}});
  };
  EXPECT_EQ(read(first, 0)["code"], "failed");
  EXPECT_EQ(read(second, -1)["code"], "fields");
  EXPECT_EQ(read(second, second["size"].get<int>() + 1)["code"], "fields");
  EXPECT_EQ(read(second, 0)["more"], false);
  EXPECT_EQ(read(second, 0)["code"], "failed");
  const Json third = page.Do("exportReport", Wish(report, "xlsx", {"FQty"}));
  EXPECT_EQ(page.Do("cancelExport")["type"], "done");
  EXPECT_EQ(read(third, 0)["code"], "failed");
}

TEST_F(Export, WhatCannotBeExportedIsRefused) {
  const Served served({"--book", Book()});
  Page page(served.Port());
  const Json report = Open(page);
  struct Refused {
    const char* name;
    Json wish;
    std::string code;
    std::string text = {};
  };
  const std::vector<Refused> cases = {
      {"another format", Wish(report, "docx", {"FQty"}), "fields"},
      {"no columns", Wish(report, "xlsx", Json::array()), "fields"},
      {"columns without end", Wish(report, "xlsx", Json(std::vector<std::string>(401, "FQty"))), "fields"},
      {"a column that is in no heading", Wish(report, "xlsx", {"FQty", "FNoSuchField"}), "failed"},
      {"a paper that is none", Wish(report, "pdf", {"FQty"}, {{"paper", "C7"}}), "fields", "no paper C7"},
      {"a paper that is no text", Wish(report, "pdf", {"FQty"}, {{"paper", 4}}), "fields"},
      {"an orientation that is none", Wish(report, "pdf", {"FQty"}, {{"orientation", "up"}}), "fields"},
      {"a report that is not open", Wish({{"report", 99}}, "pdf", {"FQty"}), "failed"},
  };
  for (const Refused& one : cases) {
    const Json answer = page.Do("exportReport", one.wish);
    EXPECT_EQ(answer["type"], "error") << one.name;
    EXPECT_EQ(answer.value("code", ""), one.code) << one.name;
    EXPECT_THAT(answer.value("text", ""), HasSubstr(one.text)) << one.name;
  }
  page.Send("showFilter", {{"report", report["report"]}});
  const Json form = page.Await("formOpened");
  EXPECT_EQ(page.Do("exportReport", Wish(report, "xlsx", {"FQty"}))["code"], "state");
}

}  // namespace
}  // namespace browser_tests
