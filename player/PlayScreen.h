#pragma once

#include <deque>
#include <functional>
#include <string>

#include "platform/form/Screen.h"
#include "player/Json.h"
#include "player/ScriptDesk.h"
#include "player/Transcript.h"

namespace player {

// The user of a script: works through the actions queued for each form, answers message boxes, and has
// everything that is shown written down.
class PlayScreen final : public platform::Screen {
 public:
  using Fault = std::function<void(const std::string&)>;

  // All borrowed. `fault` is told of actions that make no sense, since a component may hide their failure.
  PlayScreen(Transcript& transcript, ScriptDesk& desk, const Names& names, Fault fault)
      : transcript_(transcript), desk_(desk), names_(names), fault_(std::move(fault)) {}

  // For the next form that has not been given any.
  void QueueActions(const Json& actions) { dialogs_.push_back(actions); }
  void QueueAnswer(const std::string& answer) { answers_.push_back(answer); }

  void ShowModal(platform::Form& form) override;
  platform::Answer Ask(const platform::MessageBox& box) override;
  void RunPendingEvents() override {}
  void SetPointer(platform::Pointer pointer) override;
  void TellProgress(std::string_view operation, const platform::Variant& value) override;

 private:
  void Serve(platform::Form& form);
  void Write(const char* key, Json value);

  Transcript& transcript_;
  ScriptDesk& desk_;
  const Names& names_;
  Fault fault_;
  std::deque<Json> dialogs_;
  std::deque<std::string> answers_;
};

}  // namespace player
