#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/form/Control.h"
#include "platform/rows/Dictionary.h"
#include "platform/value/Clock.h"

namespace platform {

class Label final : public Control {
 public:
  explicit Label(std::string name, int index = -1) : Control(ControlKind::kLabel, std::move(name), index) {}
  bool TakesFocus() const override { return false; }
};

// Hides and disables what stands inside it.
class Frame final : public Control {
 public:
  explicit Frame(std::string name, int index = -1) : Control(ControlKind::kFrame, std::move(name), index) {}
  bool TakesFocus() const override { return false; }
};

class Button final : public Control {
 public:
  explicit Button(std::string name, int index = -1) : Control(ControlKind::kButton, std::move(name), index) {}
  void Click() { Fire(onClick); }
};

// Fires onChange when the text becomes another one.
class TextBox final : public Control {
 public:
  explicit TextBox(std::string name, int index = -1) : Control(ControlKind::kText, std::move(name), index) {}

  const std::string& Text() const { return text_; }
  void SetText(std::string_view text);
  // A text box that code fills and a user only reads.
  bool ReadOnly() const { return readOnly_; }
  void SetReadOnly(bool readOnly) { readOnly_ = readOnly; }

  Variant Value() const override { return text_; }
  void SetValue(const Variant& value) override { SetText(ToText(value)); }

 private:
  std::string text_;
  bool readOnly_ = false;
};

// 0 or 1. Fires onClick when the value becomes another one.
class CheckBox final : public Control {
 public:
  explicit CheckBox(std::string name, int index = -1)
      : Control(ControlKind::kCheck, std::move(name), index) {}

  std::int32_t Checked() const { return checked_; }
  // Any number but 0 ticks the box.
  void SetChecked(std::int32_t checked);

  Variant Value() const override { return checked_; }
  void SetValue(const Variant& value) override;

 private:
  std::int32_t checked_ = 0;
};

// Of the option buttons of one container at most one is on; Form keeps it so. Fires onClick when it
// becomes on.
class OptionButton final : public Control {
 public:
  explicit OptionButton(std::string name, int index = -1)
      : Control(ControlKind::kOption, std::move(name), index) {}

  bool IsOn() const { return on_; }
  void SetOn(bool on);

  Variant Value() const override { return on_; }
  void SetValue(const Variant& value) override { SetOn(ToBoolean(value)); }

  void DropEvents() override;
  // Set by the form: switches the other buttons of the group off.
  std::function<void()> onSwitchedOn;

 private:
  bool on_ = false;
};

// A drop-down list: entries with a text and a number. Fires onClick whenever an entry is selected, also by
// code and also the one that is selected already.
class ComboBox final : public Control {
 public:
  struct Entry {
    std::string text;
    std::int32_t data = 0;
  };

  explicit ComboBox(std::string name, int index = -1)
      : Control(ControlKind::kCombo, std::move(name), index) {}

  const std::vector<Entry>& Entries() const { return entries_; }
  std::int32_t EntryCount() const { return static_cast<std::int32_t>(entries_.size()); }
  void AddEntry(std::string text, std::int32_t data = 0) { entries_.push_back({std::move(text), data}); }
  // Removes the entries; nothing is selected afterwards, and nothing fires.
  void Clear();

  std::int32_t ListIndex() const { return listIndex_; }
  // -1 selects nothing. An index without an entry raises kInvalidCall and leaves the selection.
  void SetListIndex(std::int32_t index);
  // The selected entry's text, empty without a selection.
  std::string Text() const;
  // The entry's number; an index without an entry raises kInvalidCall.
  std::int32_t ItemData(std::int32_t index) const { return At(index).data; }
  std::string ItemText(std::int32_t index) const { return At(index).text; }

  Variant Value() const override { return Text(); }
  // A number selects by index; a text selects the entry that reads so.
  void SetValue(const Variant& value) override;

 private:
  const Entry& At(std::int32_t index) const;

  std::vector<Entry> entries_;
  std::int32_t listIndex_ = -1;
};

// Fires onChange when the value becomes another one. A user cannot choose a day before the minimum; code can.
class DatePicker final : public Control {
 public:
  explicit DatePicker(std::string name, int index = -1)
      : Control(ControlKind::kDate, std::move(name), index) {}

  Date GetDate() const { return date_; }
  void SetDate(Date date);
  Date MinDate() const { return minDate_; }
  void SetMinDate(Date date) { minDate_ = date; }

  Variant Value() const override { return date_; }
  void SetValue(const Variant& value) override { SetDate(ToDate(value)); }

 private:
  Date date_ = Clock::Today();
  Date minDate_ = Date::Of(1601, 1, 1);
};

// A pair of arrows beside a text box. It has no value of its own: it adds to the number in its buddy.
class SpinButton final : public Control {
 public:
  SpinButton(std::string name, TextBox& buddy, int index = -1)
      : Control(ControlKind::kSpin, std::move(name), index), buddy_(&buddy) {}
  bool TakesFocus() const override { return false; }
  void Step(std::int32_t difference);

 private:
  TextBox* buddy_;
};

class ProgressBar final : public Control {
 public:
  explicit ProgressBar(std::string name) : Control(ControlKind::kProgress, std::move(name), -1) {}
  bool TakesFocus() const override { return false; }

  double min = 0;
  double max = 100;
  double value = 0;

  Variant Value() const override { return value; }
};

// A closed control that stands in a form, made from its programmatic id. The form talks to it by name and
// hears its events; `settings` are what the form's designer stored with it, for the control's host to read.
class EmbeddedControl final : public Control {
 public:
  EmbeddedControl(std::string name, Ref<Object> content, Ref<Dictionary> settings = {})
      : Control(ControlKind::kEmbedded, std::move(name), -1),
        content_(std::move(content)),
        settings_(std::move(settings)) {}
  bool TakesFocus() const override { return false; }
  // Stops listening to the content's events as well.
  void DropEvents() override;
  Object& Content() const { return *content_; }
  const Ref<Dictionary>& Settings() const { return settings_; }

 private:
  Ref<Object> content_;
  Ref<Dictionary> settings_;
};

}  // namespace platform
