#pragma once

#include <optional>
#include <string>

#include "desk/services/Service.h"

namespace desk {

// Executes texts against the database of the session.
class AppConnection final : public Served<AppConnection> {
 public:
  using Served::Served;

  platform::Ref<platform::Recordset> Execute(const platform::Variant& /*props*/,
                                             const std::string& sql) const {
    return Behind().Execute(sql);
  }

  static constexpr std::string_view kClassName = "TOVMAppConnection.AppConnection";
  static constexpr auto kOperations =
      platform::Operations(platform::Method<&AppConnection::Execute>("Execute", "Props", "Sql"));
};

// The same for class information, with the text by reference.
class ClassInfoService final : public Served<ClassInfoService> {
 public:
  using Served::Served;

  platform::Ref<platform::Recordset> GetData(const platform::Variant& /*props*/, std::string& sql) const {
    return Behind().Execute(sql);
  }

  static constexpr std::string_view kClassName = "TOVMClass.ClassInfo";
  static constexpr auto kOperations =
      platform::Operations(platform::Method<&ClassInfoService::GetData>("GetData", "Props", "Sql"));
};

// Lists of base data with their groups.
class ItemInfo final : public Served<ItemInfo> {
 public:
  using Served::Served;

  // The third argument is left out by every caller.
  platform::Ref<platform::Recordset> GetList(const platform::Variant& /*props*/, std::int32_t dataType,
                                             const std::optional<platform::Variant>& /*unused*/,
                                             const std::optional<std::string>& filter) const {
    return Behind().ItemList(dataType, filter.value_or(""));
  }

  static constexpr std::string_view kClassName = "TOVebsglitem.ItemInfo";
  static constexpr auto kOperations = platform::Operations(
      platform::Method<&ItemInfo::GetList>("GetList", "Props", "DataType", "Unused", "Filter"));
};

// Values the business that waits for its cost.
class QuickCost final : public Served<QuickCost> {
 public:
  using Served::Served;

  void QuickCalculate(const platform::Variant& /*owner*/, const platform::Variant& /*prompt*/) const {
    Behind().QuickCalculate();
  }

  static constexpr std::string_view kClassName = "TOVCalCostByStock.InterFace";
  static constexpr auto kOperations =
      platform::Operations(platform::Method<&QuickCost::QuickCalculate>("QuickCalculate", "Owner", "Prompt"));
};

}  // namespace desk
