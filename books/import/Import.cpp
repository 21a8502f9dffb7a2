// The rows go into the book's own tables as they are read, inside one transaction, and are looked up there by
// those that name them. So memory does not grow with the number of bills, the book's keys find what stands
// twice, and whatever was found wrong is undone with the transaction.
#include "books/import/Import.h"

#include <algorithm>
#include <array>
#include <optional>
#include <system_error>
#include <utility>

#include "books/import/Run.h"
#include "books/posting/Periods.h"
#include "books/posting/Posting.h"
#include "books/schema/Schema.h"
#include "platform/value/Error.h"

namespace books {
namespace {

using database::Access;
using database::Connection;
using importer::Findings;
using importer::Run;

constexpr std::array<std::string_view, 21> kFiles = {
    "profile.csv",     "periods.csv",       "units.csv",           "departments.csv",     "employees.csv",
    "customers.csv",   "suppliers.csv",     "properties.csv",      "warehouses.csv",      "items.csv",
    "item_units.csv",  "item_limits.csv",   "partner_matches.csv", "purchase_prices.csv", "batches.csv",
    "serials.csv",     "opening_stock.csv", "orders.csv",          "order_entries.csv",   "bills.csv",
    "bill_entries.csv"};

[[noreturn]] void Fail(const std::string& description) {
  throw platform::Error(platform::ErrorNumber::kUserDefined, "books.Import", description);
}

std::string NameOf(const std::filesystem::path& path) {
  const auto utf8 = path.u8string();
  return {utf8.begin(), utf8.end()};
}

// Other files in the folder are nobody's business, but a table under a wrong name would be missed silently.
void CheckNames(const std::filesystem::path& folder, Findings& findings) {
  std::error_code failed;
  std::vector<std::string> names;
  for (std::filesystem::directory_iterator each(folder, failed), end; !failed && each != end;
       each.increment(failed)) {
    if (each->path().extension() == ".csv") names.push_back(NameOf(each->path().filename()));
  }
  if (failed) Fail(NameOf(folder) + " cannot be read (" + failed.message() + ")");
  std::ranges::sort(names);
  std::string known;
  for (const std::string_view file : kFiles) known += (known.empty() ? "" : ", ") + std::string(file);
  for (const std::string& name : names) {
    if (std::ranges::find(kFiles, name) != kFiles.end()) continue;
    findings.Add({name}, {}, {}, "there is no such table", "the files are: " + known);
  }
  if (names.empty()) {
    findings.Add({NameOf(folder)}, {}, {}, "the folder holds no CSV file", "the files are: " + known);
  }
}

// Closes periods up to the one that the profile names.
void ReachCurrentPeriod(Run& run) {
  try {
    while (posting::ReadCalendar(run.connection).current < run.accounting->wanted) {
      posting::ClosePeriod(run.connection);
    }
  } catch (const platform::Error& error) {
    if (error.Number() != platform::ErrorNumber::kBadArgument) throw;
    run.findings.Add({"profile.csv"}, "CurrentPeriod", {}, error.Description(),
                     "audit or remove these bills, or name an earlier current period");
  }
}

void ReadFolder(Run& run) {
  importer::ImportAccounting(run);
  importer::ImportUnits(run);
  importer::ImportBaseData(run);
  importer::ImportItemFacts(run);
  importer::ImportBatches(run);
  std::optional<posting::BulkPosting> bulk;
  if (run.accounting) run.posting = &bulk.emplace(run.connection);
  importer::ImportOpening(run);
  importer::ImportOrders(run);
  importer::ImportBills(run);
  if (run.findings.Count() > 0 || !bulk) return;
  for (const std::int64_t bill : run.billsToAudit) {
    posting::Audit(run.connection, bill, posting::Costing::kLater);
  }
  bulk->Finish();
  ReachCurrentPeriod(run);
}

// True when the book was written.
bool ImportInto(Connection& connection, const std::filesystem::path& folder, const ImportOptions& options,
                Findings& findings, ImportReport& report) {
  database::Transaction transaction(connection);
  Run run{
      .connection = connection, .folder = folder, .findings = findings, .known = importer::Known(connection)};
  CheckNames(folder, findings);
  ReadFolder(run);
  report.counts = std::move(run.counts);
  if (findings.Count() > 0 || options.dryRun) return false;
  transaction.Commit();
  return true;
}

// A new book is made beside its place and moved there when it is complete.
class NewBook {
 public:
  explicit NewBook(std::filesystem::path file) : file_(std::move(file)), draft_(file_) {
    draft_ += ".importing";
    Remove();  // what an import that was killed has left
  }
  NewBook(const NewBook&) = delete;
  NewBook& operator=(const NewBook&) = delete;
  ~NewBook() { Remove(); }

  const std::filesystem::path& Draft() const { return draft_; }

  void Publish() const {
    std::error_code failed;
    if (std::filesystem::exists(file_)) {
      Fail(NameOf(file_) + " was made by somebody else meanwhile; import into it again");
    }
    std::filesystem::rename(draft_, file_, failed);
    if (failed) Fail(NameOf(file_) + " cannot be written (" + failed.message() + ")");
  }

 private:
  void Remove() const {
    for (const char* suffix : {"", "-wal", "-shm"}) {
      std::filesystem::path each = draft_;
      each += suffix;
      std::error_code ignored;
      std::filesystem::remove(each, ignored);
    }
  }

  std::filesystem::path file_;
  std::filesystem::path draft_;
};

bool ImportIntoNew(const std::filesystem::path& file, const std::filesystem::path& folder,
                   const ImportOptions& options, Findings& findings, ImportReport& report) {
  const NewBook book(file);
  bool written = false;
  {
    Connection connection = schema::CreateBook(book.Draft());
    written = ImportInto(connection, folder, options, findings, report);
  }
  if (written) book.Publish();
  return written;
}

}  // namespace

std::string ImportReport::ToText() const {
  std::string text;
  for (const ImportCount& count : counts) {
    text += count.file + ": " + std::to_string(count.rows) + " rows, " + std::to_string(count.added) +
            " new, " + std::to_string(count.known) + " in the book already\n";
  }
  if (errorCount > 0) {
    text += std::to_string(errorCount) + (errorCount == 1 ? " error" : " errors") + ", nothing was written\n";
  } else if (!written) {
    text += "no errors; this was a dry run, nothing was written\n";
  } else {
    text += created ? "a new book was written\n" : "the book was written\n";
  }
  return text;
}

ImportReport Import(const std::filesystem::path& file, const std::filesystem::path& folder,
                    const ImportOptions& options) {
  std::error_code ignored;
  if (!std::filesystem::is_directory(folder, ignored)) {
    Fail("there is no folder " + NameOf(folder) + "; name the folder that holds the CSV files");
  }
  Findings findings(options.keptErrors, options.onError);
  ImportReport report;
  report.created = !std::filesystem::exists(file, ignored);
  if (report.created) {
    report.written = ImportIntoNew(file, folder, options, findings, report);
  } else {
    Connection connection = schema::OpenBook(file, Access::kReadWrite);
    report.written = ImportInto(connection, folder, options, findings, report);
  }
  report.created = report.created && report.written;
  report.errors = findings.Errors();
  report.errorCount = findings.Count();
  return report;
}

}  // namespace books
