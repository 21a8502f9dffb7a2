#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "books/database/Statement.h"

namespace books::database {

enum class Access {
  kReadOnly,   // for reports: anything that would write is refused, by the database itself
  kReadWrite,  // the file must exist
  kCreate,     // the file must not exist
};

struct OpenOptions {
  // How long a statement waits for another program that writes, before it fails with "locked".
  std::int32_t busyMilliseconds = 5000;
};

// A connection to the database that holds a book. For one thread. Statements are prepared once and kept.
//
// SQL is written in the common subset of SQLite and PostgreSQL, with `?` for parameters; a text never becomes
// part of a statement, it is bound. New ids come from "INSERT … RETURNING id".
class Connection {
 public:
  // Raises platform::Error for a file that is missing, no database, damaged, locked, or (kCreate) already
  // there. Whether it holds a book is the schema's question: use schema::OpenBook and schema::CreateBook.
  static Connection Open(const std::filesystem::path& file, Access access, const OpenOptions& options = {});
  // A database of its own in memory, gone with the connection.
  static Connection OpenInMemory();

  Connection(Connection&&) noexcept = default;
  Connection& operator=(Connection&&) noexcept = default;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() = default;

  // A statement without values, for Bind or Run.
  Statement Prepare(std::string_view sql);
  template <class... Values>
  Statement Query(std::string_view sql, const Values&... values) {
    Statement statement = Prepare(sql);
    statement.Bind(values...);
    return statement;
  }
  // Runs a statement that answers no rows; returns the number of rows that it changed.
  template <class... Values>
  std::int64_t Execute(std::string_view sql, const Values&... values) {
    Prepare(sql).Run(values...);
    return backend_->Changes();
  }
  // Several statements without parameters, for a schema.
  void RunScript(std::string_view sql) { backend_->RunScript(sql); }

  // Differs from an earlier answer when another connection has committed a change in between. For what is
  // kept of a book between two looks at it.
  std::int64_t DataVersion() { return backend_->DataVersion(); }

  // After much was written, outside a transaction.
  void Optimize() { backend_->Optimize(); }
  std::vector<std::string> CheckStorage() { return backend_->CheckStorage(); }
  Identity ReadIdentity() { return backend_->ReadIdentity(); }
  void WriteIdentity(const Identity& identity) { backend_->WriteIdentity(identity); }

 private:
  friend class Transaction;
  explicit Connection(std::unique_ptr<ConnectionBackend> backend);

  std::unique_ptr<ConnectionBackend> backend_;
  std::shared_ptr<Statement::Home> home_;
  std::shared_ptr<int> depth_;  // of open transaction scopes
};

// Everything written between its beginning and Commit happens whole or not at all; without Commit it is
// undone. A scope inside another one belongs to the outer one: its Commit does nothing, and leaving it
// without Commit dooms the outer one, whose Commit then raises. A read scope gives several queries one
// picture of the book.
class Transaction {
 public:
  enum class Kind { kRead, kWrite };

  explicit Transaction(Connection& connection, Kind kind = Kind::kWrite);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();

  void Commit();

 private:
  Connection& connection_;
  bool outermost_ = false;
  bool done_ = false;
};

}  // namespace books::database
