#include <fstream>
#include <iostream>
#include <sstream>

#include <CLI/CLI.hpp>

#include "cli/Commands.h"
#include "cli/Output.h"
#include "desk/Host.h"
#include "platform/rows/Dictionary.h"
#include "platform/value/Convert.h"
#include "player/BookBackend.h"
#include "player/ReportRun.h"

namespace cli {
namespace {

using platform::Dictionary;
using platform::Recordset;
using platform::Ref;
using platform::Variant;

using player::ReportOutcome;

struct RunOptions {
  std::string report;
  std::vector<std::string> keys;
  std::string book;
  std::string format = "table";
  std::string out;
  std::optional<std::size_t> limit;
  std::optional<std::int32_t> appType;
  std::optional<std::int32_t> industryType;
  std::int32_t userId = 0;
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
  if (!outcome.title) return lines;
  for (const Variant& item : outcome.title->Items()) {
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
  player::Json json = player::ToJson(outcome);
  CutRows(json["rows"], limit);
  out << player::ToLine(json) << '\n';
}

void WriteOutcome(std::ostream& out, const ReportOutcome& outcome, const RunOptions& options) {
  if (options.format == "json") return WriteJson(out, outcome, options.limit);
  if (!outcome.header || !outcome.property) throw std::runtime_error("the report hands back no heading");
  const Recordset& rows = RowsOf(outcome);
  const Grid grid(*outcome.header, rows);
  if (options.format == "csv") {
    WriteCsv(out, grid, options.limit);
  } else {
    WriteTable(out, platform::ToText(outcome.property->Value("Name")), TitleLines(outcome), grid,
               options.limit);
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

std::unique_ptr<desk::DataBackend> OpenBook(const RunOptions& options) {
  try {
    return player::OpenBook(NamedBook(options.book), [userId = options.userId] { return userId; });
  } catch (const platform::Error& error) {
    throw UsageError(error.Description());
  }
}

int Run(const RunOptions& options) {
  desk::FilterSettings settings;
  for (const std::string& key : options.keys) settings.push_back(SplitKey(key));
  player::ReportRun run({.component = desk::DefaultComponentPath(),
                         .book = OpenBook(options),
                         .appType = options.appType,
                         .industryType = options.industryType});
  ReportOutcome outcome;
  try {
    outcome = run.Run(options.report, settings);
  } catch (const platform::Error& error) {
    if (error.Number() == platform::ErrorNumber::kBadArgument) throw UsageError(error.Description());
    throw;
  }
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
  command->add_option("report", options->report, "Class name or number: Rpt10414, 10414")->required();
  command->add_option("keys", options->keys,
                      "Conditions as KEY=VALUE, by the keys of the report's filter dialog");
  command->add_option("--book", options->book, "The stock book; without it the one named by STOCKRPT_BOOK");
  command->add_option("--format", options->format, "What is written")
      ->check(CLI::IsMember({"table", "csv", "json"}))
      ->capture_default_str();
  command->add_option("--out", options->out, "The file to write; without it standard output");
  command->add_option("--limit", options->limit, "The most rows that are written")
      ->check(CLI::NonNegativeNumber);
  command->add_option("--app-type", options->appType, "The application type")
      ->check(CLI::IsMember({1, 2, 4}));
  command->add_option("--industry-type", options->industryType, "The industry type; 1 for food by weight")
      ->check(CLI::NonNegativeNumber);
  command->add_option("--user", options->userId, "The user whose rights apply; without it none are")
      ->check(CLI::Range(0, 32767));
  command->callback([options, &status] { status = Run(*options); });
}

}  // namespace cli
