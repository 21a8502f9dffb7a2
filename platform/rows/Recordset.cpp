// The cursor is a position in the view: among all rows, or among the rows that a filter let through. A view
// with a filter is brought up to date when it is asked, so that rows a clone or an appender has added
// meanwhile are in it.
#include "platform/rows/Recordset.h"

#include <algorithm>
#include <limits>

#include "platform/rows/Condition.h"

namespace platform {
namespace {

constexpr std::int64_t kBefore = -1;
constexpr std::int64_t kAfter = std::numeric_limits<std::int64_t>::max();

[[noreturn]] void Raise(ErrorNumber number, const std::string& description) {
  throw Error(number, "Recordset", description);
}

[[noreturn]] void RaiseNoCurrentRow() {
  Raise(ErrorNumber::kNoCurrentRow, "no current row: the recordset stands at its beginning or end");
}

}  // namespace

struct Recordset::View {
  Condition condition;
  std::string text;
  std::size_t first = 0;            // of the rows that may be in it
  std::size_t last = 0;             // behind them
  std::vector<std::uint32_t> rows;  // ascending
  std::size_t seen = 0;             // rows of the store that were asked, or lie before the first
  std::size_t removals = 0;

  void CatchUp(const RowStore& store) {
    if (removals != store.Removals()) {
      rows.clear();
      seen = first;
      removals = store.Removals();
    }
    for (; seen < std::min(last, store.RowCount()); ++seen) {
      if (condition.Matches(store, seen)) rows.push_back(static_cast<std::uint32_t>(seen));
    }
  }
};

Recordset::Recordset() : rows_(std::make_shared<RowStore>()) {}

Recordset::Recordset(std::shared_ptr<RowStore> rows) : state_(State::kOpen), rows_(std::move(rows)) {}

Recordset::~Recordset() {
  if (adding_) CancelUpdate();
}

void Recordset::RequireOpen() const {
  if (state_ == State::kOpen) return;
  Raise(ErrorNumber::kObjectClosed,
        state_ == State::kClosed ? "the recordset is closed" : "the recordset is not open yet");
}

void Recordset::AppendField(std::string_view name, FieldType type, std::size_t width) {
  if (state_ == State::kClosed) RequireOpen();
  if (state_ == State::kOpen) {
    Raise(ErrorNumber::kInvalidCall,
          "field " + std::string(name) + ": an open recordset takes no more fields");
  }
  if (name.empty()) Raise(ErrorNumber::kBadArgument, "a field needs a name");
  if (rows_->FindField(name) != rows_->Fields().size()) {
    Raise(ErrorNumber::kKeyExists, "there is a field " + std::string(name) + " already");
  }
  rows_->AppendField({.name = std::string(name), .type = type, .width = width});
}

void Recordset::Open() {
  if (state_ == State::kClosed) RequireOpen();
  if (state_ == State::kOpen) Raise(ErrorNumber::kInvalidCall, "the recordset is open already");
  if (rows_->Fields().empty()) Raise(ErrorNumber::kInvalidCall, "a recordset needs a field before it opens");
  state_ = State::kOpen;
}

void Recordset::Close() {
  RequireOpen();
  if (adding_) CancelUpdate();
  state_ = State::kClosed;
  view_.reset();
  oldCells_.clear();
  rows_ = std::make_shared<RowStore>();
}

Ref<Recordset> Recordset::Clone() const { return Slice(first_, last_ - first_); }

Ref<Recordset> Recordset::Slice(std::size_t first, std::size_t count) const {
  RequireOpen();
  Ref<Recordset> slice(new Recordset(rows_));
  slice->first_ = std::max(first, first_);
  slice->last_ = count < last_ - std::min(first, last_) ? first + count : last_;
  return slice;
}

const std::vector<Field>& Recordset::Fields() const {
  if (state_ == State::kClosed) RequireOpen();
  return rows_->Fields();
}

std::optional<std::size_t> Recordset::FindField(std::string_view name) const {
  if (state_ == State::kClosed) RequireOpen();
  const std::size_t column = rows_->FindField(name);
  if (column == rows_->Fields().size()) return std::nullopt;
  return column;
}

std::size_t Recordset::FieldIndex(std::string_view name) const {
  const std::optional<std::size_t> column = FindField(name);
  if (!column) Raise(ErrorNumber::kUnknownField, "the recordset has no field " + std::string(name));
  return *column;
}

std::size_t Recordset::ViewCountUnderFilter() const {
  RequireOpen();
  view_->CatchUp(*rows_);
  return view_->rows.size();
}

std::size_t Recordset::RowUnderFilter(std::size_t position) const {
  if (position >= ViewCount()) RaiseNoCurrentRow();
  return view_->rows[position];
}

std::size_t Recordset::CurrentRow() const {
  // The beginning turns into a position beyond every row.
  return RowAt(static_cast<std::size_t>(position_));
}

bool Recordset::AtEnd() const {
  const std::size_t count = ViewCount();
  return !adding_ && (count == 0 || position_ >= static_cast<std::int64_t>(count));
}

bool Recordset::AtBeginning() const {
  const std::size_t count = ViewCount();
  return !adding_ && (count == 0 || position_ < 0);
}

void Recordset::TakeOver() {
  RequireOpen();
  if (adding_) Update();
  oldCells_.clear();
}

void Recordset::MoveFirst() {
  TakeOver();
  if (ViewCount() == 0) RaiseNoCurrentRow();
  position_ = 0;
}

void Recordset::MoveLast() {
  TakeOver();
  if (ViewCount() == 0) RaiseNoCurrentRow();
  position_ = static_cast<std::int64_t>(ViewCount()) - 1;
}

void Recordset::Move(std::int32_t rows) {
  TakeOver();
  const auto count = static_cast<std::int64_t>(ViewCount());
  const std::int64_t from = std::min(position_, count);
  if (count == 0 || (rows > 0 && from == count) || (rows < 0 && from < 0)) RaiseNoCurrentRow();
  const std::int64_t target = from + rows;
  position_ = target < 0 ? kBefore : target >= count ? kAfter : target;
}

std::int32_t Recordset::AbsolutePosition() const {
  if (AtEnd()) return -1;
  return static_cast<std::int32_t>(position_ + 1);
}

void Recordset::SetAbsolutePosition(std::int32_t position) {
  TakeOver();
  if (position < 1 || static_cast<std::size_t>(position) > ViewCount()) {
    Raise(ErrorNumber::kBadArgument,
          "there is no row " + std::to_string(position) + " among " + std::to_string(ViewCount()));
  }
  position_ = position - 1;
}

Variant Recordset::Bookmark() const { return static_cast<std::int32_t>(CurrentRow() + 1); }

std::int64_t Recordset::PositionOf(const Variant& bookmark) const {
  const auto* number = bookmark.As<std::int32_t>();
  const std::int64_t row = number == nullptr ? -1 : std::int64_t{*number} - 1;
  const auto count = static_cast<std::int64_t>(ViewCount());
  const auto first = static_cast<std::int64_t>(first_);
  if (!view_ && row >= first && row < first + count) return row - first;
  if (view_) {
    const auto found =
        std::ranges::lower_bound(view_->rows, row, {}, [](std::uint32_t r) { return std::int64_t{r}; });
    if (found != view_->rows.end() && *found == row) return found - view_->rows.begin();
  }
  Raise(ErrorNumber::kBadArgument, "the bookmark names no row that can be seen");
}

void Recordset::SetBookmark(const Variant& bookmark) {
  TakeOver();
  position_ = PositionOf(bookmark);
}

void Recordset::Find(const std::string& condition, const std::optional<std::int32_t>& skip,
                     const std::optional<Variant>& start) {
  TakeOver();
  const Condition wanted = Condition::Parse(condition, *rows_);
  if (wanted.ComparisonCount() != 1) {
    Raise(ErrorNumber::kBadArgument, "condition '" + condition + "': Find takes one comparison");
  }
  if (!start) CurrentRow();
  const std::int64_t from = (start ? PositionOf(*start) : position_) + skip.value_or(0);
  if (from < 0) Raise(ErrorNumber::kBadArgument, "Find cannot begin before the first row");
  const std::size_t count = ViewCount();
  for (auto at = static_cast<std::size_t>(from); at < count; ++at) {
    if (!wanted.Matches(*rows_, RowAt(at))) continue;
    position_ = static_cast<std::int64_t>(at);
    return;
  }
  position_ = kAfter;
}

std::string Recordset::Filter() const {
  RequireOpen();
  return view_ ? view_->text : std::string();
}

void Recordset::SetFilter(const std::string& condition) {
  TakeOver();
  if (TrimBlanks(condition).empty()) {
    view_ = nullptr;
  } else {
    MakeView(condition);
  }
  position_ = 0;
}

void Recordset::MakeView(const std::string& condition) {
  auto view = std::make_unique<View>();
  if (!condition.empty()) view->condition = Condition::Parse(condition, *rows_);
  view->text = condition;
  view->first = first_;
  view->last = last_;
  view->seen = first_;
  view->removals = rows_->Removals();
  view->CatchUp(*rows_);
  view_ = std::move(view);
}

void Recordset::AddNew() {
  TakeOver();
  rows_->ClaimTail();
  adding_ = true;
}

void Recordset::Update() {
  RequireOpen();
  oldCells_.clear();
  if (!adding_) {
    CurrentRow();
    return;
  }
  const std::size_t row = rows_->RowCount();
  // A row that is added to a slice shows in it, wherever it stands.
  const bool isSlice = first_ > 0 || last_ != std::numeric_limits<std::size_t>::max();
  if (!view_ && isSlice) MakeView("");
  if (view_) view_->CatchUp(*rows_);
  rows_->AppendTail();
  rows_->ReleaseTail();
  adding_ = false;
  if (view_) {
    view_->rows.push_back(static_cast<std::uint32_t>(row));
    view_->seen = rows_->RowCount();
  }
  position_ = static_cast<std::int64_t>(ViewCount()) - 1;
}

void Recordset::CancelUpdate() {
  RequireOpen();
  if (adding_) {
    rows_->DropTail();
    rows_->ReleaseTail();
    adding_ = false;
  }
  for (const OldCell& old : oldCells_) {
    if (old.row < rows_->RowCount()) rows_->SetValue(old.column, rows_->At(old.row), old.value);
  }
  oldCells_.clear();
}

void Recordset::TruncateTo(std::size_t rowCount) {
  RequireOpen();
  if (adding_) CancelUpdate();
  oldCells_.clear();
  rows_->ClaimTail();
  rows_->ReleaseTail();
  rows_->TruncateTo(rowCount);
}

}  // namespace platform
