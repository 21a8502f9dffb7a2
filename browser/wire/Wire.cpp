#include "browser/wire/Wire.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace browser {
namespace {

// The parent is gone or speaks nonsense: there is nothing to save, and forms may be open on the stack.
[[noreturn]] void End() { std::_Exit(1); }

}  // namespace

std::string FrameHead(FrameKind kind, std::size_t length) {
  const auto size = static_cast<std::uint32_t>(length);
  std::string head(kFrameHead, '\0');
  std::memcpy(head.data(), &size, sizeof size);
  head[4] = static_cast<char>(kind);
  return head;
}

std::optional<HeadRead> ReadHead(std::string_view head) {
  if (head.size() != kFrameHead) return std::nullopt;
  std::uint32_t size = 0;
  std::memcpy(&size, head.data(), sizeof size);
  const char kind = head[4];
  if (size > kLargestFrame || (kind != 'M' && kind != 'A' && kind != 'P')) return std::nullopt;
  return HeadRead{.kind = static_cast<FrameKind>(kind), .length = size};
}

void Wire::Send(FrameKind kind, std::string_view text) const {
  const std::string frame = FrameHead(kind, text.size()).append(text);
  for (std::string_view left = frame; !left.empty();) {
    const ssize_t sent = send(descriptor_, left.data(), left.size(), MSG_NOSIGNAL);
    if (sent < 0 && errno == EINTR) continue;
    if (sent <= 0) End();
    left.remove_prefix(static_cast<std::size_t>(sent));
  }
}

void Wire::ReadAll(char* data, std::size_t size) const {
  while (size > 0) {
    const ssize_t got = read(descriptor_, data, size);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) End();
    data += got;
    size -= static_cast<std::size_t>(got);
  }
}

Frame Wire::Receive() const {
  std::array<char, kFrameHead> head{};
  ReadAll(head.data(), head.size());
  const std::optional<HeadRead> read = ReadHead({head.data(), head.size()});
  if (!read) End();
  Frame frame{.kind = read->kind, .text = std::string(read->length, '\0')};
  ReadAll(frame.text.data(), frame.text.size());
  return frame;
}

bool Wire::HasMore() const {
  pollfd waiting{.fd = descriptor_, .events = POLLIN, .revents = 0};
  return poll(&waiting, 1, 0) > 0;
}

void Wire::WaitBeside(int other) const {
  std::array<pollfd, 2> waiting = {pollfd{.fd = descriptor_, .events = POLLIN, .revents = 0},
                                   pollfd{.fd = other, .events = POLLIN, .revents = 0}};
  while (poll(waiting.data(), waiting.size(), -1) < 0 && errno == EINTR) {
  }
}

}  // namespace browser
