#include "platform/rows/BlockPool.h"

#include <algorithm>

namespace platform {
namespace {

constexpr std::size_t kFirstPiece = std::size_t{1} << 12U;
constexpr std::size_t kLargestPiece = std::size_t{1} << 21U;

}  // namespace

std::byte* BlockPool::Take(std::size_t size) {
  size = (size + kAlignment - 1) / kAlignment * kAlignment;
  bytes_ += size;
  const auto given = std::ranges::find(given_, size, [](const auto& each) { return each.first; });
  if (given != given_.end() && !given->second.empty()) {
    std::byte* const block = given->second.back();
    given->second.pop_back();
    return block;
  }
  if (left_ < size) {
    const std::size_t doubled = kFirstPiece << std::min<std::size_t>(pieces_.size(), 16);
    const std::size_t piece = std::max(size, std::min(doubled, kLargestPiece));
    next_ = static_cast<std::byte*>(::operator new[](piece, std::align_val_t{kAlignment}));
    pieces_.emplace_back(next_);
    left_ = piece;
  }
  std::byte* const block = next_;
  next_ += size;
  left_ -= size;
  return block;
}

void BlockPool::Give(std::byte* block, std::size_t size) {
  size = (size + kAlignment - 1) / kAlignment * kAlignment;
  bytes_ -= size;
  auto given = std::ranges::find(given_, size, [](const auto& each) { return each.first; });
  if (given == given_.end()) given = given_.insert(given_.end(), {size, {}});
  given->second.push_back(block);
}

}  // namespace platform
