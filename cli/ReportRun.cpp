#include "cli/ReportRun.h"

#include <algorithm>

#include "cli/Commands.h"
#include "cli/DialogFiller.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/ProcessStore.h"
#include "platform/value/Convert.h"
#include "player/BookBackend.h"
#include "player/Host.h"

namespace cli {
namespace {

using platform::ComponentClass;
using platform::Dictionary;
using platform::Object;
using platform::Ref;

constexpr std::string_view kLibrary = "TOVStockRpt.";

// Keys that the report and its dialog decide: who asks, and what that user may see.
bool IsReserved(std::string_view key) {
  constexpr std::string_view kReserved[] = {"OK", "UserID", "DataRightWhere", "RptID"};
  return std::ranges::any_of(kReserved,
                             [&](std::string_view name) { return platform::EqualsIgnoreCase(name, key); });
}

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

}  // namespace

struct ReportRun::Parts {
  Parts(const ReportRequest& request, std::unique_ptr<player::DataBackend> opened)
      : backend(std::move(opened)),
        screen(request.keys),
        host(*backend, witness, screen, player::DefaultComponentPath()) {
    host.SetDataComponents([this](std::string_view id) { return backend->CreateComponent(id); });
  }

  std::unique_ptr<player::DataBackend> backend;
  desk::Witness witness;
  DialogFiller screen;
  player::Host host;
};

ReportRun::ReportRun(const ReportRequest& request) : request_(request) {
  std::unique_ptr<player::DataBackend> backend;
  try {
    backend = player::OpenBook(request.book.string(), [userId = request.userId] { return userId; });
  } catch (const platform::Error& error) {
    throw UsageError(error.Description());
  }
  parts_ = std::make_unique<Parts>(request, std::move(backend));
  const Ref<Dictionary> store = platform::ProcessStore();
  if (request.appType) store->Set("AppType", *request.appType);
  if (request.industryType) store->Set("IndustryType", *request.industryType);
}

ReportRun::~ReportRun() = default;

namespace {

const ComponentClass& FindReport(const std::vector<ComponentClass>& classes, const std::string& wanted) {
  const auto found = std::ranges::find_if(classes, [&](const ComponentClass& served) {
    const std::string_view name = served.programmaticId.substr(kLibrary.size());
    return platform::EqualsIgnoreCase(wanted, served.programmaticId) ||
           platform::EqualsIgnoreCase(wanted, name) || wanted == served.number || wanted == name.substr(3);
  });
  if (found == classes.end()) {
    throw UsageError("there is no report '" + wanted + "'; `stockrpt list` shows the reports there are");
  }
  return *found;
}

// Puts what no field took into the filter, where the filter has such a key.
void PutLeftKeys(Object& report, const ComponentClass& served, const DialogFiller& screen) {
  const Ref<Dictionary> filter = report.Get("Filter").AsRef<Dictionary>();
  std::vector<std::string> known = screen.FieldKeys();
  if (filter) {
    for (const Dictionary::Entry& entry : filter->Entries()) {
      const bool isField = std::ranges::any_of(
          known, [&](const std::string& key) { return platform::EqualsIgnoreCase(key, entry.key); });
      if (!isField && !IsReserved(entry.key)) known.push_back(entry.key);
    }
  }
  for (const auto& [key, value] : screen.Left()) {
    if (!filter || !filter->Exists(key) || IsReserved(key)) {
      throw UsageError("the report " + std::string(served.programmaticId) + " has no key '" + key +
                       "'; it has: " + Joined(known));
    }
    filter->Set(key, value);
  }
}

}  // namespace

ReportOutcome ReportRun::Run() {
  const std::vector<ComponentClass> classes = parts_->host.Classes();
  const ComponentClass& served = FindReport(classes, request_.report);
  const Ref<Object> report = platform::CreateObject(served.programmaticId);
  report->Call("ShowFilter");
  if (!parts_->screen.Problem().empty()) throw UsageError(parts_->screen.Problem());
  PutLeftKeys(*report, served, parts_->screen);
  report->Call("GetReportData");

  ReportOutcome outcome{.result = report->Get("Result"),
                        .property = report->Get("Property"),
                        .title = report->Get("Title"),
                        .header = report->Get("Header"),
                        .rows = report->Get("rs")};
  if (const Ref<Dictionary> result = outcome.result.AsRef<Dictionary>()) {
    outcome.ok = platform::ToBoolean(result->Value("OK"));
    outcome.error = platform::ToText(result->Value("Error"));
  }
  return outcome;
}

}  // namespace cli
