#include "desk/filter/TOVRptFilter.h"

#include <algorithm>

namespace desk {
namespace {

using platform::CallKind;
using platform::Dictionary;
using platform::Exposed;
using platform::MakeRef;
using platform::Method;
using platform::Object;
using platform::Operations;
using platform::PropertyGet;
using platform::Ref;
using platform::Variant;

// The part of the control that a dialog asks for the filter. Its calls are calls of the control.
class FilterInfoObject final : public Exposed<FilterInfoObject> {
 public:
  explicit FilterInfoObject(Ref<TOVRptFilter> control) : control_(std::move(control)) {}

  Variant Invoke(std::string_view member, CallKind kind, std::span<Variant> arguments) override {
    control_->Tell(Info().Find(member, kind), member, kind, arguments);
    return Exposed::Invoke(member, kind, arguments);
  }
  Variant FilterResult() { return control_->Collect(); }

  static constexpr std::string_view kClassName = "FilterInfo";
  static constexpr auto kOperations = Operations(Method<&FilterInfoObject::FilterResult>("FilterResult"));

 private:
  Ref<TOVRptFilter> control_;
};

class SchemeObject final : public Exposed<SchemeObject> {
 public:
  explicit SchemeObject(std::string name) : name_(std::move(name)) {}
  std::string Name() const { return name_; }

  static constexpr std::string_view kClassName = "FilterScheme";
  static constexpr auto kOperations = Operations(PropertyGet<&SchemeObject::Name>("Name"));

 private:
  std::string name_;
};

}  // namespace

Variant TOVRptFilter::Invoke(std::string_view member, CallKind kind, std::span<Variant> arguments) {
  Tell(Info().Find(member, kind), member, kind, arguments);
  return Exposed::Invoke(member, kind, arguments);
}

void TOVRptFilter::InitFilter(const std::string& title, Variant& /*number*/) { title_ = title; }

void TOVRptFilter::SetPageVisible(std::int16_t page, bool visible) {
  std::erase(hiddenPages_, page);
  if (!visible) hiddenPages_.push_back(page);
}

bool TOVRptFilter::IsPageVisible(std::int16_t page) const {
  return std::ranges::find(hiddenPages_, page) == hiddenPages_.end();
}

void TOVRptFilter::WriteValue(std::string& /*section*/, const std::string& key, const std::string& value) {
  SetValue(written_, key, value);
}

Variant TOVRptFilter::ReadValue(std::string& /*section*/, const std::string& key) const {
  return ValueOf(recalled_, key);
}

Ref<Object> TOVRptFilter::FilterInfo() { return MakeRef<FilterInfoObject>(Ref<TOVRptFilter>(this)); }

Ref<Object> TOVRptFilter::CurrentScheme() const { return MakeRef<SchemeObject>(current_); }

Variant TOVRptFilter::Collect() {
  if (const std::optional<Variant> forced = TakeForced()) return *forced;
  written_.clear();
  Raiser().RaiseWith("SaveScheme", "");
  const Ref<Dictionary> filter = MakeRef<Dictionary>();
  for (const auto& [key, value] : written_) filter->Set(key, value);
  return filter;
}

void TOVRptFilter::Save(SchemeStore& store, std::string_view dialog, const std::string& scheme) {
  written_.clear();
  Raiser().RaiseWith("SaveScheme", scheme);
  store.Save(dialog, scheme, written_);
}

void TOVRptFilter::Recall(const std::string& scheme, const SchemeValues& values) {
  recalled_ = values;
  current_ = scheme;
  Raiser().RaiseWith("LoadScheme", scheme);
  Raiser().RaiseWith("SchemeActivated");
}

}  // namespace desk
