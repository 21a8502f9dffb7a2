#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "browser/server/Address.h"

namespace browser {

// Who a name and a password belong to.
struct SignedIn {
  std::int32_t userId = 0;
  std::string user;
};

struct ServeOptions {
  ListenAddress listen;
  std::filesystem::path page;
  // Whether a login is needed; without one every page is `anonymous`.
  bool needsLogin = false;
  SignedIn anonymous;
  // Asked on a thread of its own, as checking takes a while on purpose.
  std::function<std::optional<SignedIn>(const std::string& name, const std::string& password)> checkLogin;
  // The command line of a worker for a user, its program first; "{}" stands for the descriptor.
  std::function<std::vector<std::string>(std::int32_t userId)> workerCommand;
  // Told once connections are taken, with the port.
  std::function<void(std::uint16_t port)> onListening;
  // True once serving shall end; asked now and then. Empty: only a signal ends it.
  std::function<bool()> isOver;

  std::size_t mostSessions = 100;
  std::size_t mostConnections = 1000;
  std::chrono::milliseconds idle = std::chrono::minutes(60);
  std::chrono::milliseconds reconnect = std::chrono::minutes(1);
  std::chrono::milliseconds hangs = std::chrono::seconds(15);
};

// Serves until SIGINT or SIGTERM. Raises platform::Error when it cannot begin: the address is taken, there is
// no built page.
void Serve(const ServeOptions& options);

}  // namespace browser
