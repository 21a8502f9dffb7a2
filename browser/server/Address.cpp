#include "browser/server/Address.h"

#include <array>
#include <charconv>

#include <arpa/inet.h>

#include "platform/value/Convert.h"

namespace browser {
namespace {

struct HostAndPort {
  std::string_view host;
  std::string_view port;  // empty when there is none
};

std::optional<HostAndPort> Split(std::string_view text) {
  if (text.starts_with('[')) {
    const std::size_t end = text.find(']');
    if (end == std::string_view::npos) return std::nullopt;
    const std::string_view rest = text.substr(end + 1);
    if (!rest.empty() && !rest.starts_with(':')) return std::nullopt;
    return HostAndPort{.host = text.substr(1, end - 1), .port = rest.empty() ? rest : rest.substr(1)};
  }
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return HostAndPort{.host = text, .port = {}};
  return HostAndPort{.host = text.substr(0, colon), .port = text.substr(colon + 1)};
}

bool IsAddress(const std::string& host) {
  std::array<unsigned char, sizeof(in6_addr)> parsed{};
  return inet_pton(AF_INET, host.c_str(), parsed.data()) == 1 ||
         inet_pton(AF_INET6, host.c_str(), parsed.data()) == 1;
}

}  // namespace

std::optional<ListenAddress> ReadListenAddress(std::string_view text) {
  const std::optional<HostAndPort> parts = Split(text);
  if (!parts || parts->port.empty()) return std::nullopt;
  ListenAddress address{.host = std::string(parts->host), .port = 0};
  const char* const end = parts->port.data() + parts->port.size();
  const auto read = std::from_chars(parts->port.data(), end, address.port);
  if (read.ec != std::errc() || read.ptr != end || !IsAddress(address.host)) return std::nullopt;
  return address;
}

bool IsLoopback(std::string_view host) { return host == "::1" || host.starts_with("127."); }

bool NamesLoopback(std::string_view hostHeader) {
  const std::optional<HostAndPort> parts = Split(hostHeader);
  if (!parts) return false;
  return platform::EqualsIgnoreCase(parts->host, "localhost") ||
         (IsAddress(std::string(parts->host)) && IsLoopback(parts->host));
}

bool IsSameOrigin(std::string_view origin, std::string_view hostHeader) {
  for (const std::string_view scheme : {"http://", "https://"}) {
    if (!origin.starts_with(scheme)) continue;
    return !hostHeader.empty() && platform::EqualsIgnoreCase(origin.substr(scheme.size()), hostHeader);
  }
  return false;
}

}  // namespace browser
