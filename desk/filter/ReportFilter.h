#pragma once

#include "desk/filter/FilterControl.h"

namespace desk {

// The filter control that has its own OK and Cancel. The dialog's fields go in and out as dictionaries:
// the control raises SaveFields and SaveQuery to collect, LoadFields and LoadQuery to recall.
class ReportFilter final : public platform::Exposed<ReportFilter, FilterControl> {
 public:
  using Exposed::Exposed;

  platform::Variant Invoke(std::string_view member, platform::CallKind kind,
                           std::span<platform::Variant> arguments) override;

  // For the dialog.
  void SetReportID(std::int32_t reportId) { reportId_ = reportId; }
  void SetAutoFilter(platform::Variant& autoFilter) { autoFilter_ = autoFilter; }
  // Fills the fields from a filter.
  void LoadFilter(const platform::Ref<platform::Dictionary>& filter);
  // What was collected when the user confirmed.
  platform::Variant FilterResult();

  // For the host. Confirm collects the fields (`quick`: the quick query pane after them), then tells the
  // dialog that the user is done; Cancel tells it and hides the form.
  void Confirm(bool quick);
  void Cancel(platform::Form& form);
  bool HasButtons() const override { return true; }
  void Save(SchemeStore& store, std::string_view dialog, const std::string& scheme) override;
  // The base data type that the dialog gives the field, 0 when it gives none.
  std::int32_t DataTypeOf(platform::Control& field);
  std::int32_t ReportID() const { return reportId_; }
  const platform::Variant& AutoFilter() const { return autoFilter_; }

  static constexpr std::string_view kClassName = "VEZ_GRFC.ReportFilter";
  static constexpr auto kOperations =
      platform::Operations(platform::PropertyPut<&ReportFilter::SetReportID>("ReportID", "Value"),
                           platform::PropertyPut<&ReportFilter::SetAutoFilter>("AutoFilter", "Value"),
                           platform::Method<&ReportFilter::LoadFilter>("LoadFilter", "Filter"),
                           platform::Method<&ReportFilter::FilterResult>("FilterResult"));

 protected:
  std::string_view ProgrammaticId() const override { return kClassName; }

 private:
  void Recall(const std::string& scheme, const SchemeValues& values) override;
  platform::Ref<platform::Dictionary> Collect(bool quick) const;

  std::int32_t reportId_ = 0;
  platform::Variant autoFilter_;
  platform::Ref<platform::Dictionary> collected_;
};

}  // namespace desk
