#pragma once

#include <functional>
#include <string>
#include <vector>

#include "component/filter/FilteredReport.h"
#include "tests/component/FilterControls.h"

namespace component {

// A dialog of the family whose control brings the buttons, with a field of every kind.
class SampleDialog final : public ReportFilterDialog {
 public:
  SampleDialog() : ReportFilterDialog("frmFirterSample", kFields) {}

  // What a report of the first two kinds does at the start of a confirmation.
  bool clearsFirst = false;
  std::vector<std::string> steps;

 protected:
  void SetUp() override {
    steps.push_back("SetUp");
    FillSort(Field<platform::ComboBox>("cboSort"), kSorts);
  }
  void AddKeys(platform::Dictionary& filter) override {
    filter.Set("OrderBy", OrderByText(Field<platform::ComboBox>("cboSort"),
                                      Field<platform::OptionButton>("OptSortD").IsOn()));
  }
  void OnDone() override {
    if (clearsFirst && Result()) Result()->Set("OK", false);
  }
  void OnUnload() override { steps.push_back("Unload"); }

 private:
  static constexpr DialogField kFields[] = {
      {.control = "txtItem", .index = 0, .label = "商品代码:", .key = "BItemNumber", .dataType = kItem},
      {.control = "txtItem", .index = 1, .label = "至:", .key = "EItemNumber", .dataType = kItem},
      {.control = "txtItem", .index = 2, .label = "批号:", .key = "BBatchNo", .dataType = kBatch},
      {.control = "txtNote", .label = "备注:"},
      {.control = "DtpBDate",
       .kind = FieldKind::kDate,
       .label = "日期:",
       .key = "BDate",
       .date = DateDefault::kPeriodFirstDay},
      {.control = "DtpEDate", .kind = FieldKind::kDate, .label = "至:", .key = "EDate"},
      {.control = "DtpKept",
       .kind = FieldKind::kDate,
       .label = "另:",
       .key = "Kept",
       .date = DateDefault::kKeep},
      {.control = "chkTotal", .kind = FieldKind::kCheck, .label = "合计", .key = "chkTotal", .standard = 1},
      {.control = "cboSort", .kind = FieldKind::kCombo, .label = "排序:", .key = "cboSort"},
      {.control = "OptSortD", .kind = FieldKind::kOption, .label = "升序", .key = "OptSortD", .standard = 1},
      {.control = "OptSortA", .kind = FieldKind::kOption, .label = "降序", .key = "OptSortA"},
  };
  static constexpr SortChoice kSorts[] = {{.caption = "无", .field = "FItemNumber"},
                                          {.caption = "数量", .field = "FQty"}};
};

inline constexpr DataRight kSampleRights[] = {{.table = "t_stock", .alias = "t4", .itemClass = "5"}};
inline constexpr ReportFacts kSampleFacts = {.number = "10412",
                                             .name = "样表",
                                             .property = 2,
                                             .frozenColumn = 4,
                                             .titleInsideBox = true,
                                             .dataComponent = "Test.Data",
                                             .dataMethod = "GetSample",
                                             .dataRights = kSampleRights};

// A small report on that dialog. Its facts and its hooks are a test's to choose.
class SampleReport final : public platform::Exposed<SampleReport, ReportFilterReport> {
 public:
  explicit SampleReport(const ReportFacts& facts = kSampleFacts) : Exposed(facts) {}

  bool keepsDialog = false;
  int dialogsMade = 0;
  std::function<void()> onColumns;
  std::function<void(SampleDialog& dialog)> onDialog;

  static constexpr std::string_view kClassName = "Test.SampleReport";
  static constexpr auto kOperations =
      platform::Operations(platform::Method<&SampleReport::ShowFilter>("ShowFilter", "bShowFilter"),
                           platform::Method<&SampleReport::GetReportData>("GetReportData"),
                           platform::PropertyGet<&SampleReport::Rows>("rs"));

 protected:
  void AddReportColumns() override {
    AddColumn("商品$", "", "1", "FItemNumber", 1, kEveryAppType);
    if (onColumns) onColumns();
  }
  platform::Ref<ReportFilterDialog> MakeDialog() override {
    ++dialogsMade;
    platform::Ref<SampleDialog> dialog = platform::MakeRef<SampleDialog>();
    if (onDialog) onDialog(*dialog);
    return dialog;
  }
  bool KeepsDialog() const override { return keepsDialog; }
};

}  // namespace component
