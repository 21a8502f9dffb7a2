#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "component/frame/Report.h"
#include "component/ledger/LedgerWalk.h"
#include "component/ledger/frmFirter10402.h"

namespace component {

// The stock ledger: a page an item over a range of accounting periods. The filter selects a list of items;
// the browser walks it item by item, or asks for all pages at once. Only here does the component make rows
// itself: the data component delivers balances and movements, a call a period and item.
class Rpt10402 final : public platform::Exposed<Rpt10402, Report> {
 public:
  Rpt10402();
  Rpt10402(const Rpt10402&) = delete;
  Rpt10402& operator=(const Rpt10402&) = delete;
  Rpt10402(Rpt10402&&) = delete;
  Rpt10402& operator=(Rpt10402&&) = delete;
  ~Rpt10402() override;

  // The rows of all pages, and where each page ends ("FBreakRow", the number of rows up to there). Both are
  // nothing before GetMutilPageData, and again after Refresh.
  platform::Ref<platform::Recordset> MutilPageRs() const { return mutilPageRs_; }
  platform::Ref<platform::Recordset> RowBreakRs() const { return rowBreakRs_; }

  platform::Variant GetReportData() override;
  // Loads the page of the current item anew and drops an output of many pages.
  platform::Variant Refresh() override;
  // Moves to an item and load its page. 1 when there may be more that way; 0 at the end of the list, where
  // the page stays, and always from FirstItem and LastItem.
  std::int32_t NextItem();
  std::int32_t FirstItem();
  std::int32_t LastItem();
  std::int32_t PreviousItem();
  // Moves to the item with this number. A miss is told in Result, and everything stays as it was.
  platform::Variant FindItem(const std::string& sNumber);
  platform::Variant ShowFilter(std::optional<bool>& bShowFilter);
  // Fills MutilPageRs and RowBreakRs with the pages of all items; asks the user before a long run.
  platform::Variant GetMutilPageData();
  // The page of an item, for any range of periods; null after a failure, which Result tells. Number, costing
  // method and decimals are those of the list's current item, whatever item is asked for.
  platform::Ref<platform::Recordset> GetRptList(std::int16_t iBeginYear, std::int16_t iBeginPeriod,
                                                std::int16_t iEndYear, std::int16_t iEndPeriod,
                                                std::int32_t ItemID,
                                                const std::optional<bool>& bShowNoHappen);

  // All items in one pass, each period fetched once for all of them, with cost differences and year-to-date
  // figures from the server. No operation reaches them: the pages of all items come through GetRptList. They
  // fill MutilPageRs and RowBreakRs, and tell Result.
  void BuildBatchByItem();
  void BuildBatchByPeriod();

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt10402";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyGet<&Rpt10402::RptID>("RptID"),
      platform::PropertyPut<&Rpt10402::SetRptID>("RptID", "Value"),
      platform::PropertyGet<&Rpt10402::Filter>("Filter"),
      platform::PropertyPut<&Rpt10402::SetFilter>("Filter", "Value"),
      platform::PropertyPut<&Rpt10402::SetExtFirter>("ExtFirter", "Value"),
      platform::PropertyGet<&Rpt10402::Property>("Property"),
      platform::PropertyGet<&Rpt10402::Result>("Result"), platform::PropertyGet<&Rpt10402::Header>("Header"),
      platform::PropertyGet<&Rpt10402::Title>("Title"), platform::PropertyGet<&Rpt10402::Rows>("rs"),
      platform::PropertyGet<&Rpt10402::MutilPageRs>("MutilPageRs"),
      platform::PropertyGet<&Rpt10402::RowBreakRs>("RowBreakRs"),
      platform::Method<&Rpt10402::Refresh>("Refresh"), platform::Method<&Rpt10402::NextItem>("NextItem"),
      platform::Method<&Rpt10402::FirstItem>("FirstItem"), platform::Method<&Rpt10402::LastItem>("LastItem"),
      platform::Method<&Rpt10402::PreviousItem>("PreviousItem"),
      platform::Method<&Rpt10402::ShowFilter>("ShowFilter", "bShowFilter"),
      platform::Method<&Rpt10402::GetReportData>("GetReportData"),
      platform::Method<&Rpt10402::GetMutilPageData>("GetMutilPageData"),
      platform::Method<&Rpt10402::GetRptList>("GetRptList", "iBeginYear", "iBeginPeriod", "iEndYear",
                                              "iEndPeriod", "ItemID", "bShowNoHappen"),
      platform::Method<&Rpt10402::FindItem>("FindItem", "sNumber"));

 protected:
  void RefreshNumberFlag() override;
  void SetUpProperty(platform::Dictionary& property) override;
  void OnBarActive() override;
  void AddReportColumns() override;

 private:
  enum class Order : std::uint8_t { kByItem, kByPeriod };

  void DropDialog();
  void TakeFilter();
  void FetchItems();
  LedgerRange FilterRange() const;
  bool ShowsNoHappen() const;
  bool HasItems() const { return items_ && items_->RecordCount() > 0; }
  LedgerDecimals ItemDecimals() const;
  platform::Variant GetPerioddata(platform::Object& data, std::int32_t itemId, std::int16_t year,
                                  std::int16_t period, const std::string& condition);

  void ShowItem(const platform::Variant& itemId);
  void ShowCurrentItem();
  void BuildItemTitle();
  void MakeLedgerDataRight();
  void BuildLedgerHeader();
  platform::Ref<platform::Recordset> BuildPage(const LedgerRange& range, std::int32_t itemId,
                                               bool showNoHappen);
  void GetMutilList() { GetMutilRptList(); }
  void GetMutilRptList();
  void ConfirmLongRun(std::int32_t itemCount) const;
  void AddPages(std::int32_t itemCount);
  void AddPage(const LedgerRange& range, bool showNoHappen);
  void BuildBatch(Order order);

  platform::Ref<frmFirter10402> dialog_;
  platform::Ref<platform::Recordset> items_;
  platform::Ref<platform::Recordset> mutilPageRs_;
  platform::Ref<platform::Recordset> rowBreakRs_;
  std::string captionWord_;
  std::int32_t currentItem_ = 0;
  bool multiPage_ = false;
  bool showsBatches_ = false;
  PeriodData periodData_;  // its layout is the same from call to call
};

}  // namespace component
