// Why a process and not a thread: references are not counted atomically, rows may be shared with reports that
// add to them, and a reader thread would have to be kept out of all that. A process that is split off has its
// own copy of everything, page by page as something changes. It may do all that the session may, as the
// session has a single thread: no lock can be held by one that is not there any more.
#include "browser/worker/ExportJob.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/value/Error.h"

namespace browser {
namespace {

constexpr int kWrittenStatus = 0;
constexpr int kFailedStatus = 1;
constexpr int kPoliteness = 5;  // whoever waits in front of a screen goes first

[[noreturn]] void Raise() {
  throw platform::Error(platform::ErrorNumber::kBadArgument, "browser",
                        "导出没有成功：服务器现在太忙，请稍后重试。");
}

}  // namespace

ExportJob::ExportJob(ExportFile file, const Write& write, int foreign) : file_(std::move(file)) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) Raise();
  const int session = getpid();
  writer_ = fork();
  if (writer_ == 0) {
    close(ends[0]);
    RunWriter(write, ends[1], foreign, session);
  }
  close(ends[1]);
  news_ = ends[0];
  if (writer_ > 0) return;
  close(news_);
  Raise();
}

// Nothing of the session's is ended in order here: its connections and forms are none of this process's.
void ExportJob::RunWriter(const Write& write, int news, int foreign, int session) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != session) std::_Exit(kFailedStatus);  // it ended before that held
  close(foreign);
  if (nice(kPoliteness) < 0) errno = 0;  // it then only goes on as fast
  bool written = false;
  try {
    written = write(file_, [news](std::size_t done, std::size_t all) {
      const Progress progress{.done = done, .all = all};
      return ::write(news, &progress, sizeof progress) == static_cast<ssize_t>(sizeof progress);
    });
  } catch (...) {
    written = false;
  }
  std::_Exit(written ? kWrittenStatus : kFailedStatus);
}

ExportJob::~ExportJob() {
  close(news_);
  if (writer_ < 0) return;
  kill(writer_, SIGKILL);
  while (waitpid(writer_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

ExportJob::State ExportJob::Follow() {
  while (state_ == State::kWriting) {
    pollfd waiting{.fd = news_, .events = POLLIN, .revents = 0};
    if (poll(&waiting, 1, 0) <= 0) break;
    // Shorter than what a pipe takes in one piece, so it comes in one piece.
    Progress progress;
    const ssize_t got = read(news_, &progress, sizeof progress);
    if (got < 0 && errno == EINTR) continue;
    if (got == static_cast<ssize_t>(sizeof progress)) {
      progress_ = progress;
      continue;
    }
    int status = 0;
    while (waitpid(writer_, &status, 0) < 0 && errno == EINTR) {
    }
    writer_ = -1;
    const bool whole = WIFEXITED(status) && WEXITSTATUS(status) == kWrittenStatus && file_.Measure();
    state_ = whole ? State::kWritten : State::kFailed;
  }
  return state_;
}

ExportFile ExportJob::TakeFile() { return std::move(file_); }

}  // namespace browser
