#include "browser/worker/View.h"

#include <algorithm>

#include "browser/worker/RowText.h"
#include "platform/value/Convert.h"

namespace browser {

using platform::Currency;
using platform::FieldType;
using platform::Recordset;
using platform::Ref;

namespace {

template <class T>
int Order(const T& left, const T& right) {
  if (left < right) return -1;
  return right < left ? 1 : 0;
}

bool IsNumber(FieldType type) {
  return type == FieldType::kInt16 || type == FieldType::kInt32 || type == FieldType::kDouble ||
         type == FieldType::kNumeric || type == FieldType::kCurrency;
}

}  // namespace

View::View(Ref<Recordset> rows) : rows_(std::move(rows)) {
  summaryField_ = rows_->FindField("FSumSort");
  if (summaryField_ && !IsNumber(rows_->Fields()[*summaryField_].type)) summaryField_.reset();
}

std::vector<std::uint32_t> View::RowNumbers() const {
  if (!inOrder_) return order_;
  std::vector<std::uint32_t> numbers(rows_->ViewCount());
  for (std::size_t i = 0; i < numbers.size(); ++i) numbers[i] = static_cast<std::uint32_t>(rows_->RowAt(i));
  return numbers;
}

bool View::IsSummary(std::size_t row) const {
  return summaryField_ && rows_->DoubleAt(*summaryField_, row) > 0;
}

bool View::Matches(std::size_t row, const std::string& text, const std::vector<std::size_t>& columns,
                   std::size_t* column) const {
  for (const std::size_t candidate : columns) {
    if (platform::ToLowerAscii(CellText(*rows_, candidate, row)).find(text) == std::string::npos) continue;
    if (column != nullptr) *column = candidate;
    return true;
  }
  return false;
}

std::vector<std::uint32_t> View::Chosen(const std::string& text,
                                        const std::vector<std::size_t>& columns) const {
  std::vector<std::uint32_t> chosen;
  chosen.reserve(rows_->ViewCount());
  bool blockHasRows = false;  // before the filter
  bool blockKeepsRows = false;
  for (std::size_t i = 0; i < rows_->ViewCount(); ++i) {
    const std::size_t row = rows_->RowAt(i);
    if (IsSummary(row)) {
      // A total right behind another one sums all that came before.
      const bool stays = blockHasRows ? blockKeepsRows : !chosen.empty();
      if (stays || text.empty()) chosen.push_back(static_cast<std::uint32_t>(row));
      blockHasRows = false;
      blockKeepsRows = false;
      continue;
    }
    blockHasRows = true;
    if (!text.empty() && !Matches(row, text, columns, nullptr)) continue;
    blockKeepsRows = true;
    chosen.push_back(static_cast<std::uint32_t>(row));
  }
  return chosen;
}

int View::Compare(std::size_t column, std::size_t left, std::size_t right) const {
  const bool leftNull = rows_->IsNullAt(column, left);
  const bool rightNull = rows_->IsNullAt(column, right);
  if (leftNull || rightNull) return Order(!leftNull, !rightNull);
  switch (rows_->Fields()[column].type) {
    case FieldType::kText:
    case FieldType::kWideText:
      return Order(rows_->TextAt(column, left), rows_->TextAt(column, right));
    case FieldType::kCurrency:
      return Order(rows_->CurrencyAt(column, left), rows_->CurrencyAt(column, right));
    case FieldType::kDate:
      return Order(rows_->DateAt(column, left), rows_->DateAt(column, right));
    case FieldType::kBoolean:
      return Order(rows_->BooleanAt(column, left), rows_->BooleanAt(column, right));
    default:
      return Order(rows_->DoubleAt(column, left), rows_->DoubleAt(column, right));
  }
}

void View::SortBlocks(const std::vector<SortKey>& sort) {
  auto before = [&](std::uint32_t left, std::uint32_t right) {
    for (const SortKey& key : sort) {
      const int order = Compare(key.column, left, right);
      if (order != 0) return key.descending ? order > 0 : order < 0;
    }
    return false;
  };
  auto start = order_.begin();
  while (start != order_.end()) {
    const auto end = std::find_if(start, order_.end(), [this](std::uint32_t row) { return IsSummary(row); });
    std::stable_sort(start, end, before);
    start = end == order_.end() ? end : end + 1;
  }
}

void View::Set(const std::vector<SortKey>& sort, std::string_view text,
               const std::vector<std::size_t>& columns) {
  inOrder_ = sort.empty() && text.empty();
  order_.clear();
  if (inOrder_) return;
  order_ = Chosen(platform::ToLowerAscii(text), columns);
  if (!sort.empty()) SortBlocks(sort);
}

std::optional<Found> View::Find(std::string_view text, std::size_t start, bool back,
                                const std::vector<std::size_t>& columns) const {
  const std::string wanted = platform::ToLowerAscii(text);
  const std::size_t count = Count();
  if (wanted.empty() || count == 0) return std::nullopt;
  Found found;
  if (back) {
    for (std::size_t i = std::min(start + 1, count); i > 0; --i) {
      found.position = i - 1;
      if (Matches(RowAt(i - 1), wanted, columns, &found.column)) return found;
    }
    return std::nullopt;
  }
  for (std::size_t i = start; i < count; ++i) {
    found.position = i;
    if (Matches(RowAt(i), wanted, columns, &found.column)) return found;
  }
  return std::nullopt;
}

ColumnSum View::Sum(std::size_t column, std::size_t start, std::size_t count) const {
  ColumnSum sum;
  const FieldType type = rows_->Fields()[column].type;
  if (!IsNumber(type)) return sum;
  Currency money;
  double total = 0;
  const std::size_t end = std::min(Count(), start + std::min(count, Count()));
  for (std::size_t i = start; i < end; ++i) {
    const std::size_t row = RowAt(i);
    if (rows_->IsNullAt(column, row)) continue;
    ++sum.count;
    if (type == FieldType::kCurrency) {
      money += rows_->CurrencyAt(column, row);
    } else {
      total += rows_->DoubleAt(column, row);
    }
  }
  if (type == FieldType::kCurrency) total = money.ToDouble();
  sum.sum = type == FieldType::kCurrency ? money.ToText() : platform::NumberToText(total);
  if (sum.count > 0) sum.average = total / static_cast<double>(sum.count);
  return sum;
}

}  // namespace browser
