#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "browser/worker/Windows.h"
#include "desk/DataBackend.h"
#include "desk/FilterFiller.h"
#include "platform/form/Screen.h"

namespace browser {

// What a dialog held when it was left.
struct LeftDialog {
  std::string dialog;
  desk::FilterSettings fields;  // texts of its fields by key, as FilterFiller takes them
  desk::SchemeValues scheme;    // as the filter control collects them; empty without one
};

// The screen of a page that is somewhere else: showing a form runs a loop over what the page sends until the
// form is gone.
class PageScreen final : public platform::Screen {
 public:
  // The session's message loop.
  struct Loop {
    // Serves commands until `over`; an error that an event of a form raises comes out.
    std::function<void(const std::function<bool()>& over)> serveUntil;
    // Serves what has come in and does not touch forms.
    std::function<void()> servePending;
  };

  PageScreen(Windows& windows, desk::SchemeStore& schemes, const Wire& wire, Loop loop)
      : windows_(windows), schemes_(schemes), wire_(wire), loop_(std::move(loop)) {}

  // The report whose dialog comes next.
  void SetReport(std::int32_t report) { report_ = report; }
  // The next dialog is filled and confirmed without being shown.
  void FillNext(desk::FilterSettings settings);
  bool IsFilling() const { return fillNext_; }
  // What went wrong with that, and what no field took.
  const desk::FilterFiller& Filler() const { return filler_; }
  // What the last dialog with a filter control held.
  std::optional<LeftDialog> TakeLeft() { return std::exchange(left_, std::nullopt); }
  // An error that left a dialog, which the report does not tell.
  std::optional<std::string> TakeDialogError() { return std::exchange(dialogError_, std::nullopt); }

  // Whether the message box that is up has this button.
  bool Offers(platform::Answer answer) const;
  void Answer(platform::Answer answer) { answer_ = answer; }
  // The fetch ends at its next step.
  void CancelProgress() { cancelling_ = true; }
  bool TakeCancelled() { return std::exchange(cancelled_, false); }

  void ShowModal(platform::Form& form) override;
  platform::Answer Ask(const platform::MessageBox& box) override;
  void RunPendingEvents() override;
  void SetPointer(platform::Pointer pointer) override;
  void TellProgress(std::string_view operation, const platform::Variant& value) override;

 private:
  void ShowDialog(platform::Form& form);
  void ShowProgress(platform::Form& form);
  // Sets the fields as a user finds them; answers the scheme that was loaded.
  std::string Prepare(const platform::Form& form);
  void Remember(const platform::Form& form);

  Windows& windows_;
  desk::SchemeStore& schemes_;
  const Wire& wire_;
  Loop loop_;
  std::int32_t report_ = 0;
  bool fillNext_ = false;
  desk::FilterFiller filler_;
  std::optional<LeftDialog> left_;
  std::optional<std::string> dialogError_;
  platform::MessageButtons buttons_ = platform::MessageButtons::kOk;
  std::optional<platform::Answer> answer_;
  bool cancelling_ = false;
  bool cancelled_ = false;
};

}  // namespace browser
