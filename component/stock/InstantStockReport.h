#pragma once

#include <optional>

#include "component/filter/FilteredReport.h"

namespace component {

// What the two instant stock reports share: the leading columns by category level and display mode, the
// frozen block that follows from them, the data right, and a dialog that is kept between showings.
class InstantStockReport : public ReportFilterReport {
 public:
  using ReportFilterReport::ReportFilterReport;

  // Writes the user's restriction to the warehouses as "DataRightWhere" into Filter and into the dictionary
  // that is given, whichever of them exist.
  void AddDataRight(std::optional<platform::Ref<platform::Dictionary>>& dataRightDic);

 protected:
  void SetUpProperty(platform::Dictionary& property) override;
  void Fetch() override;
  void AddReportColumns() override;
  bool KeepsDialog() const override { return true; }

  // The figures behind the leading columns, where they are known before the data are read.
  virtual void AddFigureColumns() {}
  // Runs before and after the data are read.
  virtual void BeforeRead() {}
  virtual void AfterRead() {}

  // A report that counts unaudited bills shows no amounts: their cost is not settled.
  std::int16_t AmountMask() const;

 private:
  LevelRange levels_;
};

}  // namespace component
