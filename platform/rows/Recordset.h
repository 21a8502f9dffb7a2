#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/object/OperationTable.h"
#include "platform/rows/Field.h"
#include "platform/rows/RowStore.h"

namespace platform {

// A client-side table of rows with a current position. It is built with AppendField and Open, filled with
// AddNew … Update or, many rows at a time, with a RowAppender (RowAppender.h), and walked with the cursor or,
// by hosts, with RowAt and the typed readers.
//
// - Field names are known without regard to case. FieldIndex resolves one to its column, counted from 0;
//   every access takes the column or the name.
// - The cursor stands before the first row (the beginning), on a row, or after the last one (the end). A
//   recordset that has rows begins on the first; without rows it is at its beginning and its end at once.
// - Failures: kNoCurrentRow for a read, a write or a move that needs a row, kUnknownField, kObjectClosed
//   before Open and after Close. A value that does not fit its field raises kTypeMismatch or kOverflow with
//   the field's name and leaves the field as it was; a text longer than the field's width is such a value
//   (kOverflow): nothing is cut in silence. CutToWidth (Field.h) cuts where a contract wants that.
// - Moving, searching, filtering and AddNew first take over what was written, as Update does.
// - Filters and cursors belong to one recordset; rows, columns and texts are shared with its clones.
class Recordset final : public Exposed<Recordset> {
 public:
  Recordset();
  ~Recordset() override;

  void AppendField(std::string_view name, FieldType type, std::size_t width = 0);
  // From here on rows may be added, and no more fields.
  void Open();
  // Drops a row that is being added. Nothing works afterwards; clones are not touched.
  void Close();
  bool IsOpen() const { return state_ == State::kOpen; }

  // Where the texts of the rows are kept. Recordsets that share them hand texts on by their ids (RowText.h);
  // only one without rows can be told where, otherwise it raises kInvalidCall.
  const std::shared_ptr<TextStore>& Texts() const { return rows_->Texts(); }
  void KeepTextsIn(const std::shared_ptr<TextStore>& texts) { rows_->KeepTextsIn(texts); }

  const std::vector<Field>& Fields() const;
  std::int32_t FieldCount() const { return static_cast<std::int32_t>(Fields().size()); }
  std::size_t FieldIndex(std::string_view name) const;
  std::optional<std::size_t> FindField(std::string_view name) const;

  bool AtEnd() const;
  bool AtBeginning() const;
  // The rows that the filter lets through.
  std::int32_t RecordCount() const { return static_cast<std::int32_t>(ViewCount()); }

  void MoveFirst();
  void MoveLast();
  // From the last row to the end; at the end it raises kNoCurrentRow.
  void MoveNext() { Move(1); }
  void MovePrevious() { Move(-1); }
  // Stops at the end or the beginning when there are fewer rows; raises when it stands there already.
  void Move(std::int32_t rows);
  // From 1; 0 at the beginning, -1 at the end and without rows.
  std::int32_t AbsolutePosition() const;
  void SetAbsolutePosition(std::int32_t position);
  // Names the current row for this recordset and its clones; stays good while rows are added.
  Variant Bookmark() const;
  void SetBookmark(const Variant& bookmark);

  // Goes to the next row that meets one comparison (Condition.h), the current row included unless `skip`
  // rows are passed over first; begins at the bookmark `start` when one is given. To the end without a hit.
  void Find(const std::string& condition, const std::optional<std::int32_t>& skip = std::nullopt,
            const std::optional<Variant>& start = std::nullopt);
  // Comparisons joined by AND; "" shows all rows. Then stands at the first row. Rows that are added or
  // changed here stay visible until the filter is set again; a clone's additions show if they meet it.
  std::string Filter() const;
  void SetFilter(const std::string& condition);

