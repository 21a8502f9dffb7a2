// Columns of one value, of few values and of many, with gaps, written again and cut short: whatever form a
// column takes, it reads as a plain list does.
#include <algorithm>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/rows/RowAppender.h"
#include "platform/rows/RowReader.h"
#include "platform/rows/RowStore.h"

namespace platform {
namespace {

struct Habit {
  const char* name;
  std::uint32_t values;  // how many different ones
  std::uint32_t gaps;    // of a hundred cells
};

constexpr Habit kHabits[] = {{"one value", 1, 0},        {"one value and gaps", 1, 20},
                             {"few values", 7, 0},       {"few values and gaps", 7, 20},
                             {"nearly many", 33, 1},     {"many values", 5000, 0},
                             {"many and gaps", 5000, 5}, {"nothing", 1, 100}};
constexpr std::size_t kColumns = std::size(kHabits);

class RowModel {
 public:
  explicit RowModel(std::uint32_t seed) : random_(seed) {
    for (const Habit& habit : kHabits) rows_->AppendField(habit.name, FieldType::kInt32);
    for (const Habit& habit : kHabits)
      rows_->AppendField(std::string("text, ") + habit.name, FieldType::kText);
    rows_->Open();
  }

  std::uint32_t Below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_() % limit); }

  void Append(std::size_t count) {
    RowAppender row(*rows_);
    for (; count > 0; --count) {
      model_.emplace_back(kColumns);
      for (std::size_t column = 0; column < kColumns; ++column) {
        const std::optional<std::int32_t> value = AnyValue(column);
        model_.back()[column] = value;
        if (!value) continue;
        row.SetInteger(column, *value);
        row.SetText(kColumns + column, std::to_string(*value));
      }
      row.CommitRow();
    }
  }
  // The same column by column; a column with gaps may stay empty.
  void AppendAtOnce(std::size_t count) {
    RowAppender rows(*rows_);
    const std::size_t first = rows.AddRows(count);
    ASSERT_EQ(first, model_.size());
    model_.resize(first + count, std::vector<std::optional<std::int32_t>>(kColumns));
    for (std::size_t column = 0; column < kColumns; ++column) {
      const Habit& habit = kHabits[column];
      if (habit.gaps > 0 && Below(2) == 0) continue;
      for (std::size_t i = 0; i < count; ++i) {
        model_[first + i][column] = static_cast<std::int32_t>(Below(habit.values));
      }
      rows.Fill(column, first, count, [&](std::size_t i) { return *model_[first + i][column]; });
      std::string text;
      rows.Fill(kColumns + column, first, count, [&](std::size_t i) {
        text = std::to_string(*model_[first + i][column]);
        return RowText(text);
      });
    }
  }
  void WriteAgain(std::size_t count) {
    for (; count > 0; --count) {
      const std::size_t at = Below(static_cast<std::uint32_t>(model_.size()));
      const std::size_t column = Below(kColumns);
      rows_->SetAbsolutePosition(static_cast<std::int32_t>(at) + 1);
      model_[at][column] = AnyValue(column);
      if (model_[at][column]) {
        rows_->SetInteger(column, *model_[at][column]);
        rows_->SetText(kColumns + column, std::to_string(*model_[at][column]));
      } else {
        rows_->SetNull(column);
        rows_->SetNull(kColumns + column);
      }
      rows_->Update();
    }
  }
  void CutShort() {
    model_.resize(Below(static_cast<std::uint32_t>(model_.size())) + 1);
    rows_->TruncateTo(model_.size());
  }

  // What a reader of rows sees, for which a null is 0 or an empty text.
  void CompareReader() const {
    for (std::size_t row = 0; row < model_.size(); ++row) {
      const RowReader reader(*rows_, row);
      for (std::size_t column = 0; column < kColumns; ++column) {
        const std::optional<std::int32_t>& value = model_[row][column];
        ASSERT_EQ(reader.Integer(column), value.value_or(0)) << kHabits[column].name << " in row " << row;
        ASSERT_EQ(reader.KeptText(kColumns + column).View(), value ? std::to_string(*value) : std::string());
      }
    }
  }
  void Compare() const {
    ASSERT_EQ(rows_->ViewCount(), model_.size());
    for (std::size_t row = 0; row < model_.size(); ++row) {
      for (std::size_t column = 0; column < kColumns; ++column) {
        const std::optional<std::int32_t> value = model_[row][column];
        ASSERT_EQ(rows_->IsNullAt(column, row), !value) << kHabits[column].name << " in row " << row;
        ASSERT_EQ(rows_->IsNullAt(kColumns + column, row), !value);
        if (!value) continue;
        ASSERT_EQ(rows_->IntegerAt(column, row), *value) << kHabits[column].name << " in row " << row;
        ASSERT_EQ(rows_->TextAt(kColumns + column, row), std::to_string(*value));
      }
    }
  }

