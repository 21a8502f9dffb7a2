#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "desk/Backend.h"
#include "desk/DataBackend.h"
#include "platform/rows/Dictionary.h"
#include "player/Json.h"

namespace player {

// What a script says in answer to the desk: session, profile, rights, SQL texts, picks, schemes. A stock book
// may stand behind it and answers what the script leaves open. Nothing is ever written to the book.
class ScriptDesk final : public desk::Backend {
 public:
  // `fault` is told of a mistake in the script that the component may hide. Both are borrowed.
  ScriptDesk(const Names& names, std::function<void(const std::string&)> fault)
      : names_(names), fault_(std::move(fault)) {}

  // The steps that set the desk. Entries add to what earlier steps have set.
  void AddSession(const Json& entries) { Add(*session_, entries); }
  void AddProfile(const Json& entries) { Add(*profile_, entries); }
  void SetOuterLogin(const Json& number) { outerLogin_ = FromJson(number); }
  void SetNeedRight(bool needRight) { needRight_ = needRight; }
  void SetRightClasses(std::string classes) { rightClasses_ = std::move(classes); }
  void SetSqlAnswers(const Json& answers) { sqlAnswers_ = answers; }
  void QueuePick(const Json& pick) { picks_.push_back(pick); }
  void AddScheme(const Json& step);
  void SetBook(std::unique_ptr<desk::DataBackend> book);

  desk::DataBackend* Book() const { return book_.get(); }
  // From the session, 0 when it names no user.
  std::int32_t UserID() const;
  // The next pick; nothing when none is queued, or a cancel is.
  std::optional<platform::Variant> TakePick();

  platform::Variant SessionValue(std::string_view key) override;
  platform::Variant OuterLogin() override { return outerLogin_; }
  platform::Variant Profile(std::string_view category, std::string_view key) override;
  bool NeedRight() override;
  std::string RightClasses() override;
  platform::Ref<platform::Recordset> Execute(const std::string& sql) override;
  platform::Ref<platform::Recordset> ItemList(std::int32_t dataType, const std::string& filter) override;
  platform::Date PeriodFirstDay(std::int32_t year, std::int32_t period) override;
  std::optional<desk::Picked> PickBaseData(const desk::LookupQuery& query) override;
  platform::Ref<platform::Recordset> PickBatch(const desk::BatchQuery& query) override;
  platform::Ref<platform::Recordset> Batches(const desk::BatchQuery& query) override;
  std::vector<desk::BaseDataRow> BaseData(const desk::BaseDataQuery& query) override;
  void QuickCalculate() override {}
  void WriteUsage(const std::string& /*code*/, const std::string& /*text*/) override {}
  desk::SchemeStore& Schemes() override { return schemes_; }

 private:
  void Add(platform::Dictionary& to, const Json& entries) const;
  [[noreturn]] void Fault(const std::string& text) const;

  const Names& names_;
  std::function<void(const std::string&)> fault_;
  platform::Ref<platform::Dictionary> session_ = platform::MakeRef<platform::Dictionary>();
  platform::Ref<platform::Dictionary> profile_ = platform::MakeRef<platform::Dictionary>();
  platform::Variant outerLogin_ = 0;
  std::optional<bool> needRight_;
  std::optional<std::string> rightClasses_;
  Json sqlAnswers_ = Json::array();
  std::deque<Json> picks_;
  desk::MemorySchemes schemes_;
  std::unique_ptr<desk::DataBackend> book_;
};

}  // namespace player
