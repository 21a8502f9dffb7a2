#include <vector>

#include <gtest/gtest.h>

#include "browser/server/Address.h"

namespace browser {
namespace {

struct Written {
  const char* text;
  const char* host;  // null: refused
  int port;
};

TEST(Address, ReadsAddressesAndNoNames) {
  const std::vector<Written> cases = {
      {"127.0.0.1:8080", "127.0.0.1", 8080},
      {"[::1]:80", "::1", 80},
      {"0.0.0.0:0", "0.0.0.0", 0},
      {"localhost:8080", nullptr, 0},
      {"127.0.0.1", nullptr, 0},
      {"127.0.0.1:", nullptr, 0},
      {"127.0.0.1:80x", nullptr, 0},
      {"127.0.0.1:65536", nullptr, 0},
      {"127.0.0.1:-1", nullptr, 0},
      {":8080", nullptr, 0},
      {"[::1:80", nullptr, 0},
      {"[::1]80", nullptr, 0},
      {"", nullptr, 0},
  };
  for (const Written& one : cases) {
    SCOPED_TRACE(one.text);
    const auto read = ReadListenAddress(one.text);
    ASSERT_EQ(read.has_value(), one.host != nullptr);
    if (!read) continue;
    EXPECT_EQ(read->host, one.host);
    EXPECT_EQ(read->port, one.port);
  }
}

struct HostCase {
  const char* host;
  bool local;
};

TEST(Address, OnlyNamesOfThisMachineAreLocal) {
  const std::vector<HostCase> cases = {
      {"127.0.0.1:8080", true},       {"localhost", true},
      {"LOCALHOST:1", true},          {"[::1]:8080", true},
      {"127.0.0.1.evil.test", false}, {"evil.test", false},
      {"localhost.evil.test", false}, {"", false},
      {"192.168.0.1:8080", false},    {"[::1", false},
  };
  for (const HostCase& one : cases) EXPECT_EQ(NamesLoopback(one.host), one.local) << one.host;
}

struct OriginCase {
  const char* origin;
  const char* host;
  bool same;
};

TEST(Address, AnOriginIsTheSameOnlyWithHostAndPort) {
  const std::vector<OriginCase> cases = {
      {"http://127.0.0.1:8080", "127.0.0.1:8080", true},
      {"https://Stock.test", "stock.test", true},
      {"http://127.0.0.1:8081", "127.0.0.1:8080", false},
      {"http://evil.test", "127.0.0.1:8080", false},
      {"http://127.0.0.1:8080.evil.test", "127.0.0.1:8080", false},
      {"null", "127.0.0.1:8080", false},
      {"file://", "", false},
      {"http://", "", false},
  };
  for (const OriginCase& one : cases) EXPECT_EQ(IsSameOrigin(one.origin, one.host), one.same) << one.origin;
}

}  // namespace
}  // namespace browser
