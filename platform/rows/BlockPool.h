#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace platform {

// Memory for the columns of one table: blocks of a few sizes out of large pieces, which grow with the table,
// so that a small table takes little and a large one asks for memory seldom. A block that is
// given back serves again; the pieces go with the pool.
class BlockPool {
 public:
  // Room for `size` bytes, of any content, aligned for every type.
  std::byte* Take(std::size_t size);
  void Give(std::byte* block, std::size_t size);

  // What the blocks in use take.
  std::size_t Bytes() const { return bytes_; }

 private:
  static constexpr std::size_t kAlignment = 64;
  struct FreePiece {
    void operator()(std::byte* piece) const { ::operator delete[](piece, std::align_val_t{kAlignment}); }
  };

  std::vector<std::unique_ptr<std::byte[], FreePiece>> pieces_;
  std::byte* next_ = nullptr;  // what is left of the last piece
  std::size_t left_ = 0;
  std::vector<std::pair<std::size_t, std::vector<std::byte*>>> given_;  // by size
  std::size_t bytes_ = 0;
};

}  // namespace platform
