#include "books/users/Password.h"

#include <array>

#include <sodium.h>

#include "platform/value/Error.h"

namespace books::users {
namespace {

// The library's figures for logins that somebody waits for.
constexpr auto kOperations = crypto_pwhash_OPSLIMIT_INTERACTIVE;
constexpr auto kMemory = crypto_pwhash_MEMLIMIT_INTERACTIVE;

[[noreturn]] void Fail(const std::string& description) {
  throw platform::Error(platform::ErrorNumber::kUserDefined, "books.Users", description);
}

void Begin() {
  if (sodium_init() < 0) Fail("libsodium cannot be used");
}

}  // namespace

std::string HashPassword(std::string_view password) {
  Begin();
  std::array<char, crypto_pwhash_STRBYTES> hash{};
  if (crypto_pwhash_str(hash.data(), password.data(), password.size(), kOperations, kMemory) != 0) {
    Fail("there is not enough memory to hash a password");
  }
  return hash.data();
}

bool VerifyPassword(const std::string& hash, std::string_view password) {
  Begin();
  if (!hash.empty()) return crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) == 0;
  std::array<unsigned char, 32> unused{};
  const std::array<unsigned char, crypto_pwhash_SALTBYTES> salt{};
  // Only its duration matters.
  if (crypto_pwhash(unused.data(), unused.size(), password.data(), password.size(), salt.data(), kOperations,
                    kMemory, crypto_pwhash_ALG_ARGON2ID13) != 0) {
    Fail("there is not enough memory to check a password");
  }
  return false;
}

}  // namespace books::users
