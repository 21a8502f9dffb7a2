// A recordset and two clones against a model that does everything the slow and obvious way: random
// operations, and after each of them everything that can be seen is compared.
#include <random>

#include <gtest/gtest.h>

#include "platform/rows/Picture.h"
#include "tests/platform/Raised.h"

namespace platform {
namespace {

constexpr const char* kNames[] = {"bolt", "Bolt", "nut", "screw", "商品"};
constexpr const char* kFilters[] = {"",
                                    "FID > 50",
                                    "FName = 'BOLT'",
                                    "FName like '%t' AND FID <= 40",
                                    "FName <> 'nut' AND FID <> 7 AND FID < 90",
                                    "FID = 1000"};

struct ModelRow {
  int id = 0;
  std::optional<std::string> name;
};

bool Meets(const ModelRow& row, std::size_t filter) {
  const std::string name = row.name ? ToLowerAscii(*row.name) : "";
  switch (filter) {
    case 1:
      return row.id > 50;
    case 2:
      return name == "bolt";
    case 3:
      return row.name && name.ends_with("t") && row.id <= 40;
    case 4:
      return row.name && name != "nut" && row.id != 7 && row.id < 90;
    case 5:
      return false;
    default:
      return true;
  }
}

// One cursor of the model: the numbers of the rows that it sees, and where it stands among them: -1 at the
// beginning, the number of rows (or more) at the end.
struct ModelCursor {
  std::vector<std::size_t> seen;
  std::size_t asked = 0;
  std::size_t filter = 0;
  long position = 0;

  void CatchUp(const std::vector<ModelRow>& rows) {
    for (; asked < rows.size(); ++asked) {
      if (Meets(rows[asked], filter)) seen.push_back(asked);
    }
  }
  void SetFilter(std::size_t next, const std::vector<ModelRow>& rows) {
    *this = {.filter = next};
    CatchUp(rows);
  }
  bool OnRow() const { return position >= 0 && position < static_cast<long>(seen.size()); }
};

constexpr long kFar = 1L << 40U;

class Walk {
 public:
  explicit Walk(unsigned seed) : random_(seed) {
    Ref<Recordset> first = MakeRef<Recordset>();
    first->AppendField("FID", FieldType::kInt32);
    first->AppendField("FName", FieldType::kWideText, 5);
    first->Open();
    real_ = {first, first->Clone(), first->Clone()};
    model_.resize(real_.size());
  }

  void Step() {
    const std::size_t who = Pick(real_.size());
    Recordset& real = *real_[who];
    ModelCursor& model = model_[who];
    model.CatchUp(rows_);
    switch (Pick(9)) {
      case 0:
      case 1:
        return Add(real, model);
      case 2:
        return Move(real, model, static_cast<int>(Pick(7)) - 3);
      case 3:
        return Find(real, model);
      case 4:
        return Edit(real, model);
      case 5:
        return JumpTo(real, model);
      case 6:
        if (Pick(4) != 0) return;
        return Filter(real, model, Pick(std::size(kFilters)));
      case 7:
        if (Pick(20) != 0) return;
        return Truncate(real);
      default:
        return First(real, model);
    }
  }

  void Compare() {
    for (std::size_t i = 0; i < real_.size(); ++i) {
      SCOPED_TRACE("cursor " + std::to_string(i) + ", filter '" + kFilters[model_[i].filter] + "'");
      Recordset& real = *real_[i];
      ModelCursor& model = model_[i];
      model.CatchUp(rows_);
      ASSERT_EQ(real.RecordCount(), static_cast<int>(model.seen.size()));
      for (std::size_t at = 0; at < model.seen.size(); ++at) {
        const std::size_t row = real.RowAt(at);
        ASSERT_EQ(row, model.seen[at]);
        ASSERT_EQ(real.IntegerAt(0, row), rows_[row].id);
        ASSERT_EQ(real.IsNullAt(1, row), !rows_[row].name.has_value());
        ASSERT_EQ(real.TextAt(1, row), rows_[row].name.value_or(""));
      }
      const bool none = model.seen.empty();
      ASSERT_EQ(real.AtBeginning(), none || model.position < 0);
      ASSERT_EQ(real.AtEnd(), none || model.position >= static_cast<long>(model.seen.size()));
      if (model.OnRow()) {
        ASSERT_EQ(real.AbsolutePosition(), model.position + 1);
        ASSERT_EQ(real.Value("FID"), Variant(rows_[model.seen[static_cast<std::size_t>(model.position)]].id));
      }
    }
  }

