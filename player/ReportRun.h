#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "desk/DataBackend.h"
#include "desk/FilterFiller.h"
#include "platform/object/ComponentServer.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/Vector.h"
#include "player/Json.h"

namespace player {

// What a report hands back. When `ok` is false, `error` is the text for the user and the rest is as the
// report left it.
struct ReportOutcome {
  bool ok = false;
  std::string error;
  platform::Ref<platform::Dictionary> result;
  platform::Ref<platform::Dictionary> property;
  platform::Ref<platform::Vector> title;
  platform::Ref<platform::Vector> header;
  platform::Variant rows;
};

// {"result","property","title","header","rows"}
Json ToJson(const ReportOutcome& outcome);

// Reports run without a user: the component is loaded, a stock book stands behind it, and a report's filter
// is filled in for the user who is not there. One at a time in a process.
class ReportRun {
 public:
  struct Options {
    std::filesystem::path component;  // the component's library
    std::unique_ptr<desk::DataBackend> book;
    std::optional<std::int32_t> appType;  // process values; left out, the component goes by its defaults
    std::optional<std::int32_t> industryType;
  };

  explicit ReportRun(Options options);
  ReportRun(const ReportRun&) = delete;
  ReportRun& operator=(const ReportRun&) = delete;
  ReportRun(ReportRun&&) = delete;
  ReportRun& operator=(ReportRun&&) = delete;
  ~ReportRun();

  std::vector<platform::ComponentClass> Reports() const;

  // `report` is a class name ("Rpt10414", with or without the library's name) or a report number. The fields
  // of the report's dialog stand at their defaults but for those in `filter`. A key of the filter without a
  // field ("OrderBy") takes its value as it stands. Raises kBadArgument for a report, key or value that
  // cannot be used, and says what can; a report that fails tells it in the outcome.
  ReportOutcome Run(const std::string& report, const desk::FilterSettings& filter);

 private:
  class State;
  std::unique_ptr<State> state_;
};

}  // namespace player
