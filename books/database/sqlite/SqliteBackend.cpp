// A connection for reading is refused writes three times over: the file is opened for reading, the session is
// set to queries only, and the authoriser lets nothing but selects be prepared, so that a text which slipped
// through every other guard fails before it runs. A file is looked at once when it is opened, so that one
// that is no database or is damaged says so there and not in the middle of a report.
#include "books/database/sqlite/SqliteBackend.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <new>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <sqlite3.h>

#include "platform/value/Error.h"

namespace books::database::sqlite {
namespace {

struct Closer {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using Handle = std::unique_ptr<sqlite3, Closer>;
struct Finalizer {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementHandle = std::unique_ptr<sqlite3_stmt, Finalizer>;

[[noreturn]] void Fail(const std::string& description) {
  throw platform::Error(platform::ErrorNumber::kUserDefined, "books.Connection", description);
}

std::string Explain(int code, const std::string& name, const std::string& detail) {
  switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return name + " is locked: another program is writing to it; try again when that has finished";
    case SQLITE_NOTADB:
      return name + " is not a database, so it is no stock book";
    case SQLITE_CORRUPT:
      return name + " is damaged (" + detail + "); restore it from a backup";
    case SQLITE_CANTOPEN:
      return name + " cannot be opened (" + detail + "); check the path and its permissions";
    case SQLITE_READONLY:
    case SQLITE_AUTH:
      return name + " is open for reading only, the statement was refused (" + detail + ")";
    case SQLITE_FULL:
      return name + " cannot grow: the disk is full";
    case SQLITE_IOERR:
      return name + " cannot be read or written (" + detail + "); check the disk";
    default:
      return name + ": " + detail;
  }
}

// The function gather(a, b, …) of a connection: an aggregate, so that the rows never leave the library's
// loop. It belongs to the connection and puts them where the statement that is running wants them.
struct Gathering {
  std::vector<std::int64_t>* into = nullptr;
};

void GatherRow(sqlite3_context* context, int count, sqlite3_value** values) {
  std::vector<std::int64_t>* const into = static_cast<Gathering*>(sqlite3_user_data(context))->into;
  if (into == nullptr) return sqlite3_result_error(context, "gather() is not for statements with rows", -1);
  try {
    const std::size_t at = into->size();
    into->resize(at + static_cast<std::size_t>(count));
    std::int64_t* const row = into->data() + at;
    for (int i = 0; i < count; ++i) row[i] = sqlite3_value_int64(values[i]);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  }
}

void EndGathering(sqlite3_context* context) { sqlite3_result_null(context); }

class Statement final : public StatementBackend {
 public:
  Statement(StatementHandle handle, std::string name, std::shared_ptr<Gathering> gathering)
      : handle_(std::move(handle)), name_(std::move(name)), gathering_(std::move(gathering)) {}

  void BindNull(int parameter) override { Expect(sqlite3_bind_null(Get(), parameter + 1)); }
  void BindInteger(int parameter, std::int64_t value) override {
    Expect(sqlite3_bind_int64(Get(), parameter + 1, value));
  }
  void BindReal(int parameter, double value) override {
    Expect(sqlite3_bind_double(Get(), parameter + 1, value));
  }
  void BindText(int parameter, std::string_view value) override {
    // An empty view may have no address, which would bind a null.
    Expect(sqlite3_bind_text64(Get(), parameter + 1, value.empty() ? "" : value.data(), value.size(),
                               SQLITE_TRANSIENT, SQLITE_UTF8));
  }
  bool Step() override {
    const int code = sqlite3_step(Get());
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) Raise(code);
    return false;
  }
  void Gather(std::vector<std::int64_t>& values) override {
    struct Scope {
      Gathering& gathering;
      std::vector<std::int64_t>* outer;
      ~Scope() { gathering.into = outer; }
    };
    const Scope scope{*gathering_, std::exchange(gathering_->into, &values)};
    Step();
    Reset(false);
  }
  void Reset(bool clear) override {
    sqlite3_reset(Get());
    if (clear) sqlite3_clear_bindings(Get());
  }
  int ParameterCount() const override { return sqlite3_bind_parameter_count(Get()); }
  int ColumnCount() const override { return sqlite3_column_count(Get()); }
  std::string ColumnName(int column) const override { return sqlite3_column_name(Get(), column); }
  bool IsNull(int column) const override { return sqlite3_column_type(Get(), column) == SQLITE_NULL; }
  std::int64_t Integer(int column) const override { return sqlite3_column_int64(Get(), column); }
  double Real(int column) const override { return sqlite3_column_double(Get(), column); }
  std::string_view Text(int column) const override {
    const unsigned char* text = sqlite3_column_text(Get(), column);
    if (text == nullptr) return {};
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the library's texts are unsigned
    return {reinterpret_cast<const char*>(text),
            static_cast<std::size_t>(sqlite3_column_bytes(Get(), column))};
  }