  // Begins a row of nulls; writes go to it until Update makes it the current row or CancelUpdate drops it.
  // Raises kInvalidCall while a clone or a RowAppender is adding a row.
  void AddNew();
  void Update();
  // Drops the row that is being added, or what was written to the current row since it became current.
  void CancelUpdate();
  bool IsAdding() const { return adding_; }

  // The same rows with a cursor of its own, at the first row and without a filter.
  Ref<Recordset> Clone() const;
  // The same for `count` rows from row number `first` on: what a filter or a clone of it shows stays among
  // them. For a server that reads much at once and hands it out part by part.
  Ref<Recordset> Slice(std::size_t first, std::size_t count) const;
  // Removes the rows from number `rowCount` on, in all clones. For a writer that takes back what it added.
  void TruncateTo(std::size_t rowCount);

  // A field of the current row, or of the row that is being added. Null reads as Variant(Null{}).
  Variant Value(std::size_t column) const;
  Variant Value(std::string_view name) const { return Value(FieldIndex(name)); }
  // Converts to the field's type; Null makes the field null.
  void SetValue(std::size_t column, const Variant& value);
  void SetValue(std::string_view name, const Variant& value) { SetValue(FieldIndex(name), value); }
  // The same without a Variant.
  void SetText(std::size_t column, std::string_view text) {
    rows_->SetText(column, PlaceToWrite(column), text);
  }
  void SetInteger(std::size_t column, std::int32_t number) {
    rows_->SetInteger(column, PlaceToWrite(column), number);
  }
  void SetDouble(std::size_t column, double number) {
    rows_->SetDouble(column, PlaceToWrite(column), number);
  }
  void SetCurrency(std::size_t column, Currency amount) {
    rows_->SetCurrency(column, PlaceToWrite(column), amount);
  }
  void SetDate(std::size_t column, Date date) { rows_->SetDate(column, PlaceToWrite(column), date); }
  void SetBoolean(std::size_t column, bool flag) { rows_->SetBoolean(column, PlaceToWrite(column), flag); }
  void SetNull(std::size_t column) { rows_->SetNull(column, PlaceToWrite(column)); }

  // Reading without the cursor. ViewCount rows pass the filter; RowAt gives the row number of one of them
  // (from 0), CurrentRow that of the cursor; the readers take row numbers. A null reads as "", 0, the first
  // date or false. A number field reads as any number type; other mixtures raise kTypeMismatch.
  std::size_t ViewCount() const {
    if (state_ != State::kOpen || view_) return ViewCountUnderFilter();
    const std::size_t last = std::min(last_, rows_->RowCount());
    return last - std::min(first_, last);
  }
  std::size_t RowAt(std::size_t position) const {
    if (view_ || position >= ViewCount()) return RowUnderFilter(position);
    return first_ + position;
  }
  std::size_t CurrentRow() const;
  bool IsNullAt(std::size_t column, std::size_t row) const;
  std::string_view TextAt(std::size_t column, std::size_t row) const;
  std::int32_t IntegerAt(std::size_t column, std::size_t row) const;
  double DoubleAt(std::size_t column, std::size_t row) const;
  Currency CurrencyAt(std::size_t column, std::size_t row) const;
  Date DateAt(std::size_t column, std::size_t row) const;
  bool BooleanAt(std::size_t column, std::size_t row) const;
  Variant ValueAt(std::size_t column, std::size_t row) const;

  // What the shared rows and texts take from the heap.
  std::size_t Bytes() const { return rows_->Bytes(); }

  // The late-bound forms: a field is a name or its position from 0, a type its name (Field.h).
  void AppendFieldByName(const std::string& name, const std::string& type,
                         const std::optional<std::int32_t>& size);
  Variant FieldValue(const Variant& field) const;
  void SetFieldValue(const Variant& field, const Variant& value);
  std::string FieldName(const Variant& field) const;
  std::string FieldTypeName(const Variant& field) const;
  std::int32_t FieldSize(const Variant& field) const;

