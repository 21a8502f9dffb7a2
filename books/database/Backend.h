#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace books::database {

// What a database must offer to hold a book. There is one implementation a database, in a folder of its own;
// everybody else works with Connection and Statement. Failures are platform::Error whose description tells
// an operator what to do.

// One prepared statement. Parameters and columns count from 0. A text column stays valid until the next step.
class StatementBackend {
 public:
  virtual ~StatementBackend() = default;

  virtual void BindNull(int parameter) = 0;
  virtual void BindInteger(int parameter, std::int64_t value) = 0;
  virtual void BindReal(int parameter, double value) = 0;
  virtual void BindText(int parameter, std::string_view value) = 0;

  // True when a row stands ready, false at the end.
  virtual bool Step() = 0;
  // For `SELECT gather(a, b, …) FROM …`: runs to the end and adds the values of every row, row after row, in
  // the order in which the rows are met. Values are whole numbers.
  virtual void Gather(std::vector<std::int64_t>& values) = 0;
  // Back to before the first row. Forgets the bound values when `clear` is set.
  virtual void Reset(bool clear) = 0;

  virtual int ParameterCount() const = 0;
  virtual int ColumnCount() const = 0;
  virtual std::string ColumnName(int column) const = 0;
  virtual bool IsNull(int column) const = 0;
  virtual std::int64_t Integer(int column) const = 0;
  virtual double Real(int column) const = 0;
  virtual std::string_view Text(int column) const = 0;
};

// What tells a stock book from any other database.
struct Identity {
  std::int64_t application = 0;
  std::int64_t version = 0;
};

class ConnectionBackend {
 public:
  virtual ~ConnectionBackend() = default;

  // `sql` holds one statement with a `?` for each parameter.
  virtual std::unique_ptr<StatementBackend> Prepare(std::string_view sql) = 0;
  // Several statements, separated by semicolons, without parameters.
  virtual void RunScript(std::string_view sql) = 0;
  // Begin takes the right to write at once when `write` is set, so that two writers wait instead of failing
  // in the middle.
  virtual void Begin(bool write) = 0;
  virtual void Commit() = 0;
  virtual void Rollback() = 0;
  // A number that another one follows once any other connection has committed a change.
  virtual std::int64_t DataVersion() = 0;
  // Rows changed by the last insert, update or delete.
  virtual std::int64_t Changes() const = 0;
  // What is wrong with the storage itself: damaged pages, references that lead nowhere. Empty when all is
  // well.
  virtual std::vector<std::string> CheckStorage() = 0;
  // After much was written: brings what the planner knows of the tables up to date and puts the log away.
  // Does nothing inside a transaction.
  virtual void Optimize() = 0;
  virtual Identity ReadIdentity() = 0;
  virtual void WriteIdentity(const Identity& identity) = 0;
};

}  // namespace books::database
