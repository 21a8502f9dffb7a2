#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "desk/Schemes.h"
#include "desk/services/Service.h"
#include "platform/form/Form.h"
#include "platform/object/EventSource.h"
#include "platform/rows/Dictionary.h"

namespace desk {

// What the two filter controls have in common for a host: the user's hands on the control. The host acts
// here, the control raises its events, and the dialog in which it stands does its part. An error that the
// dialog raises comes out of the member called.
class FilterControl : public Service {
 public:
  using Service::Service;

  platform::EventSource* Events() override { return &events_; }

  // Whether the control has buttons of its own. The others are confirmed through their dialog.
  virtual bool HasButtons() const = 0;
  // True the first time: a dialog that is kept between its showings keeps its fields, too.
  bool TakeFirstShowing() { return std::exchange(firstShowing_, false); }
  // The user asks for the fields' defaults.
  void Reset() { events_.RaiseWith("ResetFields"); }
  // Stores what stands in the fields as a scheme of the dialog.
  virtual void Save(SchemeStore& store, std::string_view dialog, const std::string& scheme) = 0;
  // Recalls a scheme and makes it the current one. Raises kInvalidCall for a scheme that does not exist.
  void Load(const SchemeStore& store, std::string_view dialog, const std::string& scheme);

  // What the next FilterResult yields instead of what was collected.
  void ForceResultOnce(platform::Variant value) { forced_ = Forced{.value = std::move(value), .error = {}}; }
  void ForceErrorOnce(std::string description) {
    forced_ = Forced{.value = {}, .error = std::move(description)};
  }

 protected:
  virtual void Recall(const std::string& scheme, const SchemeValues& values) = 0;

  const platform::EventSource& Raiser() const { return events_; }
  // The forced result, spent by asking; raises a forced error.
  std::optional<platform::Variant> TakeForced();

 private:
  struct Forced {
    platform::Variant value;
    std::optional<std::string> error;
  };

  platform::EventSource events_;
  std::optional<Forced> forced_;
  bool firstShowing_ = true;
};

// The filter control of a form; null when the form has none, or one that the desk did not make.
FilterControl* FilterControlOf(const platform::Form& form);
// The user closes the form by its window button. For a control with buttons that is its Cancel as well.
void CloseByUser(platform::Form& form);

}  // namespace desk
