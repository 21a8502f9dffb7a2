#pragma once

#include "component/filter/ReportFilterDialog.h"
#include "component/filter/TOVRptFilterDialog.h"
#include "component/frame/Report.h"

namespace component {

// A report whose dialog has its own buttons. Each showing makes a new dialog.
class TOVRptFilterReport : public Report {
 public:
  using Report::Report;

  platform::Variant ShowFilter();
  // The next ShowFilter shows no dialog and leaves the report without conditions; in the classes that offer
  // it.
  void SetNoFilter(bool noFilter) { noFilter_ = noFilter; }

 protected:
  virtual platform::Ref<TOVRptFilterDialog> MakeDialog() = 0;
  // Runs when a showing was spent on "no filter", before the filter is dropped.
  virtual void OnNoFilter() {}

 private:
  bool noFilter_ = false;
};

// A report whose filter control brings the buttons.
class ReportFilterReport : public Report {
 public:
  using Report::Report;
  ReportFilterReport(const ReportFilterReport&) = delete;
  ReportFilterReport& operator=(const ReportFilterReport&) = delete;
  ReportFilterReport(ReportFilterReport&&) = delete;
  ReportFilterReport& operator=(ReportFilterReport&&) = delete;
  ~ReportFilterReport() override;

  // `bShowFilter` is accepted and ignored: Property "ShowFilter" is the browser's way to say how it opens.
  platform::Variant ShowFilter(std::optional<bool>& bShowFilter);
  platform::Variant ShowFilterPlain();

 protected:
  virtual platform::Ref<ReportFilterDialog> MakeDialog() = 0;
  // Whether the dialog is kept between showings, so that the user finds the conditions as they were; such a
  // report also says what is wrong with a filter that the dialog does not deliver.
  virtual bool KeepsDialog() const { return false; }

 private:
  void TakeOutcome(const platform::Ref<platform::Dictionary>& outcome);

  platform::Ref<ReportFilterDialog> dialog_;
};

}  // namespace component
