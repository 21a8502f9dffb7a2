#include "browser/server/LiveSession.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <spdlog/spdlog.h>

#include "platform/value/Error.h"

namespace browser {
namespace {

using boost::system::error_code;
using std::chrono::steady_clock;

constexpr std::chrono::seconds kPingEvery{5};
// A page that sends on while its worker reads nothing is stopped here.
constexpr std::size_t kMostWaiting = 4UL * 1024 * 1024;

constexpr const char* kCrashed = "报表程序意外中止，打开的报表已丢失。请重新开始；其他用户不受影响。";
constexpr const char* kHangs = "报表程序暂时没有响应。可以再等一会儿，也可以重新开始。";
constexpr const char* kCannotStart = "报表程序启动不了，请稍后重试。";

}  // namespace

LiveSession::LiveSession(boost::asio::io_context& context, const ServeOptions& options, const Login& login,
                         std::string id)
    : context_(context),
      options_(options),
      id_(std::move(id)),
      cookie_(login.cookie),
      user_(login.user),
      userId_(login.userId),
      lastUsed_(steady_clock::now()),
      detachedAt_(lastUsed_),
      answeredAt_(lastUsed_) {}

LiveSession::~LiveSession() = default;

void LiveSession::Start() {
  const std::vector<std::string> command = options_.workerCommand(userId_);
  worker_ = std::make_unique<WorkerProcess>(command.front(), command);
  pipe_ = std::make_unique<boost::asio::posix::stream_descriptor>(context_, worker_->TakeDescriptor());
  ++generation_;
  toWorker_.clear();
  waitingBytes_ = 0;
  pingedAt_.reset();
  hangs_ = false;
  welcomed_ = false;
  answeredAt_ = steady_clock::now();
  spdlog::info("session {:.8}: worker {} of user {} started", id_, worker_->Id(), userId_);
  ReadHead();
}

void LiveSession::Attach(const std::shared_ptr<PageLink>& page, const std::optional<std::int64_t>& re,
                         bool resumed) {
  if (page_ && page_ != page) {
    Json ended = Message("sessionEnded");
    ended["reason"] = "replaced";
    page_->Send(ToText(ended), {});
    page_->Finish();
  }
  page_ = page;
  // A page that comes back to a crashed worker gets a new one.
  if (!pipe_) {
    worker_.reset();
    Start();
    resumed = false;
  }
  welcomed_ = false;
  lastUsed_ = steady_clock::now();
  Json welcome = Message("welcome", re);
  welcome["protocol"] = ProtocolVersion();
  welcome["session"] = id_;
  welcome["resumed"] = resumed;
  welcome["user"] = user_;
  SendToWorker(FrameKind::kAttach, ToText(welcome));
}

void LiveSession::Detach(const PageLink& page) {
  if (page_.get() != &page) return;
  page_.reset();
  detachedAt_ = steady_clock::now();
}

void LiveSession::TellPage(const Json& message) {
  if (page_) page_->Send(ToText(message), {});
}

void LiveSession::Take(const std::string& text) {
  std::optional<Command> read;
  try {
    read = ReadCommand(text);
  } catch (const RefusedMessage& refused) {
    return TellPage(ErrorMessage(refused.Code(), refused.what(), refused.Id()));
  }
  const Command& command = *read;
  if (command.type == "ping") return TellPage(Message("done", command.id));
  lastUsed_ = steady_clock::now();
  if (command.type == "restart") return Restart(command.id);
  if (command.when == When::kFirst) {
    return TellPage(ErrorMessage("state", "the session has begun", command.id));
  }
  if (!worker_) return TellPage(ErrorMessage("failed", kCrashed, command.id));
  if (waitingBytes_ > kMostWaiting) {
    return TellPage(ErrorMessage("failed", "too many messages wait for the worker", command.id));
  }
  SendToWorker(FrameKind::kMessage, text);
}

void LiveSession::Restart(const std::optional<std::int64_t>& re) {
  pipe_.reset();
  worker_.reset();
  try {
    Start();
  } catch (const platform::Error& error) {
    spdlog::error("session {:.8}: {}", id_, error.Description());
    return TellPage(ErrorMessage("failed", kCannotStart, re));
  }
  Attach(std::shared_ptr<PageLink>(page_), re, false);
}

void LiveSession::SendToWorker(FrameKind kind, std::string_view text) {
  if (!pipe_) return;
  toWorker_.push_back(FrameHead(kind, text.size()).append(text));
  waitingBytes_ += toWorker_.back().size();
  if (toWorker_.size() == 1) WriteNext();
}

void LiveSession::WriteNext() {
  boost::asio::async_write(
      *pipe_, boost::asio::buffer(toWorker_.front()),
      [self = shared_from_this(), generation = generation_](error_code error, std::size_t) {
        // A worker that does not read any more is noticed where it is read from.
        if (error || generation != self->generation_) return;
        self->waitingBytes_ -= self->toWorker_.front().size();
        self->toWorker_.pop_front();
        if (!self->toWorker_.empty()) self->WriteNext();
      });
}

void LiveSession::ReadHead() {
  boost::asio::async_read(
      *pipe_, boost::asio::buffer(head_),
      [self = shared_from_this(), generation = generation_](error_code error, std::size_t) {
        if (generation != self->generation_ || !self->pipe_) return;
        const auto head = browser::ReadHead({self->head_.data(), self->head_.size()});
        if (error || !head) return self->OnWorkerGone();
        self->ReadBody(*head);
      });
}

void LiveSession::ReadBody(HeadRead head) {
  body_.resize(head.length);
  boost::asio::async_read(
      *pipe_, boost::asio::buffer(body_),
      [self = shared_from_this(), generation = generation_, kind = head.kind](error_code error, std::size_t) {
        if (generation != self->generation_ || !self->pipe_) return;
        if (error) return self->OnWorkerGone();
        self->TakeFrame(kind);
      });
}

void LiveSession::TakeFrame(FrameKind kind) {
  answeredAt_ = steady_clock::now();
  if (hangs_) {
    hangs_ = false;
    Json message = Message("workerFailed");
    message["state"] = "answers";
    message["text"] = "";
    TellPage(message);
  }
  if (kind == FrameKind::kPing) pingedAt_.reset();
  if (kind == FrameKind::kAttach) welcomed_ = true;
  if (kind == FrameKind::kPing || !page_ || !welcomed_) return ReadHead();
  page_->Send(std::move(body_), [self = shared_from_this(), generation = generation_] {
    if (generation == self->generation_ && self->pipe_) self->ReadHead();
  });
}

void LiveSession::OnWorkerGone() {
  spdlog::warn("session {:.8}: worker {} is gone", id_, worker_->Id());
  pipe_.reset();
  worker_.reset();
  Json message = Message("workerFailed");
  message["state"] = "crashed";
  message["text"] = kCrashed;
  TellPage(message);
}

void LiveSession::End(const char* reason) {
  spdlog::info("session {:.8}: ends ({})", id_, reason);
  ++generation_;
  pipe_.reset();
  worker_.reset();
  if (!page_) return;
  Json message = Message("sessionEnded");
  message["reason"] = reason;
  page_->Send(ToText(message), {});
  page_->Finish();
  page_.reset();
}

LiveSession::Fate LiveSession::Tick(Moment now) {
  if (!page_ && now - detachedAt_ > options_.reconnect) {
    End("logout");
    return Fate::kEnds;
  }
  if (page_ && now - lastUsed_ > options_.idle) {
    End("idle");
    return Fate::kEnds;
  }
  if (!pipe_) return Fate::kStays;
  if (!pingedAt_ && now - answeredAt_ > std::min<std::chrono::milliseconds>(kPingEvery, options_.hangs / 2)) {
    pingedAt_ = now;
    SendToWorker(FrameKind::kPing, "");
  } else if (pingedAt_ && now - *pingedAt_ > options_.hangs && !hangs_) {
    hangs_ = true;
    spdlog::warn("session {:.8}: worker {} does not answer", id_, worker_->Id());
    Json message = Message("workerFailed");
    message["state"] = "hangs";
    message["text"] = kHangs;
    TellPage(message);
  }
  return Fate::kStays;
}

}  // namespace browser
