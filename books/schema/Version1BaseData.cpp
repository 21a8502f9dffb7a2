#include "books/schema/Version1.h"

namespace books::schema {

// Numbers compare without regard to case, as users type them. `right_users` holds the ids of the users who
// may see the row, joined by commas.
const std::string_view kVersion1BaseData = R"sql(
CREATE TABLE base_class (
  id INTEGER NOT NULL PRIMARY KEY,
  name TEXT NOT NULL
) STRICT;

CREATE TABLE base_data (
  id INTEGER NOT NULL PRIMARY KEY CHECK (id > 0),
  class_id INTEGER NOT NULL REFERENCES base_class (id),
  parent_id INTEGER REFERENCES base_data (id),
  number TEXT NOT NULL COLLATE NOCASE CHECK (number <> ''),
  short_number TEXT NOT NULL COLLATE NOCASE,
  name TEXT NOT NULL,
  level INTEGER NOT NULL DEFAULT 1,
  detail INTEGER NOT NULL DEFAULT 1 CHECK (detail IN (0, 1)),
  disabled INTEGER NOT NULL DEFAULT 0 CHECK (disabled IN (0, 1)),
  right_users TEXT NOT NULL DEFAULT '',
  UNIQUE (class_id, number)
) STRICT;
CREATE INDEX base_data_parent ON base_data (parent_id);
CREATE INDEX base_data_short_number ON base_data (class_id, short_number);

CREATE TABLE base_ancestor (
  id INTEGER NOT NULL REFERENCES base_data (id),
  level INTEGER NOT NULL,
  ancestor_id INTEGER NOT NULL REFERENCES base_data (id),
  PRIMARY KEY (id, level)
) STRICT, WITHOUT ROWID;

CREATE TABLE unit (
  id INTEGER NOT NULL PRIMARY KEY,
  name TEXT NOT NULL UNIQUE
) STRICT;

CREATE TABLE valuation_method (
  id INTEGER NOT NULL PRIMARY KEY,
  name TEXT NOT NULL
) STRICT;

CREATE TABLE item (
  id INTEGER NOT NULL PRIMARY KEY REFERENCES base_data (id),
  model TEXT NOT NULL DEFAULT '',
  barcode TEXT NOT NULL DEFAULT '',
  unit_id INTEGER NOT NULL REFERENCES unit (id),
  aux_unit_id INTEGER REFERENCES unit (id),
  default_supplier_id INTEGER REFERENCES base_data (id),
  valuation INTEGER NOT NULL DEFAULT 78 REFERENCES valuation_method (id),
  batch_managed INTEGER NOT NULL DEFAULT 0 CHECK (batch_managed IN (0, 1)),
  serial_managed INTEGER NOT NULL DEFAULT 0 CHECK (serial_managed IN (0, 1)),
  shelf_life_days INTEGER NOT NULL DEFAULT 0 CHECK (shelf_life_days >= 0),
  min_quantity INTEGER NOT NULL DEFAULT 0,
  max_quantity INTEGER NOT NULL DEFAULT 0,
  quantity_decimals INTEGER NOT NULL DEFAULT 2 CHECK (quantity_decimals BETWEEN 0 AND 6),
  price_decimals INTEGER NOT NULL DEFAULT 4 CHECK (price_decimals BETWEEN 0 AND 6)
) STRICT;

CREATE TABLE item_unit (
  item_id INTEGER NOT NULL REFERENCES item (id),
  unit_id INTEGER NOT NULL REFERENCES unit (id),
  factor INTEGER NOT NULL CHECK (factor > 0),
  package INTEGER NOT NULL DEFAULT 0 CHECK (package IN (0, 1)),
  PRIMARY KEY (item_id, unit_id)
) STRICT, WITHOUT ROWID;

CREATE TABLE warehouse (
  id INTEGER NOT NULL PRIMARY KEY REFERENCES base_data (id),
  type_code INTEGER NOT NULL DEFAULT 500 CHECK (type_code IN (500, 501))
) STRICT;

CREATE TABLE item_limit (
  item_id INTEGER NOT NULL REFERENCES item (id),
  warehouse_id INTEGER NOT NULL REFERENCES warehouse (id),
  min_quantity INTEGER NOT NULL DEFAULT 0,
  max_quantity INTEGER NOT NULL DEFAULT 0,
  PRIMARY KEY (item_id, warehouse_id)
) STRICT, WITHOUT ROWID;

CREATE TABLE partner_match (
  customer_id INTEGER NOT NULL REFERENCES base_data (id),
  supplier_id INTEGER NOT NULL REFERENCES base_data (id),
  PRIMARY KEY (customer_id, supplier_id)
) STRICT, WITHOUT ROWID;

CREATE TABLE batch (
  id INTEGER NOT NULL PRIMARY KEY CHECK (id > 0),
  item_id INTEGER NOT NULL REFERENCES item (id),
  number TEXT NOT NULL COLLATE NOCASE CHECK (number <> ''),
  production_date INTEGER,
  shelf_life_days INTEGER NOT NULL DEFAULT 0,
  expiry_date INTEGER,
  note TEXT NOT NULL DEFAULT '',
  UNIQUE (item_id, number)
) STRICT;

CREATE TABLE serial (
  id INTEGER NOT NULL PRIMARY KEY,
  item_id INTEGER NOT NULL REFERENCES item (id),
  number TEXT NOT NULL COLLATE NOCASE CHECK (number <> ''),
  state INTEGER NOT NULL DEFAULT 0 CHECK (state IN (0, 1, 2)),
  warehouse_id INTEGER REFERENCES warehouse (id),
  aux_id INTEGER REFERENCES base_data (id),
  note TEXT NOT NULL DEFAULT '',
  UNIQUE (item_id, number)
) STRICT;
)sql";

}  // namespace books::schema
