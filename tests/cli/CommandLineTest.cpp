// The command as a user types it: the built program is run, and its exit status and what it writes are looked
// at. One demo book serves all cases.
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Ran {
  int status = -1;
  std::string text;  // standard output and errors together
};

Ran Type(const std::string& arguments) {
  const std::string command = std::string(TEST_BINARY_DIR) + "/stockrpt " + arguments + " 2>&1";
  Ran ran;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return ran;
  std::array<char, 4096> buffer{};
  for (std::size_t read = 0; (read = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
    ran.text.append(buffer.data(), read);
  }
  const int ended = pclose(pipe);
  ran.status = WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
  return ran;
}

class CommandLine : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder_ = std::filesystem::temp_directory_path() / ("stockrpt-cli-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder_);
    WriteText("empty.json", "[]");
    WriteText("broken.json", "[{");
    WriteText("weak.txt", "123\n");
    const Ran made = Type("demo " + Book() + " --items 40 --months 3 --quiet");
    ASSERT_EQ(made.status, 0) << made.text;
  }
  static void TearDownTestSuite() { std::filesystem::remove_all(folder_); }

  static std::string Book() { return (folder_ / "demo.db").string(); }
  static std::string In(const char* name) { return (folder_ / name).string(); }

  static void WriteText(const char* name, const char* text) { std::ofstream(folder_ / name) << text; }

  // Replaces BOOK and DIR in a case's arguments.
  static std::string Filled(std::string arguments) {
    auto replace = [&](const std::string& word, const std::string& with) {
      for (std::size_t at = 0; (at = arguments.find(word, at)) != std::string::npos; at += with.size()) {
        arguments.replace(at, word.size(), with);
      }
    };
    replace("BOOK", Book());
    replace("DIR", folder_.string());
    return arguments;
  }

 private:
  static std::filesystem::path folder_;
};

std::filesystem::path CommandLine::folder_;

struct Case {
  const char* name;
  const char* arguments;
  int status;
  const char* holds;
};

