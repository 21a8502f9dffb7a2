#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace browser {

struct ListenAddress {
  std::string host;  // an IP address, without brackets
  std::uint16_t port = 0;
};

// Reads 127.0.0.1:8080 or [::1]:8080; port 0 lets the system choose one. Nothing for anything else: names are
// not looked up, since what they mean may change.
std::optional<ListenAddress> ReadListenAddress(std::string_view text);
bool IsLoopback(std::string_view host);
// Whether a Host header names this machine itself, as localhost or by a loopback address, with any port.
bool NamesLoopback(std::string_view hostHeader);
// Whether an Origin header is that of a page that came from the host of a Host header.
bool IsSameOrigin(std::string_view origin, std::string_view hostHeader);

}  // namespace browser
