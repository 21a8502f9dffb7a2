#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <sstream>

#include <CLI/CLI.hpp>

#include "cli/Commands.h"
#include "cli/Output.h"
#include "desk/Host.h"
#include "desk/ReportRows.h"
#include "exports/Csv.h"
#include "exports/Paper.h"
#include "exports/Pdf.h"
#include "exports/Xlsx.h"
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
  std::string paper;
  std::string orientation;
  std::optional<std::size_t> limit;
  std::optional<std::int32_t> appType;
  std::optional<std::int32_t> industryType;
  std::int32_t userId = 0;
  player::PageWish pages;
};

std::pair<std::string, std::string> SplitKey(const std::string& argument) {
  const std::size_t equals = argument.find('=');
  if (equals == std::string::npos || equals == 0) {
    throw UsageError("'" + argument + "' is no KEY=VALUE; write, for example, BItemNumber=01");
  }
  return {argument.substr(0, equals), argument.substr(equals + 1)};
}

Ref<Recordset> RowsOf(const ReportOutcome& outcome) {
  Ref<Recordset> rows = desk::ReportRows(outcome.rows);
  if (!rows) throw std::runtime_error("the report hands back no rows that a table can show");
  return rows;
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

// Keeps the first rows of a recordset, or of a list of rows.
void CutRows(player::Json& rows, std::optional<std::size_t> limit) {
  if (!limit) return;
  const auto keepFirst = [limit](player::Json& list) {
    if (list.size() > *limit) list.erase(list.begin() + static_cast<std::ptrdiff_t>(*limit), list.end());
  };
  if (rows.contains("recordset")) keepFirst(rows["recordset"]["rows"]);
  if (!rows.contains("vector")) return;
  player::Json& list = rows["vector"];
  if (!list.empty() && list[0].contains("recordset")) return CutRows(list[0], limit);
  keepFirst(list);
}

void WriteJson(std::ostream& out, const ReportOutcome& outcome, std::optional<std::size_t> limit) {
  player::Json json = player::ToJson(outcome);
  CutRows(json["rows"], limit);
  out << player::ToLine(json) << '\n';
}

// Beside the rows, so that what reads them finds nothing else among them.
void WritePageEnds(const ReportOutcome& outcome) {
  std::cerr << "stockrpt: " << outcome.pageEnds.size() << " pages, ending with the rows";
  for (const std::int32_t end : outcome.pageEnds) std::cerr << ' ' << end;
  std::cerr << '\n';
}

// A table a page, each under its own title lines.
void WritePages(std::ostream& out, const ReportOutcome& outcome, const exports::ItemPages& pages,
                std::optional<std::size_t> limit) {
  for (std::size_t i = 0; i < pages.Count(); ++i) {
    const std::size_t begin = pages.Begin(i);
    if (limit && begin >= *limit) return;
    const Ref<Recordset> page = pages.Rows().Slice(begin, pages.End(i) - begin);
    if (begin > 0) out << '\n';
    const exports::Grid grid(*outcome.header, *page);
    WriteTable(out, {.name = platform::ToText(outcome.property->Value("Name")),
                     .titleLines = pages.TitleLines(i),
                     .grid = grid,
                     .limit = limit ? std::optional<std::size_t>(*limit - begin) : std::nullopt});
  }
}

void WriteText(std::ostream& out, const ReportOutcome& outcome, const exports::Sheet& sheet,
               const RunOptions& options) {
  if (options.format == "csv") {
    exports::WriteCsv(out, sheet);
  } else if (sheet.items != nullptr) {
    WritePages(out, outcome, *sheet.items, options.limit);
  } else {
    WriteTable(out, sheet);
  }
}

bool IsFileFormat(const RunOptions& options) { return options.format == "xlsx" || options.format == "pdf"; }

exports::PageSetup SetupOf(const RunOptions& options) {
  exports::PageSetup setup;
  if (!options.paper.empty()) setup.paper = exports::FindPaper(options.paper).value();
  if (!options.orientation.empty()) setup.orientation = exports::FindOrientation(options.orientation).value();
  return setup;
}

// Tells before the report runs what would come to nothing.
void CheckOptions(const RunOptions& options) {
  if (IsFileFormat(options) && options.out.empty()) {
    throw UsageError("--format " + options.format + " makes a file; name it with --out FILE");
  }
  if (!options.paper.empty() && !exports::FindPaper(options.paper)) {
    throw UsageError("--paper: there is no paper " + options.paper + "; choose one of " +
                     exports::PaperNames());
  }
  if (!options.orientation.empty() && !exports::FindOrientation(options.orientation)) {
    throw UsageError("--orientation: " + options.orientation +
                     " is none; choose auto, portrait or landscape");
  }
  if (options.format != "pdf" && !(options.paper.empty() && options.orientation.empty())) {
    throw UsageError("--paper and --orientation are for --format pdf");
  }
}

UsageError CannotWrite(const RunOptions& options) {
  return UsageError("cannot write " + options.out + "; name a file in a folder that you may write to");
}

// A file is written beside its place and gets its name when it is whole, so that a failure costs no older
// one.
void WriteFile(const RunOptions& options, const std::function<void(const std::filesystem::path&)>& write) {
  const std::filesystem::path part = options.out + ".part";
  std::error_code error;
  if (!std::ofstream(part)) throw CannotWrite(options);
  try {
    write(part);
  } catch (...) {
    std::filesystem::remove(part, error);
    throw;
  }
  std::filesystem::rename(part, options.out, error);
  if (!error) return;
  std::filesystem::remove(part, error);
  throw CannotWrite(options);
}

void WriteStream(const RunOptions& options, const std::function<void(std::ostream&)>& write) {
  if (options.out.empty()) {
    std::ostringstream text;
    write(text);
    std::cout << text.str() << std::flush;
    return;
  }
  WriteFile(options, [&](const std::filesystem::path& path) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (file) write(file);
    file.close();
    if (!file) throw CannotWrite(options);
  });
}

