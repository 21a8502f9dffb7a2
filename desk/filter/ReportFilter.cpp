#include "desk/filter/ReportFilter.h"

namespace desk {

using platform::CallKind;
using platform::Dictionary;
using platform::MakeRef;
using platform::Object;
using platform::Ref;
using platform::Variant;

Variant ReportFilter::Invoke(std::string_view member, CallKind kind, std::span<Variant> arguments) {
  Tell(Info().Find(member, kind), member, kind, arguments);
  return Exposed::Invoke(member, kind, arguments);
}

void ReportFilter::LoadFilter(const Ref<Dictionary>& filter) {
  Raiser().RaiseWith("LoadFields", filter);
  Raiser().RaiseWith("LoadQuery", filter);
}

Variant ReportFilter::FilterResult() {
  if (const std::optional<Variant> forced = TakeForced()) return *forced;
  return collected_;
}

Ref<Dictionary> ReportFilter::Collect(bool quick) const {
  const Ref<Dictionary> fields = MakeRef<Dictionary>();
  Raiser().RaiseWith("SaveFields", fields);
  if (quick) Raiser().RaiseWith("SaveQuery", fields);
  return fields;
}

void ReportFilter::Confirm(bool quick) {
  collected_ = Collect(quick);
  Raiser().RaiseWith("FilterDone", std::int16_t{0});
}

void ReportFilter::Cancel(platform::Form& form) {
  Raiser().RaiseWith("FilterDone", std::int16_t{1});
  form.Hide();
}

void ReportFilter::Save(SchemeStore& store, std::string_view dialog, const std::string& scheme) {
  SchemeValues values;
  const Ref<Dictionary> fields = Collect(false);
  for (const Dictionary::Entry& entry : fields->Entries()) {
    values.emplace_back(entry.key, entry.value);
  }
  store.Save(dialog, scheme, values);
}

void ReportFilter::Recall(const std::string& /*scheme*/, const SchemeValues& values) {
  const Ref<Dictionary> fields = MakeRef<Dictionary>();
  for (const auto& [key, value] : values) fields->Set(key, value);
  LoadFilter(fields);
}

std::int32_t ReportFilter::DataTypeOf(platform::Control& field) {
  // The two last arguments are the control's own and mean nothing to a dialog.
  std::array<Variant, 4> arguments{Ref<Object>(&field), std::int32_t{0}, std::int32_t{0}, std::int32_t{0}};
  Raiser().Raise("GetDataType", arguments);
  return platform::ToInt32(arguments[1]);
}

}  // namespace desk
