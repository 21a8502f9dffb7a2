#pragma once

#include "platform/object/EventSource.h"
#include "platform/object/OperationTable.h"
#include "platform/rows/Vector.h"

namespace platform {

// A class with one operation of every shape that an operation table can hold.
class Probe final : public Exposed<Probe> {
 public:
  std::string Join(const std::string& left, const std::string& right) { return left + right; }
  std::int32_t Next(std::int16_t& counter) { return ++counter; }
  void Fill(std::string& text, Ref<Vector>& list, bool raise) {
    text += "!";
    list = MakeRef<Vector>();
    if (raise) throw Error(ErrorNumber::kUserDefined, "Probe", "Fill went wrong");
  }
  double Scale(double number, const std::optional<double>& factor) const {
    return number * factor.value_or(2);
  }
  void Touch(std::optional<std::int32_t>& number) {
    if (number) *number += 1;
  }
  Variant Echo(const Variant& value) { return value; }
  void Hold(const Ref<Object>& object) { held_ = object; }
  Ref<Object> Held() const { return held_; }
  void Wrong(const Ref<Object>& object) {
    held_ = object;
    throw Error(ErrorNumber::kUserDefined, "Probe", "Wrong went wrong");
  }
  std::int32_t Length(const Ref<Vector>& list) { return list ? list->Count() : -1; }
  std::string Text() const { return text_; }
  void SetText(const std::string& text) { text_ = text; }
  void SetOnly(Currency amount) { text_ = amount.ToText(); }
  Currency Half(Currency amount) { return MultiplyDivide(amount, 1, 2); }
  Date NextDay(Date day) { return day.AddDays(1); }
  bool Not(bool flag) { return !flag; }

  static constexpr std::string_view kClassName = "Test.Probe";
  static constexpr auto kOperations =
      Operations(Method<&Probe::Join>("Join", "Left", "Right"), Method<&Probe::Next>("Next", "Counter"),
                 Method<&Probe::Fill>("Fill", "Text", "List", "Raise"),
                 Method<&Probe::Scale>("Scale", "Number", "Factor"), Method<&Probe::Touch>("Touch", "Number"),
                 Method<&Probe::Echo>("Echo", "Value"), Method<&Probe::Hold>("Hold", "Object"),
                 PropertyGet<&Probe::Held>("Held"), Method<&Probe::Wrong>("Wrong", "Object"),
                 Method<&Probe::Length>("Length", "List"), PropertyGet<&Probe::Text>("Text"),
                 PropertyPut<&Probe::SetText>("Text", "Value"),
                 PropertyPut<&Probe::SetOnly>("Only", "Amount"), Method<&Probe::Half>("Half", "Amount"),
                 Method<&Probe::NextDay>("NextDay", "Day"), Method<&Probe::Not>("Not", "Flag"));

 private:
  std::string text_;
  Ref<Object> held_;
};

}  // namespace platform
