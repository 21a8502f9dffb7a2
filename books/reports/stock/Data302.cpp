#include "books/reports/stock/Data302.h"

#include "books/database/Connection.h"
#include "books/reports/stock/FigureFields.h"
#include "books/reports/stock/InstantStock.h"

namespace books::reports {
namespace {

using platform::Currency;
using platform::FieldType;
using platform::Recordset;
using platform::Ref;
using platform::RowAppender;

struct BandField {
  std::string_view name;
  FieldType type;
  bool ordinaryOnly = false;
};

constexpr BandField kBand[] = {
    {"FQty", FieldType::kDouble},
    {"FComplexQtyDis", FieldType::kText},
    {"FSecQty", FieldType::kDouble},
    {.name = "FAvgBal", .type = FieldType::kDouble, .ordinaryOnly = true},
    {.name = "FBal", .type = FieldType::kCurrency, .ordinaryOnly = true},
};

struct Band {
  std::size_t first = 0;  // column
  bool used = false;
  bool ordinary = true;
};

std::string PrefixOf(const Warehouse& warehouse) { return "S" + std::to_string(warehouse.id); }

std::string WithoutCommas(std::string_view name) {
  std::string text;
  for (const char letter : name) {
    if (letter == ',') {
      text += "，";
    } else {
      text += letter;
    }
  }
  return text;
}

class BandRows final : public StockRowSink {
 public:
  BandRows(const InstantStock& stock, Recordset& rows) : leading_(stock, rows) {
    sum_ = {.first = rows.Fields().size(), .used = true, .ordinary = true};
    for (const BandField& field : kBand) rows.AppendField(std::string(field.name) + "Sum", field.type);
    const std::vector<bool> used = stock.Used();
    for (std::size_t i = 0; i < used.size(); ++i) {
      const Warehouse& warehouse = stock.Warehouses()[i];
      const Band band{.first = rows.Fields().size(), .used = used[i], .ordinary = warehouse.IsOrdinary()};
      bands_.push_back(band);
      if (!band.used) continue;
      for (const BandField& field : kBand) {
        if (band.ordinary || !field.ordinaryOnly) {
          rows.AppendField(PrefixOf(warehouse) + std::string(field.name), field.type);
        }
      }
    }
    rows.Open();
    to_.emplace(rows);
  }

  void Row(const StockRow& row, std::span<const Placed> places) override {
    leading_.SetRow(*to_, row);
    Figures sum;
    for (const Placed& placed : places) {
      sum += placed.figures;
      Set(bands_[placed.warehouse], placed.figures, row.item);
    }
    Set(sum_, sum, row.item);
    to_->CommitRow();
  }

  void Sum(const SumRow& row) override {
    leading_.SetSum(*to_, row);
    Figures sum;
    for (std::size_t i = 0; i < bands_.size(); ++i) {
      sum += row.byWarehouse[i];
      if (bands_[i].used && !row.byWarehouse[i].IsZero()) Set(bands_[i], row.byWarehouse[i], nullptr);
    }
    Set(sum_, sum, nullptr);
    to_->CommitRow();
  }

 private:
  // Without an item it is the band of a sum.
  void Set(const Band& band, const Figures& figures, const StockItem* item) {
    to_->SetDouble(band.first, AsQuantity(figures.quantity));
    if (item != nullptr) {
      to_->SetText(band.first + 1, WholeAndLoose(figures.quantity, item->packages, item->unit));
    }
    if (item == nullptr || !item->auxUnit.empty()) {
      to_->SetDouble(band.first + 2, AsQuantity(figures.auxQuantity));
    }
    if (!band.ordinary) return;
    if (item != nullptr && figures.valued != 0) {
      to_->SetDouble(band.first + 3, PriceOf(figures.amount, figures.valued));
    }
    to_->SetCurrency(band.first + 4, Currency::FromUnits(figures.amount));
  }

  InstantFields leading_;
  Band sum_;
  std::vector<Band> bands_;  // one a warehouse
  std::optional<RowAppender> to_;
};

void Join(std::string& list, std::string_view entry) {
  if (!list.empty()) list += ',';
  list += entry;
}

}  // namespace

Ref<platform::Vector> Data302::GetRptData(const std::string& /*props*/, platform::Variant& filter,
                                          platform::Variant& fields, platform::Variant& names,
                                          platform::Variant& types) {
  const database::Transaction onePicture(store_->Reading(), database::Transaction::Kind::kRead);
  const InstantStock stock(*store_, ReportFilter(filter));
  const auto rows = platform::MakeRef<Recordset>();
  {
    BandRows bands(stock, *rows);
    stock.Walk(bands);
  }
  std::string fieldList;
  std::string nameList;
  std::string typeList;
  const std::vector<bool> used = stock.Used();
  for (std::size_t i = 0; i < used.size(); ++i) {
    if (!used[i]) continue;
    const Warehouse& warehouse = stock.Warehouses()[i];
    Join(fieldList, PrefixOf(warehouse));
    Join(nameList, WithoutCommas(warehouse.name));
    Join(typeList, std::to_string(warehouse.type));
  }
  fields = fieldList;
  names = nameList;
  types = typeList;
  auto answer = platform::MakeRef<platform::Vector>();
  answer->Add(rows);
  return answer;
}

}  // namespace books::reports
