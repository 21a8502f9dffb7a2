// Opening looks at the identity that the file carries before anything else is read from it, so that a file of
// another program is left as it is.
#include "books/schema/Schema.h"

#include <array>
#include <string>
#include <utility>

#include "books/schema/Version1.h"
#include "platform/value/Error.h"

namespace books::schema {
namespace {

[[noreturn]] void Fail(const std::string& description) {
  throw platform::Error(platform::ErrorNumber::kUserDefined, "books.Schema", description);
}

std::string NameOf(const std::filesystem::path& file) {
  const auto utf8 = file.u8string();
  return {utf8.begin(), utf8.end()};
}

}  // namespace

std::span<const UpgradeStep> Steps() {
  // Gathered on the first call: the scripts are constants of other sources, which may be set up later than
  // this one.
  static const std::array kVersion1 = {kVersion1BaseData, kVersion1Documents, kVersion1Stock,
                                       kVersion1Session,  kVersion1Views,     kVersion1Rows};
  static const std::array kSteps = {UpgradeStep{.version = 1, .scripts = kVersion1}};
  return kSteps;
}

std::int64_t NewestVersion() { return Steps().back().version; }

void Upgrade(database::Connection& connection, std::span<const UpgradeStep> steps) {
  database::Transaction transaction(connection);
  database::Identity identity = connection.ReadIdentity();
  for (const UpgradeStep& step : steps) {
    if (step.version <= identity.version) continue;
    for (const std::string_view script : step.scripts) connection.RunScript(script);
    identity = {.application = kApplication, .version = step.version};
    connection.WriteIdentity(identity);
  }
  transaction.Commit();
}

database::Connection CreateBook(const std::filesystem::path& file) {
  database::Connection connection = database::Connection::Open(file, database::Access::kCreate);
  Upgrade(connection);
  return connection;
}

database::Connection CreateBookInMemory() {
  database::Connection connection = database::Connection::OpenInMemory();
  Upgrade(connection);
  return connection;
}

database::Connection OpenBook(const std::filesystem::path& file, database::Access access,
                              const database::OpenOptions& options) {
  database::Connection connection = database::Connection::Open(file, access, options);
  const database::Identity identity = connection.ReadIdentity();
  if (identity.application != kApplication || identity.version < 1) {
    Fail(NameOf(file) + " is a database, but no stock book");
  }
  if (identity.version > NewestVersion()) {
    Fail(NameOf(file) + " was written by a newer version of this program (book version " +
         std::to_string(identity.version) + ", this program knows up to " + std::to_string(NewestVersion()) +
         "); use that version");
  }
  if (identity.version < NewestVersion()) {
    if (access == database::Access::kReadOnly) {
      Fail(NameOf(file) + " is of an older version; run `stockrpt check` on it once, which upgrades it");
    }
    Upgrade(connection);
  }
  return connection;
}

}  // namespace books::schema
