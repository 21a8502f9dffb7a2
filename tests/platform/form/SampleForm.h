#pragma once

#include <string>
#include <vector>

#include "platform/form/Screen.h"
#include "platform/form/UserInput.h"

namespace platform {

// A form with a control of every kind, two groups of option buttons and a frame. Every event is a line of
// `heard`.
class SampleForm final : public Form {
 public:
  explicit SampleForm(std::string name = "frmSample", FormRole role = FormRole::kDialog)
      : Form(std::move(name), role) {
    optOut.PlaceInside(&frame);
    optIn.PlaceInside(&frame);
    inside.PlaceInside(&frame);
    for (const Ref<Control>& control : Controls()) {
      Control* const c = control.Get();
      c->onChange = [this, c] { heard.push_back("change " + c->Id()); };
      c->onClick = [this, c] { heard.push_back("click " + c->Id()); };
      c->onGotFocus = [this, c] { heard.push_back("got " + c->Id()); };
      c->onLostFocus = [this, c] { heard.push_back("lost " + c->Id()); };
    }
  }

  std::vector<std::string> heard;
  std::function<void()> onLoad;
  std::function<void()> onActivate;
  int swallowDown = 0;   // a key that the form keeps for itself
  int swallowPress = 0;  // a character that it keeps for itself

  TextBox& text = Add<TextBox>("txtItem", 0);
  TextBox& second = Add<TextBox>("txtItem", 1);
  Label& label = Add<Label>("lblItem");
  ComboBox& combo = Add<ComboBox>("cboSort");
  CheckBox& check = Add<CheckBox>("chkTotal");
  OptionButton& optA = Add<OptionButton>("optA");
  OptionButton& optB = Add<OptionButton>("optB");
  Frame& frame = Add<Frame>("fraGroup");
  OptionButton& optIn = Add<OptionButton>("optIn");
  OptionButton& optOut = Add<OptionButton>("optOut");
  TextBox& inside = Add<TextBox>("txtInside");
  DatePicker& date = Add<DatePicker>("DtpBDate");
  SpinButton& spin = Add<SpinButton>("updLevel", second);
  TreeView& tree = Add<TreeView>("trvStock");
  ProgressBar& progress = Add<ProgressBar>("ProgressBar1");
  Button& button = Add<Button>("cmdOK");

  void OnKeyDown(int& key) override {
    heard.push_back("down " + std::to_string(key));
    if (key == swallowDown) key = 0;
  }
  void OnKeyPress(int& character) override {
    heard.push_back("press " + std::to_string(character));
    if (character == swallowPress) character = 0;
  }

  // What was heard since the last asking.
  std::vector<std::string> Heard() { return std::exchange(heard, {}); }

 protected:
  void OnLoad() override {
    heard.push_back("load");
    if (onLoad) onLoad();
  }
  void OnActivate() override {
    heard.push_back("activate");
    if (onActivate) onActivate();
  }
  void OnUnload() override { heard.push_back("unload"); }
};

}  // namespace platform
