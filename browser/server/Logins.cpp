#include "browser/server/Logins.h"

#include <algorithm>
#include <random>

namespace browser {

std::string NewSecret() {
  constexpr std::string_view kHex = "0123456789abcdef";
  std::random_device device;
  std::string secret;
  for (int word = 0; word < 4; ++word) {
    auto bits = static_cast<std::uint32_t>(device());
    for (int digit = 0; digit < 8; ++digit, bits >>= 4) secret += kHex[bits & 15];
  }
  return secret;
}

bool AreSame(std::string_view left, std::string_view right) {
  if (left.size() != right.size()) return false;
  unsigned different = 0;
  for (std::size_t i = 0; i < left.size(); ++i) {
    different |=
        unsigned{static_cast<unsigned char>(left[i])} ^ unsigned { static_cast<unsigned char>(right[i]) };
  }
  return different == 0;
}

Login& Logins::Add(const std::string& user, std::int32_t userId, Moment now) {
  if (logins_.size() >= kMost) {
    const auto oldest =
        std::ranges::min_element(logins_, {}, [](const auto& entry) { return entry.second.lastUsed; });
    logins_.erase(oldest);
  }
  const std::string cookie = NewSecret();
  Login& login = logins_[cookie];
  login = {.cookie = cookie, .token = NewSecret(), .user = user, .userId = userId, .lastUsed = now};
  return login;
}

Login* Logins::Find(std::string_view cookie, Moment now) {
  const auto found = logins_.find(cookie);
  if (found == logins_.end()) return nullptr;
  if (now - found->second.lastUsed > kUnusedFor) {
    logins_.erase(found);
    return nullptr;
  }
  found->second.lastUsed = now;
  return &found->second;
}

std::chrono::seconds Attempts::Pause(int count) {
  constexpr int kFree = 5;
  constexpr std::chrono::seconds kLongest{300};
  if (count < kFree) return std::chrono::seconds(0);
  const int doublings = std::min(count - kFree, 8);
  return std::min(std::chrono::seconds(2 << doublings), kLongest);
}

std::chrono::seconds Attempts::WaitFor(const std::string& who, Moment now) const {
  const auto found = failures_.find(who);
  if (found == failures_.end()) return std::chrono::seconds(0);
  const auto until = found->second.last + Pause(found->second.count);
  if (until <= now) return std::chrono::seconds(0);
  return std::chrono::ceil<std::chrono::seconds>(until - now);
}

void Attempts::Failed(const std::string& who, Moment now) {
  constexpr std::size_t kMost = 10000;
  constexpr std::chrono::minutes kForgotten{60};
  if (failures_.size() >= kMost) {
    std::erase_if(failures_, [&](const auto& entry) { return now - entry.second.last > kForgotten; });
    if (failures_.size() >= kMost) failures_.erase(failures_.begin());
  }
  Failures& failures = failures_[who];
  if (now - failures.last > kForgotten) failures.count = 0;
  ++failures.count;
  failures.last = now;
}

}  // namespace browser
