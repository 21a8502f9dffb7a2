#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>

#include <CLI/CLI.hpp>

#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/ReportRun.h"
#include "platform/rows/Dictionary.h"
#include "platform/value/Convert.h"
#include "player/Json.h"

namespace cli {
namespace {

using platform::Dictionary;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using platform::Vector;

struct RunOptions {
  ReportRequest request;
  std::vector<std::string> keys;
  std::string book;
  std::string format = "table";
  std::string out;
  std::optional<std::size_t> limit;
};

std::pair<std::string, std::string> SplitKey(const std::string& argument) {
  const std::size_t equals = argument.find('=');
  if (equals == std::string::npos || equals == 0) {
    throw UsageError("'" + argument + "' is no KEY=VALUE; write, for example, BItemNumber=01");
  }
  return {argument.substr(0, equals), argument.substr(equals + 1)};
}

const Recordset& RowsOf(const ReportOutcome& outcome) {
  const Ref<Recordset> rows = outcome.rows.AsRef<Recordset>();
  if (!rows) throw std::runtime_error("the report hands back no rows that a table can show");
  return *rows;
}

std::vector<std::string> TitleLines(const ReportOutcome& outcome) {
  std::vector<std::string> lines;
  const Ref<Vector> title = outcome.title.AsRef<Vector>();
  if (!title) return lines;
  for (const Variant& item : title->Items()) {
    if (const Ref<Dictionary> line = item.AsRef<Dictionary>()) {
      lines.push_back(platform::ToText(line->Value("FCaption")));
    }
  }
  return lines;
}

// Keeps the first rows of a recordset value.
void CutRows(player::Json& rows, std::optional<std::size_t> limit) {
  if (!limit || !rows.contains("recordset")) return;
  auto& list = rows["recordset"]["rows"];
  if (list.size() > *limit) list.erase(list.begin() + static_cast<std::ptrdiff_t>(*limit), list.end());
}

void WriteJson(std::ostream& out, const ReportOutcome& outcome, std::optional<std::size_t> limit) {
  player::Json json = player::Json::object();
  json["result"] = player::ToJson(outcome.result);
  json["property"] = player::ToJson(outcome.property);
  json["title"] = player::ToJson(outcome.title);
  json["header"] = player::ToJson(outcome.header);
  json["rows"] = player::ToJson(outcome.rows);
  CutRows(json["rows"], limit);
  out << player::ToLine(json) << '\n';
}

void WriteOutcome(std::ostream& out, const ReportOutcome& outcome, const RunOptions& options) {
  if (options.format == "json") return WriteJson(out, outcome, options.limit);
  const Ref<Vector> header = outcome.header.AsRef<Vector>();
  const Ref<Dictionary> property = outcome.property.AsRef<Dictionary>();
  if (!header || !property) throw std::runtime_error("the report hands back no heading");
  const Recordset& rows = RowsOf(outcome);
  const Grid grid(*header, rows);
  if (options.format == "csv") {
    WriteCsv(out, grid, options.limit);
  } else {
    WriteTable(out, platform::ToText(property->Value("Name")), TitleLines(outcome), grid, options.limit);
  }
  const std::size_t shown = std::min(grid.RowCount(), options.limit.value_or(grid.RowCount()));
  if (shown < grid.RowCount()) {
    std::cerr << "stockrpt: " << shown << " of " << grid.RowCount() << " rows; --limit shows more\n";
  }
}

// The whole text first, so that a failure leaves no half file.
void Deliver(const ReportOutcome& outcome, const RunOptions& options) {
  std::ostringstream text;
  WriteOutcome(text, outcome, options);
  if (options.out.empty()) {
    std::cout << text.str() << std::flush;
    return;
  }
  std::ofstream file(options.out, std::ios::binary | std::ios::trunc);
  file << text.str();
  file.close();
  if (!file)
    throw UsageError("cannot write " + options.out + "; name a file in a folder that you may write to");
}

std::string BookOf(const RunOptions& options) {
  if (!options.book.empty()) return options.book;
  // NOLINTNEXTLINE(concurrency-mt-unsafe): read before anything else runs
  const char* named = std::getenv("STOCKRPT_BOOK");
  if (named != nullptr && *named != '\0') return named;
  throw UsageError("no stock book is given; use --book FILE, or make one with `stockrpt demo FILE`");
}

int Run(RunOptions& options) {
  for (const std::string& key : options.keys) options.request.keys.push_back(SplitKey(key));
  options.request.book = BookOf(options);
  ReportRun run(options.request);
  const ReportOutcome outcome = run.Run();
  if (!outcome.ok) {
    std::cerr << "stockrpt: "
              << (outcome.error.empty() ? "the report failed without a reason" : outcome.error) << '\n';
    return 1;
  }
  Deliver(outcome, options);
  return 0;
}

}  // namespace

void AddRunCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<RunOptions>();
  CLI::App* command = app.add_subcommand("run", "Run a report on a stock book and write what it shows.");
  command->add_option("report", options->request.report, "Class name or number: Rpt10414, 10414")->required();
  command->add_option("keys", options->keys,
                      "Conditions as KEY=VALUE, by the keys of the report's filter dialog");
  command->add_option("--book", options->book, "The stock book; without it the one named by STOCKRPT_BOOK");
  command->add_option("--format", options->format, "What is written")
      ->check(CLI::IsMember({"table", "csv", "json"}))
      ->capture_default_str();
  command->add_option("--out", options->out, "The file to write; without it standard output");
  command->add_option("--limit", options->limit, "The most rows that are written")
      ->check(CLI::NonNegativeNumber);
  command->add_option("--app-type", options->request.appType, "The application type")
      ->check(CLI::IsMember({1, 2, 4}));
  command
      ->add_option("--industry-type", options->request.industryType,
                   "The industry type; 1 for food by weight")
      ->check(CLI::NonNegativeNumber);
  command->add_option("--user", options->request.userId, "The user whose rights apply; without it none are")
      ->check(CLI::Range(0, 32767));
  command->callback([options, &status] { status = Run(*options); });
}

}  // namespace cli
