#include "books/reports/ledger/LedgerChoice.h"

#include <algorithm>

#include "books/schema/Codes.h"
#include "platform/value/Convert.h"
#include "platform/value/Error.h"

namespace books::reports {
namespace {

using platform::Dictionary;
using platform::Ref;
using platform::Variant;

std::int32_t NumberOf(const ReportFilter& filter, std::string_view key) {
  return static_cast<std::int32_t>(platform::LeadingNumber(filter.Text(key)));
}

constexpr std::string_view kOrderBy = "ORDER BY";

}  // namespace

LedgerChoice::LedgerChoice(services::Store& store, const Variant& filter) {
  const ReportFilter asked(filter);
  batches = asked.NumberRange("BatchNo");
  leavesOutZero = NumberOf(asked, "Balance") != 0;
  lastPeriod = LastPeriodOf(filter);
  static const reader::ConditionAlias kAliases[] = {{"v4", *reader::FindTable("t_Stock")}};
  Conditions conditions;
  conditions.AddRange(store.UsesShortNumbers() ? "v4.FShortNumber" : "v4.FNumber",
                      asked.NumberRange("StockNumber"));
  conditions.Add(asked.Rights(kAliases));
  if (conditions.IsEmpty()) return;
  everyWarehouse = false;
  database::Statement rows =
      store.Reading().Prepare("SELECT v4.FItemID FROM t_Stock v4 WHERE " + conditions.Sql());
  services::BindAll(rows, conditions.Parameters());
  while (rows.Step()) warehouses.insert(rows.Integer(0));
}

std::int32_t LastPeriodOf(const Variant& filter) {
  const ReportFilter asked(filter);
  const std::int32_t year = NumberOf(asked, "EYear");
  return year > 0 ? schema::PeriodOf(year, NumberOf(asked, "EPeriod")) : 0;
}

// Asked for every period: at once for a filter that nobody has written to, and otherwise keys are looked for
// where they stood before.
bool LedgerFilterMark::Fits(const Variant& filter) const {
  const Ref<Dictionary> asked = filter.AsRef<Dictionary>();
  if (!asked) return std::ranges::all_of(values_, &Variant::IsEmpty);
  if (asked->Now() == taken_) return true;
  const std::vector<Dictionary::Entry>& entries = asked->Entries();
  for (std::size_t i = 0; i < kKeys.size(); ++i) {
    const std::size_t place = places_[i];
    const bool stands = place < entries.size() && entries[place].key == kKeys[i];
    if ((stands ? entries[place].value : asked->Value(kKeys[i])) != values_[i]) return false;
  }
  return true;
}

void LedgerFilterMark::Take(const Variant& filter) {
  const Ref<Dictionary> asked = filter.AsRef<Dictionary>();
  taken_ = asked ? asked->Now() : Dictionary::State();
  for (std::size_t i = 0; i < kKeys.size(); ++i) {
    values_[i] = asked ? asked->Value(kKeys[i]) : Variant();
    places_[i] = 0;
    if (!asked) continue;
    const auto at = std::ranges::find(asked->Entries(), kKeys[i], &Dictionary::Entry::key);
    places_[i] = static_cast<std::size_t>(at - asked->Entries().begin());
  }
}

ItemCondition ReadItemCondition(std::string_view text, std::string_view alias) {
  ItemCondition condition;
  const std::string upper = platform::ToUpperAscii(text);
  if (const std::size_t at = upper.rfind(kOrderBy); at != std::string::npos) {
    const std::string_view order = platform::TrimBlanks(text.substr(at + kOrderBy.size()));
    for (const std::string_view field : {"FNumber", "FShortNumber"}) {
      const std::string column = std::string(alias) + "." + std::string(field);
      if (platform::EqualsIgnoreCase(order, column)) condition.order = column;
    }
    // Without a known field behind it the words stand inside a value, or the text is refused below.
    if (!condition.order.empty()) text = text.substr(0, at);
  }
  text = platform::TrimBlanks(text);
  if (platform::EqualsIgnoreCase(text.substr(0, 4), "AND ")) text.remove_prefix(4);
  const reader::ConditionAlias aliases[] = {{alias, *reader::FindTable("t_Item")}};
  condition.where = reader::ReadConditionText(text, aliases);
  return condition;
}

}  // namespace books::reports
