#include "books/schema/Version1.h"

namespace books::schema {

// What posting works out of the documents. It can be worked out again at any time, so these tables refer to
// others without foreign keys, and "no batch" and "no auxiliary property" are 0, which keys can hold.
// All are clustered by item: a report walks items in number order and reads each one's rows in one place.
const std::string_view kVersion1Stock = R"sql(
CREATE TABLE opening_stock (
  item_id INTEGER NOT NULL REFERENCES item (id),
  warehouse_id INTEGER NOT NULL REFERENCES warehouse (id),
  batch_id INTEGER NOT NULL DEFAULT 0,
  aux_id INTEGER NOT NULL DEFAULT 0,
  quantity INTEGER NOT NULL,
  aux_quantity INTEGER NOT NULL DEFAULT 0,
  amount INTEGER NOT NULL,
  PRIMARY KEY (item_id, warehouse_id, batch_id, aux_id)
) STRICT, WITHOUT ROWID;

CREATE TABLE movement (
  item_id INTEGER NOT NULL,
  date INTEGER NOT NULL,
  day_order INTEGER NOT NULL,
  bill_id INTEGER NOT NULL,
  direction INTEGER NOT NULL,
  line INTEGER NOT NULL,
  period INTEGER NOT NULL,
  bill_class INTEGER NOT NULL,
  warehouse_id INTEGER NOT NULL,
  batch_id INTEGER NOT NULL,
  aux_id INTEGER NOT NULL,
  quantity INTEGER NOT NULL,
  aux_quantity INTEGER NOT NULL,
  amount INTEGER NOT NULL,
  PRIMARY KEY (item_id, date, day_order, bill_id, direction, line)
) STRICT, WITHOUT ROWID;

CREATE TABLE balance (
  item_id INTEGER NOT NULL,
  period INTEGER NOT NULL,
  warehouse_id INTEGER NOT NULL,
  batch_id INTEGER NOT NULL,
  aux_id INTEGER NOT NULL,
  quantity INTEGER NOT NULL,
  aux_quantity INTEGER NOT NULL,
  amount INTEGER NOT NULL,
  PRIMARY KEY (item_id, period, warehouse_id, batch_id, aux_id)
) STRICT, WITHOUT ROWID;

CREATE TABLE stock (
  item_id INTEGER NOT NULL,
  warehouse_id INTEGER NOT NULL,
  batch_id INTEGER NOT NULL,
  aux_id INTEGER NOT NULL,
  quantity INTEGER NOT NULL,
  aux_quantity INTEGER NOT NULL,
  amount INTEGER NOT NULL,
  PRIMARY KEY (item_id, warehouse_id, batch_id, aux_id)
) STRICT, WITHOUT ROWID;

CREATE TABLE waiting_item (
  item_id INTEGER NOT NULL PRIMARY KEY REFERENCES item (id)
) STRICT;

CREATE TABLE book_state (
  id INTEGER NOT NULL PRIMARY KEY CHECK (id = 1),
  balances_until INTEGER
) STRICT;
)sql";

}  // namespace books::schema
