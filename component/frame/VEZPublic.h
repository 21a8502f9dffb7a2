#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/form/Form.h"

namespace component {

// The one place that every text for the user passes through. It answers the text as it is.
std::string ResString(std::string_view text);

// "chs" for the key "LANGUAGE"; any other key is read from the session's connection text.
std::string GetLanguage(std::string_view key);
// Translates the texts of a form. For Simplified Chinese, the language of every run, it does nothing.
void LoadFormResources(const platform::Ref<platform::Object>& form,
                       platform::Ref<platform::Dictionary>& result, const std::string& section);

// An entry of a choice list that not every application type offers.
struct Choice {
  std::int32_t data = 0;
  std::string_view caption;
  std::int32_t mask = 7;
};

// Refills the combo, captions through ResString, and selects an entry.
void FillCombo(platform::ComboBox& combo, std::span<const std::string_view> captions,
               std::int32_t selected = 0);
// Refills the combo with the choices whose mask holds the application type, captions through ResString, and
// selects the one whose number is `standard`; the first one when that is not offered or not given.
void FillComboByAppType(platform::ComboBox& combo, std::span<const Choice> choices,
                        std::optional<std::int32_t> standard = {});
// The first entry with this number; -1 when the combo is absent, empty, or has none.
std::int32_t FindComboItemData(const platform::ComboBox* combo, std::int32_t data);
// The combo as text for the data component and the title: key, selected index, then every entry with its
// number, or its position where the number is 0.
std::string DescribeComboItems(const platform::ComboBox& combo, std::string_view key);

// A request for the fields that users have added to a base data class.
platform::Ref<platform::Dictionary> NewUserFieldRequest(bool hasVector, const std::string& prefix,
                                                        const std::string& classType,
                                                        const std::string& fields);

}  // namespace component
