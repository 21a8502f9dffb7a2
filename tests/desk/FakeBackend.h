#pragma once

#include <string>
#include <vector>

#include "desk/Backend.h"
#include "desk/Witness.h"

namespace desk_tests {

// A backend whose answers a test sets, and which notes what it is asked.
class FakeBackend final : public desk::Backend {
 public:
  platform::Variant SessionValue(std::string_view key) override { return "session " + std::string(key); }
  platform::Variant OuterLogin() override { return 1; }
  platform::Variant Profile(std::string_view /*category*/, std::string_view key) override {
    return key == "StartYear" ? platform::Variant(2024) : platform::Variant(platform::Null{});
  }
  bool NeedRight() override { return true; }
  std::string RightClasses() override { return "4,5"; }
  platform::Ref<platform::Recordset> Execute(const std::string& sql) override {
    asked.push_back("sql " + sql);
    return {};
  }
  platform::Ref<platform::Recordset> ItemList(std::int32_t dataType, const std::string& filter) override {
    asked.push_back("list " + std::to_string(dataType) + " " + filter);
    return {};
  }
  platform::Date PeriodFirstDay(std::int32_t year, std::int32_t period) override {
    return platform::Date::Of(year, period, 1);
  }
  std::optional<desk::Picked> PickBaseData(const desk::LookupQuery& query) override {
    asked.push_back(query.kind + " " + std::to_string(query.dataType) + " " + query.text + " " +
                    query.filter);
    return picked;
  }
  platform::Ref<platform::Recordset> PickBatch(const desk::BatchQuery& query) override {
    asked.push_back("batch " + query.filterItem + " " + query.filter);
    return batches;
  }
  platform::Ref<platform::Recordset> Batches(const desk::BatchQuery& /*query*/) override { return batches; }
  std::vector<desk::BaseDataRow> BaseData(const desk::BaseDataQuery& query) override {
    asked.push_back("rows '" + query.search + "' limit " + std::to_string(query.limit));
    std::vector<desk::BaseDataRow> found;
    for (const desk::BaseDataRow& row : rows) {
      const bool hit = row.number.find(query.search) != std::string::npos ||
                       row.name.find(query.search) != std::string::npos;
      if (hit && (row.detail || query.withGroups)) found.push_back(row);
    }
    return found;
  }
  void QuickCalculate() override { asked.emplace_back("calculate"); }
  void WriteUsage(const std::string& code, const std::string& text) override {
    asked.push_back("usage " + code + " " + text);
  }
  desk::SchemeStore& Schemes() override { return schemes; }

  std::vector<std::string> asked;
  std::optional<desk::Picked> picked;
  platform::Ref<platform::Recordset> batches;
  std::vector<desk::BaseDataRow> rows;
  desk::MemorySchemes schemes;
};

// A witness that notes a word an event.
class FakeWitness final : public desk::Witness {
 public:
  void OnCreated(std::string_view id) override { told.push_back("created " + std::string(id)); }
  void OnReleased(std::string_view id) override { told.push_back("released " + std::string(id)); }
  void OnCalled(std::string_view /*id*/, std::string_view method, Arguments arguments) override {
    told.push_back("called " + std::string(method) + " with " + std::to_string(arguments.size()));
  }
  void OnGot(std::string_view /*id*/, std::string_view property, Arguments /*index*/) override {
    told.push_back("got " + std::string(property));
  }
  void OnPut(std::string_view /*id*/, std::string_view property, Arguments index,
             const platform::Variant& /*value*/) override {
    told.push_back("put " + std::string(property) + " at " + std::to_string(index.size()));
  }
  void OnSql(std::string_view text) override { told.push_back("sql " + std::string(text)); }
  void OnLookup(const desk::LookupQuery& query) override {
    told.push_back("lookup " + query.kind + " " + std::to_string(query.dataType) + " '" + query.text + "' '" +
                   query.filter + "'");
  }
  void OnUsage(std::string_view code, std::string_view text) override {
    told.push_back("usage " + std::string(code) + " " + std::string(text));
  }

  std::vector<std::string> told;
};

}  // namespace desk_tests
