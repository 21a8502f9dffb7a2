// Statements are cached by their text: a Statement takes a prepared one out of the cache and puts it back
// when it is destroyed, so that the same text can be in use twice at once.
#include "books/database/Connection.h"

#include <functional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "books/database/sqlite/SqliteBackend.h"
#include "platform/value/Error.h"

namespace books::database {
namespace {

constexpr std::size_t kKeptStatements = 200;
constexpr int kDoomed = -1;

[[noreturn]] void Fail(const std::string& description) {
  throw platform::Error(platform::ErrorNumber::kUserDefined, "books.Connection", description);
}

struct TextHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
};
using Kept = std::unordered_map<std::string, std::vector<std::unique_ptr<StatementBackend>>, TextHash,
                                std::equal_to<>>;

}  // namespace

struct StatementCache {
  Kept kept;
};

// One a prepared text and connection; statements of the same text share it.
struct Statement::Home {
  std::shared_ptr<StatementCache> cache;
  std::string sql;
};

Statement::Statement(std::unique_ptr<StatementBackend> backend, std::shared_ptr<Home> home)
    : backend_(std::move(backend)), home_(std::move(home)) {}

Statement::~Statement() {
  if (!backend_) return;
  backend_->Reset(true);
  if (home_->cache->kept.size() >= kKeptStatements) home_->cache->kept.clear();
  home_->cache->kept[home_->sql].push_back(std::move(backend_));
}

void Statement::ExpectParameters(std::size_t count) const {
  const auto expected = static_cast<std::size_t>(backend_->ParameterCount());
  if (count != expected) {
    Fail("the statement has " + std::to_string(expected) + " parameters, " + std::to_string(count) +
         " values were given: " + home_->sql);
  }
}

void Statement::BindValue(int parameter, const platform::Variant& value) {
  value.Visit([&]<class Held>(const Held& held) {
    if constexpr (std::same_as<Held, platform::Null>) {
      backend_->BindNull(parameter);
    } else if constexpr (std::same_as<Held, platform::Empty> || std::same_as<Held, platform::Missing> ||
                         std::same_as<Held, platform::Ref<platform::Object>>) {
      throw platform::Error(
          platform::ErrorNumber::kTypeMismatch, "books.Connection",
          "type mismatch: " + std::string(ToString(value.GetKind())) + " is no value of a database");
    } else {
      BindAt(parameter, held);
    }
  });
}

Connection::Connection(std::unique_ptr<ConnectionBackend> backend)
    : backend_(std::move(backend)),
      home_(std::make_shared<Statement::Home>()),
      depth_(std::make_shared<int>(0)) {
  home_->cache = std::make_shared<StatementCache>();
}

Connection Connection::Open(const std::filesystem::path& file, Access access, const OpenOptions& options) {
  return Connection(sqlite::Open(file, access, options));
}

Connection Connection::OpenInMemory() { return Connection(sqlite::OpenInMemory()); }

Statement Connection::Prepare(std::string_view sql) {
  auto home = std::make_shared<Statement::Home>(Statement::Home{home_->cache, std::string(sql)});
  const auto found = home_->cache->kept.find(sql);
  if (found != home_->cache->kept.end() && !found->second.empty()) {
    std::unique_ptr<StatementBackend> backend = std::move(found->second.back());
    found->second.pop_back();
    return {std::move(backend), std::move(home)};
  }
  return {backend_->Prepare(sql), std::move(home)};
}

Transaction::Transaction(Connection& connection, Kind kind)
    : connection_(connection), outermost_(*connection.depth_ == 0) {
  if (*connection.depth_ == kDoomed) Fail("the surrounding transaction has failed already");
  if (outermost_) connection.backend_->Begin(kind == Kind::kWrite);
  ++*connection.depth_;
}

Transaction::~Transaction() {
  if (done_) return;
  if (outermost_) {
    *connection_.depth_ = 0;
    platform::SkipErrors([&] { connection_.backend_->Rollback(); });
  } else {
    *connection_.depth_ = kDoomed;
  }
}

void Transaction::Commit() {
  if (done_) Fail("the transaction is over already");
  if (*connection_.depth_ == kDoomed) Fail("a part of the transaction has failed, nothing was written");
  if (outermost_) connection_.backend_->Commit();
  --*connection_.depth_;
  done_ = true;
}

}  // namespace books::database