 private:
  std::optional<std::int32_t> AnyValue(std::size_t column) {
    const Habit& habit = kHabits[column];
    if (Below(100) < habit.gaps) return std::nullopt;
    return static_cast<std::int32_t>(Below(habit.values));
  }

  std::mt19937 random_;
  Ref<Recordset> rows_ = MakeRef<Recordset>();
  std::vector<std::vector<std::optional<std::int32_t>>> model_;
};

TEST(RowStoreTest, ReadsAsAPlainListDoes) {
  for (std::uint32_t seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RowModel rows(seed);
    for (int round = 0; round < 4; ++round) {
      rows.Append(1 + rows.Below(static_cast<std::uint32_t>(RowStore::kRowsPerGroup) * 3));
      rows.WriteAgain(rows.Below(200));
      ASSERT_NO_FATAL_FAILURE(rows.Compare());
      for (int stretch = 0; stretch < 8; ++stretch) {
        const std::size_t most = stretch % 2 == 0 ? 20 : RowStore::kRowsPerGroup * 2;
        ASSERT_NO_FATAL_FAILURE(rows.AppendAtOnce(rows.Below(static_cast<std::uint32_t>(most))));
      }
      ASSERT_NO_FATAL_FAILURE(rows.Compare());
      ASSERT_NO_FATAL_FAILURE(rows.CompareReader());
      if (rows.Below(2) == 0) rows.CutShort();
      ASSERT_NO_FATAL_FAILURE(rows.Compare());
    }
  }
}

TEST(RowStoreTest, AColumnTakesTheRoomThatItsValuesNeed) {
  const Ref<Recordset> same = MakeRef<Recordset>();
  const Ref<Recordset> many = MakeRef<Recordset>();
  for (const Ref<Recordset>& rows : {same, many}) {
    rows->AppendField("FQty", FieldType::kDouble);
    rows->Open();
    RowAppender row(*rows);
    for (std::size_t i = 0; i < RowStore::kRowsPerGroup * 16; ++i) {
      row.SetDouble(0, rows == same ? 1.5 : static_cast<double>(i));
      row.CommitRow();
    }
  }
  EXPECT_LT(same->Bytes() * 10, many->Bytes());
}

// Stretches of all lengths, over what was written before and over nothing, of few texts and of many.
TEST(RowStoreTest, AFilledStretchReadsAsIfEachRowWereSet) {
  for (const std::uint32_t texts : {1U, 5U, 200U}) {
    SCOPED_TRACE(std::to_string(texts) + " texts");
    std::mt19937 random(texts);
    auto below = [&random](std::size_t limit) { return static_cast<std::size_t>(random() % limit); };
    const Ref<Recordset> rows = MakeRef<Recordset>();
    for (const char* field : {"FTitle", "FNumber"}) rows->AppendField(field, FieldType::kText, 20);
    rows->Open();
    std::vector<std::string> model;
    RowAppender row(*rows);
    while (model.size() < 8000) {
      for (std::size_t count = below(texts == 200U ? 20 : 900); count > 0; --count) {
        const bool isSet = below(4) == 0;
        model.push_back(isSet ? "set " + std::to_string(below(texts)) : "");
        if (isSet) row.SetText(0, model.back());
        row.CommitRow();
      }
      const std::size_t first = model.size() - below(model.size() + 1);
      const std::string text = below(9) == 0 ? "" : "filled " + std::to_string(below(texts));
      row.FillText(0, first, text);
      row.FillText(1, 0, "all");
      for (std::size_t i = first; i < model.size(); ++i) model[i] = text;
    }
    for (std::size_t i = 0; i < model.size(); ++i) {
      ASSERT_EQ(rows->TextAt(0, i), model[i]) << "row " << i;
      ASSERT_EQ(rows->TextAt(1, i), "all") << "row " << i;
    }
  }
}

TEST(RowStoreTest, AFilledStretchIsCheckedAsARowIs) {
  const Ref<Recordset> rows = MakeRef<Recordset>();
  rows->AppendField("FTitle", FieldType::kText, 5);
  rows->AppendField("FCount", FieldType::kInt32);
  rows->Open();
  RowAppender row(*rows);
  for (int i = 0; i < 3; ++i) row.CommitRow();
  row.FillText(1, 1, "12");
  EXPECT_TRUE(rows->IsNullAt(1, 0));
  EXPECT_EQ(rows->IntegerAt(1, 2), 12) << "another type takes the text converted";
  row.FillText(0, 3, "no row, so nothing");
  EXPECT_THROW(row.FillText(0, 0, "longer"), Error);
  EXPECT_THROW(row.FillText(1, 0, "no number"), Error);
  EXPECT_TRUE(rows->IsNullAt(0, 0));
}

