// What the page asks of the book beside reports: base data, rights, and what it keeps for its user.
#include <algorithm>
#include <array>

#include "browser/worker/Session.h"
#include "platform/value/Convert.h"

namespace browser {
namespace {

constexpr std::size_t kLargestPreference = 64UL * 1024;
constexpr std::size_t kLongestKey = 200;
constexpr std::string_view kPreferenceScheme = "preference";

// Preferences are kept where schemes are, under dialogs that no form is named like.
std::string PreferenceDialog(const Command& command) {
  const std::string& key = command.Text("key");
  if (key.empty() || key.size() > kLongestKey) {
    throw RefusedMessage("fields", "key must have 1 to 200 bytes", command.id);
  }
  return "page:" + key;
}

struct RightClass {
  std::int32_t dataType;
  std::string_view name;
};

constexpr std::array kRightClasses = {
    RightClass{1, "客户"}, RightClass{2, "部门"},   RightClass{3, "职员"},      RightClass{4, "商品"},
    RightClass{5, "仓库"}, RightClass{8, "供应商"}, RightClass{10, "辅助属性"},
};

std::size_t DetailCount(desk::Backend& book, std::int32_t dataType) {
  constexpr std::int32_t kAll = 1'000'000;
  return book.BaseData({.dataType = dataType, .search = {}, .filter = {}, .withGroups = false, .limit = kAll})
      .size();
}

}  // namespace

std::string Session::ListReports(const Command& command) {
  Json message = Message("reports", command.id);
  message["groups"] = reports_.Groups();
  return ToText(message);
}

std::string Session::QueryLookup(const Command& command) {
  constexpr std::int32_t kMost = 100'000;  // the items of a large company, to be searched by initials
  const std::int32_t limit = std::clamp(command.Has("limit") ? command.Number("limit") : 200, 1, kMost);
  const bool withGroups = command.Has("withGroups") && command.body["withGroups"].get<bool>();
  std::vector<desk::BaseDataRow> found = book_->BaseData({.dataType = command.Number("dataType"),
                                                          .search = command.Text("text"),
                                                          .filter = {},
                                                          .withGroups = withGroups,
                                                          .limit = limit + 1});
  const bool more = found.size() > static_cast<std::size_t>(limit);
  if (more) found.resize(static_cast<std::size_t>(limit));
  Json rows = Json::array();
  for (const desk::BaseDataRow& row : found) {
    rows.push_back({{"id", row.id},
                    {"parent", row.parentId},
                    {"number", row.number},
                    {"shortNumber", row.shortNumber},
                    {"name", row.name},
                    {"detail", row.detail},
                    {"disabled", row.disabled}});
  }
  Json message = Message("lookupRows", command.id);
  message["dataType"] = command.Number("dataType");
  message["rows"] = std::move(rows);
  message["more"] = more;
  return ToText(message);
}

// How much of the classes that rights are kept for the user sees; nothing when no rights restrict him.
Json Session::Rights() {
  Json rights = Json::array();
  if (!book_->NeedRight()) return rights;
  if (!unrestricted_) unrestricted_ = options_.openBook(options_.book, [] { return 0; });
  const std::string classes = "," + book_->RightClasses() + ",";
  for (const RightClass& kept : kRightClasses) {
    if (classes.find("," + std::to_string(kept.dataType) + ",") == std::string::npos) continue;
    rights.push_back({{"dataType", kept.dataType},
                      {"name", std::string(kept.name)},
                      {"visible", DetailCount(*book_, kept.dataType)},
                      {"all", DetailCount(*unrestricted_, kept.dataType)}});
  }
  return rights;
}

std::string Session::GetPreference(const Command& command) {
  const auto kept = book_->Schemes().Load(PreferenceDialog(command), kPreferenceScheme);
  const std::string text = kept ? platform::ToText(desk::ValueOf(*kept, "json")) : std::string();
  Json message = Message("preference", command.id);
  message["key"] = command.Text("key");
  message["value"] = Json::parse(text, nullptr, false);
  if (message["value"].is_discarded()) message["value"] = nullptr;
  return ToText(message);
}

void Session::SetPreference(const Command& command) {
  const std::string dialog = PreferenceDialog(command);
  const Json& value = command.body["value"];
  if (value.is_null()) {
    book_->Schemes().Delete(dialog, kPreferenceScheme);
    return;
  }
  const std::string text = ToText(value);
  if (text.size() > kLargestPreference) throw RefusedMessage("fields", "value is too large", command.id);
  book_->Schemes().Save(dialog, kPreferenceScheme, {{"json", text}});
}

}  // namespace browser
