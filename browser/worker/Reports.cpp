// A report goes the contract's road: create, filter (dialog or address line), fetch inside the progress box,
// and then Title, Header, rs and Property are read and told.
#include "browser/worker/Reports.h"

#include <algorithm>
#include <array>

#include "browser/worker/FormText.h"
#include "browser/worker/RowText.h"
#include "desk/ReportRows.h"
#include "platform/object/ClassRegistry.h"
#include "platform/rows/Vector.h"
#include "platform/value/Convert.h"

namespace browser {

using platform::Dictionary;
using platform::Object;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using platform::Vector;

namespace {

// A page that keeps more open forgets to close them.
constexpr std::size_t kMostReports = 50;

struct Outcome {
  bool ok = false;
  std::string error;
};

Outcome OutcomeOf(Object& object) {
  const Ref<Dictionary> result = object.Get("Result").AsRef<Dictionary>();
  if (!result) return {};
  return {.ok = platform::ToBoolean(result->Value("OK")), .error = platform::ToText(result->Value("Error"))};
}

// "BDate,2026-11-01|EDate,2026-11-30", as a report with a range of dates tells its host, in a clerk's words;
// "" for any other report.
std::string DateLine(Object& object) {
  const Ref<Dictionary> result = object.Get("Result").AsRef<Dictionary>();
  const Ref<Dictionary> title = result ? result->Value("RptTitleObject").AsRef<Dictionary>() : nullptr;
  const std::string range = title ? platform::ToText(title->Value("ShowDateDiff")) : std::string();
  const std::size_t bar = range.find('|');
  const std::size_t from = range.find(',');
  const std::size_t to = range.find(',', bar == std::string::npos ? range.size() : bar);
  if (from > bar || to == std::string::npos) return {};
  const std::string first = range.substr(from + 1, bar - from - 1);
  const std::string last = range.substr(to + 1);
  return first == last ? "日期[" + first + "]" : "日期从[" + first + "]到[" + last + "]";
}

Json TitleLines(Object& object) {
  Json lines = Json::array();
  if (const std::string dates = DateLine(object); !dates.empty()) {
    lines.push_back({{"caption", dates}, {"index", 0}});
  }
  const Ref<Vector> title = object.Get("Title").AsRef<Vector>();
  if (!title) return lines;
  for (const Variant& item : title->Items()) {
    const Ref<Dictionary> line = item.AsRef<Dictionary>();
    if (!line) continue;
    lines.push_back({{"caption", platform::ToText(line->Value("FCaption"))},
                     {"index", platform::ToInt32(line->Value("FIndex"))}});
  }
  return lines;
}

// The fact of a report that walks a list of items, true when it makes all their pages at once.
constexpr const char* kPagesFact = "EnableMutilPageData";

bool HasItems(Object& object) {
  const Ref<Dictionary> facts = object.Get("Property").AsRef<Dictionary>();
  return facts && facts->Exists(kPagesFact);
}

// The item shown, as the protocol's Ledger.
Json Ledger(const OpenReport& report, const Dictionary& facts) {
  const ItemPlace place = PlaceOf(report.items);
  return {{"position", place.position},
          {"count", place.count},
          {"number", place.number},
          {"name", place.name},
          {"pages", platform::ToBoolean(facts.Value(kPagesFact))}};
}

// A user's no to the question before a long output.
constexpr const char* kDeclined = "2";

// What is wrong with the conditions of an address, in a clerk's words.
std::optional<std::string> FillingFailure(const desk::FilterFiller& filler) {
  if (filler.Refused()) {
    return "地址里的过滤条件 " + filler.Refused()->first + "=" + filler.Refused()->second +
           " 用不上。请从左侧打开报表，在过滤窗口里填写。";
  }
  if (filler.Failure()) return filler.Failure()->Description();
  if (!filler.Left().empty()) return "没有这个过滤条件：" + filler.Left().front().first;
  return std::nullopt;
}

}  // namespace

Json ColumnsOf(const Vector& header, const Recordset& rows) {
  Json columns = Json::array();
  for (const Variant& item : header.Items()) {
    const Ref<Dictionary> column = item.AsRef<Dictionary>();
    if (!column) continue;
    const std::string field = platform::ToText(column->Value("FColName"));
    const std::optional<std::size_t> found = rows.FindField(field);
    Json json = Json::object();
    json["caption"] = platform::ToText(column->Value("FColCaption"));
    json["second"] = platform::ToText(column->Value("FHeadSecond"));
    json["type"] = platform::ToText(column->Value("FColType"));
    json["field"] = field;
    json["visible"] = platform::ToBoolean(column->Value("FVisible"));
    json["forceHide"] = platform::ToBoolean(column->Value("FForceHide"));
    json["fieldType"] = found ? std::string(CellType(rows.Fields()[*found].type)) : std::string();
    columns.push_back(std::move(json));
  }
  return columns;
}

platform::ComponentClass Reports::ClassOf(std::string_view programmaticId) const {
  const std::vector<platform::ComponentClass> classes = host_.Classes();
  const auto found = std::ranges::find_if(classes, [&](const platform::ComponentClass& served) {
    return platform::EqualsIgnoreCase(served.programmaticId, programmaticId);
  });
  // Whatever else the process could make by name is none of a page's business.
  if (found == classes.end()) {
    throw RefusedMessage("failed", "没有这个报表：" + std::string(programmaticId));
  }
  return *found;
}

OpenReport& Reports::Named(const Command& command) {
  const auto found = reports_.find(command.Number("report"));
  if (found == reports_.end()) throw RefusedMessage("failed", "这个报表已经关闭。", command.id);
  return found->second;
}

OpenReport& Reports::WithRows(const Command& command) {
  OpenReport& report = Named(command);
  if (!report.view) throw RefusedMessage("failed", "这个报表还没有数据。", command.id);
  return report;
}

OpenReport& Reports::Add(const std::string& programmaticId, Ref<Object> object) {
  OpenReport& report = reports_[++lastId_];
  report.id = lastId_;
  report.programmaticId = programmaticId;
  report.object = std::move(object);
  return report;
}

Ref<Object> MakeReport(const platform::ComponentClass& served) {
  try {
    return platform::CreateObject(served.programmaticId);
  } catch (const platform::Error& error) {
    if (error.Number() != platform::ErrorNumber::kCannotCreate) throw;
    throw RefusedMessage("failed", "本版本还没有“" + std::string(served.title) + "”，请选择其他报表。");
  }
}

void Reports::Open(const Command& command) {
  if (reports_.size() >= kMostReports) {
    throw RefusedMessage("failed", "打开的报表太多，请先关闭一些。", command.id);
  }
  const platform::ComponentClass served = ClassOf(command.Text("programmaticId"));
  OpenReport& report = Add(std::string(served.programmaticId), MakeReport(served));
  try {
    if (command.Has("noFilter") && command.body["noFilter"].get<bool>()) report.object->Put("NoFilter", true);
    if (command.Has("filter")) {
      desk::FilterSettings settings;
      for (const auto& [key, value] : command.body["filter"].items()) {
        std::string text = value.get<std::string>();
        std::erase(text, '\'');  // as in a field, a quote never arrives
        settings.emplace_back(key, std::move(text));
      }
      screen_.FillNext(std::move(settings));
    }
    if (RunDialog(report)) Fetch(report, "GetReportData");
  } catch (...) {
    reports_.erase(report.id);
    throw;
  }
}

void Reports::ShowFilter(const Command& command) {
  OpenReport& report = Named(command);
  if (RunDialog(report)) Fetch(report, "GetReportData");
}

void Reports::Refresh(const Command& command) { Fetch(Named(command), "Refresh"); }

void Reports::Close(const Command& command) {
  const std::int32_t id = Named(command).id;
  reports_.erase(id);
  Json message = Message("reportClosed");
  message["report"] = id;
  wire_.Send(FrameKind::kMessage, ToText(message));
}

bool Reports::RunDialog(OpenReport& report) {
  screen_.SetReport(report.id);
  const bool filled = screen_.IsFilling();
  report.object->Call("ShowFilter");
  const std::optional<LeftDialog> left = screen_.TakeLeft();
  std::optional<std::string> failure = screen_.TakeDialogError();
  if (filled) {
    if (std::optional<std::string> failed = FillingFailure(screen_.Filler())) failure = std::move(failed);
  }
  const Outcome outcome = OutcomeOf(*report.object);
  if (failure || !outcome.ok) {
    const std::string text = failure ? *failure : outcome.error;
    if (report.view) {
      TellFailure(report, text, !failure);
    } else {
      Drop(report, text, !failure);
    }
    return false;
  }
  if (left) {
    report.fields = left->fields;
    // A book on a read-only disk still shows its reports.
    platform::SkipErrors([&] { schemes_.Save(left->dialog, kLastScheme, left->scheme); });
  }
  return true;
}

// A new fetch makes a new item list; other operations walk the one that is there.
void Reports::Fetch(OpenReport& report, const char* operation) {
  screen_.TakeCancelled();
  report.pages.reset();
  if (HasItems(*report.object)) awaitingItems_ = &report;
  try {
    report.object->Call(operation);
  } catch (...) {
    awaitingItems_ = nullptr;
    throw;
  }
  awaitingItems_ = nullptr;
  Publish(report);
}

Ref<Object> Reports::Watched(Ref<Object> data) {
  if (!data || awaitingItems_ == nullptr) return data;
  return WatchItems(std::move(data), [this](const Ref<Recordset>& items) {
    if (awaitingItems_ != nullptr) awaitingItems_->items = items;
  });
}

void Reports::Publish(OpenReport& report) {
  const Outcome outcome = OutcomeOf(*report.object);
  if (!outcome.ok) {
    const bool stopped = screen_.TakeCancelled();
    return TellFailure(report,
                       stopped                 ? "查询已取消。"
                       : outcome.error.empty() ? "报表没有给出失败的原因。"
                                               : outcome.error,
                       false);
  }
  const Ref<Recordset> rows = desk::ReportRows(report.object->Get("rs"));
  if (!rows) return TellFailure(report, "报表没有返回数据。", false);
  report.view.emplace(rows);
  report.told = Describe(report);
  wire_.Send(FrameKind::kMessage, ToText(report.told));
}

Json Reports::Describe(const OpenReport& report) const {
  Object& object = *report.object;
  const platform::ComponentClass served = ClassOf(report.programmaticId);
  Json property = Json::object();
  const Ref<Dictionary> facts = object.Get("Property").AsRef<Dictionary>();
  if (facts) {
    for (const Dictionary::Entry& entry : facts->Entries()) property[entry.key] = CellOf(entry.value);
  }
  Json filter = Json::object();
  for (const auto& [key, text] : report.fields) filter[key] = text;

  Json message = Message("reportReady");
  message["report"] = report.id;
  message["parent"] = report.parent;
  message["programmaticId"] = report.programmaticId;
  message["number"] = std::string(served.number);
  message["name"] =
      facts && facts->Exists("Name") ? platform::ToText(facts->Value("Name")) : std::string(served.title);
  message["title"] = TitleLines(object);
  const Ref<Vector> header = object.Get("Header").AsRef<Vector>();
  message["columns"] = header ? ColumnsOf(*header, report.view->Rows()) : Json::array();
  message["filter"] = std::move(filter);
  message["rowCount"] = report.view->Count();
  message["detail"] = facts && facts->Exists("DetailRptID");
  message["ledger"] = facts && facts->Exists(kPagesFact) ? Ledger(report, *facts) : Json();
  message["property"] = std::move(property);
  return message;
}

void Reports::TellFailure(const OpenReport& report, const std::string& error, bool cancelled) {
  Json message = Message("reportFailed");
  message["report"] = report.id;
  message["programmaticId"] = report.programmaticId;
  message["error"] = error;
  message["cancelled"] = cancelled;
  message["opened"] = reports_.contains(report.id);
  wire_.Send(FrameKind::kMessage, ToText(message));
}

void Reports::Drop(OpenReport& report, const std::string& error, bool cancelled) {
  const auto node = reports_.extract(report.id);
  TellFailure(node.mapped(), error, cancelled);
}

void Reports::OpenDetail(const Command& command) {
  OpenReport& report = WithRows(command);
  const std::int32_t row = command.Number("row");
  if (row < 0 || static_cast<std::size_t>(row) >= report.view->Count()) {
    throw RefusedMessage("failed", "没有这一行。", command.id);
  }
  const Ref<Dictionary> facts = report.object->Get("Property").AsRef<Dictionary>();
  if (!facts || !facts->Exists("DetailRptID")) {
    throw RefusedMessage("failed", "这个报表没有明细。", command.id);
  }
  const auto place = static_cast<std::int32_t>(report.view->RowAt(static_cast<std::size_t>(row)));
  const Ref<Object> detail = report.object->Call("GetDetailReport", place).AsRef<Object>();
  if (!detail) {
    // Without a word of the report's own: it opens nothing for a row that sums up others.
    if (!report.view->IsSummary(static_cast<std::size_t>(row))) return;
    throw RefusedMessage("failed", "这是汇总行，没有单独的明细；请打开它所汇总的行。", command.id);
  }
  const std::string programmaticId = "TOVStockRpt.Rpt" + platform::ToText(facts->Value("DetailRptID"));
  OpenReport& opened = Add(programmaticId, detail);
  opened.parent = report.id;
  Publish(opened);
}

void Reports::MoveItem(const Command& command) {
  struct Move {
    std::string_view to;
    const char* operation;
    int by;  // 0 for one that always leads to an item
  };
  static constexpr std::array kMoves = {Move{"first", "FirstItem", 0}, Move{"previous", "PreviousItem", -1},
                                        Move{"next", "NextItem", 1}, Move{"last", "LastItem", 0}};
  OpenReport& report = WithItems(command);
  const auto* const move = std::ranges::find(kMoves, command.Text("to"), &Move::to);
  const ItemPlace place = PlaceOf(report.items);
  // Past an end the page stays, and so does what was told last: its outcome may be of something else.
  const std::int32_t next = place.position + move->by;
  if (next < 1 || next > place.count) return;
  screen_.TakeCancelled();
  report.object->Call(move->operation);
  Publish(report);
}

void Reports::FindItem(const Command& command) {
  OpenReport& report = WithItems(command);
  screen_.TakeCancelled();
  report.object->Call("FindItem", command.Text("number"));
  const Outcome outcome = OutcomeOf(*report.object);
  if (!outcome.ok) throw RefusedMessage("failed", outcome.error, command.id);
  Publish(report);
}

MadePages Reports::MakePages(const Command& command) {
  OpenReport& report = WithItems(command);
  screen_.TakeCancelled();
  report.pages.reset();
  report.object->Call("GetMutilPageData");
  if (screen_.TakeCancelled()) return {.outcome = "cancelled"};
  const Outcome outcome = OutcomeOf(*report.object);
  if (!outcome.ok && outcome.error == kDeclined) return {.outcome = "declined"};
  if (!outcome.ok) throw RefusedMessage("failed", outcome.error, command.id);
  const Ref<Recordset> rows = desk::ReportRows(report.object->Get("MutilPageRs"));
  const Ref<Recordset> ends = report.object->Get("RowBreakRs").AsRef<Recordset>();
  const Ref<Vector> header = report.object->Get("Header").AsRef<Vector>();
  if (!rows || !ends || !header) throw RefusedMessage("failed", "报表没有返回数据。", command.id);
  report.pages.emplace(rows, *ends, header);
  return {.outcome = "ready", .pages = &*report.pages};
}

const LedgerPages& Reports::PagesOf(const Command& command) {
  const OpenReport& report = Named(command);
  if (!report.pages) throw RefusedMessage("failed", "全部账页已经不在了，请重新打开。", command.id);
  return *report.pages;
}

OpenReport& Reports::WithItems(const Command& command) {
  OpenReport& report = WithRows(command);
  if (!HasItems(*report.object)) {
    throw RefusedMessage("failed", "这个报表不是逐个商品查看的。", command.id);
  }
  return report;
}

void Reports::TellAll() const {
  for (const auto& [id, report] : reports_) {
    if (!report.view) continue;
    Json told = report.told;
    told["rowCount"] = report.view->Count();
    wire_.Send(FrameKind::kMessage, ToText(told));
  }
}

}  // namespace browser
