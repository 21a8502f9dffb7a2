// The warehouses are kept as a set of numbers beside the box that shows their names; a scheme keeps both, and
// recalling it leaves out what the user may no longer see.
#include "component/stock/frmFirter10424.h"

#include <vector>

#include "component/filter/ClsDtpickerRange.h"
#include "component/frame/MRpt.h"
#include "component/frame/SysObjects.h"
#include "component/frame/VEZPublic.h"
#include "component/stock/Quiet.h"
#include "component/stock/StockRight.h"
#include "platform/form/Screen.h"

namespace component {
namespace {

using enum FieldKind;
using platform::Button;
using platform::CheckBox;
using platform::ComboBox;
using platform::DatePicker;
using platform::Dictionary;
using platform::Frame;
using platform::Label;
using platform::Ref;
using platform::TextBox;
using platform::Variant;

constexpr std::string_view kReportTitle = "可用库存查询表";
constexpr std::int16_t kReportNumber = 10424;
constexpr int kOnTime = 0;
constexpr int kCheckItem = 3;
constexpr int kCheckCount = 8;
constexpr std::string_view kStockKey = "txtStock";
constexpr std::string_view kStockBox = "txtItem(4)";

constexpr DialogField kFields[] = {
    {.control = "DtpDate", .index = 0, .kind = kDate, .label = "库存截至日期:", .key = "EDate"},
    {.control = "txtItem", .index = 0, .label = "商品代码:", .key = "BItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 1, .label = "至:", .key = "EItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 2, .label = "商品名称:", .key = "ItemName"},
    {.control = "txtItem", .index = 3, .label = "规格型号:", .key = "Model"},
    {.control = "txtItem", .index = 4, .label = "库存仓库:", .key = kStockKey},
    {.control = "chkitem", .index = 0, .kind = kCheck, .label = "即时库存", .key = "OnTime", .standard = 1},
    {.control = "chkitem", .index = 1, .kind = kCheck, .label = "显示禁用商品", .key = "ShowDeletedItem"},
    {.control = "chkitem",
     .index = 2,
     .kind = kCheck,
     .label = "包含过期商品库存量",
     .key = "IncludeExpireGoodQty"},
    {.control = "chkitem", .index = 3, .kind = kCheck, .label = "校对即时库存", .key = "CheckItem"},
    {.control = "chkitem", .index = 4, .kind = kCheck, .label = "仓库即时库存数量", .key = "chkInv"},
    {.control = "chkitem", .index = 5, .kind = kCheck, .label = "采购在订量", .key = "chkCGBook"},
    {.control = "chkitem", .index = 6, .kind = kCheck, .label = "销售在订量", .key = "chkXSBook"},
    {.control = "chkitem", .index = 7, .kind = kCheck, .label = "最低库存量", .key = "chkLmtQ"},
    {.control = "optItem", .index = 0, .kind = kOption, .label = "升序", .key = "ASC", .standard = 1},
    {.control = "optItem", .index = 1, .kind = kOption, .label = "降序", .key = "DESC"},
    {.control = "cmbitem", .index = 0, .kind = kCombo, .label = "排序:", .key = "Sort"},
    {.control = "chkBill", .kind = kCheck, .label = "包含未审核单据", .key = "ContainBills"},
    {.control = "chkMultiLevel", .kind = kCheck, .label = "商品分级汇总", .key = "MultiLevel"},
    {.control = "txtMultiLevelBegin", .label = "类别级别:", .key = "MultiLevelBegin", .keptOnReset = true},
    {.control = "txtMultiLevelEnd", .label = "至:", .key = "MultiLevelEnd", .keptOnReset = true},
};

constexpr std::string_view kSorts[] = {"商品代码", "规格型号", "商品名称"};

// The sum as a picture, one term a line: what stands to the left of each term's check box.
struct FormulaLine {
  std::string_view sign;
  int term = 0;
};
constexpr FormulaLine kFormula[] = {{"=", 4}, {"+", 5}, {"-", 6}, {"-", 7}};

std::string Indexed(std::string_view name, int index) {
  return std::string(name) + "(" + std::to_string(index) + ")";
}

bool StockIsRestricted() {
  return GetNeedAuthrize() && GetAuthrizeItemClassList().find('5') != std::string::npos;
}

}  // namespace

frmFirter10424::frmFirter10424()
    : TOVRptFilterDialog(
          {.name = "frmFirter10424", .filterControl = "TOVRptFilter1", .reportTitle = kReportTitle},
          kFields) {
  for (const int contained : {2, 3}) Add<Label>("lblContained", contained).SetCaption(ResString("(包含)"));
  Field<TextBox>(kStockBox).SetReadOnly(true);
  auto& stocks = Add<Button>("cmdItem", 2);
  stocks.SetCaption("…");
  stocks.SetPlace(Find(kStockBox)->GetPlace());  // the button's number is not that of its box
  stocks.onClick = [this] { ChooseStocks(); };
  for (int i = 0; i < kCheckCount; ++i) {
    Check(i).onClick = [this, i] { OnTimeRule(i); };
  }
  BuildFormulaPanel();

  levels_.Attach(*this, Add<Frame>("frmMultiLevel"));
  Field<CheckBox>("chkMultiLevel").SetVisible(false);
}

CheckBox& frmFirter10424::Check(int index) const { return Field<CheckBox>(Indexed("chkitem", index)); }

void frmFirter10424::BuildFormulaPanel() {
  auto& panel = Add<Frame>("fraFormula");
  auto& sum = Add<Label>("lblFormula");
  sum.SetCaption(ResString("可用库存"));
  sum.PlaceInside(&panel);
  for (const FormulaLine& line : kFormula) {
    auto& sign = Add<Label>("lblSign", line.term);
    sign.SetCaption(ResString(line.sign));
    sign.PlaceInside(&panel);
    Check(line.term).PlaceInside(&panel);
  }
}

void frmFirter10424::OnLoad() {
  TOVRptFilterDialog::OnLoad();
  SetCaption(ResString("过滤"));
  Field<Button>("cmdOK").SetCaption(ResString("确定(&O)"));
  Field<Button>("cmdCacel").SetCaption(ResString("取消(&E)"));
  quiet_ = true;
  FillCombo(Field<ComboBox>("cmbitem(0)"), kSorts);
  FilterControl().Put("PageVisible", std::int16_t{1}, false);
  FilterControl().Put("PageVisible", std::int16_t{2}, false);
  levels_.Load(kItem);
  OnTimeRule(kOnTime);
  auto& date = Field<DatePicker>("DtpDate(0)");
  AttachDateRange(date, date, std::to_string(RptID()));
  shown_ = false;
}

void frmFirter10424::OnActivate() {
  if (shown_) return;
  shown_ = true;
  Variant number(RptID());
  FilterControl().Call("InitFilter", ResString(kReportTitle), number);
  levels_.ShowPanel();
  quiet_ = false;
}

// Schemes and resets change fields without a word.
void frmFirter10424::OnFilterEvent(std::string_view event, std::span<Variant> arguments) {
  const Quiet quiet(quiet_);
  TOVRptFilterDialog::OnFilterEvent(event, arguments);
}

void frmFirter10424::OnTimeRule(int clicked) {
  const bool onTime = Check(kOnTime).Checked() != 0;
  auto& date = Field<DatePicker>("DtpDate(0)");
  date.SetEnabled(!onTime);
  Check(kCheckItem).SetEnabled(onTime);
  if (!onTime) Check(kCheckItem).SetChecked(0);
  if (clicked == kCheckItem && Check(kCheckItem).Checked() == 1 && !quiet_) {
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

void frmFirter10424::ResetFields() {
  ResetFieldValues();
  Check(4).SetChecked(1);  // the stock itself counts
  OnTimeRule(kOnTime);
}

// The scheme chosen is asked for, and the answer has no use.
void frmFirter10424::OnSchemeActivated() {
  FilterControl().Get("CurrentScheme");
  TOVRptFilterDialog::OnSchemeActivated();
}

std::string frmFirter10424::SchemeText(const DialogField& field) const {
  const std::string text = TOVRptFilterDialog::SchemeText(field);
  if (field.key != kStockKey) return text;
  return stockNumbers_.empty() || text.empty() ? std::string() : stockNumbers_ + "|" + text;
}

Variant frmFirter10424::FromScheme(const DialogField& field, const Variant& stored) {
  if (field.key != kStockKey) return stored;
  const std::string text = platform::ToText(stored);
  if (text.empty()) return platform::Missing();
  const std::size_t bar = text.find('|');
  if (StockIsRestricted()) {
    const Ref<Dictionary> scope = platform::MakeRef<Dictionary>();
    scope->Set("FStockID", text.substr(0, bar));
    GetItemRight(scope);
    stockNumbers_ = platform::ToText(scope->Value("strStock"));
    return scope->Value("sShowList");
  }
  stockNumbers_ = text.substr(0, bar);
  if (bar == std::string::npos) {
    throw platform::Error(platform::ErrorNumber::kSubscriptOutOfRange, Name(), "the set has no names");
  }
  return text.substr(bar + 1, text.find('|', bar + 1) - bar - 1);
}

void frmFirter10424::ChooseStocks() {
  const Ref<frmSelStock> dialog = platform::MakeRef<frmSelStock>(
      ReadStockList(), StockScope{.numbers = stockNumbers_, .names = stockNames_});
  dialog->Show();
  stockNumbers_ = dialog->Chosen().numbers;
  stockNames_ = dialog->Chosen().names;
  if (dialog->IsOk()) Field<TextBox>(kStockBox).SetText(stockNames_);
}

Variant frmFirter10424::GetItemRight(const Ref<Dictionary>& scope) {
  platform::SkipErrors([&] {
    if (scope) WritePermittedScope(*scope);
  });
  return {};
}

Variant frmFirter10424::Invoke(std::string_view member, platform::CallKind kind,
                               std::span<Variant> arguments) {
  const bool isCall = kind != platform::CallKind::kPut && arguments.size() == 1;
  if (isCall && platform::EqualsIgnoreCase(member, "GetItemRight")) {
    return GetItemRight(arguments[0].AsRef<Dictionary>());
  }
  return TOVRptFilterDialog::Invoke(member, kind, arguments);
}

bool frmFirter10424::AcceptCollected(Dictionary& filter) {
  const Variant year = platform::ToInt32(GetSystemProfile("IC", "StartYear", 0));
  const Variant period = platform::ToInt32(GetSystemProfile("IC", "StartPeriod", 0));
  const Variant start = GetGLData().Call("GLGetPeriodDate", year, period);
  if (Field<DatePicker>("DtpDate(0)").GetDate() < platform::ToDate(start)) {
    platform::Screen::Current().Ask({.text = ResString("截止日期不能小于账套启用日期"), .title = {}});
    return false;
  }
  filter.Set("StartDate", start);
  return true;
}

void frmFirter10424::AddKeys(Dictionary& filter) {
  WriteUserID(filter);
  filter.Set("OK", true);
  filter.Set("BItemClass", "");
  filter.Set("InvoiceStyle", 0);
  filter.Set("ShowTypeValue", "");
  filter.Set("OrderBy", "");
  filter.Set("RptID", kReportNumber);
  levels_.WriteTo(filter);
}

}  // namespace component
