// Reading of a report's rows. Blocks are written into one text straight from the store; nothing in between.
#include <algorithm>

#include "browser/worker/FormText.h"
#include "browser/worker/RowText.h"
#include "browser/worker/Session.h"

namespace browser {
namespace {

constexpr std::int32_t kMostRows = 500;
constexpr std::size_t kMostFields = 400;

// A column that the application type hides stays hidden, whoever asks for it.
bool IsForbidden(const OpenReport& report, std::string_view field) {
  return std::ranges::any_of(report.told["columns"], [&](const Json& column) {
    return column["forceHide"].get<bool>() && column["field"].get_ref<const std::string&>() == field;
  });
}

// The columns of the fields named; nothing for a field that the rows have not got.
std::vector<std::optional<std::size_t>> ColumnsOf(const OpenReport& report, const Command& command) {
  std::vector<std::optional<std::size_t>> columns;
  const Json& fields = command.body["fields"];
  if (fields.size() > kMostFields) throw RefusedMessage("fields", "too many fields", command.id);
  for (const Json& field : fields) {
    const auto& name = field.get_ref<const std::string&>();
    if (IsForbidden(report, name)) throw RefusedMessage("failed", "没有这一列：" + name, command.id);
    columns.push_back(report.view->Rows().FindField(name));
  }
  return columns;
}

std::vector<std::size_t> KnownColumnsOf(const OpenReport& report, const Command& command) {
  std::vector<std::size_t> known;
  if (!command.Has("fields")) return known;
  for (const auto& column : ColumnsOf(report, command)) {
    if (column) known.push_back(*column);
  }
  return known;
}

std::size_t NotNegative(const Command& command, const char* field) {
  const std::int32_t number = command.Number(field);
  if (number < 0) throw RefusedMessage("fields", std::string(field) + " must not be negative", command.id);
  return static_cast<std::size_t>(number);
}

Json Answering(const char* type, const OpenReport& report, const Command& command) {
  Json message = Message(type, command.id);
  message["report"] = report.id;
  return message;
}

// Opens the text of a block up to its rows.
std::string BlockHead(const OpenReport& report, const Command& command, std::size_t start, std::size_t end) {
  Json head = Answering("rows", report, command);
  head["start"] = start;
  head["fields"] = command.body["fields"];
  Json summary = Json::array();
  for (std::size_t i = start; i < end; ++i) {
    if (report.view->IsSummary(report.view->RowAt(i))) summary.push_back(i);
  }
  head["summary"] = std::move(summary);
  std::string text = ToText(head);
  text.pop_back();
  return text + ",\"values\":[";
}

// The words of a column's heading, marks left out: group and second line, or the one line.
Json HeadingPath(const Json& columns, std::string_view field) {
  std::string group;
  for (const Json& column : columns) {
    const auto& caption = column["caption"].get_ref<const std::string&>();
    const auto& second = column["second"].get_ref<const std::string&>();
    if (!caption.empty()) group = caption.substr(0, caption.find("+|"));
    if (column["field"].get_ref<const std::string&>() != field) continue;
    if (group.ends_with('$')) group.pop_back();
    Json path = Json::array({group});
    if (!second.empty()) path.push_back(second);
    return path;
  }
  return Json::array();
}

}  // namespace

std::string Session::FetchRows(const Command& command) {
  const OpenReport& report = reports_.WithRows(command);
  const View& view = *report.view;
  const auto columns = ColumnsOf(report, command);
  const std::size_t start = std::min(NotNegative(command, "start"), view.Count());
  const std::int32_t count = command.Number("count");
  if (count < 1 || count > kMostRows) {
    throw RefusedMessage("fields", "count must be from 1 to " + std::to_string(kMostRows), command.id);
  }
  const std::size_t end = std::min(view.Count(), start + static_cast<std::size_t>(count));
  std::string text = BlockHead(report, command, start, end);
  for (std::size_t i = start; i < end; ++i) {
    const std::size_t row = view.RowAt(i);
    text += i == start ? "[" : ",[";
    for (std::size_t j = 0; j < columns.size(); ++j) {
      if (j > 0) text += ',';
      if (columns[j]) {
        AppendCell(text, view.Rows(), *columns[j], row);
      } else {
        text += "null";
      }
    }
    text += ']';
  }
  return text + "]}";
}

std::string Session::SetView(const Command& command) {
  OpenReport& report = reports_.WithRows(command);
  std::vector<SortKey> sort;
  for (const Json& key : command.body["sort"]) {
    const auto& name = key["field"].get_ref<const std::string&>();
    const auto column = report.view->Rows().FindField(name);
    if (!column || IsForbidden(report, name))
      throw RefusedMessage("failed", "没有这一列：" + name, command.id);
    sort.push_back({.column = *column, .descending = key["descending"].get<bool>()});
  }
  report.view->Set(sort, command.Has("text") ? command.Text("text") : "", KnownColumnsOf(report, command));
  Json message = Answering("view", report, command);
  message["rowCount"] = report.view->Count();
  return ToText(message);
}

std::string Session::Find(const Command& command) {
  const OpenReport& report = reports_.WithRows(command);
  const bool back = command.Has("back") && command.body["back"].get<bool>();
  const auto found = report.view->Find(command.Text("text"), NotNegative(command, "start"), back,
                                       KnownColumnsOf(report, command));
  Json message = Answering("found", report, command);
  message["row"] = found ? static_cast<std::int64_t>(found->position) : -1;
  message["field"] = found ? report.view->Rows().Fields()[found->column].name : std::string();
  return ToText(message);
}

std::string Session::Sum(const Command& command) {
  const OpenReport& report = reports_.WithRows(command);
  const std::size_t start = NotNegative(command, "start");
  const std::size_t count = NotNegative(command, "count");
  Json sums = Json::array();
  for (const std::size_t column : KnownColumnsOf(report, command)) {
    const ColumnSum sum = report.view->Sum(column, start, count);
    sums.push_back({{"field", report.view->Rows().Fields()[column].name},
                    {"count", sum.count},
                    {"sum", sum.sum},
                    {"average", sum.average}});
  }
  Json message = Answering("sums", report, command);
  message["sums"] = std::move(sums);
  return ToText(message);
}

std::string Session::Explain(const Command& command) {
  const OpenReport& report = reports_.WithRows(command);
  const View& view = *report.view;
  const std::size_t position = NotNegative(command, "row");
  const std::string& field = command.Text("field");
  const auto column = view.Rows().FindField(field);
  if (position >= view.Count() || !column || IsForbidden(report, field)) {
    throw RefusedMessage("failed", "没有这个单元格。", command.id);
  }
  const std::size_t row = view.RowAt(position);
  Json key = Json::object();
  for (const Json& shown : report.told["columns"]) {
    const auto& name = shown["field"].get_ref<const std::string&>();
    const auto keyColumn = view.Rows().FindField(name);
    const bool names = name.ends_with("Number") || name.ends_with("Name") || name.ends_with("No");
    if (names && keyColumn && !shown["forceHide"].get<bool>()) {
      key[name] = CellOf(view.Rows().ValueAt(*keyColumn, row));
    }
  }
  Json filter = Json::array();
  for (const Json& line : report.told["title"]) filter.push_back(line["caption"]);
  Json message = Answering("explanation", report, command);
  message["row"] = position;
  message["field"] = field;
  message["path"] = HeadingPath(report.told["columns"], field);
  message["value"] = CellOf(view.Rows().ValueAt(*column, row));
  message["key"] = std::move(key);
  message["filter"] = std::move(filter);
  message["rights"] = Rights();
  return ToText(message);
}

}  // namespace browser
