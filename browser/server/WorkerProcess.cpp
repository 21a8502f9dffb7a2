#include "browser/server/WorkerProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include "platform/value/Error.h"

namespace browser {
namespace {

constexpr int kWorkerEnd = 3;

[[noreturn]] void Raise(const char* what, int error) {
  throw platform::Error(platform::ErrorNumber::kCannotCreate, "browser",
                        std::string("cannot ") + what + ": " + std::generic_category().message(error));
}

// What the new process begins with: no input, its end of the pair, nothing else that is open here, a process
// group of its own so that keys pressed at the terminal reach the parent only, and no blocked signals.
class SpawnSettings {
 public:
  explicit SpawnSettings(int workerEnd) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions_, workerEnd, kWorkerEnd);
    posix_spawn_file_actions_addclosefrom_np(&actions_, kWorkerEnd + 1);
    posix_spawnattr_init(&attributes_);
    sigset_t none{};
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setpgroup(&attributes_, 0);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;
  SpawnSettings(SpawnSettings&&) = delete;
  SpawnSettings& operator=(SpawnSettings&&) = delete;
  ~SpawnSettings() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }

  const posix_spawn_file_actions_t* Actions() const { return &actions_; }
  const posix_spawnattr_t* Attributes() const { return &attributes_; }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

}  // namespace

WorkerProcess::WorkerProcess(const std::string& executable, const std::vector<std::string>& arguments) {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
    Raise("make a socket pair", errno);
  std::vector<std::string> texts = arguments;
  std::vector<char*> words;
  for (std::string& text : texts) {
    if (text == "{}") text = std::to_string(kWorkerEnd);
    words.push_back(text.data());
  }
  words.push_back(nullptr);
  const SpawnSettings settings(ends[1]);
  const int error =
      posix_spawn(&id_, executable.c_str(), settings.Actions(), settings.Attributes(), words.data(), environ);
  close(ends[1]);
  descriptor_ = ends[0];
  if (error == 0) return;
  close(descriptor_);
  Raise("start a worker", error);
}

WorkerProcess::~WorkerProcess() {
  if (descriptor_ >= 0) close(descriptor_);
  // It has nothing to save: the book is written in transactions of its own.
  kill(id_, SIGKILL);
  while (waitpid(id_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

int WorkerProcess::TakeDescriptor() { return std::exchange(descriptor_, -1); }

}  // namespace browser