  static constexpr std::string_view kClassName = "TOVPlatform.Recordset";
  static constexpr auto kOperations = Operations(
      Method<&Recordset::AppendFieldByName>("AppendField", "Name", "Type", "Size"),
      Method<&Recordset::Open>("Open"), Method<&Recordset::Close>("Close"),
      PropertyGet<&Recordset::FieldCount>("FieldCount"),
      PropertyGet<&Recordset::FieldName>("FieldName", "Field"),
      PropertyGet<&Recordset::FieldTypeName>("FieldType", "Field"),
      PropertyGet<&Recordset::FieldSize>("FieldSize", "Field"), PropertyGet<&Recordset::AtEnd>("EOF"),
      PropertyGet<&Recordset::AtBeginning>("BOF"), PropertyGet<&Recordset::RecordCount>("RecordCount"),
      Method<&Recordset::MoveFirst>("MoveFirst"), Method<&Recordset::MoveNext>("MoveNext"),
      Method<&Recordset::MovePrevious>("MovePrevious"), Method<&Recordset::MoveLast>("MoveLast"),
      Method<&Recordset::Move>("Move", "Rows"), PropertyGet<&Recordset::AbsolutePosition>("AbsolutePosition"),
      PropertyPut<&Recordset::SetAbsolutePosition>("AbsolutePosition", "Position"),
      PropertyGet<&Recordset::Bookmark>("Bookmark"),
      PropertyPut<&Recordset::SetBookmark>("Bookmark", "Value"),
      Method<&Recordset::Find>("Find", "Condition", "Skip", "Start"),
      PropertyGet<&Recordset::Filter>("Filter"), PropertyPut<&Recordset::SetFilter>("Filter", "Condition"),
      Method<&Recordset::AddNew>("AddNew"), Method<&Recordset::Update>("Update"),
      Method<&Recordset::CancelUpdate>("CancelUpdate"), Method<&Recordset::Clone>("Clone"),
      PropertyGet<&Recordset::FieldValue>("Value", "Field"),
      PropertyPut<&Recordset::SetFieldValue>("Value", "Field", "Value"));

 private:
  friend class RowAppender;
  friend class RowReader;

  enum class State { kBuilding, kOpen, kClosed };
  struct View;      // the filter and the rows that meet it
  struct OldCell {  // a cell as it was before it was written
    std::size_t column = 0;
    std::size_t row = 0;
    Variant value;
  };

  explicit Recordset(std::shared_ptr<RowStore> rows);

  // What is left of ViewCount and RowAt: rows under a filter, and refusals.
  std::size_t ViewCountUnderFilter() const;
  std::size_t RowUnderFilter(std::size_t position) const;
  void MakeView(const std::string& condition);
  void RequireOpen() const;
  void RequireColumn(std::size_t column) const;
  void RequireCell(std::size_t column, std::size_t row) const {
    const bool good = state_ == State::kOpen && column < rows_->Fields().size() && row < rows_->RowCount();
    if (!good) RaiseNoCell(column, row);
  }
  void RequireRow(std::size_t row) const {
    if (state_ != State::kOpen || row >= rows_->RowCount()) RaiseNoCell(0, row);
  }
  [[noreturn]] void RaiseNoCell(std::size_t column, std::size_t row) const;
  void TakeOver();
  std::int64_t PositionOf(const Variant& bookmark) const;
  RowStore::Place PlaceToWrite(std::size_t column);
  std::size_t ColumnOf(const Variant& field) const;

  State state_ = State::kBuilding;
  bool adding_ = false;
  std::shared_ptr<RowStore> rows_;
  std::int64_t position_ = 0;   // in the view; kBefore, kAfter outside of it
  std::unique_ptr<View> view_;  // null when all rows of the stretch show
  std::size_t first_ = 0;       // of the rows that may show; all but in a slice
  std::size_t last_ = std::numeric_limits<std::size_t>::max();  // behind them
  std::vector<OldCell> oldCells_;
};

}  // namespace platform
