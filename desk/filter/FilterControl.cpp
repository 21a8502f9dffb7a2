#include "desk/filter/FilterControl.h"

#include "desk/filter/ReportFilter.h"

namespace desk {

using platform::Error;
using platform::ErrorNumber;
using platform::Variant;

void FilterControl::Load(const SchemeStore& store, std::string_view dialog, const std::string& scheme) {
  const std::optional<SchemeValues> values = store.Load(dialog, scheme);
  if (!values) {
    throw Error(ErrorNumber::kInvalidCall, ClassName(),
                "there is no scheme '" + scheme + "' of " + std::string(dialog));
  }
  Recall(scheme, *values);
}

std::optional<Variant> FilterControl::TakeForced() {
  if (!forced_) return std::nullopt;
  const Forced forced = *std::exchange(forced_, std::nullopt);
  if (forced.error) throw Error(ErrorNumber::kUserDefined, ClassName(), *forced.error);
  return forced.value;
}

FilterControl* FilterControlOf(const platform::Form& form) {
  const platform::EmbeddedControl* embedded = form.FirstEmbedded();
  return embedded == nullptr ? nullptr : dynamic_cast<FilterControl*>(&embedded->Content());
}

void CloseByUser(platform::Form& form) {
  if (auto* control = dynamic_cast<ReportFilter*>(FilterControlOf(form))) control->Cancel(form);
  form.CloseByUser();
}

}  // namespace desk