const Case kCases[] = {
    {"list", "list", 0, "TOVStockRpt.Rpt10414\t10414\t商品超储短缺表\n"},
    {"list has the class whose number differs", "list", 0, "TOVStockRpt.Rpt302\t10422\t即时库存表\n"},
    {"version", "--version", 0, "stockrpt "},
    {"help of a command", "run --help", 0, "--industry-type"},
    {"a table", "run Rpt10414 --book BOOK", 0, "商品代码       "},
    {"by number", "run 10414 --book BOOK --limit 0", 0, "商品代码[全部]"},
    {"a range in the title", "run Rpt10414 BItemNumber=01 --book BOOK --limit 0", 0, "商品代码从[01]到[]"},
    {"csv", "run Rpt10414 --book BOOK --format csv --limit 0", 0,
     "\xEF\xBB\xBF商品代码,商品名称,规格型号,单位,"},
    {"json", "run Rpt10414 --book BOOK --format json", 0, R"({"result":{"dictionary":{"OK":true,"Error":"")"},
    {"json holds the rows", "run Rpt10414 --book BOOK --format json", 0,
     R"("rows":{"recordset":{"fields":[["FItemNumber",)"},
    {"rows that come as a list", "run Rpt302 --book BOOK --format csv --limit 0", 0, "商品代码,商品名称"},
    {"json of a list, cut", "run Rpt302 --book BOOK --format json --limit 0", 0,
     R"("rows":{"vector":[{"recordset":{"fields":[["FItemNumber",)"},
    {"no auxiliary unit in application type 1",
     "run Rpt10414 --book BOOK --app-type 1 --format csv --limit 0", 0, "超储短缺数量\r\n"},
    {"a filter key without a field", "run Rpt10414 'OrderBy=FQty DESC ' --book BOOK --limit 0", 0,
     "商品超储短缺表"},
    {"a sound book", "check BOOK", 0, "sound"},
    {"a script", "play - < DIR/empty.json", 0, ""},
    {"the logins", "user list BOOK", 0, "\t"},
    {"the example import", "import DIR/imported.db " TEST_SOURCE_DIR "/../../examples/import", 0,
     "a new book"},
    {"a dry run", "import DIR/dry.db " TEST_SOURCE_DIR "/../../examples/import --dry-run", 0, ""},

    {"a workbook", "run Rpt10414 --book BOOK --format xlsx --out DIR/report.xlsx", 0, ""},
    {"pages", "run Rpt10414 --book BOOK --format pdf --out DIR/report.pdf", 0, ""},
    {"pages on a paper of choice",
     "run Rpt10414 --book BOOK --format pdf --paper 16k --orientation landscape --out DIR/small.pdf", 0, ""},
    {"all pages of the ledger", "run Rpt10402 BDate=2024-01-01 EDate=2024-01-31 --all --book BOOK --limit 1",
     0, "pages, ending with the rows"},
    {"all pages of the ledger on paper",
     "run Rpt10402 BDate=2024-01-01 EDate=2024-01-31 --all --book BOOK --format pdf --out DIR/ledger.pdf", 0,
     "pages, ending with the rows"},
    {"all pages of the ledger as a workbook",
     "run Rpt10402 BDate=2024-01-01 EDate=2024-01-31 --all --book BOOK --format xlsx --out DIR/ledger.xlsx",
     0, "pages, ending with the rows"},
    {"a page of an item that is not there", "run Rpt10402 --item 99 --book BOOK", 1,
     "未找到代码为 [99]的物料"},
    {"pages of a report that has none", "run Rpt10414 --all --book BOOK", 2, "no pages by item"},
    {"one page and all pages", "run Rpt10402 --all --item 01 --book BOOK", 2, "excludes"},

    {"no command", "", 2, "subcommand is required"},
    {"an unknown command", "frobnicate", 2, ""},
    {"an unknown report", "run Rpt1 --book BOOK", 2, "there is no report 'Rpt1'"},
    {"an unknown key", "run Rpt10414 Foo=1 --book BOOK", 2, "no filter key 'Foo'; it has BItemNumber"},
    {"a key that the report decides", "run Rpt10414 UserID=1 --book BOOK", 2, "no filter key 'UserID'"},
    {"no key at all", "run Rpt10414 01.02 --book BOOK", 2, "'01.02' is no KEY=VALUE"},
    {"an entry that is not there", "run Rpt10414 cboSort=9 --book BOOK", 2, "there is no entry 9"},
    {"a workbook without a file", "run Rpt10414 --book BOOK --format xlsx", 2, "name it with --out FILE"},
    {"a workbook where nothing can be written", "run Rpt10414 --book BOOK --format xlsx --out /no/x.xlsx", 2,
     "cannot write /no/x.xlsx; name a file"},
    {"a paper that is none", "run Rpt10414 --book BOOK --format pdf --paper C7 --out DIR/x.pdf", 2,
     "there is no paper C7; choose one of A4, A3, A5, B4, B5, 8K, 16K, Letter, Legal"},
    {"an orientation that is none", "run Rpt10414 --book BOOK --format pdf --orientation up --out DIR/x.pdf",
     2, "up is none; choose auto, portrait or landscape"},
    {"a paper for a table", "run Rpt10414 --book BOOK --paper A3", 2, "are for --format pdf"},
    {"no book", "run Rpt10414", 2, "no stock book is given"},
    {"a missing book", "run Rpt10414 --book DIR/none.db", 2, "there is no file"},
    {"a file that is no book", "run Rpt10414 --book " TEST_BINARY_DIR "/stockrpt", 2, "no stock book"},
    {"an unknown format", "run Rpt10414 --book BOOK --format xml", 2, "--format"},
    {"a folder that cannot be written to", "run Rpt10414 --book BOOK --out DIR/no/file", 2, "cannot write"},
    {"a sort order that is refused", "run Rpt10414 'OrderBy=FQty; x' --book BOOK", 1, "OrderBy"},
    {"a demo book that exists", "demo BOOK", 2, "--force"},
    {"a script that is not there", "play DIR/none.json", 2, "cannot read the script"},
    {"a script that is none", "play - < DIR/broken.json", 2, "line "},
    {"a folder that is not there", "import DIR/x.db DIR/none", 2, ""},
    {"a weak password", "user add BOOK bob < DIR/weak.txt", 2, "password"},
};

TEST_F(CommandLine, Cases) {
  for (const Case& each : kCases) {
    SCOPED_TRACE(each.name);
    const Ran ran = Type(Filled(each.arguments));
    EXPECT_EQ(ran.status, each.status) << ran.text;
    EXPECT_NE(ran.text.find(each.holds), std::string::npos) << ran.text;
  }
}

TEST_F(CommandLine, AFileHoldsWhatWouldBePrinted) {
  const Ran printed = Type("run Rpt10414 --book " + Book() + " --format csv");
  const Ran written = Type("run Rpt10414 --book " + Book() + " --format csv --out " + In("report.csv"));
  EXPECT_EQ(written.status, 0);
  EXPECT_EQ(written.text, "");
  FILE* file = fopen(In("report.csv").c_str(), "rb");
  ASSERT_NE(file, nullptr);
  std::string text(1 << 20, '\0');
  text.resize(fread(text.data(), 1, text.size(), file));
  fclose(file);
  EXPECT_EQ(text, printed.text);
}

TEST_F(CommandLine, ADryRunWritesNothing) {
  const Ran ran = Type("import " + In("never.db") + " " TEST_SOURCE_DIR "/../../examples/import --dry-run");
  EXPECT_EQ(ran.status, 0) << ran.text;
  EXPECT_FALSE(std::filesystem::exists(In("never.db")));
}

}  // namespace
