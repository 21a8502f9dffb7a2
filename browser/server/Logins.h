#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace browser {

using Moment = std::chrono::steady_clock::time_point;

// 32 hexadecimal digits that nobody can guess.
std::string NewSecret();
// Takes as long for any two texts of one length.
bool AreSame(std::string_view left, std::string_view right);

// One browser that may use the book, known by its cookie. The token goes with what it asks for, and shows
// that a page of ours asks.
struct Login {
  std::string cookie;
  std::string token;
  std::string user;  // empty for nobody in particular
  std::int32_t userId = 0;
  Moment lastUsed;
};

// The logins of this process. The longest unused ones go when there are too many.
class Logins {
 public:
  Login& Add(const std::string& user, std::int32_t userId, Moment now);
  // Null for a cookie that is not, or no longer, known. What is found counts as used.
  Login* Find(std::string_view cookie, Moment now);
  void Remove(const std::string& cookie) { logins_.erase(cookie); }

  static constexpr std::size_t kMost = 1000;
  static constexpr std::chrono::hours kUnusedFor{12};

 private:
  std::map<std::string, Login, std::less<>> logins_;
};

// How often passwords may be tried, for a name as well as for an address: after five failures in a row each
// further one doubles the wait, from 2 seconds to 5 minutes.
class Attempts {
 public:
  // How long until the next attempt is taken; zero when it is taken now.
  std::chrono::seconds WaitFor(const std::string& who, Moment now) const;
  void Failed(const std::string& who, Moment now);
  void Succeeded(const std::string& who) { failures_.erase(who); }

 private:
  struct Failures {
    int count = 0;
    Moment last;
  };

  static std::chrono::seconds Pause(int count);

  std::map<std::string, Failures> failures_;
};

}  // namespace browser
