#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/object/OperationTable.h"

namespace platform {

class Form;
class Frame;

enum class ControlKind {
  kText,
  kCombo,
  kCheck,
  kOption,
  kButton,
  kLabel,
  kDate,
  kSpin,
  kTree,
  kProgress,
  kFrame,
  kEmbedded
};

// The kind as hosts and scripts name it: "text", "combo", "check"…
std::string_view ToString(ControlKind kind);

// Key codes of the keys that forms look at; a printable character's code is the character itself.
inline constexpr int kKeyTab = 9;
inline constexpr int kKeyEnter = 13;
inline constexpr int kKeySpace = 32;
inline constexpr int kKeyQuote = 39;
inline constexpr int kKeyF7 = 118;
inline constexpr int kKeyF8 = 119;

// Where a control stands when a host lays the form out as a grid: rows from the top, columns from the left.
struct Place {
  int row = 0;
  int column = 0;
  int columns = 1;
};

// One control of a form: a value with events. It never knows who shows it. A value that code sets fires the
// same event as one that a user sets, since dialogs keep their fields in step that way.
class Control : public Object {
 public:
  Control(ControlKind kind, std::string name, int index)
      : kind_(kind), name_(std::move(name)), index_(index) {}

  ControlKind GetKind() const { return kind_; }
  const std::string& BaseName() const { return name_; }
  // The position in a control array, -1 for a control that stands alone.
  int ArrayIndex() const { return index_; }
  // "cboSort", or "txtItem(0)" in a control array.
  std::string Id() const;

  std::string Name() const { return name_; }
  std::int32_t Index() const { return index_; }
  std::string Caption() const { return caption_; }
  void SetCaption(const std::string& caption) { caption_ = caption; }
  std::string Tag() const { return tag_; }
  void SetTag(const std::string& tag) { tag_ = tag; }
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled) { enabled_ = enabled; }
  bool Visible() const { return visible_; }
  void SetVisible(bool visible) { visible_ = visible; }
  // The value as a scheme or a script sees it; a kind without one answers Empty.
  virtual Variant Value() const { return {}; }
  virtual void SetValue(const Variant& value);

  // The control itself and every frame around it are visible; likewise enabled.
  bool IsShown() const;
  bool IsUsable() const;
  // Whether the focus can stand in it at all.
  virtual bool TakesFocus() const { return true; }

  // The form that the control stands in; null once the form has ended.
  Form* Owner() const { return owner_; }
  void SetOwner(Form* owner) { owner_ = owner; }
  Frame* Container() const { return container_; }
  // Null takes the control out of its frame.
  void PlaceInside(Frame* container) { container_ = container; }
  const Place& GetPlace() const { return place_; }
  void SetPlace(Place place) { place_ = place; }

  // Events. onKeyDown and onKeyPress may set the key to 0 to swallow it.
  std::function<void()> onChange;
  std::function<void()> onClick;
  std::function<void()> onGotFocus;
  std::function<void()> onLostFocus;
  std::function<void(int& key)> onKeyDown;
  std::function<void(int& character)> onKeyPress;
  virtual void DropEvents();

  std::string ClassName() const override { return std::string(kClassName); }
  Variant Invoke(std::string_view member, CallKind kind, std::span<Variant> arguments) override;

  static constexpr std::string_view kClassName = "Control";
  static constexpr auto kOperations = Operations(
      PropertyGet<&Control::Name>("Name"), PropertyGet<&Control::Index>("Index"),
      PropertyGet<&Control::Caption>("Caption"), PropertyPut<&Control::SetCaption>("Caption", "Text"),
      PropertyGet<&Control::Tag>("Tag"), PropertyPut<&Control::SetTag>("Tag", "Text"),
      PropertyGet<&Control::Enabled>("Enabled"), PropertyPut<&Control::SetEnabled>("Enabled", "Value"),
      PropertyGet<&Control::Visible>("Visible"), PropertyPut<&Control::SetVisible>("Visible", "Value"),
      PropertyGet<&Control::Value>("Value"), PropertyPut<&Control::SetValue>("Value", "Value"),
      PropertyGet<&Control::Value>("Text"), PropertyPut<&Control::SetValue>("Text", "Value"));

 protected:
  static void Fire(const std::function<void()>& event) {
    if (event) event();
  }

 private:
  ControlKind kind_;
  std::string name_;
  int index_;
  std::string caption_;
  std::string tag_;
  bool enabled_ = true;
  bool visible_ = true;
  Form* owner_ = nullptr;
  Frame* container_ = nullptr;
  Place place_;
};

}  // namespace platform
