#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/form/Controls.h"
#include "platform/form/TreeView.h"

namespace platform {

// What a form is to a host: a dialog waits for its user, a progress box works by itself while it is shown.
enum class FormRole { kDialog, kProgress };

// A window as a model: controls, a caption, the focus, and the events of its life. Load runs once before the
// first showing, Activate at each showing and whenever the form regains the focus; a hidden form keeps its
// fields, an unloaded one is at its end. The form owns its controls.
class Form : public Object {
 public:
  explicit Form(std::string name, FormRole role = FormRole::kDialog) : name_(std::move(name)), role_(role) {}
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  Form(Form&&) = delete;
  Form& operator=(Form&&) = delete;
  // Controls that others still hold lose their form, and with it their events.
  ~Form() override;

  const std::string& Name() const { return name_; }
  FormRole Role() const { return role_; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption) { caption_ = std::move(caption); }

  // Shows the form modally on the current Screen; returns when it has been hidden or unloaded. An error that
  // an event raises leaves through here, with the form hidden.
  void Show();
  void Hide() { visible_ = false; }
  // Hides the form and ends it: OnUnload runs once. The next showing loads it anew.
  void Unload();
  bool IsVisible() const { return visible_; }
  bool IsLoaded() const { return loaded_; }
  // Load without showing; does nothing when it has run.
  void EnsureLoaded();
  // For hosts: the form has got the focus.
  void Activate() { OnActivate(); }
  // For hosts: the user closed the window by its button.
  virtual void CloseByUser() { Unload(); }

  const std::vector<Ref<Control>>& Controls() const { return controls_; }
  // By "cboSort" or "txtItem(0)", without regard to case; null when there is none.
  Control* Find(std::string_view id) const;
  TreeView* FirstTree() const;
  EmbeddedControl* FirstEmbedded() const;

  // Focus. Moving it fires onLostFocus of the old and onGotFocus of the new control. A control that cannot
  // take it raises kInvalidCall. A null control leaves the form without focus.
  Control* Focus() const { return focus_; }
  void SetFocus(Control* control);
  // To the next control in the order of adding that can take the focus, round at the end: what Tab does.
  void FocusNext();

  // The form's own look at every key before the control gets it. Setting the key to 0 swallows it.
  virtual void OnKeyDown(int& /*key*/) {}
  virtual void OnKeyPress(int& /*character*/) {}

  std::string ClassName() const override { return name_; }
  Variant Invoke(std::string_view member, CallKind kind, std::span<Variant> arguments) override;

 protected:
  virtual void OnLoad() {}
  virtual void OnActivate() {}
  virtual void OnUnload() {}

  // Makes a control of this form; the reference lives as long as the form does.
  template <class C, class... Arguments>
  C& Add(Arguments&&... arguments) {
    Ref<C> control = MakeRef<C>(std::forward<Arguments>(arguments)...);
    Adopt(control);
    return *control;
  }

 private:
  void Adopt(const Ref<Control>& control);
  void SwitchOffOthers(const OptionButton& on);

  std::string name_;
  FormRole role_;
  std::string caption_;
  std::vector<Ref<Control>> controls_;
  Control* focus_ = nullptr;
  bool loaded_ = false;
  bool visible_ = false;
};

}  // namespace platform
