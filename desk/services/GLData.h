#pragma once

#include <string>

#include "desk/services/Service.h"

namespace desk {

// The settings of the account set, by category and key.
class SystemProfile final : public Served<SystemProfile> {
 public:
  using Served::Served;

  // Null for a key that is not set.
  platform::Variant GetProfile(const platform::Variant& /*props*/, const std::string& category,
                               const std::string& key) const {
    return Behind().Profile(category, key);
  }
  // The default for a key that is not set, Empty when there is none.
  platform::Variant GetSystemProfile(const std::string& category, const std::string& key,
                                     const std::optional<platform::Variant>& fallback) const;

  static constexpr std::string_view kClassName = "TOVEBSBase.SystemProfile";
  static constexpr auto kOperations = platform::Operations(
      platform::Method<&SystemProfile::GetProfile>("GetProfile", "Props", "Category", "Key"),
      platform::Method<&SystemProfile::GetSystemProfile>("GetSystemProfile", "Category", "Key", "Default"));
};

// General ledger data: rights, periods and the profile.
class GLData final : public Served<GLData> {
 public:
  using Served::Served;

  // Whether the user may use a function. The desk lets everybody in who has got here: the login decides.
  bool AccessCheck(std::int32_t /*module*/, std::int32_t /*function*/, std::int32_t /*right*/) const {
    Behind();
    return true;
  }
  // The base data classes that rights are kept for.
  std::string GetAuthItemClassList() const { return Behind().RightClasses(); }
  // Base data are read anew with every lookup, so there is nothing to throw away.
  void Refresh() const { Behind(); }
  platform::Date GLGetPeriodDate(std::int32_t year, std::int32_t period) const {
    return Behind().PeriodFirstDay(year, period);
  }
  platform::Ref<platform::Object> SystemProfileObject() const {
    return GetDesk()->HandOut(SystemProfile::kClassName);
  }

  static constexpr std::string_view kClassName = "TOVEBCGLView.GLData";
  static constexpr auto kOperations = platform::Operations(
      platform::Method<&GLData::AccessCheck>("AccessCheck", "Module", "Function", "Right"),
      platform::Method<&GLData::GetAuthItemClassList>("GetAuthItemClassList"),
      platform::Method<&GLData::Refresh>("Refresh"),
      platform::Method<&GLData::GLGetPeriodDate>("GLGetPeriodDate", "Year", "Period"),
      platform::PropertyGet<&GLData::SystemProfileObject>("SystemProfile"));
};

}  // namespace desk
