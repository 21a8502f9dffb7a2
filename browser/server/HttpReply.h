#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace browser {

// What a request asks, as far as anybody here looks at it.
struct HttpQuestion {
  std::string method;
  std::string target;
  std::string host;
  std::string origin;
  std::string cookie;  // the whole header
  std::string token;   // X-Token
  std::string contentType;
  std::string forwardedProto;
  std::string body;
  std::string client;  // whom the connection comes from
};

struct HttpReply {
  unsigned status = 200;
  std::string type = "application/json";
  std::string text;
  std::vector<std::pair<std::string, std::string>> headers;
};

// The value of a cookie of this name in a Cookie header; "" without one.
std::string CookieValue(std::string_view header, std::string_view name);
// The headers that every answer carries.
const std::vector<std::pair<std::string, std::string>>& StandingHeaders();

}  // namespace browser
