#include "books/schema/Version1.h"

namespace books::schema {

const std::string_view kVersion1Session = R"sql(
CREATE TABLE system_profile (
  category TEXT NOT NULL COLLATE NOCASE,
  key TEXT NOT NULL COLLATE NOCASE,
  value TEXT NOT NULL,
  PRIMARY KEY (category, key)
) STRICT, WITHOUT ROWID;

CREATE TABLE book_user (
  id INTEGER NOT NULL PRIMARY KEY CHECK (id > 0),
  name TEXT NOT NULL UNIQUE COLLATE NOCASE,
  password_hash TEXT NOT NULL DEFAULT '',
  restricted INTEGER NOT NULL DEFAULT 0 CHECK (restricted IN (0, 1)),
  disabled INTEGER NOT NULL DEFAULT 0 CHECK (disabled IN (0, 1))
) STRICT;

CREATE TABLE user_right (
  user_id INTEGER NOT NULL REFERENCES book_user (id),
  right_code TEXT NOT NULL,
  PRIMARY KEY (user_id, right_code)
) STRICT, WITHOUT ROWID;

CREATE TABLE filter_scheme (
  id INTEGER NOT NULL PRIMARY KEY,
  user_id INTEGER NOT NULL,
  dialog TEXT NOT NULL,
  name TEXT NOT NULL,
  UNIQUE (user_id, dialog, name)
) STRICT;

CREATE TABLE filter_scheme_value (
  scheme_id INTEGER NOT NULL REFERENCES filter_scheme (id),
  position INTEGER NOT NULL,
  key TEXT NOT NULL,
  kind TEXT NOT NULL,
  value TEXT NOT NULL,
  PRIMARY KEY (scheme_id, position)
) STRICT, WITHOUT ROWID;

CREATE TABLE usage_record (
  id INTEGER NOT NULL PRIMARY KEY,
  date INTEGER NOT NULL,
  second_of_day INTEGER NOT NULL,
  user_id INTEGER NOT NULL,
  code TEXT NOT NULL,
  text TEXT NOT NULL
) STRICT;
)sql";

}  // namespace books::schema