 private:
  std::size_t Pick(std::size_t count) { return random_() % count; }
  long Count(const ModelCursor& model) const { return static_cast<long>(model.seen.size()); }
  void Refused(const std::function<void()>& action) {
    EXPECT_EQ(Raised(action).Number(), ErrorNumber::kNoCurrentRow);
  }

  void Add(Recordset& real, ModelCursor& model) {
    ModelRow row{.id = static_cast<int>(Pick(100)), .name = std::nullopt};
    if (Pick(4) != 0) row.name = kNames[Pick(std::size(kNames))];
    real.AddNew();
    real.SetValue("fid", row.id);
    if (row.name) real.SetText(1, *row.name);
    if (Pick(5) == 0) return real.CancelUpdate();
    real.Update();
    model.seen.push_back(rows_.size());
    rows_.push_back(row);
    model.asked = rows_.size();
    model.position = Count(model) - 1;
  }

  void Move(Recordset& real, ModelCursor& model, int by) {
    const long from = std::min(model.position, Count(model));
    if (model.seen.empty() || (by > 0 && from == Count(model)) || (by < 0 && from < 0)) {
      return Refused([&] { real.Move(by); });
    }
    real.Move(by);
    const long target = from + by;
    model.position = target < 0 ? -1 : target >= Count(model) ? kFar : target;
  }

  void Find(Recordset& real, ModelCursor& model) {
    const int wanted = static_cast<int>(Pick(100));
    const std::string condition = "FID>=" + std::to_string(wanted);
    const auto skip = static_cast<int>(Pick(2));
    if (!model.OnRow()) return Refused([&] { real.Find(condition); });
    real.Find(condition, skip);
    for (model.position += skip; model.OnRow(); ++model.position) {
      if (rows_[model.seen[static_cast<std::size_t>(model.position)]].id >= wanted) return;
    }
    model.position = kFar;
  }

  void Edit(Recordset& real, ModelCursor& model) {
    const int id = static_cast<int>(Pick(100));
    if (!model.OnRow()) return Refused([&] { real.SetInteger(0, id); });
    // The others' filters look at a row once, when they first see it.
    for (ModelCursor& other : model_) other.CatchUp(rows_);
    for (const Ref<Recordset>& other : real_) other->RecordCount();
    ModelRow& row = rows_[model.seen[static_cast<std::size_t>(model.position)]];
    real.SetInteger(0, id);
    real.SetNull(1);
    if (Pick(3) == 0) return real.CancelUpdate();
    if (Pick(2) == 0) real.Update();
    // What is not updated yet is taken over by the next operation of this cursor at the latest.
    real.Move(0);
    row = {.id = id, .name = std::nullopt};
  }

  void JumpTo(Recordset& real, ModelCursor& model) {
    if (model.seen.empty()) return;
    const auto to = static_cast<long>(Pick(model.seen.size()));
    if (Pick(2) == 0) {
      real.SetAbsolutePosition(static_cast<int>(to) + 1);
    } else {
      real.SetBookmark(static_cast<int>(model.seen[static_cast<std::size_t>(to)]) + 1);
    }
    model.position = to;
  }

  void Filter(Recordset& real, ModelCursor& model, std::size_t filter) {
    real.SetFilter(kFilters[filter]);
    model.SetFilter(filter, rows_);
  }

  void First(Recordset& real, ModelCursor& model) {
    if (model.seen.empty()) return Refused([&] { real.MoveFirst(); });
    real.MoveFirst();
    model.position = 0;
  }

  // Every filter asks all rows anew afterwards; positions stay.
  void Truncate(Recordset& real) {
    const std::size_t count = Pick(rows_.size() + 1);
    if (count == rows_.size()) return;
    real.TruncateTo(count);
    rows_.resize(count);
    for (ModelCursor& model : model_) {
      const long position = model.position;
      model.SetFilter(model.filter, rows_);
      model.position = position;
    }
  }

  std::mt19937 random_;
  std::vector<ModelRow> rows_;
  std::vector<Ref<Recordset>> real_;
  std::vector<ModelCursor> model_;
};

TEST(RecordsetModelTest, AgreesWithTheModel) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Walk walk(seed);
    for (int step = 0; step < 500; ++step) {
      walk.Step();
      walk.Compare();
      if (testing::Test::HasFailure()) FAIL() << "at step " << step;
    }
  }
}

}  // namespace
}  // namespace platform
