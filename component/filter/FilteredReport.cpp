// Two ways to show a filter. Both trap every error and leave Result as it was then: a dialog that fails is no
// failure of the report.
#include "component/filter/FilteredReport.h"

#include "component/frame/VEZPublic.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::Ref;
using platform::SkipErrors;
using platform::Variant;

bool IsConfirmed(const Dictionary& outcome) { return platform::ToBoolean(outcome.Value("OK")); }

}  // namespace

Variant TOVRptFilterReport::ShowFilter() {
  const Ref<TOVRptFilterReport> kept(this);  // the browser may let go of the report while the dialog is up
  Ref<TOVRptFilterDialog> dialog;
  SkipErrors([&] {
    if (noFilter_) {
      SetOutcome(true, "");
      OnNoFilter();
      noFilter_ = false;
      AcceptFilter({});
      return;
    }
    dialog = MakeDialog();
    dialog->SetRptID(DialogNumber());
    dialog->Show();
    const Ref<Dictionary> outcome = dialog->Result();
    if (!outcome) {
      SetOutcome(false, ResString("过滤条件有误，请重新过滤！"));
    } else if (!IsConfirmed(*outcome)) {
      SetOk(false);  // the text of an earlier failure stays
    } else {
      SetOutcome(true, "");
      AcceptFilter(outcome);
    }
  });
  SkipErrors([&] {
    if (dialog) dialog->Unload();
  });
  return {};
}

ReportFilterReport::~ReportFilterReport() {
  SkipErrors([&] {
    if (dialog_) dialog_->Unload();
  });
}

void ReportFilterReport::TakeOutcome(const Ref<Dictionary>& outcome) {
  if (!outcome) {
    if (KeepsDialog()) {
      SetOutcome(false, ResString("过滤条件有误，请重新过滤！"));
      dialog_ = nullptr;
    } else {
      SetOk(false);
    }
  } else if (!IsConfirmed(*outcome)) {
    SetOk(false);
  } else {
    SetOutcome(true, "");
    AcceptFilter(outcome);
  }
}

Variant ReportFilterReport::ShowFilterPlain() {
  const Ref<ReportFilterReport> kept(this);  // as above
  bool failed = true;
  SkipErrors([&] {
    if (!dialog_ || !KeepsDialog()) dialog_ = MakeDialog();
    const Ref<ReportFilterDialog> shown = dialog_;
    shown->SetRptID(DialogNumber());
    shown->SetAutoFilter(platform::ToInt32(Property()->Lookup("ShowFilter", Variant(-1))));
    shown->Show();
    TakeOutcome(shown->Result());
    failed = false;
  });
  // A kept dialog that failed is loaded anew at the next showing, with its fields as they are.
  if (failed || !KeepsDialog()) {
    SkipErrors([&] {
      if (dialog_) dialog_->Unload();
    });
  }
  if (!KeepsDialog()) dialog_ = nullptr;
  return {};
}

Variant ReportFilterReport::ShowFilter(std::optional<bool>&) { return ShowFilterPlain(); }

}  // namespace component
