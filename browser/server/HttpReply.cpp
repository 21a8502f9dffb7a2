#include "browser/server/HttpReply.h"

#include "platform/value/Convert.h"

namespace browser {

std::string CookieValue(std::string_view header, std::string_view name) {
  while (!header.empty()) {
    const std::size_t end = std::min(header.find(';'), header.size());
    const std::string_view pair = platform::TrimBlanks(header.substr(0, end));
    header.remove_prefix(std::min(end + 1, header.size()));
    const std::size_t equals = pair.find('=');
    if (equals != std::string_view::npos && pair.substr(0, equals) == name) {
      return std::string(pair.substr(equals + 1));
    }
  }
  return {};
}

const std::vector<std::pair<std::string, std::string>>& StandingHeaders() {
  // Scripts come from the built page only; styles may be set by its components.
  static const std::vector<std::pair<std::string, std::string>> kHeaders = {
      {"Content-Security-Policy",
       "default-src 'none'; script-src 'self'; style-src 'self' 'unsafe-inline'; img-src 'self' data: blob:; "
       "font-src 'self' data:; connect-src 'self'; manifest-src 'self'; base-uri 'none'; form-action 'none'; "
       "frame-ancestors 'none'"},
      {"X-Content-Type-Options", "nosniff"},
      {"Referrer-Policy", "no-referrer"},
      {"Cross-Origin-Opener-Policy", "same-origin"},
      {"Cross-Origin-Resource-Policy", "same-origin"},
  };
  return kHeaders;
}

}  // namespace browser