 private:
  sqlite3_stmt* Get() const { return handle_.get(); }
  void Expect(int code) const {
    if (code != SQLITE_OK) Raise(code);
  }
  [[noreturn]] void Raise(int code) const {
    const std::string detail = sqlite3_errmsg(sqlite3_db_handle(Get()));
    sqlite3_reset(Get());
    Fail(Explain(code, name_, detail));
  }

  StatementHandle handle_;
  std::string name_;
  std::shared_ptr<Gathering> gathering_;
};

class Connection final : public ConnectionBackend {
 public:
  Connection(Handle handle, std::string name) : handle_(std::move(handle)), name_(std::move(name)) {
    Expect(sqlite3_create_function_v2(handle_.get(), "gather", -1, SQLITE_UTF8 | SQLITE_DIRECTONLY,
                                      gathering_.get(), nullptr, GatherRow, EndGathering, nullptr));
  }

  std::unique_ptr<StatementBackend> Prepare(std::string_view sql) override {
    sqlite3_stmt* raw = nullptr;
    const char* tail = nullptr;
    const int code = sqlite3_prepare_v3(handle_.get(), sql.data(), static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &raw, &tail);
    StatementHandle statement(raw);
    Expect(code);
    const std::string_view rest = sql.substr(static_cast<std::size_t>(tail - sql.data()));
    if (!statement || rest.find_first_not_of(" \t\r\n;") != std::string_view::npos) {
      Fail(name_ + ": exactly one statement was expected");
    }
    return std::make_unique<Statement>(std::move(statement), name_, gathering_);
  }
  void RunScript(std::string_view sql) override {
    Expect(sqlite3_exec(handle_.get(), std::string(sql).c_str(), nullptr, nullptr, nullptr));
  }
  void Begin(bool write) override {
    write ? Run(beginWriting_, "BEGIN IMMEDIATE") : Run(beginReading_, "BEGIN");
  }
  void Commit() override { Run(commit_, "COMMIT"); }
  void Rollback() override {
    if (sqlite3_get_autocommit(handle_.get()) == 0) Run(rollback_, "ROLLBACK");
  }
  std::int64_t DataVersion() override {
    if (!dataVersion_) dataVersion_ = Prepare("PRAGMA data_version");
    const std::int64_t version = dataVersion_->Step() ? dataVersion_->Integer(0) : 0;
    dataVersion_->Reset(false);
    return version;
  }
  std::int64_t Changes() const override { return sqlite3_changes64(handle_.get()); }
  Identity ReadIdentity() override {
    return {Number("PRAGMA application_id"), Number("PRAGMA user_version")};
  }
  void Optimize() override {
    if (sqlite3_get_autocommit(handle_.get()) == 0) return;
    RunScript("PRAGMA analysis_limit = 2000; ANALYZE");
    // Somebody who reads can keep the log from being put away; it will be when they have finished.
    sqlite3_wal_checkpoint_v2(handle_.get(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
  }
  std::vector<std::string> CheckStorage() override {
    std::vector<std::string> findings;
    const std::unique_ptr<StatementBackend> pages = Prepare("PRAGMA integrity_check");
    while (pages->Step()) {
      if (pages->Text(0) != "ok") findings.emplace_back(pages->Text(0));
    }
    const std::unique_ptr<StatementBackend> keys = Prepare("PRAGMA foreign_key_check");
    while (keys->Step()) {
      findings.push_back("a row of " + std::string(keys->Text(0)) + " refers to a row of " +
                         std::string(keys->Text(2)) + " that does not exist");
    }
    return findings;
  }
  void WriteIdentity(const Identity& identity) override {
    RunScript("PRAGMA application_id = " + std::to_string(identity.application) +
              "; PRAGMA user_version = " + std::to_string(identity.version));
  }

 private:
  std::int64_t Number(std::string_view sql) {
    const std::unique_ptr<StatementBackend> statement = Prepare(sql);
    return statement->Step() ? statement->Integer(0) : 0;
  }
  // For the words around every reading: prepared once.
  void Run(std::unique_ptr<StatementBackend>& statement, std::string_view sql) {
    if (!statement) statement = Prepare(sql);
    statement->Step();
    statement->Reset(false);
  }
  void Expect(int code) const {
    if (code != SQLITE_OK) Fail(Explain(code, name_, sqlite3_errmsg(handle_.get())));
  }

  std::shared_ptr<Gathering> gathering_ = std::make_shared<Gathering>();  // outlives the handle
  Handle handle_;
  std::string name_;
  std::unique_ptr<StatementBackend> beginReading_;
  std::unique_ptr<StatementBackend> beginWriting_;
  std::unique_ptr<StatementBackend> commit_;
  std::unique_ptr<StatementBackend> rollback_;
  std::unique_ptr<StatementBackend> dataVersion_;
};

// What a book is asked about itself; none of them writes when it has no argument.
constexpr std::array<std::string_view, 5> kQuestions = {"application_id", "user_version", "data_version",
                                                        "integrity_check", "foreign_key_check"};

int AllowReadsOnly(void* /*context*/, int action, const char* first, const char* second,
                   const char* /*database*/, const char* /*trigger*/) {
  switch (action) {
    case SQLITE_SELECT:
    case SQLITE_READ:
    case SQLITE_FUNCTION:
    case SQLITE_RECURSIVE:
    case SQLITE_TRANSACTION:
      return SQLITE_OK;
    case SQLITE_PRAGMA:
      return second == nullptr && std::ranges::find(kQuestions, first) != kQuestions.end() ? SQLITE_OK
                                                                                           : SQLITE_DENY;
    default:
      return SQLITE_DENY;
  }
}

// Raises the first time that the file is really read, with the reason.
void Prepare(sqlite3* database, const std::string& name, Access access) {
  // Write-ahead logging stays with the file: only a new one is set to it, another program's is left alone.
  const char* script =
      "SELECT count(*) FROM sqlite_schema; PRAGMA query_only = ON;"
      "PRAGMA cache_size = -65536; PRAGMA mmap_size = 1073741824; PRAGMA temp_store = MEMORY";
  if (access == Access::kReadWrite) {
    script =
        "SELECT count(*) FROM sqlite_schema; PRAGMA synchronous = NORMAL; PRAGMA foreign_keys = ON;"
        "PRAGMA cache_size = -131072";
  } else if (access == Access::kCreate) {
    script =
        "PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; PRAGMA foreign_keys = ON;"
        "PRAGMA cache_size = -131072";
  }
  const int code = sqlite3_exec(database, script, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) Fail(Explain(code, name, sqlite3_errmsg(database)));
  if (access == Access::kReadOnly) sqlite3_set_authorizer(database, AllowReadsOnly, nullptr);
}

Handle OpenFile(const std::string& path, int flags, const std::string& name, std::int32_t busyMilliseconds) {
  // The library would otherwise count its memory under one lock for all connections. It keeps what it was
  // told first, so a second call has no effect.
  static std::once_flag once;
  std::call_once(once, [] { sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0); });
  sqlite3* raw = nullptr;
  const int code = sqlite3_open_v2(path.c_str(), &raw, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  Handle handle(raw);
  if (code != SQLITE_OK) {
    Fail(Explain(code, name, raw == nullptr ? "no memory" : sqlite3_errmsg(raw)));
  }
  sqlite3_extended_result_codes(raw, 1);
  sqlite3_busy_timeout(raw, busyMilliseconds);
  // Texts that arrive from outside never name functions of a schema that somebody prepared for them.
  sqlite3_db_config(raw, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(raw, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(raw, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(raw, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  return handle;
}

}  // namespace

std::unique_ptr<ConnectionBackend> Open(const std::filesystem::path& file, Access access,
                                        const OpenOptions& options) {
  const auto utf8 = file.u8string();
  const std::string name(utf8.begin(), utf8.end());
  std::error_code ignored;
  const bool exists = std::filesystem::exists(file, ignored);
  if (access == Access::kCreate && exists) Fail(name + " exists already; choose another file or remove it");
  if (access != Access::kCreate && !exists) {
    Fail("there is no file " + name + "; check the path, or make a book there first");
  }
  if (std::filesystem::is_directory(file, ignored)) Fail(name + " is a folder, not a stock book");
  int flags = SQLITE_OPEN_READWRITE;
  if (access == Access::kReadOnly) flags = SQLITE_OPEN_READONLY;
  if (access == Access::kCreate) flags |= SQLITE_OPEN_CREATE;
  Handle handle = OpenFile(name, flags, name, options.busyMilliseconds);
  Prepare(handle.get(), name, access);
  return std::make_unique<Connection>(std::move(handle), name);
}

std::unique_ptr<ConnectionBackend> OpenInMemory() {
  Handle handle = OpenFile(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, "the book in memory", 0);
  Prepare(handle.get(), "the book in memory", Access::kCreate);
  return std::make_unique<Connection>(std::move(handle), "the book in memory");
}

}  // namespace books::database::sqlite
