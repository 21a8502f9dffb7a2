#pragma once

#include <vector>

#include "desk/filter/FilterControl.h"

namespace desk {

// The filter control without buttons: the dialog has its own and asks FilterInfo for the result. Fields go in
// and out one by one, with WriteValue while the control raises SaveScheme, with ReadValue during LoadScheme.
// The section that the events carry is the scheme's name, and empty while the control collects for the
// dialog.
class TOVRptFilter final : public platform::Exposed<TOVRptFilter, FilterControl> {
 public:
  using Exposed::Exposed;

  platform::Variant Invoke(std::string_view member, platform::CallKind kind,
                           std::span<platform::Variant> arguments) override;

  // For the dialog.
  void InitFilter(const std::string& title, platform::Variant& number);
  void SetPageVisible(std::int16_t page, bool visible);
  void WriteValue(std::string& section, const std::string& key, const std::string& value);
  // Empty for a key that the scheme does not hold.
  platform::Variant ReadValue(std::string& section, const std::string& key) const;
  platform::Ref<platform::Object> FilterInfo();
  platform::Ref<platform::Object> CurrentScheme() const;
  // A scheme's values reach the fields before it is activated, so there is nothing left to do.
  void ApplyScheme() {}

  // For the host.
  bool HasButtons() const override { return false; }
  void Notice() { Raiser().RaiseWith("SchemeNotice", ""); }
  void Save(SchemeStore& store, std::string_view dialog, const std::string& scheme) override;
  const std::string& Title() const { return title_; }
  bool IsPageVisible(std::int16_t page) const;

  // What FilterInfo's FilterResult does.
  platform::Variant Collect();

  static constexpr std::string_view kClassName = "TOVRptFilterCtl.TOVRptFilter";
  static constexpr auto kOperations = platform::Operations(
      platform::Method<&TOVRptFilter::InitFilter>("InitFilter", "Title", "Number"),
      platform::PropertyPut<&TOVRptFilter::SetPageVisible>("PageVisible", "Index", "Value"),
      platform::Method<&TOVRptFilter::WriteValue>("WriteValue", "Section", "Key", "Value"),
      platform::Method<&TOVRptFilter::ReadValue>("ReadValue", "Section", "Key"),
      platform::PropertyGet<&TOVRptFilter::FilterInfo>("FilterInfo"),
      platform::PropertyGet<&TOVRptFilter::CurrentScheme>("CurrentScheme"),
      platform::Method<&TOVRptFilter::ApplyScheme>("ApplyScheme"));

 protected:
  std::string_view ProgrammaticId() const override { return kClassName; }

 private:
  void Recall(const std::string& scheme, const SchemeValues& values) override;

  std::string title_;
  std::vector<std::int16_t> hiddenPages_;
  SchemeValues written_;
  SchemeValues recalled_;
  std::string current_;
};

}  // namespace desk
