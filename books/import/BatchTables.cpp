// Batches and serial numbers. There can be as many of them as of bills, so they are looked up in the book and
// not remembered.
#include "books/import/Run.h"

namespace books::importer {
namespace {

using schema::BaseClass;

struct BatchRow {
  Reference item;
  std::string_view number;
  std::optional<platform::Date> productionDate;
  std::optional<platform::Date> expiryDate;
  std::optional<std::int32_t> shelfLifeDays;
  std::string_view note;
};
const std::vector<Column<BatchRow>>& BatchColumns() {
  static const std::vector<Column<BatchRow>> kColumns = {
      {.name = "item",
       .caption = "商品代码",
       .target = &BatchRow::item,
       .needed = true,
       .refersTo = BaseClass::kItem},
      {.name = "number", .caption = "批号", .target = &BatchRow::number, .needed = true},
      {.name = "production_date", .caption = "生产日期", .target = &BatchRow::productionDate},
      {.name = "expiry_date", .caption = "有效期至", .target = &BatchRow::expiryDate},
      {.name = "shelf_life_days",
       .caption = "保质期天数",
       .target = &BatchRow::shelfLifeDays,
       .least = 0,
       .most = 36500},
      {.name = "note", .caption = "备注", .target = &BatchRow::note},
  };
  return kColumns;
}

struct SerialRow {
  Reference item;
  std::string_view number;
  Reference property;
  std::string_view note;
};
const std::vector<Column<SerialRow>>& SerialColumns() {
  static const std::vector<Column<SerialRow>> kColumns = {
      {.name = "item",
       .caption = "商品代码",
       .target = &SerialRow::item,
       .needed = true,
       .refersTo = BaseClass::kItem},
      {.name = "number", .caption = "序列号", .target = &SerialRow::number, .needed = true},
      {.name = "property",
       .caption = "辅助属性",
       .target = &SerialRow::property,
       .refersTo = BaseClass::kAuxiliaryProperty},
      {.name = "note", .caption = "备注", .target = &SerialRow::note},
  };
  return kColumns;
}

// Batches and serial numbers of an item, by number.
class NumberTable {
 public:
  NumberTable(Run& run, std::string_view table)
      : run_(run),
        table_(table),
        firstNew_(run.LastId(table) + 1),
        next_(firstNew_),
        find_(run.connection.Prepare("SELECT id FROM " + std::string(table) +
                                     " WHERE item_id = ? AND number = ?")) {}

  // 0 for a new number, which then has the id Next(); nothing for one that stands in the file twice.
  std::optional<std::int64_t> Find(const Place& place, std::int64_t item, std::string_view number) {
    find_.Bind(item, number);
    const std::int64_t id = find_.Step() ? find_.Integer(0) : 0;
    find_.Reset();
    if (id < firstNew_) return id;
    run_.findings.Add(place, "number", number, "the number stands in the file twice for this item",
                      "take one row out");
    return std::nullopt;
  }
  std::int64_t Next() { return next_++; }
  // A refused row is remembered, so that those who name it are not reported too.
  void Refuse(std::optional<std::int64_t> item, std::string_view number) {
    run_.known.AddFaulty(table_, item.value_or(0), number);
  }

