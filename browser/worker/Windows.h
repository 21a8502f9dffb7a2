#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "browser/protocol/Command.h"
#include "browser/wire/Wire.h"
#include "desk/Schemes.h"
#include "platform/form/Screen.h"

namespace browser {

// What is up in front of the user: forms, message boxes and progress boxes, the last one on top. It tells the
// page of what comes, changes and goes, and can tell all of it again to a page that has just come.
class Windows {
 public:
  Windows(const Wire& wire, const desk::SchemeStore& schemes) : wire_(wire), schemes_(schemes) {}

  void OpenForm(platform::Form& form, std::int32_t report, const std::string& scheme);
  void OpenMessage(const platform::MessageBox& box);
  void OpenProgress(platform::Form& form);
  // The topmost goes.
  void Close();

  bool IsEmpty() const { return windows_.empty(); }
  bool HasProgress() const;
  // Whether the topmost window is the one that a command names.
  bool IsMeant(const Command& command) const;
  // The topmost form; only when the command is meant for one.
  platform::Form& TopForm() const { return *windows_.back().form; }
  const std::string& TopScheme() const { return windows_.back().scheme; }
  void SetTopScheme(const std::string& scheme) { windows_.back().scheme = scheme; }

  // Tells what changed in the forms since they were told last.
  void TellChanges();
  // The same for a progress box; of a flood of changes not more than a user can see.
  void TellProgress();
  void TellAll() const;

 private:
  enum class Kind : std::uint8_t { kForm, kMessage, kProgress };

  struct Window {
    Kind kind;
    std::int32_t id;
    platform::Form* form;  // null for a message box
    std::string scheme;    // loaded last into the form
    Json told;             // the message that describes it as the page knows it
  };

  void Push(Window window);
  void TellFormChanges(Window& window) const;
  bool IsFlood();
  Json ProgressState(const platform::Form& form) const;

  const Wire& wire_;
  const desk::SchemeStore& schemes_;
  std::vector<Window> windows_;
  std::int32_t lastId_ = 0;
  std::int64_t progressSince_ = 0;  // the beginning of the time that calls are counted in
  int progressCalls_ = 0;
};

}  // namespace browser
