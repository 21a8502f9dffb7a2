// The closing date counts only while "instant" is off, the stock check only while it is on, and the sharing
// of odd amounts only with the stock check. A display by property or batch never lists items without stock.
#include "component/stock/InstantStockDialog.h"

#include <string_view>

#include "component/frame/MMTS.h"
#include "component/frame/MParse.h"
#include "component/frame/MRpt.h"
#include "component/frame/VEZPublic.h"
#include "component/stock/Quiet.h"
#include "platform/form/Screen.h"

namespace component {
namespace {

using enum FieldKind;
using platform::CheckBox;
using platform::ComboBox;
using platform::DatePicker;
using platform::Dictionary;
using platform::Frame;
using platform::Label;
using platform::TextBox;
using platform::Variant;

// In both dialogs: to the title and the browser the two reports are one.
constexpr std::int16_t kReportNumber = 10422;
constexpr std::string_view kQuickPane = "PictureCommon";
constexpr int kCheckItem = 1;
constexpr int kOnTime = 2;
constexpr int kShareAbnormalAmount = 3;
constexpr int kShowType = 1;

constexpr DialogField kFields[] = {
    {.control = "DtpDate", .index = 0, .kind = kDate, .label = "截至日期:", .key = "EDate"},
    {.control = "txtItem", .index = 0, .label = "商品代码:", .key = "BItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 1, .label = "至:", .key = "EItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 2, .label = "批号:", .key = "BBatchNo", .dataType = kBatch},
    {.control = "txtItem", .index = 3, .label = "至:", .key = "EBatchNo", .dataType = kBatch},
    {.control = "txtItem",
     .index = 4,
     .label = "辅助属性:",
     .key = "BAuxNumber",
     .dataType = kAuxiliaryProperty},
    {.control = "txtItem", .index = 5, .label = "至:", .key = "EAuxNumber", .dataType = kAuxiliaryProperty},
    {.control = "txtItem", .index = 6, .label = "仓库代码:", .key = "BStockNumber", .dataType = kStock},
    {.control = "txtItem", .index = 7, .label = "至:", .key = "EStockNumber", .dataType = kStock},
    {.control = "txtItem", .index = 8, .label = "规格型号:", .key = "Model"},
    {.control = "txtItem", .index = 9, .label = "商品名称:", .key = "ItemName"},
    {.control = "chkitem", .index = 0, .kind = kCheck, .label = "显示禁用商品", .key = "ShowDeletedItem"},
    {.control = "chkitem", .index = 1, .kind = kCheck, .label = "校对即时库存", .key = "CheckItem"},
    {.control = "chkitem", .index = 2, .kind = kCheck, .label = "即时库存", .key = "OnTime", .standard = 1},
    {.control = "chkitem", .index = 3, .kind = kCheck, .label = "分摊异常金额", .key = "ShareAbnormalAmt"},
    {.control = "optItem", .index = 0, .kind = kOption, .label = "升序", .key = "ASC", .standard = 1},
    {.control = "optItem", .index = 1, .kind = kOption, .label = "降序", .key = "DESC"},
    {.control = "cmbitem", .index = 0, .kind = kCombo, .label = "仓库类型:", .key = "StockType"},
    {.control = "cmbitem", .index = 1, .kind = kCombo, .label = "显示:", .key = "ShowType"},
    {.control = "cmbitem", .index = 2, .kind = kCombo, .label = "排序:", .key = "Sort"},
    {.control = "chkBill", .kind = kCheck, .label = "包含未审核单据", .key = "ContainBills"},
    {.control = "chkShowZero", .kind = kCheck, .label = "显示零库存商品", .key = "ShowZero"},
    {.control = "chkNotShowMinus", .kind = kCheck, .label = "负库存不显示", .key = "NotShowMinus"},
    {.control = "chkMultiLevel", .kind = kCheck, .label = "商品分级汇总", .key = "MultiLevel"},
    {.control = "txtMultiLevelBegin", .label = "类别级别:", .key = "MultiLevelBegin", .keptOnReset = true},
    {.control = "txtMultiLevelEnd", .label = "至", .key = "MultiLevelEnd", .keptOnReset = true},
    // The quick query pane saves and loads by itself.
    {.control = "cmbDateType", .kind = kCombo, .label = ""},
    {.control = "BEGDate", .kind = kDate, .label = "日期范围:"},
    {.control = "ENDDate", .kind = kDate, .label = "至"},
    {.control = "txtItem", .index = 10, .label = "商品代码:", .dataType = kItem},
    {.control = "txtItem", .index = 11, .label = "至", .dataType = kItem},
    {.control = "txtItem", .index = 12, .label = "仓库代码:", .dataType = kStock},
    {.control = "txtItem", .index = 13, .label = "至", .dataType = kStock},
};

struct QuickField {
  std::string_view control;
  std::string_view key;
};
constexpr QuickField kQuickDates[] = {{"BEGDate", "BDate"}, {"ENDDate", "EDate"}};
constexpr QuickField kQuickTexts[] = {{"txtItem(10)", "BItemNumber"},
                                      {"txtItem(11)", "EItemNumber"},
                                      {"txtItem(12)", "BStockNumber"},
                                      {"txtItem(13)", "EStockNumber"}};

constexpr std::string_view kWarehouseTypes[] = {"全部", "普通仓", "赠品仓"};
constexpr std::string_view kSorts[] = {"商品代码", "规格型号", "商品名称"};
constexpr Choice kShowTypes[] = {
    {.data = 0, .caption = "正常显示"},
    {.data = 1, .caption = "按辅助属性展开", .mask = kWithAuxiliaryUnits},
    {.data = 2, .caption = "按批号展开"},
    {.data = 3, .caption = "按辅助属性+批号展开", .mask = kWithAuxiliaryUnits},
};

std::string Indexed(std::string_view name, int index) {
  return std::string(name) + "(" + std::to_string(index) + ")";
}

}  // namespace

InstantStockDialog::InstantStockDialog(std::string name) : ReportFilterDialog(std::move(name), kFields) {
  BuildPanels();
  WatchFields();
}

CheckBox& InstantStockDialog::Check(int index) const { return Field<CheckBox>(Indexed("chkitem", index)); }
ComboBox& InstantStockDialog::Combo(int index) const { return Field<ComboBox>(Indexed("cmbitem", index)); }

void InstantStockDialog::BuildPanels() {
  for (const int contained : {8, 9}) Add<Label>("lblContained", contained).SetCaption(ResString("(包含)"));
  Field<CheckBox>("chkBill").SetVisible(false);

  auto& levelPanel = Add<Frame>("frmMultiLevel");
  for (const char* box : {"txtMultiLevelBegin", "txtMultiLevelEnd"}) {
    auto& text = Field<TextBox>(box);
    const std::string name = std::string("UpDown") + (box + 3);
    auto& spin = Add<platform::SpinButton>(name, text);
    spin.PlaceInside(&levelPanel);
  }
  levels_.Attach(*this, levelPanel);

  auto& quickPane = Add<Frame>(std::string(kQuickPane));
  for (const char* row : {"cmbDateType", "BEGDate", "ENDDate"}) {
    for (const std::string& id : {std::string(row), std::string("lbl_") + row}) {
      Find(id)->PlaceInside(&quickPane);
      Find(id)->SetVisible(false);
    }
  }
  for (int index = 10; index <= 13; ++index) {
    for (const char* part : {"txtItem", "lbl_txtItem", "cmdItem"}) {
      Find(Indexed(part, index))->PlaceInside(&quickPane);
    }
  }
  for (const auto& fields :
       {std::span<const QuickField>(kQuickDates), std::span<const QuickField>(kQuickTexts)}) {
    for (const QuickField& field : fields) Find(field.control)->SetTag(std::string(field.key));
  }
}

void InstantStockDialog::WatchFields() {
  for (int i = 0; i <= kShareAbnormalAmount; ++i) {
    Check(i).onClick = [this, i] { OnTimeRule(i); };
  }
  Combo(kShowType).onClick = [this] { ShowTypeRule(); };
  Field<CheckBox>("chkShowZero").onClick = [this] { touched_ = touched_ || !quiet_; };
}

void InstantStockDialog::AdjustSettings(Dictionary& settings) {
  settings.Set("query:control", true);
  settings.Set("query:controlname", kQuickPane);
}

void InstantStockDialog::SetUp() {
  const Quiet quiet(quiet_);
  if (GetAppType() == 1) HideBatchesAndProperties();
  FillCombo(Combo(0), kWarehouseTypes);
  FillComboByAppType(Combo(kShowType), kShowTypes);
  FillCombo(Combo(2), kSorts);
  levels_.Load(kItem);
  levels_.ShowPanel();
  ShowTypeRule();
  OnTimeRule(kOnTime);
}

// The smallest application type knows neither batches nor properties; the row below moves up.
void InstantStockDialog::HideBatchesAndProperties() const {
  HideCodes({2, 3, 4, 5});
  for (const int index : {4, 5}) Field<TextBox>(Indexed("txtItem", index)).SetText("");
  Find("txtItem(8)")->SetPlace(Find("txtItem(2)")->GetPlace());
  Combo(kShowType).SetVisible(false);
  Find(Indexed("lbl_cmbitem", kShowType))->SetVisible(false);
}

void InstantStockDialog::ShowTypeRule() {
  auto& showZero = Field<CheckBox>("chkShowZero");
  showZero.SetEnabled(Combo(kShowType).ListIndex() == 0);
  if (showZero.Enabled()) return;
  const Quiet quiet(quiet_);
  showZero.SetChecked(0);
}

void InstantStockDialog::OnTimeRule(int clicked) {
  const bool onTime = Check(kOnTime).Checked() != 0;
  auto& date = Field<DatePicker>("DtpDate(0)");
  date.SetEnabled(!onTime);
  Check(kCheckItem).SetEnabled(onTime);
  if (!onTime) Check(kCheckItem).SetChecked(0);
  const bool checksStock = Check(kCheckItem).Checked() == 1;
  Check(kShareAbnormalAmount).SetEnabled(checksStock);
  if (!checksStock) Check(kShareAbnormalAmount).SetChecked(0);
  if (clicked == kCheckItem && checksStock && !quiet_) {
    platform::Screen::Current().Ask(
        {.text = ResString("当经过长时间的收入发出，即时库存出现偏差时，才需要使用校对即时库存。"),
         .title = ResString("信息提示"),
         .icon = platform::MessageIcon::kInformation});
  }
  auto& bills = Field<CheckBox>("chkBill");
  bills.SetEnabled(onTime);
  if (!onTime) {
    bills.SetChecked(0);
  } else {
    date.SetDate(platform::Clock::Today());
  }
}

Variant InstantStockDialog::FieldValue(const DialogField& field) const {
  const auto& combo = Combo(kShowType);
  if (field.key == "ShowType") return combo.ListIndex() < 0 ? 0 : combo.ItemData(combo.ListIndex());
  return ReportFilterDialog::FieldValue(field);
}

void InstantStockDialog::SaveFields(Dictionary& filter) {
  const Quiet quiet(quiet_);
  ReportFilterDialog::SaveFields(filter);
}

void InstantStockDialog::AddKeys(Dictionary& filter) {
  ParsePropsString(GetPropsString());
  WriteUserID(filter);
  filter.Set("BItemClass", "");
  filter.Set("InvoiceStyle", 0);
  filter.Set("ShowTypeValue", "");
  filter.Set("OrderBy", "");  // the sort wish stands in Sort, ASC and DESC
  filter.Set("RptID", kReportNumber);
}

void InstantStockDialog::LoadFields(const Dictionary& filter) {
  const Quiet quiet(quiet_);
  // First of all: with "instant" off the stock check that a scheme holds would be cleared at once.
  platform::SkipErrors([&] { Check(kOnTime).SetValue(filter.Lookup("OnTime", Variant(0))); });
  LoadFieldValues([&](const DialogField& field) -> Variant {
    const bool isText = field.kind == kText || field.kind == kDate;
    const Variant stored = filter.Lookup(std::string(field.key), Variant(isText ? Variant("") : Variant(0)));
    if (field.key != "ShowType") return stored;
    return FindComboItemData(&Combo(kShowType), platform::ToInt32(stored));
  });
}

void InstantStockDialog::SaveQuery(Dictionary& filter) {
  for (const QuickField& field : kQuickDates) filter.Set(field.key, Find(field.control)->Value());
  for (const QuickField& field : kQuickTexts) {
    filter.Set(field.key, platform::TrimBlanks(Field<TextBox>(field.control).Text()));
  }
}

void InstantStockDialog::LoadQuery(const Dictionary& filter) {
  auto& dateType = Field<ComboBox>("cmbDateType");
  if (dateType.EntryCount() > 0) dateType.SetListIndex(0);
  for (const QuickField& field : kQuickDates) {
    const Variant& stored = filter.Value(field.key);
    if (platform::IsDate(stored)) Find(field.control)->SetValue(platform::ToDate(stored));
  }
  for (const QuickField& field : kQuickTexts) {
    Field<TextBox>(field.control)
        .SetText(platform::ToText(filter.Lookup(std::string(field.key), Variant(""))));
  }
}

void InstantStockDialog::ResetFields() {
  const Quiet quiet(quiet_);
  ResetFieldValues();
  OnTimeRule(kOnTime);
  levels_.ShowPanel();
  ShowTypeRule();
}

void InstantStockDialog::OnDone() { Result()->Set("OK", false); }

void InstantStockDialog::OnConfirmed() {
  const bool showsZero = Field<CheckBox>("chkShowZero").Checked() == 1;
  if (showsZero || touched_) WriteUsageLog("C001C032", showsZero ? "RPT1042201" : "RPT1042202");
}

}  // namespace component
