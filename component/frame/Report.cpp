// A fetch runs from GetReportData through Refresh into the progress box: Bar.Show raises Active, the work is
// done inside that event, and Bar.Unload lets Show return. So every way out of the fetch must reach Unload.
#include "component/frame/Report.h"

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
using platform::Vector;

std::int32_t& Alive() {
  static std::int32_t alive = 0;
  return alive;
}

}  // namespace

Report::Report(const ReportFacts& facts) : facts_(facts), result_(MakeRef<Dictionary>()) { ++Alive(); }

Report::~Report() {
  if (bar_) bar_->onActive = {};
  --Alive();
}

std::int32_t Report::LiveCount() { return Alive(); }

void Report::RefreshNumberFlag() { ProcessState::Get().isLongNumber = ReadIsLongNumber(); }

void Report::Initialize() {
  RefreshNumberFlag();
  SetExtFirter(std::string(facts_.number));
  SetOutcome(false, "");
}

void Report::SetExtFirter(const std::string& number) {
  extFirter_ = number;
  property_ = MakeRef<Dictionary>();
  property_->Set("Name", ResString(facts_.name));
  property_->Set("RptProperty", facts_.property);
  if (facts_.frozenColumn) property_->Set("FrozenColumn", *facts_.frozenColumn);
  SetUpProperty(*property_);
}

std::int32_t Report::DialogNumber() const { return platform::ToInt32(platform::LeadingNumber(extFirter_)); }

void Report::SetOutcome(bool ok, const std::string& error) {
  result_->Set("OK", ok);
  result_->Set("Error", error);
}

void Report::SetOk(bool ok) { result_->Set("OK", ok); }

bool Report::IsOk() const { return platform::ToBoolean(result_->Value("OK")); }

void Report::SetFilter(const Ref<Dictionary>& filter) {
  filter_ = filter;
  if (filter) {
    SetOutcome(true, "");
  } else {
    SetOutcome(false, ResString("请选择过滤条件！"));
  }
}

Variant Report::GetReportData() {
  const Ref<Report> kept(this);  // the browser may let go of the report while events run
  try {
    if (!IsOk()) return {};
    if (!facts_.titleInsideBox) {
      BuildTitleLines();
      platform::Screen::Current().RunPendingEvents();
    }
    Refresh();
  } catch (const std::exception&) {
    SetOutcome(false, "");  // a text comes only from the fetch's own trap
  }
  return {};
}

Bar& Report::ProgBar() {
  if (!bar_) {
    bar_ = MakeRef<Bar>();
    bar_->onActive = [this] { OnBarActive(); };
  }
  return *bar_;
}

Variant Report::Refresh() {
  const Ref<Report> kept(this);  // the browser may let go of the report while the box is up
  ProgBar().Show();
  return {};
}

void Report::OnBarActive() {
  ProgBar().SetMsg(ResString("正在连接服务器"));
  if (facts_.titleInsideBox) BuildTitleLines();
  Fetch();
}

Dictionary& Report::RequireFilter() const {
  if (!filter_) {
    throw platform::Error(platform::ErrorNumber::kObjectNotSet, ClassName(), "the report has no filter");
  }
  return *filter_;
}

void Report::BuildTitleLines() {
  if (facts_.hasTitleObject) {
    const Ref<Dictionary> titleObject = MakeRef<Dictionary>();
    if (facts_.hasDateRange) {
      titleObject->Set("ShowDateDiff", "BDate," + platform::ToText(RequireFilter().Value("BDate")) +
                                           "|EDate," + platform::ToText(RequireFilter().Value("EDate")));
    }
    result_->Set("RptTitleObject", titleObject);
  }
  title_ = BuildTitle(filter_, property_);
}

// The answer is dropped: a refusal is the service's own business, and it stands outside the fetch's trap.
void Report::AccessCheck() { platform::ToBoolean(GetGLData().Call("AccessCheck", 1006, 2, 4)); }

void Report::StartHeading() {
  header_ = MakeRef<Vector>();
  SetHeadVector(header_);
}

void Report::BuildHeading() {
  StartHeading();
  if (facts_.rows == RowsKind::kVector) property_->Set("RsType", 1);
  AddReportColumns();
  SetHeadVector({});
}

void Report::WriteDataRight() { WriteRightClause("DataRightWhere", facts_.dataRights); }

void Report::WriteRightClause(std::string_view key, std::span<const DataRight> rights) {
  std::string clause;
  MakeDataRightWhere(DataRightEntries(rights), clause);
  if (filter_) filter_->Set(key, clause);
}

Variant Report::CallData(Object& data) {
  const std::string props = GetPropsString();
  Variant filter(filter_);
  Variant rows = data.Call(facts_.dataMethod, props, filter);
  filter_ =
      platform::detail::FromVariant<Ref<Dictionary>>(filter);  // the component may hand back another one
  return rows;
}

void Report::KeepRows(const Variant& rows) {
  if (!rows.IsObject()) rows.AsObject();  // raises: rows are an object or nothing
  if (!rows.IsNothing()) {
    const bool fits = facts_.rows == RowsKind::kObject ||
                      (facts_.rows == RowsKind::kVector && rows.AsRef<Vector>()) ||
                      (facts_.rows == RowsKind::kRecordset && rows.AsRef<Recordset>());
    if (!fits) {
      throw platform::Error(
          platform::ErrorNumber::kTypeMismatch, std::string(facts_.dataComponent),
          "type mismatch: the data component answers an object of class " + rows.AsObject().ClassName());
    }
  }
  rows_ = rows;
}

void Report::Fetch() {
  AccessCheck();
  Ref<Object> data;
  try {
    BuildHeading();
    WriteDataRight();
    data = platform::CreateObject(facts_.dataComponent);
    ProgBar().HideProgBar();
    ProgBar().SetMsg(ResString("正在从服务器读取数据，请稍候..."));
    KeepRows(CallData(*data));
    ProgBar().Unload();
    SetOutcome(true, "");
  } catch (const std::exception& error) {
    SetOutcome(false, error.what());
    ProgBar().Unload();
  }
}

}  // namespace component
