#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "books/database/Connection.h"
#include "books/database/Quantity.h"
#include "books/schema/Codes.h"

namespace books::importer {

// Codes compare without regard to the case of ASCII letters, as the book's columns do.
struct CodeHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view code) const;
};
struct CodeEqual {
  using is_transparent = void;
  bool operator()(std::string_view left, std::string_view right) const;
};
template <class Value>
using ByCode = std::unordered_map<std::string, Value, CodeHash, CodeEqual>;

// What a code stands for. A row that is refused is known with id 0, so that rows which name it are left out
// without a complaint of their own.
struct Node {
  std::int64_t id = 0;
  bool detail = true;
  bool old = false;  // stood in the book before
};

struct ItemFacts {
  std::int64_t unitId = 0;  // base unit
  bool hasAuxUnit = false;
  bool batchManaged = false;
  bool serialManaged = false;
};

struct BillClassFacts {
  schema::BillClass id = schema::BillClass::kPurchaseReceipt;
  schema::BillKind kind = schema::BillKind::kReceipt;
};

// The book's base data as it grows during an import, by code. Its size goes with the base data, not with the
// documents.
class Known {
 public:
  explicit Known(database::Connection& connection);

  const Node* FindBase(schema::BaseClass baseClass, std::string_view number) const;
  void AddBase(schema::BaseClass baseClass, std::string_view number, const Node& node);
  std::int64_t NewBaseId() { return ++lastBaseId_; }

  const Node* FindUnit(std::string_view name) const;
  void AddUnit(std::string_view name, const Node& node) { units_.insert_or_assign(std::string(name), node); }

  const ItemFacts* FindItem(std::int64_t id) const;
  void AddItem(std::int64_t id, const ItemFacts& facts) { items_.insert_or_assign(id, facts); }
  // Base units in one of `unitId`; nothing when the item has no such unit.
  std::optional<database::Quantity> Factor(std::int64_t itemId, std::int64_t unitId) const;
  void AddFactor(std::int64_t itemId, std::int64_t unitId, database::Quantity factor);

  bool IsGift(std::int64_t warehouseId) const { return gifts_.contains(warehouseId); }
  void AddGift(std::int64_t warehouseId) { gifts_.insert(warehouseId); }

  // By number, "1020002", or by name, "采购收货".
  const BillClassFacts* FindBillClass(std::string_view text) const;

  // A file that could not be read at all, or in which something is wrong. What is missing in it need not be
  // missing, so it is not reported where it is named.
  void AddFaultyFile(std::string_view file, bool unread);
  bool IsUnread(std::string_view file) const { return unreadFiles_.contains(std::string(file)); }
  bool IsFaultyFile(std::string_view file) const { return faultyFiles_.contains(std::string(file)); }

  // Refused rows of the tables that are looked up in the book: batches, serial numbers, bills, orders.
  void AddFaulty(std::string_view table, std::int64_t owner, std::string_view code);
  bool IsFaulty(std::string_view table, std::int64_t owner, std::string_view code) const;

 private:
  void LoadBaseData(database::Connection& connection);
  void LoadItems(database::Connection& connection);

  std::unordered_map<std::int32_t, ByCode<Node>> base_;
  std::unordered_map<std::string, Node, CodeHash, std::equal_to<>> units_;
  std::unordered_map<std::int64_t, ItemFacts> items_;
  std::unordered_map<std::int64_t, std::vector<std::pair<std::int64_t, database::Quantity>>> factors_;
  std::unordered_set<std::int64_t> gifts_;
  ByCode<BillClassFacts> billClasses_;
  std::unordered_set<std::string, CodeHash, CodeEqual> faulty_;
  std::unordered_set<std::string> faultyFiles_;
  std::unordered_set<std::string> unreadFiles_;
  std::int64_t lastBaseId_ = 0;
};

}  // namespace books::importer
