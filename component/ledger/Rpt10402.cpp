// The item list and what moves on it. Every move ends in ShowItem, which shows the progress box; the page is
// built inside the box's event.
#include "component/ledger/Rpt10402.h"

#include "component/frame/MMTS.h"
#include "component/frame/ProcessState.h"
#include "component/frame/SysObjects.h"
#include "component/frame/VEZPublic.h"
#include "platform/form/Screen.h"
#include "platform/object/ClassRegistry.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::MakeRef;
using platform::Object;
using platform::Recordset;
using platform::Ref;
using platform::Variant;

constexpr ReportFacts kFacts = {
    .number = "10402",
    .name = "库存商品明细账",
    .property = 5,
    .rows = RowsKind::kObject,
    .hasTitleObject = false,
    .dataComponent = "TOVMStockRpt.Data10402",
    .dataMethod = "GetPerioddata",
};

const char* NumberField() { return ProcessState::Get().isLongNumber ? "FNumber" : "FShortNumber"; }

}  // namespace

Rpt10402::Rpt10402() : Exposed(kFacts) {}

Rpt10402::~Rpt10402() { DropDialog(); }

// Full numbers, without a look at the profile: a ledger is sorted and searched by them.
void Rpt10402::RefreshNumberFlag() { ProcessState::Get().isLongNumber = true; }

void Rpt10402::SetUpProperty(Dictionary& property) {
  property.Set("bLongNumber", ProcessState::Get().isLongNumber);
  property.Set("ShowTitleDetail", 1);
  property.Set("RsType", 0);
  property.Set("FrozenColumn", 6);
  property.Set("EnableMutilPageData", true);
  property.Set("HasDefaultFilterOption", true);
  captionWord_ = ResString("存货");
}

LedgerRange Rpt10402::FilterRange() const {
  const Dictionary& filter = RequireFilter();
  return {.beginYear = platform::ToInt16(filter.Value("BYear")),
          .beginPeriod = platform::ToInt16(filter.Value("BPeriod")),
          .endYear = platform::ToInt16(filter.Value("EYear")),
          .endPeriod = platform::ToInt16(filter.Value("EPeriod"))};
}

// The check box tells what to leave out, the argument what to keep.
bool Rpt10402::ShowsNoHappen() const {
  return platform::ToDouble(RequireFilter().Value("ShowNoHappen")) == 0;
}

void Rpt10402::DropDialog() {
  platform::SkipErrors([&] {
    if (dialog_) dialog_->Unload();
  });
  dialog_ = nullptr;
}

Variant Rpt10402::ShowFilter(std::optional<bool>& /*bShowFilter*/) {
  const Ref<Rpt10402> kept(this);  // the browser may let go of the report while the dialog is up
  try {
    DropDialog();
    dialog_ = MakeRef<frmFirter10402>();
    const Ref<frmFirter10402> shown = dialog_;
    shown->SetRptID(DialogNumber());
    shown->SetAutoFilter(platform::ToInt32(Property()->Lookup("ShowFilter", Variant(-1))));
    shown->Show();
    const Ref<Dictionary> outcome = shown->Result();
    if (!outcome || !platform::ToBoolean(outcome->Value("OK"))) {
      SetOk(false);
    } else {
      SetOutcome(true, "");
      AcceptFilter(outcome);
      TakeFilter();
    }
  } catch (const std::exception&) {
    DropDialog();
  }
  return {};
}

// A date anywhere in a month selects the whole period of that number.
void Rpt10402::TakeFilter() {
  Dictionary& filter = RequireFilter();
  filter.Set("Mode", 0);
  for (const char* side : {"B", "E"}) {
    const std::string key(side);
    const platform::CalendarDay day = platform::ToDate(filter.Value(key + "Date")).Calendar();
    filter.Set(key + "Year", static_cast<std::int16_t>(day.year));
    filter.Set(key + "Period", static_cast<std::int16_t>(day.month));
  }
  std::int32_t year = 0;
  std::int32_t period = 0;
  GetStartYearPeriod(year, period);
  filter.Set("StartPeriod", period);
  filter.Set("StartYear", year);
  year = period = 0;
  GetCurrentYearPeriod(year, period);
  filter.Set("CurPeriod", period);
  filter.Set("CurYear", year);
}

