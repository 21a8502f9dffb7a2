// The pages of all items in one recordset, and where each of them ends.
#include "component/frame/SysObjects.h"
#include "component/frame/VEZPublic.h"
#include "component/ledger/Rpt10402.h"
#include "platform/form/Screen.h"

namespace component {
namespace {

using platform::Error;
using platform::MakeRef;
using platform::Recordset;

// A larger run asks before it starts.
constexpr std::int32_t kManyItems = 50;
constexpr std::int32_t kManyPeriods = 2;

constexpr auto kObjectError = static_cast<platform::ErrorNumber>(static_cast<std::int32_t>(0x80040001U));

[[noreturn]] void Raise(const std::string& description) {
  throw Error(kObjectError, "TOVStockRpt.Rpt10402.GetMutilRptList", description);
}

std::string Notice(std::string_view text, std::int32_t limit) {
  return "," + ResString(text) + std::to_string(limit) + " ";
}

}  // namespace

// A refusal reaches the browser as the text "2", its code for it.
void Rpt10402::ConfirmLongRun(std::int32_t itemCount) const {
  const LedgerRange range = FilterRange();
  std::string notice;
  if (itemCount > kManyItems) notice += Notice("所选物料数超过 ", kManyItems);
  if (PeriodSpan(range.beginYear, range.beginPeriod, range.endYear, range.endPeriod) > kManyPeriods) {
    notice += Notice("所选期间数超过 ", kManyPeriods);
  }
  if (notice.empty()) return;
  const platform::MessageBox question = {
      .text = notice.substr(notice.find(',') + 1) + ResString(",取数时间较长,确认继续操作吗?"),
      .title = "",
      .buttons = platform::MessageButtons::kOkCancel,
      .icon = platform::MessageIcon::kInformation,
      .standard = platform::Answer::kOk};
  if (platform::Screen::Current().Ask(question) == platform::Answer::kCancel) Raise("2");
}

void Rpt10402::GetMutilRptList() {
  std::int32_t position = 0;
  try {
    if (!items_ || items_->AtBeginning() || items_->AtEnd()) Raise(ResString("没有符合条件的物料。"));
    const std::int32_t itemCount = items_->RecordCount();
    position = items_->AbsolutePosition();
    ConfirmLongRun(itemCount);
    rowBreakRs_ = MakeRef<Recordset>();
    rowBreakRs_->AppendField("FBreakRow", platform::FieldType::kInt32);
    rowBreakRs_->Open();
    mutilPageRs_ = NewLedgerRs(true);
    BuildLedgerHeader();
    items_->MoveFirst();
    AddPages(itemCount);
    items_->SetAbsolutePosition(position);
    ProgBar().Unload();
    SetOutcome(true, "");
  } catch (const std::exception& error) {
    SetOutcome(false, error.what());
    if (position > 0 && items_->AbsolutePosition() != position) items_->SetAbsolutePosition(position);
    ProgBar().Unload();
  }
}

void Rpt10402::AddPages(std::int32_t itemCount) {
  auto text = [this](std::string_view field) {
    const platform::Variant value = items_->Value(field);
    return value.IsNull() ? std::string() : platform::ToText(value);
  };
  const std::string count = std::to_string(itemCount);
  for (std::int32_t i = 1; i <= itemCount; ++i) {
    items_->SetAbsolutePosition(i);
    ProgBar().SetMsgHead(std::to_string(i) + "/" + count + ":" + text("FName") + "(" + text("FNumber") +
                         ") ");
    BuildItemTitle();
    AddPage(FilterRange(), ShowsNoHappen());
  }
}

// A page that fails is taken back: the output keeps whole items only.
void Rpt10402::AddPage(const LedgerRange& range, bool showNoHappen) {
  const std::int32_t rowsDone = mutilPageRs_->RecordCount();
  GetRptList(range.beginYear, range.beginPeriod, range.endYear, range.endPeriod,
             platform::ToInt32(items_->Value("FItemID")), showNoHappen);
  if (!IsOk()) {
    mutilPageRs_->TruncateTo(static_cast<std::size_t>(rowsDone));
    if (rowsDone > 0) mutilPageRs_->MoveLast();
    Raise(platform::ToText(Result()->Value("Error")));
  }
  const std::int32_t rows = mutilPageRs_->RecordCount();
  if (rows <= rowsDone) return;
  rowBreakRs_->AddNew();
  rowBreakRs_->SetInteger(0, rows);
  rowBreakRs_->Update();
}

}  // namespace component
