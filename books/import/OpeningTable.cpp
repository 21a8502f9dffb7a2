// What lay in stock when accounting began.
#include <array>
#include <set>

#include "books/import/Run.h"

namespace books::importer {
namespace {

using schema::BaseClass;

struct OpeningRow {
  Reference item;
  Reference warehouse;
  std::string_view batch;
  Reference property;
  std::optional<database::Quantity> quantity;
  std::optional<database::Quantity> auxQuantity;
  std::optional<platform::Currency> amount;
};
const std::vector<Column<OpeningRow>>& OpeningColumns() {
  static const std::vector<Column<OpeningRow>> kColumns = {
      {.name = "item",
       .caption = "商品代码",
       .target = &OpeningRow::item,
       .needed = true,
       .refersTo = BaseClass::kItem},
      {.name = "warehouse",
       .caption = "仓库代码",
       .target = &OpeningRow::warehouse,
       .needed = true,
       .refersTo = BaseClass::kWarehouse},
      {.name = "batch", .caption = "批号", .target = &OpeningRow::batch},
      {.name = "property",
       .caption = "辅助属性",
       .target = &OpeningRow::property,
       .refersTo = BaseClass::kAuxiliaryProperty},
      {.name = "quantity", .caption = "数量", .target = &OpeningRow::quantity, .needed = true},
      {.name = "aux_quantity", .caption = "辅助数量", .target = &OpeningRow::auxQuantity},
      {.name = "amount", .caption = "金额", .target = &OpeningRow::amount, .needed = true},
  };
  return kColumns;
}

// Posting looks at all opening rows each time that it is given some, so it is given many at once.
constexpr std::size_t kAtOnce = 50'000;

class OpeningFile {
 public:
  explicit OpeningFile(Run& run) : run_(run) {}

  void Take(const OpeningRow& row, const Place& place) {
    const std::optional<Reference> batch = FindBatch(run_, place, *row.item, row.batch);
    if (!batch) return;
    if (run_.known.IsGift(*row.warehouse) && *row.amount != platform::Currency()) {
      run_.findings.Add(place, "amount", row.amount->ToText(), "goods in a gift warehouse carry no amount",
                        "write 0");
      return;
    }
    const posting::OpeningStock opening{.itemId = *row.item,
                                        .warehouseId = *row.warehouse,
                                        .batchId = batch->value_or(0),
                                        .auxId = row.property.value_or(0),
                                        .quantity = *row.quantity,
                                        .auxQuantity = row.auxQuantity.value_or(database::Quantity()),
                                        .amount = *row.amount};
    if (IsInBook(opening, place)) return;
    if (run_.accounting->openFrom > run_.accounting->start) {
      run_.findings.Add(place, {}, {}, "the period in which accounting began is closed",
                        "leave new opening figures out");
      return;
    }
    if (!cells_.insert({opening.itemId, opening.warehouseId, opening.batchId, opening.auxId}).second) {
      ReportOther(place);
      return;
    }
    ++run_.Count(place.file).added;
    openings_.push_back(opening);
    if (openings_.size() >= kAtOnce) HandOn();
  }

  void HandOn() {
    if (!openings_.empty()) run_.posting->AddOpeningStock(openings_);
    openings_.clear();
    cells_.clear();
  }

 private:
  bool IsInBook(const posting::OpeningStock& opening, const Place& place) {
    database::Statement book = run_.connection.Query(
        "SELECT quantity, aux_quantity, amount FROM opening_stock "
        "WHERE item_id = ? AND warehouse_id = ? AND batch_id = ? AND aux_id = ?",
        opening.itemId, opening.warehouseId, opening.batchId, opening.auxId);
    if (!book.Step()) return false;
    ++run_.Count(place.file).known;
    const bool same = book.GetQuantity(0) == opening.quantity && book.GetQuantity(1) == opening.auxQuantity &&
                      book.Amount(2) == opening.amount;
    if (!same) ReportOther(place);
    return true;
  }

  void ReportOther(const Place& place) {
    run_.findings.Add(place, "quantity", {}, "these goods have other opening figures already",
                      "each item, warehouse, batch and property stands once, and figures in the book stay");
  }

  Run& run_;
  std::vector<posting::OpeningStock> openings_;  // not handed on yet
  std::set<std::array<std::int64_t, 4>> cells_;  // of these
};

}  // namespace

void ImportOpening(Run& run) {
  OpeningFile file(run);
  run.Read<OpeningRow>("opening_stock.csv", OpeningColumns(),
                       [&](const OpeningRow& row, const Place& place, bool sound) {
                         ++run.Count(place.file).rows;
                         if (!sound) return;
                         if (run.posting == nullptr) {
                           run.ReportNoAccounting(place);
                         } else {
                           file.Take(row, place);
                         }
                       });
  file.HandOn();
}

}  // namespace books::importer
