#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/object/Object.h"
#include "platform/value/Variant.h"

namespace cli {

// What a report is run with. `keys` are the fields of its dialog, by filter key, as a user would fill them
// in; a key that the filter holds without a field ("OrderBy") is put into the filter as it stands.
struct ReportRequest {
  std::string report;  // a class name or number: "Rpt10414", "TOVStockRpt.Rpt10414", "10414"
  std::vector<std::pair<std::string, std::string>> keys;
  std::filesystem::path book;
  std::optional<std::int32_t> appType;
  std::optional<std::int32_t> industryType;
  std::int32_t userId = 0;
};

// What a report has handed back. Members that it never set are nothing.
struct ReportOutcome {
  bool ok = false;
  std::string error;
  platform::Variant result;
  platform::Variant property;
  platform::Variant title;
  platform::Variant header;
  platform::Variant rows;
};

// Runs one report as a browser does, with its dialog filled in and confirmed by program. The outcome holds
// the report's objects, so it must go before this does.
class ReportRun {
 public:
  // Raises UsageError for a book that cannot be opened.
  explicit ReportRun(const ReportRequest& request);
  ReportRun(const ReportRun&) = delete;
  ReportRun& operator=(const ReportRun&) = delete;
  ReportRun(ReportRun&&) = delete;
  ReportRun& operator=(ReportRun&&) = delete;
  ~ReportRun();

  // Raises UsageError for an unknown report, an unknown key, or a value that its field does not take. A
  // report that fails is an outcome.
  ReportOutcome Run();

 private:
  struct Parts;

  const ReportRequest& request_;
  std::unique_ptr<Parts> parts_;
};

}  // namespace cli
