#pragma once

#include <memory>
#include <string>

#include "books/services/Store.h"
#include "platform/object/OperationTable.h"
#include "platform/rows/Recordset.h"

namespace books::reports {

// The data component that serves several reports, a method each. What a method reads and answers is told
// where its report is read.
class Data final : public platform::Exposed<Data> {
 public:
  explicit Data(std::shared_ptr<services::Store> store) : store_(std::move(store)) {}

  platform::Ref<platform::Recordset> GetRpt10403Data(const std::string& props, platform::Variant& filter);
  platform::Ref<platform::Recordset> GetRpt10411Data(const std::string& props, platform::Variant& filter);
  platform::Ref<platform::Recordset> GetRpt10412Data(const std::string& props, platform::Variant& filter);
  platform::Ref<platform::Recordset> GetRpt10416Data(const std::string& props, platform::Variant& filter);

  static constexpr std::string_view kClassName = "TOVMStockRpt.Data";
  static constexpr auto kOperations =
      platform::Operations(platform::Method<&Data::GetRpt10403Data>("GetRpt10403Data", "Props", "Filter"),
                           platform::Method<&Data::GetRpt10411Data>("GetRpt10411Data", "Props", "Filter"),
                           platform::Method<&Data::GetRpt10412Data>("GetRpt10412Data", "Props", "Filter"),
                           platform::Method<&Data::GetRpt10416Data>("GetRpt10416Data", "Props", "Filter"));

 private:
  std::shared_ptr<services::Store> store_;
};

}  // namespace books::reports
