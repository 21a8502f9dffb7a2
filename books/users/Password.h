#pragma once

#include <string>
#include <string_view>

namespace books::users {

// An Argon2id hash with its salt and cost, as text. Raises when there is not enough memory for it (64 MB).
std::string HashPassword(std::string_view password);

// False for a wrong password and for a hash that is none. Takes about as long with an empty hash.
bool VerifyPassword(const std::string& hash, std::string_view password);

}  // namespace books::users
