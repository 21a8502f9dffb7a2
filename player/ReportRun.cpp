#include "player/ReportRun.h"

#include <algorithm>

#include "desk/FilterFiller.h"
#include "desk/Host.h"
#include "platform/object/ClassRegistry.h"
#include "platform/rows/ProcessStore.h"
#include "platform/value/Convert.h"

namespace player {

using platform::ComponentClass;
using platform::Dictionary;
using platform::EqualsIgnoreCase;
using platform::Error;
using platform::ErrorNumber;
using platform::Object;
using platform::Ref;
using platform::Variant;
using platform::Vector;

class ReportRun::State {
 public:
  explicit State(Options options)
      : book_(std::move(options.book)), host_(*book_, witness_, screen_, options.component) {
    host_.SetDataComponents([this](std::string_view id) { return book_->CreateComponent(id); });
    if (options.appType) platform::ProcessStore()->Set("AppType", *options.appType);
    if (options.industryType) platform::ProcessStore()->Set("IndustryType", *options.industryType);
  }

  const desk::Host& GetHost() const { return host_; }
  desk::FilterFiller& Screen() { return screen_; }

 private:
  std::unique_ptr<desk::DataBackend> book_;
  desk::Witness witness_;
  desk::FilterFiller screen_;
  desk::Host host_;
};

namespace {

bool Answers(const ComponentClass& report, std::string_view name) {
  const std::string_view id = report.programmaticId;
  return EqualsIgnoreCase(id, name) || EqualsIgnoreCase(id.substr(id.find('.') + 1), name) ||
         report.number == name;
}

std::string FindReport(const std::vector<ComponentClass>& reports, const std::string& name) {
  for (const ComponentClass& report : reports) {
    if (Answers(report, name)) return std::string(report.programmaticId);
  }
  throw Error(ErrorNumber::kBadArgument, "player",
              "there is no report '" + name + "'; `stockrpt list` shows what there is");
}

// Keys that the report and its dialog decide: who asks, and what that user may see.
bool IsReserved(std::string_view key) {
  constexpr std::string_view kReserved[] = {"OK", "UserID", "RptID", "DataRightWhere"};
  return std::ranges::any_of(kReserved, [key](std::string_view name) { return EqualsIgnoreCase(name, key); });
}

// Puts what no field of the dialog took into the filter, where the filter has such a key.
void PutLeft(Object& report, const desk::FilterFiller& screen) {
  const Ref<Dictionary> filter = report.Get("Filter").AsRef<Dictionary>();
  for (const auto& [key, value] : screen.Left()) {
    if (filter && filter->Exists(key) && !IsReserved(key)) {
      filter->Set(key, value);
      continue;
    }
    std::string known;
    for (const std::string& field : screen.FieldKeys()) known += (known.empty() ? "" : ", ") + field;
    throw Error(ErrorNumber::kBadArgument, "player",
                "this report has no filter key '" + key + "'; it has " + known);
  }
}

// Reads every member, also of a report that failed.
ReportOutcome Read(Object& report) {
  ReportOutcome outcome;
  outcome.result = report.Get("Result").AsRef<Dictionary>();
  outcome.property = report.Get("Property").AsRef<Dictionary>();
  outcome.title = report.Get("Title").AsRef<Vector>();
  outcome.header = report.Get("Header").AsRef<Vector>();
  outcome.rows = report.Get("rs");
  outcome.ok = outcome.result && platform::ToBoolean(outcome.result->Value("OK"));
  if (outcome.result) outcome.error = platform::ToText(outcome.result->Value("Error"));
  return outcome;
}

}  // namespace

ReportRun::ReportRun(Options options) : state_(std::make_unique<State>(std::move(options))) {}

ReportRun::~ReportRun() = default;

std::vector<ComponentClass> ReportRun::Reports() const { return state_->GetHost().Classes(); }

ReportOutcome ReportRun::Run(const std::string& report, const desk::FilterSettings& filter) {
  const Ref<Object> object = platform::CreateObject(FindReport(Reports(), report));
  desk::FilterFiller& screen = state_->Screen();
  screen.Fill(filter);
  object->Call("ShowFilter");
  // The report drops what goes wrong while its dialog is up, so the screen keeps it.
  if (screen.Failure()) throw Error(*screen.Failure());
  PutLeft(*object, screen);
  object->Call("GetReportData");
  return Read(*object);
}

Json ToJson(const ReportOutcome& outcome) {
  Json json = Json::object();
  json["result"] = ToJson(Variant(outcome.result));
  json["property"] = ToJson(Variant(outcome.property));
  json["title"] = ToJson(Variant(outcome.title));
  json["header"] = ToJson(Variant(outcome.header));
  json["rows"] = ToJson(outcome.rows);
  return json;
}

}  // namespace player
