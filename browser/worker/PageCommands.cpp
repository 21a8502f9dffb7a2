// All pages of a ledger: made once by the report, then read sheet by sheet, each with what is carried to it
// and on from it.
#include <algorithm>
#include <set>

#include "browser/worker/FormText.h"
#include "browser/worker/RowText.h"
#include "browser/worker/Session.h"

namespace browser {
namespace {

constexpr std::int32_t kMostRows = 500;
constexpr std::size_t kMostFields = 400;

std::set<std::string> ForbiddenFields(const LedgerPages& pages) {
  std::set<std::string> fields;
  for (const Json& column : ColumnsOf(pages.Header(), pages.Rows())) {
    if (column["forceHide"].get<bool>()) fields.insert(column["field"].get<std::string>());
  }
  return fields;
}

std::vector<std::optional<std::size_t>> FieldsOf(const LedgerPages& pages, const Command& command) {
  const Json& fields = command.body["fields"];
  if (fields.size() > kMostFields) throw RefusedMessage("fields", "too many fields", command.id);
  const std::set<std::string> forbidden = ForbiddenFields(pages);
  std::vector<std::optional<std::size_t>> columns;
  for (const Json& field : fields) {
    const auto& name = field.get_ref<const std::string&>();
    if (forbidden.contains(name)) throw RefusedMessage("failed", "没有这一列：" + name, command.id);
    columns.push_back(pages.Rows().FindField(name));
  }
  return columns;
}

std::size_t NotNegative(const Command& command, const char* field) {
  const std::int32_t number = command.Number(field);
  if (number < 0) throw RefusedMessage("fields", std::string(field) + " must not be negative", command.id);
  return static_cast<std::size_t>(number);
}

Json CarriedCells(const std::optional<exports::LedgerTotals>& totals, const Json& fields) {
  if (!totals) return nullptr;
  Json values = Json::array();
  for (const Json& field : fields) values.push_back(CellOf(totals->Of(field.get_ref<const std::string&>())));
  return values;
}

void AppendRow(std::string& text, const platform::Recordset& rows, std::size_t row,
               const std::vector<std::optional<std::size_t>>& columns) {
  text += '[';
  for (std::size_t j = 0; j < columns.size(); ++j) {
    if (j > 0) text += ',';
    if (columns[j]) {
      AppendCell(text, rows, *columns[j], row);
    } else {
      text += "null";
    }
  }
  text += ']';
}

}  // namespace

std::string Session::AllPages(const Command& command) {
  const MadePages made = reports_.MakePages(command);
  Json message = Message("pages", command.id);
  message["report"] = command.Number("report");
  message["outcome"] = made.outcome;
  message["columns"] = made.pages ? ColumnsOf(made.pages->Header(), made.pages->Rows()) : Json::array();
  message["ends"] = made.pages ? Json(made.pages->Items().Ends()) : Json::array();
  return ToText(message);
}

std::string Session::FetchSheet(const Command& command) {
  const LedgerPages& pages = reports_.PagesOf(command);
  const exports::ItemPages& items = pages.Items();
  const std::size_t page = NotNegative(command, "page");
  if (page >= items.Count()) throw RefusedMessage("failed", "没有这一页。", command.id);
  const std::int32_t count = command.Number("count");
  if (count < 1 || count > kMostRows) {
    throw RefusedMessage("fields", "count must be from 1 to " + std::to_string(kMostRows), command.id);
  }
  const auto columns = FieldsOf(pages, command);
  const std::size_t start = std::min(items.Begin(page) + NotNegative(command, "start"), items.End(page));
  const std::size_t end = std::min(items.End(page), start + static_cast<std::size_t>(count));
  Json message = Message("sheet", command.id);
  message["report"] = command.Number("report");
  message["page"] = page;
  message["start"] = start - items.Begin(page);
  message["title"] = items.TitleLines(page);
  message["brought"] = CarriedCells(pages.CarriedTo(page, start), command.body["fields"]);
  message["carried"] = CarriedCells(pages.CarriedTo(page, end), command.body["fields"]);
  Json summary = Json::array();
  for (std::size_t row = start; row < end; ++row) {
    if (pages.IsSummary(row)) summary.push_back(row - start);
  }
  message["summary"] = std::move(summary);
  std::string text = ToText(message);
  text.back() = ',';
  text += "\"values\":[";
  for (std::size_t row = start; row < end; ++row) {
    if (row > start) text += ',';
    AppendRow(text, pages.Rows(), row, columns);
  }
  return text + "]}";
}

std::string Session::FindPage(const Command& command) {
  const LedgerPages& pages = reports_.PagesOf(command);
  const auto found = pages.Find(command.Text("text"), NotNegative(command, "start"));
  Json message = Message("pageFound", command.id);
  message["report"] = command.Number("report");
  message["page"] = found ? static_cast<std::int64_t>(*found) : -1;
  return ToText(message);
}

}  // namespace browser
