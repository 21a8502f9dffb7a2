// One ladder of sections serves all reports: each section looks for its own pair of keys in the filter and
// adds a line when the dialog wrote them, so a title follows from the keys present. A few report numbers
// change keys or labels, those of sibling reports outside this component included, since their filters reach
// this routine too.
#include <algorithm>
#include <array>
#include <cmath>

#include "component/frame/MMTS.h"
#include "component/frame/MRpt.h"
#include "component/frame/VEZPublic.h"
#include "platform/value/Clock.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::MakeRef;
using platform::Ref;
using platform::SkipErrors;
using platform::TrimBlanks;
using platform::Variant;
using platform::Vector;

constexpr std::int32_t kInstantStock = 10422;

struct KeyPair {
  std::string_view begin;
  std::string_view end;
};

class TitleBuilder {
 public:
  TitleBuilder(const Dictionary& filter, Vector& lines) : filter_(filter), lines_(lines) {
    SkipErrors([&] { report_ = platform::ToInt32(filter_.Lookup("RptID", Variant(0))); });
    SkipErrors([&] { appType_ = GetAppType(); });
  }

  void Build() {
    TypeRange();
    DateLine();
    ItemRange();
    PrintDateLine();
    if (!ReportIs({10219, 10220})) Range("客户代码", {"BCustNumber", "ECustNumber"});
    Range("部门代码", {"BDeptNumber", "EDeptNumber"});
    EmployeeRange();
    Range("仓库代码",
          ReportIs({10354}) ? KeyPair{"BStockNo", "EStockNo"} : KeyPair{"BStockNumber", "EStockNumber"});
    SupplierRange();
    if (appType_ != 1) AuxiliaryPropertyRange();
    Range("批号", {"BBatchNo", "EBatchNo"});
    BillRange();
    if (filter_.Exists("SumBy")) SummaryLine();
    if (report_ == kInstantStock) AddSummary("商品");
  }

 private:
  bool ReportIs(std::initializer_list<std::int32_t> reports) const {
    return std::ranges::find(reports, report_) != reports.end();
  }

  std::string Trimmed(std::string_view key) const {
    const std::string value = platform::ToText(filter_.Value(key));
    return std::string(TrimBlanks(value));
  }

  // A value that cannot be read leaves the text as it was.
  void Read(std::string_view key, std::string& text) const {
    SkipErrors([&] { text = Trimmed(key); });
  }

  void AddLine(const std::string& caption) {
    AddLineWith([&](Dictionary& line) { line.Set("FCaption", caption); });
  }

  template <class WriteCaption>
  void AddLineWith(WriteCaption writeCaption) {
    const Ref<Dictionary> line = MakeRef<Dictionary>();
    writeCaption(*line);
    line->Set("FIndex", static_cast<std::int16_t>(lines_.Count()));
    lines_.Add(line);
  }

  void Range(std::string_view label, KeyPair keys) {
    if (!filter_.Exists(std::string(keys.begin)) || !filter_.Exists(std::string(keys.end))) return;
    Read(keys.begin, begin_);
    Read(keys.end, end_);
    const bool all = begin_.empty() && end_.empty();
    AddLine(all ? ResString(std::string(label) + "[全部]")
                : ResString(std::string(label) + "从[") + begin_ + ResString("]到[") + end_ + "]");
  }

  void TypeRange() { Range(ReportIs({10524}) ? "支出类别" : "收入类别", {"BTypeIn", "ETypeIn"}); }

  void ItemRange() {
    Range(ReportIs({10506}) ? "往来单位" : "商品代码",
          ReportIs({12015, 12016}) ? KeyPair{"BItemNo", "EItemNo"} : KeyPair{"BItemNumber", "EItemNumber"});
  }

  void EmployeeRange() {
    if (ReportIs({10413})) return;
    Range(ReportIs({10506, 10522, 10524, 10501}) ? "经手人代码" : "业务员代码", {"BEmpNumber", "EEmpNumber"});
  }

