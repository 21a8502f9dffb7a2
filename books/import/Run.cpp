#include "books/import/Run.h"

#include <cmath>

#include "books/schema/Codes.h"
#include "platform/value/Convert.h"

namespace books::importer {
namespace {

// Beyond it, sums over millions of rows would not be safe.
constexpr double kLargestAmount = 1e12;

int SignOf(std::int64_t units) { return units < 0 ? -1 : units > 0 ? 1 : 0; }

}  // namespace

std::int64_t Run::LastId(std::string_view table) const {
  database::Statement last = connection.Query("SELECT COALESCE(MAX(id), 0) FROM " + std::string(table));
  return last.Step() ? last.Integer(0) : 0;
}

ImportCount& Run::Count(std::string_view file) {
  for (ImportCount& count : counts) {
    if (count.file == file) return count;
  }
  return counts.emplace_back(ImportCount{.file = std::string(file)});
}

std::optional<std::int32_t> Run::PeriodOf(const Place& place, std::string_view column, platform::Date day) {
  if (!accounting) {
    ReportNoAccounting(place);
    return std::nullopt;
  }
  if (day < lastPeriod.first || day > lastPeriod.last) {
    database::Statement row = connection.Query(
        "SELECT period, first_day, last_day FROM accounting_period WHERE first_day <= ? AND last_day >= ?",
        day, day);
    if (!row.Step()) {
      findings.Add(place, column, day.ToText(), "no accounting period holds this day",
                   "correct it, or add the period to periods.csv");
      return std::nullopt;
    }
    lastPeriod = {.period = row.Int32(0), .first = row.GetDate(1), .last = row.GetDate(2)};
  }
  if (lastPeriod.period >= accounting->start) return lastPeriod.period;
  findings.Add(place, column, day.ToText(),
               "accounting begins later, in period " + std::to_string(schema::YearOf(accounting->start)) +
                   "-" + std::to_string(schema::NumberOf(accounting->start)),
               "leave it out; what lay in stock then belongs into opening_stock.csv");
  return std::nullopt;
}

void Run::ReportNoAccounting(const Place& place) {
  if (known.IsFaultyFile("profile.csv")) return;
  findings.Add(place, {}, {}, "accounting has not begun in this book",
               "add profile.csv with the rows IC, StartYear and IC, StartPeriod");
}

std::optional<Figures> WorkOut(Run& run, const Place& place, const GivenFigures& given) {
  Figures figures{.unitId = given.unit.value_or(run.known.FindItem(given.item)->unitId),
                  .unitQuantity = given.unitQuantity,
                  .price = given.price.value_or(0),
                  .amount = given.amount};
  const std::optional<database::Quantity> factor = run.known.Factor(given.item, figures.unitId);
  if (!factor && run.known.IsFaultyFile("item_units.csv")) return std::nullopt;
  if (!factor) {
    run.findings.Add(place, "unit", {}, "the item has no such unit",
                     "correct it or add it to item_units.csv");
    return std::nullopt;
  }
  const std::optional<database::Quantity> quantity = Multiply(given.unitQuantity, *factor);
  const double many = given.unitQuantity.ToDouble();
  if (!quantity || std::abs(many * figures.price) > kLargestAmount) {
    run.findings.Add(place, "quantity", platform::NumberToText(many),
                     "the quantity or the amount is too large", "correct it");
    return std::nullopt;
  }
  figures.quantity = *quantity;
  if (given.price && !given.amount) figures.amount = platform::Currency::FromDouble(many * *given.price);
  if (given.amount && !given.price && many != 0) figures.price = std::abs(given.amount->ToDouble() / many);
  const int quantitySign = SignOf(given.unitQuantity.Units());
  if (given.amount && quantitySign * SignOf(given.amount->Units()) < 0) {
    run.findings.Add(place, "amount", given.amount->ToText(),
                     "the amount and the quantity have opposite signs", "in a return both are negative");
    return std::nullopt;
  }
  return figures;
}

std::optional<std::int32_t> Choose(Run& run, const Place& place, std::string_view column,
                                   std::string_view word, std::span<const Choice> choices) {
  std::string words;
  for (const Choice& choice : choices) {
    if (platform::EqualsIgnoreCase(choice.word, word)) return choice.value;
    if (!words.empty()) words += ", ";
    words += choice.word;
  }
  run.findings.Add(place, column, word, "this is none of the words that the column takes",
                   "write one of: " + words);
  return std::nullopt;
}

}  // namespace books::importer