 private:
  Run& run_;
  std::string table_;
  std::int64_t firstNew_;
  std::int64_t next_;
  database::Statement find_;
};

void TakeBatch(Run& run, NumberTable& batches, BatchRow row, const Place& place) {
  if (!run.known.FindItem(*row.item)->batchManaged) {
    run.findings.Add(place, "item", {}, "the item is not kept by batch",
                     "write 1 into batch_managed in items.csv");
    batches.Refuse(row.item, row.number);
    return;
  }
  if (row.productionDate && row.expiryDate && *row.expiryDate < *row.productionDate) {
    run.findings.Add(place, "expiry_date", row.expiryDate->ToText(), "the batch expires before it was made",
                     "correct one of the days");
    batches.Refuse(row.item, row.number);
    return;
  }
  const std::optional<std::int64_t> known = batches.Find(place, *row.item, row.number);
  if (!known) return;
  if (*known == 0 && !row.shelfLifeDays) {
    database::Statement item =
        run.connection.Query("SELECT shelf_life_days FROM item WHERE id = ?", *row.item);
    if (item.Step()) row.shelfLifeDays = item.Int32(0);
  }
  if (row.productionDate && !row.expiryDate && row.shelfLifeDays.value_or(0) > 0) {
    row.expiryDate = row.productionDate->AddDays(*row.shelfLifeDays);
  }
  if (*known == 0) {
    ++run.Count(place.file).added;
    run.connection.Execute(
        "INSERT INTO batch (id, item_id, number, production_date, shelf_life_days, expiry_date, note) "
        "VALUES (?, ?, ?, ?, ?, ?, ?)",
        batches.Next(), *row.item, row.number, row.productionDate, row.shelfLifeDays.value_or(0),
        row.expiryDate, row.note);
    return;
  }
  ++run.Count(place.file).known;
  run.connection.Execute(
      "UPDATE batch SET production_date = COALESCE(?, production_date), "
      "shelf_life_days = COALESCE(?, shelf_life_days), expiry_date = COALESCE(?, expiry_date), "
      "note = CASE WHEN ? = '' THEN note ELSE ? END WHERE id = ?",
      row.productionDate, row.shelfLifeDays, row.expiryDate, row.note, row.note, *known);
}

void TakeSerial(Run& run, NumberTable& serials, const SerialRow& row, const Place& place) {
  if (!run.known.FindItem(*row.item)->serialManaged) {
    run.findings.Add(place, "item", {}, "the item has no serial numbers",
                     "write 1 into serial_managed in items.csv");
    serials.Refuse(row.item, row.number);
    return;
  }
  if (row.number.find(';') != std::string_view::npos) {
    run.findings.Add(place, "number", row.number, "a serial number cannot hold a semicolon", "correct it");
    serials.Refuse(row.item, row.number);
    return;
  }
  const std::optional<std::int64_t> known = serials.Find(place, *row.item, row.number);
  if (!known) return;
  if (*known == 0) {
    ++run.Count(place.file).added;
    run.connection.Execute("INSERT INTO serial (id, item_id, number, aux_id, note) VALUES (?, ?, ?, ?, ?)",
                           serials.Next(), *row.item, row.number, row.property, row.note);
    return;
  }
  ++run.Count(place.file).known;
  run.connection.Execute(
      "UPDATE serial SET aux_id = COALESCE(?, aux_id), note = CASE WHEN ? = '' THEN note ELSE ? END WHERE id "
      "= ?",
      row.property, row.note, row.note, *known);
}

}  // namespace

std::optional<Reference> FindBatch(Run& run, const Place& place, std::int64_t item, std::string_view number) {
  if (run.known.FindItem(item)->batchManaged != !number.empty()) {
    run.findings.Add(place, "batch", number,
                     number.empty() ? "the item is kept by batch" : "the item is not kept by batch",
                     number.empty() ? "name the batch" : "leave it empty");
    return std::nullopt;
  }
  if (number.empty()) return Reference();
  database::Statement found =
      run.connection.Query("SELECT id FROM batch WHERE item_id = ? AND number = ?", item, number);
  if (found.Step()) return Reference(found.Integer(0));
  if (!run.known.IsFaulty("batch", item, number) && !run.known.IsUnread("batches.csv")) {
    run.findings.Add(place, "batch", number, "the item has no such batch",
                     "correct it or add it to batches.csv");
  }
  return std::nullopt;
}

void ImportBatches(Run& run) {
  NumberTable batches(run, "batch");
  run.Read<BatchRow>("batches.csv", BatchColumns(), [&](const BatchRow& row, const Place& place, bool sound) {
    ++run.Count(place.file).rows;
    if (sound) {
      TakeBatch(run, batches, row, place);
    } else {
      batches.Refuse(row.item, row.number);
    }
  });
  NumberTable serials(run, "serial");
  run.Read<SerialRow>("serials.csv", SerialColumns(),
                      [&](const SerialRow& row, const Place& place, bool sound) {
                        ++run.Count(place.file).rows;
                        if (sound) {
                          TakeSerial(run, serials, row, place);
                        } else {
                          serials.Refuse(row.item, row.number);
                        }
                      });
}

}  // namespace books::importer
