#include "desk/services/GLView.h"

#include "desk/services/GLData.h"
#include "desk/services/Session.h"

namespace desk {

using platform::Variant;

Variant CacheFacade::GetItem(Variant& /*processId*/, const std::string& key) const {
  if (platform::EqualsIgnoreCase(key, "IsOuterLogin")) return Behind().OuterLogin();
  return Behind().SessionValue(key);
}

Variant SystemProfile::GetSystemProfile(const std::string& category, const std::string& key,
                                        const std::optional<Variant>& fallback) const {
  const Variant value = Behind().Profile(category, key);
  return value.IsNull() ? fallback.value_or(Variant()) : value;
}

GLView::Outcome GLView::Pick(const LookupQuery& query) const {
  const std::optional<Picked> picked = Behind().PickBaseData(query);
  return picked ? platform::MakeRef<LookupOutcome>(*picked) : Outcome();
}

GLView::Outcome GLView::ItemLookUp(std::int32_t dataType, const std::string& text, const std::string& filter,
                                   Variant& /*options*/) const {
  return Pick({.kind = "ItemLookUp", .dataType = dataType, .text = text, .filter = filter});
}

GLView::Outcome GLView::CurrencyLookup(const std::string& text) const {
  return Pick({.kind = "CurrencyLookup", .dataType = kCurrencyType, .text = text, .filter = {}});
}

GLView::Outcome GLView::SettTypeLookup(const std::string& text) const {
  return Pick({.kind = "SettTypeLookup", .dataType = kSettlementType, .text = text, .filter = {}});
}

GLView::Outcome GLView::AccountLookup(const std::string& text) const {
  return Pick({.kind = "AccountLookup", .dataType = kAccountType, .text = text, .filter = {}});
}

GLView::Outcome GLView::UnitLookup(std::int32_t group, const std::string& text) const {
  return Pick({.kind = "UnitLookup", .dataType = kUnitType, .text = text, .filter = std::to_string(group)});
}

GLView::Outcome GLView::SubMesLookup(std::int32_t dataType, const std::string& text) const {
  return Pick({.kind = "SubMesLookup", .dataType = dataType, .text = text, .filter = {}});
}

Variant BaseList::Written(std::string_view property) const {
  if (platform::EqualsIgnoreCase(property, "KeyWord")) return query_.keyWord;
  if (platform::EqualsIgnoreCase(property, "Filter")) return query_.filter;
  return {};
}

}  // namespace desk
