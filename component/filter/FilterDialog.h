#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "component/filter/BaseData.h"
#include "platform/form/Form.h"

namespace component {

enum class FieldKind : std::uint8_t { kText, kDate, kCheck, kOption, kCombo };

// What a reset puts into a date field.
enum class DateDefault : std::uint8_t { kKeep, kToday, kPeriodFirstDay, kStockStart };

// One field of a dialog. Building, saving, loading, resetting and looking up are walks over the table of
// these; a text field with a data type has the lookup button cmdItem of its index beside it.
struct DialogField {
  std::string_view control;
  int index = -1;  // in a control array; -1 for a control that stands alone
  FieldKind kind = FieldKind::kText;
  std::string_view label;
  std::string_view key;       // in the filter and in schemes; empty for a field that is neither
  std::int32_t standard = 0;  // of a check, an option or a combo, as the form opens and after a reset
  DateDefault date = DateDefault::kToday;
  DataType dataType = kNoDataType;
  bool keptOnReset = false;
};

// An entry of a sort box: what the user reads, and the field that the rows are sorted by.
struct SortChoice {
  std::string_view caption;
  std::string_view field;
};

// Stands between the caption and the field of a sort entry, and pushes the field out of sight.
std::string SortSeparator();

// What all filter dialogs share: the fields, the number and the outcome. Result holds "OK" from the moment
// the dialog is loaded; it is true only after the user confirmed.
class FilterDialog : public platform::Form {
 public:
  platform::Ref<platform::Dictionary> Result() const { return result_; }
  void SetResult(platform::Ref<platform::Dictionary> result) { result_ = std::move(result); }
  std::int32_t RptID() const { return rptId_; }
  void SetRptID(std::int32_t rptId) { rptId_ = rptId; }

  // Enter moves to the next field; a quote never reaches a code, where it would end a text in SQL.
  void OnKeyDown(int& key) override;
  void OnKeyPress(int& character) override;

  platform::Variant Invoke(std::string_view member, platform::CallKind kind,
                           std::span<platform::Variant> arguments) override;

 protected:
  FilterDialog(std::string name, std::span<const DialogField> fields, std::string_view filterControlId);

  std::span<const DialogField> Fields() const { return fields_; }
  template <class C>
  C& Field(std::string_view id) const {
    return dynamic_cast<C&>(*Find(id));
  }

  // Puts the closed filter control into the form and listens to it.
  void CreateFilterControl(const std::string& controlName,
                           const platform::Ref<platform::Dictionary>& settings);
  platform::Object& FilterControl() const { return FirstEmbedded()->Content(); }
  // An event of the filter control. What the event takes by reference is changed in `arguments`.
  virtual void OnFilterEvent(std::string_view event, std::span<platform::Variant> arguments) = 0;

  void ResetFieldValues();
  // The same for these keys only.
  void ResetFieldValues(std::initializer_list<std::string_view> keys);
  // Hides code fields with their labels and buttons, by index: an application that does not know what they
  // ask for has no use for them.
  void HideCodes(std::initializer_list<int> indexes) const;
  // Reads every field in table order through `read`, then sets them: what drives rules first (checks, options
  // and combos), texts and dates after, so that a stored value is not wiped by a rule that runs while
  // loading. A field that fails is left as it is.
  void LoadFieldValues(const std::function<platform::Variant(const DialogField& field)>& read);
  static void FillSort(platform::ComboBox& combo, std::span<const SortChoice> choices);
  // The entries that stock movements offer for a group: the item's number, and what an older numbering of
  // the groups adds, which does not follow the groups of today.
  static void FillSortByGroup(platform::ComboBox& combo, std::int32_t group);
  // "FItemNumber ASC " from the chosen entry.
  static std::string OrderByText(const platform::ComboBox& combo, bool ascending);
  // The same as cboSort and OptSortD have it.
  std::string ChosenOrder() const;

  platform::Ref<platform::Control> ControlOf(const DialogField& field) const;
  void NewResult();
  static void WriteUserID(platform::Dictionary& filter);
  // Lets the user choose for a code field; answers what the field shall read, nothing to leave it as it is.
  virtual std::optional<std::string> LookUpNumber(const DialogField& field, const std::string& text);

 private:
  void BuildField(const DialogField& field);
  void LookUpInto(std::int32_t index);
  static void SetFieldValue(platform::Control& control, FieldKind kind, const platform::Variant& value);
  void ResetField(const DialogField& field) const;

  std::span<const DialogField> fields_;
  std::string_view filterControlId_;
  platform::Ref<platform::Dictionary> result_;
  std::int32_t rptId_ = 0;
  int keyMark_ = 0;  // the last function key pressed in a code field, 0 for none
};

}  // namespace component
