#pragma once

#include <array>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <boost/asio/io_context.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>

#include "browser/server/Hub.h"
#include "browser/server/Logins.h"
#include "browser/server/Serve.h"
#include "browser/server/WorkerProcess.h"
#include "browser/wire/Wire.h"

namespace browser {

// One session in the parent: its worker, the socket to it, and the page while there is one. The worker's
// messages go on to the page one at a time, the next one read when the last has gone, so that a slow page
// slows its worker and nothing piles up here. Without a page they are dropped; a page that comes is told all
// that stands open.
class LiveSession : public std::enable_shared_from_this<LiveSession> {
 public:
  LiveSession(boost::asio::io_context& context, const ServeOptions& options, const Login& login,
              std::string id);
  LiveSession(const LiveSession&) = delete;
  LiveSession& operator=(const LiveSession&) = delete;
  LiveSession(LiveSession&&) = delete;
  LiveSession& operator=(LiveSession&&) = delete;
  ~LiveSession();

  const std::string& Id() const { return id_; }
  const std::string& Cookie() const { return cookie_; }

  // Starts the worker; raises platform::Error when that fails.
  void Start();
  // The page comes, or comes back; one that is there already is told that it was replaced. Raises when a new
  // worker is needed and cannot be started.
  void Attach(const std::shared_ptr<PageLink>& page, const std::optional<std::int64_t>& re, bool resumed);
  void Detach(const PageLink& page);
  void Take(const std::string& text);
  // Ends worker and connection.
  void End(const char* reason);

  enum class Fate { kStays, kEnds };
  // What time brings: a ping to the worker, the end of a session that nobody uses.
  Fate Tick(Moment now);

 private:
  using Continuation = std::function<void()>;

  void Restart(const std::optional<std::int64_t>& re);
  void SendToWorker(FrameKind kind, std::string_view text);
  void WriteNext();
  void ReadHead();
  void ReadBody(HeadRead head);
  void TakeFrame(FrameKind kind);
  void OnWorkerGone();
  void TellPage(const Json& message);

  boost::asio::io_context& context_;
  const ServeOptions& options_;
  std::string id_;
  std::string cookie_;
  std::string user_;
  std::int32_t userId_ = 0;

  std::unique_ptr<WorkerProcess> worker_;
  std::unique_ptr<boost::asio::posix::stream_descriptor> pipe_;
  unsigned generation_ = 0;  // of the worker: what an earlier one still delivers does not count
  std::array<char, kFrameHead> head_{};
  std::string body_;
  std::deque<std::string> toWorker_;
  std::size_t waitingBytes_ = 0;

  std::shared_ptr<PageLink> page_;
  bool welcomed_ = false;  // the worker has answered the page's coming
  Moment lastUsed_;
  Moment detachedAt_;
  std::optional<Moment> pingedAt_;  // without an answer so far
  Moment answeredAt_;
  bool hangs_ = false;
};

}  // namespace browser
