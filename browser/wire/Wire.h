#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace browser {

// What passes between the parent and a worker over their socket pair: four bytes of length, one byte of kind,
// and the text.
enum class FrameKind : char {
  kMessage = 'M',  // a protocol message, either way
  kAttach = 'A',   // to the worker: a page has come, with what to tell it; back: the welcome message
  kPing = 'P',     // to the worker; it comes back as it is
};

struct Frame {
  FrameKind kind = FrameKind::kMessage;
  std::string text;
};

inline constexpr std::size_t kFrameHead = 5;
// A block of 500 rows of 300 columns stays far below this.
inline constexpr std::size_t kLargestFrame = 64UL * 1024 * 1024;

std::string FrameHead(FrameKind kind, std::size_t length);
// The kind and the length that a head tells; nothing for bytes that are no head.
struct HeadRead {
  FrameKind kind = FrameKind::kMessage;
  std::size_t length = 0;
};
std::optional<HeadRead> ReadHead(std::string_view head);

// The worker's end. Everything blocks; an end of the parent ends the process, as nobody is left to serve.
class Wire {
 public:
  explicit Wire(int descriptor) : descriptor_(descriptor) {}

  void Send(FrameKind kind, std::string_view text) const;
  // Waits for the next frame.
  Frame Receive() const;
  // Whether a frame has begun to come in.
  bool HasMore() const;
  // Waits until a frame begins to come in, or until there is something to read from another descriptor.
  void WaitBeside(int other) const;
  int Descriptor() const { return descriptor_; }

 private:
  void ReadAll(char* data, std::size_t size) const;

  int descriptor_;
};

}  // namespace browser