  void SupplierRange() {
    Range("供应商代码", ReportIs({10219, 10220}) ? KeyPair{"BCustNumber", "ECustNumber"}
                        : ReportIs({10229})      ? KeyPair{"BSupply", "ESupply"}
                                                 : KeyPair{"BSupplyNumber", "ESupplyNumber"});
  }

  void AuxiliaryPropertyRange() {
    Range("辅助属性", report_ == kInstantStock ? KeyPair{"BAuxNumber", "EAuxNumber"}
                                               : KeyPair{"BAuxPropNumber", "EAuxPropNumber"});
  }

  void BillRange() {
    const bool isBill = ReportIs({10354});
    if (!isBill && appType_ == 1) return;
    Range(isBill ? "单据编号" : "订单编号", ReportIs({10351, 10352, 10357, 10325, 10354, 10227})
                                                ? KeyPair{"BBillNo", "EBillNo"}
                                                : KeyPair{"BBillNumber", "EBillNumber"});
  }

  // Only the instant stock reports show their date here.
  void DateLine() {
    if (report_ != kInstantStock) return;
    if (filter_.Exists("OnTime")) {
      Read("OnTime", begin_);
      if (IsOn(begin_)) {
        AddLine(ResString("日期[即时库存]"));
        hasDate_ = true;
        return;
      }
    }
    if (!filter_.Exists("EDate")) return;
    Read("EDate", end_);
    AddLineWith([&](Dictionary& line) {
      // A blank date leaves a line without a caption.
      if (!end_.empty()) line.Set("FCaption", ResString("截止日期[") + end_ + "]");
    });
    hasDate_ = true;
  }

  void PrintDateLine() {
    if (report_ == kInstantStock && hasDate_) {
      AddLine(ResString("打印日期[") + platform::Clock::Today().ToText() + "]");
    }
    hasDate_ = false;
  }

  static bool IsOn(const std::string& text) {
    if (text.empty()) return false;
    bool isOn = true;
    SkipErrors([&] { isOn = platform::ToBoolean(text); });
    return isOn;
  }

  void SummaryLine() {
    Read("SumBy", begin_);
    if (begin_.empty()) return;
    const std::string_view name =
        std::string_view(begin_).substr(0, begin_.find(ReportIs({10901, 10903}) ? '_' : '|'));
    AddSummary(std::string(TrimBlanks(name)));
  }

  void AddSummary(const std::string& name) {
    bool multiLevel = false;
    SkipErrors([&] { multiLevel = platform::ToBoolean(filter_.Value("MultiLevel")); });
    std::string caption = ResString("汇总依据[") + name + "]";
    if (multiLevel) {
      SkipErrors([&] {
        caption = ResString("汇总依据[") + name + "(" + Trimmed("MultiLevelBegin") + "-" +
                  Trimmed("MultiLevelEnd") + ResString("级)]");
      });
    }
    AddLine(caption);
  }

  const Dictionary& filter_;
  Vector& lines_;
  std::int32_t report_ = 0;
  std::int32_t appType_ = 0;
  bool hasDate_ = false;
  // The texts read last; a value that cannot be read shows the one before it.
  std::string begin_;
  std::string end_;
};

Ref<Dictionary> FilterForAll() {
  const Ref<Dictionary> filter = MakeRef<Dictionary>();
  for (const std::string_view key : {"BItemNumber", "EItemNumber", "BStockNumber", "EStockNumber"}) {
    filter->Set(key, "");
  }
  return filter;
}

}  // namespace

Ref<Vector> BuildTitle(const Ref<Dictionary>& filter, Ref<Dictionary>& property) {
  const Ref<Vector> lines = MakeRef<Vector>();
  if (!property) property = MakeRef<Dictionary>();
  property->Set("ShowInPreview", 1);
  const Ref<Dictionary> read = filter ? filter : FilterForAll();
  TitleBuilder(*read, *lines).Build();
  return lines;
}

}  // namespace component