TEST(RowStoreTest, AStretchTakesAndGivesEveryType) {
  const Ref<Recordset> rows = MakeRef<Recordset>();
  constexpr FieldType kTypes[] = {FieldType::kInt16,   FieldType::kInt32,    FieldType::kDouble,
                                  FieldType::kNumeric, FieldType::kCurrency, FieldType::kDate,
                                  FieldType::kText};
  for (const FieldType type : kTypes) rows->AppendField(ToString(type), type);
  rows->Open();
  const Date day = Date::Of(2026, 2, 28);
  {
    RowAppender row(*rows);
    const std::size_t first = row.AddRows(3);
    row.Fill(0, first, 3, [](std::size_t i) { return static_cast<std::int16_t>(i); });
    row.Fill(1, first, 3, [](std::size_t i) { return static_cast<std::int32_t>(i) * 100'000; });
    row.Fill(2, first, 3, [](std::size_t i) { return static_cast<double>(i) / 2; });
    row.Fill(3, first, 3, [](std::size_t i) { return static_cast<std::int32_t>(i); });  // converted
    row.Fill(4, first, 3, [](std::size_t i) { return Currency::FromUnits(static_cast<std::int64_t>(i)); });
    row.Fill(5, first, 3, [&](std::size_t i) { return day.AddDays(static_cast<std::int32_t>(i)); });
    row.Fill(6, first, 3, [](std::size_t i) { return i == 1 ? RowText("text") : RowText(); });
  }
  EXPECT_EQ(rows->RecordCount(), 3);
  std::string read;
  for (const std::size_t i : {1U, 2U}) {
    const RowReader row(*rows, i);
    for (const std::size_t column : {0U, 1U}) read += std::to_string(row.Integer(column)) + " ";
    for (const std::size_t column : {1U, 2U, 3U, 4U}) read += std::to_string(row.Double(column)) + " ";
    read += std::to_string(row.Amount(4).Units()) + " " + row.Day(5).ToText() + " '" +
            std::string(row.KeptText(6).View()) + "'\n";
  }
  EXPECT_EQ(read,
            "1 100000 100000.000000 0.500000 1.000000 0.000100 1 2026-03-01 'text'\n"
            "2 200000 200000.000000 1.000000 2.000000 0.000200 2 2026-03-02 ''\n");
  EXPECT_THROW(RowReader(*rows, 1).Day(6), Error);
  EXPECT_THROW(RowReader(*rows, 1).KeptText(1), Error);
  EXPECT_THROW(RowReader(*rows, 3), Error);
}

TEST(RowStoreTest, RecordsetsThatShareTextsHandThemOnByTheirIds) {
  const Ref<Recordset> from = MakeRef<Recordset>();
  const Ref<Recordset> to = MakeRef<Recordset>();
  from->AppendField("FName", FieldType::kText);
  to->AppendField("FName", FieldType::kText, 8);
  for (const Ref<Recordset>& rows : {from, to}) rows->Open();
  to->KeepTextsIn(from->Texts());
  {
    RowAppender row(*from);
    row.SetText(0, "name");
    row.CommitRow();
    row.CommitRow();
  }
  const std::size_t texts = from->Texts()->Count();
  auto handOn = [&] {
    RowAppender row(*to);
    std::vector<RowText> read;
    for (std::size_t i = 0; i < from->ViewCount(); ++i) read.push_back(RowReader(*from, i).KeptText(0));
    row.Fill(0, row.AddRows(read.size()), read.size(), [&](std::size_t i) { return read[i]; });
  };
  handOn();
  EXPECT_EQ(to->TextAt(0, 0), "name");
  EXPECT_EQ(to->TextAt(0, 1), "");
  EXPECT_EQ(from->Texts()->Count(), texts) << "nothing was kept anew";
  EXPECT_EQ(to->TextAt(0, 0).data(), from->TextAt(0, 0).data()) << "it is the same text";
  {
    RowAppender row(*from);
    row.SetText(0, "a longer name");
    row.CommitRow();
  }
  EXPECT_THROW(handOn(), Error) << "a width is kept for shared texts, too";
  EXPECT_THROW(to->KeepTextsIn(std::make_shared<TextStore>()), Error) << "rows are there";
}

}  // namespace
}  // namespace platform
