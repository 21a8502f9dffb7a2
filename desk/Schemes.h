#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/value/Variant.h"

namespace desk {

// The raw values of a dialog by key, in the order in which they were written.
using SchemeValues = std::vector<std::pair<std::string, platform::Variant>>;

// Where named filter schemes are kept: tables of a book, files, or memory. Schemes belong to a dialog, which
// is known by its form's name; names of dialogs and schemes compare without regard to case.
class SchemeStore {
 public:
  SchemeStore() = default;
  SchemeStore(const SchemeStore&) = delete;
  SchemeStore& operator=(const SchemeStore&) = delete;
  SchemeStore(SchemeStore&&) = delete;
  SchemeStore& operator=(SchemeStore&&) = delete;
  virtual ~SchemeStore() = default;

  virtual std::vector<std::string> Names(std::string_view dialog) const = 0;
  // Nothing for a scheme that does not exist.
  virtual std::optional<SchemeValues> Load(std::string_view dialog, std::string_view name) const = 0;
  // Replaces a scheme of the same name.
  virtual void Save(std::string_view dialog, std::string_view name, const SchemeValues& values) = 0;
  // True when there was one.
  virtual bool Delete(std::string_view dialog, std::string_view name) = 0;
};

// Schemes that live as long as this object. What it has not got it looks for in the store behind it, which
// is never written to.
class MemorySchemes final : public SchemeStore {
 public:
  std::vector<std::string> Names(std::string_view dialog) const override;
  std::optional<SchemeValues> Load(std::string_view dialog, std::string_view name) const override;
  void Save(std::string_view dialog, std::string_view name, const SchemeValues& values) override;
  // Not what stands behind.
  bool Delete(std::string_view dialog, std::string_view name) override;

  // Borrowed; null for none.
  void StandBefore(const SchemeStore* behind) { behind_ = behind; }

 private:
  struct Scheme {
    std::string name;
    SchemeValues values;
  };

  std::map<std::string, std::vector<Scheme>, std::less<>> schemes_;  // by dialog, in lower case
  const SchemeStore* behind_ = nullptr;
};

// The value of a key, compared without regard to case; Empty for a key that the scheme does not hold.
platform::Variant ValueOf(const SchemeValues& values, std::string_view key);
// Writes a key, in place when it is there.
void SetValue(SchemeValues& values, std::string_view key, platform::Variant value);

}  // namespace desk
