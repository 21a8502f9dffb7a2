#include "player/ScriptDesk.h"

#include "platform/value/Convert.h"

namespace player {

using platform::Dictionary;
using platform::Error;
using platform::ErrorNumber;
using platform::Recordset;
using platform::Ref;
using platform::Variant;

void ScriptDesk::Add(Dictionary& to, const Json& entries) const {
  for (const auto& [key, value] : entries.items()) to.Set(key, FromJson(value, &names_));
}

void ScriptDesk::Fault(const std::string& text) const {
  fault_(text);
  throw Error(ErrorNumber::kInvalidCall, "player", text);
}

void ScriptDesk::AddScheme(const Json& step) {
  desk::SchemeValues values;
  for (const auto& [key, value] : step["values"].items()) {
    desk::SetValue(values, key, FromJson(value, &names_));
  }
  schemes_.Save(step["dialog"].get<std::string>(), step["scheme"].get<std::string>(), values);
}

void ScriptDesk::SetBook(std::unique_ptr<desk::DataBackend> book) {
  schemes_.StandBefore(nullptr);
  book_ = std::move(book);
  if (book_) schemes_.StandBefore(&book_->Schemes());
}

std::int32_t ScriptDesk::UserID() const {
  std::int32_t userId = 0;
  platform::SkipErrors([&] { userId = platform::ToInt32(session_->Value("UserID")); });
  return userId;
}

Variant ScriptDesk::SessionValue(std::string_view key) {
  if (const Variant* value = session_->Find(key)) return *value;
  if (platform::EqualsIgnoreCase(key, "PropsString") && session_->Exists("UserID")) {
    return "UserID=" + platform::ToText(session_->Value("UserID")) + ";";
  }
  return {};
}

Variant ScriptDesk::Profile(std::string_view category, std::string_view key) {
  if (const Variant* value = profile_->Find(std::string(category) + "/" + std::string(key))) return *value;
  return book_ ? book_->Profile(category, key) : Variant(platform::Null{});
}

bool ScriptDesk::NeedRight() {
  if (needRight_) return *needRight_;
  return book_ && book_->NeedRight();
}

std::string ScriptDesk::RightClasses() {
  if (rightClasses_) return *rightClasses_;
  return book_ ? book_->RightClasses() : std::string();
}

Ref<Recordset> ScriptDesk::Execute(const std::string& sql) {
  const std::string upper = platform::ToUpperAscii(sql);
  for (const Json& answer : sqlAnswers_) {
    if (upper.find(platform::ToUpperAscii(answer["contains"].get<std::string>())) == std::string::npos)
      continue;
    const Json& rows = answer["rows"];
    if (rows.contains("raises")) {
      throw Error(ErrorNumber::kUserDefined, "player", rows["raises"].get<std::string>());
    }
    return FromJson(rows, &names_).AsRef<Recordset>();
  }
  if (book_) return book_->Execute(sql);
  throw Error(ErrorNumber::kUserDefined, "player", "the script has no answer for this SQL text");
}

Ref<Recordset> ScriptDesk::ItemList(std::int32_t dataType, const std::string& filter) {
  if (book_) return book_->ItemList(dataType, filter);
  throw Error(ErrorNumber::kUserDefined, "player",
              "the script has no list of base data; describe TOVebsglitem.ItemInfo in a component step");
}

platform::Date ScriptDesk::PeriodFirstDay(std::int32_t year, std::int32_t period) {
  return book_ ? book_->PeriodFirstDay(year, period) : platform::Date::Of(year, period, 1);
}

std::optional<Variant> ScriptDesk::TakePick() {
  if (picks_.empty()) return std::nullopt;
  const Json pick = picks_.front();
  picks_.pop_front();
  Variant value = FromJson(pick, &names_);
  if (value.IsEmpty() || value.IsNothing()) return std::nullopt;
  return value;
}

std::optional<desk::Picked> ScriptDesk::PickBaseData(const desk::LookupQuery& /*query*/) {
  const std::optional<Variant> pick = TakePick();
  if (!pick) return std::nullopt;
  const auto choice = pick->AsRef<Dictionary>();
  if (!choice) Fault("a pick of base data is a dictionary with \"Number\", \"FShortNumber\" and \"Detail\"");
  return desk::Picked{.number = choice->Value("Number"),
                      .shortNumber = choice->Value("FShortNumber"),
                      .detail = choice->Value("Detail")};
}

Ref<Recordset> ScriptDesk::PickBatch(const desk::BatchQuery& /*query*/) {
  const std::optional<Variant> pick = TakePick();
  if (!pick) return {};
  const auto rows = pick->AsRef<Recordset>();
  if (!rows) Fault("a pick of the batch list is a recordset");
  return rows;
}

Ref<Recordset> ScriptDesk::Batches(const desk::BatchQuery& query) {
  return book_ ? book_->Batches(query) : Ref<Recordset>();
}

std::vector<desk::BaseDataRow> ScriptDesk::BaseData(const desk::BaseDataQuery& query) {
  return book_ ? book_->BaseData(query) : std::vector<desk::BaseDataRow>();
}

}  // namespace player
