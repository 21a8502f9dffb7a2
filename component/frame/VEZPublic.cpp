#include "component/frame/VEZPublic.h"

#include "component/frame/MMTS.h"
#include "component/frame/ProcessState.h"
#include "platform/object/ClassRegistry.h"

namespace component {

using platform::ComboBox;
using platform::Dictionary;
using platform::Object;
using platform::Ref;
using platform::Variant;

std::string ResString(std::string_view text) { return std::string(text); }

std::string GetLanguage(std::string_view key) {
  if (platform::EqualsIgnoreCase(key, "LANGUAGE")) return "chs";
  const std::string props = GetPropsString();
  const std::string pattern = std::string(key) + "=";
  const std::size_t start = props.find(pattern);
  if (start == std::string::npos) return {};
  const std::size_t first = start + pattern.size();
  return props.substr(first, props.find(';', first) - first);
}

void LoadFormResources(const Ref<Object>& form, Ref<Dictionary>& result, const std::string& section) {
  const std::string& stored = ProcessState::Get().language;
  const std::string language = stored.empty() ? GetLanguage("LANGUAGE") : stored;
  if (platform::EqualsIgnoreCase(language, "chs")) return;
  const Ref<Object> loader = platform::CreateObject("TOVFrmRes.FrmResLoader");
  if (!result) {
    result = platform::MakeRef<Dictionary>();
    result->Set("NeedMLColumnHeaders", true);
  }
  Variant changed(result);
  const Variant texts = loader->Call("LoadFrmResStrings", GetPropsString(), language, form, section, changed);
  result = platform::detail::FromVariant<Ref<Dictionary>>(changed);
  platform::detail::FromVariant<Ref<platform::Vector>>(texts);  // a list of texts, which nobody reads
}

void FillCombo(platform::ComboBox& combo, std::span<const std::string_view> captions, std::int32_t selected) {
  combo.Clear();
  for (const std::string_view caption : captions) combo.AddEntry(ResString(caption));
  combo.SetListIndex(selected);
}

void FillComboByAppType(ComboBox& combo, std::span<const Choice> choices,
                        std::optional<std::int32_t> standard) {
  combo.Clear();
  const std::int32_t appType = GetAppType();
  std::int32_t selected = 0;
  for (const Choice& choice : choices) {
    if ((choice.mask & appType) != appType) continue;
    if (standard == choice.data) selected = combo.EntryCount();
    combo.AddEntry(ResString(choice.caption), choice.data);
  }
  if (combo.EntryCount() > 0) combo.SetListIndex(selected);
}

std::int32_t FindComboItemData(const ComboBox* combo, std::int32_t data) {
  if (combo == nullptr) return -1;
  for (std::int32_t i = 0; i < combo->EntryCount(); ++i) {
    if (combo->ItemData(i) == data) return i;
  }
  return -1;
}

std::string DescribeComboItems(const ComboBox& combo, std::string_view key) {
  std::string text = std::string(key) + "," + std::to_string(combo.ListIndex()) + "|";
  for (std::int32_t i = 0; i < combo.EntryCount(); ++i) {
    const std::int32_t data = combo.ItemData(i);
    text += combo.ItemText(i) + "," + std::to_string(data != 0 ? data : i) + "|";
  }
  return text;
}

Ref<Dictionary> NewUserFieldRequest(bool hasVector, const std::string& prefix, const std::string& classType,
                                    const std::string& fields) {
  Ref<Dictionary> request = platform::MakeRef<Dictionary>();
  request->Set("hasVect", hasVector);
  request->Set("prefixValue", prefix);
  request->Set("classType", classType);
  request->Set("DisplayFields", fields);
  return request;
}

}  // namespace component