Variant Rpt10402::GetReportData() {
  const Ref<Rpt10402> kept(this);  // the browser may let go of the report while events run
  platform::Screen::Current().RunPendingEvents();
  try {
    if (!IsOk()) return {};
    FetchItems();
    Refresh();
    if (IsOk()) SetOutcome(true, "");
  } catch (const std::exception& error) {
    SetOutcome(false, error.what());
  }
  return {};
}

void Rpt10402::FetchItems() {
  const std::string field = NumberField();
  const Dictionary& asked = RequireFilter();
  std::string text;
  for (const auto& [key, comparison] : {std::pair("BItemNumber", ">='"), std::pair("EItemNumber", "<='")}) {
    const std::string number = platform::ToText(asked.Value(key));
    if (!number.empty()) text += " AND t0." + field + comparison + number + "'";
  }
  const Ref<Object> data = platform::CreateObject(Facts().dataComponent);
  text += " ORDER BY  t0." + field;
  const std::string props = GetPropsString();
  Variant condition(text);
  Variant filter(Filter());
  const Variant items = data->Call("GetItems", props, condition, filter);
  AcceptFilter(platform::detail::FromVariant<Ref<Dictionary>>(filter));
  items_ = platform::detail::FromVariant<Ref<Recordset>>(items);
}

Variant Rpt10402::Refresh() {
  const Ref<Rpt10402> kept(this);  // the browser may let go of the report while the box is up
  ShowItem(HasItems() ? items_->Value("FItemID") : Variant(0));
  BuildItemTitle();
  mutilPageRs_ = nullptr;
  rowBreakRs_ = nullptr;
  return {};
}

void Rpt10402::ShowItem(const Variant& itemId) {
  multiPage_ = false;
  currentItem_ = platform::ToInt32(itemId);
  ProgBar().Show();
}

void Rpt10402::ShowCurrentItem() {
  ShowItem(items_->Value("FItemID"));
  BuildItemTitle();
}

void Rpt10402::OnBarActive() {
  ProgBar().SetMsg(ResString("正在连接服务器"));
  if (multiPage_) return GetMutilList();
  const LedgerRange range = FilterRange();
  SetRows(GetRptList(range.beginYear, range.beginPeriod, range.endYear, range.endPeriod, currentItem_,
                     ShowsNoHappen()));
}

Variant Rpt10402::GetMutilPageData() {
  const Ref<Rpt10402> kept(this);  // as above
  multiPage_ = true;
  ProgBar().Show();
  return {};
}

std::int32_t Rpt10402::NextItem() {
  const Ref<Rpt10402> kept(this);
  try {
    if (!items_) return 0;
    items_->MoveNext();
    ShowCurrentItem();
    return items_->AtEnd() ? 0 : 1;
  } catch (const std::exception&) {
    if (HasItems()) items_->MoveLast();
    return 0;
  }
}

std::int32_t Rpt10402::PreviousItem() {
  const Ref<Rpt10402> kept(this);
  try {
    if (!items_) return 0;
    items_->MovePrevious();
    ShowCurrentItem();
    return items_->AtBeginning() ? 0 : 1;
  } catch (const std::exception&) {
    if (HasItems()) items_->MoveFirst();
    return 0;
  }
}

std::int32_t Rpt10402::FirstItem() {
  const Ref<Rpt10402> kept(this);
  if (!HasItems()) return 0;
  items_->MoveFirst();
  ShowCurrentItem();
  return 0;
}

std::int32_t Rpt10402::LastItem() {
  const Ref<Rpt10402> kept(this);
  if (!HasItems()) return 0;
  items_->MoveLast();
  ShowCurrentItem();
  return 0;
}

// The number goes into the condition as it is; no item has one that breaks it.
Variant Rpt10402::FindItem(const std::string& sNumber) {
  const Ref<Rpt10402> kept(this);
  Variant here;
  try {
    bool found = false;
    if (HasItems()) {
      here = items_->Bookmark();
      items_->MoveFirst();
      platform::SkipErrors([&] {
        items_->Find(std::string(NumberField()) + "='" + sNumber + "'");
        found = !items_->AtEnd();
      });
    }
    if (found) {
      ShowCurrentItem();
      return {};
    }
    SetOutcome(false, ResString("在当前物料范围内未找到代码为 [") + sNumber + ResString("]的物料!"));
  } catch (const std::exception& error) {
    SetOutcome(false, error.what());
  }
  if (!here.IsEmpty()) items_->SetBookmark(here);
  return {};
}

}  // namespace component