// The whole text first, so that a failure leaves no half file.
void Deliver(const ReportOutcome& outcome, const RunOptions& options) {
  if (options.format == "json") {
    return WriteStream(options, [&](std::ostream& out) { WriteJson(out, outcome, options.limit); });
  }
  if (!outcome.header || !outcome.property) throw std::runtime_error("the report hands back no heading");
  const Ref<Recordset> rows = RowsOf(outcome);
  const exports::Grid grid(*outcome.header, *rows);
  std::optional<exports::ItemPages> pages;
  if (!outcome.pageEnds.empty()) pages.emplace(*rows, outcome.pageEnds);
  const exports::Sheet sheet{.name = platform::ToText(outcome.property->Value("Name")),
                             .titleLines = TitleLines(outcome),
                             .grid = grid,
                             .limit = options.limit,
                             .items = pages ? &*pages : nullptr};
  if (!IsFileFormat(options)) {
    WriteStream(options, [&](std::ostream& out) { WriteText(out, outcome, sheet, options); });
  } else {
    WriteFile(options, [&](const std::filesystem::path& part) {
      if (options.format == "xlsx") {
        exports::WriteXlsx(part, sheet);
      } else {
        exports::WritePdf(part, sheet, {}, SetupOf(options));
      }
    });
  }
  if (!outcome.pageEnds.empty()) WritePageEnds(outcome);
  if (sheet.RowCount() < grid.RowCount()) {
    std::cerr << "stockrpt: " << sheet.RowCount() << " of " << grid.RowCount()
              << " rows; --limit shows more\n";
  }
}

std::unique_ptr<desk::DataBackend> OpenBook(const RunOptions& options) {
  try {
    return player::OpenBook(NamedBook(options.book), [userId = options.userId] { return userId; });
  } catch (const platform::Error& error) {
    throw UsageError(error.Description());
  }
}

int Run(const RunOptions& options) {
  CheckOptions(options);
  desk::FilterSettings settings;
  for (const std::string& key : options.keys) settings.push_back(SplitKey(key));
  player::ReportRun run({.component = desk::DefaultComponentPath(),
                         .book = OpenBook(options),
                         .appType = options.appType,
                         .industryType = options.industryType});
  ReportOutcome outcome;
  try {
    outcome = run.Run(options.report, settings, options.pages);
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
      ->check(CLI::IsMember({"table", "csv", "json", "xlsx", "pdf"}))
      ->capture_default_str();
  command->add_option("--out", options->out, "The file to write; without it standard output");
  command->add_option("--paper", options->paper, "Of pdf the paper: " + exports::PaperNames());
  command->add_option("--orientation", options->orientation,
                      "Of pdf: portrait, landscape, or auto, which is what the columns need");
  command->add_option("--limit", options->limit, "The most rows that are written")
      ->check(CLI::NonNegativeNumber);
  command->add_option("--app-type", options->appType, "The application type")
      ->check(CLI::IsMember({1, 2, 4}));
  command->add_option("--industry-type", options->industryType, "The industry type; 1 for food by weight")
      ->check(CLI::NonNegativeNumber);
  command->add_option("--user", options->userId, "The user whose rights apply; without it none are")
      ->check(CLI::Range(0, 32767));
  CLI::Option* item = command->add_option(
      "--item", options->pages.item, "Of a ledger the page of the item with this number; else the first");
  command->add_flag("--all", options->pages.all, "Of a ledger the pages of all items, and where each ends")
      ->excludes(item);
  command->callback([options, &status] { status = Run(*options); });
}

}  // namespace cli
