#include "books/schema/Version1.h"

namespace books::schema {

const std::string_view kVersion1Documents = R"sql(
CREATE TABLE accounting_period (
  period INTEGER NOT NULL PRIMARY KEY,
  year INTEGER NOT NULL,
  number INTEGER NOT NULL CHECK (number BETWEEN 1 AND 12),
  first_day INTEGER NOT NULL,
  last_day INTEGER NOT NULL,
  UNIQUE (year, number),
  CHECK (period = year * 12 + number - 1),
  CHECK (first_day <= last_day)
) STRICT;

CREATE TABLE bill_class (
  id INTEGER NOT NULL PRIMARY KEY,
  name TEXT NOT NULL,
  kind INTEGER NOT NULL CHECK (kind BETWEEN 0 AND 5)
) STRICT;

CREATE TABLE order_bill (
  id INTEGER NOT NULL PRIMARY KEY,
  bill_class INTEGER NOT NULL REFERENCES bill_class (id),
  number TEXT NOT NULL COLLATE NOCASE CHECK (number <> ''),
  date INTEGER NOT NULL,
  supplier_id INTEGER REFERENCES base_data (id),
  customer_id INTEGER REFERENCES base_data (id),
  department_id INTEGER REFERENCES base_data (id),
  employee_id INTEGER REFERENCES base_data (id),
  audited INTEGER NOT NULL DEFAULT 1 CHECK (audited IN (0, 1)),
  closed INTEGER NOT NULL DEFAULT 0 CHECK (closed IN (0, 1)),
  explanation TEXT NOT NULL DEFAULT '',
  UNIQUE (bill_class, number)
) STRICT;

CREATE TABLE order_entry (
  order_id INTEGER NOT NULL REFERENCES order_bill (id),
  line INTEGER NOT NULL,
  item_id INTEGER NOT NULL REFERENCES item (id),
  aux_id INTEGER REFERENCES base_data (id),
  unit_id INTEGER NOT NULL REFERENCES unit (id),
  unit_quantity INTEGER NOT NULL,
  quantity INTEGER NOT NULL,
  delivered_quantity INTEGER NOT NULL DEFAULT 0,
  price REAL NOT NULL DEFAULT 0,
  amount INTEGER NOT NULL DEFAULT 0,
  due_date INTEGER,
  closed INTEGER NOT NULL DEFAULT 0 CHECK (closed IN (0, 1)),
  note TEXT NOT NULL DEFAULT '',
  PRIMARY KEY (order_id, line)
) STRICT, WITHOUT ROWID;
CREATE INDEX order_entry_item ON order_entry (item_id);

CREATE TABLE bill (
  id INTEGER NOT NULL PRIMARY KEY,
  bill_class INTEGER NOT NULL REFERENCES bill_class (id),
  number TEXT NOT NULL COLLATE NOCASE CHECK (number <> ''),
  date INTEGER NOT NULL,
  period INTEGER NOT NULL REFERENCES accounting_period (period),
  supplier_id INTEGER REFERENCES base_data (id),
  customer_id INTEGER REFERENCES base_data (id),
  department_id INTEGER REFERENCES base_data (id),
  employee_id INTEGER REFERENCES base_data (id),
  audited INTEGER NOT NULL DEFAULT 0 CHECK (audited IN (0, 1)),
  voucher_number TEXT NOT NULL DEFAULT '',
  explanation TEXT NOT NULL DEFAULT '',
  UNIQUE (bill_class, number)
) STRICT;
CREATE INDEX bill_date ON bill (date);
CREATE INDEX bill_unaudited ON bill (id) WHERE audited = 0;

CREATE TABLE bill_entry (
  bill_id INTEGER NOT NULL REFERENCES bill (id),
  line INTEGER NOT NULL,
  direction INTEGER NOT NULL CHECK (direction IN (-1, 1)),
  item_id INTEGER NOT NULL REFERENCES item (id),
  warehouse_id INTEGER NOT NULL REFERENCES warehouse (id),
  to_warehouse_id INTEGER REFERENCES warehouse (id),
  batch_id INTEGER REFERENCES batch (id),
  aux_id INTEGER REFERENCES base_data (id),
  unit_id INTEGER NOT NULL REFERENCES unit (id),
  unit_quantity INTEGER NOT NULL,
  quantity INTEGER NOT NULL,
  aux_quantity INTEGER NOT NULL DEFAULT 0,
  price REAL NOT NULL DEFAULT 0,
  amount INTEGER,
  order_id INTEGER,
  order_line INTEGER,
  note TEXT NOT NULL DEFAULT '',
  PRIMARY KEY (bill_id, line),
  FOREIGN KEY (order_id, order_line) REFERENCES order_entry (order_id, line)
) STRICT, WITHOUT ROWID;

CREATE TABLE bill_serial (
  bill_id INTEGER NOT NULL,
  line INTEGER NOT NULL,
  serial_id INTEGER NOT NULL REFERENCES serial (id),
  PRIMARY KEY (bill_id, line, serial_id),
  FOREIGN KEY (bill_id, line) REFERENCES bill_entry (bill_id, line)
) STRICT, WITHOUT ROWID;
CREATE INDEX bill_serial_serial ON bill_serial (serial_id);

CREATE TABLE purchase_price (
  item_id INTEGER NOT NULL REFERENCES item (id),
  supplier_id INTEGER NOT NULL REFERENCES base_data (id),
  unit_id INTEGER NOT NULL REFERENCES unit (id),
  from_date INTEGER NOT NULL,
  price REAL NOT NULL CHECK (price >= 0),
  PRIMARY KEY (item_id, supplier_id, unit_id, from_date)
) STRICT, WITHOUT ROWID;
)sql";

}  // namespace books::schema
