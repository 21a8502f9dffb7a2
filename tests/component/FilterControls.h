#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "platform/object/EventSource.h"
#include "tests/component/Desk.h"

namespace component {

// What both filter controls have: a journal of calls ("control Member(arguments)"), events, and a result that
// stands in for the collected one.
class FilterControl : public platform::Object {
 public:
  explicit FilterControl(Desk& desk) : desk_(desk) { ++desk_.living; }
  FilterControl(const FilterControl&) = delete;
  FilterControl& operator=(const FilterControl&) = delete;
  FilterControl(FilterControl&&) = delete;
  FilterControl& operator=(FilterControl&&) = delete;
  ~FilterControl() override { --desk_.living; }

  std::string ClassName() const override { return "FilterControl"; }
  platform::EventSource* Events() override { return &events; }
  platform::Variant Invoke(std::string_view member, platform::CallKind,
                           std::span<platform::Variant> arguments) override {
    desk_.Note("control " + std::string(member) + Spell(arguments));
    if (failing == member)
      throw platform::Error(platform::ErrorNumber::kUserDefined, "control", "control failed");
    return Answer(member, arguments);
  }

  // The control of the form that is shown.
  template <class C>
  static C& In(platform::Form& form) {
    return dynamic_cast<C&>(form.FirstEmbedded()->Content());
  }

  platform::EventSource events;
  std::optional<platform::Variant> filterResult;
  std::string failing;  // the member that raises

 protected:
  virtual platform::Variant Answer(std::string_view member, std::span<platform::Variant> arguments) = 0;

 private:
  Desk& desk_;
};

// The control without buttons. It collects by raising SaveScheme.
class SchemeControl final : public FilterControl {
 public:
  using FilterControl::FilterControl;

  platform::Ref<platform::Dictionary> written = Keys({});
  platform::Ref<platform::Dictionary> scheme = Keys({});
  std::vector<std::string> unreadable;  // keys of the scheme that raise

 protected:
  platform::Variant Answer(std::string_view member, std::span<platform::Variant> arguments) override {
    if (member == "FilterInfo") return platform::Ref<platform::Object>(this);
    if (member == "WriteValue") written->Set(platform::ToText(arguments[1]), arguments[2]);
    if (member == "ReadValue") return Read(platform::ToText(arguments[1]));
    if (member != "FilterResult") return {};
    if (filterResult) return *filterResult;
    written = Keys({});
    events.RaiseWith("SaveScheme", "default");
    return written;
  }

 private:
  platform::Variant Read(const std::string& key) const {
    if (std::ranges::find(unreadable, key) != unreadable.end()) {
      throw platform::Error(platform::ErrorNumber::kUserDefined, "control", key);
    }
    return scheme->Value(key);
  }
};

// The control with its own OK and Cancel. It collects by raising SaveFields.
class ReportControl final : public FilterControl {
 public:
  using FilterControl::FilterControl;

  // What its buttons do.
  void Ok() const { events.RaiseWith("FilterDone", std::int16_t{0}); }
  void Cancel() const { events.RaiseWith("FilterDone", std::int16_t{1}); }

 protected:
  platform::Variant Answer(std::string_view member, std::span<platform::Variant>) override {
    if (member != "FilterResult") return {};
    if (filterResult) return *filterResult;
    const platform::Ref<platform::Dictionary> fields = Keys({});
    events.RaiseWith("SaveFields", fields);
    return fields;
  }
};

// Installs both controls under their programmatic ids.
inline void ServeFilterControls(Desk& desk) {
  desk.Serve("TOVRptFilterCtl.TOVRptFilter",
             [&desk] { return platform::Ref<platform::Object>(platform::MakeRef<SchemeControl>(desk)); });
  desk.Serve("VEZ_GRFC.ReportFilter",
             [&desk] { return platform::Ref<platform::Object>(platform::MakeRef<ReportControl>(desk)); });
}

}  // namespace component
